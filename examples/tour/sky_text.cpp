#include "examples/tour/sky_text.h"

#include "examples/tour/format_text.h"
#include "utils/astro/astro.h"

#include <cmath>
#include <numbers>

namespace tour {

std::string RightAscensionText(double radians) {
  // Rounded to tenths of a second as a whole, so that no field can come out as 60, and wrapped.
  constexpr double kTenthsPerTurn = 864000.0;
  constexpr double kTenthsPerRadian = kTenthsPerTurn / (2.0 * std::numbers::pi);
  const double tenths = std::fmod(std::round(radians * kTenthsPerRadian), kTenthsPerTurn);
  int hours = 0;
  int minutes = 0;
  double seconds = 0.0;
  Rad2RA(&hours, &minutes, &seconds, tenths / kTenthsPerRadian, false);
  return FormatText("%02d %02d %04.1f", hours, minutes, seconds);
}

std::string DeclinationText(double radians) {
  int degrees = 0;
  int minutes = 0;
  double seconds = 0.0;
  // The parts carry no sign between -1 and 0 degrees, so the sign comes from the angle itself.
  Rad2Dec(&degrees, &minutes, &seconds, std::abs(radians), true);
  const bool isZero = degrees == 0 && minutes == 0 && seconds == 0.0;
  return FormatText("%c%02d %02d %02.0f", radians < 0.0 && !isZero ? '-' : '+', degrees, minutes,
                    seconds);
}

}  // namespace tour
