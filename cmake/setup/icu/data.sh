# Sourced by kv: ICU's data, cut down to what the library uses: the time zones with the rules that
# stand in the folder rules, and the few small bundles without which ICU silently reads the number in
# a name such as "GMT+5" as 0. They become one object in an archive, so that no data file can be
# lost beside the DLL.

readonly zone_rules=$root/cmake/setup/icu/rules

# build_icu_data RESULT SCRATCH: fills RESULT/lib/libicudata.a.
build_icu_data() {
  local result=$1 scratch=$2
  unpack_icu "$scratch/icu"
  mkdir -p "$result/lib" "$scratch"/bundles/curr
  cd "$scratch"

  compile_zones "$scratch/icu/source"
  genrb --quiet --destdir bundles zoneinfo64.txt
  genrb --quiet --encoding UTF-8 --sourcedir "$icu_recipe" --destdir bundles root.txt
  genrb --quiet --encoding UTF-8 --sourcedir "$icu_recipe/curr" --destdir bundles/curr root.txt
  icupkg --destdir bundles --extract numberingSystems.res icu/source/data/in/icudt72l.dat
  printf '%s\n' zoneinfo64.res numberingSystems.res root.res curr/root.res >list.txt
  icupkg --type l --add list.txt --sourcedir bundles new icudt72l.dat

  cat >icudata.S <<'ASSEMBLER'
	.section .rdata,"dr"
	.balign 16
	.globl icudt72_dat
icudt72_dat:
	.incbin "icudt72l.dat"
ASSEMBLER
  x86_64-w64-mingw32-gcc-posix -c icudata.S
  x86_64-w64-mingw32-ar rcs "$result/lib/libicudata.a" icudata.o
}

# Makes zoneinfo64.txt, ICU's text form of the rules, with the rule compiler in ICU's source tree.
compile_zones() {
  local icu=$1 tools=$1/tools/tzcode
  gcc -O1 -w -D_POSIX_C_SOURCE -DTZDIR='"compiled"' -I"$tools" \
    "$tools"/{zic,localtime,asctime,scheck,ialloc}.c -o zic
  g++ -O1 -w -I"$tools" -I"$icu/common" "$tools/tz2icu.cpp" -o tz2icu
  gawk -f "$icu_recipe/tzdata_source.awk" "$zone_rules/tzdata.zi" >rules
  cp "$zone_rules/zone.tab" "$tools/icuregions" .
  ./zic -d compiled -L /dev/null rules "$tools/icuzones"
  ./tz2icu compiled zone.tab "$(zone_rules_version)"
}

zone_rules_version() {
  sed -n '1s/# version //p' "$zone_rules/tzdata.zi"
}
