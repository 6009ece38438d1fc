#include "utils/paths/paths.h"

#include "utils/internal/path_text.h"
#include "utils/paths/add_on_files.h"
#include "utils/paths/data_name.h"
#include "utils/paths/path_passes.h"
#include "utils/paths/path_search.h"

#include <cstring>
#include <string_view>

namespace {

using kv::internal::AddOnFiles;
using kv::internal::Candidate;
using kv::internal::CopyPath;
using kv::internal::FindInPasses;
using kv::internal::NameText;
using kv::internal::NameView;
using kv::internal::PathSearch;
using kv::internal::PathText;

// One call that looks for a name.
class NameSearch {
 public:
  explicit NameSearch(char* answer) : answer_(answer) {}

  // The answer for the candidate in the folder, or null.
  const char* In(const char* folder, const Candidate& candidate) {
    if (candidate.IsEmpty()) return nullptr;
    const std::string* path = search_.Find(candidate.In(folder));
    if (path == nullptr) return nullptr;
    CopyPath(answer_, *path);
    return answer_;
  }

  const char* InWritableFolder(const Candidate& candidate) {
    return In(KelvarisPath::ms_WritablePath, candidate);
  }

  // Where the work folder or its add-on has the candidate.
  const char* InWorkFolder(const Candidate& candidate) {
    const auto place = addOnFiles_.Place(candidate);
    return In(KelvarisPath::ms_WorkDir, place ? Candidate(place->View()) : candidate);
  }

  bool Exists(const PathText& path) { return search_.Exists(path); }

 private:
  char* answer_;
  PathSearch search_;
  AddOnFiles addOnFiles_{search_};
};

}  // namespace

KelvarisPath::KelvarisPath(const KelvarisPath& other) = default;

KelvarisPath& KelvarisPath::operator=(const KelvarisPath& other) = default;

KelvarisPath::~KelvarisPath() = default;

const char* KelvarisPath::GetPath(const char* name) {
  if (name == nullptr) return nullptr;
  const std::string_view given = NameView(name);
  if (given.size() > NameText::kMaxSize) return nullptr;
  NameSearch search(m_Buffer.get());
  return FindInPasses(search, NameView(ms_LanguageFolder.c_str()), given);
}

const char* KelvarisPath::CheckPath(const char* name, const char* base) {
  if (name == nullptr) return nullptr;
  const char* folder = base == nullptr ? ms_WorkDir : base;
  return NameSearch(m_Buffer.get()).In(folder, Candidate(NameView(name)));
}

const char* KelvarisPath::GetWorkPath(const char* name, bool mustExist, bool inWritable) {
  if (name == nullptr) return nullptr;
  NameSearch search(m_Buffer.get());
  const Candidate candidate(NameView(name));
  if (const char* path = search.In(ms_WritablePath, candidate)) return path;
  const PathText fallback = candidate.In(inWritable ? ms_WritablePath : ms_WorkDir);
  if (fallback.IsOverlong()) return nullptr;
  if (mustExist && !search.Exists(fallback)) return nullptr;
  CopyPath(m_Buffer.get(), fallback.View());
  return m_Buffer.get();
}

const char* KelvarisPath::FromCDtoWorkPath(const char* path) {
  if (path == nullptr) return nullptr;
  if (const char* medium = std::strstr(path, ms_CDPath)) {
    return GetWorkPath(medium + std::strlen(ms_CDPath), false, false);
  }
  return CopyPath(m_Buffer.get(), path) ? m_Buffer.get() : nullptr;
}

const char* KelvarisPath::GetEphemerisPath() { return GetPath("de441pc"); }

std::string KelvarisPath::GetDictionaryFilesFolder() {
  const char* path = GetPath("media:information:");
  return path == nullptr ? std::string() : std::string(path);
}

const char* KelvarisPath::GetCDPath() { return ms_CDPath; }
const char* KelvarisPath::GetWorkFolder() { return ms_WorkDir; }
const char* KelvarisPath::GetWritableFolder() { return ms_WritablePath; }
const char* KelvarisPath::GetUserFolder() { return ms_UserPath; }
const char* KelvarisPath::GetWorkspacesFolder() { return ms_WorkspacesFolder; }
const char* KelvarisPath::GetGuidedToursFolder() { return ms_GuidedToursFolder; }

bool KelvarisPath::CheckLocalFiles(char* out, const char* name) {
  const Candidate variant(NameView(ms_LanguageFolder.c_str()), name == nullptr ? "" : name);
  if (!CopyPath(out, variant.Text().View())) out[0] = '\0';
  return true;
}

bool KelvarisPath::IsSearchFileInCD(const char* /*name*/) { return false; }
