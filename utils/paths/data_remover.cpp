#include "utils/paths/paths.h"

#include "utils/files/files.h"
#include "utils/internal/path_text.h"
#include "utils/internal/wide_path.h"
#include "utils/internal/win32.h"
#include "utils/text/text.h"

#include <string_view>

namespace {

using kv::internal::PathText;
using kv::internal::WidePath;

struct Root {
  const char* keyword;
  bool base;
  bool languages;
};
constexpr Root kRoots[] = {{"all", true, true}, {"base", true, false}, {"languages", false, true}};

// Reads the descriptors of one list. Callers rely on an unknown root or mode keeping the flags of
// the descriptor before.
class DescriptorReader {
 public:
  // False for a descriptor that is not to be applied: a null one, and one of no field or of three.
  bool Read(const char* text, KvRemoveFolderDesc& desc) {
    std::vector<std::string> fields;
    if (!GetTokens(fields, text, ";")) return false;
    for (const Root& root : kRoots) {
      if (fields[0] == root.keyword) SetRoot(root);
    }
    if (fields.size() > 2 && fields[2] == "delete") deleteListed_ = true;
    if (fields.size() > 2 && fields[2] == "not_delete") deleteListed_ = false;
    if (fields.size() == 3) return false;

    desc = {base_, languages_, {}, deleteListed_, {}};
    if (fields.size() > 1) desc.folder = fields[1];
    if (fields.size() > 3) GetTokens(desc.files, fields[3].c_str(), ",");
    return true;
  }

 private:
  void SetRoot(const Root& root) {
    base_ = root.base;
    languages_ = root.languages;
  }

  bool base_ = false;
  bool languages_ = false;
  bool deleteListed_ = true;
};

// The full path with one "\" at its end.
std::wstring FullFolder(const char* path) {
  std::wstring full = kv::internal::FullPath(WidePath(path));
  while (full.ends_with(L'\\')) full.pop_back();
  return full + L'\\';
}

// Whether one of the folders of a full path, from the given place on, is a link.
bool HoldsLink(std::wstring path, std::size_t from) {
  for (std::size_t end = path.find(L'\\', from); end != std::wstring::npos;
       end = path.find(L'\\', end + 1)) {
    path[end] = L'\0';
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    path[end] = L'\\';
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
      return true;
    }
  }
  return false;
}

bool BeginsWith(const std::wstring& path, const std::wstring& folder) {
  const int size = static_cast<int>(folder.size());
  return path.size() >= folder.size() &&
         ::CompareStringOrdinal(path.c_str(), size, folder.c_str(), size, TRUE) == CSTR_EQUAL;
}

// Whether a path lies at or below the writable folder, without a link on the way.
bool IsInWritableFolder(const char* path) {
  const std::wstring folder = FullFolder(KelvarisPath::ms_WritablePath);
  const std::wstring inside = FullFolder(path);
  return BeginsWith(inside, folder) && !HoldsLink(inside, folder.size());
}

// True for what exists at or below the writable folder. An over-long path is empty here and names
// nothing.
bool IsRemovable(const PathText& path) {
  return KelvarisPath::ms_WritablePath[0] != '\0' && MFile::IsExist(path.Get()) &&
         IsInWritableFolder(path.Get());
}

PathText BaseFolder(std::string_view folder) {
  PathText path(KelvarisPath::ms_WritablePath);
  path.Append(folder);
  return path;
}

PathText LanguageFolder(std::string_view language, std::string_view folder) {
  return BaseFolder(language).Append("\\").Append(folder);
}

// A line of the language list may lead back to the writable folder itself, which is no language's.
bool IsLanguage(std::string_view name) {
  const std::wstring folder = FullFolder(KelvarisPath::ms_WritablePath);
  return !BeginsWith(folder, FullFolder(BaseFolder(name).Get()));
}

// Calls apply(path) for each folder of a descriptor that may be removed, those of the languages
// first.
template <typename Apply>
void ForEachFolder(const KvRemoveFolderDesc& desc, const std::vector<std::string>& languages,
                   std::string_view folderOfLanguages, Apply apply) {
  const auto applyIfRemovable = [&apply](const PathText& path) {
    if (IsRemovable(path)) apply(path.Get());
  };
  if (desc.languages) {
    for (const std::string& language : languages) {
      if (IsLanguage(language)) applyIfRemovable(LanguageFolder(language, folderOfLanguages));
    }
  }
  if (desc.base) applyIfRemovable(BaseFolder(desc.folder));
}

std::string_view BareName(std::string_view path) { return path.substr(path.rfind('\\') + 1); }

}  // namespace

KvFoldersRemover::KvFoldersRemover(const char* const* descriptors, int count)
    : m_Keywords{kRoots[0].keyword, kRoots[1].keyword, kRoots[2].keyword} {
  ReadLanguages("media:supported_languages.ini");
  if (descriptors == nullptr) return;
  DescriptorReader reader;
  for (int i = 0; i < count; ++i) {
    KvRemoveFolderDesc desc;
    if (reader.Read(descriptors[i], desc)) m_Descriptors.push_back(std::move(desc));
  }
}

KvFoldersRemover::KvFoldersRemover(const KvFoldersRemover& other) = default;

KvFoldersRemover& KvFoldersRemover::operator=(const KvFoldersRemover& other) = default;

KvFoldersRemover::~KvFoldersRemover() = default;

void KvFoldersRemover::ReadLanguages(const char* roleName) {
  KelvarisPath resolver;
  const char* path = resolver.GetPath(roleName);
  MTextFile file(true, '!', '}', 4096);
  if (path == nullptr || !file.Open(path, false)) return;
  char line[256];
  while (file.Readln(line, sizeof line) > 0) m_LanguageFolders.emplace_back(line);
}

void KvFoldersRemover::Run() {
  for (const KvRemoveFolderDesc& desc : m_Descriptors) {
    if (desc.files.empty()) {
      DeleteFolder(desc);
    } else {
      DeleteFiles(desc);
    }
  }
}

void KvFoldersRemover::DeleteFolder(const KvRemoveFolderDesc& desc) {
  const std::string_view folder = desc.folder == ".\\" ? "" : std::string_view(desc.folder);
  ForEachFolder(desc, m_LanguageFolders, folder, [](const char* path) { ::DeleteFolder(path); });
}

// Callers rely on ".\" staying in the paths here.
void KvFoldersRemover::DeleteFiles(const KvRemoveFolderDesc& desc) {
  ForEachFolder(desc, m_LanguageFolders, desc.folder, [this, &desc](const char* path) {
    DeleteFilesInFolder(path, desc.deleteListed, desc.files);
  });
}

void KvFoldersRemover::DeleteFilesInFolder(const char* folderPath, bool deleteListed,
                                           const std::vector<std::string>& names) {
  if (!MFile::IsExist(folderPath)) return;
  FindFiles found(folderPath, "*.*");
  found.Run(false);
  for (unsigned int i = 0; i < found.GetNumberFiles(); ++i) {
    const char* path = found.GetSourceFile(i);
    for (const std::string& name : names) {
      // Callers rely on each name being asked in turn: with several that differ, no file is spared.
      const bool isNamed = CompareNoCaseStrings(name.c_str(), BareName(path).data()) == 0;
      if (isNamed == deleteListed) MFile::DeleteFileA(path);
    }
  }
}
