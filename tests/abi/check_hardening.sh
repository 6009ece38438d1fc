#!/bin/sh
# usage: check_hardening.sh DLL FOLDER     randomised addresses, no executable data, guarded stacks
set -eu
headers=$("$OBJDUMP" -p "$1")
for flag in HIGH_ENTROPY_VA DYNAMIC_BASE NX_COMPAT; do
  case $headers in
    *"$flag"*) ;;
    *) echo "the DLL does not ask for $flag"; exit 1 ;;
  esac
done
# The stack protector reports through this function, fortified calls through __chk_fail; both are linked in.
# Assertions of the standard library report through a function of its DLL.
symbols=$("$OBJDUMP" -t "$1.debug")
for symbol in __stack_chk_fail __chk_fail glibcxx_assert_fail; do
  case $symbols in
    *"$symbol"*) ;;
    *) echo "the DLL holds no $symbol: its guards are off"; exit 1 ;;
  esac
done
