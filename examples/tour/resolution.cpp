#include "examples/tour/resolution.h"

#include "utils/paths/paths.h"

#include <string_view>

namespace tour {
namespace {

bool IsBelow(std::string_view path, std::string_view folder) {
  return !folder.empty() && path.starts_with(folder);
}

// Whether the file was found in the writable folder. Where one of the two folders lies in the
// other, the inner one has the file.
bool IsInWritableFolder(std::string_view file, std::string_view writable, std::string_view work) {
  return IsBelow(file, writable) && !(IsBelow(file, work) && work.size() > writable.size());
}

// `path` is below its folder.
std::string Reason(std::string_view path, bool inWritableFolder) {
  if (inWritableFolder) return "your folder goes first";
  const std::string language = KelvarisPath::GetLocaleFolder();
  if (path.starts_with(language + "\\")) return "variant for the language \"" + language + "\"";
  if (IsBelow(path, KelvarisPath::sFeaturePackFolder)) return "add-on content";
  return "plain installation file";
}

}  // namespace

Resolution Resolve(const char* dataName) {
  KelvarisPath resolver;
  const char* const answer = resolver.GetPath(dataName);
  if (answer == nullptr) return {.file = "", .path = "", .reason = "not found"};

  Resolution resolution;
  resolution.file = answer;
  const std::string_view writable = resolver.GetWritableFolder();
  const std::string_view work = resolver.GetWorkFolder();
  resolution.inWritableFolder = IsInWritableFolder(resolution.file, writable, work);
  const std::string_view folder = resolution.inWritableFolder ? writable : work;
  resolution.path = resolution.file.substr(IsBelow(resolution.file, folder) ? folder.size() : 0);
  resolution.reason = Reason(resolution.path, resolution.inWritableFolder);
  return resolution;
}

std::string RemedyFor(const Resolution& resolution) {
  return resolution.inWritableFolder ? "; remove it to use the installed one" : "";
}

}  // namespace tour
