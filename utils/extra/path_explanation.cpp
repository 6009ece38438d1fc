#include "utils/extra/path_explanation.h"

#include "utils/extra/file_status.h"
#include "utils/extra/resolver_state.h"
#include "utils/internal/path_text.h"
#include "utils/paths/add_on_files.h"
#include "utils/paths/data_name.h"
#include "utils/paths/path_passes.h"
#include "utils/paths/path_search.h"
#include "utils/paths/paths.h"
#include "utils/text/text.h"

#include <string_view>
#include <utility>

namespace kv {
namespace {

using internal::AddOnFiles;
using internal::Candidate;
using internal::NameText;
using internal::NameView;
using internal::PathSearch;
using internal::PathText;

// Goes on behind the answer, so that FindInPasses comes to every place.
class NotedSearch {
 public:
  explicit NotedSearch(PathExplanation& explanation) : explanation_(explanation) {}

  bool InWritableFolder(const Candidate& candidate) {
    ++pass_;
    Note(DataFolder::kWritable, candidate, KelvarisPath::ms_WritablePath, candidate, false);
    return false;
  }

  bool InWorkFolder(const Candidate& candidate) {
    const auto place = addOnFiles_.Place(candidate);
    Note(DataFolder::kWork, candidate, KelvarisPath::ms_WorkDir,
         place ? Candidate(place->View()) : candidate, place.has_value());
    return false;
  }

 private:
  // `place` is where the folder has the candidate.
  void Note(DataFolder folder, const Candidate& candidate, const char* root, const Candidate& place,
            bool isAddOn) {
    PathCandidate noted;
    noted.pass = pass_;
    noted.folder = folder;
    noted.name = candidate.Text().View();
    noted.isAddOn = isAddOn;
    if (!place.IsEmpty()) Look(noted, place.In(root));
    explanation_.candidates.push_back(std::move(noted));
  }

  void Look(PathCandidate& noted, const PathText& path) {
    noted.path = path.View();
    if (path.IsOverlong()) return;
    const auto& storage = KelvarisPath::ms_FileNamesStorage;
    const auto remembered = storage.find(GetUniqueID(path.Get()));
    if (remembered != storage.end()) {
      noted.isRemembered = true;
      noted.remembered = remembered->second;
    }
    if (const auto status = internal::StatusOf(path.Get())) {
      noted.exists = true;
      noted.isFolder = status->isFolder;
      noted.size = status->size;
      noted.modified = internal::UnixSeconds(status->modified);
    }
    if (explanation_.winner < 0) Ask(path);
  }

  void Ask(const PathText& path) {
    const std::string* answer = search_.Find(path);
    if (answer == nullptr) return;
    explanation_.winner = static_cast<int>(explanation_.candidates.size());
    explanation_.answer = *answer;
  }

  PathExplanation& explanation_;
  int pass_ = -1;
  PathSearch search_;
  AddOnFiles addOnFiles_{search_};
};

}  // namespace

PathExplanation ExplainPath(const char* name) {
  const KelvarisPath resolver;  // knows the folders from here on
  PathExplanation explanation;
  if (name == nullptr || NameView(name).size() > NameText::kMaxSize) return explanation;
  const internal::KeptResolverState kept;
  NotedSearch search(explanation);
  internal::FindInPasses(search, NameView(KelvarisPath::ms_LanguageFolder.c_str()), NameView(name));
  return explanation;
}

}  // namespace kv
