# Sourced by kv: the Debian packages that building, testing and measuring need.

build_packages=(
  g++-mingw-w64-x86-64-posix cmake ninja-build ccache wine wine64
  # ICU's data: its tools, a native compiler for the rules' compiler
  icu-devtools gawk gcc g++ patch xz-utils
  googletest
  python3  # which the build asks for its checks
)
# Besides clang and its linker: a display, a native program that uses its clipboard, what reads the benchmarks,
# what reads the package and the workflows, and
# time zone rules to compare the library's with.
check_packages=(clang-format-14 clang-tidy-14 clang-14 lld-14 xvfb xclip python3 pkgconf yamllint python3-yaml tzdata)
# What makes import libraries of Microsoft's form, and what writes zips.
package_packages=(llvm-14 python3)
# zlib's checksum stands beside the library's.
bench_packages=(libz-mingw-w64-dev python3)
plot_packages=(python3-matplotlib)
coverage_packages=(gcovr)
analysis_packages=(cppcheck clang-tidy-14)
# Locales are made of its sources.
everywhere_packages=(locales)
# The rules of the time zones, and what tells two versions apart.
tzdata_packages=(tzdata python3)

missing_packages() {
  local package
  for package in "$@"; do
    case $(dpkg-query --show --showformat '${db:Status-Status}' "$package" 2>/dev/null) in
      installed) ;;
      *) echo "$package" ;;
    esac
  done
}

require_debian_12() {
  local system
  system=$(. /etc/os-release && echo "$ID $VERSION_ID") 2>/dev/null || system=unknown
  [ "$system" = 'debian 12' ] || fail "this set-up is made for Debian 12, and this system is $system"
}

# The command that gives a program root's rights, or nothing for root; fails where there is none.
root_command() {
  [ "$(id -u)" != 0 ] || return 0
  sudo --non-interactive true 2>/dev/null && echo 'sudo --non-interactive'
}

require_packages() {
  local missing sudo
  mapfile -t missing < <(missing_packages "$@")
  [ ${#missing[@]} != 0 ] || return 0
  require_debian_12
  sudo=$(root_command) || fail "these packages are missing, and only root can install them:" \
    "apt-get install --no-install-recommends ${missing[*]}"
  step "Installing packages: ${#missing[@]} and what they need" install_packages "$sudo" "${missing[@]}"
}

# The package lists may be too old to install from, or missing; without a network they may still do.
# A base system's tzdata is brought up to date with the rest: its time zone rules are compared with the
# library's, and taken over from it.
install_packages() {
  local sudo=$1
  shift
  local apt=($sudo env --unset=TMPDIR DEBIAN_FRONTEND=noninteractive
    apt-get -q -o DPkg::Lock::Timeout=600)
  "${apt[@]}" update || echo 'The package lists could not be refreshed.'
  "${apt[@]}" install --yes --no-install-recommends "$@" tzdata ||
    fail "apt-get could not install: $* (no network? the reason is in $logs)"
}
