#include "utils/paths/paths.h"

#include "utils/files/files.h"
#include "utils/internal/path_text.h"

#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

struct Language {
  std::string_view code;
  const char* folder;
};

// Searched from the top; the first row is the answer for a code that is not listed.
constexpr Language kLanguages[] = {
    {"en", "en"}, {"de", "de"}, {"fr", "fr"}, {"ru", "ru"}, {"es", "es"}, {"pt-PT", "pt"},
    {"pt", "pt"}, {"it", "it"}, {"nl", "nl"}, {"zh", "zh"}, {"ja", "ja"},
};

enum FirstRun : int { kUnknown = -1, kNo = 0, kYes = 1 };
FirstRun g_firstRun = kUnknown;

[[noreturn]] void ThrowOutOfRange() { throw std::out_of_range("invalid string position"); }

// `root` is the folder, below the language folder, that language-specific files of this kind stand
// in.
bool FindWritablePlace(char* out, const char* name, const char* root) {
  if (name == nullptr) return false;
  KelvarisPath resolver;
  const char* resolved = resolver.GetPath(name);
  if (resolved == nullptr) return false;

  const std::string language = std::string(KelvarisPath::GetLocaleFolder()) + '\\';
  const bool isVariant = std::strstr(resolved, (language + root).c_str()) != nullptr;
  const std::string target = isVariant ? language + name : name;
  const char* place = resolver.GetWorkPath(target.c_str(), false, true);
  if (place == nullptr) return false;
  kv::internal::CopyPath(out, place);
  CheckFileFolder(out);
  return true;
}

// `name` with `subFolder` as a component before its last one; unchanged without a ":".
std::string InSubFolder(const std::string& name, const char* subFolder) {
  const std::size_t colon = name.rfind(':');
  if (colon == std::string::npos) return name;
  return name.substr(0, colon) + ':' + subFolder + name.substr(colon);
}

bool FindFile(std::string& out, const std::string& name) {
  KelvarisPath resolver;
  const char* path = resolver.GetPath(name.c_str());
  if (path == nullptr) return false;
  out = path;
  return true;
}

bool FindPngOrBmp(std::string& out, std::string name) {
  if (FindFile(out, name)) return true;
  const std::size_t extension = name.find(".png");
  if (extension == std::string::npos) ThrowOutOfRange();
  return FindFile(out, name.replace(extension, 4, ".bmp"));
}

}  // namespace

void SetLocalFolder(const char* code) {
  for (const Language& language : kLanguages) {
    if (code != nullptr && language.code == code) {
      KelvarisPath::SetLocaleFolder(language.folder);
      return;
    }
  }
  PrintDebugString("Language %s not supported\n", code);
  KelvarisPath::SetLocaleFolder(kLanguages[0].folder);
}

bool GetWorkPathForDBfiles(char* out, const char* name) {
  return FindWritablePlace(out, name, "catalogs");
}

bool GetWorkPathForMediafiles(char* out, const char* name) {
  return FindWritablePlace(out, name, "media");
}

bool IsFirstRun() {
  if (g_firstRun == kUnknown) {
    KelvarisPath resolver;
    g_firstRun = resolver.GetWorkPath("user.wsi", true, true) == nullptr ? kYes : kNo;
  }
  return g_firstRun == kYes;
}

bool GetImageFilePath(std::string& out, const char* name, const char* subFolder) {
  const std::string plain = name == nullptr ? "" : name;
  if (subFolder == nullptr) return FindPngOrBmp(out, plain);
  return FindPngOrBmp(out, InSubFolder(plain, subFolder)) || FindPngOrBmp(out, plain);
}

std::string GetTempFileNameForDbUpdate(const char* name) {
  std::string result = name == nullptr ? "" : name;
  const std::size_t extension = result.rfind('.');
  if (extension == std::string::npos) ThrowOutOfRange();
  return result.insert(extension, "_new");
}
