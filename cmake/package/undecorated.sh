#!/bin/sh
# usage: undecorated.sh OBJDUMP DLL FILE     writes the module definition of what the DLL exports undecorated
set -eu
names=$("$1" -p "$2" | sed -n '/^\[Ordinal\/Name Pointer\] Table/,/^$/s/^[[:space:]]*\[[ 0-9]*\] //p' |
  grep -v '^_Z' | LC_ALL=C sort)
{
  echo "LIBRARY ${2##*/}"
  echo EXPORTS
  echo "$names" | sed 's/^/    /'
} >"$3"
