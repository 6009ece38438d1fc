// The backslash escapes beside a reader of one character after the other.
#include <string>
#include <string_view>

#include "tests/fuzz/support/guarded_copy.h"
#include "tests/fuzz/support/target.h"
#include "utils/text/text.h"

namespace kv::fuzz {
namespace {

char Escaped(char c) {
  constexpr std::string_view kLetters = "nrst";
  constexpr std::string_view kMeanings = "\n\r \t";
  const std::size_t place = kLetters.find(c);
  return place == std::string_view::npos ? c : kMeanings[place];
}

int HexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return 0;
}

std::string Parsed(const std::string& text) {
  const auto at = [&](std::size_t i) { return i < text.size() ? text[i] : '\0'; };
  std::string parsed;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\') {
      parsed += text[i];
      continue;
    }
    ++i;
    if (at(i) != 'x' && at(i) != 'X') {
      parsed += Escaped(at(i));
      continue;
    }
    parsed += static_cast<char>(HexValue(at(i + 1)) * 16 + HexValue(at(i + 2)));
    i += 2;
  }
  return parsed;
}

// Up to the first NUL, without the form with digits.
std::string ParsedSimply(const std::string& text) {
  std::string parsed;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\') {
      parsed += text[i];
    } else if (++i < text.size()) {
      parsed += Escaped(text[i]);
    }
  }
  return parsed;
}

void Check(Input input) {
  const std::string bytes(input.Rest());
  Expect("ParseString", ParseString(bytes), Parsed(bytes));

  const std::string text = bytes.c_str();
  const std::string expected = ParsedSimply(text);
  const GuardedText source(text);
  const GuardedCopy<char> out(std::string(text.size(), '\0'));
  Expect("ParseString2", ParseString2(source.Get(), out.Get()), static_cast<int>(expected.size()));
  Expect("out", out.Units(), expected + std::string(text.size() - expected.size(), '\0'));

  const GuardedText inPlace(text);
  ParseString2(inPlace.Get(), inPlace.Get());
  Expect("in place", inPlace.Units().substr(0, expected.size()), expected);
}

const Registration kTarget({.name = "escapes",
                            .check = Check,
                            .seeds = {R"(\x41\s\q "a" \\ \n\r\t)", R"(C:\catalogs\stars\xFF\)",
                                      R"(\X4)"},
                            .words = {"\\", "\\x", "\\X4", "\\\""}});

}  // namespace
}  // namespace kv::fuzz
