#include "utils/text/text.h"

#include <array>
#include <climits>
#include <cstdint>
#include <string_view>

namespace {

// The characters that all base-64 alphabets share, in order of their values 0 to 61.
constexpr std::string_view kCommonCharacters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
static_assert(kCommonCharacters.size() == 62);

constexpr signed char kNoValue = -1;

// The values of the common characters, by byte.
constexpr std::array<signed char, 256> MakeCommonValues() {
  std::array<signed char, 256> values{};
  for (signed char& value : values) value = kNoValue;
  for (std::size_t i = 0; i < kCommonCharacters.size(); ++i) {
    values[static_cast<unsigned char>(kCommonCharacters[i])] = static_cast<signed char>(i);
  }
  return values;
}
constexpr std::array<signed char, 256> kCommonValues = MakeCommonValues();

// What sets one alphabet apart.
struct Tail {
  // Reads a caller's tail of three characters; what stands behind a NUL in it counts as NUL.
  explicit Tail(const char* text) {
    if (text == nullptr) return;
    char62 = text[0];
    char63 = char62 == '\0' ? '\0' : text[1];
    padding = char63 == '\0' ? '\0' : text[2];
  }

  [[nodiscard]] char CharacterOf(unsigned value) const {
    if (value == 62) return char62;
    if (value == 63) return char63;
    return kCommonCharacters[value];
  }
  [[nodiscard]] int ValueOf(char c) const {
    const signed char common = kCommonValues[static_cast<unsigned char>(c)];
    if (common != kNoValue) return common;
    if (c == char62) return 62;
    if (c == char63) return 63;
    return kNoValue;
  }

  char char62 = '-';
  char char63 = '_';
  char padding = '\0';
};

std::int64_t EncodedSize(std::int64_t length, bool isPadded) {
  const std::int64_t rest = length % 3;
  std::int64_t size = length / 3 * 4;
  if (rest != 0) size += isPadded ? 4 : rest + 1;
  return size;
}

}  // namespace

int btos(char* out, const unsigned char* data, int length, const char* alphabetTail) {
  const Tail tail(alphabetTail);
  if (data == nullptr || length < 0) length = 0;
  const std::int64_t size = EncodedSize(length, tail.padding != '\0');
  if (size > INT_MAX) return -1;
  if (out == nullptr) return static_cast<int>(size);

  for (int i = 0; i < length; i += 3) {
    const int rest = length - i;
    const unsigned second = rest > 1 ? data[i + 1] : 0U;
    const unsigned third = rest > 2 ? data[i + 2] : 0U;
    const unsigned bits = (static_cast<unsigned>(data[i]) << 16) | (second << 8) | third;
    *out++ = tail.CharacterOf(bits >> 18);
    *out++ = tail.CharacterOf((bits >> 12) & 0x3F);
    if (rest > 1) *out++ = tail.CharacterOf((bits >> 6) & 0x3F);
    if (rest > 2) *out++ = tail.CharacterOf(bits & 0x3F);
    if (tail.padding != '\0') {
      for (int missing = rest; missing < 3; ++missing) *out++ = tail.padding;
    }
  }
  return static_cast<int>(size);
}

int stob(unsigned char* out, const char* text, const char* alphabetTail, int maxChars) {
  if (text == nullptr) return 0;
  const Tail tail(alphabetTail);
  unsigned bits = 0;  // the characters so far; the older ones move out at the top
  int count = 0;
  for (int i = 0; i < maxChars && text[i] != '\0'; ++i) {
    const int value = tail.ValueOf(text[i]);
    if (value == kNoValue) return text[i] == tail.padding ? count : -1;
    bits = (bits << 6) | static_cast<unsigned>(value);
    const int place = i % 4;
    if (place == 0) continue;
    if (out != nullptr) out[count] = static_cast<unsigned char>(bits >> (6 - 2 * place));
    ++count;
  }
  return count;
}
