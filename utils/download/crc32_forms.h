// The checksum CRC-32 in one form for every kind of processor.
#ifndef KVUTILS_UTILS_DOWNLOAD_CRC32_FORMS_H_
#define KVUTILS_UTILS_DOWNLOAD_CRC32_FORMS_H_

#include <cstddef>
#include <cstdint>

namespace kv::internal {

// Each gives the register after `size` more bytes of data, any number of them. It is 0xFFFFFFFF
// before the first; the checksum is the register after the last, inverted.

// By tables, on every processor.
[[nodiscard]] std::uint32_t ExtendCrc32BySlicing(std::uint32_t value, const unsigned char* data,
                                                 std::size_t size);

// By multiplications without carries in registers of 128 bits, where g_processor.carryless128 says
// that there are any.
[[nodiscard]] std::uint32_t ExtendCrc32By128Bits(std::uint32_t value, const unsigned char* data,
                                                 std::size_t size);

// The same in registers of 512 bits; g_processor.carryless512.
[[nodiscard]] std::uint32_t ExtendCrc32By512Bits(std::uint32_t value, const unsigned char* data,
                                                 std::size_t size);

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_DOWNLOAD_CRC32_FORMS_H_
