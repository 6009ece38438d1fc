// The register of the identifiers of names.
#ifndef KVUTILS_UTILS_INTERNAL_NAME_HASH_H_
#define KVUTILS_UTILS_INTERNAL_NAME_HASH_H_

#include <cstddef>
#include <cstdint>

namespace kv::internal {

// The register after `size` more bytes of any values. It is 0 before the first; the identifier of
// a name (GetUniqueID) is the register after all its bytes, without the sign bit.
[[nodiscard]] std::int32_t ExtendNameHash(std::int32_t hash, const char* text, std::size_t size);

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_INTERNAL_NAME_HASH_H_
