#include "utils/text/text.h"

#include "utils/internal/crc_table.h"

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

// Not CRC-32, though it shares its table. Callers rely on the arithmetic shift, the start at 0 and
// the absence of a final inversion: the values are stored in files.
int GetUniqueID(const char* text) {
  if (text == nullptr) return 0;
  std::int32_t hash = 0;
  for (; *text != '\0'; ++text) {
    const std::uint32_t index =
        (static_cast<std::uint32_t>(*text) ^ static_cast<std::uint32_t>(hash)) & 0xFF;
    hash = (hash >> 8) ^ static_cast<std::int32_t>(kv::internal::kCrcTable[index]);
  }
  return hash & 0x7FFFFFFF;
}
