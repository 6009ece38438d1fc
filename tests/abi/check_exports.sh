#!/bin/sh
# usage: check_exports.sh DLL FOLDER     compares the export table with FOLDER/exports.txt
# The list has a line for each name, sorted: the linker's name, a tab, the declaration it stands for.
# With KVUTILS_UPDATE_EXPORTS=1 the list is written anew, for review.
set -eu
list=$2/exports.txt

actual=$("$OBJDUMP" -p "$1" |
  sed -n '/^\[Ordinal\/Name Pointer\] Table/,/^$/s/^[[:space:]]*\[[ 0-9]*\] //p' |
  LC_ALL=C sort | while read -r name; do
    printf '%s\t%s\n' "$name" "$(printf '%s' "$name" | "$CXXFILT" --no-strip-underscore)"
  done)

[ "$(printf '%s\n' "$actual" | wc -l)" -gt 50 ] || { echo "the export table could not be read"; exit 1; }
if [ "${KVUTILS_UPDATE_EXPORTS:-}" = 1 ]; then printf '%s\n' "$actual" > "$list"; fi
printf '%s\n' "$actual" | diff -u "$list" - || {
  echo "the DLL's exports differ from the reviewed list (- missing, + not in the list)"
  exit 1
}
