#include "utils/text/text.h"

#include "utils/internal/int_size.h"

namespace {

// What a backslash and `c` stand for, but for the \x form.
char Unescaped(char c) {
  switch (c) {
    case 'n':
      return '\n';
    case 'r':
      return '\r';
    case 's':
      return ' ';
    case 't':
      return '\t';
    default:
      return c;
  }
}

}  // namespace

std::string ParseString(std::string text) {
  // Characters behind the end read as NUL. Callers rely on a backslash at the end appending one,
  // and a hex digit that is missing counts as 0.
  const auto at = [&text](std::size_t i) { return i < text.size() ? text[i] : '\0'; };

  std::string result;
  result.reserve(text.size());
  std::size_t i = 0;
  while (i < text.size()) {
    const char c = text[i++];
    if (c != '\\') {
      result.push_back(c);
      continue;
    }
    const char escape = at(i++);
    if (escape == 'x' || escape == 'X') {
      result.push_back(static_cast<char>(valhex(at(i)) * 16 + valhex(at(i + 1))));
      i += 2;
    } else {
      result.push_back(Unescaped(escape));
    }
  }
  return result;
}

int ParseString2(char* src, char* dst) {
  if (src == nullptr || dst == nullptr) return 0;
  std::size_t written = 0;
  for (; *src != '\0'; ++src) {
    char c = *src;
    if (c == '\\') {
      if (*++src == '\0') break;
      c = Unescaped(*src);
    }
    dst[written++] = c;
  }
  // Callers rely on the missing terminator: they hand over a zeroed buffer.
  return kv::internal::IntSize(written);
}
