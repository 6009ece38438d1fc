#include "utils/internal/number_scan.h"

#include "utils/internal/characters.h"

#include <algorithm>
#include <charconv>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>
#include <system_error>

namespace kv::internal {
namespace {

// Converts the token when from_chars takes all of it.
template <typename Number>
bool ConvertWhole(std::string_view token, unsigned char (&value)[kScannedSize]) {
  Number number;
  const char* end = token.data() + token.size();
  const auto [stop, error] = std::from_chars(token.data(), end, number);
  if (error != std::errc{} || stop != end) return false;
  std::memcpy(value, &number, sizeof number);
  return true;
}

// from_chars would also take "inf" and "nan", which are for sscanf to judge.
bool IsPlainDecimal(std::string_view token) {
  return token.find_first_not_of("0123456789+-.eE") == std::string_view::npos;
}

// A leading zero announces another base to "%li".
bool IsPrefixed(std::string_view token) {
  if (token.starts_with('-')) token.remove_prefix(1);
  return token.size() > 1 && token.front() == '0';
}

// "%", a length, a conversion, and nothing else. Long doubles are too wide.
bool IsOneNumber(std::string_view format) {
  if (format.size() < 2 || format.front() != '%') return false;
  const std::string_view length = format.substr(1, format.size() - 2);
  const auto isOneOf = [](std::string_view text, auto... choices) {
    return ((text == choices) || ...);
  };
  if (std::string_view("diouxX").find(format.back()) != std::string_view::npos) {
    return isOneOf(length, "", "h", "hh", "l", "ll");
  }
  return std::string_view("aefgAEFG").find(format.back()) != std::string_view::npos &&
         isOneOf(length, "", "l");
}

// sscanf on a token whose point is ".", whatever the process's locale: what the locale takes for
// the point ends a number here.
bool ScanOddToken(const char* token, const char* format, void* value) {
  const char point = *std::localeconv()->decimal_point;
  if (point == '.') return std::sscanf(token, format, value) == 1;
  std::string localized(token, std::strcspn(token, std::string(1, point).c_str()));
  std::replace(localized.begin(), localized.end(), '.', point);
  return std::sscanf(localized.c_str(), format, value) == 1;
}

}  // namespace

NumberScanner::NumberScanner(const char* format) : format_(format), conversion_(Classify(format)) {}

NumberScanner::Conversion NumberScanner::Classify(const char* format) {
  if (format == nullptr) return Conversion::kNone;
  const std::string_view text = format;
  if (text == "%d") return Conversion::kInt;
  if (text == "%u") return Conversion::kUnsigned;
  if (text == "%li") return Conversion::kLong;
  if (text == "%f") return Conversion::kFloat;
  if (text == "%lf") return Conversion::kDouble;
  return IsOneNumber(text) ? Conversion::kOtherNumber : Conversion::kNone;
}

bool NumberScanner::Scan(const char* token, std::size_t length,
                         unsigned char (&value)[kScannedSize]) const {
  const std::string_view text(token, length);
  bool converted = false;
  switch (conversion_) {
    case Conversion::kInt:
      converted = ConvertWhole<int>(text, value);
      break;
    case Conversion::kUnsigned:
      converted = ConvertWhole<unsigned>(text, value);
      break;
    case Conversion::kLong:
      converted = !IsPrefixed(text) && ConvertWhole<long>(text, value);
      break;
    case Conversion::kFloat:
      converted = IsPlainDecimal(text) && ConvertWhole<float>(text, value);
      break;
    case Conversion::kDouble:
      converted = IsPlainDecimal(text) && ConvertWhole<double>(text, value);
      break;
    case Conversion::kOtherNumber:
      break;
    case Conversion::kNone:
      return false;
  }
  return converted || ScanOddToken(token, format_, value);
}

std::optional<int> ScanDecimal(std::string_view text) {
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

int ScanAtoi(const char* text) {
  constexpr int kSafeDigits = 9;
  int value = 0;
  int digits = 0;
  for (; IsDigit(text[digits]); ++digits) {
    // NOLINTNEXTLINE(cert-err34-c) [callers rely on what atoi makes of an overflow]
    if (digits == kSafeDigits) return std::atoi(text);
    value = value * 10 + (text[digits] - '0');
  }
  // NOLINTNEXTLINE(cert-err34-c) [no digit at the beginning: white space, a sign, or no number]
  return digits > 0 ? value : std::atoi(text);
}

}  // namespace kv::internal
