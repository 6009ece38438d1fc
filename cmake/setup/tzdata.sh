# Sourced by kv: taking over the time zone rules of the machine's package tzdata.

readonly system_rules=/usr/share/zoneinfo

# Prints what changes; leaves files that are the same as they are.
refresh_zone_rules() {
  local file changed=
  for file in tzdata.zi zone.tab; do
    cmp --silent "$zone_rules/$file" "$system_rules/$file" || changed+=" $file"
  done
  if [ -z "$changed" ]; then
    echo "The time zone rules are those of the package tzdata: $(zone_rules_version). Nothing changes."
    return
  fi
  python3 -B "$recipes/zone_rules.py" changes {"$zone_rules","$system_rules"}/tzdata.zi
  for file in $changed; do
    install -m 644 "$system_rules/$file" "$zone_rules/$file"
  done
  echo "Taken over:$changed; the next build has them."
}
