#include "utils/text/text.h"

#include <climits>
#include <cstddef>
#include <string_view>

namespace {

constexpr int kNotFound = -1;

std::string_view ViewOf(const unsigned char* data, unsigned int size) {
  return {reinterpret_cast<const char*>(data), size};
}

}  // namespace

int MemorySearch(const unsigned char* hay, unsigned int haySize, const unsigned char* needle,
                 unsigned int needleSize) {
  if (needleSize == 0) return 0;
  if (hay == nullptr || needle == nullptr) return kNotFound;
  const std::size_t offset = ViewOf(hay, haySize).find(ViewOf(needle, needleSize));
  return offset > INT_MAX ? kNotFound : static_cast<int>(offset);
}
