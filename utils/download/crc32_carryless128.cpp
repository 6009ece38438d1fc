#include "utils/download/crc32_folding.h"
#include "utils/download/crc32_forms.h"

namespace kv::internal {

// Four accumulators pass over the text side by side, so that their products need not wait for one
// another; the first three are folded onto the last at the end.
KVUTILS_TARGET("pclmul,sse4.1")
std::uint32_t ExtendCrc32By128Bits(std::uint32_t value, const unsigned char* data,
                                   std::size_t size) {
  constexpr std::size_t kBlock = 16;
  constexpr std::size_t kStep = 4 * kBlock;
  if (size < kBlock) return ExtendCrc32BySlicing(value, data, size);
  __m128i accumulator = _mm_xor_si128(LoadBlock(data), _mm_cvtsi32_si128(static_cast<int>(value)));
  if (size < kStep) return FinishCrc32(accumulator, data + kBlock, size - kBlock);

  __m128i second = LoadBlock(data + kBlock);
  __m128i third = LoadBlock(data + 2 * kBlock);
  __m128i last = LoadBlock(data + 3 * kBlock);
  for (data += kStep, size -= kStep; size >= kStep; data += kStep, size -= kStep) {
    const __m128i factors = FactorsOver<kStep>();
    accumulator = _mm_xor_si128(Fold(accumulator, factors), LoadBlock(data));
    second = _mm_xor_si128(Fold(second, factors), LoadBlock(data + kBlock));
    third = _mm_xor_si128(Fold(third, factors), LoadBlock(data + 2 * kBlock));
    last = _mm_xor_si128(Fold(last, factors), LoadBlock(data + 3 * kBlock));
  }
  const __m128i firstTwo = _mm_xor_si128(Fold(accumulator, FactorsOver<3 * kBlock>()),
                                         Fold(second, FactorsOver<2 * kBlock>()));
  const __m128i lastTwo = _mm_xor_si128(Fold(third, FactorsOver<kBlock>()), last);
  return FinishCrc32(_mm_xor_si128(firstTwo, lastTwo), data, size);
}

}  // namespace kv::internal
