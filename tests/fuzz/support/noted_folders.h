// The steps by which the library makes folders: noted, not done, and told beforehand.
#ifndef KVUTILS_TESTS_FUZZ_SUPPORT_NOTED_FOLDERS_H_
#define KVUTILS_TESTS_FUZZ_SUPPORT_NOTED_FOLDERS_H_

#include <windows.h>

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/reference/encoding.h"
#include "tests/support/files.h"
#include "tests/support/import_patch.h"

namespace kv::fuzz {

// None for malformed UTF-8.
inline std::optional<std::wstring> Wide(const std::string& utf8) {
  std::wstring wide(utf8.size(), L'\0');
  int size = static_cast<int>(utf8.size());
  size = reference::Utf8ToUtf16(wide.data(), size, utf8.data(), size);
  if (size < 0) return std::nullopt;
  wide.resize(static_cast<std::size_t>(size));
  return wide;
}

// What the system is given for a path: nothing for one that it cannot be asked for.
inline std::wstring WideForSystem(const std::string& path) {
  const std::optional<std::wstring> wide = Wide(path);
  return !wide || wide->find(L'\0') != std::wstring::npos ? std::wstring() : *wide;
}

class NotedFolders {
 public:
  // From the first call on no folder is made and none is there. Forgets the steps so far.
  static void Use() {
    static const test::ImportPatch make("_wmkdir", &Make);
    static const test::ImportPatch change("_wchdir", &Change);
    static const test::ImportPatch drive("_chdrive", &ChangeDrive);
    static const test::ImportPatch attributes("GetFileAttributesW", &NoAttributes);
    steps_.clear();
  }

  static std::vector<std::string> Take() { return std::exchange(steps_, {}); }

  // Those for a folder of this path, with the way back at the end.
  static std::vector<std::string> For(const std::string& path) {
    std::wstring text = WideForSystem(path);
    if (text.empty() || text.size() >= 260) return {};
    std::vector<std::string> steps;
    std::size_t skipped = 0;
    if (text.find(L':') != std::wstring::npos) {
      const auto letter = static_cast<wchar_t>(text[0] & ~0x20);
      const bool isLetter = text[0] < 0x80 && letter >= L'A' && letter <= L'Z';
      if (isLetter) steps.push_back("drive " + std::to_string(letter - L'A' + 1));
      skipped = 3;
    }
    const std::string back = "chdir " + test::CurrentFolder();
    if (text.find(L'\\') == std::wstring::npos) {
      steps.insert(steps.end(), {"mkdir " + test::Narrow(text), back});
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
      steps.insert(steps.end(), {"mkdir " + name, "chdir " + name});
      begin = std::min(text.find_first_not_of(L'\\', end), text.size());
    }
    steps.push_back(back);
    return steps;
  }

  // Those for the folder that is to hold a file.
  static std::vector<std::string> ForFile(std::string path) {
    const std::size_t colon = path.find(':');
    if (colon != std::string::npos && path.substr(colon + 1).starts_with('\\')) {
      std::replace(path.begin() + static_cast<std::ptrdiff_t>(colon) + 1, path.end(), ':', '\\');
    }
    std::replace(path.begin(), path.end(), '/', '\\');
    return For(path.substr(0, path.rfind('\\')));
  }

 private:
  static int Make(const wchar_t* name) {
    steps_.push_back("mkdir " + test::Narrow(name));
    return 0;
  }
  static int Change(const wchar_t* name) {
    steps_.push_back("chdir " + test::Narrow(name));
    return 0;
  }
  static int ChangeDrive(int drive) {
    steps_.push_back("drive " + std::to_string(drive));
    return 0;
  }
  static DWORD WINAPI NoAttributes(const wchar_t*) { return INVALID_FILE_ATTRIBUTES; }

  static inline std::vector<std::string> steps_;
};

}  // namespace kv::fuzz

#endif  // KVUTILS_TESTS_FUZZ_SUPPORT_NOTED_FOLDERS_H_
