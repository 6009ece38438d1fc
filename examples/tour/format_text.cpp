#include "examples/tour/format_text.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>

namespace tour {

std::string FormatText(const char* format, ...) {
  char text[512] = "";
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  return text;
}

std::string Padded(std::string text, std::size_t width) {
  const auto continuesCharacter = [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
  };
  const auto continuations = std::count_if(text.begin(), text.end(), continuesCharacter);
  const std::size_t length = text.size() - static_cast<std::size_t>(continuations);
  return text.append(length < width ? width - length : 0, ' ');
}

}  // namespace tour
