// The defining form of GetUniqueID.
#ifndef KVUTILS_TESTS_REFERENCE_IDENTIFIERS_H_
#define KVUTILS_TESTS_REFERENCE_IDENTIFIERS_H_

#include <cstdint>

#include "tests/reference/byte_table.h"

namespace kv::reference {

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
