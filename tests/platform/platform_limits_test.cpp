// Dates and times at the edges of their types.
#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <limits>
#include <string>

#include "utils/platform/platform.h"

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kLocalMeanTime = 0.03712962962962963;  // of Berlin, before zones were

TEST(PlatformLimits, DatesWithoutSizeAreTheFirstOfTheCount) {
  for (const double date : {0.0, -0.0, DBL_TRUE_MIN, -DBL_TRUE_MIN, DBL_MIN, -DBL_MIN}) {
    SCOPED_TRACE(date);
    EXPECT_EQ(getLocalUTCDeltaForTimezone("Europe/Berlin", date), kLocalMeanTime);
    // Only a date of exactly 0 with no name releases the zone; the answer is one.
    EXPECT_EQ(getLocalUTCDeltaForTimezone(nullptr, date), 0.0);
  }
  EXPECT_EQ(getLocalUTCDeltaForTimezone(nullptr, kInfinity), 0.0);
  EXPECT_EQ(getLocalUTCDeltaForTimezone(nullptr, -DBL_MAX), 0.0);
}

TEST(PlatformLimits, WaitsOfAnyDurationAreOverOrNot) {
  const struct {
    double seconds;
    bool isOver;
  } rows[] = {{DBL_MAX, false},      {-DBL_MAX, true},   {DBL_TRUE_MIN, true},
              {-DBL_TRUE_MIN, true}, {kInfinity, false}, {-kInfinity, true}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.seconds);
    WaitTime wait(row.seconds);
    // The clock moves on by a count at least.
    for (const double begin = getPreciseTime(); getPreciseTime() == begin;) {
    }
    EXPECT_EQ(wait.IsTimeOver(), row.isOver);
    wait.Start(0.0);
    EXPECT_TRUE(wait.IsTimeOver());
  }
}

TEST(PlatformLimits, ParametersHaveNamesOfAnyLength) {
  IntParametersSender sender;
  for (const std::size_t size : {0U, 255U, 256U, 257U, 2560U}) {
    const std::string name(size, 'n');
    int value = 7;
    EXPECT_FALSE(sender.GetParamByName(&value, name.c_str()));
    sender.SetParamByName(INT_MIN, name.c_str());
    EXPECT_TRUE(sender.GetParamByName(&value, name.c_str()));
    EXPECT_EQ(value, INT_MIN);
  }
}

TEST(PlatformLimits, PanelsHaveNamesOfAnyLength) {
  SetSystemLocale("ja");  // has no dictionary
  for (const std::size_t size : {255U, 256U, 259U, 260U, 261U, 2600U}) {
    const std::string name(size, 'n');
    EXPECT_EQ(GetPanelLdfFileNameWD((name + ".ldf").c_str()), name + "_wd.ldf");
    EXPECT_EQ(GetPanelLdfFileNameWD(name.c_str()), name + "_wd.ldf");
  }
}

}  // namespace
