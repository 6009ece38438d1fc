// The polynomial of CRC-32, and its table of remainders of bytes.
#ifndef KVUTILS_UTILS_INTERNAL_CRC_TABLE_H_
#define KVUTILS_UTILS_INTERNAL_CRC_TABLE_H_

#include <array>
#include <cstdint>

namespace kv::internal {

// A remainder of the division by the polynomial 0x04C11DB7, times x, divided again. Remainders are
// reflected: the coefficient of x^31 is the lowest bit.
constexpr std::uint32_t TimesX(std::uint32_t remainder) {
  constexpr std::uint32_t kReflectedPolynomial = 0xEDB88320;
  return (remainder >> 1) ^ ((remainder & 1) != 0 ? kReflectedPolynomial : 0);
}

// Entry i: the byte i times x^8.
constexpr std::array<std::uint32_t, 256> MakeCrcTable() {
  std::array<std::uint32_t, 256> table{};
  for (std::uint32_t byte = 0; byte < table.size(); ++byte) {
    std::uint32_t remainder = byte;
    for (int bit = 0; bit < 8; ++bit) remainder = TimesX(remainder);
    table[byte] = remainder;
  }
  return table;
}

inline constexpr std::array<std::uint32_t, 256> kCrcTable = MakeCrcTable();

static_assert(kCrcTable[1] == 0x77073096 && kCrcTable[255] == 0x2D02EF8D);

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_INTERNAL_CRC_TABLE_H_
