// Single functions of the tour.

#include "examples/tour/calendar.h"
#include "examples/tour/earth_orbit.h"
#include "examples/tour/format_text.h"
#include "examples/tour/orbital_elements.h"
#include "examples/tour/sky_text.h"

#include <gtest/gtest.h>

#include <limits>
#include <numbers>
#include <optional>
#include <string>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(TourSkyText, CarriesRightAscensionOverEveryField) {
  const struct {
    double seconds;  // of time
    const char* text;
  } kRows[] = {
      {0.0, "00 00 00.0"},      {59.94, "00 00 59.9"},   {59.96, "00 01 00.0"},
      {3599.96, "01 00 00.0"},  {6537.94, "01 48 57.9"}, {86399.94, "23 59 59.9"},
      {86399.96, "00 00 00.0"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(tour::RightAscensionText(row.seconds * std::numbers::pi / 43200.0), row.text);
  }
}

TEST(TourSkyText, CarriesDeclinationOverEveryFieldAndKeepsItsSign) {
  const struct {
    double seconds;  // of arc
    const char* text;
  } kRows[] = {
      {0.0, "+00 00 00"},      {0.4, "+00 00 00"},      {-0.4, "+00 00 00"},
      {-0.6, "-00 00 01"},     {59.6, "+00 01 00"},     {-59.6, "-00 01 00"},
      {-1800.0, "-00 30 00"},  {3599.6, "+01 00 00"},   {-3599.6, "-01 00 00"},
      {323999.4, "+89 59 59"}, {323999.6, "+90 00 00"}, {-323999.6, "-90 00 00"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(std::to_string(row.seconds));
    EXPECT_EQ(tour::DeclinationText(row.seconds * std::numbers::pi / 648000.0), row.text);
  }
}

// Positions of the routine epv00 of the IAU's SOFA collection (release 2021-05-12), turned to the
// ecliptic of J2000 by 84381.448". 2e-5 AU are 4" as seen from the Sun.
TEST(TourEarth, FollowsSofa) {
  const struct {
    double julianDate;
    double x, y, z;
  } kRows[] = {
      {2378496.5, -0.2250167, 0.9571256, 0.0004266},    // 1800-01-01
      {2396894.5, -0.5392543, -0.8561328, -0.0003056},  // 1850-05-17
      {2415240.5, 0.7451321, -0.6872541, -0.0001422},   // 1900-08-09
      {2424457.5, 0.7474138, 0.6519369, 0.0001249},     // 1925-11-03
      {2433332.5, -0.8688918, 0.4719974, 0.0000462},    // 1950-02-20
      {2442593.5, 0.1406735, -1.0068647, -0.0000596},   // 1975-06-30
      {2451544.5, -0.1685246, 0.9687833, -0.0000041},   // 2000-01-01
      {2461305.5, 1.0035811, -0.0236926, -0.0000034},   // 2026-09-22
      {2469910.5, -0.9192522, -0.4006103, 0.0000532},   // 2050-04-14
      {2479276.5, 0.3062103, 0.9369187, -0.0001697},    // 2075-12-05
      {2488268.5, 0.4308273, -0.9204343, 0.0002050},    // 2100-07-19
      {2506611.5, 0.9758815, 0.2181293, -0.0001023},    // 2150-10-08
      {2524592.5, -0.1115804, 0.9771126, -0.0004343},   // 2199-12-31
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(std::to_string(row.julianDate));
    EXPECT_LE(tour::Length(tour::EarthPosition(row.julianDate) -
                           tour::Vector{.x = row.x, .y = row.y, .z = row.z}),
              2e-5);
  }
}

TEST(TourCalendar, ConvertsJulianDatesAndBoundsThem) {
  const struct {
    double julianDate;
    const char* text;
  } kRows[] = {
      {2461200.5, "2026-06-09 00:00:00"},  {2457588.5, "2016-07-19 00:00:00"},
      {2451545.0, "2000-01-01 12:00:00"},  {2300000.0, "1585-01-31 12:00:00"},
      {2600000.0, "2406-06-16 12:00:00"},  {2600000.1, "2406-06-16 12:00:00"},
      {1e300, "2406-06-16 12:00:00"},      {kInfinity, "2406-06-16 12:00:00"},
      {2299999.9, "1585-01-31 12:00:00"},  {-1e300, "1585-01-31 12:00:00"},
      {-kInfinity, "1585-01-31 12:00:00"}, {kNaN, "1585-01-31 12:00:00"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(std::to_string(row.julianDate));
    EXPECT_EQ(tour::DateTimeText(tour::CivilTimeOf(row.julianDate)), row.text);
  }
}

TEST(TourText, QuotesForOneLineOfATerminal) {
  const std::string tens = "1234567890";
  const struct {
    std::string text;
    std::string quoted;
  } kRows[] = {
      {"", "\"\""},
      {"Europe/Berlin", "\"Europe/Berlin\""},
      {tens + tens + tens + tens, "\"" + tens + tens + tens + tens + "\""},
      {tens + tens + tens + tens + "1", "\"" + tens + tens + tens + tens + "...\""},
      {"\t\r\n\x1B\x7F", "\"?????\""},
      {std::string("a\0b", 3), "\"a?b\""},
      {"ü€𝄞", "\"ü€𝄞\""},
      {"\xC2\x85\xC2\xA0", "\"?\xC2\xA0\""},
      // Bytes that are no UTF-8: a stray continuation, a cut character, what begins none.
      {"\x80x", "\"?x\""},
      {"x\xC3", "\"x?\""},
      {"\xE2\x82x", "\"??x\""},
      {"\xC0\xAF\xF5\xFF", "\"????\""},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.quoted);
    EXPECT_EQ(tour::Quoted(row.text), row.quoted);
  }
}

constexpr tour::OrbitalElements kSound = {.epoch = 2461200.5,
                                          .semiMajorAxis = 2.77,
                                          .eccentricity = 0.08,
                                          .inclination = 10.6,
                                          .ascendingNode = 80.2,
                                          .perihelionArgument = 73.3,
                                          .meanAnomaly = 274.4};

TEST(TourElements, ComeBackAsTheyWerePacked) {
  tour::OrbitalElements elements = kSound;
  elements.standing = tour::Standing::kAccepted;
  elements.timesPicked = 7;
  elements.lastPicked = 20261121;
  const std::optional<tour::OrbitalElements> unpacked = tour::Unpack(tour::Pack(elements));
  ASSERT_TRUE(unpacked);
  EXPECT_EQ(unpacked->epoch, 2461200.5);
  EXPECT_EQ(unpacked->semiMajorAxis, 2.77);
  EXPECT_EQ(unpacked->eccentricity, 0.08);
  EXPECT_EQ(unpacked->inclination, 10.6);
  EXPECT_EQ(unpacked->ascendingNode, 80.2);
  EXPECT_EQ(unpacked->perihelionArgument, 73.3);
  EXPECT_EQ(unpacked->meanAnomaly, 274.4);
  EXPECT_EQ(unpacked->standing, tour::Standing::kAccepted);
  EXPECT_EQ(unpacked->timesPicked, 7U);
  EXPECT_EQ(unpacked->lastPicked, 20261121U);
}

TEST(TourElements, OfADamagedRecordAreRefused) {
  using tour::OrbitalElements;
  const struct {
    double OrbitalElements::*element;
    double value;
    bool isSound;
  } kRows[] = {
      {&OrbitalElements::epoch, 2300000.0, true},
      {&OrbitalElements::epoch, 2600000.0, true},
      {&OrbitalElements::epoch, 2299999.0, false},
      {&OrbitalElements::epoch, 2600001.0, false},
      {&OrbitalElements::epoch, 1e300, false},
      {&OrbitalElements::semiMajorAxis, 543.7, true},
      {&OrbitalElements::semiMajorAxis, 0.0, false},
      {&OrbitalElements::semiMajorAxis, -2.77, false},
      {&OrbitalElements::semiMajorAxis, 5e-324, false},
      {&OrbitalElements::semiMajorAxis, 1e300, false},
      {&OrbitalElements::eccentricity, 0.0, true},
      {&OrbitalElements::eccentricity, 0.99, true},
      {&OrbitalElements::eccentricity, 1.0, false},
      {&OrbitalElements::eccentricity, -0.01, false},
      {&OrbitalElements::inclination, 360.0, true},
      {&OrbitalElements::inclination, 360.1, false},
      {&OrbitalElements::ascendingNode, -360.0, true},
      {&OrbitalElements::ascendingNode, -360.1, false},
      {&OrbitalElements::perihelionArgument, 360.1, false},
      {&OrbitalElements::meanAnomaly, 1e300, false},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(std::to_string(&row - kRows) + ": " + std::to_string(row.value));
    OrbitalElements elements = kSound;
    elements.*row.element = row.value;
    EXPECT_EQ(tour::Unpack(tour::Pack(elements)).has_value(), row.isSound);
  }
  for (double OrbitalElements::*element :
       {&OrbitalElements::epoch, &OrbitalElements::semiMajorAxis, &OrbitalElements::eccentricity,
        &OrbitalElements::inclination, &OrbitalElements::ascendingNode,
        &OrbitalElements::perihelionArgument, &OrbitalElements::meanAnomaly}) {
    for (const double value : {kNaN, kInfinity, -kInfinity}) {
      OrbitalElements elements = kSound;
      elements.*element = value;
      EXPECT_FALSE(tour::Unpack(tour::Pack(elements))) << value;
    }
  }
}

TEST(TourElements, OfAnotherLayoutAreRefused) {
  Elements block = tour::Pack(kSound);
  ASSERT_TRUE(tour::Unpack(block));
  block.bytes[0] = 2;
  EXPECT_FALSE(tour::Unpack(block));
}

}  // namespace
