# Sourced by kv: which lines and branches of the library the tests ran.

forget_counts() {
  find "$output" -name '*.gcda' -delete
  hand_over "$output/utils"
}

# Branches by which an exception leaves an expression are the compiler's, not the sources'.
report_counts() {
  local report=$output/report
  mkdir -p "$report"
  (cd "$root" && gcovr --gcov-executable x86_64-w64-mingw32-gcov-posix --root . --filter utils/ \
    --exclude-throw-branches --exclude-unreachable-branches \
    --html-details "$report/index.html" --json "$report/coverage.json" \
    "$output/utils" >"$logs/gcovr.log" 2>&1) || fail "gcovr failed: see $logs/gcovr.log"
  (cd "$root" && gcovr --add-tracefile "$report/coverage.json" --branches)
  echo "Line by line: $report/index.html"
}
