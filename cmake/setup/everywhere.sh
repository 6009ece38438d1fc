# Sourced by kv: the suite for users of other languages, in folders named in other scripts.

# The locale of the host, the user's locale that Windows programs see, the folder of the sandboxes.
readonly places=(
  'en_US en-US Каталог'
  'de_DE de-DE 天文データ'
  'fr_CA fr-CA 🌍пуск'
  'pt_BR pt-BR 天文データ'
  'ru_RU ru-RU 🌍пуск'
  'ja_JP ja-JP Каталог'
)

# run_everywhere [ARGUMENT...]: run_cases in each place, in random order.
run_everywhere() {
  local place locale user_locale folder results=()
  require_packages "${everywhere_packages[@]}"
  for place in "${places[@]}"; do
    read -r locale user_locale folder <<<"$place"
    provide_locale "$locale"
    echo "For a user of $user_locale, in the folder $folder:"
    hand_over "$sandbox/$folder"
    LOCPATH=$locales KVUTILS_LOCALE=$locale.UTF-8 KVUTILS_USER_LOCALE=$user_locale \
      KVUTILS_SANDBOX_ROOT=$sandbox/$folder run_cases "$@" --schedule-random
    collect_result "$user_locale"
  done
  report_results
}

# What the runs end with: one that fails does not keep the others from running.
collect_result() {
  [ "$status" = 0 ] || results+=("$1")
}

report_results() {
  status=0
  [ ${#results[@]} != 0 ] || return 0
  status=1
  echo "Failed for users of: ${results[*]}"
}

# A locale of the C library is what Wine takes the names of files and the user's locale from.
readonly locales=$build/locales
provide_locale() {
  local folder=$locales/$1.UTF-8
  [ ! -d "$folder" ] || return 0
  rm -rf "$folder.new"
  mkdir -p "$locales"
  step "Making the locale $1" localedef --inputfile="$1" --charmap=UTF-8 "$folder.new"
  mv "$folder.new" "$folder"
}
