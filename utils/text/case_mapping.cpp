#include "utils/text/text.h"

#include "utils/files/files.h"
#include "utils/internal/icu_setup.h"
#include "utils/internal/int_size.h"
#include "utils/text/system_text.h"

#include <unicode/bytestream.h>
#include <unicode/unistr.h>

#include <cstdint>
#include <cstring>
#include <cwchar>

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

void LowerCase(char* text, int size) { MapCase(text, size, ::_wcslwr); }

void UpperCase(char* text, int size) { MapCase(text, size, ::_wcsupr); }

int ConvertToUpperCase(char* out, const char* in) {
  SetUpIcu();
  const std::size_t length = in == nullptr ? 0 : ::strnlen(in, INT32_MAX);
  const icu::StringPiece text(in, static_cast<std::int32_t>(length));
  icu::UnicodeString wide = icu::UnicodeString::fromUTF8(text);
  wide.toUpper();
  std::string upper;
  icu::StringByteSink<std::string> sink(&upper, wide.length());
  wide.toUTF8(sink);
  if (out != nullptr) std::memcpy(out, upper.c_str(), upper.size() + 1);
  return IntSize(upper.size());
}
