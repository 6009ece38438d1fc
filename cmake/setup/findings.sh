# Sourced by kv: what the programs of the sanitized build find. A test may start a program and not look
# at how it ends; so each program leaves its finding in a folder as well.

# Has the findings of all programs that run from here on collected.
collect_findings() {
  [ "$preset" = sanitize ] || return 0
  findings=$output/findings
  rm -rf "$findings"
  hand_over "$findings"
  export KVUTILS_FINDINGS=Z:${findings//\//\\}
}

# Prints what was found, with the places in the sources, and leaves that in `status`.
report_findings() {
  local file line
  [ -n "$findings" ] && [ -n "$(ls -A "$findings")" ] || return 0
  for file in "$findings"/*; do
    echo
    while IFS= read -r line; do
      case $line in
        '  at '*+0x*) name_place "${line#  at }" ;;
        *) echo "$line" ;;
      esac
    done <"$file"
  done
  status=1
}

findings=

# name_place MODULE+OFFSET: the function and the line, for a module with symbols.
name_place() {
  local module=$output/bin/${1%+*} base tools=x86_64-w64-mingw32
  [ ! -e "$module.debug" ] || module=$module.debug
  if [ -e "$module" ]; then
    base=$("$tools-objdump" -p "$module" | sed -n 's/^ImageBase[[:space:]]*/0x/p')
    "$tools-addr2line" -Cfpe "$module" "$(printf '0x%x' $((base + ${1##*+})))" | sed 's/^/  at /'
  else
    echo "  at $1"
  fi
}
