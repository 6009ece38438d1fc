#ifndef KVUTILS_UTILS_TEXT_COLLATION_WALK_H_
#define KVUTILS_UTILS_TEXT_COLLATION_WALK_H_

#include "utils/text/collation_ranks.h"

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
// one first. So the first difference of ranks decides, whatever follows it in the texts. Nothing
// else is decided here but that texts of equal characters, none of them ignored, are equal.
inline Verdict CompareWeights(const char* textOfA, const char* textOfB, const ByteWeights& bytes,
                              const LetterWeights& letters) {
  const auto* a = reinterpret_cast<const unsigned char*>(textOfA);
  const auto* b = reinterpret_cast<const unsigned char*>(textOfB);
  bool isTie = false;
  for (;; ++a, ++b) {
    if (*a == *b && bytes[*a] >= kFirstOrdinary) continue;
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

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_TEXT_COLLATION_WALK_H_
