#include "utils/text/text.h"

#include "utils/internal/int_size.h"
#include "utils/internal/text_view.h"

#include <cstring>
#include <string_view>
#include <utility>

namespace {

using kv::internal::ViewOf;

constexpr std::size_t kTooLong = std::string::npos;

// Appends `text` to `out` with every occurrence of `find` replaced by `repl`. Returns the number of
// replacements, or kTooLong as soon as `out` exceeds `limit`.
std::size_t AppendReplaced(std::string& out, std::string_view text, std::string_view find,
                           std::string_view repl, std::size_t limit) {
  std::size_t replacements = 0;
  while (out.size() <= limit) {
    const std::size_t match = find.empty() ? std::string_view::npos : text.find(find);
    out.append(text.substr(0, match));
    if (match == std::string_view::npos) return out.size() <= limit ? replacements : kTooLong;
    out.append(repl);
    text.remove_prefix(match + find.size());
    ++replacements;
  }
  return kTooLong;
}

}  // namespace

int ReplaceSubstring(char* buf, int bufSize, const char* find, const char* repl) {
  if (buf == nullptr || bufSize < 0) return -1;
  const auto limit = static_cast<std::size_t>(bufSize);
  std::string result;
  if (AppendReplaced(result, buf, ViewOf(find), ViewOf(repl), limit) == kTooLong) return -1;
  std::memcpy(buf, result.c_str(), result.size() + 1);
  return kv::internal::IntSize(result.size());
}

int findAndReplace(std::string& s, const char* find, const char* repl) {
  const std::string_view pattern = ViewOf(find);
  if (pattern.empty() || s.find(pattern) == std::string::npos) return 0;
  std::string result;
  const std::size_t replacements =
      AppendReplaced(result, s, pattern, ViewOf(repl), result.max_size());
  s = std::move(result);
  return kv::internal::IntSize(replacements);
}
