# Sourced by kv: giving the sanitized library inputs of any kind.

# read_fuzz_arguments [TARGET [COUNT|FILE]]: sets `targets` and `fuzz_arguments`.
read_fuzz_arguments() {
  targets=() fuzz_arguments=()
  [ $# -le 2 ] || fail "fuzz takes a target and a number or a file: $*"
  if [ $# = 0 ]; then
    mapfile -t targets < <(all_targets)
    return
  fi
  all_targets | grep -qxF -e "$1" ||
    fail "fuzz knows no target \"$1\"; the targets: $(all_targets | xargs)"
  targets=("$1")
  case ${2:-} in
    '') ;;
    *[!0-9]*)
      [ -f "$2" ] || fail "there is no file $2"
      fuzz_arguments=(--input "$(realpath "$2")")
      ;;
    *) fuzz_arguments=("$2") ;;
  esac
}

all_targets() {
  sed -n 's/.*\.name = "\([a-z0-9_]*\)".*/\1/p' "$root"/tests/fuzz/*_fuzz.cpp | grep -v '^planted_' |
    LC_ALL=C sort
}

# Runs the targets, as many at a time as there are processors. Each begins with the inputs that earlier
# runs have kept, and adds to them.
run_targets() {
  local folder=$output/fuzz list=$TMPDIR/fuzz-targets
  hand_over "$folder/corpus" "$folder/findings" "$sandbox"
  printf '%s\n' "${targets[@]}" >"$list"
  chmod a+r "$list"
  use_wine xargs -a "$list" -I TARGET -P "$(nproc)" "$root/cmake/wine-run" "$output/bin/fuzz.exe" \
    TARGET "${fuzz_arguments[@]}" --corpus "$folder/corpus/TARGET" --findings "$folder/findings" 8>&-
  [ "$status" = 0 ] || status=1
}
