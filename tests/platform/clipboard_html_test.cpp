#include <gtest/gtest.h>
#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

#include "tests/platform/clipboard_fixture.h"
#include "utils/platform/platform.h"

namespace {

using namespace std::string_literals;
using kv::test::Bytes;

class ClipboardHtml : public kv::test::Clipboard {};

constexpr char kHi[] = "<!DOCTYPE html><html><body>Hi</body></html>";

TEST_F(ClipboardHtml, HasAHeaderOfOffsetsAndATailOfZeros) {
  EXPECT_NE(SendHTMLToClipboard(kHi, nullptr), 0);
  EXPECT_EQ(Html(),
            "Version:0.9\r\n"
            "StartHTML:00000097\r\n"
            "EndHTML:00000140\r\n"
            "StartFragment:00000124\r\n"
            "EndFragment:00000126\r\n"
            "<!DOCTYPE html><html><body>Hi</body></html>"
            "\0\0\0\0"s);
}

TEST_F(ClipboardHtml, TellsWhereDocumentAndFragmentAre) {
  const struct {
    const char* html;
    const char* startHtml;
    const char* endHtml;
    const char* startFragment;
    const char* endFragment;
  } rows[] = {
      {"<!DOCTYPE html><body class=x>Hi</body>", "00000097", "00000135", "00000126", "00000128"},
      {"<!DOCTYPE html><body\r\n id='a'\r\n>\r\n</body>\r\n", "00000097", "00000140", "00000129",
       "00000131"},
      {"<!DOCTYPE html><body></body>", "00000097", "00000125", "00000118", "00000118"},
      // What stands in front of the document's own start belongs to the text all the same.
      {"<!-- a > b -->\n<!DOCTYPE html><html><body>\xC3\xA4</body></html>\n", "00000112",
       "00000156", "00000139", "00000141"},
      // The first of several.
      {"<!DOCTYPE html><!DOCTYPE html><body><body>1</body>2</body>", "00000097", "00000155",
       "00000133", "00000140"},
      {"</body><!DOCTYPE html><body>", "00000104", "00000125", "00000125", "00000097"},
      {"<!DOCTYPE html><bodyguard>x<body>y</body>", "00000097", "00000138", "00000123", "00000131"},
      {"<!DOCTYPE html><body title='>'>y</body>", "00000097", "00000136", "00000126", "00000129"},
      // Marks are found letter by letter.
      {"<!doctype html><BODY>Hi</BODY>", "00000000", "00000127", "00000000", "00000000"},
      {"<!DOCTYPE HTML><body>Hi</body >", "00000000", "00000128", "00000118", "00000000"},
      // A mark that is not there leaves zeros.
      {"<html><body>Hi</body></html>", "00000000", "00000125", "00000109", "00000111"},
      {"<!DOCTYPE html><p>Hi</p>", "00000097", "00000121", "00000000", "00000000"},
      {"<!DOCTYPE html><p>Hi</p></body>", "00000097", "00000128", "00000000", "00000121"},
      {"<!DOCTYPE html><body>Hi", "00000097", "00000120", "00000118", "00000000"},
      {"<!DOCTYPE html><body Hi", "00000097", "00000120", "00000000", "00000000"},
      {"<!DOCTYPE html><body", "00000097", "00000117", "00000000", "00000000"},
      {"<!DOCTYPE html", "00000000", "00000111", "00000000", "00000000"},
      {"Hi", "00000000", "00000099", "00000000", "00000000"},
      {"", "00000000", "00000097", "00000000", "00000000"},
      // The header's own words in the document change nothing.
      {"StartHTML:11111111\r\nEndFragment:22222222\r\n", "00000000", "00000139", "00000000",
       "00000000"},
      // Bytes that are not UTF-8 are text like any other.
      {"<!DOCTYPE html><body>\xFF\xC3</body>\x80", "00000097", "00000128", "00000118", "00000120"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.html);
    EXPECT_NE(SendHTMLToClipboard(row.html, nullptr), 0);
    EXPECT_EQ(Html(), "Version:0.9\r\nStartHTML:"s + row.startHtml + "\r\nEndHTML:" + row.endHtml +
                          "\r\nStartFragment:" + row.startFragment +
                          "\r\nEndFragment:" + row.endFragment + "\r\n" + row.html + "\0\0\0\0"s);
  }
}

TEST_F(ClipboardHtml, MayBeOfAnyLength) {
  const struct {
    std::size_t fill;
    const char* header;
  } rows[] = {
      {70'000,
       "Version:0.9\r\nStartHTML:00000097\r\nEndHTML:00070125\r\n"
       "StartFragment:00000118\r\nEndFragment:00070118\r\n"},
      {5'000'000,
       "Version:0.9\r\nStartHTML:00000097\r\nEndHTML:05000125\r\n"
       "StartFragment:00000118\r\nEndFragment:05000118\r\n"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.fill);
    std::string html = "<!DOCTYPE html><body>";
    for (std::size_t i = 0; i < row.fill; ++i) html += static_cast<char>('A' + i % 57);
    html += "</body>";
    EXPECT_NE(SendHTMLToClipboard(html.c_str(), nullptr), 0);
    EXPECT_TRUE(Html() == row.header + html + "\0\0\0\0"s);
  }
}

TEST_F(ClipboardHtml, CarriesAPlainTextBesideIt) {
  const struct {
    const char* plainText;
    std::optional<std::string> block;
  } rows[] = {
      {"Hi", Bytes({L"Hi\0", 3})},
      {"", Bytes({L"\0", 1})},
      {"gr\xC3\xBC\xC3\x9F \xF0\x9F\x98\x80", Bytes({L"gr\u00FC\u00DF \xD83D\xDE00\0", 8})},
      {nullptr, std::nullopt},
      {"\xFF", std::nullopt},
      {"cut \xE2\x82", std::nullopt},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.plainText));
    PutUnicodeText({L"old\0", 4});
    EXPECT_NE(SendHTMLToClipboard(kHi, row.plainText), 0);
    EXPECT_EQ(UnicodeText(), row.block);
    EXPECT_EQ(Html().value_or("").size(), 144U);
  }
}

TEST_F(ClipboardHtml, LeavesTheClipboardAloneWhenItIsNull) {
  PutUnicodeText({L"old\0", 4});
  const DWORD sequence = ::GetClipboardSequenceNumber();
  EXPECT_EQ(SendHTMLToClipboard(nullptr, nullptr), 0);
  EXPECT_EQ(SendHTMLToClipboard(nullptr, "new"), 0);
  EXPECT_EQ(::GetClipboardSequenceNumber(), sequence);
  EXPECT_EQ(UnicodeText(), Bytes({L"old\0", 4}));
}

TEST_F(ClipboardHtml, IsNotReadBack) {
  EXPECT_EQ(GetHTMLFromClipboard(), -1);
  EXPECT_NE(SendHTMLToClipboard(kHi, "Hi"), 0);
  EXPECT_EQ(GetHTMLFromClipboard(), -1);
  const kv::test::BackgroundProcess holder = HoldOpen();
  EXPECT_EQ(GetHTMLFromClipboard(), -1);
}

}  // namespace
