# Sourced by kv: running the benchmarks and reporting what they measured.

# Debian's own, the one that its packages extend.
readonly python=/usr/bin/python3

# How long each form is measured in each round of its operation (bench/support/rounds.h).
benchmark_options=(--benchmark_min_time=0.01)

# Sets `groups`, `tasks` and `more_options` from the arguments of ./kv bench.
read_bench_arguments() {
  groups=() tasks=() more_options=()
  while [ $# != 0 ]; do
    case $1 in
      --plot | --compare | --baseline) tasks+=("${1#--}") ;;
      --) shift && more_options=("$@") && break ;;
      *) is_group "$1" && groups+=("$1") ;;
    esac
    shift
  done
  [ ${#tasks[@]} = 0 ] || [ ${#more_options[@]} = 0 ] ||
    fail 'arguments behind -- are for a look; they do not go with --plot, --compare or --baseline'
  [ ${#groups[@]} != 0 ] || mapfile -t groups < <(all_groups)
}

all_groups() {
  find "$root/bench" -name '*_bench.cpp' -printf '%f\n' | sed 's/_bench\.cpp$//' | LC_ALL=C sort
}

is_group() {
  all_groups | grep -qxF -e "$1" ||
    fail "bench knows no group \"$1\"; the groups: $(all_groups | xargs)"
}

# measure_groups FOLDER [OPTION...]: leaves what the programs measure in files of the folder. A task
# makes do with figures that are newer than program and library.
measure_groups() {
  local folder=$1 group context
  shift
  mapfile -t context < <(bench_context)
  mkdir -p "$folder"
  for group in "${groups[@]}"; do
    if [ ${#tasks[@]} != 0 ] && is_measured "$folder/$group.json" "$group"; then
      echo "  The figures of $group are newer than its program, and are taken as they are."
    else
      measure "$group" "$folder/$group.json" "${context[@]}" "$@"
    fi
  done
}

is_measured() {
  [ "$1" -nt "$output/bin/${2}_bench.exe" ] && [ "$1" -nt "$output/bin/kvutils.dll" ]
}

# measure GROUP FILE OPTION...: runs the program in a new folder that also holds its Documents.
measure() {
  local group=$1 file=$2 folder=$sandbox/bench-$1 log=$logs/bench-$1.log started=$EPOCHREALTIME
  shift 2
  printf '  %-50s' "Measuring $group ..."
  mkdir -p "$logs"
  rm -rf "$folder"
  hand_over "$folder" "$folder/work" "$folder/Documents"
  cd "$folder/work"
  KVUTILS_DOCUMENTS="Z:${folder//\//\\}\\Documents" use_wine "$root/cmake/wine-run" \
    "$output/bin/${group}_bench.exe" "${benchmark_options[@]}" "$@" >"$file.new" 2>"$log" 8>&-
  cd "$root"
  chmod -R u+rwX "$folder"
  rm -rf "$folder"
  if [ "$status" != 0 ]; then
    echo 'failed'
    tail -n 100 "$log" >&2
    fail "the benchmarks of $group failed; their messages are in $log"
  fi
  mv "$file.new" "$file"
  seconds_since "$started"
}

# What the figures depend on. A comma or an equals sign would end a value.
bench_context() {
  local processor features
  processor=$(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -n 1)
  features=$(grep -m 1 '^flags' /proc/cpuinfo |
    grep -owE 'pclmulqdq|avx2|avx512bw|avx512_vbmi2|vpclmulqdq' | xargs) || features='SSE2 alone'
  printf -- '--benchmark_context=%s\n' "processor=${processor//[,=]/ }" "features=$features" \
    "compiler=$(package_name g++-mingw-w64-x86-64-posix)" "wine=$(package_name libwine)" \
    "commit=$(source_version)"
}

package_name() {
  echo "$1 $(package_version "$1")" | tr ',=' '  '
}

source_version() {
  git -C "$root" -c safe.directory="$root" describe --always --dirty --abbrev=7 --exclude='*' \
    2>/dev/null || echo unknown
}

# report_tasks FOLDER: the table, or what the tasks ask for instead.
report_tasks() {
  local task common=(--measured "$1" --results "$output/bench/results.json")
  local page=$root/docs/performance.md baseline=$root/bench/baseline.json
  for task in "${tasks[@]:-table}"; do
    case $task in
      table) report table "${common[@]}" "${groups[@]}" ;;
      compare) report compare "${common[@]}" --baseline "$baseline" "${groups[@]}" || status=$? ;;
      baseline)
        report baseline "${common[@]}" --baseline "$baseline" "${groups[@]}"
        give_to_owner "$baseline"
        ;;
      plot)
        require_packages "${plot_packages[@]}"
        report plot "${common[@]}" --page "$page" "${groups[@]}"
        give_to_owner "$page" "${page%.md}"
        ;;
    esac
  done
}

# What root wrote outside the build folder belongs to the owner of the source tree.
give_to_owner() {
  [ "$(id -u)" != 0 ] || chown -R --reference="$root" "$@"
}

report() {
  MPLCONFIGDIR=$TMPDIR/matplotlib "$python" -B "$root/bench/report.py" "$@"
}
