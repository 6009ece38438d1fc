// Greek letters and diacritics beside their tables.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "tests/fuzz/support/guarded_copy.h"
#include "tests/fuzz/support/target.h"
#include "tests/reference/encoding.h"
#include "utils/text/text.h"

namespace kv::fuzz {
namespace {

constexpr const char* kLetters[] = {"alf", "bet", "gam", "del", "eps", "zet", "eta", "the", "iot",
                                    "kap", "lam", "mu",  "nu",  "xi",  "omi", "pi",  "rho", "sig",
                                    "tau", "ups", "phi", "chi", "psi", "ome", ""};

// Null for a number that stands for nothing.
const char* Letter(const std::string& text) {
  const int number = std::atoi(text.c_str());
  return number < 0 || number > 24 ? nullptr : kLetters[number];
}

void CheckGreek(const std::string& text) {
  const GuardedText guarded(text);
  const GuardedRoom<char> out(4);
  const char* const letter = Letter(text);
  Expect("whether a letter", Greek2Ascii(out.Get(), guarded.Get()), letter != nullptr);
  std::string expected = letter == nullptr ? "" : letter + std::string(1, '\0');
  expected.resize(4, GuardedRoom<char>::kFill);
  Expect("letter", out.Units(), expected);

  std::string converted;
  std::string rest = text;
  for (std::size_t mark; (mark = rest.find("###")) != std::string::npos;) {
    converted += rest.substr(0, mark);
    if (const char* const inText = Letter(rest.substr(mark + 3))) converted += inText;
    rest = mark + 6 < rest.size() ? rest.substr(mark + 6) : "";
  }
  Expect("converted", ConvertStringWithGreek(guarded.Get()), converted + rest);
}

// Text in wide letters, each of which stands for one of `letters`.
struct Fold {
  std::wstring_view letters;
  wchar_t plain;
};
constexpr Fold kFolds[] = {{L"ËĒĘĚĔĖ", L'E'},     {L"èéêëēęěĕė", L'e'}, {L"ÀÁÂÃÄÅĀĄĂÆ", L'A'},
                           {L"àáâãäåāąăæ", L'a'}, {L"ÌÍÎÏĪĨĬĮİ", L'I'}, {L"ìíîïīĩĭį", L'i'},
                           {L"ÙÚÛÜŪŮŰŬŨŲ", L'U'}, {L"ùúûüūůűŭų", L'u'}, {L"ÒÓÔÕÖØŌŐŎŒ", L'O'},
                           {L"òóôõöøōőŏœ", L'o'}, {L"ÇĆČĈĊ", L'C'},     {L"çćčĉ", L'c'}};

wchar_t Plain(wchar_t unit) {
  for (const Fold& fold : kFolds) {
    if (fold.letters.find(unit) != std::wstring_view::npos) return fold.plain;
  }
  return unit;
}

void CheckWide(const std::string& text, bool isUtf8) {
  const GuardedText guarded(text);
  const std::wstring wide = reference::Ascii2Unicode(guarded.Get(), isUtf8);
  Expect("wide text", Ascii2Unicode(guarded.Get(), isUtf8), wide);
  std::wstring expected;
  for (const wchar_t unit : wide) {
    if (unit == L'ß') expected += L'S';
    expected += unit == L'ß' ? L'S' : Plain(unit);
  }
  const GuardedRoom<wchar_t> out(2 * text.size() + 1);
  FromDiacritic(out.Get(), guarded.Get(), isUtf8);
  Expect("without diacritics", std::wstring(out.Get()), expected);
}

void Check(Input input) {
  const bool isUtf8 = input.Flag();
  const std::string text = input.Text();
  CheckGreek(text);
  CheckWide(text, isUtf8);
}

const Registration kTarget(
    {.name = "greek",
     .check = Check,
     .seeds = {"Alpha ###00 Cen, ###11 Cep ###24x", "23", "-1", "###", "###4294967296###7",
               "\xC3\x89\xC3\xB6\xC3\x9F Caf\xC3\xA9 \xC5\x93\1", "\xC9\xF6\xDF Caf\xE9\2",
               "\xD0\xB0\xE5\xA4\xA9\xF0\x9F\x98\x80\1"},
     .words = {"###", "###0", "24", "\xC3\x9F", "\xC4\x92", "\xC5\xBE"}});

}  // namespace
}  // namespace kv::fuzz
