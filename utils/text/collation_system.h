// Comparison of names by the system: of the current code page's rules, in the invariant locale.
#ifndef KVUTILS_UTILS_TEXT_COLLATION_SYSTEM_H_
#define KVUTILS_UTILS_TEXT_COLLATION_SYSTEM_H_

#include "utils/internal/win32.h"
#include "utils/text/code_page.h"
#include "utils/text/system_text.h"

#include <climits>

namespace kv::internal {

inline constexpr int kComparisonFailed = -3;

// The flags of CompareStringEx that the current code page asks for.
inline unsigned ComparisonFlags(bool stringSort) {
  unsigned flags = LINGUISTIC_IGNORECASE;
  if (CurrentCodePage() != kCyrillicCodePage) flags |= LINGUISTIC_IGNOREDIACRITIC;
  if (stringSort) flags |= SORT_STRINGSORT;
  return flags;
}

// Each -1, 0, 1 or kComparisonFailed, by one call of CompareStringEx.

// Terminators are compared only where the sizes count them.
int CompareUnits(const wchar_t* a, int sizeOfA, const wchar_t* b, int sizeOfB, unsigned flags);

// At most `limit` units of each text.
int CompareConverted(const SystemText& a, const SystemText& b, unsigned flags, int limit = INT_MAX);

// Texts in UTF-8 with their terminators; either may be null.
int CompareBySystem(const char* a, const char* b, unsigned flags);

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_TEXT_COLLATION_SYSTEM_H_
