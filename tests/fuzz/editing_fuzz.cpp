// The editing of texts in place beside loops over characters.
#include <cctype>
#include <functional>
#include <string>
#include <string_view>

#include "tests/fuzz/support/guarded_copy.h"
#include "tests/fuzz/support/target.h"
#include "utils/text/text.h"

namespace kv::fuzz {
namespace {

constexpr std::string_view kBorder = " \t\n\r";
constexpr std::string_view kSpace = " \t\n\v\f\r";

std::string Trimmed(const std::string& text) {
  const std::size_t first = text.find_first_not_of(kBorder);
  if (first == std::string::npos) return "";
  return text.substr(first, text.find_last_not_of(kBorder) - first + 1);
}

std::string Without(std::string_view text, std::string_view set) {
  std::string rest;
  for (const char c : text) {
    if (set.find(c) == std::string_view::npos) rest += c;
  }
  return rest;
}

std::string Each(std::string text, const std::function<char(char)>& change) {
  for (char& c : text) c = change(c);
  return text;
}

std::string Edited(const std::string& text, const std::function<void(char*)>& edit) {
  const GuardedText guarded(text);
  edit(guarded.Get());
  return guarded.Text();
}

void CheckTexts(const std::string& text, const std::string& set, char from, char to) {
  Expect("trimmed", Edited(text, [](char* s) { DeleteBorderSpace(s); }), Trimmed(text));
  Expect("cut", Edited(text, ClearStringRight), text.substr(0, text.find_last_not_of(kSpace) + 1));
  Expect("without space", Edited(text, [](char* s) { ClearString(s); }), Without(text, kSpace));
  const GuardedText guardedSet(set);
  Expect("without a set", Edited(text, [&](char* s) { ClearString(s, guardedSet.Get()); }),
         Without(text, set));
  const auto end = [](std::string s) { return std::string(s.c_str()); };
  Expect("one replaced", Edited(text, [&](char* s) { ReplaceChar(s, from, to); }),
         end(Each(text, [&](char c) { return c == from ? to : c; })));
  Expect("a set replaced", Edited(text, [&](char* s) { ReplaceChars(s, guardedSet.Get(), to); }),
         end(Each(text, [&](char c) { return set.find(c) == std::string::npos ? c : to; })));
  Expect("upper case", Edited(text, UpperString),
         Each(text, [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }));
  Expect("lower case", Edited(text, LowerString),
         Each(text, [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }));
}

void CheckStrings(const std::string& text) {
  std::string trimmed = text;
  DeleteBorderSpaces(trimmed);
  Expect("string trimmed", trimmed, Trimmed(text));
  Expect("empty", IsEmptyString(text), Trimmed(text).empty());
  std::string without = text;
  ClearString(&without);
  Expect("string without space", without, Without(text, kSpace));
}

void Check(Input input) {
  const char from = input.Take<char>();
  const char to = input.Take<char>();
  const std::string set = input.Text();
  const std::string text(input.Rest());
  CheckTexts(text.c_str(), set, from == '\0' ? 'a' : from, to);
  CheckStrings(text);
}

const Registration kTarget({.name = "editing",
                            .check = Check,
                            .seeds = {std::string("()\0\t (1) Ceres \r\n-_", 18),
                                      std::string(":/\\\0catalogs:Planets&Moons:a.bin\\:", 34),
                                      std::string(" \0 \v\f \xC2\xA0 \xE9  ", 12)},
                            .words = {"\v", "\f"}});

}  // namespace
}  // namespace kv::fuzz
