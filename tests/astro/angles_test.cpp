#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <cmath>
#include <limits>
#include <string>

#include "utils/astro/astro.h"

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr bool kRound = true;
constexpr bool kExact = false;

using SplitFunction = void (*)(int*, int*, double*, double, bool);

struct SplitCase {
  const char* what;
  double radians;
  bool roundToSecond;
  int leading;
  int minutes;
  double seconds;
};

// Compares the seconds bit for bit: the rows hold the values of the stated order of operations.
template <std::size_t size>
void CheckSplit(SplitFunction split, const SplitCase (&cases)[size]) {
  for (const SplitCase& row : cases) {
    SCOPED_TRACE(row.what);
    int leading = 99;
    int minutes = 99;
    double seconds = 99.0;
    split(&leading, &minutes, &seconds, row.radians, row.roundToSecond);
    EXPECT_EQ(leading, row.leading);
    EXPECT_EQ(minutes, row.minutes);
    EXPECT_EQ(seconds, row.seconds);
  }
}

TEST(Angles, SplitsRightAscension) {
  const SplitCase cases[] = {
      {"zero", 0.0, kExact, 0, 0, 0.0},
      {"half a turn", 3.141592653589793, kExact, 12, 0, 0.0},
      {"half a turn backward", -3.141592653589793, kExact, -12, 0, 0.0},
      {"a quarter", 1.5707963267948966, kExact, 6, 0, 0.0},
      {"a whole turn", 6.283185307179587, kExact, 24, 0, 0.0},
      {"more than a turn", 6.67588438887831, kExact, 25, 30, 0.0},
      {"0h 59m 59.5s", 0.26176302677306623, kExact, 0, 59, 59.5},
      {"-1h 30m 0s", -0.3926990816987242, kExact, -1, 30, 0.0},
      {"2.5 s", 0.000181805130416076, kExact, 0, 0, 2.5},
      {"beyond 32 bits of seconds", 157079.63267948964, kExact, 600000, 0, 0.0},
  };
  CheckSplit(Rad2RA, cases);
}

TEST(Angles, SplitsDeclination) {
  const SplitCase cases[] = {
      {"zero", 0.0, kExact, 0, 0, 0.0},
      {"half a turn", 3.141592653589793, kExact, 180, 0, 0.0},
      {"half a turn backward", -3.141592653589793, kExact, -180, 0, 0.0},
      {"10 deg 30'", 0.1832595714594046, kExact, 10, 30, 0.0},
      {"-10 deg 30'", -0.1832595714594046, kExact, -10, 30, 0.0},
      {"59' 59.5''", 0.01745086845153775, kExact, 0, 59, 59.500000000000455},
      {"more than a turn", 6.67588438887831, kExact, 382, 30, 0.0},
      {"beyond 32 bits of seconds", 157079.63267948964, kExact, 9000000, 0, 0.0},
  };
  CheckSplit(Rad2Dec, cases);
}

TEST(Angles, LosesTheSignWhereTheLeadingFieldIsZero) {
  const SplitCase declinations[] = {
      {"-0 deg 30'", -0.008726646259971648, kExact, 0, 30, 0.0},
      {"+0 deg 30'", 0.008726646259971648, kExact, 0, 30, 0.0},
  };
  CheckSplit(Rad2Dec, declinations);
  const SplitCase ascensions[] = {{"-0h 30m", -0.1308996938995747, kExact, 0, 30, 0.0}};
  CheckSplit(Rad2RA, ascensions);
}

TEST(Angles, CarriesARoundedSecondIntoAllFields) {
  const SplitCase ascensions[] = {
      {"0h 59m 59.7s", 0.2617775711834995, kRound, 1, 0, 0.0},
      {"0h 59m 59.9999995s", 0.2617993877627884, kRound, 1, 0, 0.0},
      {"-(0h 59m 59.7s)", -0.2617775711834995, kRound, -1, 0, 0.0},
      {"23h 59m 59.6s", 6.28315621835872, kRound, 24, 0, 0.0},
      {"half a second goes up", 3.63610260832152e-05, kRound, 0, 0, 1.0},
      {"1.5 s goes up", 0.0001090830782496456, kRound, 0, 0, 2.0},
      {"2.5 s goes up", 0.000181805130416076, kRound, 0, 0, 3.0},
      {"-2.5 s: the magnitude goes up", -0.000181805130416076, kRound, 0, 0, 3.0},
      {"0h 59m 59.5s", 0.26176302677306623, kRound, 1, 0, 0.0},
      {"12h 34m 56.789s", 3.29407545262979, kRound, 12, 34, 57.0},
  };
  CheckSplit(Rad2RA, ascensions);
  const SplitCase declinations[] = {
      {"89 deg 59' 59.95''", 1.5707960843880562, kRound, 90, 0, 0.0},
      {"45 deg 30' 15.25''", 0.7941987437437892, kRound, 45, 30, 15.0},
  };
  CheckSplit(Rad2Dec, declinations);
}

TEST(Angles, SnapsToAWholeSecondWithinAMillionth) {
  const SplitCase ascensions[] = {
      {"0h 59m 59.9999995s", 0.2617993877627884, kExact, 1, 0, 0.0},
      {"just below 1e-6 s", 7.272205216643037e-11, kExact, 0, 0, 0.0},
      {"1e-6 s is not within", 7.27220521664304e-11, kExact, 0, 0, 1e-06},
      {"0h 59m 59.999998s", 0.2617993876537053, kExact, 0, 59, 59.99999799999978},
  };
  CheckSplit(Rad2RA, ascensions);
  const SplitCase declinations[] = {
      {"just below 1e-6''", 4.848136811095358e-12, kExact, 0, 0, 0.0},
      {"1e-6'' is not within", 4.84813681109536e-12, kExact, 0, 0, 1e-06},
  };
  CheckSplit(Rad2Dec, declinations);
}

// Each of these angles gives other last bits when the factors are combined in another order.
TEST(Angles, DividesByPiBeforeItMultiplies) {
  const SplitCase ascensions[] = {
      {"2.182", 2.182, kExact, 8, 20, 4.653815410954849},
      {"4.559", 4.559, kExact, 17, 24, 50.75011203416943},
  };
  CheckSplit(Rad2RA, ascensions);
  const SplitCase declinations[] = {
      {"5.302", 5.302, kExact, 303, 46, 56.002722105011344},
      {"3.314", 3.314, kExact, 189, 52, 41.567902877461165},
  };
  CheckSplit(Rad2Dec, declinations);
}

TEST(Angles, SaturatesTheLeadingField) {
  const SplitCase ascensions[] = {
      {"1e9", 1e9, kExact, INT_MAX, 12, 19.7578125},
      {"-1e9", -1e9, kExact, -INT_MAX, 12, 19.7578125},
      {"1e300", 1e300, kExact, INT_MAX, 33, 20.0},
      {"1e300, rounded", 1e300, kRound, INT_MAX, 33, 20.0},
      {"the seconds overflow", DBL_MAX, kExact, INT_MAX, 0, 0.0},
      {"the seconds overflow backward", -DBL_MAX, kRound, -INT_MAX, 0, 0.0},
      {"infinity", kInfinity, kExact, INT_MAX, 0, 0.0},
      {"minus infinity", -kInfinity, kRound, -INT_MAX, 0, 0.0},
  };
  CheckSplit(Rad2RA, ascensions);
  const SplitCase declinations[] = {
      {"1e9", 1e9, kExact, INT_MAX, 4, 56.34375},
      {"-1e9", -1e9, kRound, -INT_MAX, 4, 56.0},
      {"the seconds overflow", DBL_MAX, kExact, INT_MAX, 0, 0.0},
      {"minus infinity", -kInfinity, kExact, -INT_MAX, 0, 0.0},
  };
  CheckSplit(Rad2Dec, declinations);
}

TEST(Angles, GivesNotANumberAsSecondsOfNotANumber) {
  for (const SplitFunction split : {Rad2RA, Rad2Dec}) {
    for (const bool roundToSecond : {kExact, kRound}) {
      SCOPED_TRACE(std::string(split == Rad2RA ? "Rad2RA" : "Rad2Dec") +
                   (roundToSecond ? ", rounded" : ""));
      int leading = 99;
      int minutes = 99;
      double seconds = 99.0;
      split(&leading, &minutes, &seconds, kNaN, roundToSecond);
      EXPECT_EQ(leading, 0);
      EXPECT_EQ(minutes, 0);
      EXPECT_TRUE(std::isnan(seconds));
    }
  }
}

struct JoinCase {
  const char* what;
  int leading;
  int minutes;
  double seconds;
  double radians;
};

// Compares bit for bit, the sign of a zero included.
template <std::size_t size>
void CheckJoin(void (*join)(double*, int, int, double), const JoinCase (&cases)[size]) {
  for (const JoinCase& row : cases) {
    SCOPED_TRACE(row.what);
    double radians = 99.0;
    join(&radians, row.leading, row.minutes, row.seconds);
    EXPECT_EQ(radians, row.radians);
    EXPECT_EQ(std::signbit(radians), std::signbit(row.radians));
  }
}

TEST(Angles, JoinsRightAscension) {
  const JoinCase cases[] = {
      {"zero", 0, 0, 0.0, 0.0},
      {"a whole turn", 24, 0, 0.0, 6.283185307179587},
      {"half a turn", 12, 0, 0.0, 3.1415926535897936},
      {"12h 34m 56.789s", 12, 34, 56.789, 3.29407545262979},
      {"parts keep their own signs", -1, 30, 0.0, -0.1308996938995747},
      {"negative minutes", 1, -30, 0.0, 0.1308996938995747},
      // Other last bits in any other order of operations.
      {"0h 13m 17.5s", 0, 13, 17.5, 0.05799583660272825},
      {"0h 53m 17.5s", 0, 53, 17.5, 0.23252876180216123},
      {"2h 11m 1.25s", 2, 11, 1.25, 0.571686232593351},
  };
  CheckJoin(RA2Rad, cases);
}

TEST(Angles, JoinsDeclinationWithTheSignOfTheDegrees) {
  const JoinCase cases[] = {
      {"zero", 0, 0, 0.0, 0.0},
      {"10 deg 30'", 10, 30, 0.0, 0.1832595714594046},
      {"-10 deg 30'", -10, 30, 0.0, -0.1832595714594046},
      {"0 deg 30' is positive", 0, 30, 0.0, 0.008726646259971648},
      {"180 deg", 180, 0, 0.0, 3.141592653589793},
      {"a negative zero", -1, -60, 0.0, -0.0},
      // Other last bits in any other order of operations.
      {"0 deg 11' 33.125''", 0, 11, 33.125, 0.003360364827190471},
      {"1 deg 29' 1.25''", 1, 29, 1.25, 0.025895110742263094},
      {"-1 deg 29' 59.9''", -1, 29, 59.9, -0.026179453966233827},
  };
  CheckJoin(Dec2Rad, cases);
}

TEST(Angles, WrapsWholeSecondsInThirtyTwoBits) {
  const JoinCase ascensions[] = {
      {"greatest hours: -3600 s", INT_MAX, 0, 0.0, -0.2617993877991494},
      {"least hours: 0 s", INT_MIN, 0, 0.0, 0.0},
      {"greatest minutes: -60 s", 0, INT_MAX, 0.0, -0.004363323129985823},
      {"both: -3660 s and a half", INT_MAX, INT_MAX, 0.5, -0.26612634990305206},
  };
  CheckJoin(RA2Rad, ascensions);
  const JoinCase declinations[] = {
      {"least degrees: -(0'')", INT_MIN, 0, 0.0, -0.0},
      {"least degrees, 1': -(60'')", INT_MIN, 1, 0.0, -0.0002908882086657216},
      {"greatest degrees: -3600''", INT_MAX, 0, 0.0, -0.017453292519943295},
      {"greatest minutes: -60''", 0, INT_MAX, 0.0, -0.0002908882086657216},
  };
  CheckJoin(Dec2Rad, declinations);
}

TEST(Angles, PassesSpecialSecondsThrough) {
  double radians = 0.0;
  RA2Rad(&radians, 1, 2, kInfinity);
  EXPECT_EQ(radians, kInfinity);
  Dec2Rad(&radians, -1, 2, kInfinity);
  EXPECT_EQ(radians, -kInfinity);
  RA2Rad(&radians, 1, 2, kNaN);
  EXPECT_TRUE(std::isnan(radians));
  Dec2Rad(&radians, 1, 2, kNaN);
  EXPECT_TRUE(std::isnan(radians));
}

}  // namespace
