// CRC-32 by folding: what its forms with multiplications without carries share.
//
// A text stands for a polynomial over the field of two elements, the lowest bit of its first byte
// for the highest power of x; the register after it is the remainder of that polynomial times x^32
// by the polynomial P of CRC-32. Sixteen bytes that n others follow, the first eight of them F and
// the last eight L, contribute F x^(8n+64) + L x^(8n). What counts is the remainder alone, so they
// may be dropped, and F (x^(8n+64) mod P) + L (x^(8n) mod P), which is shorter than sixteen bytes,
// added to those that lie n bytes further on. So an accumulator of sixteen bytes passes over the
// text; at its end it is itself a text with the remainder of all that it has passed.
//
// The lowest bit of a word holds the highest power. The product without carries of two words of 64
// bits then fills the lower 127 bits of 128, one place too low: it has been multiplied by x, which
// the constants make good.
#ifndef KVUTILS_UTILS_DOWNLOAD_CRC32_FOLDING_H_
#define KVUTILS_UTILS_DOWNLOAD_CRC32_FOLDING_H_

#include "utils/download/crc32_tables.h"
#include "utils/internal/compiler.h"
#include "utils/internal/crc_table.h"
#include "utils/internal/slicing.h"

#include <immintrin.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace kv::internal {

// x^exponent mod P, reflected.
constexpr std::uint32_t PowerOfX(std::size_t exponent) {
  constexpr std::uint32_t kOne = 0x80000000;
  std::uint32_t power = kOne;
  for (; exponent > 0; --exponent) power = TimesX(power);
  return power;
}

// The factor x^bits of eight bytes, as the product needs it.
constexpr long long Factor(std::size_t bits) {
  return static_cast<long long>(std::uint64_t{PowerOfX(bits - 1)} << 32);
}

// The factors that fold a block of sixteen bytes onto the one that begins kBytes further on.
template <std::size_t kBytes>
inline __m128i FactorsOver() {
  constexpr long long kFirst = Factor(8 * kBytes + 64);
  constexpr long long kLast = Factor(8 * kBytes);
  return _mm_set_epi64x(kLast, kFirst);
}

inline __m128i LoadBlock(const unsigned char* data) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(data));
}

KVUTILS_TARGET("pclmul") inline __m128i Fold(__m128i block, __m128i factors) {
  return _mm_xor_si128(_mm_clmulepi64_si128(block, factors, 0x00),
                       _mm_clmulepi64_si128(block, factors, 0x11));
}

// The accumulator after `size` more bytes, 1 to 15, behind sixteen or more that it has passed. Of
// it and these bytes together, the last sixteen are the block that the others are folded onto.
KVUTILS_TARGET("pclmul,sse4.1")
inline __m128i FoldOntoRest(__m128i accumulator, const unsigned char* data, std::size_t size) {
  // As indices of a shuffle, sixteen bytes from the middle on leave a block as it is. Each byte
  // further on moves it one place to its beginning, each byte before that to its end; an index
  // with its highest bit set gives zero.
  static constexpr auto kMoves = [] {
    std::array<unsigned char, 48> moves{};
    moves.fill(0x80);
    for (unsigned char i = 0; i < 16; ++i) moves[16U + i] = i;
    return moves;
  }();
  const __m128i toEnd = LoadBlock(kMoves.data() + size);
  const __m128i toBeginning = LoadBlock(kMoves.data() + 16 + size);
  const __m128i dropped = _mm_shuffle_epi8(accumulator, toEnd);
  const __m128i kept = _mm_shuffle_epi8(accumulator, toBeginning);
  const __m128i lastOfText = LoadBlock(data + size - 16);
  return _mm_xor_si128(Fold(dropped, FactorsOver<16>()),
                       _mm_blendv_epi8(kept, lastOfText, toBeginning));
}

// The register after `size` more bytes, behind sixteen or more that the accumulator has passed.
KVUTILS_TARGET("pclmul,sse4.1")
inline std::uint32_t FinishCrc32(__m128i accumulator, const unsigned char* data, std::size_t size) {
  for (; size >= 16; size -= 16, data += 16) {
    accumulator = _mm_xor_si128(Fold(accumulator, FactorsOver<16>()), LoadBlock(data));
  }
  if (size > 0) accumulator = FoldOntoRest(accumulator, data, size);
  unsigned char text[16];
  _mm_storeu_si128(reinterpret_cast<__m128i*>(text), accumulator);
  return StepOverBlock<sizeof text>(kCrc32Tables, 0, text);
}

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_DOWNLOAD_CRC32_FOLDING_H_
