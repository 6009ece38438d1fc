#include <string_view>

#include "utils/text/text.h"

namespace {

std::string_view BytesOf(const unsigned char* data, unsigned int size) {
  if (data == nullptr) return {};
  return {reinterpret_cast<const char*>(data), size};
}

}  // namespace

int MemorySearch(const unsigned char* hay, unsigned int haySize, const unsigned char* needle,
                 unsigned int needleSize) {
  const std::size_t offset = BytesOf(hay, haySize).find(BytesOf(needle, needleSize));
  return offset == std::string_view::npos ? -1 : static_cast<int>(offset);
}
