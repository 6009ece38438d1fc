// Numbers out of texts, with the results of the run-time library's functions at a fraction of their
// cost.
#ifndef KVUTILS_UTILS_INTERNAL_NUMBER_SCAN_H_
#define KVUTILS_UTILS_INTERNAL_NUMBER_SCAN_H_

#include <cstddef>
#include <optional>
#include <string_view>

namespace kv::internal {

inline constexpr std::size_t kScannedSize = 8;  // room for the widest value, a double

// Reads tokens with one scan format: "%d", "%u", "%li", "%f", "%lf", or another single conversion
// of an integer or a real number of at most eight bytes. Plain decimal tokens are converted
// directly and are correctly rounded; signs, prefixes, surplus characters, overflow and everything
// else odd is left to sscanf, whose answer counts. The decimal point is "." in every locale.
class NumberScanner {
 public:
  // A null format, and any that could write elsewhere than into one number, reads nothing.
  explicit NumberScanner(const char* format);

  // Converts the `length` characters of `token`, which a NUL ends. True when they begin with a
  // number; its bytes then stand at the beginning of `value`.
  bool Scan(const char* token, std::size_t length, unsigned char (&value)[kScannedSize]) const;

 private:
  enum class Conversion { kInt, kUnsigned, kLong, kFloat, kDouble, kOtherNumber, kNone };

  static Conversion Classify(const char* format);

  const char* format_;
  Conversion conversion_;
};

// What "%d" reads from the beginning of `text`; a number beyond int gives the nearest int.
std::optional<int> ScanDecimal(std::string_view text);

// What atoi reads from the beginning of `text`, beyond int too.
int ScanAtoi(const char* text);

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_INTERNAL_NUMBER_SCAN_H_
