#include "utils/download/crc32_folding.h"
#include "utils/download/crc32_forms.h"

#define KVUTILS_TARGET_512 KVUTILS_TARGET("avx512f,avx512vl,avx512bw,vpclmulqdq,pclmul,sse4.1")

namespace kv::internal {
namespace {

constexpr std::size_t kLine = 64;
constexpr std::size_t kStep = 4 * kLine;

KVUTILS_TARGET_512 inline __m512i LoadLine(const unsigned char* data) {
  return _mm512_loadu_si512(data);
}

// The four blocks of `line`, folded onto those of `onto`, kBytes behind them.
template <std::size_t kBytes>
KVUTILS_TARGET_512 inline __m512i FoldLine(__m512i line, __m512i onto) {
  const __m512i factors = _mm512_broadcast_i32x4(FactorsOver<kBytes>());
  constexpr int kExclusiveOr = 0x96;
  return _mm512_ternarylogic_epi64(_mm512_clmulepi64_epi128(line, factors, 0x00),
                                   _mm512_clmulepi64_epi128(line, factors, 0x11), onto,
                                   kExclusiveOr);
}

template <int kIndex>
KVUTILS_TARGET_512 inline __m128i BlockOf(__m512i line) {
  constexpr auto kAll = static_cast<__mmask8>(-1);
  return _mm512_maskz_extracti32x4_epi32(kAll, line, kIndex);
}

// The four blocks of a line folded onto the last of them.
KVUTILS_TARGET_512 inline __m128i FoldWithin(__m512i line) {
  return _mm_xor_si128(_mm_xor_si128(Fold(BlockOf<0>(line), FactorsOver<48>()),
                                     Fold(BlockOf<1>(line), FactorsOver<32>())),
                       _mm_xor_si128(Fold(BlockOf<2>(line), FactorsOver<16>()), BlockOf<3>(line)));
}

}  // namespace

// Lines of four blocks in the place of blocks, else as with registers of 128 bits.
KVUTILS_TARGET_512
std::uint32_t ExtendCrc32By512Bits(std::uint32_t value, const unsigned char* data,
                                   std::size_t size) {
  if (size < kLine) return ExtendCrc32By128Bits(value, data, size);
  const __m512i before = _mm512_zextsi128_si512(_mm_cvtsi32_si128(static_cast<int>(value)));
  __m512i line = _mm512_xor_si512(LoadLine(data), before);
  data += kLine;
  size -= kLine;
  if (size >= kStep - kLine) {
    __m512i second = LoadLine(data);
    __m512i third = LoadLine(data + kLine);
    __m512i last = LoadLine(data + 2 * kLine);
    for (data += kStep - kLine, size -= kStep - kLine; size >= kStep;
         data += kStep, size -= kStep) {
      line = FoldLine<kStep>(line, LoadLine(data));
      second = FoldLine<kStep>(second, LoadLine(data + kLine));
      third = FoldLine<kStep>(third, LoadLine(data + 2 * kLine));
      last = FoldLine<kStep>(last, LoadLine(data + 3 * kLine));
    }
    line = FoldLine<3 * kLine>(line, FoldLine<2 * kLine>(second, FoldLine<kLine>(third, last)));
  }
  for (; size >= kLine; data += kLine, size -= kLine) line = FoldLine<kLine>(line, LoadLine(data));
  const __m128i accumulator = FoldWithin(line);
  _mm256_zeroupper();
  return FinishCrc32(accumulator, data, size);
}

}  // namespace kv::internal
