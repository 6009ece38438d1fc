// Civil dates of the Gregorian calendar and Julian Dates.
#ifndef KVUTILS_EXAMPLES_TOUR_CALENDAR_H_
#define KVUTILS_EXAMPLES_TOUR_CALENDAR_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tour {

struct CivilTime {
  int year = 0;
  unsigned month = 1;
  unsigned day = 1;
  unsigned hour = 0;
  unsigned minute = 0;
  unsigned second = 0;
};

// The years that the tour answers for: those over which EarthPosition is known to hold.
inline constexpr int kFirstYear = 1800;
inline constexpr int kLastYear = 2199;

// "2026-11-21", "2026-11-21T18:30" or "2026-11-21T18:30:15", each with "Z" behind it if wished.
// Nothing for any other form, a day that the calendar lacks, or a year that is not answered for.
std::optional<CivilTime> ParseCivilTime(std::string_view text);

// The present, in UTC.
CivilTime Now();

double JulianDate(const CivilTime& time);

// Julian Dates between which CivilTimeOf converts: the years 1585 to 2406.
inline constexpr double kFirstJulianDate = 2300000.0;
inline constexpr double kLastJulianDate = 2600000.0;

// To the nearest second. A date outside the range counts as its nearer end, and no number as its
// first.
CivilTime CivilTimeOf(double julianDate);

std::string DateText(const CivilTime& time);      // "2026-11-21"
std::string DateTimeText(const CivilTime& time);  // "2026-11-21 18:30:15"
std::uint32_t DateNumber(const CivilTime& time);  // 20261121
std::string DateText(std::uint32_t dateNumber);

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_CALENDAR_H_
