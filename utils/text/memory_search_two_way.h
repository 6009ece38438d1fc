// A search whose time is linear in the sizes of needle and hay, whatever bytes they hold.
#ifndef KVUTILS_UTILS_TEXT_MEMORY_SEARCH_TWO_WAY_H_
#define KVUTILS_UTILS_TEXT_MEMORY_SEARCH_TWO_WAY_H_

#include <cstddef>
#include <span>

namespace kv::internal {

// The first of so many places, counted from the beginning of the hay, at which the needle stands;
// `places` when it stands at none. The needle has a byte or more, the hay one byte less than both
// together.
[[nodiscard]] std::size_t FindByTwoWay(const unsigned char* hay, std::size_t places,
                                       std::span<const unsigned char> needle);

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_TEXT_MEMORY_SEARCH_TWO_WAY_H_
