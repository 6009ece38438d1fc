#include "utils/text/text.h"

#include "utils/internal/name_hash.h"
#include "utils/internal/text_length.h"

#include <cstdint>
#include <cstring>

int GetFOURCC(const char* text) {
  constexpr std::size_t kCodeSize = 4;
  if (text == nullptr || ::strnlen(text, kCodeSize) < kCodeSize) return -1;
  std::uint32_t code = 0;
  for (std::size_t i = 0; i < kCodeSize; ++i) {
    code = (code << 8) | static_cast<unsigned char>(text[i]);
  }
  return static_cast<int>(code);
}

// Callers rely on the values: they are stored in files. For a few bytes the loop costs less than
// the way to the sliced form.
int GetUniqueID(const char* text) {
  if (text == nullptr) return 0;
  constexpr std::size_t kFew = 8;
  const std::size_t size = kv::internal::TextLength(text);
  std::int32_t hash = 0;
  if (size < kFew) {
    for (std::size_t i = 0; i < size; ++i) hash = kv::internal::ExtendNameHash(hash, text[i]);
  } else {
    hash = kv::internal::ExtendNameHash(hash, text, size);
  }
  return hash & 0x7FFFFFFF;
}
