#include "utils/astro/astro.h"

#include "utils/internal/characters.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <limits>
#include <optional>
#include <string_view>
#include <system_error>

namespace {

using kv::internal::IsDigit;
using kv::internal::IsSpace;

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

// What "%d" of scanf reads from the beginning of `text`; a number beyond int gives the nearest int.
std::optional<int> ReadDecimal(std::string_view text) {
  while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
  const bool isNegative = text.starts_with('-');
  if (isNegative || text.starts_with('+')) text.remove_prefix(1);
  if (text.empty() || !IsDigit(text.front())) return std::nullopt;

  using Limits = std::numeric_limits<int>;
  int value = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  if (result.ec == std::errc::result_out_of_range)
    return isNegative ? Limits::min() : Limits::max();
  return isNegative ? -value : value;
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
  const auto yearOfCentury = ReadDecimal(TextFrom(code, kYearPlace).substr(0, kYearLength));
  if (!yearOfCentury) return false;

  *year = static_cast<short>(*baseYear + *yearOfCentury);
  *month = static_cast<short>(CharacterValue(code, kMonthPlace));
  *day = CharacterValue(code, kDayPlace);
  if (const auto digits = ReadDecimal(TextFrom(code, kFractionPlace))) *day += DayFraction(*digits);
  return true;
}
