#ifndef KVUTILS_UTILS_INTERNAL_TEXT_LENGTH_H_
#define KVUTILS_UTILS_INTERNAL_TEXT_LENGTH_H_

#include "utils/internal/compiler.h"
#include "utils/internal/page.h"

#include <immintrin.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace kv::internal {

// A bit for each byte of an aligned block of sixteen that is zero.
KVUTILS_READS_WHOLE_BLOCKS inline unsigned ZeroBytes(const char* block) {
  const __m128i bytes = _mm_load_si128(reinterpret_cast<const __m128i*>(block));
  return static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, _mm_setzero_si128())));
}

// strlen, sixteen bytes at a time. The run-time library's is a call through the import table to a
// loop over bytes on some systems, and costs more than the short conversions that ask for it.
//
// The blocks are aligned, so each lies in one page with a byte of the text: reading one cannot
// fault, though it may hold bytes before the text or behind its end, which do not count.
KVUTILS_READS_WHOLE_BLOCKS inline std::size_t TextLength(const char* text) {
  constexpr std::size_t kBlock = sizeof(__m128i);
  const std::size_t before = reinterpret_cast<std::uintptr_t>(text) % kBlock;
  const char* block = text - before;
  unsigned zeros = ZeroBytes(block) >> before << before;
  while (zeros == 0) {
    block += kBlock;
    zeros = ZeroBytes(block);
  }
  return static_cast<std::size_t>(block - text) + static_cast<std::size_t>(std::countr_zero(zeros));
}

// Eight bytes, all of them `byte`.
constexpr std::uint64_t EightTimes(std::uint64_t byte) { return 0x0101010101010101 * byte; }

// Whether a text has fewer than eight bytes. False, too, where its page ends before them.
//
// The subtraction carries a one into the highest bit of the lowest byte that is zero; into other
// bytes only behind one, or where the highest bit is set, which `~bytes` drops.
KVUTILS_READS_WHOLE_BLOCKS inline bool IsKnownShort(const char* text) {
  if (!LieInOnePage<sizeof(std::uint64_t)>(text)) return false;
  std::uint64_t bytes;
  std::memcpy(&bytes, text, sizeof bytes);
  return ((bytes - EightTimes(0x01)) & ~bytes & EightTimes(0x80)) != 0;
}

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_INTERNAL_TEXT_LENGTH_H_
