// The folders, lists and remembered paths of the process, and their discovery by the first
// resolver.
#include "utils/paths/paths.h"

#include "utils/files/files.h"
#include "utils/internal/append_guard.h"
#include "utils/internal/path_text.h"
#include "utils/internal/wide_path.h"
#include "utils/internal/win32.h"
#include "utils/text/text.h"

char KelvarisPath::ms_ExePath[260];
char KelvarisPath::ms_WorkDir[260];
char KelvarisPath::ms_CDPath[260];
char KelvarisPath::ms_WritablePath[260];
char KelvarisPath::ms_UserPath[260];
char KelvarisPath::ms_WorkspacesFolder[260];
char KelvarisPath::ms_GuidedToursFolder[260];
std::string KelvarisPath::ms_LanguageFolder = "en";
SetupType KelvarisPath::ms_SetupType = kSetupTypeUnknown;
bool KelvarisPath::ms_IsInit = false;
std::map<int, std::string> KelvarisPath::ms_FileNamesStorage;
std::vector<std::string> KelvarisPath::ms_CDFolders;
std::vector<std::string> KelvarisPath::ms_ThemePaths;
std::vector<std::string> KelvarisPath::ms_WritablePaths;
std::string KelvarisPath::sFeaturePackFolder;
std::vector<std::string> KelvarisPath::sFeaturePackFileNames;

namespace {

using kv::internal::AppendGuard;
using kv::internal::CopyPath;
using kv::internal::kPathSize;
using kv::internal::PathText;

constexpr char kListFile[] = "media:fileutils.ini";

std::wstring DocumentsDirectory() {
  wchar_t path[kPathSize] = L"";
  ::SHGetFolderPathW(nullptr, CSIDL_PERSONAL, nullptr, SHGFP_TYPE_CURRENT, path);
  return path;
}

// True when the folder exists, or was created, and is a folder.
bool EnsureFolder(const std::wstring& path) {
  return kv::internal::IsExistingFolder(path.c_str()) ||
         ::CreateDirectoryW(path.c_str(), nullptr) != 0;
}

// Appends the lines up to a "}" line, which ends the block. False at the end of the file, which
// ends this block and all after it.
bool ReadBlock(MTextFile& file, std::vector<std::string>& lines) {
  constexpr int kEndMarker = -2;
  char line[256];
  int length = file.Readln(line, sizeof line);
  for (; length >= 0; length = file.Readln(line, sizeof line)) lines.emplace_back(line);
  return length == kEndMarker;
}

}  // namespace

KelvarisPath::KelvarisPath() : m_Buffer(std::make_shared_for_overwrite<char[]>(kPathSize)) {
  if (ms_IsInit) return;
  if (!GetCDPath(ms_CDPath, kPathSize)) {
    throw MException(0, "KelvarisPath::GetCDPath return false");
  }
  CopyPath(ms_WorkDir, ms_CDPath);
  ms_WritablePath[0] = '\0';
  GetWritableDir(ms_WritablePath, kPathSize);
  PrintDebugString("Kelvaris writable folder is %s\n", ms_WritablePath);
  CopyPath(ms_UserPath, ms_WritablePath);
  if (ms_WritablePath[0] != '\0') {
    PathText workspaces;
    workspaces.Append(ms_WritablePath).Append("workspaces");
    CopyPath(ms_WorkspacesFolder, workspaces.View());
    MakeFolder(ms_WorkspacesFolder);
  }

  MTextFile file(true, '!', '}', 4096);
  const char* path = GetPath(kListFile);
  if (path == nullptr || !file.Open(path, false)) {
    PrintDebugString("File %s not found\n", kListFile);
  }
  AppendGuard mediumFolders(ms_CDFolders);
  AppendGuard themePaths(ms_ThemePaths);
  AppendGuard writablePaths(ms_WritablePaths);
  if (ReadBlock(file, ms_CDFolders) && ReadBlock(file, ms_ThemePaths)) {
    ReadBlock(file, ms_WritablePaths);
  }
  mediumFolders.Keep();
  themePaths.Keep();
  writablePaths.Keep();
  ms_IsInit = true;
}

bool KelvarisPath::GetWorkDir(char* out, unsigned size) {
  const std::string folder = kv::internal::NarrowPath(kv::internal::CurrentFolder()) + '\\';
  if (folder.size() < 2 || folder.size() >= size) return false;
  folder.copy(out, folder.size());
  out[folder.size()] = '\0';
  return true;
}

bool KelvarisPath::GetCDPath(char* out, unsigned size) { return GetWorkDir(out, size); }

bool KelvarisPath::GetWorkDir2(char* /*out*/, unsigned /*size*/) { return false; }

bool KelvarisPath::GetWritableDir(char* out, unsigned /*size*/) {
  const std::wstring folder = DocumentsDirectory() + L"\\Kelvaris_9";
  const bool isFolder = EnsureFolder(folder);
  // Three bytes stand for a character beyond the Basic Multilingual Plane. Callers rely on this
  // text of the writable folder.
  char text[kPathSize];
  int capacity = kPathSize - 1;
  const int length = utf16_to_utf8(text, capacity, folder.c_str(), static_cast<int>(folder.size()));
  PathText path;
  if (length >= 0) path.Append({text, static_cast<std::size_t>(length)}).Append("\\");
  CopyPath(out, path.View());
  return isFolder;
}

void KelvarisPath::SetWritableFolder(const char* path) {
  if (path != nullptr) CopyPath(ms_WritablePath, path);
}

void KelvarisPath::SetLocaleFolder(const char* folder) {
  ms_LanguageFolder = folder == nullptr ? "" : folder;
}

const char* KelvarisPath::GetLocaleFolder() { return ms_LanguageFolder.c_str(); }

void KelvarisPath::ClearFileNamesStorage() { ms_FileNamesStorage.clear(); }

void KelvarisPath::Done() {
  ms_FileNamesStorage.clear();
  sFeaturePackFileNames.clear();
  ms_WritablePaths.clear();
  ms_CDFolders.clear();
  ms_ThemePaths.clear();
}
