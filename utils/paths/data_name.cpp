#include "utils/paths/data_name.h"

#include "utils/text/text.h"

namespace kv::internal {

void AppendDataName(PathText& path, std::string_view name) {
  const std::size_t start = path.Size();
  path.Append(WithoutLeadingSeparator(name));
  if (!path.IsOverlong()) ReplaceChars(path.GetFrom(start), ":\\/", '\\');
}

CandidateText LanguageVariant(std::string_view languageFolder, std::string_view name) {
  CandidateText variant;
  variant.Append(languageFolder).Append(":").Append(WithoutLeadingSeparator(name));
  return variant;
}

bool MakeLowerCase(CandidateText& name) {
  const CandidateText before = name;
  LowerString(name.GetFrom(0));
  return name.View() != before.View();
}

}  // namespace kv::internal
