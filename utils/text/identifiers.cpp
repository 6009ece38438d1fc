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
  std::int32_t hash = 0;
  if (kv::internal::IsKnownShort(text)) {
    for (; *text != '\0'; ++text) hash = kv::internal::ExtendNameHash(hash, *text);
  } else {
    hash = kv::internal::ExtendNameHash(hash, text, kv::internal::TextLength(text));
  }
  return hash & 0x7FFFFFFF;
}
