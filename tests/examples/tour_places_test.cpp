// The places that the tour prints, against the ephemerides of JPL.

#include "tests/examples/tour_fixture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <numbers>
#include <sstream>
#include <string>

namespace {

using kv::test::Contains;
using kv::test::ProcessResult;
using TourPlaces = kv::test::Tour;

// A row of the printed table, in degrees and AU.
struct Row {
  double rightAscension;
  double declination;
  double fromEarth;
  double fromSun;
};

// "-00 01 17" as degrees; the sign stands before the degrees even where they are 0.
double Sexagesimal(const std::string& whole, double minutes, double seconds) {
  const double value = std::abs(std::atof(whole.c_str())) + minutes / 60.0 + seconds / 3600.0;
  return whole.front() == '-' ? -value : value;
}

bool FindRow(const std::string& page, const std::string& name, Row& row) {
  std::istringstream lines(page);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream fields(line);
    std::string number, word, recognised, hours, degrees;
    double raMinutes = 0, raSeconds = 0, minutes = 0, seconds = 0;
    fields >> number >> word >> recognised >> hours >> raMinutes >> raSeconds >> degrees >>
        minutes >> seconds >> row.fromEarth >> row.fromSun;
    if (fields.fail() || word != name) continue;
    row.rightAscension = 15.0 * Sexagesimal(hours, raMinutes, raSeconds);
    row.declination = Sexagesimal(degrees, minutes, seconds);
    return true;
  }
  return false;
}

double Separation(const Row& row, double rightAscension, double declination) {  // seconds of arc
  const double narrowing = std::cos(declination * std::numbers::pi / 180.0);
  const double east = std::remainder(row.rightAscension - rightAscension, 360.0) * narrowing;
  return std::hypot(east, row.declination - declination) * 3600.0;
}

struct KnownPlace {
  const char* name;
  const char* time;  // UTC
  double rightAscension;
  double declination;
  double tolerance;  // seconds of arc
  double fromEarth;
  double fromSun;
  double distanceTolerance;  // AU
};

constexpr double kNotGiven = -1.0;

// Astrometric geocentric places (ICRF) of JPL Horizons for Ceres on 14 and Pluto on 15 September
// 2026, with the distances that it gives. The other rows come from its heliocentric vectors for
// 2026-09-22 00:00 TDB, given to 1e-6 AU, seen from the Earth as the SOFA routine epv00 places it
// at the instant when the light of that moment arrives.
//
// Without rounding, two-body motion meets these places within 0.07" to 0.23" beyond Neptune, 2.1"
// and 2.6" for Ceres, and 115" for Pluto, whose elements are of 2016. The tolerances add what the
// printed digits leave open: 0.05 s in right ascension, 0.5" in declination.
constexpr KnownPlace kPlaces[] = {
    {"Ceres", "2026-09-14", 101.706521, 22.985889, 4.0, 2.857616, 2.686777, 0.00005},
    {"Ceres", "2026-09-22T00:21:43", 104.36937, 23.09166, 4.0, 2.750020, 2.680455, 0.00005},
    {"Pluto", "2026-09-15", 306.27211, -23.68704, 120.0, 34.9317, kNotGiven, 0.0400},
    {"Haumea", "2026-09-22T06:58:46", 219.83820, 13.75562, 1.5, 50.491802, 49.756812, 0.00006},
    {"Makemake", "2026-09-22T07:24:41", 201.37877, 19.90647, 1.5, 53.607157, 52.734026, 0.00006},
    {"Eris", "2026-09-22T13:05:23", 27.24131, -0.02138, 1.5, 94.572718, 95.460154, 0.00006},
    {"Gonggong", "2026-09-22T12:18:31", 337.45584, -10.22717, 1.5, 88.937511, 89.856817, 0.00006},
    {"Quaoar", "2026-09-22T05:51:27", 280.52479, -15.04290, 1.5, 42.396122, 42.603532, 0.00006},
    {"Sedna", "2026-09-22T11:24:05", 62.38047, 8.89742, 1.5, 82.392546, 82.843660, 0.00006},
    {"Orcus", "2026-09-22T06:45:35", 160.94687, -13.40766, 1.5, 48.904979, 47.980013, 0.00006},
};

TEST_F(TourPlaces, AgreeWithHorizons) {
  for (const KnownPlace& known : kPlaces) {
    SCOPED_TRACE(std::string(known.name) + " at " + known.time);
    const ProcessResult result = Run({known.time});
    Row row = {};
    ASSERT_TRUE(FindRow(result.out, known.name, row)) << result.out << result.err;
    EXPECT_LE(Separation(row, known.rightAscension, known.declination), known.tolerance);
    EXPECT_NEAR(row.fromEarth, known.fromEarth, known.distanceTolerance);
    if (known.fromSun == kNotGiven) continue;
    EXPECT_NEAR(row.fromSun, known.fromSun, known.distanceTolerance);
  }
}

struct KnownDistance {
  const char* name;
  const char* time;
  double fromEarth;
  double fromSun;
  double tolerance;  // AU
};

// Ranges of JPL Horizons. Years from the epoch, the Sun's own motion about the centre of the
// planetary system, which two-body motion leaves out, shows in the third digit.
constexpr KnownDistance kDistances[] = {
    {"Eris", "2026-10-02", 94.5146577, 95.4578139, 0.00006},
    {"Sedna", "2026-10-02", 82.2516483, 82.8369898, 0.00006},
    {"Gonggong", "2026-10-02", 89.0227714, 89.8623041, 0.00006},
    {"Eris", "2030-01-01", 94.9026526, 95.1574626, 0.0080},
    {"Sedna", "2030-01-01", 81.2573850, 82.0277305, 0.0080},
    {"Gonggong", "2030-01-01", 91.0919296, 90.5428919, 0.0080},
};

TEST_F(TourPlaces, DistancesAgreeWithHorizons) {
  for (const KnownDistance& known : kDistances) {
    SCOPED_TRACE(std::string(known.name) + " at " + known.time);
    const ProcessResult result = Run({known.time});
    Row row = {};
    ASSERT_TRUE(FindRow(result.out, known.name, row)) << result.out << result.err;
    EXPECT_NEAR(row.fromEarth, known.fromEarth, known.tolerance);
    EXPECT_NEAR(row.fromSun, known.fromSun, known.tolerance);
  }
}

TEST_F(TourPlaces, KeepTheSignOfADeclinationBetweenZeroAndMinusOneDegree) {
  const ProcessResult result = Run({"2026-09-22T13:05:23"});
  EXPECT_NE(result.out.find("01 48 57.9    -00 01 17 "), std::string::npos) << result.out;
}

struct Mark {
  const char* name;
  const char* time;
  const char* epoch;  // the last column, with the mark
};

// Elements of Ceres count as old a year from their epoch, those of the objects beyond Neptune five
// years, of 365.25 days each.
constexpr Mark kMarks[] = {
    {"Ceres", "2025-06-08", "2026-06-09 *"}, {"Ceres", "2025-06-09", "2026-06-09"},
    {"Ceres", "2027-06-09", "2026-06-09"},   {"Ceres", "2027-06-10", "2026-06-09 *"},
    {"Ceres", "1801-01-01", "2026-06-09 *"}, {"Eris", "2021-06-08", "2026-06-09 *"},
    {"Eris", "2021-06-09", "2026-06-09"},    {"Eris", "2031-06-09", "2026-06-09"},
    {"Eris", "2031-06-10", "2026-06-09 *"},  {"Pluto", "2021-07-19", "2016-07-19"},
    {"Pluto", "2021-07-20", "2016-07-19 *"}, {"Sedna", "2031-06-10", "2026-06-09 *"},
};

TEST_F(TourPlaces, AreMarkedWhenTheirElementsAreOld) {
  for (const Mark& mark : kMarks) {
    SCOPED_TRACE(std::string(mark.name) + " at " + mark.time);
    const std::string page = Run({mark.time}).out;
    const std::size_t name = page.find(std::string("  ") + mark.name + " ");
    ASSERT_NE(name, std::string::npos) << page;
    const std::string line = page.substr(name, page.find('\n', name) - name);
    EXPECT_TRUE(line.ends_with(std::string("   ") + mark.epoch)) << line;
  }
}

TEST_F(TourPlaces, ExplainTheMarkWhereThereIsOne) {
  const std::string explanation = "\n  * more than a year (beyond Saturn: five years) from ";
  EXPECT_TRUE(Contains(Run({"2027-06-10"}).out, explanation));
  kv::test::WriteBytes(Work() + "en\\media\\dwarf_names.txt", "1\tCeres\n136199\tEris\n");
  EXPECT_TRUE(Contains(Run({"2027-06-10"}).out, explanation));
  EXPECT_FALSE(Contains(Run({"2027-06-09"}).out, explanation));
}

}  // namespace
