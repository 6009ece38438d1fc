#!/bin/sh
# usage: build_elsewhere.sh SOURCE_FOLDER FOLDER DATE DEPENDENCIES     makes the package again, in another folder
# FOLDER/source is kept up to date with the sources, so that only what changed is compiled anew. What the
# compiler cache gives back was compiled in such a folder, too: it has a name space of its own.
set -eu
source=$1 target=$2/source

# copy FROM TO NAME...: only files that differ are replaced, so that the others keep their dates.
copy() {
  from=$1 to=$2
  shift 2
  (cd "$from" && find "$@" -type f) | while IFS= read -r file; do
    cmp -s "$from/$file" "$to/$file" && continue
    mkdir -p "$(dirname "$to/$file")"
    cp "$from/$file" "$to/$file"
  done
}

copy "$source" "$target" CMakeLists.txt CMakePresets.json CHANGELOG.md SECURITY.md cmake utils bench \
  examples/CMakeLists.txt examples/host examples/tour
# Symbols name the headers of the dependencies, too.
copy "$4" "$target/build/deps" .
unset KVUTILS_DEPS
SOURCE_DATE_EPOCH=$(cat "$3") CCACHE_NAMESPACE=elsewhere
export SOURCE_DATE_EPOCH CCACHE_NAMESPACE
# The cache makes paths below this folder relative ones, which shows in the symbols: here as there.
[ -z "${CCACHE_BASEDIR:-}" ] || CCACHE_BASEDIR=$target
cd "$target"
cmake --preset release -DBUILD_TESTING=OFF
cmake --build build --target zips -- --quiet
