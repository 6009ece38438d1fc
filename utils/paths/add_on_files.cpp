#include "utils/paths/add_on_files.h"

#include "utils/files/files.h"
#include "utils/internal/append_guard.h"
#include "utils/paths/paths.h"

#include <algorithm>

namespace kv::internal {

std::optional<PathText> AddOnFiles::Place(const Candidate& name) {
  auto& names = KelvarisPath::sFeaturePackFileNames;
  if (names.empty()) LoadList();
  if (names.empty()) return std::nullopt;
  const NameText text = name.Text();
  const NameText listed = ListedForm(text.View());
  const auto entry = std::find(names.begin(), names.end(), listed.View());
  if (text.IsOverlong() || entry == names.end()) return std::nullopt;
  PathText path(NameView(KelvarisPath::sFeaturePackFolder.c_str()));
  path.Append(*entry);
  return path;
}

// A missing or empty list leaves the names empty, so the next call looks for it again.
void AddOnFiles::LoadList() {
  if (isListSought_) return;
  isListSought_ = true;
  const std::string* path = search_.Find(
      Candidate("feature_pack:feature_pack_filelist.txt").In(KelvarisPath::ms_WorkDir));
  if (path == nullptr) return;
  MTextFile file(true, '!', '}', 4096);
  if (!file.Open(path->c_str(), false)) return;
  char line[256];
  if (file.Readln(line, sizeof line) <= 0) return;
  KelvarisPath::sFeaturePackFolder = line;
  AppendGuard names(KelvarisPath::sFeaturePackFileNames);
  while (file.Readln(line, sizeof line) > 0) {
    KelvarisPath::sFeaturePackFileNames.emplace_back(ListedForm(line).View());
  }
  names.Keep();
}

}  // namespace kv::internal

bool KelvarisPath::CheckFeaturePackFile(char* out, const char* name) {
  using namespace kv::internal;
  // The name may lie in the add-on's folder, which is read on the way.
  const NameText own(name == nullptr ? std::string_view() : NameView(name));
  PathSearch search;
  const std::optional<PathText> place = AddOnFiles(search).Place(Candidate(own.View()));
  CopyPath(out, place ? place->View() : PathText(own.View()).View());
  return place.has_value();
}
