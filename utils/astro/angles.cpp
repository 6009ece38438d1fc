#include "utils/astro/astro.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double kPi = 3.141592653589793;
constexpr double kHoursInHalfTurn = 12.0;
constexpr double kDegreesInHalfTurn = 180.0;
constexpr double kSecondsPerLeadingUnit = 3600.0;
constexpr int kSecondsPerMinute = 60;
constexpr int kMinutesPerLeadingUnit = 60;
constexpr double kWholeSecondTolerance = 1e-06;
constexpr double kGreatestLeading = std::numeric_limits<int>::max();

struct SexagesimalParts {
  int leading = 0;
  int minutes = 0;
  double seconds = 0.0;
};

// Splits a finite, non-negative count of seconds. The count is kept in a double, so that no count
// is too large to be split: the leading field saturates.
SexagesimalParts SplitMagnitude(double magnitude, bool roundToSecond) {
  double whole = std::floor(magnitude + 0.5);
  double fraction = 0.0;
  const bool isNearWhole = kWholeSecondTolerance > std::fabs(magnitude - whole);
  if (!roundToSecond && !isNearWhole) {
    whole = std::trunc(magnitude);
    fraction = magnitude - whole;
  }
  const int rest = static_cast<int>(std::fmod(whole, kSecondsPerLeadingUnit));
  const double leading = (whole - rest) / kSecondsPerLeadingUnit;
  return {.leading = static_cast<int>(std::min(leading, kGreatestLeading)),
          .minutes = rest / kSecondsPerMinute,
          .seconds = rest % kSecondsPerMinute + fraction};
}

SexagesimalParts Split(double signedSeconds, bool roundToSecond) {
  if (std::isnan(signedSeconds)) return {.seconds = signedSeconds};
  const double magnitude = std::fabs(signedSeconds);
  SexagesimalParts parts = std::isinf(magnitude)
                               ? SexagesimalParts{.leading = std::numeric_limits<int>::max()}
                               : SplitMagnitude(magnitude, roundToSecond);
  // Callers rely on the leading field alone carrying the sign, and on its loss where that is 0.
  if (0.0 > signedSeconds) parts.leading = -parts.leading;
  return parts;
}

void SplitAngle(int* leading, int* minutes, double* seconds, double signedSeconds,
                bool roundToSecond) {
  const SexagesimalParts parts = Split(signedSeconds, roundToSecond);
  *leading = parts.leading;
  *minutes = parts.minutes;
  *seconds = parts.seconds;
}

double AngleInSeconds(double radians, double unitsInHalfTurn) {
  return radians / kPi * unitsInHalfTurn * kSecondsPerLeadingUnit;
}

// (leading * 60 + minutes) * 60 in 32 bits, wrapping around.
int WholeSeconds(unsigned leading, int minutes) {
  return static_cast<int>((leading * kMinutesPerLeadingUnit + static_cast<unsigned>(minutes)) *
                          kSecondsPerMinute);
}

double SecondsToRadians(double seconds, double unitsInHalfTurn) {
  return seconds * kPi / unitsInHalfTurn / kSecondsPerLeadingUnit;
}

}  // namespace

void Rad2RA(int* hours, int* minutes, double* seconds, double radians, bool roundToSecond) {
  SplitAngle(hours, minutes, seconds, AngleInSeconds(radians, kHoursInHalfTurn), roundToSecond);
}

void RA2Rad(double* radians, int hours, int minutes, double seconds) {
  const double total = WholeSeconds(static_cast<unsigned>(hours), minutes) + seconds;
  *radians = SecondsToRadians(total, kHoursInHalfTurn);
}

void Rad2Dec(int* degrees, int* minutes, double* seconds, double radians, bool roundToSecond) {
  SplitAngle(degrees, minutes, seconds, AngleInSeconds(radians, kDegreesInHalfTurn), roundToSecond);
}

void Dec2Rad(double* radians, int degrees, int minutes, double seconds) {
  const unsigned bits = static_cast<unsigned>(degrees);
  const unsigned magnitude = degrees < 0 ? 0U - bits : bits;
  const double total = WholeSeconds(magnitude, minutes) + seconds;
  const double value = SecondsToRadians(total, kDegreesInHalfTurn);
  *radians = degrees < 0 ? value * -1.0 : value;
}
