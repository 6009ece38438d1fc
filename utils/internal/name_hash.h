// The register of the identifiers of names.
#ifndef KVUTILS_UTILS_INTERNAL_NAME_HASH_H_
#define KVUTILS_UTILS_INTERNAL_NAME_HASH_H_

#include "utils/internal/crc_table.h"

#include <cstddef>
#include <cstdint>

namespace kv::internal {

// The register after one more byte; it is 0 before the first. The identifier of a name
// (GetUniqueID) is the register after all its bytes, without the sign bit. Not CRC-32, though it
// shares the table: callers rely on the arithmetic shift, which copies the sign bit.
constexpr std::int32_t ExtendNameHash(std::int32_t hash, char byte) {
  return (hash >> 8) ^ static_cast<std::int32_t>(kCrcTable[(hash ^ byte) & 0xFF]);
}

// The register after `size` more bytes.
[[nodiscard]] std::int32_t ExtendNameHash(std::int32_t hash, const char* text, std::size_t size);

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_INTERNAL_NAME_HASH_H_
