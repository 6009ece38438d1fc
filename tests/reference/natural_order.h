// The defining form of CompareStringWithNumber.
#ifndef KVUTILS_TESTS_REFERENCE_NATURAL_ORDER_H_
#define KVUTILS_TESTS_REFERENCE_NATURAL_ORDER_H_

#include <cctype>
#include <cstdint>
#include <cstdlib>

namespace kv::reference {

inline int CompareNatural(const char* a, const char* b) {
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  // Bytes above 127 have no upper case, and toupper is not asked about negative numbers.
  const auto upper = [](char c) {
    const int value = static_cast<signed char>(c);
    return static_cast<std::uint16_t>(value < 0 ? value : std::toupper(value));
  };
  const auto raw = [](char c) { return static_cast<std::uint16_t>(static_cast<signed char>(c)); };
  for (;;) {
    while (*a != '\0' && !isDigit(*a) && *b != '\0' && !isDigit(*b)) {
      if (upper(*a) != upper(*b)) return upper(*a) - upper(*b);
      ++a;
      ++b;
    }
    if (!isDigit(*a) || !isDigit(*b)) return raw(*a) - raw(*b);
    const int numberOfA = std::atoi(a);
    const int numberOfB = std::atoi(b);
    if (numberOfA != numberOfB) {
      return static_cast<int>(static_cast<unsigned>(numberOfA) - static_cast<unsigned>(numberOfB));
    }
    while (isDigit(*a) && isDigit(*b)) {
      ++a;
      ++b;
    }
  }
}

}  // namespace kv::reference

#endif  // KVUTILS_TESTS_REFERENCE_NATURAL_ORDER_H_
