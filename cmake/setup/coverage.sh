# Sourced by kv: which lines and branches of the library the tests ran.

# Each process adds its counts to files of the build folder, whatever drive it ends in, and tells there
# what goes wrong with that.
forget_counts() {
  local folder=$output/count-errors
  count_errors=$folder/messages
  find "$output" -name '*.gcda' -delete
  rm -rf "$folder"
  hand_over "$output/utils" "$folder"
  export GCOV_PREFIX=Z: GCOV_ERROR_FILE=Z:${count_errors//\//\\}
}

# report_counts [NAME...]: compares what all tests ran with the page of what they do not run; of the
# tests that are named, prints it.
report_counts() {
  local report=$output/report task=(table)
  [ $# != 0 ] || task=(check --page "$root/docs/coverage.md")
  collect_counts "$report"
  echo
  "$python" -B "$root/tests/coverage/report.py" "${task[@]}" --counts "$report/counts.json" \
    --sources "$root" || status=1
  echo "Line by line: $report/index.html"
  [ ! -s "$count_errors" ] || fail "counts were lost: see $count_errors"
}

# collect_counts FOLDER: the counts of each object file of the library, as lines of counts.json, and a
# page that shows them beside the sources.
collect_counts() {
  local gcov=x86_64-w64-mingw32-gcov-posix
  mkdir -p "$1"
  (cd "$1" && find "$output/utils" -name '*.gcno' | LC_ALL=C sort |
    xargs "$gcov" --json-format --stdout --branch-probabilities >counts.json 2>"$logs/gcov.log") ||
    fail "gcov failed: see $logs/gcov.log"
  (cd "$root" && gcovr --gcov-executable "$gcov" --root . --filter utils/ --exclude-throw-branches \
    --exclude-unreachable-branches --html-details "$1/index.html" "$output/utils" >"$logs/gcovr.log" \
    2>&1) || fail "gcovr failed: see $logs/gcovr.log"
}
