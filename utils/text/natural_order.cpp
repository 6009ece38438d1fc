#include "utils/text/text.h"

#include "utils/internal/characters.h"
#include "utils/internal/number_scan.h"

#include <array>
#include <cstdint>

namespace {

using kv::internal::IsDigit;
using kv::internal::ScanDigits;

// A byte as a 16-bit value that keeps its sign bit: those above 127 are 65408 and up.
constexpr std::uint16_t RawValue(char c) {
  return static_cast<std::uint16_t>(static_cast<std::int16_t>(static_cast<signed char>(c)));
}

// The raw values of the bytes in upper case, by byte.
constexpr std::array<std::uint16_t, 256> MakeUpperValues() {
  std::array<std::uint16_t, 256> values{};
  for (unsigned byte = 0; byte < values.size(); ++byte) {
    const char c = static_cast<char>(byte);
    values[byte] = RawValue(c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c);
  }
  return values;
}
constexpr std::array<std::uint16_t, 256> kUpperValues = MakeUpperValues();

int UpperValue(char c) { return kUpperValues[static_cast<unsigned char>(c)]; }

bool IsText(char c) { return c != '\0' && !IsDigit(c); }

// The 32-bit difference, cut to its low bits where it overflows.
int WrappedDifference(int a, int b) {
  return static_cast<int>(static_cast<unsigned>(a) - static_cast<unsigned>(b));
}

}  // namespace

int CompareStringWithNumber(const char* a, const char* b) {
  if (a == nullptr) a = "";
  if (b == nullptr) b = "";
  for (;;) {
    for (; IsText(*a) && IsText(*b); ++a, ++b) {
      if (const int difference = UpperValue(*a) - UpperValue(*b)) return difference;
    }
    // Callers rely on the raw characters deciding here, case included, and at the end of a name.
    if (!IsDigit(*a) || !IsDigit(*b)) return RawValue(*a) - RawValue(*b);

    const int numberOfA = ScanDigits(a);
    const int numberOfB = ScanDigits(b);
    if (numberOfA != numberOfB) return WrappedDifference(numberOfA, numberOfB);
    // Callers rely on leading zeros not being skipped: "007" and "7" differ behind their numbers.
    for (; IsDigit(*a) && IsDigit(*b); ++a, ++b) {
    }
  }
}
