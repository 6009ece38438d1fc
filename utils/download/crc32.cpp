#include "utils/download/download.h"

#include "utils/internal/crc_table.h"

#include <algorithm>
#include <iterator>

crc32::crc32() {
  static_assert(std::size(decltype(m_Table){}) == kv::internal::kCrcTable.size());
  std::copy(kv::internal::kCrcTable.begin(), kv::internal::kCrcTable.end(), m_Table);
}

unsigned crc32::Get(const void* data, int length) const {
  if (data == nullptr || length < 0) return 0;
  const auto* byte = static_cast<const unsigned char*>(data);
  const unsigned char* const end = byte + length;
  unsigned remainder = 0xFFFFFFFF;
  for (; byte != end; ++byte) remainder = (remainder >> 8) ^ m_Table[(remainder ^ *byte) & 0xFF];
  return ~remainder;
}
