#!/bin/sh
# usage: undecorated.sh SOURCE_FOLDER PARTS BINARIES FOLDER     kvutils.def and kvutils.lib, read and linked
# A program that clang makes as Microsoft's compiler would is linked by LLVM's linker, which reads such libraries
# as Microsoft's does, and calls the DLL.
set -eu
source=$1 parts=$2 binaries=$3 folder=$4

grep -v '^_Z' "$source/tests/abi/exports.txt" | cut -f 1 | LC_ALL=C sort >"$folder.expected"
fail() {
  echo "$1"
  exit 1
}

sed -n '/^EXPORTS$/,$s/^ *//p' "$parts/kvutils.def" | grep -vx EXPORTS | diff -u "$folder.expected" - ||
  fail 'kvutils.def differs from the reviewed list'
# Of each entry of the short form, binutils shows the function as code; of the others, sections.
"$NM" "$parts/kvutils.lib" 2>/dev/null | sed -n 's/.* T \([^.]\)/\1/p' | LC_ALL=C sort | diff -u "$folder.expected" - ||
  fail 'kvutils.lib differs from the reviewed list'
rm -f "$folder.expected"

rm -rf "$folder"
mkdir -p "$folder"
cp "$binaries"/kvutils.dll "$binaries"/lib*.dll "$folder"
cd "$folder"
printf 'LIBRARY kernel32.dll\nEXPORTS\n    ExitProcess\n' >kernel32.def
llvm-dlltool-14 -m i386:x86-64 -d kernel32.def -l kernel32.lib
clang-14 --target=x86_64-pc-windows-msvc -Wall -Werror -O1 -c "$source/tests/package/undecorated.c" -o program.obj
lld-link-14 /nologo /subsystem:console /entry:start /nodefaultlib /out:program.exe program.obj \
  "$parts/kvutils.lib" kernel32.lib
code=0
sh "$source/cmake/wine-run" ./program.exe || code=$?
[ "$code" = 27 ] || fail "the program ended with $code and not with 27"
