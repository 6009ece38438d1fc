# Sourced by kv: reporting what is done and how long it takes, and stopping with one clear line.

fail() {
  echo "kv: $*" >&2
  exit 1
}

# Runs a command in the background, as a process group of its own, and waits for it: a signal is acted
# upon at once and not at the command's end. The exit status is left in `status` and not returned:
# where a caller tests a function's result, bash ignores `set -e` all the way down. The lock on Wine,
# descriptor 9, is kept from the command, because Wine's processes may outlive this one.
child=
attended() {
  set +e -m
  (
    set -e +m
    exec 9>&-
    "$@"
  ) &
  child=$!
  set +m
  wait "$child"
  status=$?
  child=
  set -e
}

end_child() {
  [ -z "$child" ] || kill -- "-$child" 2>/dev/null || true
}

# step TITLE COMMAND [ARGUMENT...]: runs the command with its output in a log, and prints the title
# with the time taken. When it fails, this script ends with the one line that the command gave
# through fail(), or with the end of the log.
step() {
  local log reason
  try_step "$@"
  [ "$status" != 0 ] || return 0
  reason=$(sed -n 's/^kv: //p' "$log" | tail -n 1)
  [ -z "$reason" ] || fail "$reason"
  tail -n 100 "$log" >&2
  fail "$1: failed; the whole output is in $log"
}

# Leaves the exit status in `status` and the name of the log in `log`.
try_step() {
  local title=$1 started=$EPOCHREALTIME
  shift
  log=$logs/${title//[^A-Za-z0-9.]/-}.log
  mkdir -p "$logs"
  printf '  %-50s' "$title ..."
  attended "$@" >"$log" 2>&1 </dev/null
  if [ "$status" = 0 ]; then seconds_since "$started"; else echo 'failed'; fi
}

seconds_since() {
  local tenths=$(((${EPOCHREALTIME/[.,]/} - ${1/[.,]/}) / 100000))
  printf '%4d.%d s\n' $((tenths / 10)) $((tenths % 10))
}

# await_lock DESCRIPTOR WHAT
await_lock() {
  flock --nonblock "$1" && return
  echo "  Waiting for another kv that uses $2 ..."
  flock "$1"
}
