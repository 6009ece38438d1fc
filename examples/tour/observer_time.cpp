#include "examples/tour/observer_time.h"

#include "examples/tour/calendar.h"
#include "examples/tour/format_text.h"
#include "utils/platform/platform.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace tour {
namespace {

// Names under which the zone database knows the zone that never leaves UTC.
constexpr const char* kUtcNames[] = {
    "UTC",       "GMT",           "Etc/UTC", "Etc/GMT",   "Zulu",      "Etc/Zulu",
    "Universal", "Etc/Universal", "UCT",     "Etc/UCT",   "Greenwich", "Etc/Greenwich",
    "GMT0",      "Etc/GMT0",      "GMT+0",   "Etc/GMT+0", "GMT-0",     "Etc/GMT-0"};

// In 1800 clocks went by the Sun of their own place, so that a zone with inhabitants differs from
// UTC then; the others differ from it by the rules of the present.
constexpr double kBeforeZones = 2378496.5;   // 1800-01-01
constexpr double kPresentRules = 2460492.5;  // 2024-07-01

// "+01:00", and seconds where the offset has them, as local mean times do.
std::string OffsetText(double days) {
  const long total = std::lround(std::abs(days) * 86400.0);
  std::string text =
      FormatText("%c%02ld:%02ld", days < 0.0 ? '-' : '+', total / 3600, total / 60 % 60);
  if (total % 60 != 0) text += FormatText(":%02ld", total % 60);
  return text;
}

}  // namespace

bool IsKnownZone(const std::string& zone) {
  const auto isZone = [&](const char* name) { return zone == name; };
  return std::any_of(std::begin(kUtcNames), std::end(kUtcNames), isZone) ||
         getLocalUTCDeltaForTimezone(zone.c_str(), kBeforeZones) != 0.0 ||
         getLocalUTCDeltaForTimezone(zone.c_str(), kPresentRules) != 0.0;
}

std::string LocalTimeText(const std::string& zone, double julianDate) {
  const double offset = getLocalUTCDeltaForTimezone(zone.c_str(), julianDate);
  return DateTimeText(CivilTimeOf(julianDate + offset)) + " " + zone + " (UTC" +
         OffsetText(offset) + ")";
}

}  // namespace tour
