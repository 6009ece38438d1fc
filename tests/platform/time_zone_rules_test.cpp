#include <gtest/gtest.h>

#include <string>

#include "utils/platform/platform.h"

namespace {

// A change of a zone's offset from UTC: the instant in seconds since 1970-01-01 00:00 UTC, and the
// offsets in seconds before and after it.
struct Transition {
  const char* zone;
  long long instant;
  int before;
  int after;
};

constexpr Transition kTransitions[] = {
#include "tests/platform/time_zone_rules.inc"
};

int OffsetInSeconds(const char* zone, long long instant) {
  const double julianDate = static_cast<double>(instant) / 86400.0 + 2440587.5;
  return static_cast<int>(getLocalUTCDeltaForTimezone(zone, julianDate) * 86400.0 + 86400.5) -
         86400;
}

// A Julian Date resolves some 40 microseconds: a second on either side of a change is told apart.
TEST(TimeZoneRules, ChangeOffsetsAtTheSecond) {
  for (const Transition& row : kTransitions) {
    SCOPED_TRACE(std::string(row.zone) + " at " + std::to_string(row.instant));
    EXPECT_EQ(OffsetInSeconds(row.zone, row.instant - 1), row.before);
    EXPECT_EQ(OffsetInSeconds(row.zone, row.instant + 1), row.after);
  }
}

}  // namespace
