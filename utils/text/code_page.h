// The current code page of the process. It has no lock: it is meant to be set once at the start,
// and concurrent first comparisons store the same value.
#ifndef KVUTILS_UTILS_TEXT_CODE_PAGE_H_
#define KVUTILS_UTILS_TEXT_CODE_PAGE_H_

namespace kv::internal {

inline constexpr int kNoCodePage = -1;
inline constexpr int kWesternCodePage = 1252;
inline constexpr int kCyrillicCodePage = 1251;
inline constexpr int kJapaneseCodePage = 932;

// What SetCodePage stored last; kNoCodePage before that.
extern int g_currentCodePage;
inline int CurrentCodePage() { return g_currentCodePage; }

// Sets the code page of the user-interface language, also as the multi-byte code page of the C
// run-time library.
void SetCodePageOfLanguage();

// Does so when none is set.
inline void EnsureCodePage() {
  if (CurrentCodePage() == kNoCodePage) SetCodePageOfLanguage();
}

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_TEXT_CODE_PAGE_H_
