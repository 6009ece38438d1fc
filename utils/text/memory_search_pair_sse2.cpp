#include "utils/text/memory_search_pair.h"

#include <emmintrin.h>

#include <bit>

namespace kv::internal {
namespace {

constexpr std::size_t kBlock = sizeof(__m128i);

__m128i EqualBytes(const unsigned char* block, __m128i byte) {
  return _mm_cmpeq_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(block)), byte);
}

}  // namespace

std::size_t FindPairBySse2(const unsigned char* hay, std::size_t places, const BytePair& pair) {
  if (places < kBlock) {
    std::size_t place = 0;
    while (place < places &&
           (hay[place] != pair.first || hay[place + pair.distance] != pair.second)) {
      ++place;
    }
    return place;
  }
  const __m128i first = _mm_set1_epi8(static_cast<char>(pair.first));
  const __m128i second = _mm_set1_epi8(static_cast<char>(pair.second));
  const std::size_t lastBlock = places - kBlock;
  for (std::size_t place = 0;; place += kBlock) {
    // The last block may overlap the one before, in which the pair does not stand.
    if (place > lastBlock) place = lastBlock;
    const unsigned char* const block = hay + place;
    const __m128i both =
        _mm_and_si128(EqualBytes(block, first), EqualBytes(block + pair.distance, second));
    const auto found = static_cast<unsigned>(_mm_movemask_epi8(both));
    if (found != 0) return place + static_cast<std::size_t>(std::countr_zero(found));
    if (place == lastBlock) return places;
  }
}

}  // namespace kv::internal
