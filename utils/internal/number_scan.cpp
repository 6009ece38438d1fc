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
#include <utility>

namespace kv::internal {
namespace {

bool IsTokenEnd(char c) { return IsTokenDelimiter(c) || c == '\0'; }

// Converts the token when from_chars takes all of it; gives its end, null otherwise.
template <typename Number>
char* ConvertWhole(char* token, const char* end, unsigned char (&value)[kScannedSize]) {
  Number number;
  const auto [stop, error] = std::from_chars(token, end, number);
  if (error != std::errc{} || !IsTokenEnd(*stop)) return nullptr;
  std::memcpy(value, &number, sizeof number);
  return token + (stop - token);
}

const char* BehindMinus(const char* token) { return *token == '-' ? token + 1 : token; }

// A leading zero announces another base to "%li".
bool IsPrefixed(const char* token) {
  const char* digits = BehindMinus(token);
  return digits[0] == '0' && !IsTokenEnd(digits[1]);
}

// from_chars would also take "inf" and "nan", which are for sscanf to judge.
bool IsWord(const char* token) {
  const char first = *BehindMinus(token);
  return !IsDigit(first) && first != '.';
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

bool ScanWhole(const char* token, const char* format, void* value) {
  return std::sscanf(token, format, value) == 1;
}

// The same with "." for the point, whatever the process's locale: what the locale takes for the
// point ends a number here.
bool ScanReal(const char* token, const char* format, void* value) {
  const char point = *std::localeconv()->decimal_point;
  if (point == '.') return ScanWhole(token, format, value);
  std::string localized(token, std::strcspn(token, std::string(1, point).c_str()));
  std::replace(localized.begin(), localized.end(), '.', point);
  return ScanWhole(localized.c_str(), format, value);
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

char* NumberScanner::Scan(char* token, char* end, unsigned char (&value)[kScannedSize]) const {
  char* tokenEnd = nullptr;
  auto scanOdd = &ScanWhole;
  switch (conversion_) {
    case Conversion::kInt:
      tokenEnd = ConvertWhole<int>(token, end, value);
      break;
    case Conversion::kUnsigned:
      tokenEnd = ConvertWhole<unsigned>(token, end, value);
      break;
    case Conversion::kLong:
      if (!IsPrefixed(token)) tokenEnd = ConvertWhole<long>(token, end, value);
      break;
    case Conversion::kFloat:
      if (!IsWord(token)) tokenEnd = ConvertWhole<float>(token, end, value);
      scanOdd = &ScanReal;
      break;
    case Conversion::kDouble:
      if (!IsWord(token)) tokenEnd = ConvertWhole<double>(token, end, value);
      scanOdd = &ScanReal;
      break;
    case Conversion::kOtherNumber:
      scanOdd = &ScanReal;
      break;
    case Conversion::kNone:
      return nullptr;
  }
  if (tokenEnd != nullptr) return tokenEnd;

  // The token stands alone while sscanf reads it: a carriage return, a vertical tab or a form feed
  // at its beginning would be skipped together with what follows.
  tokenEnd = std::find_if(token, end, IsTokenDelimiter);
  const char behind = std::exchange(*tokenEnd, '\0');
  const bool isNumber = scanOdd(token, format_, value);
  *tokenEnd = behind;
  return isNumber ? tokenEnd : nullptr;
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
  // NOLINTNEXTLINE(cert-err34-c) [no digit at the beginning: white space, a sign, or no number]
  return IsDigit(*text) ? ScanDigits(text) : std::atoi(text);
}

}  // namespace kv::internal
