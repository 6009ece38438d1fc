#!/bin/sh
# usage: consumer.sh SOURCE_FOLDER FOLDER     builds examples/consumer against the unpacked zip, and runs it
# In a new home folder with blanks in its name, by the commands of the README, and by pkg-config: both programs
# say what stargazer.txt says, which the README shows.
set -eu
source=$1
HOME="$2/new user"
runner=$source/cmake/wine-run
said=$source/tests/package/stargazer.txt

rm -rf "$HOME"
mkdir -p "$HOME"

expect_notes() {
  tail -n "$(wc -l <"$said")" "$1" | tr -d '\r' >"$HOME/last lines"
  diff -u "$said" "$HOME/last lines"
}

# Programs of the README that are not there, or need the prefix of the tests.
unzip() {
  (cd "$3" && cmake -E tar xf "$source/$1")
}
wine() {
  sh "$runner" "./$1"
}

cd "$source"
sed -n '/^## Use it$/,/^## In/s/^    //p' README.md >"$HOME/commands"
(. "$HOME/commands") >"$HOME/by cmake"
expect_notes "$HOME/by cmake"
sed -n '/^## Use it$/,/^## In/p' README.md | grep -A100 -m1 -xF "$(head -n 1 "$said")" >"$HOME/quoted"
head -n "$(wc -l <"$said")" "$HOME/quoted" | diff -u "$said" -

# The DLLs are found beside the program alone.
mkdir "$HOME/plain"
cd "$HOME/plain"
package=$(echo "$HOME"/kvutils-*)
flags=$(PKG_CONFIG_LIBDIR="$package/lib/pkgconfig" pkg-config --cflags --libs kvutils)
eval "'$CXX' -std=c++17 '$source/examples/consumer/main.cpp' -o stargazer.exe $flags"
cp "$package"/bin/*.dll .
wine stargazer.exe >"$HOME/by pkg-config"
expect_notes "$HOME/by pkg-config"
