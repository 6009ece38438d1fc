// A folder of entries that no file system of the test machine can hold, in place of the system's
// listing.
#ifndef KVUTILS_TESTS_PATHS_LISTING_STAND_IN_H_
#define KVUTILS_TESTS_PATHS_LISTING_STAND_IN_H_

#include <windows.h>

#include <string>
#include <vector>

#include "tests/support/import_patch.h"

namespace kv::test {

struct StandInEntry {
  std::wstring name;
  DWORD attributes;
};

// While it lives, every first listing of the library gives these entries, each further one nothing.
class ListingStandIn {
 public:
  explicit ListingStandIn(std::vector<StandInEntry> entries) {
    entries_ = std::move(entries);
    patterns_.clear();
    next_ = 0;
    closed_ = 0;
  }
  ListingStandIn(const ListingStandIn&) = delete;
  ListingStandIn& operator=(const ListingStandIn&) = delete;

  const std::vector<std::wstring>& Patterns() const { return patterns_; }  // as they were asked for
  int Closed() const { return closed_; }

 private:
  static HANDLE WINAPI First(LPCWSTR pattern, WIN32_FIND_DATAW* data) {
    patterns_.emplace_back(pattern);
    if (patterns_.size() > 1 || !Next(nullptr, data)) return INVALID_HANDLE_VALUE;
    return &entries_;
  }
  static BOOL WINAPI Next(HANDLE, WIN32_FIND_DATAW* data) {
    if (next_ == entries_.size()) return FALSE;
    const StandInEntry& entry = entries_[next_++];
    *data = {};
    data->dwFileAttributes = entry.attributes;
    entry.name.copy(data->cFileName, MAX_PATH - 1);
    return TRUE;
  }
  static BOOL WINAPI Close(HANDLE) {
    ++closed_;
    return TRUE;
  }

  static inline std::vector<StandInEntry> entries_;
  static inline std::vector<std::wstring> patterns_;
  static inline std::size_t next_ = 0;
  static inline int closed_ = 0;

  ImportPatch first_{"FindFirstFileW", &First};
  ImportPatch nextPatch_{"FindNextFileW", &Next};
  ImportPatch close_{"FindClose", &Close};
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_PATHS_LISTING_STAND_IN_H_
