#ifndef KVUTILS_UTILS_TEXT_COLLATION_WALK_H_
#define KVUTILS_UTILS_TEXT_COLLATION_WALK_H_

#include "utils/internal/compiler.h"
#include "utils/internal/page.h"
#include "utils/text/collation_ranks.h"

#include <immintrin.h>

#include <bit>
#include <cstddef>

namespace kv::internal {

enum class Verdict {
  kBefore = -1,
  kEqual = 0,
  kAfter = 1,
  kTie,        // equal but for what counts when nothing else does
  kUndecided,  // what comes first is a character that only the system knows
  kUnasked,    // ... that the system can be asked about once for all
};

constexpr bool IsDecided(Verdict verdict) { return verdict <= Verdict::kAfter; }

constexpr bool IsDecisive(CollationWeight weight) {
  return weight >= kFirstOrdinary || weight == kEndOfText;
}

constexpr bool IsPassedOver(CollationWeight weight) {
  return weight == kIgnored || weight == kSkipped;
}

// Of a lead byte and what follows it.
inline CollationWeight LetterWeight(const LetterWeights& letters, const unsigned char* text) {
  const unsigned continuation = text[1] ^ 0x80U;
  if (continuation >= kContinuations) return kUnknown;
  return letters[(text[0] - kFirstLead) * kContinuations + continuation];
}

// Compares two texts in UTF-8 by the weights of their characters.
//
// The system makes a key of each text: the ranks of its characters, behind them what distinguishes
// accents, behind that hyphens and their like. It compares keys as texts are compared, a shorter
// one first. So the first difference of ranks decides, whatever follows it in the texts: a letter
// whose rank depends on what follows has none here (see collation_contractions.cpp). Nothing
// else is decided here but that texts of equal characters, none of them ignored, are equal.
inline Verdict CompareWeights(const char* textOfA, const char* textOfB, const ByteWeights& bytes,
                              const LetterWeights& letters) {
  const auto* a = reinterpret_cast<const unsigned char*>(textOfA);
  const auto* b = reinterpret_cast<const unsigned char*>(textOfB);
  bool isTie = false;
  for (;; ++a, ++b) {
    if (*a == *b && bytes[*a] >= kSkipped) continue;
    CollationWeight weightOfA = bytes[*a];
    CollationWeight weightOfB = bytes[*b];
    for (; IsPassedOver(weightOfA); weightOfA = bytes[*++a]) isTie |= weightOfA == kIgnored;
    for (; IsPassedOver(weightOfB); weightOfB = bytes[*++b]) isTie |= weightOfB == kIgnored;
    if (weightOfA == kLeadByte) weightOfA = LetterWeight(letters, a++);
    if (weightOfB == kLeadByte) weightOfB = LetterWeight(letters, b++);
    if (!IsDecisive(weightOfA) || !IsDecisive(weightOfB)) {
      return weightOfA == kUnlearned || weightOfB == kUnlearned ? Verdict::kUnasked
                                                                : Verdict::kUndecided;
    }
    if (!HaveOneRank(weightOfA, weightOfB))
      return weightOfA < weightOfB ? Verdict::kBefore : Verdict::kAfter;
    if (weightOfA == kEndOfText) return isTie ? Verdict::kTie : Verdict::kEqual;
    isTie |= weightOfA != weightOfB;
  }
}

// Decides as CompareWeights does, or not at all, at the first difference of two texts. It is found
// sixteen bytes at a time, and decides where ASCII from " " on alone, all of it known, stands
// before it and two ordinary characters of one byte make it, as in most pairs of names.
//
// A block is read only where it ends in the page in which it begins, with a byte of the text.
KVUTILS_READS_WHOLE_BLOCKS inline Verdict CompareAtFirstDifference(const char* a, const char* b,
                                                                   const ByteWeights& bytes) {
  constexpr std::size_t kBlock = sizeof(__m128i);
  constexpr unsigned kWholeBlock = 0xFFFF;  // a bit for each byte
  const __m128i control = _mm_set1_epi8(kFirstPrintable - 1);
  for (; LieInOnePage<kBlock>(a) && LieInOnePage<kBlock>(b); a += kBlock, b += kBlock) {
    const __m128i blockOfA = _mm_loadu_si128(reinterpret_cast<const __m128i*>(a));
    const __m128i blockOfB = _mm_loadu_si128(reinterpret_cast<const __m128i*>(b));
    const __m128i isEqual = _mm_cmpeq_epi8(blockOfA, blockOfB);
    const __m128i isPrintable = _mm_cmpgt_epi8(blockOfA, control);
    const unsigned stops =
        kWholeBlock ^ static_cast<unsigned>(_mm_movemask_epi8(_mm_and_si128(isEqual, isPrintable)));
    if (stops == 0) continue;
    const int place = std::countr_zero(stops);
    const unsigned weightOfA = bytes[static_cast<unsigned char>(a[place])];
    const unsigned weightOfB = bytes[static_cast<unsigned char>(b[place])];
    if (weightOfA < kFirstOrdinary || weightOfB < kFirstOrdinary) break;
    if (HaveOneRank(weightOfA, weightOfB)) break;
    return weightOfA < weightOfB ? Verdict::kBefore : Verdict::kAfter;
  }
  return Verdict::kUndecided;
}

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_TEXT_COLLATION_WALK_H_
