// The defining form of the checksum CRC-32.
#ifndef KVUTILS_TESTS_REFERENCE_CRC32_H_
#define KVUTILS_TESTS_REFERENCE_CRC32_H_

#include <cstddef>
#include <cstdint>

#include "tests/reference/byte_table.h"

namespace kv::reference {

// The register inverted between the bytes: it is the checksum of those that it has taken.
class Crc32Register {
 public:
  // Before the first byte, or where a register that is not inverted between the bytes stands.
  explicit Crc32Register(std::uint32_t registerOfTheTextbook = 0xFFFFFFFF)
      : value_(~registerOfTheTextbook) {}

  void Take(char byte) {
    const auto index = (static_cast<unsigned char>(byte) ^ value_) & 0xFF;
    value_ = (value_ >> 8) ^ kByteTable[index] ^ 0xD202EF8D;
  }

  [[nodiscard]] std::uint32_t Checksum() const { return value_; }

 private:
  std::uint32_t value_;
};

inline std::uint32_t Crc32(const void* data, std::size_t size) {
  const auto* byte = static_cast<const char*>(data);
  Crc32Register taken;
  for (const char* const end = byte + size; byte != end; ++byte) taken.Take(*byte);
  return taken.Checksum();
}

}  // namespace kv::reference

#endif  // KVUTILS_TESTS_REFERENCE_CRC32_H_
