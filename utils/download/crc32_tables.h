// CRC-32 over blocks of up to sixteen bytes, for StepOverBlock.
#ifndef KVUTILS_UTILS_DOWNLOAD_CRC32_TABLES_H_
#define KVUTILS_UTILS_DOWNLOAD_CRC32_TABLES_H_

#include "utils/internal/crc_table.h"
#include "utils/internal/slicing.h"

#include <cstdint>

namespace kv::internal {

// One step with a byte of zero; a byte joins the register before its step.
constexpr std::uint32_t StepCrc32(std::uint32_t value) {
  return (value >> 8) ^ kCrcTable[value & 0xFF];
}

inline constexpr SlicingTables<16> kCrc32Tables = MakeSlicingTables<16>(StepCrc32);

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_DOWNLOAD_CRC32_TABLES_H_
