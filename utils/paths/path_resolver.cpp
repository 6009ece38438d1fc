#include "utils/paths/paths.h"

#include "utils/files/files.h"
#include "utils/internal/path_text.h"
#include "utils/paths/data_name.h"
#include "utils/text/text.h"

#include <cstring>

namespace {

using kv::internal::AppendDataName;
using kv::internal::CandidateText;
using kv::internal::CopyPath;
using kv::internal::kPathSize;
using kv::internal::PathText;

// `base` and `name` as one path; over-long when they do not fit.
PathText Join(const char* base, std::string_view name) {
  PathText path;
  path.Append(base);
  AppendDataName(path, name);
  return path;
}

}  // namespace

KelvarisPath::KelvarisPath(const KelvarisPath& other) = default;

KelvarisPath& KelvarisPath::operator=(const KelvarisPath& other) = default;

KelvarisPath::~KelvarisPath() = default;

const char* KelvarisPath::GetPath(const char* name) {
  if (name == nullptr) return nullptr;
  const CandidateText plain = CandidateText().Append(name);
  if (plain.IsOverlong()) return nullptr;

  const auto search = [this](const CandidateText& candidate) -> const char* {
    if (const char* path = CheckPath(candidate.Get(), ms_WritablePath)) return path;
    char mapped[kPathSize];
    return CheckFeaturePackFile(mapped, candidate.Get()) ? CheckPath(mapped, nullptr)
                                                         : CheckPath(candidate.Get(), nullptr);
  };
  const auto variant = [](const CandidateText& candidate) {
    return kv::internal::LanguageVariant(ms_LanguageFolder, candidate.View());
  };

  if (const char* path = search(variant(plain))) return path;
  // A name that lower-casing leaves alone has the same candidates again in the lower-case passes.
  CandidateText lower = plain;
  const bool hasCapitals = kv::internal::MakeLowerCase(lower);
  if (hasCapitals) {
    if (const char* path = search(variant(lower))) return path;
  }
  if (const char* path = search(plain)) return path;
  return hasCapitals ? search(lower) : nullptr;
}

const char* KelvarisPath::CheckPath(const char* name, const char* base) {
  if (name == nullptr || *name == '\0') return nullptr;
  const PathText candidate = Join(base == nullptr ? ms_WorkDir : base, name);
  if (candidate.IsOverlong()) return nullptr;

  const int identifier = GetUniqueID(candidate.Get());
  const auto remembered = ms_FileNamesStorage.find(identifier);
  if (remembered != ms_FileNamesStorage.end()) {
    return CopyPath(m_Buffer.get(), remembered->second) ? m_Buffer.get() : nullptr;
  }
  if (!MFile::IsExist(candidate.Get())) return nullptr;
  ms_FileNamesStorage.emplace(identifier, candidate.View());
  CopyPath(m_Buffer.get(), candidate.View());
  return m_Buffer.get();
}

const char* KelvarisPath::GetWorkPath(const char* name, bool mustExist, bool inWritable) {
  if (name == nullptr) return nullptr;
  const CandidateText ownName =
      CandidateText().Append(name);  // `name` may lie in the result buffer
  if (ownName.IsOverlong()) return nullptr;
  if (const char* path = CheckPath(ownName.Get(), ms_WritablePath)) return path;
  const PathText fallback = Join(inWritable ? ms_WritablePath : ms_WorkDir, ownName.View());
  if (fallback.IsOverlong()) return nullptr;
  if (mustExist && !MFile::IsExist(fallback.Get())) return nullptr;
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
  const CandidateText variant =
      kv::internal::LanguageVariant(ms_LanguageFolder, name == nullptr ? "" : name);
  if (!CopyPath(out, variant.View())) out[0] = '\0';
  return true;
}

bool KelvarisPath::IsSearchFileInCD(const char* /*name*/) { return false; }
