#ifndef KVUTILS_UTILS_INTERNAL_INT_SIZE_H_
#define KVUTILS_UTILS_INTERNAL_INT_SIZE_H_

#include <algorithm>
#include <climits>
#include <cstddef>

namespace kv::internal {

// A size in the type of the interface: one beyond the range of int is its largest value.
constexpr int IntSize(std::size_t size) {
  return static_cast<int>(std::min<std::size_t>(size, INT_MAX));
}

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_INTERNAL_INT_SIZE_H_
