#include <unicode/bytestream.h>
#include <unicode/unistr.h>

#include <cstring>
#include <cwchar>

#include "utils/files/files.h"
#include "utils/internal/win32.h"
#include "utils/text/system_text.h"
#include "utils/text/text.h"

namespace {

using namespace kv::internal;

// Maps text in place with one of the run-time library's case functions.
void MapCase(char* text, int size, wchar_t* (*map)(wchar_t*)) {
  if (text == nullptr) return;
  SystemText wide(kUtf8CodePage, text, SystemText::kWithTerminator);
  if (wide.IsValid()) {
    map(wide.Get());
    if (NarrowSystemText(kUtf8CodePage, wide.Get(), text, size)) return;
  }
  // Both directions report under the one name.
  PrintDebugString("Bad string conversion in UpperCase() with string %s\n", text);
}

}  // namespace

bool IsAlphaDigital(wchar_t c) { return ::IsCharAlphaNumericW(c) != FALSE; }

void LowerCase(char* text, int size) { MapCase(text, size, ::_wcslwr); }

void UpperCase(char* text, int size) { MapCase(text, size, ::_wcsupr); }

int ConvertToUpperCase(char* out, const char* in) {
  icu::UnicodeString wide = icu::UnicodeString::fromUTF8(icu::StringPiece(in));
  wide.toUpper();
  std::string upper;
  icu::StringByteSink<std::string> sink(&upper, wide.length());
  wide.toUTF8(sink);
  if (out != nullptr) std::memcpy(out, upper.c_str(), upper.size() + 1);
  return static_cast<int>(upper.size());
}
