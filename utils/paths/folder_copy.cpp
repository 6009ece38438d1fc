#include "utils/paths/paths.h"

#include "utils/internal/fail_fast.h"
#include "utils/internal/path_text.h"
#include "utils/internal/wide_path.h"
#include "utils/internal/win32.h"

#include <algorithm>
#include <cstring>

namespace {

using kv::internal::PathText;
using kv::internal::WidePath;

void CopyOver(const WidePath& source, const WidePath& target) {
  ::CopyFileW(source.Get(), target.Get(), FALSE);
}

bool IsText(const std::wstring& text) {
  return !text.empty() && text.find(L'\0') == std::wstring::npos;
}

// A file of a folder; over-long when it does not fit in a path buffer.
PathText FileIn(const char* folder, const std::string& name) {
  PathText path;
  path.Append(folder).Append("\\").Append(name.c_str());
  return path;
}

}  // namespace

void CopyFolder(const char* /*from*/, const char* folder, HWND__* owner) {
  constexpr std::size_t kMaxLength = 510;
  const std::size_t length = folder == nullptr ? 0 : std::strlen(folder);
  if (length == 0 || length > kMaxLength) return;
  // Callers rely on source and target being the same. A second NUL ends the list of paths.
  const std::string paths = std::string(folder, length) + '\0';
  SHFILEOPSTRUCTA operation = {};
  operation.hwnd = owner;
  operation.wFunc = FO_COPY;
  operation.pFrom = paths.c_str();
  operation.pTo = paths.c_str();
  operation.fFlags = FOF_SILENT;
  ::SHFileOperationA(&operation);
}

bool CopyDirTo(const std::wstring& source, const std::wstring& target) {
  const std::wstring everything = source + L"\\*";
  // Callers rely on the end of the process for a path that the shell does not take.
  if (std::max(everything.size(), target.size()) >= MAX_PATH) {
    kv::internal::FailFast(kv::internal::FatalError::kInvalidParameter);
  }
  if (!IsText(source) || !IsText(target)) return false;
  const std::wstring from = everything + L'\0';  // a second NUL ends each list of paths
  const std::wstring to = target + L'\0';
  SHFILEOPSTRUCTW operation = {};
  operation.wFunc = FO_COPY;
  operation.pFrom = from.c_str();
  operation.pTo = to.c_str();
  operation.fFlags = FOF_SILENT | FOF_NOCONFIRMATION | FOF_NOCONFIRMMKDIR | FOF_NOERRORUI;
  return ::SHFileOperationW(&operation) == 0;
}

void CopyFilesFromList(const std::vector<std::string>& sources,
                       const std::vector<std::string>& targets) {
  const std::size_t count = std::min(sources.size(), targets.size());
  for (std::size_t i = 0; i < count; ++i) {
    CopyOver(WidePath(sources[i].c_str()), WidePath(targets[i].c_str()));
  }
}

void CopyFilesFromList(const std::vector<std::string>& names, const char* sourceFolder,
                       const char* targetFolder) {
  if (sourceFolder == nullptr || *sourceFolder == '\0' || targetFolder == nullptr ||
      *targetFolder == '\0') {
    return;
  }
  for (const std::string& name : names) {
    const PathText source = FileIn(sourceFolder, name);
    const PathText target = FileIn(targetFolder, name);
    const WidePath wideSource(source.Get());
    const WidePath wideTarget(target.Get());
    if (wideSource.IsEmpty() || wideTarget.IsEmpty()) continue;
    // Callers rely on the folders of both sides being made.
    CheckFileFolder(source.Get());
    CheckFileFolder(target.Get());
    CopyOver(wideSource, wideTarget);
  }
}
