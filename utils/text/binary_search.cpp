#include "utils/text/text.h"

#include <cstdint>

// Callers rely on the element at which the search ends coming back, equal or not, on the order in
// which elements are asked about, and on the last one being asked about although its answer does
// not count.
void* BinarySearch(const void* key, const void* base, unsigned long long count,
                   unsigned long long size, Comparator* comparator) {
  const auto* low = static_cast<const unsigned char*>(base);
  const auto result = [&low] { return const_cast<unsigned char*>(low); };
  if (comparator == nullptr) return result();

  // Half the count is taken as a 32-bit value: a search ends early where that is 0.
  while (const auto half = static_cast<std::uint32_t>(count / 2)) {
    const std::uint32_t before = count % 2 != 0 ? half : half - 1;
    const unsigned char* middle = low + before * size;
    const int order = comparator->Compare(key, middle);
    if (order == 0) return const_cast<unsigned char*>(middle);
    if (order < 0) {
      count = before;
    } else {
      low = middle + size;
      count = half;
    }
  }
  if (count == 1) comparator->Compare(key, low);
  return result();
}
