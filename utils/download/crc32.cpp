#include "utils/download/download.h"

#include "utils/download/crc32_forms.h"
#include "utils/internal/crc_table.h"
#include "utils/internal/processor.h"

#include <algorithm>
#include <iterator>

namespace {

// By the form that is fastest for so many bytes.
std::uint32_t Extend(std::uint32_t value, const unsigned char* data, std::size_t size) {
  using namespace kv::internal;
  if (size >= 128 && g_processor.carryless512) return ExtendCrc32By512Bits(value, data, size);
  if (size > 24 && g_processor.carryless128) return ExtendCrc32By128Bits(value, data, size);
  return ExtendCrc32BySlicing(value, data, size);
}

}  // namespace

crc32::crc32() {
  static_assert(std::size(decltype(m_Table){}) == kv::internal::kCrcTable.size());
  std::copy(kv::internal::kCrcTable.begin(), kv::internal::kCrcTable.end(), m_Table);
}

unsigned crc32::Get(const void* data, int length) const {
  if (data == nullptr) return 0;
  const auto* byte = static_cast<const unsigned char*>(data);
  std::uint32_t value = 0xFFFFFFFF;
  constexpr int kFew = 6;  // of which the call of another form costs more than this loop
  if (length > kFew) return ~Extend(value, byte, static_cast<std::size_t>(length));
  for (; length > 0; --length, ++byte) value = (value >> 8) ^ m_Table[(value ^ *byte) & 0xFF];
  return ~value;
}
