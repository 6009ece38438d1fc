#include "utils/text/text.h"

#include "utils/text/encoding.h"

#include <algorithm>
#include <climits>
#include <cstring>

namespace {

using kv::internal::CountedOutput;

// The units of a UTF-8 text up to its first fault or NUL character.
std::wstring WidenUtf8(const char* text, std::size_t size) {
  constexpr int kShortSize = 264;
  wchar_t buffer[kShortSize];
  CountedOutput<wchar_t> measured(buffer, kShortSize - 1);
  kv::internal::PutUtf16(measured, text, size);
  if (measured.Count() < kShortSize) {
    buffer[measured.Count()] = L'\0';
    return buffer;
  }
  std::wstring wide(measured.Count(), L'\0');
  CountedOutput<wchar_t> output(wide.data(), static_cast<int>(wide.size()));
  kv::internal::PutUtf16(output, text, size);
  // Overlong forms of NUL end the text as NUL itself does.
  wide.resize(std::min(wide.size(), wide.find(L'\0')));
  return wide;
}

// Callers rely on the result ending after as many bytes of the UTF-8 form as the Latin-1 text has.
std::wstring WidenLatin1(const char* text, std::size_t size) {
  std::wstring wide;
  wide.reserve(size);
  for (std::size_t bytes = 0; *text != '\0'; ++text) {
    const auto byte = static_cast<unsigned char>(*text);
    bytes += byte < 0x80 ? 1 : 2;
    if (bytes > size) break;
    wide.push_back(static_cast<wchar_t>(byte));
  }
  return wide;
}

}  // namespace

std::wstring Ascii2Unicode(const char* text, bool isUtf8) {
  if (text == nullptr) return {};
  const std::size_t size = std::min<std::size_t>(std::strlen(text), INT_MAX);
  return isUtf8 ? WidenUtf8(text, size) : WidenLatin1(text, size);
}
