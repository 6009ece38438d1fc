#include "utils/internal/text_length.h"
#include "utils/text/encoding_units.h"
#include "utils/text/text.h"

#include <algorithm>
#include <climits>
#include <cstddef>

namespace {

using namespace kv::internal;

constexpr std::size_t kShortSize = 264;  // texts of as many bytes need no memory but the result

std::size_t UnitsBeforeNul(const wchar_t* wide, std::size_t size) {
  return static_cast<std::size_t>(std::find(wide, wide + size, L'\0') - wide);
}

// The units of a UTF-8 text up to its first fault or NUL character, which an overlong form can
// spell.
std::wstring WidenUtf8(const char* text, std::size_t size) {
  int room = static_cast<int>(size);
  if (size <= kShortSize) {
    wchar_t buffer[kShortSize];
    const int converted = utf8_to_utf16(buffer, room, text, room);
    const auto units = static_cast<std::size_t>(converted);
    if (units == size) return {buffer, size};  // all ASCII
    if (converted >= 0) return {buffer, UnitsBeforeNul(buffer, units)};
  }
  // Behind the last unit before a fault the zeros stand with which the text begins.
  std::wstring wide(size, L'\0');
  const int converted = utf8_to_utf16(wide.data(), room, text, room);
  if (static_cast<std::size_t>(converted) != size) wide.resize(UnitsBeforeNul(wide.data(), size));
  return wide;
}

// Callers rely on the result ending after as many bytes of the UTF-8 form as the Latin-1 text has.
std::wstring WidenLatin1(const char* text, std::size_t size) {
  char shortUtf8[kShortSize];
  std::string longUtf8(size <= kShortSize ? 0 : size, '\0');
  char* utf8 = size <= kShortSize ? shortUtf8 : longUtf8.data();
  int room = static_cast<int>(size);
  isolat1_to_utf8(utf8, room, text, static_cast<int>(size));
  const bool isCut = size != 0 && IsIsolat1Lead(Unit(utf8[size - 1]));
  return WidenUtf8(utf8, isCut ? size - 1 : size);
}

}  // namespace

std::wstring Ascii2Unicode(const char* text, bool isUtf8) {
  if (text == nullptr) return {};
  const std::size_t size = std::min<std::size_t>(TextLength(text), INT_MAX);
  return isUtf8 ? WidenUtf8(text, size) : WidenLatin1(text, size);
}
