#ifndef KVUTILS_UTILS_INTERNAL_TEXT_VIEW_H_
#define KVUTILS_UTILS_INTERNAL_TEXT_VIEW_H_

#include <string_view>

namespace kv::internal {

// A caller's text; null counts as empty.
constexpr std::string_view ViewOf(const char* text) { return text == nullptr ? "" : text; }

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_INTERNAL_TEXT_VIEW_H_
