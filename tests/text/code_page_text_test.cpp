// Conversions that depend on the current code page. It is unset at the start of each process.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <iterator>
#include <string>

#include "tests/support/guarded_buffer.h"
#include "utils/text/text.h"

namespace {

using kv::test::GuardedBuffer;

TEST(Ascii2Utf8, ConvertsFromTheGivenCodePage) {
  const struct {
    int codePage;
    const char* text;
    const char* utf8;
  } rows[] = {
      {1252, "", ""},
      {1252, "plain", "plain"},
      {1252, "\xE9t\xE9", "\xC3\xA9t\xC3\xA9"},
      {1252, "\x80", "\xE2\x82\xAC"},
      {1251, "\xC6\xE8", "\xD0\x96\xD0\xB8"},
      {932, "\x82\xA0z", "\xE3\x81\x82z"},
      {65001, "\xC3\xA9", "\xC3\xA9"},
      {65001, "\xF0\x9F\x98\x80", "\xF0\x9F\x98\x80"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.codePage << " " << row.utf8);
    const std::string utf8 = row.utf8;
    const int needed = static_cast<int>(utf8.size()) + 1;
    for (const int bufSize : {needed, needed + 1}) {
      GuardedBuffer<char> buffer(static_cast<std::size_t>(needed), row.text);
      EXPECT_TRUE(Ascii2Utf8(buffer.Get(), bufSize, row.codePage));
      EXPECT_EQ(buffer.Text(), utf8);
      EXPECT_EQ(buffer.Get()[needed], GuardedBuffer<char>::kGuard);
    }
  }
}

TEST(Ascii2Utf8, RefusesWhatDoesNotFit) {
  for (const int bufSize : {5, 4, 1, -1, -100}) {
    SCOPED_TRACE(bufSize);
    GuardedBuffer<char> buffer(4, "\xE9t\xE9");
    EXPECT_FALSE(Ascii2Utf8(buffer.Get(), bufSize, 1252));
    buffer.ExpectHolds({"\xE9t\xE9", 4});
  }
}

TEST(Ascii2Utf8, DoesNothingForASizeOfZero) {
  GuardedBuffer<char> buffer(4, "\xE9t\xE9");
  EXPECT_TRUE(Ascii2Utf8(buffer.Get(), 0, 1252));
  EXPECT_TRUE(Ascii2Utf8(buffer.Get(), 0, -1));
  EXPECT_TRUE(Ascii2Utf8(nullptr, 0, 1252));
  buffer.ExpectHolds({"\xE9t\xE9", 4});
}

TEST(Ascii2Utf8, RefusesUnknownCodePagesAndNull) {
  GuardedBuffer<char> buffer(8, "abc");
  EXPECT_FALSE(Ascii2Utf8(buffer.Get(), 8, 12345));
  EXPECT_FALSE(Ascii2Utf8(buffer.Get(), 8, -2));
  EXPECT_FALSE(Ascii2Utf8(nullptr, 8, 1252));
  buffer.ExpectHolds({"abc", 4});
}

TEST(Ascii2Utf8, DoesNotSetTheCurrentCodePage) {
  GuardedBuffer<char> buffer(8, "abc");
  EXPECT_FALSE(Ascii2Utf8(buffer.Get(), 8, -1));
  EXPECT_FALSE(Ascii2Utf8(buffer.Get(), 8, -1));
  buffer.ExpectHolds({"abc", 4});
  EXPECT_EQ(SetCodePage("ru"), 1251);
  EXPECT_TRUE(Ascii2Utf8(buffer.Get(), 8, -1));
}

TEST(Ascii2Utf8, TakesMinusOneAsTheCurrentCodePage) {
  const struct {
    const char* language;
    const char* text;
    const char* utf8;
  } rows[] = {
      {"de", "\xE9", "\xC3\xA9"},
      {"ru", "\xE9", "\xD0\xB9"},
      {"ja", "\x82\xA0", "\xE3\x81\x82"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.language);
    SetCodePage(row.language);
    GuardedBuffer<char> buffer(8, row.text);
    EXPECT_TRUE(Ascii2Utf8(buffer.Get(), 8, -1));
    EXPECT_EQ(buffer.Text(), row.utf8);
  }
}

// A text in the system's ANSI code page, and a language whose code page is another one.
struct SystemsText {
  unsigned codePage;
  const char* otherLanguage;
  const wchar_t* wide;
  const char* utf8;
  const char* text;
};

// The row of the code page in force; a null text when there is none. The code page is 1252 where
// the tests' own Wine prefix is used.
SystemsText InTheSystemsCodePage() {
  constexpr SystemsText rows[] = {
      {1252, "ru", L"\x00E9t", "\xC3\xA9t", "\xE9t"},
      {1251, "de", L"\x0416t", "\xD0\x96t", "\xC6t"},
      {932, "de", L"\x3042t", "\xE3\x81\x82t", "\x82\xA0t"},
  };
  const auto* row =
      std::find_if(std::begin(rows), std::end(rows),
                   [](const SystemsText& candidate) { return candidate.codePage == ::GetACP(); });
  return row == std::end(rows) ? SystemsText{} : *row;
}

TEST(Ascii2Utf8, TakesZeroAsTheSystemsCodePage) {
  const SystemsText row = InTheSystemsCodePage();
  ASSERT_NE(row.text, nullptr) << "no expectations for code page " << ::GetACP();
  SetCodePage(row.otherLanguage);
  GuardedBuffer<char> buffer(8, row.text);
  EXPECT_TRUE(Ascii2Utf8(buffer.Get(), 8, 0));
  EXPECT_EQ(buffer.Text(), row.utf8);
}

TEST(Ascii2Utf8, ConvertsTextsOfAnyLength) {
  for (const std::size_t length : {254U, 255U, 256U, 257U, 5000U}) {
    SCOPED_TRACE(length);
    GuardedBuffer<char> buffer(2 * length + 1, std::string(length, '\xE9'));
    EXPECT_TRUE(Ascii2Utf8(buffer.Get(), static_cast<int>(2 * length + 1), 1252));
    std::string expected;
    for (std::size_t i = 0; i < length; ++i) expected += "\xC3\xA9";
    EXPECT_EQ(buffer.Text(), expected);
  }
}

TEST(Utf82Ascii, ConvertsToTheCurrentCodePage) {
  const struct {
    const char* language;
    const char* utf8;
    const char* text;
  } rows[] = {
      {"en", "", ""},
      {"en", "plain", "plain"},
      {"en", "\xC3\xA9t\xC3\xA9", "\xE9t\xE9"},
      {"en", "a\xD0\x96z", "a?z"},
      {"en", "\xE2\x82\xAC", "\x80"},
      {"ru", "\xD0\x96", "\xC6"},
      {"ja", "\xE3\x81\x82", "\x82\xA0"},
      {"en", "cut \xE3", "cut ?"},  // the system may take the terminator for a part of it
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.language << " " << row.utf8);
    SetCodePage(row.language);
    const std::string text = row.text;
    GuardedBuffer<char> buffer(std::string(row.utf8).size() + 1, row.utf8);
    EXPECT_TRUE(Utf82Ascii(buffer.Get(), static_cast<int>(text.size()) + 1));
    EXPECT_EQ(buffer.Text(), text);
  }
}

TEST(Utf82Ascii, RefusesWhatDoesNotFit) {
  SetCodePage("en");
  for (const int bufSize : {3, 1, -1}) {
    SCOPED_TRACE(bufSize);
    GuardedBuffer<char> buffer(5, "\xC3\xA9tz");
    EXPECT_FALSE(Utf82Ascii(buffer.Get(), bufSize));
    buffer.ExpectHolds({"\xC3\xA9tz", 5});
  }
  EXPECT_FALSE(Utf82Ascii(nullptr, 5));
  EXPECT_TRUE(Utf82Ascii(nullptr, 0));
}

TEST(Utf82Ascii, DoesNotSetTheCurrentCodePage) {
  GuardedBuffer<char> buffer(8, "abc");
  EXPECT_FALSE(Utf82Ascii(buffer.Get(), 8));
  EXPECT_FALSE(Utf82Ascii(buffer.Get(), 8));
  buffer.ExpectHolds({"abc", 4});
}

TEST(Unicode2Ascii, ConvertsPlainText) {
  SetCodePage("ja");
  GuardedBuffer<char> buffer(4);
  EXPECT_TRUE(Unicode2Ascii(L"abc", buffer.Get(), 4));
  buffer.ExpectHolds({"abc", 4});
  EXPECT_TRUE(Unicode2Ascii(L"", buffer.Get(), 1));
  EXPECT_EQ(buffer.Text(), "");
}

TEST(Unicode2Ascii, UsesTheSystemsCodePage) {
  const SystemsText row = InTheSystemsCodePage();
  ASSERT_NE(row.text, nullptr) << "no expectations for code page " << ::GetACP();
  SetCodePage(row.otherLanguage);
  const std::string text = row.text;
  GuardedBuffer<char> buffer(8);
  EXPECT_TRUE(Unicode2Ascii(row.wide, buffer.Get(), 8));
  buffer.ExpectHolds({text.c_str(), text.size() + 1});
}

TEST(Unicode2Ascii, RefusesWhatDoesNotFit) {
  for (const int outSize : {3, 1, 0, -1}) {
    SCOPED_TRACE(outSize);
    GuardedBuffer<char> buffer(4);
    EXPECT_FALSE(Unicode2Ascii(L"abc", buffer.Get(), outSize));
    buffer.ExpectHolds({});
  }
  char out[4];
  EXPECT_FALSE(Unicode2Ascii(nullptr, out, 4));
  EXPECT_FALSE(Unicode2Ascii(L"abc", nullptr, 4));
}

}  // namespace
