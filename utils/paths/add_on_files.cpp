// The files that the add-on content folder supplies in place of the installation's own.
#include "utils/paths/paths.h"

#include "utils/files/files.h"
#include "utils/internal/path_text.h"
#include "utils/paths/data_name.h"
#include "utils/text/text.h"

#include <algorithm>

namespace {

using kv::internal::CandidateText;
using kv::internal::CopyPath;
using kv::internal::PathText;

// The form in which names are listed and compared: "\" between components, lower case.
CandidateText ListedForm(std::string_view name) {
  CandidateText listed;
  listed.Append(name);
  ReplaceChars(listed.GetFrom(0), ":\\/", '\\');
  kv::internal::MakeLowerCase(listed);
  return listed;
}

// A missing or empty list leaves the names empty, so the next question looks for it again.
void LoadList(const char* path) {
  MTextFile file(true, '!', '}', 4096);
  if (path == nullptr || !file.Open(path, false)) return;
  char line[256];
  if (file.Readln(line, sizeof line) <= 0) return;
  KelvarisPath::sFeaturePackFolder = line;
  while (file.Readln(line, sizeof line) > 0) {
    KelvarisPath::sFeaturePackFileNames.emplace_back(ListedForm(line).View());
  }
}

}  // namespace

bool KelvarisPath::CheckFeaturePackFile(char* out, const char* name) {
  if (name == nullptr) name = "";
  PathText mapped;
  mapped.Append(name);
  const CandidateText listed = ListedForm(name);
  if (sFeaturePackFileNames.empty()) {
    LoadList(CheckPath("feature_pack:feature_pack_filelist.txt", nullptr));
  }
  const auto entry =
      std::find(sFeaturePackFileNames.begin(), sFeaturePackFileNames.end(), listed.View());
  const bool isListed = !listed.IsOverlong() && entry != sFeaturePackFileNames.end();
  if (isListed) {
    mapped = PathText();
    mapped.Append(sFeaturePackFolder).Append(*entry);
  }
  CopyPath(out, mapped.View());
  return isListed;
}
