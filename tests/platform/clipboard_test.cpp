#include <gtest/gtest.h>
#include <windows.h>

#include <climits>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "tests/platform/clipboard_fixture.h"
#include "tests/support/guarded_buffer.h"
#include "tests/support/huge_text.h"
#include "utils/platform/platform.h"

namespace {

using namespace std::string_literals;
using kv::test::Bytes;
using kv::test::GuardedBuffer;

class ClipboardText : public kv::test::Clipboard {};

const char* const kMalformed[] = {
    "\x80",         "\xBF", "\xC3",         "ok\xE2\x82", "\xC3\x28",         "\xF8\x88\x80",
    "\xF0\x9F\x98", "\xFF", "\xE2\x82 end", "good \xFE",  "\xF4\x90\x80\x80",
};

// ---- Sending -----------------------------------------------------------------------------------

TEST_F(ClipboardText, IsSentAsUtf16WithATerminator) {
  const struct {
    const char* text;
    std::wstring_view units;
  } rows[] = {
      {"", {L"\0", 1}},
      {"a", {L"a\0", 2}},
      {"abc", {L"abc\0", 4}},
      {"two\r\nlines\ttab", {L"two\r\nlines\ttab\0", 15}},
      {"gr\xC3\xBC\xC3\x9F", {L"gr\u00FC\u00DF\0", 5}},
      {"\xE5\xA4\xA9\xE6\x96\x87", {L"\u5929\u6587\0", 3}},
      {"\xF0\x9F\x98\x80!", {L"\xD83D\xDE00!\0", 4}},
      {"\xF4\x8F\xBF\xBF", {L"\xDBFF\xDFFF\0", 3}},
      // Overlong forms and encoded surrogates pass as they are.
      {"a\xC0\x80z", {L"a\0z\0", 4}},
      {"\xED\xA0\x80", {L"\xD800\0", 2}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.text));
    EXPECT_NE(SendTextToClipboard(row.text), 0);
    EXPECT_EQ(UnicodeText(), Bytes(row.units));
  }
}

TEST_F(ClipboardText, ReplacesAllThatTheClipboardHeld) {
  PutBlock(HtmlFormat(), "whatever");
  EXPECT_NE(SendTextToClipboard("abc"), 0);
  EXPECT_EQ(UnicodeText(), Bytes({L"abc\0", 4}));
  EXPECT_EQ(Html(), std::nullopt);
}

TEST_F(ClipboardText, LeavesTheClipboardAloneWhenItIsMalformed) {
  PutUnicodeText({L"old\0", 4});
  const DWORD sequence = ::GetClipboardSequenceNumber();
  for (const char* const text : kMalformed) {
    SCOPED_TRACE(testing::PrintToString(text));
    EXPECT_NE(SendTextToClipboard(text), 0);
    EXPECT_EQ(::GetClipboardSequenceNumber(), sequence);
  }
  EXPECT_EQ(UnicodeText(), Bytes({L"old\0", 4}));
}

TEST_F(ClipboardText, LeavesTheClipboardAloneWhenItIsLongerThanAnIntCanTell) {
  PutUnicodeText({L"old\0", 4});
  const DWORD sequence = ::GetClipboardSequenceNumber();
  kv::test::HugeText text(std::size_t{INT_MAX} + 1);
  ASSERT_NE(text.Get(), nullptr);
  EXPECT_NE(SendTextToClipboard(text.Get()), 0);
  EXPECT_EQ(::GetClipboardSequenceNumber(), sequence);
}

TEST_F(ClipboardText, LeavesTheClipboardAloneWhenItIsNull) {
  PutUnicodeText({L"old\0", 4});
  const DWORD sequence = ::GetClipboardSequenceNumber();
  EXPECT_EQ(SendTextToClipboard(nullptr), 0);
  EXPECT_EQ(::GetClipboardSequenceNumber(), sequence);
  EXPECT_EQ(UnicodeText(), Bytes({L"old\0", 4}));
}

// ---- Getting -----------------------------------------------------------------------------------

// Asks for the size, then for the text in a buffer of exactly that size.
void ExpectText(std::string_view content) {
  const int size = GetTextFromClipboard(nullptr);
  ASSERT_EQ(size, static_cast<int>(content.size()));
  GuardedBuffer<char> buffer(content.size());
  EXPECT_EQ(GetTextFromClipboard(buffer.Get()), size);
  buffer.ExpectHolds(content);
}

void ExpectNoText() {
  EXPECT_EQ(GetTextFromClipboard(nullptr), 0);
  GuardedBuffer<char> buffer(16);
  EXPECT_EQ(GetTextFromClipboard(buffer.Get()), 0);
  buffer.ExpectHolds("");
}

TEST_F(ClipboardText, IsTheWholeBlockAndATerminator) {
  const struct {
    const char* name;
    std::string block;
    std::string content;  // of the buffer, up to its last byte
  } rows[] = {
      {"ASCII", Bytes({L"abc\0", 4}), "abc\0\0"s},
      {"empty text", Bytes({L"\0", 1}), "\0\0"s},
      {"two bytes a character", Bytes({L"\u00E9\u00DF\0", 3}), "\xC3\xA9\xC3\x9F\0\0"s},
      {"three bytes a character", Bytes({L"\u5929\u6587\0", 3}), "\xE5\xA4\xA9\xE6\x96\x87\0\0"s},
      {"slack of zeros", Bytes({L"abc\0\0\0\0", 7}), "abc\0\0\0\0\0"s},
      {"slack of text", Bytes({L"abc\0xyz\0", 8}), "abc\0xyz\0\0"s},
      {"odd size", Bytes({L"abc\0", 4}) + "\0"s, "abc\0\0"s},
      {"three bytes", Bytes({L"\0", 1}) + "\0"s, "\0\0"s},
      // The pair D83D DE00 is combined to F600.
      {"surrogate pair", Bytes({L"\xD83D\xDE00\0", 3}), "\xEF\x98\x80\0\0"s},
      {"lone low surrogate", Bytes({L"a\xDE00z\0", 4}), "a\xED\xB8\x80z\0\0"s},
      // The system writes a terminator over the last unit of a block that has none.
      {"no terminator", Bytes(L"abcd"), "abc\0\0"s},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    PutBlock(CF_UNICODETEXT, row.block);
    ExpectText(row.content);
  }
}

TEST_F(ClipboardText, IsConvertedFromTheCodePageByTheSystem) {
  PutBlock(CF_TEXT, "abc\0"s);
  ExpectText("abc\0\0"s);
}

TEST_F(ClipboardText, IsNotThereOnAClipboardWithoutText) {
  ExpectNoText();
  PutBlock(HtmlFormat(), "<html>");
  ExpectNoText();
}

TEST_F(ClipboardText, IsNotThereWhenItIsMalformed) {
  const std::wstring_view rows[] = {
      {L"\xD83D\0", 2},       {L"\xD83D\xD83D\xDE00\0", 4},
      {L"abc\xD800z\0", 6},   {L"abc\0\xDBFFz\0", 7},  // behind the text's own end
      {L"good\0\xD83D\0", 7},
  };
  for (const std::wstring_view units : rows) {
    SCOPED_TRACE(testing::PrintToString(std::wstring(units)));
    PutUnicodeText(units);
    ExpectNoText();
  }
}

TEST_F(ClipboardText, SurvivesTheWayThereAndBack) {
  const struct {
    const char* text;
    std::string content;
  } rows[] = {
      {"abc", "abc\0\0"s},
      {"", "\0\0"s},
      {"\xC3\x85ngstr\xC3\xB6m \xE5\xA4\xA9", "\xC3\x85ngstr\xC3\xB6m \xE5\xA4\xA9\0\0"s},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    EXPECT_NE(SendTextToClipboard(row.text), 0);
    ExpectText(row.content);
  }
}

TEST_F(ClipboardText, MayBeOfAnyLength) {
  for (const std::size_t size : {65'534U, 65'535U, 65'536U, 70'000U, 5'000'000U}) {
    SCOPED_TRACE(size);
    std::string text(size, ' ');
    std::wstring units(size + 1, L'\0');
    for (std::size_t i = 0; i < size; ++i) {
      text[i] = static_cast<char>('!' + i % 89);
      units[i] = static_cast<wchar_t>(text[i]);
    }
    EXPECT_NE(SendTextToClipboard(text.c_str()), 0);
    EXPECT_TRUE(UnicodeText() == Bytes(units));
    ExpectText(text + "\0\0"s);
  }
}

// ---- A clipboard that another program holds ----------------------------------------------------

TEST_F(ClipboardText, GivesZeroAtOnceWhileAnotherProgramHoldsTheClipboard) {
  PutUnicodeText({L"old\0", 4});
  {
    const kv::test::BackgroundProcess holder = HoldOpen();
    EXPECT_EQ(SendTextToClipboard("new"), 0);
    EXPECT_EQ(SendTextToClipboard("\xFF"), 0);
    EXPECT_EQ(SendHTMLToClipboard("<html>", nullptr), 0);
    EXPECT_EQ(SendHTMLToClipboard("<html>", "new"), 0);
    ExpectNoText();
  }
  ExpectText("old\0\0"s);
  EXPECT_EQ(Html(), std::nullopt);
  EXPECT_NE(SendTextToClipboard("new"), 0);
  EXPECT_EQ(UnicodeText(), Bytes({L"new\0", 4}));
}

}  // namespace
