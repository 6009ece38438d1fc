// The comparisons of names beside the system's answer to the same question.
#include <windows.h>

#include <algorithm>
#include <string>

#include "tests/fuzz/support/guarded_copy.h"
#include "tests/fuzz/support/target.h"
#include "utils/text/text.h"

namespace kv::fuzz {
namespace {

constexpr unsigned kIgnoreCase = 0x10;
constexpr unsigned kIgnoreDiacritics = 0x20;
constexpr unsigned kStringSort = 0x1000;

std::wstring Wide(const char* utf8, int size) {
  std::wstring wide(static_cast<std::size_t>(size), L'\0');
  wide.resize(static_cast<std::size_t>(
      size == 0 ? 0 : ::MultiByteToWideChar(CP_UTF8, 0, utf8, size, wide.data(), size)));
  return wide;
}

// A text with its terminator, upon which the system's view of its end depends.
std::wstring WideText(const std::string& utf8) {
  return Wide(utf8.c_str(), static_cast<int>(utf8.size()) + 1);
}

int AskSystem(const std::wstring& a, const std::wstring& b, unsigned flags) {
  const int result =
      ::CompareStringEx(LOCALE_NAME_INVARIANT, flags, a.c_str(), static_cast<int>(a.size()),
                        b.c_str(), static_cast<int>(b.size()), nullptr, nullptr, 0);
  return result == 0 ? -3 : result - CSTR_EQUAL;
}

// With the terminators, as whole texts are compared.
int AskSystemOfTexts(const std::string& a, const std::string& b, unsigned flags) {
  return AskSystem(WideText(a), WideText(b), flags);
}

std::string WithoutParentheses(std::string name) {
  std::erase_if(name, [](char c) { return c == '(' || c == ')'; });
  return name;
}

int Range(const std::string& a, const std::string& b, int maxBytes, unsigned flags) {
  if (maxBytes <= 0) return 0;
  const int sizeOfA = std::min(maxBytes, static_cast<int>(a.size()));
  const int sizeOfB = std::min(maxBytes, static_cast<int>(b.size()));
  const int result = AskSystem(Wide(a.data(), sizeOfA), Wide(b.data(), sizeOfB), flags);
  if (result != 0) return result;
  return (sizeOfA > sizeOfB ? 1 : 0) - (sizeOfA < sizeOfB ? 1 : 0);
}

int RangeExt(const std::string& a, const std::string& b, bool useFirstLength, unsigned flags) {
  std::wstring wideA = WideText(a);
  std::wstring wideB = WideText(b);
  wideA.pop_back();
  wideB.pop_back();
  const std::size_t units = useFirstLength ? wideA.size() : wideB.size();
  const int result = AskSystem(wideA.substr(0, units), wideB.substr(0, units), flags);
  if (result == 0 || result == -3) return result;
  return (wideA.size() > wideB.size()) == (result > 0) ? 1 : -1;
}

void CompareAll(const std::string& textOfA, const std::string& textOfB, bool isRussian,
                bool stringSort, int maxBytes) {
  const GuardedText guardedA(textOfA);
  const GuardedText guardedB(textOfB);
  const char* const a = guardedA.Get();
  const char* const b = guardedB.Get();
  SetCodePage(isRussian ? "ru" : "en");
  const unsigned flags = isRussian ? kIgnoreCase : kIgnoreCase | kIgnoreDiacritics;
  const unsigned sortFlags = stringSort ? flags | kStringSort : flags;
  const int plain = AskSystemOfTexts(textOfA, textOfB, flags);
  Expect("names", CompareStrings(a, b, stringSort), AskSystemOfTexts(textOfA, textOfB, sortFlags));
  Expect("western names", CompareStringsWestern(a, b), plain);
  Expect("russian names", CompareStringsRussian(a, b), plain);
  Expect("no case", CompareNoCaseStrings(a, b), AskSystemOfTexts(textOfA, textOfB, kIgnoreCase));
  Expect("asteroids", CompareAsterNameWithNumber(a, b),
         AskSystemOfTexts(WithoutParentheses(textOfA), WithoutParentheses(textOfB), flags));
  Expect("range", CompareStringsRange(a, b, maxBytes), Range(textOfA, textOfB, maxBytes, flags));
  Expect("range of a", CompareStringsRangeExt(a, b, true, stringSort),
         RangeExt(textOfA, textOfB, true, sortFlags));
  Expect("range of b", CompareStringsRangeExt(a, b, false, stringSort),
         RangeExt(textOfA, textOfB, false, sortFlags));
}

void Check(Input input) {
  const bool isRussian = input.Flag();
  const bool stringSort = input.Flag();
  const int maxBytes = input.Between(-1, 60);
  const std::string a = input.Text();
  const std::string b = input.Text();
  CompareAll(a, b, isRussian, stringSort, maxBytes);
  CompareAll(b, a, isRussian, stringSort, maxBytes);
}

const Registration kTarget(
    {.name = "names",
     .check = Check,
     .seeds = {std::string("Alpha Centauri\0alpha centauri\0\5\0\0", 33),
               std::string("Caf\xC3\xA9\0cafe\0\7\1\0", 14),
               std::string("(2) Pallas\0 2 Pallas\0\x20\0\0", 24),
               std::string("\xD0\x95\xD0\xBB\xD0\xB5\xD0\xBD\xD0\xB0\0\xD0\x81\xD0\xBB\0\4\0\1",
                           19),
               std::string("\xE3\x82\xAB\xE3\x82\xBF\0\xE5\xA4\xA9\0\x10\0\0", 13),
               std::string("co-op\0coop\0\x10\1\0", 14)},
     .words = {"-", "'", "\xCC\x81", "\xC2\xAD", "\xE2\x80\x8D", "\xC3\x86", "ae", "\xC3\x9F", "ss",
               "\xEF\xBF\xBD", "\xD0\x81", "\xD1\x91"},
     .maxSize = 200});

}  // namespace
}  // namespace kv::fuzz
