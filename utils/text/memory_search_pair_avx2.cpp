#include "utils/internal/compiler.h"
#include "utils/text/memory_search_pair.h"

#include <immintrin.h>

#include <bit>
#include <cstdint>

namespace kv::internal {
namespace {

constexpr std::size_t kBlock = sizeof(__m256i);
constexpr std::size_t kStep = 2 * kBlock;

KVUTILS_TARGET("avx2")
inline __m256i EqualBytes(const unsigned char* block, __m256i byte) {
  return _mm256_cmpeq_epi8(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(block)), byte);
}

KVUTILS_TARGET("avx2") inline std::uint64_t SetBytes(__m256i mask) {
  return static_cast<std::uint32_t>(_mm256_movemask_epi8(mask));
}

}  // namespace

KVUTILS_TARGET("avx2")
std::size_t FindPairByAvx2(const unsigned char* hay, std::size_t places, const BytePair& pair) {
  const __m256i first = _mm256_set1_epi8(static_cast<char>(pair.first));
  const __m256i second = _mm256_set1_epi8(static_cast<char>(pair.second));
  std::size_t place = 0;
  for (; places - place >= kStep; place += kStep) {
    const unsigned char* const block = hay + place;
    const unsigned char* const other = block + pair.distance;
    const __m256i low = _mm256_and_si256(EqualBytes(block, first), EqualBytes(other, second));
    const __m256i high =
        _mm256_and_si256(EqualBytes(block + kBlock, first), EqualBytes(other + kBlock, second));
    if (SetBytes(_mm256_or_si256(low, high)) == 0) continue;
    const std::uint64_t found = SetBytes(low) | (SetBytes(high) << kBlock);
    _mm256_zeroupper();
    return place + static_cast<std::size_t>(std::countr_zero(found));
  }
  _mm256_zeroupper();
  return place + FindPairBySse2(hay + place, places - place, pair);
}

}  // namespace kv::internal
