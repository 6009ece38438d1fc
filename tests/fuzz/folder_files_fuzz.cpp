// Files of a folder deleted by a mask, and files copied by lists. Nothing is deleted, copied or
// made: what would be is noted.
#include <windows.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "tests/fuzz/support/guarded_copy.h"
#include "tests/fuzz/support/noted_folders.h"
#include "tests/fuzz/support/target.h"
#include "tests/support/files.h"
#include "tests/support/import_patch.h"
#include "utils/paths/paths.h"

namespace kv::fuzz {
namespace {

using test::ImportPatch;
using Texts = std::vector<std::string>;

Texts g_calls;

BOOL WINAPI NoteDeletion(const wchar_t* path) {
  g_calls.push_back("delete " + test::Narrow(path));
  return TRUE;
}
BOOL WINAPI NoteAttributes(const wchar_t* path, DWORD attributes) {
  g_calls.push_back("attributes " + test::Narrow(path) + " " + std::to_string(attributes));
  return TRUE;
}

constexpr char kReadOnlyFile[] = "b.tmp";
// Names that the system gives no second, shorter one, and others.
const Texts kShortFiles = {"a.tmp", kReadOnlyFile, "C.TMP", "none", "long.txt", "sub.tmp\\e.tmp"};
const Texts kOtherFiles = {".tmp", "d.tmp.bak", "two.dots.tm", "каталог.x"};

void PrepareFolder() {
  static const bool isMade = [] {
    for (const Texts* const files : {&kShortFiles, &kOtherFiles}) {
      for (const std::string& file : *files) test::WriteBytes("box\\" + file, "x");
    }
    test::SetReadOnly(std::string("box\\") + kReadOnlyFile, true);
    return true;
  }();
  static const ImportPatch deletion("DeleteFileW", &NoteDeletion);
  static const ImportPatch attributes("SetFileAttributesW", &NoteAttributes);
  if (isMade) g_calls.clear();
}

// The calls for what the system itself finds by the pattern.
Texts CallsForFound(const std::string& base, const std::string& pattern) {
  Texts calls;
  WIN32_FIND_DATAW entry;
  const HANDLE listing = ::FindFirstFileW(test::Widen(pattern).c_str(), &entry);
  if (listing == INVALID_HANDLE_VALUE) return calls;
  do {
    const DWORD attributes = entry.dwFileAttributes;
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) continue;
    const std::string path = base + test::Narrow(entry.cFileName);
    if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) {
      calls.push_back("attributes " + path + " " +
                      std::to_string(attributes & ~DWORD{FILE_ATTRIBUTE_READONLY}));
    }
    calls.push_back("delete " + path);
  } while (::FindNextFileW(listing, &entry) != FALSE);
  ::FindClose(listing);
  return calls;
}

// Whether a name matches a plain mask.
bool Matches(std::string_view name, std::string_view mask) {
  if (mask.empty()) return name.empty();
  if (mask[0] == '*') {
    return Matches(name, mask.substr(1)) || (!name.empty() && Matches(name.substr(1), mask));
  }
  if (name.empty()) return false;
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
  return lower(mask[0]) == lower(name[0]) && Matches(name.substr(1), mask.substr(1));
}

// One of letters, "." and "*" that the system does not read in ways of its own, as it does where
// "*" stands beside a "." or at the end of one.
bool IsPlainMask(const std::string& mask) {
  constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ.*";
  return !mask.empty() && mask.size() < 30 &&
         mask.find_first_not_of(kLetters) == std::string::npos && !mask.ends_with('.') &&
         !mask.ends_with(".*") && mask.find("*.*") == std::string::npos && mask != "*" &&
         mask.find("**") == std::string::npos;
}

bool IsDeleted(const std::string& path) {
  return std::find(g_calls.begin(), g_calls.end(), "delete " + path) != g_calls.end();
}

void CheckMask(Input input) {
  PrepareFolder();
  const bool isOther = input.Below(8) == 0;
  const std::string chosen =
      input.OneOf({"box", "box\\", ".\\box", "box\\sub.tmp", "none", "", "box\\none", "BOX"});
  const std::string mask = input.Text();
  const std::string folder = isOther ? input.Text() : chosen;
  const GuardedText guardedMask(mask);
  const GuardedText guardedFolder(folder);
  DeleteFolder(guardedFolder.Get(), guardedMask.Get());

  const std::string base = folder + (folder.ends_with('\\') ? "" : "\\");
  const std::string pattern = base + mask;
  const bool isAsked = !folder.empty() && mask.find_first_of("\\/:") == std::string::npos &&
                       pattern.size() < 260 && !WideForSystem(base).empty() &&
                       !WideForSystem(pattern).empty();
  Expect("calls", g_calls, isAsked ? CallsForFound(base, pattern) : Texts());
  if (folder != "box" || !IsPlainMask(mask)) return;
  for (const std::string& file : kShortFiles) {
    const bool isInside = file.find('\\') == std::string::npos;
    Expect(file.c_str(), IsDeleted("box\\" + file), isInside && Matches(file, mask));
  }
}

BOOL WINAPI NoteCopy(const wchar_t* source, const wchar_t* target, BOOL keepsTarget) {
  for (const std::string& step : NotedFolders::Take()) g_calls.push_back(step);
  g_calls.push_back("copy " + test::Narrow(source) + " to " + test::Narrow(target) +
                    (keepsTarget != FALSE ? " unless it is there" : ""));
  return TRUE;
}

std::string Copy(const std::string& source, const std::string& target) {
  return "copy " + test::Narrow(WideForSystem(source)) + " to " +
         test::Narrow(WideForSystem(target));
}

Texts TakeCalls() {
  Texts calls = std::exchange(g_calls, {});
  // Steps that no copy follows.
  for (const std::string& step : NotedFolders::Take()) calls.push_back(step);
  return calls;
}

// What copying by names from folder to folder does.
Texts CallsForNames(const Texts& names, const std::string& from, const std::string& to) {
  Texts calls;
  if (from.empty() || to.empty()) return calls;
  for (const std::string& name : names) {
    const std::string source = from + "\\" + name;
    const std::string target = to + "\\" + name;
    if (source.size() >= 260 || target.size() >= 260) continue;
    if (WideForSystem(source).empty() || WideForSystem(target).empty()) continue;
    for (const std::string& path : {source, target}) {
      for (const std::string& step : NotedFolders::ForFile(path)) calls.push_back(step);
    }
    calls.push_back(Copy(source, target));
  }
  return calls;
}

void CheckLists(Input input) {
  NotedFolders::Use();
  static const ImportPatch copy("CopyFileW", &NoteCopy);
  g_calls.clear();
  Texts sources(input.Below(5));
  Texts targets(input.Below(5));
  const bool hasFrom = input.Below(8) != 0;
  const bool hasTo = input.Below(8) != 0;
  for (Texts* const list : {&sources, &targets}) {
    for (std::string& path : *list) path = std::string(input.Until('\n')).c_str();
  }
  CopyFilesFromList(sources, targets);
  Texts expected;
  for (std::size_t i = 0; i < std::min(sources.size(), targets.size()); ++i) {
    expected.push_back(Copy(sources[i], targets[i]));
  }
  Expect("copies of lists", TakeCalls(), expected);

  const std::string from = input.Text();
  const std::string to = input.Text();
  const GuardedText guardedFrom(from);
  const GuardedText guardedTo(to);
  CopyFilesFromList(sources, hasFrom ? guardedFrom.Get() : nullptr,
                    hasTo ? guardedTo.Get() : nullptr);
  Expect("copies of names", TakeCalls(),
         CallsForNames(sources, hasFrom ? from : "", hasTo ? to : ""));
}

const Registration kMasks({.name = "delete_masks",
                           .check = CheckMask,
                           .seeds = {std::string("*.tmp\0\0\1", 8), std::string("*\0\0\1", 4),
                                     std::string("*.*\0\1\1", 6), std::string("?.tmp\0\0\1", 8),
                                     std::string("a*\0\7\1", 5), std::string("..\\*\0\0\1", 7),
                                     std::string("*.TMP\0box\0\0\0", 12)},
                           .words = {"*", "?", "*.", ".tmp", ".*", "tm", "..\\", "\"", "<", ">"},
                           .maxSize = 300,
                           .count = 500});

const Registration kLists(
    {.name = "copy_lists",
     .check = CheckLists,
     .seeds = {std::string("a.bin\nsub\\b.bin\nc/d.bin\nx\ny\nC:\\from\0D:\\to\0\1\1\2\3", 46),
               std::string("media:images:x.png\nfrom\0to\0\1\1\0\1", 31),
               std::string("a\nb\nc\nd\nfrom\\\0\\\\to\\x\0\1\1\2\2", 25)},
     .words = {"\n", "\\", "C:\\", "..\\", ":", std::string(1, '\0')},
     .maxSize = 900});

}  // namespace
}  // namespace kv::fuzz
