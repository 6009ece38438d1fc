# Sourced by kv: Debian's source packages, through the machine's own package configuration.

# source_package FOLDER SCRATCH NAME TARBALL CHECKSUM: fetches the source package NAME of Debian 12
# into FOLDER, and checks the upstream TARBALL in it.
source_package() {
  local folder=$1 scratch=$2 name=$3 tarball=$4 checksum=$5
  local apt
  private_apt "$scratch/apt"
  "${apt[@]}" update || echo 'The index of the source packages could not be refreshed.'
  cd "$folder"
  "${apt[@]}" source --download-only "$name/bookworm" ||
    fail "the source package $name cannot be fetched, and it is not in the cache (no network?)"
  echo "$checksum  $tarball" | sha256sum --check --quiet ||
    fail "the source package $name does not hold the expected $tarball"
}

# Sets `apt` to an apt-get that reads the machine's configuration with source packages switched on
# for the plain release, and keeps all its state in the given folder.
private_apt() {
  local folder=$1
  mkdir -p "$folder"/{sources,lists/partial,cache/archives/partial}
  contents /etc/apt/sources.list.d/*.sources | deb822_sources >"$folder/sources/kv.sources"
  contents /etc/apt/sources.list /etc/apt/sources.list.d/*.list | line_sources \
    >"$folder/sources/kv.list"
  apt=(apt-get -q -o Dir::Etc::SourceList=/dev/null -o Dir::Etc::SourceParts="$folder/sources"
    -o Dir::State::Lists="$folder/lists" -o Dir::Cache="$folder/cache" -o APT::Sandbox::User=root)
}

# The contents of those of the files that exist.
contents() {
  cat "$@" 2>/dev/null || true
}

# In both forms of a source list, keeps the entries of the plain release that offer binary packages
# and makes them offer sources.
deb822_sources() {
  awk 'BEGIN { RS = ""; ORS = "\n\n" }
       /(^|\n)Types:[^\n]*deb/ && /(^|\n)Suites:[^\n]*[ \t](bookworm|stable|oldstable)([ \t\n]|$)/ {
         sub(/Types:[^\n]*/, "Types: deb-src")
         print
       }'
}

line_sources() {
  sed -nE '/^[[:space:]]*deb[[:space:]].*[[:space:]](bookworm|stable|oldstable)[[:space:]]/s/deb/deb-src/p'
}
