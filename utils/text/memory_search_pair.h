// Two bytes at a distance, looked for at many places at once.
//
// Where a needle stands, its first byte stands there and its last byte as far behind as it is long.
// Both together are rare in most hay, and a few instructions compare them at as many places as a
// register has bytes.
#ifndef KVUTILS_UTILS_TEXT_MEMORY_SEARCH_PAIR_H_
#define KVUTILS_UTILS_TEXT_MEMORY_SEARCH_PAIR_H_

#include <cstddef>

namespace kv::internal {

struct BytePair {
  unsigned char first;
  unsigned char second;
  std::size_t distance;  // of the second byte behind the first; 0 when they are one and the same
};

// Each gives the first of so many places, counted from the beginning of the hay, at which the pair
// stands; `places` when it stands at none. The hay holds places + distance bytes.

// On every processor.
[[nodiscard]] std::size_t FindPairBySse2(const unsigned char* hay, std::size_t places,
                                         const BytePair& pair);

// Where g_processor.avx2 says that there are registers for it.
[[nodiscard]] std::size_t FindPairByAvx2(const unsigned char* hay, std::size_t places,
                                         const BytePair& pair);

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_TEXT_MEMORY_SEARCH_PAIR_H_
