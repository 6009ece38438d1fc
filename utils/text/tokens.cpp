#include "utils/text/text.h"

#include "utils/internal/int_size.h"

#include <cstring>

namespace {

template <typename String>
bool SplitAtRuns(std::vector<String>& out, const String& text, typename String::value_type delim) {
  out.clear();
  std::size_t position = 0;
  for (;;) {
    const std::size_t end = text.find(delim, position);
    if (end == String::npos) break;
    out.push_back(text.substr(position, end - position));
    position = text.find_first_not_of(delim, end);
    if (position == String::npos) return true;
  }
  if (position < text.size()) out.push_back(text.substr(position));
  return !out.empty();
}

}  // namespace

// NOLINTBEGIN(performance-unnecessary-value-param) [the interface passes texts by value]
bool GetTokens(std::vector<std::string>& out, std::string text, char delim) {
  return SplitAtRuns(out, text, delim);
}

bool GetTokens(std::vector<std::wstring>& out, std::wstring text, char delim) {
  return SplitAtRuns(out, text, static_cast<wchar_t>(delim));
}

bool GetTokens(std::vector<std::string>& out, const char* text, const char* delims) {
  out.clear();
  if (text == nullptr) return false;
  if (delims == nullptr) delims = "";
  for (text += std::strspn(text, delims); *text != '\0'; text += std::strspn(text, delims)) {
    const std::size_t length = std::strcspn(text, delims);
    out.emplace_back(text, length);
    text += length;
  }
  return !out.empty();
}

int GetSubStrings(std::vector<std::string>& out, std::string text, char delim) {
  std::size_t position = 0;
  for (;;) {
    const std::size_t end = text.find(delim, position);
    // Callers rely on the text after the last delimiter being left out.
    if (end == std::string::npos) return kv::internal::IntSize(out.size());
    out.push_back(text.substr(position, end - position));
    position = end + 1;
  }
}
// NOLINTEND(performance-unnecessary-value-param)
