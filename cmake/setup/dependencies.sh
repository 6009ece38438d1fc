# Sourced by kv: the libraries and the program that are cross-built once and kept in the cache.

readonly recipes=$root/cmake/setup
readonly icu_recipe=$recipes/icu
readonly unzip_recipe=$recipes/unzip
readonly toolchain=$root/cmake/mingw-w64-x86_64.cmake

# provide_dependencies COMPONENT...: makes sure that these are in the cache and in build/deps.
provide_dependencies() {
  local component compiler
  compiler=$(package_version g++-mingw-w64-x86-64-posix)
  for component in "$@"; do
    "provide_$component"
  done
}

provide_icu() {
  local rules
  rules=$(zone_rules_version)
  provide_entry 'Building ICU 72.1' icu \
    "icu-72.1-$(recipe_key build_icu unpack_icu "$icu_recipe/CMakeLists.txt")" build_icu
  provide_entry "Building the time zone rules $rules" icu \
    "icudata-$rules-$(recipe_key "$icu_recipe"/{data.sh,tzdata_source.awk,root.txt,curr/root.txt} \
      "$zone_rules"/{tzdata.zi,zone.tab})" build_icu_data
}

provide_googletest() {
  local version
  version=$(package_version googletest)
  provide_entry "Building GoogleTest $version" '' \
    "googletest-$version-$(recipe_key build_googletest)" build_googletest
}

provide_benchmark() {
  provide_entry 'Building Google Benchmark 1.7.1' benchmark \
    "benchmark-1.7.1-$(recipe_key build_benchmark)" build_benchmark
}

provide_unzip() {
  provide_entry 'Building unzip 6.0' unzip \
    "unzip-6.0-$(recipe_key build_unzip unpack_unzip "$unzip_recipe/CMakeLists.txt")" build_unzip
}

package_version() {
  dpkg-query --show --showformat '${Version}' "$1"
}

# The key of what the cross compiler builds from the given functions and files.
recipe_key() {
  key "$compiler" "$toolchain" cross_build "$@"
}

# provide_entry TITLE SOURCES ENTRY RECIPE: fetches the sources, if the entry has to be made and
# needs any, makes it, and copies it to build/deps.
provide_entry() {
  local title=$1 sources=$2 entry=$3 recipe=$4
  if ! entry_is_whole "$cache/$entry"; then
    [ -z "$sources" ] || provide_sources "$sources"
    provide "$title" "$entry" "$recipe"
  fi
  copy_to_build "$entry"
}

provide_sources() {
  case $1 in
    icu)
      provide 'Fetching the sources of ICU 72.1' "$icu_sources" source_package icu \
        icu_72.1.orig.tar.gz a2d2d38217092a7ed56635e34467f92f976b370e20182ad325edea6681a71d68
      ;;
    benchmark)
      provide 'Fetching the sources of Google Benchmark' "$benchmark_sources" source_package \
        benchmark benchmark_1.7.1.orig.tar.gz "$benchmark_checksum"
      ;;
    unzip)
      provide 'Fetching the sources of unzip 6.0' "$unzip_sources" source_package unzip \
        unzip_6.0.orig.tar.gz 036d96991646d0449ed0aa952e4fbe21b476ce994abc276e49d30e686708bd37
      ;;
  esac
}

readonly icu_sources=sources-icu-72.1
readonly benchmark_sources=sources-benchmark-1.7.1
readonly unzip_sources=sources-unzip-6.0
readonly benchmark_checksum=6430e4092653380d9dc4ccb45a1e2dc9259d581f4866dc0759713126056bc1d7

# build/deps holds copies: they are newer than what was built against other versions of them, and
# they outlive the cache. A file per component tells which entry it came from.
copy_to_build() {
  local entry=$1 stamp=$deps/.${1%%-*}
  [ "$(cat "$stamp" 2>/dev/null)" != "$entry" ] || return 0
  mkdir -p "$deps"
  rm -f "$stamp"
  cp -R "$cache/$entry"/*/ "$deps"
  echo "$entry" >"$stamp"
}

# The recipes proper: each fills the folder "$1" with include/ and lib/, or with bin/, and may use "$2"
# as it likes.

build_icu() {
  local result=$1 scratch=$2
  unpack_icu "$scratch/icu"
  cross_build "$icu_recipe" "$scratch/build" "$result" -DICU_SOURCE="$scratch/icu/source"
}

# With Debian's patch against a stack overflow in the reading of resource bundles.
unpack_icu() {
  mkdir -p "$1"
  cd "$1"
  tar xf "$cache/$icu_sources/icu_72.1.orig.tar.gz" --strip-components=1
  tar xf "$cache/$icu_sources"/icu_72.1-*.debian.tar.xz debian/patches/ICU-22198.patch
  patch --silent -p1 <debian/patches/ICU-22198.patch
}

build_googletest() {
  cross_build /usr/src/googletest "$2" "$1" -Dgtest_disable_pthreads=ON -DBUILD_GMOCK=OFF \
    -DCMAKE_CXX_FLAGS_RELEASE=-O1
}

build_benchmark() {
  local result=$1 scratch=$2
  mkdir -p "$scratch/source"
  tar xf "$cache/$benchmark_sources/benchmark_1.7.1.orig.tar.gz" --strip-components=1 \
    -C "$scratch/source"
  cross_build "$scratch/source" "$scratch/build" "$result" -DBENCHMARK_ENABLE_TESTING=OFF \
    -DBENCHMARK_ENABLE_WERROR=OFF -DBENCHMARK_INSTALL_DOCS=OFF
}

build_unzip() {
  local result=$1 scratch=$2
  unpack_unzip "$scratch/source"
  cross_build "$unzip_recipe" "$scratch/build" "$result" -DUNZIP_SOURCE="$scratch/source"
}

# With all of Debian's patches; most of them keep damaged archives from doing harm.
unpack_unzip() {
  local name
  mkdir -p "$1"
  cd "$1"
  tar xf "$cache/$unzip_sources/unzip_6.0.orig.tar.gz" --strip-components=1
  tar xf "$cache/$unzip_sources"/unzip_6.0-*.debian.tar.xz debian/patches
  grep -v '^ *\(#\|$\)' debian/patches/series | while read -r name; do
    patch --silent -p1 <"debian/patches/$name"
  done
}

# cross_build SOURCE OBJECTS RESULT [OPTION...]
cross_build() {
  local source=$1 objects=$2 result=$3
  shift 3
  cmake -G Ninja -S "$source" -B "$objects" -DCMAKE_TOOLCHAIN_FILE="$toolchain" \
    -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$result" -DCMAKE_INSTALL_LIBDIR=lib "$@"
  cmake --build "$objects"
  cmake --install "$objects"
}
