#include "utils/download/crc32_forms.h"
#include "utils/download/crc32_tables.h"

namespace kv::internal {
namespace {

struct Crc32 {
  template <std::size_t kBytes>
  static std::uint32_t StepOver(std::uint32_t value, const unsigned char* data) {
    if constexpr (kBytes == 1) {
      return StepCrc32(value ^ *data);
    } else {
      return StepOverBlock<kBytes>(kCrc32Tables, value, data);
    }
  }
};

}  // namespace

std::uint32_t ExtendCrc32BySlicing(std::uint32_t value, const unsigned char* data,
                                   std::size_t size) {
  return ExtendBySlicing<Crc32>(value, data, size);
}

}  // namespace kv::internal
