// Angles and object numbers at the edges of their types.
#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <cmath>
#include <limits>

#include "tests/support/sandbox.h"
#include "utils/astro/astro.h"

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(AngleLimits, AnglesWithoutSizeAreNothing) {
  for (const auto split : {Rad2RA, Rad2Dec}) {
    for (const bool roundToSecond : {false, true}) {
      for (const double radians : {0.0, -0.0, DBL_TRUE_MIN, -DBL_TRUE_MIN, DBL_MIN, -DBL_MIN}) {
        SCOPED_TRACE(radians);
        int leading = 99;
        int minutes = 99;
        double seconds = 99.0;
        split(&leading, &minutes, &seconds, radians, roundToSecond);
        EXPECT_EQ(leading, 0);
        EXPECT_EQ(minutes, 0);
        EXPECT_EQ(seconds, 0.0);
        EXPECT_FALSE(std::signbit(seconds));
      }
    }
  }
}

TEST(AngleLimits, PartsAreJoinedWhateverTheirSize) {
  const struct {
    int leading;
    int minutes;
    double seconds;
    double fromHours;
    double fromDegrees;
  } rows[] = {
      {0, INT_MIN, 0.0, 0.0, 0.0},
      {0, INT_MIN, 1.0, 7.27220521664304e-05, 4.84813681109536e-06},
      {0, 0, DBL_MAX, kInfinity, kInfinity},
      {0, 0, -DBL_MAX, -kInfinity, -kInfinity},
      {0, 0, -kInfinity, -kInfinity, -kInfinity},
      {0, 0, DBL_TRUE_MIN, 0.0, 0.0},
      {0, 0, -0.0, 0.0, 0.0},
      {-1, 0, -kInfinity, -kInfinity, kInfinity},
      {INT_MIN, INT_MIN, 0.0, 0.0, -0.0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.leading << " " << row.minutes << " " << row.seconds);
    double radians = 99.0;
    RA2Rad(&radians, row.leading, row.minutes, row.seconds);
    EXPECT_EQ(radians, row.fromHours);
    EXPECT_EQ(std::signbit(radians), std::signbit(row.fromHours));
    Dec2Rad(&radians, row.leading, row.minutes, row.seconds);
    EXPECT_EQ(radians, row.fromDegrees);
    EXPECT_EQ(std::signbit(radians), std::signbit(row.fromDegrees));
  }
}

class RecordLimits : public kv::test::Sandbox {};

TEST_F(RecordLimits, ObjectNumbersReachToTheGreatest) {
  DwarfPlanetRecord record = {};
  DwarfPlanetsIO records;
  int count = 0;
  for (const unsigned number : {0U, 1U, 0x7FFFFFFFU, 0x80000000U, UINT_MAX}) {
    SCOPED_TRACE(number);
    Elements elements = {};
    EXPECT_FALSE(records.Get(&elements, {UINT_MAX, number}));
    record.id = {7, number};
    record.elements.bytes[67] = static_cast<unsigned char>(number);
    EXPECT_EQ(records.Set(record), ++count);
    EXPECT_EQ(records.Set(record), count);
    EXPECT_TRUE(records.Get(&elements, {UINT_MAX, number}));
    EXPECT_EQ(elements.bytes[67], static_cast<unsigned char>(number));
  }
}

}  // namespace
