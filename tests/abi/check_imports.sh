#!/bin/sh
# usage: check_imports.sh DLL FOLDER     compares the DLLs that DLL needs with FOLDER/imports.txt
set -eu
actual=$("$OBJDUMP" -p "$1" | sed -n 's/^[[:space:]]*DLL Name: //p' | LC_ALL=C sort)
expected=$(cat "$2/imports.txt")
[ "$actual" = "$expected" ] || {
  printf 'the DLL imports from\n%s\nand not from\n%s\n' "$actual" "$expected"
  exit 1
}
