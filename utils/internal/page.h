// Reading blocks of memory of which an object may hold only the beginning.
#ifndef KVUTILS_UTILS_INTERNAL_PAGE_H_
#define KVUTILS_UTILS_INTERNAL_PAGE_H_

#include <cstddef>
#include <cstdint>

namespace kv::internal {

// Whether so many bytes end in the page in which they begin: if the first can be read, all can.
template <std::size_t kBytes>
inline bool LieInOnePage(const char* bytes) {
  constexpr std::uintptr_t kPage = 4096;  // the least that any system protects
  return reinterpret_cast<std::uintptr_t>(bytes) % kPage <= kPage - kBytes;
}

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_INTERNAL_PAGE_H_
