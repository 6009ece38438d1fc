// What the library makes of texts before it gives them to the system, which is not asked here: the
// HTML block of the clipboard, the command line of unzip, the steps that make folders.
#include <direct.h>
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/fuzz/support/guarded_copy.h"
#include "tests/fuzz/support/target.h"
#include "tests/reference/encoding.h"
#include "tests/support/files.h"
#include "tests/support/import_patch.h"
#include "utils/paths/paths.h"
#include "utils/platform/platform.h"

namespace kv::fuzz {
namespace {

using test::ImportPatch;
using Texts = std::vector<std::string>;

std::optional<std::wstring> Wide(const std::string& utf8) {
  std::wstring wide(utf8.size(), L'\0');
  int size = static_cast<int>(utf8.size());
  size = reference::Utf8ToUtf16(wide.data(), size, utf8.data(), size);
  if (size < 0) return std::nullopt;
  wide.resize(static_cast<std::size_t>(size));
  return wide;
}

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

// What would be done to folders, and which program would run.
Texts g_calls;

int MakeFolderCall(const wchar_t* name) {
  g_calls.push_back("mkdir " + test::Narrow(name));
  return 0;
}
int ChangeFolderCall(const wchar_t* name) {
  g_calls.push_back("chdir " + test::Narrow(name));
  return 0;
}
int ChangeDriveCall(int drive) {
  g_calls.push_back("drive " + std::to_string(drive));
  return 0;
}
DWORD WINAPI NoAttributes(const wchar_t*) { return INVALID_FILE_ATTRIBUTES; }
std::wstring g_commandLine;
BOOL WINAPI CreateCall(const wchar_t*, wchar_t* line, SECURITY_ATTRIBUTES*, SECURITY_ATTRIBUTES*,
                       BOOL, DWORD, void*, const wchar_t*, STARTUPINFOW*, PROCESS_INFORMATION*) {
  g_commandLine = line;
  return FALSE;
}

void UseNoSystem() {
  static const ImportPatch make("_wmkdir", &MakeFolderCall);
  static const ImportPatch change("_wchdir", &ChangeFolderCall);
  static const ImportPatch drive("_chdrive", &ChangeDriveCall);
  static const ImportPatch attributes("GetFileAttributesW", &NoAttributes);
  static const ImportPatch create("CreateProcessW", &CreateCall);
  g_calls.clear();
  g_commandLine.clear();
}

// The steps for a path, but for the way back at the end.
Texts Steps(const std::string& path) {
  const std::optional<std::wstring> wide = Wide(path);
  if (!wide || wide->empty() || wide->find(L'\0') != std::wstring::npos || wide->size() >= 260) {
    return {};
  }
  Texts steps;
  std::wstring text = *wide;
  std::size_t skipped = 0;
  if (text.find(L':') != std::wstring::npos) {
    const auto letter = static_cast<wchar_t>(text[0] & ~0x20);
    const bool isLetter = text[0] < 0x80 && letter >= L'A' && letter <= L'Z';
    if (isLetter) steps.push_back("drive " + std::to_string(letter - L'A' + 1));
    skipped = 3;
  }
  if (text.find(L'\\') == std::wstring::npos) {
    steps.push_back("mkdir " + test::Narrow(text));
    return steps;
  }
  if (text[0] == L'\\' || (text.size() > 2 && text[2] == L'\\')) {
    steps.emplace_back("chdir \\");
    if (skipped == 0) skipped = 1;
  }
  text.erase(0, skipped);
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = std::min(text.find(L'\\', begin), text.size());
    const std::string name = test::Narrow(text.substr(begin, end - begin));
    steps.push_back("mkdir " + name);
    steps.push_back("chdir " + name);
    begin = std::min(text.find_first_not_of(L'\\', end), text.size());
  }
  return steps;
}

// The folder that is to hold a file.
std::string FolderOf(std::string path) {
  const std::size_t colon = path.find(':');
  if (colon != std::string::npos && path.substr(colon + 1).starts_with('\\')) {
    std::replace(path.begin() + static_cast<std::ptrdiff_t>(colon) + 1, path.end(), ':', '\\');
  }
  std::replace(path.begin(), path.end(), '/', '\\');
  return path.substr(0, path.rfind('\\'));
}

Texts TakeSteps() {
  // The last one goes back to where the process was, if it may have left.
  if (!g_calls.empty() && g_calls.back().starts_with("chdir")) g_calls.pop_back();
  return std::exchange(g_calls, {});
}

void CheckFolders(Input input) {
  UseNoSystem();
  const std::string path = input.Text();
  const GuardedText guarded(path);
  MakeFolder(guarded.Get());
  Expect("steps", TakeSteps(), Steps(path));
  CheckFileFolder(guarded.Get());
  Expect("steps for a file", TakeSteps(), Steps(FolderOf(path)));
}

void CheckUnzip(Input input) {
  UseNoSystem();
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
