// Time zone names, named parameters, the language of the interface, file names out of other names.
#include <cmath>
#include <cstdio>
#include <map>
#include <stdexcept>
#include <string>

#include "tests/fuzz/support/guarded_copy.h"
#include "tests/fuzz/support/target.h"
#include "utils/extra/time_zones.h"
#include "utils/paths/paths.h"
#include "utils/platform/platform.h"

namespace kv::fuzz {
namespace {

// The rules agree with the offsets that they give.
void CheckZoneRules(const char* name, double date) {
  const auto change = NextTransition(name, date);
  const auto utc = UtcFromLocal(name, date);
  if (!IsKnownZone(name)) ExpectThat("an unknown zone has no rules", !change && !utc);
  if (change) {
    ExpectThat("the change is not before the date", change->julianDate >= date);
    Expect("offset behind the change", getLocalUTCDeltaForTimezone(name, change->julianDate),
           change->after);
    const double before = std::nextafter(change->julianDate, -HUGE_VAL);
    Expect("offset before the change", getLocalUTCDeltaForTimezone(name, before), change->before);
  }
  if (utc) {
    ExpectThat("the instants are in order", utc->earlier <= utc->later);
    ExpectThat("one instant alone where the local time is unique",
               utc->kind != LocalTimeKind::kUnique || utc->earlier == utc->later);
    const double later = utc->later + getLocalUTCDeltaForTimezone(name, utc->later);
    const double resolution = 1e-8 + std::fabs(date) * 1e-15;
    if (utc->kind != LocalTimeKind::kSkipped) {
      ExpectThat("the instant is of the local time", std::fabs(later - date) <= resolution);
    }
  }
}

void CheckTimeZone(Input input) {
  const double date = input.Flag() ? 2451545.0 + input.Take<short>() : input.Take<double>();
  const std::string name = input.Text();
  const std::string other = input.Text();
  const GuardedText guarded(name);
  const double delta = getLocalUTCDeltaForTimezone(guarded.Get(), date);
  ExpectThat("the offset is a time of day", std::fabs(delta) <= 1.0);
  CheckZoneRules(guarded.Get(), date);
  const double seconds = delta * 86400;
  ExpectThat("the offset is of whole milliseconds",
             std::fabs(seconds * 1000 - std::round(seconds * 1000)) < 1e-3);
  Expect("offset again", getLocalUTCDeltaForTimezone(guarded.Get(), date), delta);
  const double otherDelta = getLocalUTCDeltaForTimezone(other.c_str(), date);
  Expect("offset behind another", getLocalUTCDeltaForTimezone(guarded.Get(), date), delta);
  if (name.empty() || std::isnan(date)) Expect("offset of nothing", delta, 0.0);
  getLocalUTCDeltaForTimezone(nullptr, 0.0);
  Expect("offset of a fresh zone", getLocalUTCDeltaForTimezone(other.c_str(), date), otherDelta);
}

void CheckFixedOffset(const std::string& name, double expected) {
  const double delta = getLocalUTCDeltaForTimezone(name.c_str(), 2451545.0);
  ExpectThat(name.c_str(), std::fabs(delta - expected) < 1e-9);
}

void CheckTimeZones(Input input) {
  const int hours = input.Between(0, 23);
  const int minutes = input.Between(0, 59);
  char name[16];
  std::snprintf(name, sizeof name, "GMT-%d:%02d", hours, minutes);
  CheckFixedOffset(name, -(hours * 60 + minutes) / 1440.0);
  CheckTimeZone(input);
}

void CheckParameters(Input input) {
  IntParametersSender sender;
  std::map<std::string, int> plain;
  while (!input.IsUsedUp()) {
    const int value = input.Take<signed char>();
    const std::string name = input.Text();
    const GuardedText guarded(name);
    if (value % 2 == 0) {
      sender.SetParamByName(value, guarded.Get());
      plain[name] = value;
    }
    int found = -1000;
    const auto place = plain.find(name);
    Expect("whether set", sender.GetParamByName(&found, guarded.Get()), place != plain.end());
    Expect("parameter", found, place == plain.end() ? -1000 : place->second);
  }
}

void CheckLanguage(const std::string& code) {
  const GuardedText guarded(code);
  SetSystemLocale(guarded.Get());
  const std::string language = GetSystemLocale();
  if (!code.empty()) Expect("language", language, code.substr(0, 31));
  const bool hasDictionary =
      language == "de" || language == "en" || language == "fr" || language == "ru";
  Expect("dictionary", isDictionaryEnable(), hasDictionary ? 1 : 0);
  Expect("panel", GetPanelLdfFileNameWD(guarded.Get()),
         hasDictionary ? code : code.substr(0, code.find('.')) + "_wd.ldf");
  SetLocalFolder(guarded.Get());
  const std::string folder = KelvarisPath::GetLocaleFolder();
  static const std::map<std::string, std::string> kFolders = {
      {"en", "en"}, {"de", "de"}, {"fr", "fr"}, {"ru", "ru"}, {"es", "es"}, {"pt-PT", "pt"},
      {"pt", "pt"}, {"it", "it"}, {"nl", "nl"}, {"zh", "zh"}, {"ja", "ja"}};
  const auto row = kFolders.find(code);
  Expect("folder", folder, row == kFolders.end() ? "en" : row->second);
}

std::string UpdateName(const GuardedText& name) {
  try {
    return GetTempFileNameForDbUpdate(name.Get());
  } catch (const std::out_of_range& exception) {
    return exception.what();
  }
}

void CheckNames(Input input) {
  const std::string name = input.Text();
  const GuardedText guarded(name);
  const std::size_t dot = name.rfind('.');
  Expect("name of an update", UpdateName(guarded),
         dot == std::string::npos ? "invalid string position"
                                  : name.substr(0, dot) + "_new" + name.substr(dot));
  CheckLanguage(name);
}

const Registration kTimeZones(
    {.name = "time_zones",
     .check = CheckTimeZones,
     .seeds = {std::string("Europe/Berlin\0Asia/Kathmandu\0\0\1\1\x1E\5", 35),
               std::string("GMT+5\0Etc/GMT+5\0\1\2\1\1\1", 21), "America/New_York\1\1\1\1\1",
               "UTC\1\1\1\1\1"},
     .words = {"GMT+", "GMT-", ":", "Etc/", "Europe/", "EST5EDT", "-00:30", "#",
               "0123456789012345678901234567890123456789012345678901234567890123"},
     .maxSize = 120,
     .count = 4000});

const Registration kParameters({.name = "parameters",
                                .check = CheckParameters,
                                .seeds = {std::string("zoom\0fov\0zoom\0\0\2\1\4\6", 19)}});

const Registration kLanguages({.name = "languages",
                               .check = CheckNames,
                               .seeds = {"de", "pt-PT", "stars.bin", "panel.small.ldf", "ja"}});

}  // namespace
}  // namespace kv::fuzz
