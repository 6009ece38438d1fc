// The current code page from the start of a process on: each case needs a process of its own.
#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "utils/platform/platform.h"
#include "utils/text/text.h"

// Behind everything else: its macros take names that the standard library uses.
#include <mbctype.h>

namespace {

constexpr const char* kSmallIe = "\xD0\xB5";         // U+0435
constexpr const char* kSmallIo = "\xD1\x91";         // U+0451
constexpr const char* kFullWidthA = "\xEF\xBD\x81";  // in code page 932, but not in 1252 or 1251

// The current code page, told by what it makes of two characters; -1 when it is unset.
int CurrentCodePage() {
  char text[8] = "\xD0\x96";
  if (!Utf82Ascii(text, sizeof text)) return -1;
  if (std::string(text) == "\xC6") return 1251;
  std::string wide = kFullWidthA;
  wide.resize(8);
  Utf82Ascii(wide.data(), 8);
  return wide.c_str() == std::string("\x82\x81") ? 932 : 1252;
}

TEST(SetCodePage, FollowsTheLanguageExactly) {
  const struct {
    const char* language;
    int codePage;
  } rows[] = {
      {"ru", 1251},  {"ja", 932},  {"en", 1252},  {"de", 1252},    {"fr", 1252},    {"es", 1252},
      {"it", 1252},  {"nl", 1252}, {"pt", 1252},  {"", 1252},      {"RU", 1252},    {"Ja", 1252},
      {"rus", 1252}, {"r", 1252},  {"ru ", 1252}, {"ja-JP", 1252}, {"en-US", 1252}, {nullptr, 1252},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.language));
    EXPECT_EQ(SetCodePage("ja"), 932);
    EXPECT_EQ(SetCodePage(row.language), row.codePage);
    EXPECT_EQ(CurrentCodePage(), row.codePage);
  }
}

TEST(SetCodePage, LeavesTheRunTimeLibraryAlone) {
  const int before = ::_getmbcp();
  ASSERT_NE(before, 932);
  SetCodePage("ja");
  EXPECT_EQ(::_getmbcp(), before);
}

TEST(CodePage, IsUnsetAtTheStart) { EXPECT_EQ(CurrentCodePage(), -1); }

// The functions that set the code page of the interface language when they are first used.
struct FirstUse {
  const char* name;
  void (*call)();
};

void PrintTo(const FirstUse& use, std::ostream* out) { *out << use.name; }

class FirstComparison : public testing::TestWithParam<FirstUse> {};

TEST_P(FirstComparison, SetsTheCodePageOfTheInterfaceLanguage) {
  SetSystemLocale("ru");
  GetParam().call();
  EXPECT_EQ(CurrentCodePage(), 1251);
  EXPECT_EQ(::_getmbcp(), 1251);
}

TEST_P(FirstComparison, KeepsACodePageThatIsSet) {
  const int before = ::_getmbcp();
  ASSERT_NE(before, 1251);
  SetSystemLocale("ru");
  SetCodePage("ja");
  GetParam().call();
  EXPECT_EQ(CurrentCodePage(), 932);
  EXPECT_EQ(::_getmbcp(), before);
}

INSTANTIATE_TEST_SUITE_P(
    CodePage, FirstComparison,
    testing::Values(FirstUse{"CompareStrings", [] { CompareStrings("a", "b", false); }},
                    FirstUse{"CompareStringsWestern", [] { CompareStringsWestern("a", "b"); }},
                    FirstUse{"CompareStringsRussian", [] { CompareStringsRussian("a", "b"); }},
                    FirstUse{"CompareStringsRange", [] { CompareStringsRange("a", "b", 1); }},
                    FirstUse{"CompareNoCaseStrings", [] { CompareNoCaseStrings("a", "b"); }}),
    [](const auto& use) { return std::string(use.param.name); });

TEST(CodePage, StaysUnsetWhereNoLanguageIsNeeded) {
  SetSystemLocale("ru");
  const int before = ::_getmbcp();
  CompareStringsRange("a", "b", 0);
  CompareStringsForJapan("a", "b");
  CompareStringsRangeExt("a", "b", true, false);
  char text[4] = "a";
  LowerCase(text, 4);
  ConvertToUpperCase(nullptr, "a");
  EXPECT_EQ(CurrentCodePage(), -1);
  EXPECT_EQ(::_getmbcp(), before);
}

TEST(CodePage, UnsetIgnoresDiacritics) {
  SetSystemLocale("ru");
  EXPECT_EQ(CompareStringsRangeExt(kSmallIe, kSmallIo, true, false), 0);
  EXPECT_EQ(CompareStrings(kSmallIe, kSmallIo, false), -1);
  EXPECT_EQ(CompareStringsRangeExt(kSmallIe, kSmallIo, true, false), 1);
}

// The run-time library keeps the code page of the first comparison.
TEST(CodePage, IsChangedLaterInThisLibraryAlone) {
  SetSystemLocale("ru");
  CompareStrings("a", "b", false);
  EXPECT_EQ(SetCodePage("ja"), 932);
  CompareStrings("a", "b", false);
  EXPECT_EQ(CurrentCodePage(), 932);
  EXPECT_EQ(::_getmbcp(), 1251);
}

TEST(CodePage, IsNotSetAgainByALaterComparison) {
  SetSystemLocale("ru");
  CompareStrings("a", "b", false);
  SetSystemLocale("ja");
  CompareStrings("a", "b", false);
  EXPECT_EQ(CurrentCodePage(), 1251);
}

}  // namespace
