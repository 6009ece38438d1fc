// The library's side of the facts that display-clipboard proves. Its other side is a program of the
// display.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <string>

#include "utils/platform/platform.h"

namespace {

constexpr char kClientText[] =
    "vom \xC3\x84u\xC3\x9F"
    "eren \xE5\xA4\xA9";

void AwaitEndOfInput() {
  while (std::getchar() != EOF) {
  }
}

// Tries for half a minute: what a program of the display puts on the clipboard arrives some time
// later, and while Wine fetches it the clipboard is in use.
template <typename Attempt>
bool Eventually(Attempt attempt) {
  for (int i = 0; i < 600; ++i) {
    if (attempt()) return true;
    ::Sleep(50);
  }
  return false;
}

void ExpectText(const std::string& expected) {
  char text[256] = "";
  EXPECT_TRUE(Eventually([&] {
    GetTextFromClipboard(text);
    return text == expected;
  })) << text;
}

void SendText(const char* text) {
  EXPECT_TRUE(Eventually([text] { return SendTextToClipboard(text) != 0; }));
}

void SendHtml(const char* html, const char* plainText) {
  EXPECT_TRUE(Eventually([=] { return SendHTMLToClipboard(html, plainText) != 0; }));
}

TEST(DisplayClipboard, DISABLED_GetsText) { ExpectText(kClientText); }

TEST(DisplayClipboard, DISABLED_SendsAndGetsText) {
  ExpectText(kClientText);
  SendText("own");
  // Wine misses the display's change of owner while a program has the clipboard open.
  const DWORD own = ::GetClipboardSequenceNumber();
  EXPECT_TRUE(Eventually([own] { return ::GetClipboardSequenceNumber() != own; }));
  ExpectText("another");
}

TEST(DisplayClipboard, DISABLED_SendsText) {
  ExpectText(kClientText);
  SendText(
      "gr\xC3\xBC\xC3\x9F"
      "e \xE5\xA4\xA9 \xF0\x9F\x98\x80 \xE2\x82\xAC");
  AwaitEndOfInput();
}

TEST(DisplayClipboard, DISABLED_SendsHtml) {
  ExpectText(kClientText);
  SendHtml(
      "<!DOCTYPE html><html><body id=\"x\"><b>gr\xC3\xBC\xC3\x9F"
      "e</b></body></html>",
      "\xE2\x82\xAC plain");
  AwaitEndOfInput();
}

}  // namespace
