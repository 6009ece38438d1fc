#include "examples/tour/format_text.h"

#include "utils/text/text.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>

namespace tour {
namespace {

bool ContinuesCharacter(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

// The bytes of a character of UTF-8, by its first one; 0 for a byte that begins none.
std::size_t CharacterLength(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead < 0xC2 || lead > 0xF4) return 0;
  if (lead < 0xE0) return 2;
  return lead < 0xF0 ? 3 : 4;
}

// The bytes of the character at the front of `text`, which is not empty; 0 when it is cut or no
// UTF-8.
std::size_t FrontLength(std::string_view text) {
  const std::size_t length = CharacterLength(static_cast<unsigned char>(text[0]));
  if (length == 0 || length > text.size()) return 0;
  const std::string_view others = text.substr(1, length - 1);
  return std::all_of(others.begin(), others.end(), ContinuesCharacter) ? length : 0;
}

// Control characters: U+0000 to U+001F, U+007F to U+009F.
bool IsControl(std::string_view character) {
  const auto lead = static_cast<unsigned char>(character[0]);
  if (character.size() == 1) return lead < 0x20 || lead == 0x7F;
  return lead == 0xC2 && static_cast<unsigned char>(character[1]) < 0xA0;
}

}  // namespace

std::string FormatText(const char* format, ...) {
  char text[512] = "";
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  return text;
}

std::string Padded(std::string text, std::size_t width) {
  const auto continuations = std::count_if(text.begin(), text.end(), ContinuesCharacter);
  const std::size_t length = text.size() - static_cast<std::size_t>(continuations);
  return text.append(length < width ? width - length : 0, ' ');
}

std::string Utf8Text(const std::wstring& text) {
  const int units = static_cast<int>(text.size());
  int length = 0;
  utf16_to_utf8(nullptr, length, text.data(), units);
  std::string utf8(static_cast<std::size_t>(length), '\0');
  utf16_to_utf8(utf8.data(), length, text.data(), units);
  return utf8;
}

std::string Quoted(std::string_view text) {
  constexpr int kMostCharacters = 40;
  std::string quoted = "\"";
  for (int count = 0; !text.empty(); ++count) {
    if (count == kMostCharacters) {
      quoted += "...";
      break;
    }
    const std::size_t length = FrontLength(text);
    const std::string_view character = text.substr(0, std::max<std::size_t>(length, 1));
    quoted += length == 0 || IsControl(character) ? "?" : character;
    text.remove_prefix(character.size());
  }
  return quoted + '"';
}

}  // namespace tour
