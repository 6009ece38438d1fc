#include "utils/paths/paths.h"

#include "utils/internal/path_text.h"
#include "utils/internal/text_view.h"
#include "utils/internal/wide_path.h"
#include "utils/paths/folder_listing.h"
#include "utils/text/text.h"

#include <cstring>
#include <cwchar>
#include <string_view>

namespace {

using kv::internal::FolderListing;
using kv::internal::kPathSize;
using kv::internal::PathText;
using kv::internal::WidePath;

// How many names a full path begins with that together are one root, of a drive, a share, a volume
// or a device. The empty name in front of "\\" counts.
std::size_t NamesOfRoot(const std::vector<std::wstring>& names) {
  if (names.empty() || !names[0].empty()) return 1;  // C:
  const bool isVerbatim = names.size() > 2 && (names[1] == L"?" || names[1] == L".");
  if (isVerbatim && ::_wcsicmp(names[2].c_str(), L"UNC") == 0) return 5;  // \\?\UNC\x\y
  return 3;                                                               // \\x\y, \\?\C:
}

// True for a drive alone, which the system takes for the current folder of that drive, and for
// every way to write a root.
bool IsDriveOrRoot(const WidePath& path, const std::wstring& fullPath) {
  if (path.View().ends_with(L':')) return true;
  std::vector<std::wstring> names;
  GetTokens(names, fullPath, '\\');
  return names.size() <= NamesOfRoot(names);
}

// A shell that has no room for the full form of a path deletes what is in the current folder.
bool IsRemovable(const WidePath& path) {
  const std::wstring fullPath = kv::internal::FullPath(path);
  return fullPath.size() < MAX_PATH && !IsDriveOrRoot(path, fullPath);
}

void ShellDelete(std::wstring_view path) {
  const std::wstring paths = std::wstring(path) + L'\0';  // a second NUL ends the list of paths
  SHFILEOPSTRUCTW operation = {};
  operation.wFunc = FO_DELETE;
  operation.pFrom = paths.c_str();
  operation.fFlags = FOF_NOCONFIRMATION;
  ::SHFileOperationW(&operation);
}

void DeleteEntry(const std::wstring& path, const FolderListing& entry) {
  if (entry.IsReadOnly()) {
    ::SetFileAttributesW(path.c_str(), entry.Attributes() & ~DWORD{FILE_ATTRIBUTE_READONLY});
  }
  ::DeleteFileW(path.c_str());
}

}  // namespace

void DeleteFolder(const char* folder) {
  std::string_view text = kv::internal::ViewOf(folder);
  if (text.size() >= kPathSize) return;
  if (text.ends_with('\\')) text.remove_suffix(1);
  const WidePath path(PathText(text).Get());
  if (!path.IsEmpty() && IsRemovable(path)) ShellDelete(path.View());
}

void DeleteFolder(const char* folder, const char* mask) {
  if (folder == nullptr || *folder == '\0' || mask == nullptr) return;
  // A mask with a folder in it would find the names of one folder and delete them in another.
  if (std::strpbrk(mask, "\\/:") != nullptr) return;
  const std::string_view separator = std::string_view(folder).ends_with('\\') ? "" : "\\";
  PathText base(folder);
  base.Append(separator);
  const WidePath wideBase(base.Get());
  const WidePath widePattern(base.Append(mask).Get());
  if (wideBase.IsEmpty() || widePattern.IsEmpty()) return;
  for (FolderListing entry(widePattern.Get()); entry.IsValid(); entry.Next()) {
    if (entry.IsFolder()) continue;
    DeleteEntry(std::wstring(wideBase.View()).append(entry.Name()), entry);
  }
}

void deleteUserFolderContent() {
  const KelvarisPath resolver;  // finds the writable folder
  DeleteFolder(KelvarisPath::ms_WritablePath);
  KelvarisPath::ClearFileNamesStorage();
}
