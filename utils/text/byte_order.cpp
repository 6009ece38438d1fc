#include "utils/text/text.h"

#include <algorithm>
#include <cstdint>

void SwapStruct(void* data, const int* layout, int count) {
  if (data == nullptr || layout == nullptr) return;
  auto* bytes = static_cast<unsigned char*>(data);
  std::int64_t offset = 0;
  for (int i = 0; i < count; ++i) {
    const std::int64_t size = layout[i];
    if (size == 2 || size == 4 || size == 8) {
      std::reverse(bytes + offset, bytes + offset + size);
    }
    offset += size < 0 ? -size : size;
  }
}
