#ifndef KVUTILS_UTILS_PATHS_FOLDER_IDENTITY_H_
#define KVUTILS_UTILS_PATHS_FOLDER_IDENTITY_H_

#include "utils/internal/wide_path.h"
#include "utils/internal/win32.h"

#include <optional>

namespace kv::internal {

// What tells one folder from another whatever path and link leads to it.
struct FolderIdentity {
  DWORD volume;
  DWORD indexHigh;
  DWORD indexLow;

  bool operator==(const FolderIdentity&) const = default;
};

// None when the system does not tell.
inline std::optional<FolderIdentity> IdentityOf(const WidePath& folder) {
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const UniqueFileHandle handle(::CreateFileW(folder.Get(), 0, kShareAll, nullptr, OPEN_EXISTING,
                                              FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  BY_HANDLE_FILE_INFORMATION information;
  if (!handle || !::GetFileInformationByHandle(handle.Get(), &information)) return std::nullopt;
  return FolderIdentity{information.dwVolumeSerialNumber, information.nFileIndexHigh,
                        information.nFileIndexLow};
}

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_PATHS_FOLDER_IDENTITY_H_
