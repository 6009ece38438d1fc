// Comparison of names without the system, where its answer is sure.
#ifndef KVUTILS_UTILS_TEXT_COLLATION_H_
#define KVUTILS_UTILS_TEXT_COLLATION_H_

#include "utils/internal/win32.h"
#include "utils/text/collation_ranks.h"
#include "utils/text/collation_walk.h"

#include <cstddef>

namespace kv::internal {

enum class Parentheses { kCompared, kDropped };

// What is known of the order under each combination of the flags that are in use.
extern constinit LearnedRanks g_learnedRanks[4];

inline LearnedRanks& RanksUnder(unsigned flags) {
  const std::size_t index = ((flags & LINGUISTIC_IGNOREDIACRITIC) != 0 ? 1U : 0U) +
                            ((flags & SORT_STRINGSORT) != 0 ? 2U : 0U);
  return g_learnedRanks[index];
}

inline Verdict CompareBy(const CollationRanks& ranks, const char* a, const char* b,
                         Parentheses parentheses) {
  const ByteWeights& bytes =
      parentheses == Parentheses::kDropped ? ranks.bytesWithoutParentheses : ranks.bytes;
  return CompareWeights(a, b, bytes, ranks.letters);
}

// The verdict when `verdict` is not decided.
Verdict Reconsider(Verdict verdict, const char* a, const char* b, unsigned flags,
                   Parentheses parentheses);

// Compares two texts in UTF-8 under the flags of CompareStringEx. Either may be null, and is then
// for the system to refuse.
inline Verdict CompareByRanks(const char* a, const char* b, unsigned flags,
                              Parentheses parentheses) {
  if (a == nullptr || b == nullptr) return Verdict::kUndecided;
  const Verdict verdict = CompareBy(RanksUnder(flags).Get(flags), a, b, parentheses);
  return IsDecided(verdict) ? verdict : Reconsider(verdict, a, b, flags, parentheses);
}

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_TEXT_COLLATION_H_
