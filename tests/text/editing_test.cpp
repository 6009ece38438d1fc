#include <gtest/gtest.h>

#include <cctype>
#include <string>

#include "tests/support/guarded_buffer.h"
#include "tests/text/scoped_locale.h"
#include "utils/text/text.h"

namespace {

using kv::test::GuardedBuffer;

struct Edit {
  std::string before;
  std::string after;
};

// Runs `edit` over each row in a buffer that has no byte to spare.
template <std::size_t size, typename Function>
void CheckEdits(const Edit (&rows)[size], Function edit) {
  for (const Edit& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.before));
    GuardedBuffer<char> buffer(row.before.size() + 1, row.before);
    edit(buffer.Get());
    EXPECT_EQ(buffer.Text(), row.after);
    EXPECT_EQ(buffer.Get()[row.before.size() + 1], GuardedBuffer<char>::kGuard);
  }
}

const Edit kBorderSpaceRows[] = {
    {"", ""},       {"a", "a"},         {"\t a b \r\n", "a b"},
    {"   ", ""},    {" \t\r\n", ""},    {"a b", "a b"},
    {" a", "a"},    {"a ", "a"},        {"\va\f", "\va\f"},
    {" \v ", "\v"}, {" \xE9 ", "\xE9"}, {"\xA0x\xA0", "\xA0x\xA0"},
};

TEST(DeleteBorderSpace, CutsBothEndsInPlace) {
  CheckEdits(kBorderSpaceRows, [](char* s) { DeleteBorderSpace(s); });
  DeleteBorderSpace(nullptr);
}

TEST(DeleteBorderSpaces, CutsBothEndsOfAString) {
  for (const Edit& row : kBorderSpaceRows) {
    SCOPED_TRACE(testing::PrintToString(row.before));
    std::string s = row.before;
    DeleteBorderSpaces(s);
    EXPECT_EQ(s, row.after);
  }
}

TEST(DeleteBorderSpaces, KeepsNulCharacters) {
  std::string s(" \0a\0 ", 5);
  DeleteBorderSpaces(s);
  EXPECT_EQ(s, std::string("\0a\0", 3));
}

TEST(IsEmptyString, KnowsTheFourBorderSpaceCharactersOnly) {
  const struct {
    const char* text;
    bool isEmpty;
  } rows[] = {
      {"", true},        {" ", true},   {"\t", true},  {"\r", true},   {"\n", true},
      {" \t\r\n", true}, {"\v", false}, {"\f", false}, {" a ", false}, {"\xA0", false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.text));
    EXPECT_EQ(IsEmptyString(row.text), row.isEmpty);
  }
  EXPECT_FALSE(IsEmptyString(std::string(1, '\0')));
}

TEST(ClearStringRight, CutsTrailingWhiteSpaceOfAnyKind) {
  const Edit rows[] = {
      {"", ""},           {"a", "a"},          {" a b \t\n\r\v\f", " a b"}, {" \v\f\r\n\t", ""},
      {"a\xA0", "a\xA0"}, {"a\xFF ", "a\xFF"},
  };
  CheckEdits(rows, [](char* s) { ClearStringRight(s); });
  ClearStringRight(nullptr);
}

const Edit kWhiteSpaceRows[] = {
    {"", ""},
    {"ab", "ab"},
    {" a\tb\nc\rd\ve\ff ", "abcdef"},
    {" \t\n\r\v\f", ""},
    {"\xA0\x85\xFF", "\xA0\x85\xFF"},
};

TEST(ClearString, RemovesWhiteSpaceEverywhereInPlace) {
  CheckEdits(kWhiteSpaceRows, [](char* s) { ClearString(s); });
  ClearString(static_cast<char*>(nullptr));
}

TEST(ClearString, RemovesWhiteSpaceEverywhereInAString) {
  for (const Edit& row : kWhiteSpaceRows) {
    SCOPED_TRACE(testing::PrintToString(row.before));
    std::string s = row.before;
    ClearString(&s);
    EXPECT_EQ(s, row.after);
  }
  ClearString(static_cast<std::string*>(nullptr));
}

TEST(ClearString, RemovesTheCharactersOfASet) {
  const Edit rows[] = {
      {"", ""}, {"(1) Ceres", "1 Ceres"}, {"()()", ""}, {"plain", "plain"}, {"a)b(", "ab"},
  };
  CheckEdits(rows, [](char* s) { ClearString(s, "()"); });
  const Edit highBytes[] = {{"a\xE9\xE8z", "a\xE8z"}};
  CheckEdits(highBytes, [](char* s) { ClearString(s, "\xE9"); });
}

TEST(ClearString, RemovesNothingForAnEmptyOrNullSet) {
  const Edit rows[] = {{" a ", " a "}};
  CheckEdits(rows, [](char* s) { ClearString(s, ""); });
  CheckEdits(rows, [](char* s) { ClearString(s, nullptr); });
  ClearString(nullptr, "x");
}

TEST(ClearString, KeepsUtf8UnderALocaleWithOtherWhiteSpace) {
  const kv::test::ScopedLocale locale("German");
  ASSERT_NE(isspace(0xA0), 0);
  const Edit rows[] = {{"\xC3\xA0 ", "\xC3\xA0"}};
  CheckEdits(rows, [](char* s) { ClearString(s); });
  CheckEdits(rows, [](char* s) { ClearStringRight(s); });
  std::string s = "\xC3\xA0 ";
  ClearString(&s);
  EXPECT_EQ(s, "\xC3\xA0");
}

TEST(UpperAndLowerString, KeepUtf8UnderALocaleWithOtherLetters) {
  const kv::test::ScopedLocale locale("German");
  const volatile int small = 0xE9;  // the compiler would answer for a constant
  ASSERT_EQ(toupper(small), 0xC9);
  const Edit rows[] = {{"\xE9\xC9", "\xE9\xC9"}};
  CheckEdits(rows, [](char* s) { UpperString(s); });
  CheckEdits(rows, [](char* s) { LowerString(s); });
}

TEST(ReplaceChar, ReplacesEach) {
  const Edit rows[] = {{"", ""}, {"a/b//c", "a\\b\\\\c"}, {"/", "\\"}, {"abc", "abc"}};
  CheckEdits(rows, [](char* s) { ReplaceChar(s, '/', '\\'); });
  const Edit highBytes[] = {{"a\xFF\x7F", "ab\x7F"}};
  CheckEdits(highBytes, [](char* s) { ReplaceChar(s, '\xFF', 'b'); });
  const Edit unchanged[] = {{"abc", "abc"}};
  CheckEdits(unchanged, [](char* s) { ReplaceChar(s, '\0', 'x'); });
  ReplaceChar(nullptr, 'a', 'b');
}

TEST(ReplaceChar, ReplacesEachByNul) {
  char s[] = "a,b,,c";
  ReplaceChar(s, ',', '\0');
  EXPECT_EQ(std::string(s, sizeof s), std::string("a\0b\0\0c\0", 7));
}

TEST(ReplaceChars, ReplacesEachOfASet) {
  const Edit rows[] = {
      {"", ""}, {"media:a/b\\c", "media\\a\\b\\c"}, {":/\\", "\\\\\\"}, {"abc", "abc"}};
  CheckEdits(rows, [](char* s) { ReplaceChars(s, ":/\\", '\\'); });
  const Edit unchanged[] = {{"abc", "abc"}};
  CheckEdits(unchanged, [](char* s) { ReplaceChars(s, "", 'x'); });
  CheckEdits(unchanged, [](char* s) { ReplaceChars(s, nullptr, 'x'); });
  ReplaceChars(nullptr, "a", 'b');
}

TEST(UpperString, MapsAsciiAndKeepsOtherBytes) {
  const Edit rows[] = {
      {"", ""}, {"aZ09_{`", "AZ09_{`"}, {"\xC3\xA9z\xE9\xFF\x80", "\xC3\xA9Z\xE9\xFF\x80"}};
  CheckEdits(rows, [](char* s) { UpperString(s); });
  UpperString(nullptr);
}

TEST(LowerString, MapsAsciiAndKeepsOtherBytes) {
  const Edit rows[] = {
      {"", ""}, {"aZ09_[@", "az09_[@"}, {"\xC3\x89Z\xC9\xFF\x80", "\xC3\x89z\xC9\xFF\x80"}};
  CheckEdits(rows, [](char* s) { LowerString(s); });
  LowerString(nullptr);
}

}  // namespace
