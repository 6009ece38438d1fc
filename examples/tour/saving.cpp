#include "examples/tour/saving.h"

#include "examples/tour/installation.h"
#include "utils/files/files.h"
#include "utils/paths/paths.h"

namespace tour {
namespace {

// Opens the file as the store will, but leaves its content, and leaves no file where none was.
bool CanBeWritten(const std::string& path) {
  constexpr unsigned kWriteMode = 4;
  const bool wasThere = MFile::IsExist(path.c_str());
  MFile file;
  if (!file.Open(path.c_str(), kWriteMode)) return false;
  file.Close();
  return wasThere || MFile::DeleteFileA(path.c_str());
}

}  // namespace

std::string SavingObstacle() {
  KelvarisPath resolver;
  if (!IsFolder(resolver.GetWritableFolder())) {
    return "your folder, where it would be saved, is no folder";
  }
  const char* const place = resolver.GetWorkPath(kRecordsName, false, true);
  if (place == nullptr) return "the path of the file to save it in would be too long";
  const std::string path = place;
  CheckFileFolder(path.c_str());
  const std::string folder = path.substr(0, path.rfind('\\'));
  if (!IsFolder(folder.c_str())) return "the folder to save it in cannot be made: " + folder;
  return CanBeWritten(path) ? "" : "the file to save it in cannot be written: " + path;
}

}  // namespace tour
