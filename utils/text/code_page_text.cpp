#include "utils/text/text.h"

#include "utils/internal/win32.h"
#include "utils/text/code_page.h"
#include "utils/text/system_text.h"

namespace {

using namespace kv::internal;

// Converts the text in buf in place from one code page to the other.
bool Recode(char* buf, int bufSize, unsigned from, unsigned to) {
  const SystemText text(from, buf, SystemText::kWithTerminator);
  return text.IsValid() && NarrowSystemText(to, text.Get(), buf, bufSize);
}

}  // namespace

// Neither of the two in-place conversions sets the current code page: while it is unset, the system
// refuses it.

bool Ascii2Utf8(char* buf, int bufSize, int codePage) {
  if (bufSize == 0) return true;
  if (codePage == kNoCodePage) codePage = CurrentCodePage();
  return Recode(buf, bufSize, static_cast<unsigned>(codePage), kUtf8CodePage);
}

bool Utf82Ascii(char* buf, int bufSize) {
  if (bufSize == 0) return true;
  return Recode(buf, bufSize, kUtf8CodePage, static_cast<unsigned>(CurrentCodePage()));
}

bool Unicode2Ascii(const wchar_t* text, char* out, int outSize) {
  return text != nullptr && out != nullptr && NarrowSystemText(CP_ACP, text, out, outSize);
}
