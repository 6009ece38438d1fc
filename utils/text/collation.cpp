#include "utils/text/text.h"

#include "utils/internal/win32.h"
#include "utils/text/code_page.h"
#include "utils/text/system_text.h"

#include <algorithm>
#include <climits>
#include <cstring>

namespace {

using namespace kv::internal;

constexpr int kFailed = -3;

// The rules of the current code page.
DWORD ComparisonFlags(bool stringSort) {
  DWORD flags = LINGUISTIC_IGNORECASE;
  if (CurrentCodePage() != kCyrillicCodePage) flags |= LINGUISTIC_IGNOREDIACRITIC;
  if (stringSort) flags |= SORT_STRINGSORT;
  return flags;
}

// Compares at most `limit` units of each text by the invariant locale: -1, 0, 1 or kFailed.
int CompareUnits(const SystemText& a, const SystemText& b, DWORD flags, int limit = INT_MAX) {
  if (!a.IsValid() || !b.IsValid()) return kFailed;
  const int result =
      ::CompareStringEx(LOCALE_NAME_INVARIANT, flags, a.Get(), std::min(a.Size(), limit), b.Get(),
                        std::min(b.Size(), limit), nullptr, nullptr, 0);
  return result == 0 ? kFailed : result - CSTR_EQUAL;
}

int CompareWhole(const char* a, const char* b, DWORD flags) {
  return CompareUnits(SystemText(kUtf8CodePage, a, SystemText::kWithTerminator),
                      SystemText(kUtf8CodePage, b, SystemText::kWithTerminator), flags);
}

}  // namespace

int CompareStrings(const char* a, const char* b, bool stringSort) {
  EnsureCodePage();
  return CompareWhole(a, b, ComparisonFlags(stringSort));
}

int CompareStringsWestern(const char* a, const char* b) { return CompareStrings(a, b, false); }

int CompareStringsRussian(const char* a, const char* b) { return CompareStrings(a, b, false); }

int CompareStringsForJapan(const char* /*a*/, const char* /*b*/) { return -1; }

int CompareStringsRange(const char* a, const char* b, int maxBytes) {
  if (maxBytes <= 0) return 0;
  EnsureCodePage();
  if (a == nullptr || b == nullptr) return kFailed;
  const int bytesOfA = static_cast<int>(::strnlen(a, static_cast<std::size_t>(maxBytes)));
  const int bytesOfB = static_cast<int>(::strnlen(b, static_cast<std::size_t>(maxBytes)));
  const int result = CompareUnits(SystemText(kUtf8CodePage, a, bytesOfA),
                                  SystemText(kUtf8CodePage, b, bytesOfB), ComparisonFlags(false));
  if (result != 0 || bytesOfA == bytesOfB) return result;
  return bytesOfA > bytesOfB ? 1 : -1;
}

int CompareStringsRangeExt(const char* a, const char* b, bool useFirstLength, bool stringSort) {
  const SystemText textOfA(kUtf8CodePage, a, SystemText::kWithTerminator);
  const SystemText textOfB(kUtf8CodePage, b, SystemText::kWithTerminator);
  if (!textOfA.IsValid() || !textOfB.IsValid()) return kFailed;
  const int lengthOfA = textOfA.Size() - 1;
  const int lengthOfB = textOfB.Size() - 1;
  const int limit = useFirstLength ? lengthOfA : lengthOfB;
  const int result = CompareUnits(textOfA, textOfB, ComparisonFlags(stringSort), limit);
  // Callers rely on the lengths, not the direction of the comparison, deciding unequal texts.
  if (result == 0 || result == kFailed) return result;
  const bool isFirstLonger = lengthOfA > lengthOfB;
  return isFirstLonger == (result > 0) ? 1 : -1;
}

int CompareNoCaseStrings(const char* a, const char* b) {
  EnsureCodePage();
  return CompareWhole(a, b, LINGUISTIC_IGNORECASE);
}

int GetSpecialCompareFunctionId() { return -1; }

void SetSpecialCompareFunctionId(int /*id*/) {}
