// Numbers out of texts, with the results of the run-time library's functions at a fraction of their
// cost.
#ifndef KVUTILS_UTILS_INTERNAL_NUMBER_SCAN_H_
#define KVUTILS_UTILS_INTERNAL_NUMBER_SCAN_H_

#include "utils/internal/characters.h"
#include "utils/internal/compiler.h"
#include "utils/internal/page.h"
#include "utils/internal/text_length.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string_view>

namespace kv::internal {

inline constexpr std::size_t kScannedSize = 8;  // room for the widest value, a double

// What parts the tokens of a line.
constexpr bool IsTokenDelimiter(char c) { return c == ' ' || c == '\t' || c == '\n'; }

// Reads tokens with one scan format: "%d", "%u", "%li", "%f", "%lf", or another single conversion
// of an integer or a real number of at most eight bytes. Plain decimal tokens are converted
// directly and are correctly rounded; signs, prefixes, surplus characters, overflow and everything
// else odd is left to sscanf, whose answer counts. The decimal point is "." in every locale.
class NumberScanner {
 public:
  // A null format, and any that could write elsewhere than into one number, reads nothing.
  explicit NumberScanner(const char* format);

  // Converts the token that begins at `token` and reaches to the next delimiter or the NUL at
  // `end`. Returns where it ends, with its number at the beginning of `value`; null when it does
  // not begin with a number. The text is as before afterwards.
  char* Scan(char* token, char* end, unsigned char (&value)[kScannedSize]) const;

 private:
  enum class Conversion { kInt, kUnsigned, kLong, kFloat, kDouble, kOtherNumber, kNone };

  static Conversion Classify(const char* format);

  const char* format_;
  Conversion conversion_;
};

// What "%d" reads from the beginning of `text`; a number beyond int gives the nearest int.
std::optional<int> ScanDecimal(std::string_view text);

// Whether a text begins with eight decimal digits. False, too, where its page ends before them.
//
// The digits are 0x30 to 0x39: of the bytes with that high half, those that six more leave in it.
KVUTILS_READS_WHOLE_BLOCKS inline bool BeginsWithEightDigits(const char* text) {
  if (!LieInOnePage<sizeof(std::uint64_t)>(text)) return false;
  std::uint64_t bytes;
  std::memcpy(&bytes, text, sizeof bytes);
  const auto highHalf = [](std::uint64_t eight) { return eight & EightTimes(0xF0); };
  return highHalf(bytes) == EightTimes(0x30) &&
         highHalf(bytes + EightTimes(0x06)) == EightTimes(0x30);
}

// Whether a text begins with more decimal digits than any number that is surely an int. One that
// ends near its page may do so unseen.
inline bool IsKnownLong(const char* text) {
  return BeginsWithEightDigits(text) && IsDigit(text[8]) && IsDigit(text[9]);
}

// What atoi reads from the decimal digits at the beginning of `text`, beyond int too.
inline int ScanDigits(const char* text) {
  constexpr int kSafeDigits = 9;   // any number of so many digits is an int
  constexpr int kUsualDigits = 4;  // of more, a look ahead may save reading what atoi reads again
  int value = 0;
  for (int i = 0; IsDigit(text[i]); ++i) {
    if (i == kSafeDigits || (i == kUsualDigits && IsKnownLong(text))) {
      return std::atoi(text);  // NOLINT(cert-err34-c) [callers rely on its result beyond int]
    }
    value = value * 10 + (text[i] - '0');
  }
  return value;
}

// What atoi reads from the beginning of `text`, beyond int too.
int ScanAtoi(const char* text);

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_INTERNAL_NUMBER_SCAN_H_
