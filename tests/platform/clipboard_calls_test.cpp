// What the library asks of the system for the clipboard, call by call, and what becomes of it when
// one of the calls fails.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cstring>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tests/platform/clipboard_fixture.h"
#include "tests/support/guarded_buffer.h"
#include "tests/support/import_patch.h"
#include "utils/platform/platform.h"

namespace {

using kv::test::Bytes;
using kv::test::GuardedBuffer;
using kv::test::ImportPatch;

using Calls = std::vector<std::string>;

Calls calls;
std::set<std::string> failing;     // names of the calls that do not succeed
BOOL closeResult = TRUE;           // what closing gives
HGLOBAL clipboardBlock = nullptr;  // what getting gives, if not what the clipboard holds
std::optional<SIZE_T> blockSize;   // the size of every block, if not its own
std::string takenBegin;            // the first bytes of the last block that was set
std::size_t takenSize = 0;

// Notes a call and tells whether it succeeds.
bool Note(const char* name, const std::string& arguments = "") {
  calls.push_back(name + arguments);
  return !failing.contains(name);
}

std::string FormatName(UINT format) {
  if (format == CF_UNICODETEXT) return " CF_UNICODETEXT";
  if (format == ::RegisterClipboardFormatW(L"HTML Format")) return " HTML Format";
  return " " + std::to_string(format);
}

BOOL WINAPI Open(HWND owner) {
  const bool succeeds = Note("OpenClipboard", owner == nullptr ? "" : " with a window");
  return succeeds ? ::OpenClipboard(owner) : FALSE;
}

BOOL WINAPI Empty() { return Note("EmptyClipboard") ? ::EmptyClipboard() : FALSE; }

BOOL WINAPI Close() {
  Note("CloseClipboard");
  ::CloseClipboard();
  return closeResult;
}

UINT WINAPI RegisterFormat(const char* name) {
  return Note("RegisterClipboardFormat ", name) ? ::RegisterClipboardFormatA(name) : 0;
}

HANDLE WINAPI Get(UINT format) {
  if (!Note("GetClipboardData", FormatName(format))) return nullptr;
  return clipboardBlock != nullptr ? clipboardBlock : ::GetClipboardData(format);
}

HANDLE WINAPI Set(UINT format, HANDLE block) {
  takenSize = ::GlobalSize(block);
  takenBegin.assign(static_cast<const char*>(::GlobalLock(block)), std::min<SIZE_T>(takenSize, 97));
  ::GlobalUnlock(block);
  if (!Note("SetClipboardData", FormatName(format))) return nullptr;
  return ::SetClipboardData(format, block);
}

HGLOBAL WINAPI Alloc(UINT flags, SIZE_T size) {
  EXPECT_EQ(flags, static_cast<UINT>(GMEM_MOVEABLE | GMEM_ZEROINIT));
  return Note("GlobalAlloc ", std::to_string(size)) ? ::GlobalAlloc(flags, size) : nullptr;
}

void* WINAPI Lock(HGLOBAL block) { return Note("GlobalLock") ? ::GlobalLock(block) : nullptr; }

BOOL WINAPI Unlock(HGLOBAL block) {
  Note("GlobalUnlock");
  return ::GlobalUnlock(block);
}

SIZE_T WINAPI Size(HGLOBAL block) {
  if (!Note("GlobalSize")) return 0;
  return blockSize ? *blockSize : ::GlobalSize(block);
}

HGLOBAL WINAPI Free(HGLOBAL block) {
  Note("GlobalFree");
  return ::GlobalFree(block);
}

class ClipboardCalls : public kv::test::Clipboard {
 protected:
  ClipboardCalls() {
    calls.clear();
    failing.clear();
    closeResult = TRUE;
    clipboardBlock = nullptr;
    blockSize.reset();
  }

 private:
  ImportPatch patches_[11] = {
      {"OpenClipboard", &Open},   {"EmptyClipboard", &Empty},
      {"CloseClipboard", &Close}, {"RegisterClipboardFormatA", &RegisterFormat},
      {"GetClipboardData", &Get}, {"SetClipboardData", &Set},
      {"GlobalAlloc", &Alloc},    {"GlobalLock", &Lock},
      {"GlobalUnlock", &Unlock},  {"GlobalSize", &Size},
      {"GlobalFree", &Free},
  };
};

constexpr char kHi[] = "<!DOCTYPE html><html><body>Hi</body></html>";

TEST_F(ClipboardCalls, OfATextThatIsSent) {
  EXPECT_NE(SendTextToClipboard("abc"), 0);
  EXPECT_EQ(calls, (Calls{"OpenClipboard", "EmptyClipboard", "GlobalAlloc 8", "GlobalLock",
                          "GlobalUnlock", "SetClipboardData CF_UNICODETEXT", "CloseClipboard"}));
}

// More units than an int counts are not read.
TEST_F(ClipboardCalls, OfABlockThatIsTooLarge) {
  SendTextToClipboard("abc");
  calls.clear();
  blockSize = (SIZE_T{0x7FFFFFFF} + 1) * 2;
  EXPECT_EQ(GetTextFromClipboard(nullptr), 0);
  EXPECT_EQ(calls, (Calls{"OpenClipboard", "GetClipboardData CF_UNICODETEXT", "GlobalSize",
                          "CloseClipboard"}));
}

TEST_F(ClipboardCalls, OfAMalformedText) {
  EXPECT_NE(SendTextToClipboard("\xFF"), 0);
  EXPECT_EQ(calls, (Calls{"OpenClipboard", "CloseClipboard"}));
}

TEST_F(ClipboardCalls, OfNull) {
  EXPECT_EQ(SendTextToClipboard(nullptr), 0);
  EXPECT_EQ(SendHTMLToClipboard(nullptr, "abc"), 0);
  EXPECT_EQ(calls, Calls{});
}

TEST_F(ClipboardCalls, OfHtmlRegisterItsFormatOnce) {
  EXPECT_NE(SendHTMLToClipboard(kHi, nullptr), 0);
  EXPECT_EQ(calls, (Calls{"OpenClipboard", "EmptyClipboard", "RegisterClipboardFormat HTML Format",
                          "GlobalAlloc 144", "GlobalLock", "GlobalUnlock",
                          "SetClipboardData HTML Format", "CloseClipboard"}));
  calls.clear();
  EXPECT_NE(SendHTMLToClipboard(kHi, nullptr), 0);
  EXPECT_EQ(calls, (Calls{"OpenClipboard", "EmptyClipboard", "GlobalAlloc 144", "GlobalLock",
                          "GlobalUnlock", "SetClipboardData HTML Format", "CloseClipboard"}));
}

TEST_F(ClipboardCalls, OfHtmlWithPlainText) {
  SendHTMLToClipboard("", nullptr);
  calls.clear();
  EXPECT_NE(SendHTMLToClipboard(kHi, "Hi"), 0);
  EXPECT_EQ(calls,
            (Calls{"OpenClipboard", "EmptyClipboard", "GlobalAlloc 144", "GlobalLock",
                   "GlobalUnlock", "SetClipboardData HTML Format", "GlobalAlloc 6", "GlobalLock",
                   "GlobalUnlock", "SetClipboardData CF_UNICODETEXT", "CloseClipboard"}));
}

TEST_F(ClipboardCalls, OfATextThatIsRead) {
  PutUnicodeText({L"abc\0", 4});
  const Calls expected = {"OpenClipboard", "GetClipboardData CF_UNICODETEXT",
                          "GlobalSize",    "GlobalLock",
                          "GlobalUnlock",  "CloseClipboard"};
  EXPECT_EQ(GetTextFromClipboard(nullptr), 5);
  EXPECT_EQ(calls, expected);
  calls.clear();
  char buffer[5];
  EXPECT_EQ(GetTextFromClipboard(buffer), 5);
  EXPECT_EQ(calls, expected);
}

TEST_F(ClipboardCalls, OfATextThatIsMalformedOrMissing) {
  PutUnicodeText({L"\xD800\0", 2});
  EXPECT_EQ(GetTextFromClipboard(nullptr), 0);
  EXPECT_EQ(calls, (Calls{"OpenClipboard", "GetClipboardData CF_UNICODETEXT", "GlobalSize",
                          "GlobalLock", "GlobalUnlock", "CloseClipboard"}));
  PutNothing();
  calls.clear();
  EXPECT_EQ(GetTextFromClipboard(nullptr), 0);
  EXPECT_EQ(calls, (Calls{"OpenClipboard", "GetClipboardData CF_UNICODETEXT", "CloseClipboard"}));
}

TEST_F(ClipboardCalls, GiveWhatClosingGives) {
  for (const BOOL result : {0, 1, 7, -1}) {
    SCOPED_TRACE(result);
    closeResult = result;
    EXPECT_EQ(SendTextToClipboard("abc"), result);
    EXPECT_EQ(SendTextToClipboard("\xFF"), result);
    EXPECT_EQ(SendHTMLToClipboard(kHi, nullptr), result);
    EXPECT_EQ(SendHTMLToClipboard(kHi, "Hi"), result);
    EXPECT_EQ(SendHTMLToClipboard(kHi, "\xFF"), result);
    EXPECT_EQ(GetTextFromClipboard(nullptr), 0);
  }
}

// A block that the clipboard did not take is freed, and the clipboard is closed on every way out.
TEST_F(ClipboardCalls, EndInOrderWhenOneFails) {
  SendHTMLToClipboard("", nullptr);
  const struct {
    const char* fails;
    int result;
    Calls calls;
  } rows[] = {
      {"OpenClipboard", 0, {"OpenClipboard"}},
      {"EmptyClipboard",
       1,
       {"OpenClipboard", "EmptyClipboard", "GlobalAlloc 6", "GlobalLock", "GlobalUnlock",
        "SetClipboardData CF_UNICODETEXT", "CloseClipboard"}},
      {"GlobalAlloc ", 1, {"OpenClipboard", "EmptyClipboard", "GlobalAlloc 6", "CloseClipboard"}},
      {"GlobalLock",
       1,
       {"OpenClipboard", "EmptyClipboard", "GlobalAlloc 6", "GlobalLock", "GlobalFree",
        "CloseClipboard"}},
      {"SetClipboardData",
       1,
       {"OpenClipboard", "EmptyClipboard", "GlobalAlloc 6", "GlobalLock", "GlobalUnlock",
        "SetClipboardData CF_UNICODETEXT", "GlobalFree", "CloseClipboard"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.fails);
    failing = {row.fails};
    calls.clear();
    EXPECT_EQ(SendTextToClipboard("Hi"), row.result);
    EXPECT_EQ(calls, row.calls);
  }
}

TEST_F(ClipboardCalls, EndInOrderWhenOneFailsForHtml) {
  SendHTMLToClipboard("", nullptr);
  const struct {
    const char* fails;
    int result;
    Calls calls;
  } rows[] = {
      {"OpenClipboard", 0, {"OpenClipboard"}},
      {"EmptyClipboard",
       1,
       {"OpenClipboard", "EmptyClipboard", "GlobalAlloc 144", "GlobalLock", "GlobalUnlock",
        "SetClipboardData HTML Format", "GlobalAlloc 6", "GlobalLock", "GlobalUnlock",
        "SetClipboardData CF_UNICODETEXT", "CloseClipboard"}},
      {"GlobalAlloc ",
       1,
       {"OpenClipboard", "EmptyClipboard", "GlobalAlloc 144", "GlobalAlloc 6", "CloseClipboard"}},
      {"GlobalLock",
       1,
       {"OpenClipboard", "EmptyClipboard", "GlobalAlloc 144", "GlobalLock", "GlobalFree",
        "GlobalAlloc 6", "GlobalLock", "GlobalFree", "CloseClipboard"}},
      {"SetClipboardData",
       1,
       {"OpenClipboard", "EmptyClipboard", "GlobalAlloc 144", "GlobalLock", "GlobalUnlock",
        "SetClipboardData HTML Format", "GlobalFree", "GlobalAlloc 6", "GlobalLock", "GlobalUnlock",
        "SetClipboardData CF_UNICODETEXT", "GlobalFree", "CloseClipboard"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.fails);
    failing = {row.fails};
    calls.clear();
    EXPECT_EQ(SendHTMLToClipboard(kHi, "Hi"), row.result);
    EXPECT_EQ(calls, row.calls);
  }
}

TEST_F(ClipboardCalls, RegisterTheFormatAgainAfterAFailure) {
  failing = {"RegisterClipboardFormat "};
  EXPECT_NE(SendHTMLToClipboard(kHi, "Hi"), 0);
  EXPECT_EQ(Html(), std::nullopt);
  EXPECT_EQ(UnicodeText(), Bytes({L"Hi\0", 3}));
  failing.clear();
  EXPECT_NE(SendHTMLToClipboard(kHi, nullptr), 0);
  EXPECT_EQ(Html().value_or("").size(), 144U);
}

TEST_F(ClipboardCalls, EndInOrderWhenOneFailsForReading) {
  PutUnicodeText({L"abc\0", 4});
  const struct {
    const char* fails;
    Calls calls;
  } rows[] = {
      {"OpenClipboard", {"OpenClipboard"}},
      {"GetClipboardData", {"OpenClipboard", "GetClipboardData CF_UNICODETEXT", "CloseClipboard"}},
      {"GlobalSize",
       {"OpenClipboard", "GetClipboardData CF_UNICODETEXT", "GlobalSize", "CloseClipboard"}},
      {"GlobalLock",
       {"OpenClipboard", "GetClipboardData CF_UNICODETEXT", "GlobalSize", "GlobalLock",
        "CloseClipboard"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.fails);
    failing = {row.fails};
    calls.clear();
    GuardedBuffer<char> buffer(16);
    EXPECT_EQ(GetTextFromClipboard(buffer.Get()), 0);
    buffer.ExpectHolds("");
    EXPECT_EQ(calls, row.calls);
  }
}

// The system's clipboard gives no such blocks under Wine: it terminates them.
TEST_F(ClipboardCalls, ReadNoFurtherThanABlockThatLacksATerminator) {
  const struct {
    std::string block;
    std::string_view content;
  } rows[] = {
      {Bytes(L"abc"), {"abc\0", 4}},
      {Bytes(L"abc") + "d", {"abc\0", 4}},
      {Bytes(L"\u5929"), {"\xE5\xA4\xA9\0", 4}},
      {"x", {"\0", 1}},
      {Bytes(L"a\xD800"), {}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.block));
    clipboardBlock = ::GlobalAlloc(GMEM_MOVEABLE, row.block.size());
    std::memcpy(::GlobalLock(clipboardBlock), row.block.data(), row.block.size());
    ::GlobalUnlock(clipboardBlock);
    const int size = static_cast<int>(row.content.size());
    EXPECT_EQ(GetTextFromClipboard(nullptr), size);
    GuardedBuffer<char> buffer(16);
    EXPECT_EQ(GetTextFromClipboard(buffer.Get()), size);
    buffer.ExpectHolds(row.content);
    ::GlobalFree(clipboardBlock);
  }
}

TEST_F(ClipboardCalls, LeaveZerosForOffsetsBeyondEightDigits) {
  failing = {"SetClipboardData"};
  const struct {
    std::size_t fill;
    std::size_t blockSize;
    const char* header;
  } rows[] = {
      {99'999'874, 100'000'003,
       "Version:0.9\r\nStartHTML:00000097\r\nEndHTML:99999999\r\n"
       "StartFragment:00000118\r\nEndFragment:99999992\r\n"},
      {99'999'875, 100'000'004,
       "Version:0.9\r\nStartHTML:00000097\r\nEndHTML:00000000\r\n"
       "StartFragment:00000118\r\nEndFragment:99999993\r\n"},
      {99'999'882, 100'000'011,
       "Version:0.9\r\nStartHTML:00000097\r\nEndHTML:00000000\r\n"
       "StartFragment:00000118\r\nEndFragment:00000000\r\n"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.fill);
    const std::string html = "<!DOCTYPE html><body>" + std::string(row.fill, 'x') + "</body>";
    EXPECT_EQ(SendHTMLToClipboard(html.c_str(), nullptr), 1);
    EXPECT_EQ(takenBegin, row.header);
    EXPECT_EQ(takenSize, row.blockSize);
  }
}

}  // namespace
