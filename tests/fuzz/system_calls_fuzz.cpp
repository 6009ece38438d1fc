// What the library makes of texts before it gives them to the system, which is not asked here: the
// HTML block of the clipboard, the command line of unzip, the steps that make folders.
#include <windows.h>

#include <cstdio>
#include <optional>
#include <string>

#include "tests/fuzz/support/guarded_copy.h"
#include "tests/fuzz/support/noted_folders.h"
#include "tests/fuzz/support/target.h"
#include "tests/support/import_patch.h"
#include "utils/paths/paths.h"
#include "utils/platform/platform.h"

namespace kv::fuzz {
namespace {

using test::ImportPatch;
// A clipboard of two blocks.
std::string g_html;
std::wstring g_text;
constexpr UINT kHtmlFormat = 0xC123;

HANDLE WINAPI Set(UINT format, HANDLE block) {
  const auto* const bytes = static_cast<const char*>(::GlobalLock(block));
  const std::size_t size = ::GlobalSize(block);
  if (format == kHtmlFormat) {
    g_html.assign(bytes, size);
  } else {
    g_text.assign(reinterpret_cast<const wchar_t*>(bytes), size / sizeof(wchar_t));
  }
  ::GlobalUnlock(block);
  ::GlobalFree(block);
  return block;
}
BOOL WINAPI Open(HWND) { return TRUE; }
BOOL WINAPI Succeed() { return TRUE; }
UINT WINAPI RegisterFormat(const char*) { return kHtmlFormat; }

std::string Offset(const std::string& html, std::size_t place) {
  char digits[32];
  const bool isThere = place != std::string::npos && place <= html.size();
  std::snprintf(digits, sizeof digits, "%08u", isThere ? static_cast<unsigned>(97 + place) : 0U);
  return digits;
}

std::string Block(const std::string& html) {
  const std::size_t body = html.find("<body");
  const std::size_t end = body == std::string::npos ? body : html.find('>', body);
  return "Version:0.9\r\nStartHTML:" + Offset(html, html.find("<!DOCTYPE html>")) +
         "\r\nEndHTML:" + Offset(html, html.size()) +
         "\r\nStartFragment:" + Offset(html, end == std::string::npos ? end : end + 1) +
         "\r\nEndFragment:" + Offset(html, html.find("</body>")) + "\r\n" + html +
         std::string(4, '\0');
}

void CheckHtml(Input input) {
  static const ImportPatch open("OpenClipboard", &Open);
  static const ImportPatch empty("EmptyClipboard", &Succeed);
  static const ImportPatch close("CloseClipboard", &Succeed);
  static const ImportPatch set("SetClipboardData", &Set);
  static const ImportPatch format("RegisterClipboardFormatA", &RegisterFormat);
  const std::string plain = input.Text();
  const std::string html = input.Text();
  g_text = L"(none)";
  const GuardedText guardedHtml(html);
  const GuardedText guardedPlain(plain);
  Expect("result", SendHTMLToClipboard(guardedHtml.Get(), guardedPlain.Get()), 1);
  Expect("block", g_html, Block(html));
  const std::optional<std::wstring> wide = Wide(plain);
  Expect("text", g_text, wide ? *wide + L'\0' : L"(none)");
  g_text = L"(none)";
  SendTextToClipboard(guardedPlain.Get());
  Expect("text alone", g_text, wide ? *wide + L'\0' : L"(none)");
}

void CheckFolders(Input input) {
  NotedFolders::Use();
  const std::string path = input.Text();
  const GuardedText guarded(path);
  MakeFolder(guarded.Get());
  Expect("steps", NotedFolders::Take(), NotedFolders::For(path));
  CheckFileFolder(guarded.Get());
  Expect("steps for a file", NotedFolders::Take(), NotedFolders::ForFile(path));
}

// Which program would run.
std::wstring g_commandLine;
BOOL WINAPI CreateCall(const wchar_t*, wchar_t* line, SECURITY_ATTRIBUTES*, SECURITY_ATTRIBUTES*,
                       BOOL, DWORD, void*, const wchar_t*, STARTUPINFOW*, PROCESS_INFORMATION*) {
  g_commandLine = line;
  return FALSE;
}

void CheckUnzip(Input input) {
  NotedFolders::Use();
  static const ImportPatch create("CreateProcessW", &CreateCall);
  g_commandLine.clear();
  const bool hasFolder = input.Flag();
  const std::string archive = input.Text();
  const std::string folder = input.Text();
  const GuardedText guardedArchive(archive);
  const GuardedText guardedFolder(folder);
  const std::size_t separator = archive.rfind('\\');
  std::string destination = hasFolder ? folder : archive.substr(0, separator);
  if (hasFolder && !destination.ends_with('\\')) destination += '\\';
  const std::optional<std::wstring> line =
      Wide("unzip.exe -q -u -d " + destination + " " + archive);
  const bool isRun = line && line->find(L'\0') == std::wstring::npos &&
                     (hasFolder || separator != std::string::npos);
  Expect("result", UnzipFile(guardedArchive.Get(), hasFolder ? guardedFolder.Get() : nullptr),
         false);
  Expect("command line", g_commandLine, isRun ? *line : L"");
}

const Registration kHtml(
    {.name = "clipboard_html",
     .check = CheckHtml,
     .seeds = {std::string("Sirius\0<!DOCTYPE html><html><body class=\"x\">Sirius</body></html>",
                           65),
               std::string("\xD0\xA1\0<body</body>x>", 16)},
     .words = {"<body", "</body>", ">", "<!DOCTYPE html>"}});

const Registration kFolders({.name = "folders",
                             .check = CheckFolders,
                             .seeds = {"C:\\Kelvaris\\catalogs\\Stars\\", "\\\\a\\b", "ab\\c",
                                       "d:x/y"},
                             .words = {"C:\\", "\\\\", ":\\"}});

const Registration kUnzip({.name = "unzip",
                           .check = CheckUnzip,
                           .seeds = {std::string("C:\\a b\\stars.zip\0C:\\out\1", 24),
                                     std::string("download\\x.zip\0\0", 16)},
                           .words = {"\\", ".zip"}});

}  // namespace
}  // namespace kv::fuzz
