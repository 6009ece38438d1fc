// The tour and the clipboard: what it shows, and that it puts back what was there.

#include "tests/examples/tour_services_fixture.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <optional>
#include <string>

namespace {

using kv::test::BackgroundProcess;
using kv::test::Bytes;
using kv::test::ProcessResult;
using TourClipboard = kv::test::TourServices;

constexpr char kShown[] =
    "  179 bytes of HTML for other programs, which read\n"
    "  StartHTML:00000097       the document, 82 bytes\n"
    "  EndHTML:00000179\n"
    "  StartFragment:00000124   its fragment, \"<p>Der <b>Große Bär</b> steht hoch.</p>\"\n"
    "  EndFragment:00000165\n"
    "  Beside it stands the plain text \"Der Große Bär steht hoch.\".\n";

// The section of the clipboard is the last one of the page.
std::string Section(const ProcessResult& result) {
  EXPECT_EQ(result.exitCode, 0U);
  EXPECT_EQ(result.err, "");
  const std::string head = "\nHTML on the clipboard\n" + std::string(92, '-') + "\n";
  const std::size_t start = result.out.find(head);
  return start == std::string::npos ? "no section" : result.out.substr(start + head.size());
}

TEST_F(TourClipboard, IsEmptyAgainWhereItWasEmpty) {
  EXPECT_EQ(Section(RunServices()), kShown);
  EXPECT_EQ(UnicodeText(), std::nullopt);
  EXPECT_EQ(Html(), std::nullopt);
}

TEST_F(TourClipboard, HoldsTheTextAgainThatItHeld) {
  const std::wstring texts[] = {
      std::wstring(1, L'\0'),
      std::wstring(L"Große Bär\r\n\0", 12),
      std::wstring(L"\xD83C\xDF0D\x65E5\x98DF\0", 5),  // an emoji, which the library would change
      std::wstring(L"\xD83C!\0", 3),                   // half of one
      std::wstring(70'000, L'x') + L'\0',
  };
  for (const std::wstring& text : texts) {
    SCOPED_TRACE("text " + std::to_string(&text - texts));
    PutUnicodeText(text);
    EXPECT_EQ(Section(RunServices()), kShown);
    EXPECT_TRUE(UnicodeText() == Bytes(text));
    EXPECT_EQ(Html(), std::nullopt);
  }
}

TEST_F(TourClipboard, IsLeftAloneWithWhatIsNoText) {
  const std::string block = "no text at all";
  PutBlock(HtmlFormat(), block);
  EXPECT_EQ(Section(RunServices()),
            "  Left alone: the clipboard holds something that is no text and could not be put "
            "back.\n");
  EXPECT_EQ(Html(), block);
}

TEST_F(TourClipboard, IsLeftAloneInTheHandsOfAnother) {
  const std::string leftAlone =
      "  Left alone: the clipboard is held by another program or cannot be reached.\n";
  for (const bool hasText : {false, true}) {
    SCOPED_TRACE(hasText);
    if (hasText) PutUnicodeText(std::wstring(L"mine\0", 5));
    {
      BackgroundProcess holder = HoldOpen();
      EXPECT_EQ(Section(RunServices()), leftAlone);
      EXPECT_EQ(holder.Finish().exitCode, 0U);
    }
    if (hasText) {
      EXPECT_EQ(UnicodeText(), Bytes(std::wstring(L"mine\0", 5)));
    } else {
      EXPECT_EQ(UnicodeText(), std::nullopt);
    }
  }
}

}  // namespace
