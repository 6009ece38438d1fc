#include "utils/astro/astro.h"

#include "utils/internal/characters.h"
#include "utils/internal/number_scan.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>

namespace {

using kv::internal::IsDigit;
using kv::internal::ScanDecimal;

struct Century {
  char letter;
  int baseYear;
};
constexpr Century kCenturies[] = {{'I', 1800}, {'J', 1900}, {'K', 2000}};

// The places of a code: century, two year digits, month, day, fraction.
constexpr std::size_t kYearPlace = 1;
constexpr std::size_t kYearLength = 2;
constexpr std::size_t kMonthPlace = 3;
constexpr std::size_t kDayPlace = 4;
constexpr std::size_t kFractionPlace = 5;

std::optional<int> BaseYear(char letter) {
  for (const Century& century : kCenturies) {
    if (century.letter == letter) return century.baseYear;
  }
  return std::nullopt;
}

// The text from `place` on, empty where the code is shorter.
std::string_view TextFrom(std::string_view code, std::size_t place) {
  return code.substr(std::min(place, code.size()));
}

// The value of a month or day character; one behind the end of the code counts as the terminator.
int CharacterValue(std::string_view code, std::size_t place) {
  const char c = place < code.size() ? code[place] : '\0';
  return IsDigit(c) ? c - '0' : static_cast<signed char>(c) - 55;
}

// Callers rely on leading zeros not counting, and on 1 and every power of ten giving a whole day.
double DayFraction(int digits) {
  double scale = 1.0;
  while (scale < digits) scale *= 10.0;
  return digits / scale;
}

}  // namespace

bool UnpackDate(short* year, short* month, double* day, const char* packed) {
  const std::string_view code(packed);
  const auto baseYear = code.empty() ? std::nullopt : BaseYear(code.front());
  if (!baseYear) return false;
  const auto yearOfCentury = ScanDecimal(TextFrom(code, kYearPlace).substr(0, kYearLength));
  if (!yearOfCentury) return false;

  *year = static_cast<short>(*baseYear + *yearOfCentury);
  *month = static_cast<short>(CharacterValue(code, kMonthPlace));
  *day = CharacterValue(code, kDayPlace);
  if (const auto digits = ScanDecimal(TextFrom(code, kFractionPlace))) *day += DayFraction(*digits);
  return true;
}
