#include "utils/text/text.h"

#include "utils/internal/characters.h"
#include "utils/text/counted_output.h"

#include <climits>
#include <string>

namespace {

constexpr int kFailed = -1;

bool AreHexDigits(const char* in, int count) {
  for (int i = 0; i < count; ++i) {
    if (!kv::internal::IsHexDigit(in[i])) return false;
  }
  return true;
}

unsigned HexValue(const char* in, int digits) {
  unsigned value = 0;
  for (int i = 0; i < digits; ++i) value = value * 16 + valhex(in[i]);
  return value;
}

// One unit of escaped text: a character or an escape.
struct Unit {
  unsigned value;  // a plain character's is signed, cut to 16 bits
  int size;        // how many characters it takes
  bool isWide;     // a "%u" escape
};

// Reads the unit at `in`, which is not at its end; false for a malformed escape.
bool ReadUnit(const char* in, Unit& unit) {
  if (*in != '%') {
    unit = {static_cast<unsigned>(*in) & 0xFFFF, 1, false};
  } else if (in[1] == 'u' && AreHexDigits(in + 2, 4)) {
    unit = {HexValue(in + 2, 4), 6, true};
  } else if (AreHexDigits(in + 1, 2)) {
    unit = {HexValue(in + 1, 2), 3, false};
  } else {
    return false;
  }
  return true;
}

// Callers rely on the missing terminator, and on one more than the number of bytes when they are
// written.
int UnescapeWide(char* out, const std::wstring& text) {
  const int units = static_cast<int>(text.size());
  int size = 0;
  const int measured = utf16_to_utf8(nullptr, size, text.data(), units);
  if (measured != kv::internal::kTooSmall || size == INT_MAX) return kFailed;
  if (out == nullptr) return size;
  utf16_to_utf8(out, size, text.data(), units);
  return size + 1;
}

}  // namespace

int unescape(char* out, const char* in) {
  if (in == nullptr) return kFailed;
  std::size_t count = 0;
  bool isWide = false;
  Unit unit;
  for (const char* cursor = in; *cursor != '\0'; cursor += unit.size) {
    if (!ReadUnit(cursor, unit)) return kFailed;
    isWide = isWide || unit.isWide;
    ++count;
  }
  if (count > INT_MAX) return kFailed;

  if (isWide) {
    std::wstring text;
    text.reserve(count);
    for (; *in != '\0' && ReadUnit(in, unit); in += unit.size) {
      text.push_back(static_cast<wchar_t>(unit.value));
    }
    return UnescapeWide(out, text);
  }
  const int size = static_cast<int>(count);
  if (out == nullptr) return size;
  for (; *in != '\0' && ReadUnit(in, unit); in += unit.size) *out++ = static_cast<char>(unit.value);
  *out = '\0';
  return size;
}
