#include "utils/extra/file_status.h"
#include "utils/extra/path_explanation.h"
#include "utils/extra/resolver_state.h"
#include "utils/files/files.h"
#include "utils/internal/file_mode.h"
#include "utils/internal/path_text.h"
#include "utils/internal/wide_path.h"
#include "utils/paths/add_on_files.h"
#include "utils/paths/data_name.h"
#include "utils/paths/folder_listing.h"
#include "utils/paths/path_search.h"
#include "utils/paths/paths.h"

#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

namespace kv {
namespace {

using internal::AddOnFiles;
using internal::Candidate;
using internal::FileStatus;
using internal::FolderListing;
using internal::NameView;
using internal::NarrowPath;
using internal::PathSearch;
using internal::PathText;
using internal::StatusOf;
using internal::WidePath;

// Both files open and of the same bytes.
bool HoldTheSame(const char* first, const char* second) {
  constexpr unsigned kPiece = 64U << 10;
  MFile one;
  MFile other;
  if (!one.Open(first, internal::file_mode::kRead)) return false;
  if (!other.Open(second, internal::file_mode::kRead)) return false;
  const auto pieces = std::make_unique<char[]>(2 * std::size_t{kPiece});
  char* const piece = pieces.get();
  char* const otherPiece = piece + kPiece;
  for (;;) {
    const unsigned size = one.Read(piece, kPiece);
    if (other.Read(otherPiece, kPiece) != size) return false;
    if (std::memcmp(piece, otherPiece, size) != 0) return false;
    if (size == 0) return true;
  }
}

bool AreDifferent(const ShadowedFile& file, const FileStatus& own, const FileStatus& installed) {
  if (own.size != installed.size) return true;
  try {
    return !HoldTheSame(file.writablePath.c_str(), file.installedPath.c_str());
  } catch (const MException&) {
    return true;
  }
}

class ShadowSearch {
 public:
  explicit ShadowSearch(std::vector<ShadowedFile>& found) : found_(found) {}

  // `folder` is relative to the writable folder and empty or ends in "\".
  void Run(const std::string& folder) {
    const std::string pattern = KelvarisPath::ms_WritablePath + folder + "*";
    if (pattern.size() >= internal::kPathSize) return;  // nothing below is within reach
    const WidePath wide(pattern.c_str());
    for (FolderListing entry(wide.Get()); entry.IsValid(); entry.Next()) {
      const std::string name = NarrowPath(entry.Name());
      if (name.empty() || name == "." || name == "..") continue;
      if (!entry.IsFolder()) {
        Compare(folder + name);
      } else if (!entry.IsLink()) {
        Run(folder + name + "\\");
      }
    }
  }

 private:
  void Compare(const std::string& name) {
    const Candidate candidate(name);
    const auto place = addOnFiles_.Place(candidate);
    const PathText own = candidate.In(KelvarisPath::ms_WritablePath);
    const PathText installed =
        (place ? Candidate(place->View()) : candidate).In(KelvarisPath::ms_WorkDir);
    if (own.IsOverlong() || installed.IsOverlong()) return;
    const auto ownStatus = StatusOf(own.Get());
    const auto installedStatus = StatusOf(installed.Get());
    if (!ownStatus || !installedStatus || installedStatus->isFolder) return;

    ShadowedFile file = {name, own.Get(), installed.Get()};
    file.isInstalledNewer = installedStatus->modified > ownStatus->modified;
    file.isDifferent = AreDifferent(file, *ownStatus, *installedStatus);
    if (file.isInstalledNewer || file.isDifferent) found_.push_back(std::move(file));
  }

  std::vector<ShadowedFile>& found_;
  PathSearch search_;
  AddOnFiles addOnFiles_{search_};
};

// A data name of a folder as a path that is empty or ends in "\".
std::string AsRelativeFolder(const char* folder) {
  const PathText path = Candidate(NameView(folder == nullptr ? "" : folder)).In("");
  std::string relative(path.View());
  if (!relative.empty() && relative.back() != '\\') relative += '\\';
  return relative;
}

bool IsOneFolder() {
  const WidePath writable(KelvarisPath::ms_WritablePath);
  const WidePath work(KelvarisPath::ms_WorkDir);
  return internal::FullPath(writable) == internal::FullPath(work);
}

}  // namespace

std::vector<ShadowedFile> ListShadowed(const char* folder) {
  const KelvarisPath resolver;  // knows the folders from here on
  std::vector<ShadowedFile> found;
  if (IsOneFolder()) return found;
  const internal::KeptResolverState kept;
  ShadowSearch(found).Run(AsRelativeFolder(folder));
  return found;
}

}  // namespace kv
