// What no operation on all bytes in memory can undercut.
#ifndef KVUTILS_BENCH_SUPPORT_MEMORY_H_
#define KVUTILS_BENCH_SUPPORT_MEMORY_H_

#include <emmintrin.h>

#include <numeric>
#include <vector>

namespace kv::bench {

// All bytes once, through registers of 128 bits; the result depends on each.
inline unsigned ReadAll(const std::vector<unsigned char>& bytes) {
  const auto* block = reinterpret_cast<const __m128i*>(bytes.data());
  const auto* const end = block + bytes.size() / sizeof(__m128i);
  __m128i sum = _mm_setzero_si128();
  __m128i secondSum = sum;
  for (; end - block >= 2; block += 2) {
    sum = _mm_add_epi8(sum, _mm_loadu_si128(block));
    secondSum = _mm_add_epi8(secondSum, _mm_loadu_si128(block + 1));
  }
  sum = _mm_add_epi8(sum, secondSum);
  if (block != end) sum = _mm_add_epi8(sum, _mm_loadu_si128(block++));
  sum = _mm_sad_epu8(sum, _mm_setzero_si128());
  const int sums = _mm_cvtsi128_si32(sum) + _mm_extract_epi16(sum, 4);
  return std::accumulate(reinterpret_cast<const unsigned char*>(block), bytes.data() + bytes.size(),
                         static_cast<unsigned>(sums));
}

}  // namespace kv::bench

#endif  // KVUTILS_BENCH_SUPPORT_MEMORY_H_
