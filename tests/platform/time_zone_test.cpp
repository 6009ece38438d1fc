#include <gtest/gtest.h>
#include <windows.h>

#include <cfloat>
#include <limits>
#include <string>

#include "utils/platform/platform.h"

namespace {

constexpr double kWinter = 2459580.5;  // 1 January 2022, 00:00 UTC
constexpr double kSummer = 2459762.5;  // 2 July 2022, 00:00 UTC
constexpr double kHour = 0.041666666666666664;
constexpr double kTwoHours = 0.08333333333333333;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

struct OffsetCase {
  const char* zone;
  double julianDate;
  double days;
};

// Bit for bit: the offset is whole milliseconds times 1.1574074074074074e-08.
template <std::size_t size>
void CheckOffsets(const OffsetCase (&cases)[size]) {
  for (const OffsetCase& row : cases) {
    SCOPED_TRACE(std::string(row.zone == nullptr ? "(null)" : row.zone) + " at " +
                 std::to_string(row.julianDate));
    EXPECT_EQ(getLocalUTCDeltaForTimezone(row.zone, row.julianDate), row.days);
  }
}

TEST(TimeZone, GivesTheOffsetInDays) {
  const OffsetCase cases[] = {
      {"Europe/Berlin", kWinter, kHour},
      {"Europe/Berlin", kSummer, kTwoHours},
      {"Europe/London", kWinter, 0.0},
      {"Europe/London", kSummer, kHour},
      {"UTC", kSummer, 0.0},
      {"America/New_York", kWinter, -0.20833333333333334},
      {"Asia/Kathmandu", kWinter, 0.23958333333333334},
      {"Australia/Adelaide", kWinter, 0.4375},
  };
  CheckOffsets(cases);
}

TEST(TimeZone, KnowsFixedOffsets) {
  const OffsetCase cases[] = {
      {"GMT+5", kSummer, 0.20833333333333334},
      {"GMT-03:30", kSummer, -0.14583333333333334},
      {"Etc/GMT+5", kSummer, -0.20833333333333334},
      {"GMT", kSummer, 0.0},
  };
  CheckOffsets(cases);
}

TEST(TimeZone, TakesTheInstantAsUtc) {
  // Berlin leaves summer time on 30 October 2022 at 01:00 UTC, 03:00 local time.
  const OffsetCase cases[] = {
      {"Europe/Berlin", 2459882.5 + 0.5 / 24, kTwoHours},
      {"Europe/Berlin", 2459882.5 + 1.5 / 24, kHour},
  };
  CheckOffsets(cases);
}

TEST(TimeZone, UsesLocalMeanTimeBeforeStandardTime) {
  const OffsetCase cases[] = {
      {"Europe/Berlin", 2400000.5, 0.03712962962962963},
      {"Europe/Berlin", 0.0, 0.03712962962962963},
      {"Europe/Berlin", -1e6, 0.03712962962962963},
  };
  CheckOffsets(cases);
}

TEST(TimeZone, AnswersZeroForAnUnknownZone) {
  const OffsetCase cases[] = {
      {"Nowhere/Atlantis", kSummer, 0.0},     {"Nowhere/Atlantis", kSummer, 0.0},
      {"Europe/Berlin", kSummer, kTwoHours},  {"europe berlin", kSummer, 0.0},
      {"Europe/Berli", kSummer, 0.0},         {"Europe/Berlin ", kSummer, 0.0},
      {"Europe/B\xC3\xA9rlin", kSummer, 0.0}, {"\xFF\xC3", kSummer, 0.0},
      {"Europe/Berlin", kSummer, kTwoHours},
  };
  CheckOffsets(cases);
}

TEST(TimeZone, AnswersZeroForNoName) {
  const OffsetCase cases[] = {
      {"", kSummer, 0.0},
      {nullptr, kSummer, 0.0},
      {"", 0.0, 0.0},
      {"Europe/Berlin", kSummer, kTwoHours},
      {"", kSummer, 0.0},
      {nullptr, kSummer, 0.0},
      {nullptr, kNaN, 0.0},
      {nullptr, DBL_MIN, 0.0},
      {"Nowhere/Atlantis", kSummer, 0.0},
      {"", kSummer, 0.0},
      {"", kNaN, 0.0},
      {"Europe/Berlin", kSummer, kTwoHours},
  };
  CheckOffsets(cases);
}

TEST(TimeZone, AnswersZeroForNoNameAtTheFirstCall) {
  for (const char* name : {"", static_cast<const char*>(nullptr)}) {
    EXPECT_EQ(getLocalUTCDeltaForTimezone(name, kSummer), 0.0);
    EXPECT_EQ(getLocalUTCDeltaForTimezone("", kSummer), 0.0);
    EXPECT_EQ(getLocalUTCDeltaForTimezone(nullptr, 0.0), 0.0);
  }
}

TEST(TimeZone, AlternatesBetweenZones) {
  for (int i = 0; i < 100; ++i) {
    EXPECT_EQ(getLocalUTCDeltaForTimezone("Europe/Berlin", kSummer), kTwoHours);
    EXPECT_EQ(getLocalUTCDeltaForTimezone("GMT+5", kSummer), 0.20833333333333334);
  }
}

// The library keeps a copy of the name, not the caller's pointer.
TEST(TimeZone, ComparesTheTextOfTheName) {
  char name[] = "Europe/Berlin";
  EXPECT_EQ(getLocalUTCDeltaForTimezone(name, kSummer), kTwoHours);
  std::string("Europe/London").copy(name, sizeof name - 1);
  EXPECT_EQ(getLocalUTCDeltaForTimezone(name, kSummer), kHour);
}

TEST(TimeZone, AnswersNamesOfAnyLength) {
  for (const std::size_t length : {62U, 63U, 64U, 65U, 255U, 1000U, 100000U}) {
    SCOPED_TRACE(length);
    const std::string name(length, 'x');
    EXPECT_EQ(getLocalUTCDeltaForTimezone(name.c_str(), kSummer), 0.0);
    EXPECT_EQ(getLocalUTCDeltaForTimezone(name.c_str(), kSummer), 0.0);
    EXPECT_EQ(getLocalUTCDeltaForTimezone("", kSummer), 0.0);
    EXPECT_EQ(getLocalUTCDeltaForTimezone("Europe/Berlin", kSummer), kTwoHours);
    EXPECT_EQ(getLocalUTCDeltaForTimezone(name.c_str(), kSummer), 0.0);
    EXPECT_EQ(getLocalUTCDeltaForTimezone("Europe/Berlin", kSummer), kTwoHours);
  }
}

TEST(TimeZone, AnswersZeroForADateThatIsNotANumber) {
  const OffsetCase cases[] = {
      {"Europe/Berlin", kNaN, 0.0}, {"Europe/Berlin", kSummer, kTwoHours},   {"GMT+5", kNaN, 0.0},
      {"Europe/Berlin", kNaN, 0.0}, {"GMT+5", kSummer, 0.20833333333333334},
  };
  CheckOffsets(cases);
}

TEST(TimeZone, StaysWithinTheRangeOfTheCalendar) {
  for (const double julianDate : {2.13e9, 1e10, 1e18, 1e300, DBL_MAX, kInfinity}) {
    SCOPED_TRACE(julianDate);
    // The calendar ends in a December.
    const OffsetCase cases[] = {
        {"GMT+5", julianDate, 0.20833333333333334},
        {"GMT+5", -julianDate, 0.20833333333333334},
        {"Asia/Kathmandu", julianDate, 0.23958333333333334},
        {"Asia/Kathmandu", -julianDate, 0.23699074074074072},  // local mean time, 5:41:16
        {"Europe/Berlin", julianDate, kHour},
        {"Europe/Berlin", -julianDate, 0.03712962962962963},
    };
    CheckOffsets(cases);
  }
}

// The rules repeat every 400 years (146,097 days) as the calendar does.
TEST(TimeZone, KeepsTheLastRuleForMillionsOfYears) {
  const double cycle = 146097.0;
  for (const double cycles : {1.0, 10.0, 1000.0, 14000.0}) {
    SCOPED_TRACE(cycles);
    const OffsetCase cases[] = {
        {"Europe/Berlin", kWinter + cycles * cycle, kHour},
        {"Europe/Berlin", kSummer + cycles * cycle, kTwoHours},
    };
    CheckOffsets(cases);
  }
}

TEST(TimeZone, StartsAfreshAfterTheRelease) {
  EXPECT_EQ(getLocalUTCDeltaForTimezone(nullptr, 0.0), 0.0);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(getLocalUTCDeltaForTimezone("Europe/Berlin", kSummer), kTwoHours);
    EXPECT_EQ(getLocalUTCDeltaForTimezone(nullptr, i == 1 ? -0.0 : 0.0), 0.0);
    EXPECT_EQ(getLocalUTCDeltaForTimezone(nullptr, 0.0), 0.0);
  }
}

}  // namespace
