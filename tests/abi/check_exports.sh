#!/bin/sh
# usage: check_exports.sh DLL FOLDER     compares the export table with FOLDER/exports.txt
# The list has a line for each name, sorted: the linker's name, a tab, the declaration it stands for.
# With KVUTILS_UPDATE_EXPORTS=1 the list is written anew, for review.
set -eu
dll=$1 list=$2/exports.txt
actual=$(mktemp)
trap 'rm -f "$actual"' EXIT

"$OBJDUMP" -p "$dll" |
  sed -n '/^\[Ordinal\/Name Pointer\] Table/,/^$/s/^[[:space:]]*\[[ 0-9]*\] //p' |
  LC_ALL=C sort | while read -r name; do
    printf '%s\t%s\n' "$name" "$(printf '%s' "$name" | "$CXXFILT" --no-strip-underscore)"
  done > "$actual"

[ "$(wc -l < "$actual")" -gt 50 ] || { echo "the export table could not be read"; exit 1; }
if [ "${KVUTILS_UPDATE_EXPORTS:-}" = 1 ]; then cp "$actual" "$list"; fi
diff -u "$list" "$actual" || {
  echo "the DLL's exports differ from the reviewed list (- missing, + not in the list)"
  exit 1
}
