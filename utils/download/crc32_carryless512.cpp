// Folding with lines of four blocks in the place of blocks, eight lines side by side.
//
// What bounds the speed are the products, of which a line takes two. Some lines need none. Let y be
// x^-512 mod P, by which a line of 512 bits that lies one further on counts less: where the powers
// of y by four distances add up to 1, a line may be left out when it is added to the lines that lie
// these distances further on. Here this is the first line of each group of eight, as long as those
// lines are there. Of up to four distances no others up to 300 add up to 1; none of these is a
// multiple of eight, so that no line is added to one that is left out.
#include "utils/download/crc32_folding.h"
#include "utils/download/crc32_forms.h"

#define KVUTILS_TARGET_512 KVUTILS_TARGET("avx512f,avx512vl,avx512bw,vpclmulqdq,pclmul,sse4.1")

namespace kv::internal {
namespace {

constexpr std::size_t kLine = 64;
constexpr std::size_t kGroup = 8 * kLine;

constexpr std::size_t kDistances[] = {145, 183, 211, 300};  // in lines
static_assert(kDistances[0] % 8 == 1 && kDistances[1] % 8 == 7 && kDistances[2] % 8 == 3 &&
              kDistances[3] % 8 == 4);

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

// The line at `place`, and the one so far before it if that is there and left out, which lines from
// `end` on are not.
template <std::size_t kDistance>
KVUTILS_TARGET_512 inline __m512i LineAndMoved(const unsigned char* data, std::size_t place,
                                               std::size_t end) {
  constexpr std::size_t kBytes = kDistance * kLine;
  const __m512i line = LoadLine(data + place);
  if (place < kBytes || place - kBytes >= end) return line;
  return _mm512_xor_si512(line, LoadLine(data + place - kBytes));
}

// The accumulator behind so many bytes in whole groups, one or more, of which `line` is the first
// line. The first group is the beginning of the sums, and none of its lines is left out.
KVUTILS_TARGET_512 inline __m512i FoldGroups(__m512i line, const unsigned char* data,
                                             std::size_t size) {
  __m512i sums[] = {_mm512_setzero_si512(),     FoldLine<kLine>(line, LoadLine(data + kLine)),
                    LoadLine(data + 2 * kLine), LoadLine(data + 3 * kLine),
                    LoadLine(data + 4 * kLine), LoadLine(data + 5 * kLine),
                    LoadLine(data + 6 * kLine), LoadLine(data + 7 * kLine)};
  data += kGroup;
  size -= kGroup;
  // Of more than the caches hold, reading is the bound, and in one place at a time it is faster.
  constexpr std::size_t kFarthest = kDistances[3] * kLine;
  constexpr std::size_t kCached = std::size_t{8} << 20;
  const bool isMoved = size > kFarthest && size <= kCached;
  const std::size_t end = isMoved ? (size - kFarthest) / kGroup * kGroup : 0;
  for (std::size_t place = 0; place < size; place += kGroup) {
    const unsigned char* const group = data + place;
    if (place >= end) sums[0] = FoldLine<kGroup>(sums[0], LoadLine(group));
    sums[1] = FoldLine<kGroup>(sums[1], LineAndMoved<kDistances[0]>(data, place + kLine, end));
    sums[2] = FoldLine<kGroup>(sums[2], LoadLine(group + 2 * kLine));
    sums[3] = FoldLine<kGroup>(sums[3], LineAndMoved<kDistances[2]>(data, place + 3 * kLine, end));
    sums[4] = FoldLine<kGroup>(sums[4], LineAndMoved<kDistances[3]>(data, place + 4 * kLine, end));
    sums[5] = FoldLine<kGroup>(sums[5], LoadLine(group + 5 * kLine));
    sums[6] = FoldLine<kGroup>(sums[6], LoadLine(group + 6 * kLine));
    sums[7] = FoldLine<kGroup>(sums[7], LineAndMoved<kDistances[1]>(data, place + 7 * kLine, end));
  }
  const __m512i lastThree = FoldLine<2 * kLine>(sums[5], FoldLine<kLine>(sums[6], sums[7]));
  const __m512i lastFive = FoldLine<4 * kLine>(sums[3], FoldLine<3 * kLine>(sums[4], lastThree));
  const __m512i lastSeven = FoldLine<6 * kLine>(sums[1], FoldLine<5 * kLine>(sums[2], lastFive));
  return FoldLine<7 * kLine>(sums[0], lastSeven);
}

}  // namespace

KVUTILS_TARGET_512
std::uint32_t ExtendCrc32By512Bits(std::uint32_t value, const unsigned char* data,
                                   std::size_t size) {
  if (size < kLine) return ExtendCrc32By128Bits(value, data, size);
  const __m512i before = _mm512_zextsi128_si512(_mm_cvtsi32_si128(static_cast<int>(value)));
  __m512i line = _mm512_xor_si512(LoadLine(data), before);
  std::size_t passed = kLine;
  if (size >= kGroup) {
    passed = size / kGroup * kGroup;
    line = FoldGroups(line, data, passed);
  }
  for (; size - passed >= kLine; passed += kLine) {
    line = FoldLine<kLine>(line, LoadLine(data + passed));
  }
  const __m128i accumulator = FoldWithin(line);
  _mm256_zeroupper();  // else every later SSE instruction waits for the upper halves
  return FinishCrc32(accumulator, data + passed, size - passed);
}

}  // namespace kv::internal
