#include "utils/text/code_page.h"

#include "utils/platform/platform.h"
#include "utils/text/text.h"

#include <string_view>

// Behind everything else: its macros take names that the standard library uses.
#include <mbctype.h>

namespace {

using namespace kv::internal;

struct LanguageCodePage {
  std::string_view language;
  int codePage;
};

constexpr LanguageCodePage kLanguageCodePages[] = {
    {"en", kWesternCodePage},  {"de", kWesternCodePage}, {"fr", kWesternCodePage},
    {"ru", kCyrillicCodePage}, {"es", kWesternCodePage}, {"it", kWesternCodePage},
    {"ja", kJapaneseCodePage}, {"nl", kWesternCodePage},
};

int CodePageOf(std::string_view language) {
  for (const LanguageCodePage& row : kLanguageCodePages) {
    if (row.language == language) return row.codePage;
  }
  return kWesternCodePage;
}

}  // namespace

int kv::internal::g_currentCodePage = kNoCodePage;

void kv::internal::SetCodePageOfLanguage() { ::_setmbcp(SetCodePage(::GetSystemLocale())); }

int SetCodePage(const char* language) {
  g_currentCodePage = CodePageOf(language == nullptr ? "" : language);
  return g_currentCodePage;
}
