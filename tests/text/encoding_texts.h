// Random texts for the converters, of all that they meet.
#ifndef KVUTILS_TESTS_TEXT_ENCODING_TEXTS_H_
#define KVUTILS_TESTS_TEXT_ENCODING_TEXTS_H_

#include <cstddef>
#include <random>
#include <string>
#include <vector>

namespace kv::test {

// A kind of text: so many percent of its characters are one of those listed, the others ASCII.
template <typename Unit>
struct TextKind {
  const char* name;
  unsigned percent;
  std::vector<std::basic_string<Unit>> others;
};

inline const std::vector<TextKind<char>>& Utf8Kinds() {
  static const std::vector<TextKind<char>> kinds = {
      {"ASCII", 0, {""}},
      {"accents", 8, {"\xC3\xA9", "\xC3\xBC", "\xC5\x93", "\xC2\xA0"}},
      {"Cyrillic", 85, {"\xD0\xB0", "\xD0\xBF", "\xD1\x8F", "\xD0\x96"}},
      {"Japanese", 95, {"\xE3\x81\x82", "\xE6\x98\x9F", "\xEF\xBD\xB1"}},
      {"emoji", 30, {"\xF0\x9F\x98\x80", "\xF4\x8F\xBF\xBF", "\xF0\x90\x80\x80"}},
      {"all lengths", 60, {"\xC3\xA9", "\xE3\x81\x82", "\xF0\x9F\x98\x80", "\xDF\xBF"}},
      {"overlong",
       20,
       {"\xC0\x80", "\xC1\xBF", "\xE0\x80\x80", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF"}},
      {"surrogates", 20, {"\xED\xA0\x80", "\xED\xBF\xBF", "\xED\xA0\xBD\xED\xB8\x80"}},
      {"leads", 2, {"\xC3", "\xE3", "\xF0", "\xE3\x81", "\xF0\x9F", "\xF0\x9F\x98"}},
      {"strays", 2, {"\x80", "\xBF", "\xA9\xA9", "\xFF", "\xF8", "\xFE\x80"}},
      {"beyond Unicode", 2, {"\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xF7\xBF\xBF\xBF"}},
      {"faults in Cyrillic",
       90,
       {"\xD0\xB0", "\xD0\xB1", "\xD0\xB2", "\xD0\xB3", "\xD0\xB4", "\xD0\xB5", "\xD0\xB6",
        "\xD0\xB7", "\xD0", "\xE3\x81"}},
      {"faults in Japanese",
       90,
       {"\xE3\x81\x82", "\xE3\x81\x83", "\xE3\x81\x84", "\xE3\x81\x85", "\xE3\x81\x86",
        "\xE3\x81\x87", "\xE3\x81", "\xE3\xC1\x81"}},
  };
  return kinds;
}

inline const std::vector<TextKind<wchar_t>>& Utf16Kinds() {
  static const std::vector<TextKind<wchar_t>> kinds = {
      {"ASCII", 0, {L""}},
      {"accents", 8, {L"\xE9", L"\xFC", L"\x80", L"\x100"}},
      {"Cyrillic", 85, {L"\x430", L"\x43F", L"\x7FF"}},
      {"Japanese", 95, {L"\x3042", L"\x661F", L"\x800", L"\xFFFF", L"\xE000"}},
      {"emoji", 30, {L"\xD83D\xDE00", L"\xDBFF\xDFFF", L"\xD800\xDC00"}},
      {"pairs of every length",
       50,
       {L"\xD800\xDC7F", L"\xD800\xDC80", L"\xD801\xDFFF", L"\xD802\xDC00"}},
      {"all lengths", 60, {L"\xE9", L"\x3042", L"\xD83D\xDE00"}},
      {"low surrogates", 30, {L"\xDC00", L"\xDFFF"}},
      {"high surrogates", 2, {L"\xD800", L"\xDBFF", L"\xD83D\xD83D\xDE00"}},
      {"low bytes of ASCII", 30, {L"\x141", L"\x8041", L"\xFF41", L"\x8000"}},
  };
  return kinds;
}

inline const std::vector<TextKind<char>>& Isolat1Kinds() {
  static const std::vector<TextKind<char>> kinds = {
      {"ASCII", 0, {""}},
      {"accents", 8, {"\xE9", "\xFC", "\x80", "\xFF"}},
      {"high bytes", 95, {"\xE9", "\xC3", "\x80", "\xFF"}},
      {"UTF-8", 20, {"\xC3\xA9", "\xC2\x80", "\xC3\xBF"}},
      {"UTF-8, hardly ASCII", 95, {"\xC3\xA9", "\xC2\x80", "\xC3\xBF"}},
      {"any byte behind a lead", 20, {"\xC3z", "\xC2\xC3", "\xC3\xC3", "\xC2\x7F"}},
      {"other characters", 2, {"\xE2\x82\xAC", "\xC1\x80", "\xC4\x80", "\x80"}},
  };
  return kinds;
}

template <typename Unit>
class RandomTexts {
 public:
  explicit RandomTexts(unsigned seed = 20240229) : random_(seed) {}

  std::basic_string<Unit> Text(const TextKind<Unit>& kind, std::size_t size) {
    std::basic_string<Unit> text;
    while (text.size() < size) {
      if (Below(100) < kind.percent) {
        text += kind.others[Below(kind.others.size())];
      } else {
        text += static_cast<Unit>(Below(128));
      }
    }
    text.resize(size);  // also within a character
    return text;
  }

  std::basic_string<Unit> AnyUnits(std::size_t size) {
    std::basic_string<Unit> text;
    while (text.size() < size) text += static_cast<Unit>(random_());
    return text;
  }

  std::size_t Below(std::size_t limit) { return random_() % limit; }

 private:
  std::mt19937 random_;
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_TEXT_ENCODING_TEXTS_H_
