// The offsets of all zones beside those of the machine's own time zone data, of which
// zone_rules.py makes a table.
#include <gtest/gtest.h>

#include <cmath>
#include <iostream>
#include <sstream>
#include <string>

#include "tests/support/files.h"
#include "tests/support/process.h"
#include "utils/extra/time_zones.h"
#include "utils/platform/platform.h"

namespace {

// In seconds. An instant on the far side of a change is asked for half a second behind it, where a
// Julian Date cannot lie before it.
long OffsetAt(const std::string& zone, long long instant) {
  const double julianDate = (static_cast<double>(instant) + 0.5) / 86400.0 + 2440587.5;
  return std::lround(getLocalUTCDeltaForTimezone(zone.c_str(), julianDate) * 86400.0);
}

struct Difference {
  int rows = 0;
  std::string first;
};

// What a comparison with the table comes to.
struct Comparison {
  std::string pinnedVersion;
  std::string systemVersion;
  int zones = 0;
  int rows = 0;
  Difference unexplained;
  Difference explained;  // in zones whose rules the two versions tell differently
};

void Compare(const std::string& zone, long long instant, long expected, Difference& difference) {
  const long offset = OffsetAt(zone, instant);
  if (offset == expected) return;
  if (difference.rows++ > 0) return;
  std::ostringstream told;
  told << zone << " at " << instant << ": " << offset << " and not " << expected;
  difference.first = told.str();
}

Comparison CompareWithTable(const std::string& table) {
  Comparison comparison;
  std::istringstream lines(table);
  std::string zone;
  Difference* difference = nullptr;
  for (std::string key, value; lines >> key >> value;) {
    if (key == "pinned") {
      comparison.pinnedVersion = value;
    } else if (key == "system") {
      comparison.systemVersion = value;
    } else if (key == "zone" || key == "differing-zone") {
      zone = value;
      difference = key == "zone" ? &comparison.unexplained : &comparison.explained;
      ++comparison.zones;
    } else {
      Compare(zone, std::stoll(key), std::stol(value), *difference);
      ++comparison.rows;
    }
  }
  return comparison;
}

std::ostream& operator<<(std::ostream& out, const Comparison& comparison) {
  return out << comparison.zones << " zones, " << comparison.rows
             << " rows: the library has the rules " << comparison.pinnedVersion << ", the machine "
             << comparison.systemVersion << "; " << comparison.unexplained.rows
             << " rows differ, and " << comparison.explained.rows
             << " in zones whose rules are different in the two";
}

TEST(SystemZones, DISABLED_AgreeWithTheLibrary) {
  const std::string file = kv::test::Environment("KVUTILS_ZONE_TABLE");
  ASSERT_NE(file, "");
  const Comparison comparison = CompareWithTable(kv::test::ReadBytes(file));
  std::cout << comparison << '\n';
  EXPECT_EQ(kv::TimeZoneDataVersion(), comparison.pinnedVersion);
  EXPECT_GT(comparison.zones, 500);
  EXPECT_GT(comparison.rows, 150 * comparison.zones);
  EXPECT_EQ(comparison.unexplained.rows, 0) << comparison.unexplained.first;
  if (comparison.pinnedVersion == comparison.systemVersion) {
    EXPECT_EQ(comparison.explained.rows, 0) << comparison.explained.first;
  }
}

}  // namespace
