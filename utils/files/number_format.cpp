#include "utils/files/number_format.h"

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstring>

namespace kv::internal {
namespace {

constexpr std::size_t kLongestFormat = 31;
// Width and precision are bounded, so that no format asks for an endless row.
constexpr std::size_t kMostDigits = 4;

// The length of the run of characters of `set` at the beginning of `text`.
std::size_t Run(std::string_view text, std::string_view set) {
  return std::min(text.find_first_not_of(set), text.size());
}

// The length of the conversion that `text` begins with, from its "%" to its letter; 0 for none that
// suits a real number.
std::size_t ConversionLength(std::string_view text) {
  constexpr std::string_view kDigits = "0123456789";
  std::size_t length = 1;
  length += Run(text.substr(length), "+- #0");
  const std::size_t width = Run(text.substr(length), kDigits);
  length += width;
  std::size_t precision = 0;
  if (text.substr(length).starts_with('.')) {
    ++length;
    precision = Run(text.substr(length), kDigits);
    length += precision;
  }
  if (text.substr(length).starts_with('l')) ++length;
  if (width > kMostDigits || precision > kMostDigits || length >= text.size()) return 0;
  const bool isReal = std::string_view("aAeEfFgG").find(text[length]) != std::string_view::npos;
  return isReal ? length + 1 : 0;
}

}  // namespace

NumberFormat::NumberFormat(const char* format)
    : isValid_(Parse({format, ::strnlen(format, kLongestFormat)})) {}

bool NumberFormat::Parse(std::string_view format) {
  while (!format.empty()) {
    std::string& literal = conversion_.empty() ? before_ : after_;
    if (format.front() != '%') {
      const std::size_t length = std::min(format.find('%'), format.size());
      literal += format.substr(0, length);
      format.remove_prefix(length);
    } else if (format.starts_with("%%")) {
      literal += '%';
      format.remove_prefix(2);
    } else {
      const std::size_t length = ConversionLength(format);
      if (length == 0 || !conversion_.empty()) return false;
      conversion_ = format.substr(0, length);
      format.remove_prefix(length);
    }
  }
  return true;
}

std::string NumberFormat::Print(double value) const {
  if (conversion_.empty()) return before_;
  char text[64];
  std::string number;
  const int length = std::snprintf(text, sizeof text, conversion_.c_str(), value);
  if (length < static_cast<int>(sizeof text)) {
    number = text;
  } else {
    number.resize(static_cast<std::size_t>(length));
    std::snprintf(number.data(), number.size() + 1, conversion_.c_str(), value);
  }
  const char* point = std::localeconv()->decimal_point;
  const std::size_t position = number.find(point);
  if (position != std::string::npos) number.replace(position, std::strlen(point), ".");
  return before_ + number + after_;
}

}  // namespace kv::internal
