#include "utils/text/text.h"

#include "utils/internal/characters.h"

#include <charconv>
#include <climits>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <system_error>

namespace {

using kv::internal::IsSpace;

// "12345-3" as ".12345e-3". `text` stands at a character that is no white space.
std::string SpelledOut(const char* text) {
  std::string number;
  if (*text == '-') number.push_back('-');
  if (*text == '-' || *text == '+') ++text;
  number.push_back('.');
  for (; *text != '\0'; ++text) {
    if (IsSpace(*text)) continue;
    if (*text == '+' || *text == '-') number.push_back('e');
    number.push_back(*text);
  }
  return number;
}

}  // namespace

bool GetDoubleValue(double* value, const char* text) {
  if (value == nullptr || text == nullptr) return false;
  while (IsSpace(*text)) ++text;
  if (*text == '\0') return false;

  std::string number = SpelledOut(text);
  const char* end = number.data() + number.size();
  const std::errc error = std::from_chars(number.data(), end, *value).ec;
  if (error != std::errc::result_out_of_range) return error == std::errc{};
  // Beyond the range of double, from_chars gives no value; strtod gives zero or infinity. It takes
  // the point of the process's locale.
  number.replace(number.find('.'), 1, std::localeconv()->decimal_point);
  *value = std::strtod(number.c_str(), nullptr);
  return true;
}

bool FromCustomRadixToDec(int* value, int radix) {
  if (value == nullptr) return false;
  if (*value <= 0) {
    const bool isZero = *value == 0;
    *value = 0;
    return isZero;
  }
  std::int64_t divisor = 1;
  while (divisor * 10 <= *value) divisor *= 10;

  std::uint32_t result = 0;
  for (; divisor >= 1; divisor /= 10) {
    const int digit = static_cast<int>(*value / divisor);
    // Callers rely on the value holding the digits behind the last one accepted.
    if (digit >= radix) return false;
    *value = static_cast<int>(*value % divisor);
    result = result * static_cast<std::uint32_t>(radix) + static_cast<std::uint32_t>(digit);
  }
  *value = static_cast<int>(result);
  return true;
}

unsigned int valhex(char c) {
  if (c >= '0' && c <= '9') return static_cast<unsigned int>(c - '0');
  if (c >= 'A' && c <= 'F') return static_cast<unsigned int>(c - 'A' + 10);
  if (c >= 'a' && c <= 'f') return static_cast<unsigned int>(c - 'a' + 10);
  return 0;
}

int GetNearestInt(double x) {
  const double rounded = x >= 0.0 ? std::floor(x + 0.5) : -std::ceil(-0.5 - x);
  if (std::isnan(rounded)) return 0;
  if (rounded >= INT_MAX) return INT_MAX;
  if (rounded <= INT_MIN) return INT_MIN;
  return static_cast<int>(rounded);
}
