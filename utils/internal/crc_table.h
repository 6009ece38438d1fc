// The byte-wise table of the reflected CRC-32 polynomial 0xEDB88320.
#ifndef KVUTILS_UTILS_INTERNAL_CRC_TABLE_H_
#define KVUTILS_UTILS_INTERNAL_CRC_TABLE_H_

#include <array>
#include <cstdint>

namespace kv::internal {

constexpr std::array<std::uint32_t, 256> MakeCrcTable() {
  constexpr std::uint32_t kPolynomial = 0xEDB88320;
  std::array<std::uint32_t, 256> table{};
  for (std::uint32_t byte = 0; byte < table.size(); ++byte) {
    std::uint32_t remainder = byte;
    for (int bit = 0; bit < 8; ++bit) {
      remainder = (remainder >> 1) ^ ((remainder & 1) != 0 ? kPolynomial : 0);
    }
    table[byte] = remainder;
  }
  return table;
}

inline constexpr std::array<std::uint32_t, 256> kCrcTable = MakeCrcTable();

static_assert(kCrcTable[1] == 0x77073096 && kCrcTable[255] == 0x2D02EF8D);

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_INTERNAL_CRC_TABLE_H_
