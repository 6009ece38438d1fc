#include "utils/paths/paths.h"

#include "utils/internal/append_guard.h"
#include "utils/internal/fail_fast.h"
#include "utils/internal/path_text.h"
#include "utils/internal/text_view.h"
#include "utils/internal/wide_path.h"
#include "utils/paths/folder_identity.h"
#include "utils/paths/folder_listing.h"
#include "utils/text/text.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace {

using kv::internal::FailFast;
using kv::internal::FatalError;
using kv::internal::FolderListing;
using kv::internal::IdentityOf;
using kv::internal::IsSeparator;
using kv::internal::kPathSize;
using kv::internal::ViewOf;
using kv::internal::WidePath;

constexpr std::string_view kEveryFile = "*.*";

std::string AsFolder(const char* path) {
  std::string folder(ViewOf(path));
  if (folder.empty() || folder.back() != '\\') folder += '\\';
  return folder;
}

// What stands behind the first "." of a mask, or all of it.
std::string_view MaskedExtension(std::string_view mask) {
  const std::size_t dot = mask.find('.');
  return dot == std::string_view::npos ? mask : mask.substr(dot + 1);
}

// What stands behind the first "." of a name; nothing for a name without one.
std::wstring_view Extension(std::wstring_view name) {
  const std::size_t dot = name.find(L'.');
  return dot == std::wstring_view::npos ? std::wstring_view() : name.substr(dot + 1);
}

bool EqualButForCase(std::wstring_view a, std::wstring_view b) {
  if (a.size() != b.size() || a.empty()) return a.size() == b.size();
  const int size = static_cast<int>(a.size());
  return ::CompareStringOrdinal(a.data(), size, b.data(), size, TRUE) == CSTR_EQUAL;
}

// A name of the file system as utf16_to_utf8 gives it. Callers rely on its form of characters
// beyond the Basic Multilingual Plane: they become the character with the low 16 bits of their
// number, so the name is that of another file. Empty for a malformed name and for one whose form is
// no name in its folder, because it holds a separator, a ":" or a NUL, or is "." or "..".
class NarrowName {
 public:
  explicit NarrowName(std::wstring_view name) {
    int capacity = kMaxSize;
    const int size = utf16_to_utf8(text_, capacity, name.data(), static_cast<int>(name.size()));
    if (size > 0 && IsName({text_, static_cast<std::size_t>(size)})) {
      size_ = static_cast<std::size_t>(size);
    }
  }
  [[nodiscard]] std::string_view View() const { return {text_, size_}; }

 private:
  static constexpr int kMaxSize = 3 * MAX_PATH;

  static bool IsName(std::string_view text) {
    const auto isNotInNames = [](char c) { return IsSeparator(c) || c == '\0'; };
    return std::none_of(text.begin(), text.end(), isNotInNames) && text != "." && text != "..";
  }

  char text_[kMaxSize];
  std::size_t size_ = 0;
};

// One search: appends what it finds to a list of full paths.
class Search {
 public:
  Search(const std::string& mask, bool acceptsAll, bool isRecursive,
         std::vector<std::string>& files)
      : extension_(mask.c_str()),
        isMalformed_(extension_.IsEmpty() && !mask.empty()),
        acceptsAll_(acceptsAll),
        isRecursive_(isRecursive),
        files_(files) {}

  // `folder` ends in "\". The system lists no folder whose pattern is longer than 259 units.
  void Run(const std::string& folder) {
    const WidePath pattern(std::string(folder).append(kEveryFile).c_str());
    if (pattern.View().size() >= MAX_PATH) return;
    searched_.push_back(&folder);
    for (FolderListing entry(pattern.Get()); entry.IsValid(); entry.Next()) {
      const bool isDots = entry.Name() == L"." || entry.Name() == L"..";
      if (isRecursive_ && entry.IsFolder() && !isDots) {
        Descend(folder, entry);
      } else if ((acceptsAll_ && !isDots) || Matches(entry)) {
        Add(folder, entry);
      }
    }
    searched_.pop_back();
  }

 private:
  [[nodiscard]] bool Matches(const FolderListing& entry) const {
    return !entry.IsFolder() && !isMalformed_ &&
           EqualButForCase(Extension(entry.Name()), extension_.View());
  }

  // Callers rely on the end of the process in place of a list that lacks files, here and in Add.
  void Descend(const std::string& folder, const FolderListing& entry) {
    const NarrowName name(entry.Name());
    if (name.View().size() >= kPathSize) FailFast(FatalError::kRangeCheck);
    if (name.View().empty()) return;
    const std::string subfolder = std::string(folder).append(name.View()).append("\\");
    if (!entry.IsLink() || !LeadsBack(subfolder)) Run(subfolder);
  }

  // Whether a link leads to a folder that is being searched: the search would go in circles.
  [[nodiscard]] bool LeadsBack(const std::string& link) const {
    const auto target = IdentityOf(WidePath(link.c_str()));
    return std::any_of(searched_.begin(), searched_.end(), [&target](const std::string* folder) {
      return IdentityOf(WidePath(folder->c_str())) == target;
    });
  }

  void Add(const std::string& folder, const FolderListing& entry) {
    const NarrowName name(entry.Name());
    if (name.View().empty()) return;
    if (folder.size() + name.View().size() >= kPathSize) FailFast(FatalError::kRangeCheck);
    std::string file;
    file.reserve(folder.size() + name.View().size());
    files_.push_back(std::move(file.append(folder).append(name.View())));
  }

  WidePath extension_;
  bool isMalformed_;
  bool acceptsAll_;
  bool isRecursive_;
  std::vector<std::string>& files_;
  std::vector<const std::string*> searched_;  // from the first folder to the one being listed
};

const std::string& FileAt(const std::vector<std::string>& files, unsigned int index) {
  if (index >= files.size()) throw std::out_of_range("invalid vector subscript");
  return files[index];
}

}  // namespace

FindFiles::FindFiles(const char* source, const char* mask)
    : m_Mask(MaskedExtension(ViewOf(mask))),
      m_SourceFolder(AsFolder(source)),
      m_IsAcceptAll(ViewOf(mask) == kEveryFile),
      m_IsRecursive(false) {}

FindFiles::FindFiles(const char* source, const char* target, const char* mask)
    : FindFiles(source, mask) {
  if (target != nullptr) m_TargetFolder = AsFolder(target);
}

FindFiles::FindFiles(const FindFiles& other) = default;

FindFiles& FindFiles::operator=(const FindFiles& other) = default;

FindFiles::~FindFiles() = default;

void FindFiles::Run(bool recursive) {
  m_IsRecursive = recursive;
  kv::internal::AppendGuard found(m_Files);
  Search(m_Mask, m_IsAcceptAll, m_IsRecursive, m_Files).Run(m_SourceFolder);
  found.Keep();
}

unsigned int FindFiles::GetNumberFiles() const { return static_cast<unsigned int>(m_Files.size()); }

const char* FindFiles::GetSourceFile(unsigned int index) { return FileAt(m_Files, index).c_str(); }

const char* FindFiles::GetTargetFile(unsigned int index) {
  m_TargetFile = m_TargetFolder;
  m_TargetFile.append(FileAt(m_Files, index), m_SourceFolder.size(), std::string::npos);
  return m_TargetFile.c_str();
}
