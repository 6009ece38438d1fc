// The entries of a folder, one after another.
#ifndef KVUTILS_UTILS_PATHS_FOLDER_LISTING_H_
#define KVUTILS_UTILS_PATHS_FOLDER_LISTING_H_

#include "utils/internal/win32.h"

#include <string_view>

namespace kv::internal {

//   for (FolderListing entry(L"C:\\u\\*.*"); entry.IsValid(); entry.Next()) Use(entry.Name());
//
// Entries come in the order of the file system, "." and ".." among them. A folder that cannot be
// listed has none.
class FolderListing {
 public:
  explicit FolderListing(const wchar_t* pattern)
      : handle_(::FindFirstFileW(pattern, &data_)), isValid_(handle_) {}

  [[nodiscard]] bool IsValid() const { return isValid_; }
  void Next() { isValid_ = ::FindNextFileW(handle_.Get(), &data_) != 0; }

  // Of the current entry; the name is good until the next one.
  [[nodiscard]] std::wstring_view Name() const { return data_.cFileName; }
  [[nodiscard]] bool IsFolder() const { return Has(FILE_ATTRIBUTE_DIRECTORY); }
  [[nodiscard]] bool IsLink() const { return Has(FILE_ATTRIBUTE_REPARSE_POINT); }
  [[nodiscard]] bool IsReadOnly() const { return Has(FILE_ATTRIBUTE_READONLY); }
  [[nodiscard]] unsigned long Attributes() const { return data_.dwFileAttributes; }

 private:
  [[nodiscard]] bool Has(DWORD attribute) const {
    return (data_.dwFileAttributes & attribute) != 0;
  }

  WIN32_FIND_DATAW data_;
  UniqueFindHandle handle_;
  bool isValid_;
};

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_PATHS_FOLDER_LISTING_H_
