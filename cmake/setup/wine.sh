# Sourced by kv: the Wine prefix below the build folder, and the user that Windows programs run as.

# Root opens read-only files and enters forbidden folders, so tests run by root would pass for
# nothing. Root's tests run as the owner of the source tree, or as nobody where that is root; where
# that user cannot reach the source tree they run as root without root's privileges, which permission
# bits then bind. Sets `as_test_user`, a command prefix, and `test_user`, its numeric user and group.
choose_test_user() {
  as_test_user=()
  test_user=$(id -u):$(id -g)
  [ "$(id -u)" = 0 ] || return 0
  local owner
  owner=$(stat -c %u:%g "$root")
  case $owner in
    0:*) owner=$(id -u nobody):$(id -g nobody) ;;
  esac
  as_test_user=(setpriv --reuid="${owner%:*}" --regid="${owner#*:}" --clear-groups)
  if "${as_test_user[@]}" test -r "$root/CMakePresets.json" 2>/dev/null; then
    test_user=$owner
  else
    as_test_user=(setpriv --bounding-set=-all --inh-caps=-all)
  fi
}

# Wine's loader stands at a fixed address, not far below the page at 0x7ffe0000 that every Windows
# process must have. A kernel that puts the loader's heap at a random distance behind it takes that
# page once in some thousand starts, and the program ends at once, with code 1 and without a word.
# `fixed_addresses` is a command prefix that switches the randomness off, where that is allowed.
fixed_addresses=()
if setarch --addr-no-randomize true 2>/dev/null; then
  fixed_addresses=(setarch --addr-no-randomize)
fi

# What root made in the tree of another user belongs to that user.
give_back() {
  local owner
  owner=$(stat -c %u:%g "$root")
  case $(id -u),$owner in
    0,0:*) ;;
    0,*) [ ! -e "$build" ] || chown -hR "$owner" "$build" ;;
  esac
}

# A finished prefix has a stamp that names all that went into it, its owner among them.
provide_prefix() {
  local stamp
  stamp="$(key make_prefix "$root/cmake/wine-environment.sh") $test_user $(package_version libwine)"
  [ "$(cat "$wine/stamp" 2>/dev/null)" != "$stamp" ] || return 0
  exec 9>>"$build/wine.lock"
  await_lock 9 'the Wine prefix'
  step 'Making a Wine prefix' make_prefix
  echo "$stamp" >"$wine/stamp"
  exec 9>&-
}

make_prefix() {
  local folder
  remove_prefix
  mkdir -p "$wine"
  for folder in prefix home tmp; do
    install -d -o "${test_user%:*}" -g "${test_user#*:}" "$wine/$folder"
  done

  in_wine wine wineboot.exe --init
  # A crash ends its process at once with an exit code of its own, instead of starting a debugger.
  local debugger='HKLM\Software\Microsoft\Windows NT\CurrentVersion\AeDebug'
  in_wine wine reg.exe add "$debugger" /v Auto /d 0 /f
  in_wine wine reg.exe add "$debugger" /v Debugger /d '' /f
  # Each process finds its Documents folder through its environment.
  local folders='HKCU\Software\Microsoft\Windows\CurrentVersion\Explorer\User Shell Folders'
  in_wine wine reg.exe add "$folders" /v Personal /t REG_EXPAND_SZ /d '%KVUTILS_DOCUMENTS%' /f
  in_wine wineserver -k

  # A new prefix links Documents, Desktop and others to the user's home folder.
  find "$wine/prefix/drive_c" -type l | while read -r folder; do
    rm "$folder"
    install -d -o "${test_user%:*}" -g "${test_user#*:}" "$folder"
  done
  find "$wine/prefix/dosdevices" -type l ! -name c: ! -name z: -delete
}

remove_prefix() {
  [ ! -e "$wine/prefix" ] || in_wine wineserver -k 2>/dev/null || true
  rm -rf "$wine"
}

# in_wine COMMAND [ARGUMENT...]: as the test user, in the environment of the prefix.
in_wine() {
  KVUTILS_SOURCE=$root "${as_test_user[@]}" "${fixed_addresses[@]}" sh -c \
    '. "$KVUTILS_SOURCE/cmake/wine-environment.sh" && cd "$KVUTILS_WINE" && exec "$@"' sh "$@"
}

# hand_over FOLDER...: makes the folders and gives them, with all in them, to the test user.
hand_over() {
  mkdir -p "$@"
  [ ${#as_test_user[@]} = 0 ] || chown -hR "$test_user" "$@"
}

# use_wine COMMAND [ARGUMENT...]: runs the command as the test user with a Wine server kept warm; the
# exit status is left in `status`. The server ends with the last kv that uses it, and by itself some
# time after a kv that was killed. Descriptor 9 holds a shared lock meanwhile.
use_wine() {
  exec 9>>"$build/wine.lock"
  flock --shared 9
  wine_in_use=yes
  attended start_wine </dev/null >/dev/null 2>&1
  [ "$status" = 0 ] || fail "Wine does not start in $wine; ./kv clean and another try may help"
  TMPDIR=$wine/tmp attended "${as_test_user[@]}" "${fixed_addresses[@]}" "$@"
}

# The first program starts Wine's own services, which live as long as the server and would keep that
# program's output open; so it is one that says nothing.
start_wine() {
  in_wine wineserver -p300 || echo 'The server runs already.'
  in_wine wine cmd.exe /c exit
}

wine_in_use=
release_wine() {
  [ -n "$wine_in_use" ] || return 0
  wine_in_use=
  if flock --nonblock 9; then
    in_wine wineserver -k 2>/dev/null || true
    empty_sandbox
  fi
  exec 9>&-
}

# Tests that were killed leave folders behind, some of which nobody may enter.
empty_sandbox() {
  [ -n "$(ls -A "$sandbox" 2>/dev/null)" ] || return 0
  chmod -R u+rwX "$sandbox"
  find "$sandbox" -mindepth 1 -delete
}
