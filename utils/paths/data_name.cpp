#include "utils/paths/data_name.h"

#include "utils/text/text.h"

#include <cctype>

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

char LowerCaseByte(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < 0x80 ? static_cast<char>(std::tolower(byte)) : c;
}

bool MakeLowerCase(CandidateText& name) {
  bool changed = false;
  for (char* c = name.GetFrom(0); *c != '\0'; ++c) {
    const char lower = LowerCaseByte(*c);
    changed = changed || lower != *c;
    *c = lower;
  }
  return changed;
}

}  // namespace kv::internal
