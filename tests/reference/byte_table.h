// The table of identifiers and of the checksum CRC-32.
#ifndef KVUTILS_TESTS_REFERENCE_BYTE_TABLE_H_
#define KVUTILS_TESTS_REFERENCE_BYTE_TABLE_H_

#include <array>
#include <cstdint>

namespace kv::reference {

// Entry i: the byte i shifted right eight times, 0xEDB88320 XORed in for each 1 shifted out.
inline std::array<std::uint32_t, 256> MakeByteTable() {
  std::array<std::uint32_t, 256> table{};
  for (std::uint32_t byte = 0; byte < 256; ++byte) {
    std::uint32_t entry = byte;
    for (int bit = 0; bit < 8; ++bit)
      entry = (entry & 1) != 0 ? (entry >> 1) ^ 0xEDB88320 : entry >> 1;
    table[byte] = entry;
  }
  return table;
}

inline const std::array<std::uint32_t, 256> kByteTable = MakeByteTable();

}  // namespace kv::reference

#endif  // KVUTILS_TESTS_REFERENCE_BYTE_TABLE_H_
