#include "utils/paths/paths.h"

#include "utils/internal/wide_path.h"
#include "utils/internal/win32.h"
#include "utils/text/text.h"

#include <direct.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using kv::internal::WidePath;

// Puts the process's current folder, drive included, back at the end.
class ScopedCurrentFolder {
 public:
  ScopedCurrentFolder() : folder_(kv::internal::CurrentFolder()) {}
  ScopedCurrentFolder(const ScopedCurrentFolder&) = delete;
  ScopedCurrentFolder& operator=(const ScopedCurrentFolder&) = delete;
  ~ScopedCurrentFolder() {
    if (IsKnown()) ::_wchdir(folder_.c_str());
  }

  // Without a way back nobody may go away.
  [[nodiscard]] bool IsKnown() const { return !folder_.empty(); }

 private:
  std::wstring folder_;
};

// Makes a drive current; what is no letter names none.
template <typename Char>
void ChangeDrive(Char letter) {
  if (letter >= 'a' && letter <= 'z') letter = static_cast<Char>(letter - 'a' + 'A');
  if (letter >= 'A' && letter <= 'Z') ::_chdrive(letter - 'A' + 1);
}

}  // namespace

void MakeFolder(const char* path) {
  const WidePath widePath(path);
  if (widePath.IsEmpty() || widePath.View().size() >= MAX_PATH ||
      kv::internal::PathAttributes(widePath) != INVALID_FILE_ATTRIBUTES) {
    return;
  }
  const std::wstring_view text = widePath.View();
  const ScopedCurrentFolder currentFolder;
  const bool goesAway = text.find_first_of(L":\\") != std::wstring_view::npos;
  if (goesAway && !currentFolder.IsKnown()) return;
  std::size_t skipped = 0;
  if (text.find(L':') != std::wstring_view::npos) {
    ChangeDrive(text.front());
    skipped = 3;
  }
  if (text.find(L'\\') == std::wstring_view::npos) {
    ::_wmkdir(widePath.Get());
    return;
  }
  if (text.front() == L'\\' || (text.size() > 2 && text[2] == L'\\')) {
    ::_wchdir(L"\\");
    if (skipped == 0) skipped = 1;
  }
  std::vector<std::wstring> pieces;
  GetTokens(pieces, std::wstring(text.substr(std::min(skipped, text.size()))), '\\');
  for (const std::wstring& piece : pieces) {
    ::_wmkdir(piece.c_str());
    ::_wchdir(piece.c_str());
  }
}

void CheckFileFolder(const char* filePath) {
  if (filePath == nullptr) return;
  std::string path = filePath;
  const std::size_t colon = path.find(':');
  if (colon != std::string::npos && path[colon + 1] == '\\')
    ReplaceChar(&path[colon + 1], ':', '\\');
  ReplaceChar(path.data(), '/', '\\');
  const std::size_t lastSeparator = path.rfind('\\');
  if (lastSeparator != std::string::npos) path.resize(lastSeparator);
  MakeFolder(path.c_str());
}

int ChangeFolder(const char* path) {
  if (path == nullptr || *path == '\0') return -1;
  if (path[1] == ':') ChangeDrive(path[0]);
  return ::_chdir(path);
}

bool IsFolder(const char* path) { return kv::internal::IsExistingFolder(WidePath(path).Get()); }
