#include "utils/internal/number_scan.h"

#include <charconv>
#include <cstdio>
#include <cstring>
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

}  // namespace

NumberScanner::NumberScanner(const char* format) : format_(format), conversion_(Classify(format)) {}

NumberScanner::Conversion NumberScanner::Classify(const char* format) {
  const std::string_view text = format;
  if (text == "%d") return Conversion::kInt;
  if (text == "%u") return Conversion::kUnsigned;
  if (text == "%li") return Conversion::kLong;
  if (text == "%f") return Conversion::kFloat;
  if (text == "%lf") return Conversion::kDouble;
  return Conversion::kOther;
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
    case Conversion::kOther:
      break;
  }
  return converted || std::sscanf(token, format_, value) == 1;
}

}  // namespace kv::internal
