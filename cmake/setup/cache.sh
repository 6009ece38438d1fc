# Sourced by kv: the cache of what takes long to make, in the user's cache folder.
#
# An entry is a folder named after what it holds and a key of all that went into it. It is made in a
# temporary folder and renamed into place with a MANIFEST of checksums, written last; an entry whose
# files do not agree with its manifest is made again.

cache=${XDG_CACHE_HOME:-${HOME:?is not set}/.cache}/kvutils

readonly manifest_end='# complete'

entry_is_whole() {
  [ "$(tail -n 1 "$1/MANIFEST" 2>/dev/null)" = "$manifest_end" ] && (
    cd "$1"
    [ "$(list_files | grep -vx MANIFEST)" = "$(sed '$d; s/^[0-9a-f]*  //' MANIFEST)" ] &&
      sha256sum --check --status MANIFEST 2>/dev/null
  )
}

# Everything but folders below the current folder; the recipes make no links.
list_files() {
  find . ! -type d -printf '%P\n' | LC_ALL=C sort
}

# key PART...: a short name for the contents of files, the text of functions, and plain texts.
key() {
  local part
  for part in "$@"; do
    if [ -f "$part" ]; then cat "$part"; else declare -f "$part" || echo "$part"; fi
  done | sha256sum | cut -c 1-12
}

# provide TITLE ENTRY RECIPE [ARGUMENT...]: makes sure that the entry is there and whole. The recipe
# is a function that fills the folder "$1" and may use the folder "$2" as it likes.
provide() {
  local title=$1 entry=$cache/$2
  shift 2
  entry_is_whole "$entry" && return
  step "$title" make_entry "$entry" "$@"
}

make_entry() {
  local entry=$1 recipe=$2 work=$cache/tmp/${1##*/}
  shift 2
  rm -rf "$work"
  mkdir -p "$work/result" "$work/scratch"
  TMPDIR=$work/scratch "$recipe" "$work/result" "$work/scratch" "$@"
  cd "$work/result"
  list_files | xargs -d '\n' sha256sum >"$work/MANIFEST"
  echo "$manifest_end" >>"$work/MANIFEST"
  mv "$work/MANIFEST" .
  rm -rf "$entry"
  mv "$work/result" "$entry"
  rm -rf "$work"
}

# with_cache COMMAND [ARGUMENT...]: runs the command while no other kv works on the cache.
with_cache() {
  mkdir -p "$cache" 2>/dev/null && [ -w "$cache" ] || fail "the cache folder $cache cannot be written"
  exec 7>"$cache/lock"
  await_lock 7 "the cache folder $cache"
  rm -rf "$cache/tmp"
  "$@"
  exec 7>&-
}
