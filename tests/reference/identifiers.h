// The defining form of GetUniqueID.
#ifndef KVUTILS_TESTS_REFERENCE_IDENTIFIERS_H_
#define KVUTILS_TESTS_REFERENCE_IDENTIFIERS_H_

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

// The register after one more byte.
inline std::int32_t NextHash(std::int32_t hash, char byte) {
  const std::uint32_t index =
      (static_cast<unsigned char>(byte) ^ static_cast<std::uint32_t>(hash)) & 0xFF;
  return (hash >> 8) ^ static_cast<std::int32_t>(kByteTable[index]);
}

inline int UniqueId(const char* text) {
  std::int32_t hash = 0;
  for (; *text != '\0'; ++text) hash = NextHash(hash, *text);
  return hash & 0x7FFFFFFF;
}

}  // namespace kv::reference

#endif  // KVUTILS_TESTS_REFERENCE_IDENTIFIERS_H_
