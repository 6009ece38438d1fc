#include "examples/tour/workshop.h"

#include "examples/tour/section.h"
#include "utils/files/files.h"
#include "utils/paths/paths.h"

#include <filesystem>
#include <optional>
#include <system_error>
#include <vector>

namespace tour {
namespace {

namespace fs = std::filesystem;

std::string Utf8(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

fs::path SystemPath(const std::string& utf8) { return {std::u8string(utf8.begin(), utf8.end())}; }

// The sections' own paths below the folder take the rest of the 259 bytes that the library takes.
constexpr std::size_t kLongestFolder = 180;

// A folder that was not there before, so that nothing of anybody else's is ever removed with it.
std::optional<fs::path> MakeNewFolder(const fs::path& parent) {
  constexpr int kMostTries = 1000;
  for (int number = 1; number <= kMostTries; ++number) {
    const fs::path folder = parent / ("kvutils-tour-" + std::to_string(number));
    std::error_code error;
    if (fs::create_directory(folder, error)) return folder;
    if (error && !fs::exists(folder, error)) return std::nullopt;
  }
  return std::nullopt;
}

std::string NewTemporaryFolder() {
  std::error_code error;
  const fs::path parent = fs::temp_directory_path(error);
  const std::optional<fs::path> folder = error ? std::nullopt : MakeNewFolder(parent);
  if (folder) return Utf8(*folder) + "\\";
  throw Failure("no folder can be made in the one for temporary files (TMP) " + Utf8(parent));
}

bool RemoveFolder(const fs::path& folder) {
  std::error_code error;
  // A read-only file cannot be removed: an archive may hold some.
  for (fs::recursive_directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    std::error_code ignored;
    fs::permissions(entry->path(), fs::perms::owner_write, fs::perm_options::add, ignored);
  }
  fs::remove_all(folder, error);
  return !fs::exists(folder, error);
}

// The library keeps the paths it has found, so it forgets them with the folder.
void SetWritableFolder(const std::string& folder) {
  KelvarisPath::SetWritableFolder(folder.c_str());
  KelvarisPath::ClearFileNamesStorage();
}

}  // namespace

Workshop::Workshop() {
  KelvarisPath folders;
  writableFolder_ = folders.GetWritableFolder();
  folder_ = NewTemporaryFolder();
  if (folder_.size() > kLongestFolder) {
    RemoveFolder(SystemPath(folder_));
    throw Failure("the path of the folder for temporary files (TMP) is too long: " + folder_);
  }
  SetWritableFolder(folder_);
}

Workshop::~Workshop() { Remove(); }

bool Workshop::Remove() {
  SetWritableFolder(writableFolder_);
  return RemoveFolder(SystemPath(folder_));
}

std::string Workshop::Bring(const char* dataName, const std::string& place) const {
  KelvarisPath resolver;
  const char* const found = resolver.GetPath(dataName);
  if (found == nullptr) throw Failure(std::string(dataName) + " is not found");
  const std::string source = found;
  const std::string target = folder_ + place;
  CheckFileFolder(target.c_str());
  CopyFilesFromList(std::vector{source}, std::vector{target});
  if (!MFile::IsExist(target.c_str()) || FileCompare(target.c_str(), source.c_str()) != 0) {
    throw Failure(source + " cannot be copied to " + target);
  }
  return target;
}

}  // namespace tour
