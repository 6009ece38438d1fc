// A disk in place of the system's that holds the paths it is given and notes what the library asks
// of it.
#ifndef KVUTILS_TESTS_PATHS_NOTED_DISK_H_
#define KVUTILS_TESTS_PATHS_NOTED_DISK_H_

#include <windows.h>

#include <cstdio>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/files.h"
#include "tests/support/import_patch.h"

namespace kv::test {

// Its paths know upper and lower case. A question is noted as the path that is asked for; the
// opening of a text file, of which there is but the real one `list`, as "open" and the path.
class NotedDisk {
 public:
  explicit NotedDisk(std::string list) {
    list_ = std::move(list);
    Hold({});
  }
  NotedDisk(const NotedDisk&) = delete;
  NotedDisk& operator=(const NotedDisk&) = delete;

  static void Hold(std::set<std::string> paths) {
    paths_ = std::move(paths);
    notes_.clear();
  }
  static bool Holds(const std::string& path) { return paths_.contains(path); }

  static std::vector<std::string> TakeNotes() { return std::exchange(notes_, {}); }

 private:
  static DWORD WINAPI Attributes(LPCWSTR path) {
    notes_.push_back(Narrow(path));
    return Holds(notes_.back()) ? FILE_ATTRIBUTE_NORMAL : INVALID_FILE_ATTRIBUTES;
  }
  static std::FILE* Open(const wchar_t* path, const wchar_t* mode) {
    notes_.push_back("open " + Narrow(path));
    return Holds(Narrow(path)) ? ::_wfopen(Widen(list_).c_str(), mode) : nullptr;
  }
  static HANDLE WINAPI NoteOther(LPCWSTR path) {
    notes_.push_back("other question about " + Narrow(path));
    return INVALID_HANDLE_VALUE;
  }
  static HANDLE WINAPI Create(LPCWSTR path, DWORD, DWORD, LPSECURITY_ATTRIBUTES, DWORD, DWORD,
                              HANDLE) {
    return NoteOther(path);
  }
  static HANDLE WINAPI Find(LPCWSTR path, LPWIN32_FIND_DATAW) { return NoteOther(path); }
  static int Status(const wchar_t* path, struct _stat64*) {
    NoteOther(path);
    return -1;
  }
  static std::FILE* OpenShared(const wchar_t* path, const wchar_t*, int) {
    NoteOther(path);
    return nullptr;
  }

  static inline std::string list_;
  static inline std::set<std::string> paths_;
  static inline std::vector<std::string> notes_;

  ImportPatch attributes_{"GetFileAttributesW", &Attributes};
  ImportPatch open_{"_wfopen", &Open};
  ImportPatch create_{"CreateFileW", &Create};
  ImportPatch find_{"FindFirstFileW", &Find};
  ImportPatch status_{"_wstat64", &Status};
  ImportPatch openShared_{"_wfsopen", &OpenShared};
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_PATHS_NOTED_DISK_H_
