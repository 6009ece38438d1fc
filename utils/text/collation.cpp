#include "utils/text/text.h"

#include "utils/internal/win32.h"
#include "utils/text/asteroid_names.h"
#include "utils/text/code_page.h"
#include "utils/text/collation_ranks.h"
#include "utils/text/collation_system.h"
#include "utils/text/collation_walk.h"

#include <cstddef>
#include <cstring>

namespace {

using namespace kv::internal;

enum class Parentheses { kCompared, kDropped };

// What is known of the order under each combination of the flags that are in use.
constinit LearnedRanks learnedRanks[4];

LearnedRanks& RanksUnder(unsigned flags) {
  const std::size_t index = ((flags & LINGUISTIC_IGNOREDIACRITIC) != 0 ? 1U : 0U) +
                            ((flags & SORT_STRINGSORT) != 0 ? 2U : 0U);
  return learnedRanks[index];
}

const ByteWeights& WeightsOf(const CollationRanks& ranks, Parentheses parentheses) {
  return parentheses == Parentheses::kDropped ? ranks.bytesWithoutParentheses : ranks.bytes;
}

Verdict CompareBy(const CollationRanks& ranks, const char* a, const char* b,
                  Parentheses parentheses) {
  return CompareWeights(a, b, WeightsOf(ranks, parentheses), ranks.letters);
}

// The verdict where the first one, by what has been learned before, decides nothing.
Verdict Reconsider(Verdict verdict, const char* a, const char* b, unsigned flags,
                   Parentheses parentheses) {
  if (verdict == Verdict::kUnasked)
    verdict = CompareBy(RanksUnder(flags).GetWithLetters(flags), a, b, parentheses);
  // Nothing distinguishes a text from itself.
  if (verdict == Verdict::kTie && std::strcmp(a, b) == 0) return Verdict::kEqual;
  return verdict;
}

// What the first difference of two names decides, once there is a code page and its order known.
inline Verdict CompareAtOnce(const char* a, const char* b, bool stringSort,
                             Parentheses parentheses) {
  if (CurrentCodePage() == kNoCodePage || a == nullptr || b == nullptr) return Verdict::kUndecided;
  const CollationRanks& ranks = RanksUnder(ComparisonFlags(stringSort)).Current();
  if (!ranks.isPrintableKnown) return Verdict::kUndecided;
  return CompareAtFirstDifference(a, b, WeightsOf(ranks, parentheses));
}

// Compares two texts in UTF-8 without the system. It is for the system to refuse null.
Verdict CompareByRanks(const char* a, const char* b, unsigned flags, Parentheses parentheses) {
  if (a == nullptr || b == nullptr) return Verdict::kUndecided;
  const Verdict verdict = CompareBy(RanksUnder(flags).Get(flags), a, b, parentheses);
  return IsDecided(verdict) ? verdict : Reconsider(verdict, a, b, flags, parentheses);
}

int CompareWhole(const char* a, const char* b, unsigned flags) {
  const Verdict verdict = CompareByRanks(a, b, flags, Parentheses::kCompared);
  return IsDecided(verdict) ? static_cast<int>(verdict) : CompareBySystem(a, b, flags);
}

int CompareWholeStrings(const char* a, const char* b, bool stringSort) {
  EnsureCodePage();
  return CompareWhole(a, b, ComparisonFlags(stringSort));
}

int CompareWholeAsteroids(const char* a, const char* b) {
  EnsureCodePage();
  const unsigned flags = ComparisonFlags(false);
  const Verdict verdict = CompareByRanks(a, b, flags, Parentheses::kDropped);
  return IsDecided(verdict) ? static_cast<int>(verdict) : CompareWithoutParentheses(a, b, flags);
}

}  // namespace

int CompareStrings(const char* a, const char* b, bool stringSort) {
  const Verdict verdict = CompareAtOnce(a, b, stringSort, Parentheses::kCompared);
  return IsDecided(verdict) ? static_cast<int>(verdict) : CompareWholeStrings(a, b, stringSort);
}

int CompareStringsWestern(const char* a, const char* b) { return CompareStrings(a, b, false); }

int CompareStringsRussian(const char* a, const char* b) { return CompareStrings(a, b, false); }

int CompareStringsForJapan(const char* /*a*/, const char* /*b*/) { return -1; }

int CompareStringsRange(const char* a, const char* b, int maxBytes) {
  if (maxBytes <= 0) return 0;
  EnsureCodePage();
  if (a == nullptr || b == nullptr) return kComparisonFailed;
  const int bytesOfA = static_cast<int>(::strnlen(a, static_cast<std::size_t>(maxBytes)));
  const int bytesOfB = static_cast<int>(::strnlen(b, static_cast<std::size_t>(maxBytes)));
  const int result =
      CompareConverted(SystemText(kUtf8CodePage, a, bytesOfA),
                       SystemText(kUtf8CodePage, b, bytesOfB), ComparisonFlags(false));
  if (result != 0 || bytesOfA == bytesOfB) return result;
  return bytesOfA > bytesOfB ? 1 : -1;
}

int CompareStringsRangeExt(const char* a, const char* b, bool useFirstLength, bool stringSort) {
  const SystemText textOfA(kUtf8CodePage, a, SystemText::kWithTerminator);
  const SystemText textOfB(kUtf8CodePage, b, SystemText::kWithTerminator);
  if (!textOfA.IsValid() || !textOfB.IsValid()) return kComparisonFailed;
  const int lengthOfA = textOfA.Size() - 1;
  const int lengthOfB = textOfB.Size() - 1;
  const int limit = useFirstLength ? lengthOfA : lengthOfB;
  const int result = CompareConverted(textOfA, textOfB, ComparisonFlags(stringSort), limit);
  // Callers rely on the lengths, not the direction of the comparison, deciding unequal texts.
  if (result == 0 || result == kComparisonFailed) return result;
  const bool isFirstLonger = lengthOfA > lengthOfB;
  return isFirstLonger == (result > 0) ? 1 : -1;
}

int CompareNoCaseStrings(const char* a, const char* b) {
  EnsureCodePage();
  return CompareWhole(a, b, LINGUISTIC_IGNORECASE);
}

int CompareAsterNameWithNumber(const char* a, const char* b) {
  const Verdict verdict = CompareAtOnce(a, b, false, Parentheses::kDropped);
  return IsDecided(verdict) ? static_cast<int>(verdict) : CompareWholeAsteroids(a, b);
}

int GetSpecialCompareFunctionId() { return -1; }

void SetSpecialCompareFunctionId(int /*id*/) {}
