#include "tests/platform/clipboard_fixture.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdlib>
#include <cstring>

#include "tests/support/case_checks.h"
#include "tests/support/files.h"
#include "tests/support/process.h"

namespace kv::test {
namespace {

// What the second process works on: a clipboard format and a file for its block.
constexpr char kFormat[] = "KVUTILS_CLIPBOARD_FORMAT";
constexpr char kFile[] = "KVUTILS_CLIPBOARD_FILE";

UINT ChildFormat() { return static_cast<UINT>(std::strtoul(std::getenv(kFormat), nullptr, 10)); }
std::string ChildFile() { return Environment(kFile); }

// Under Wine only an opener with a window keeps other processes out. A window of messages alone
// needs no display.
class OpenedByWindow {
 public:
  OpenedByWindow()
      : window_(::CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                  nullptr, nullptr)) {
    EXPECT_TRUE(::OpenClipboard(window_)) << ::GetLastError();
  }
  ~OpenedByWindow() {
    EXPECT_TRUE(::CloseClipboard()) << ::GetLastError();
    ::DestroyWindow(window_);
  }
  OpenedByWindow(const OpenedByWindow&) = delete;
  OpenedByWindow& operator=(const OpenedByWindow&) = delete;

 private:
  HWND window_;
};

TEST(ClipboardChild, DISABLED_Empties) {
  const OpenedByWindow clipboard;
  EXPECT_TRUE(::EmptyClipboard());
}

TEST(ClipboardChild, DISABLED_Writes) {
  const std::string bytes = ReadBytes(ChildFile());
  const OpenedByWindow clipboard;
  EXPECT_TRUE(::EmptyClipboard());
  const HGLOBAL block = ::GlobalAlloc(GMEM_MOVEABLE, bytes.size());
  ASSERT_EQ(::GlobalSize(block), bytes.size());
  std::memcpy(::GlobalLock(block), bytes.data(), bytes.size());
  ::GlobalUnlock(block);
  // Into a text of an odd size Wine writes a terminator of which one byte lies behind the block.
  if (bytes.size() % sizeof(wchar_t) != 0) LeaveHeapsUnchecked();
  EXPECT_EQ(::SetClipboardData(ChildFormat(), block), block) << ::GetLastError();
}

TEST(ClipboardChild, DISABLED_Reads) {
  const OpenedByWindow clipboard;
  const HGLOBAL block = ::GetClipboardData(ChildFormat());
  if (block == nullptr) return;
  const auto* const bytes = static_cast<const char*>(::GlobalLock(block));
  WriteBytes(ChildFile(), std::string_view(bytes, ::GlobalSize(block)));
  ::GlobalUnlock(block);
}

TEST(ClipboardChild, DISABLED_HoldsOpen) {
  const OpenedByWindow clipboard;
  SayReady();
  AwaitRelease();
}

}  // namespace

void Clipboard::RunChild(const std::string& name, unsigned format) {
  SetEnvironment(kFormat, std::to_string(format));
  SetEnvironment(kFile, BlockFile());
  const ProcessResult child = RunOwnCase("ClipboardChild.DISABLED_" + name);
  EXPECT_EQ(child.exitCode, 0U) << child.out << child.err;
}

void Clipboard::PutNothing() { RunChild("Empties", 0); }

void Clipboard::PutBlock(unsigned format, std::string_view bytes) {
  WriteBytes(BlockFile(), bytes);
  RunChild("Writes", format);
}

void Clipboard::PutUnicodeText(std::wstring_view units) { PutBlock(CF_UNICODETEXT, Bytes(units)); }

std::optional<std::string> Clipboard::Block(unsigned format) {
  if (FileExists(BlockFile())) RemoveFile(BlockFile());
  RunChild("Reads", format);
  if (!FileExists(BlockFile())) return std::nullopt;
  return ReadBytes(BlockFile());
}

std::optional<std::string> Clipboard::UnicodeText() { return Block(CF_UNICODETEXT); }

std::optional<std::string> Clipboard::Html() { return Block(HtmlFormat()); }

BackgroundProcess Clipboard::HoldOpen() {
  return BackgroundProcess::OwnCase("ClipboardChild.DISABLED_HoldsOpen");
}

unsigned Clipboard::HtmlFormat() { return ::RegisterClipboardFormatW(L"HTML Format"); }

std::string Bytes(std::wstring_view units) {
  return {reinterpret_cast<const char*>(units.data()), units.size() * sizeof(wchar_t)};
}

}  // namespace kv::test
