#include "examples/tour/resolution.h"

#include <string_view>

#include "utils/paths/paths.h"

namespace tour {
namespace {

// Takes `prefix` off the front of `text`, if it is there and something follows it.
bool TakePrefix(std::string_view& text, std::string_view prefix) {
  if (prefix.empty() || !text.starts_with(prefix)) return false;
  text.remove_prefix(prefix.size());
  return true;
}

}  // namespace

Resolution Resolve(const char* dataName) {
  KelvarisPath resolver;
  const char* const answer = resolver.GetPath(dataName);
  if (answer == nullptr) return {.path = "", .reason = "not found"};

  std::string_view path = answer;
  Resolution resolution;
  resolution.inWritableFolder = TakePrefix(path, resolver.GetWritableFolder());
  if (!resolution.inWritableFolder) TakePrefix(path, resolver.GetWorkFolder());
  resolution.path = path;

  const std::string language = KelvarisPath::GetLocaleFolder();
  if (path.starts_with(language + "\\")) {
    resolution.reason = "variant for the language \"" + language + "\"";
  } else if (TakePrefix(path, KelvarisPath::sFeaturePackFolder)) {
    resolution.reason = "add-on content";
  } else {
    resolution.reason = "plain installation file";
  }
  if (resolution.inWritableFolder) resolution.reason = "your folder goes first";
  return resolution;
}

}  // namespace tour
