// Operations that are little but a question to the system: nothing is to be won, and nothing lost.
#include <windows.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "bench/support/comparison.h"
#include "bench/support/main.h"
#include "utils/files/files.h"
#include "utils/paths/paths.h"
#include "utils/platform/platform.h"
#include "utils/text/text.h"

namespace {

namespace fs = std::filesystem;

using kv::bench::Comparison;
using kv::bench::Require;

// Folders of 10 and 10,000 files below the temporary folder of the system.
class Folders {
 public:
  Folders() {
    for (const int count : kCounts) {
      fs::create_directories(root_ / std::to_string(count));
      for (int i = 0; i < count; ++i) {
        std::ofstream(root_ / std::to_string(count) / ("asteroid_" + std::to_string(i) + ".bin"));
      }
    }
  }
  Folders(const Folders&) = delete;
  Folders& operator=(const Folders&) = delete;
  ~Folders() { fs::remove_all(root_); }

  static constexpr int kCounts[] = {10, 10000};
  std::string Of(int count) const { return (root_ / std::to_string(count)).string() + "\\"; }

 private:
  fs::path root_ = fs::temp_directory_path() / "kvutils system calls bench";
};

const Folders& TheFolders() {
  static const Folders folders;
  return folders;
}

std::size_t FindEntries(const std::string& folder) {
  FindFiles files(folder.c_str(), "*.*");
  files.Run(false);
  return files.GetNumberFiles();
}

// The full paths of the entries but "." and "..", as a list needs them.
std::size_t ListPlainly(const std::string& folder) {
  std::vector<std::string> paths;
  WIN32_FIND_DATAW data;
  const HANDLE listing =
      ::FindFirstFileW(Ascii2Unicode((folder + "*.*").c_str(), true).c_str(), &data);
  if (listing == INVALID_HANDLE_VALUE) return 0;
  do {
    const std::wstring name = data.cFileName;
    if (name == L"." || name == L"..") continue;
    char narrow[3 * MAX_PATH];
    int capacity = sizeof narrow;
    const int size = utf16_to_utf8(narrow, capacity, name.data(), static_cast<int>(name.size()));
    paths.push_back(folder + std::string(narrow, static_cast<std::size_t>(size)));
  } while (::FindNextFileW(listing, &data) != 0);
  ::FindClose(listing);
  return paths.size();
}

std::size_t CountEntries(const std::wstring& pattern) {
  WIN32_FIND_DATAW data;
  const HANDLE listing = ::FindFirstFileW(pattern.c_str(), &data);
  std::size_t count = 0;
  do ++count;
  while (::FindNextFileW(listing, &data) != 0);
  ::FindClose(listing);
  return count - 2;
}

// The mutex by itself, as the time zones take it.
class NamedMutex {
 public:
  void WaitAndRelease() const {
    ::WaitForSingleObject(handle_, INFINITE);
    ::ReleaseMutex(handle_);
  }

 private:
  HANDLE handle_ = ::CreateMutexA(nullptr, FALSE, "kv_icu_mutex_bench");
};

bool Exists(const std::wstring& path) {
  return ::GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

}  // namespace

void kv::bench::CheckAgreement() {
  for (const int count : Folders::kCounts) {
    const std::string folder = TheFolders().Of(count);
    Require(FindEntries(folder) == static_cast<std::size_t>(count), "FindFiles");
    Require(ListPlainly(folder) == FindEntries(folder), "FindFiles");
    const std::wstring pattern = Ascii2Unicode((folder + "*.*").c_str(), true);
    Require(CountEntries(pattern) == FindEntries(folder), "FindFirstFileW");
  }
  Require(MFile::IsExist(TheFolders().Of(10).c_str()), "IsExist");
  Require(getLocalUTCDeltaForTimezone("Europe/Berlin", 2459762.5) > 0.08, "time zone");
}

void kv::bench::RegisterComparisons() {
  Comparison("getPreciseTime")
      .Add("library", getPreciseTime)
      .Add("limit QueryPerformanceCounter", [] {
        LARGE_INTEGER reading;
        ::QueryPerformanceCounter(&reading);
        return reading.QuadPart;
      });

  Comparison("getLocalUTCDeltaForTimezone")
      .Add("library", [] { return getLocalUTCDeltaForTimezone("Europe/Berlin", 2459762.5); })
      .Add("limit wait and release", [mutex = NamedMutex()] { mutex.WaitAndRelease(); });

  for (const char* name : {"asteroid_5.bin", "missing.bin"}) {
    const std::string path = TheFolders().Of(10) + name;
    Comparison(std::string("IsExist, ") + name)
        .Add("library", [path] { return MFile::IsExist(path.c_str()); })
        .Add("limit GetFileAttributesW",
             [path = Ascii2Unicode(path.c_str(), true)] { return Exists(path); });
  }

  for (const int count : Folders::kCounts) {
    const std::string folder = TheFolders().Of(count);
    Comparison("FindFiles, " + std::to_string(count) + " files")
        .Add("library", [folder] { return FindEntries(folder); })
        .Add("plain", [folder] { return ListPlainly(folder); })
        .Add("limit FindNextFileW", [pattern = Ascii2Unicode((folder + "*.*").c_str(), true)] {
          return CountEntries(pattern);
        });
  }
}
