// Texts, settings of the user, the time zone and programs: what leaves no file behind.
#include <cmath>
#include <sstream>
#include <string>
#include <vector>

#include "tests/faults/operations.h"
#include "tests/support/files.h"
#include "utils/extra/time_zones.h"
#include "utils/platform/platform.h"
#include "utils/text/text.h"

namespace kv::test {
namespace {

void Nothing() {}

std::string AskZone() {
  const double winter = 24 * getLocalUTCDeltaForTimezone("Europe/Berlin", 2459580.5);
  const double summer = 24 * getLocalUTCDeltaForTimezone("Europe/Berlin", 2459762.5);
  getLocalUTCDeltaForTimezone(nullptr, 0.0);
  std::ostringstream told;
  told << std::lround(winter) << ' ' << std::lround(summer);
  return told.str();
}

std::string AskZoneRules() {
  std::ostringstream told;
  const auto change = kv::NextTransition("Europe/Berlin", 2459580.5);
  const auto utc = kv::UtcFromLocal("Asia/Kathmandu", 2459580.5);
  told << kv::IsKnownZone("GMT+5") << kv::IsKnownZone("Nowhere/Atlantis") << ' '
       << (change ? std::lround((change->julianDate - 2459580.5) * 24) : 0) << ' '
       << (utc ? std::lround((utc->later - 2459580.5) * 1440) : 0) << ' '
       << kv::TimeZoneDataVersion().size();
  return told.str();
}

std::string AskSettings() {
  std::ostringstream told;
  const bool is24Hours = is24HoursSystemTimeFormat();
  told << (is24Hours ? "24" : "12") << ' ' << GetSystemLocale();
  return told.str();
}

std::string CompareTexts() {
  SetCodePage("de");
  std::ostringstream told;
  told << CompareStrings("ab", "ac", false) << CompareStringsWestern("Zo\xC3\xA9", "Zoo")
       << CompareNoCaseStrings("AB", "ab") << CompareStringsForJapan("a", "b")
       << CompareStringsRange("abc", "abd", 2) << CompareStringsRangeExt("abc", "abd", true, false);
  return told.str();
}

std::string ConvertTexts() {
  SetCodePage("ru");
  char text[64] = "\xCF\xF0";
  const bool isConverted = Ascii2Utf8(text, sizeof text, -1);
  char narrow[64] = "-";
  const bool isNarrow = Unicode2Ascii(L"\x041F", narrow, sizeof narrow);
  char upper[64] = "abc";
  UpperCase(upper, sizeof upper);
  std::ostringstream told;
  told << isConverted << isNarrow << ' ' << upper;
  return told.str();
}

std::string Unpack() {
  std::ostringstream told;
  told << UnzipFile("f\\a.zip", "f\\g\\");
  return told.str();
}

}  // namespace

std::vector<Operation> PlatformOperations() {
  return {
      {"getLocalUTCDeltaForTimezone", Nothing, AskZone, "1 2", "[01] [02]"},
      {"kv::NextTransition", Nothing, AskZoneRules, "10 2041 -345 5", "[01]0 (2041|0) (-345|0) 5"},
      {"GetSystemLocale", Nothing, AskSettings, "12 en", "(12|24) (en|de|fr|ru|es|it|nl|ja)"},
      {"CompareStrings", Nothing, CompareTexts, "-1-10-101", "(-1|0|1|-3){6}"},
      {"Ascii2Utf8", Nothing, ConvertTexts, "11 ABC", "[01][01] (ABC|abc)"},
      {"UnzipFile", Nothing, Unpack, "1", "[01]"},
  };
}

}  // namespace kv::test
