# Sourced by sh: where the Wine of this source tree lives, and what its programs may see of the world.
# Expects KVUTILS_SOURCE, the root of the source tree. Nothing here starts a process: every test
# passes through it.
KVUTILS_WINE=${KVUTILS_WINE:-$KVUTILS_SOURCE/build/wine}

# The prefix, the home folder and the Wine server's temporary files stay below the build folder.
export WINEPREFIX="$KVUTILS_WINE/prefix" HOME="$KVUTILS_WINE/home" TMPDIR="$KVUTILS_WINE/tmp"
unset XDG_CACHE_HOME XDG_CONFIG_HOME XDG_DATA_HOME XDG_RUNTIME_DIR

# Non-ASCII file names need a UTF-8 locale, which is the user's as well. No display, no menu entries, no offer to install Mono. Of what
# Wine could tell on standard error, it tells what KVUTILS_WINEDEBUG asks for.
export LC_ALL="${KVUTILS_LOCALE:-C.UTF-8}" WINEDEBUG="${KVUTILS_WINEDEBUG:--all}"
export WINEDLLOVERRIDES='winemenubuilder.exe=d;mscoree,mshtml='
unset DISPLAY WAYLAND_DISPLAY

# The prefix takes its Documents folder from KVUTILS_DOCUMENTS; tests make their sandboxes below
# KVUTILS_SANDBOX_ROOT.
export KVUTILS_DOCUMENTS="${KVUTILS_DOCUMENTS:-C:\\users\\Public\\Documents}"
export KVUTILS_SANDBOX_ROOT="${KVUTILS_SANDBOX_ROOT:-$KVUTILS_SOURCE/build/test-sandbox}"
