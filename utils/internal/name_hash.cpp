#include "utils/internal/name_hash.h"

#include "utils/internal/slicing.h"

namespace kv::internal {
namespace {

// One step with a byte of zero. A copied sign bit is as linear as a moved one.
constexpr std::uint32_t Step(std::uint32_t hash) {
  return static_cast<std::uint32_t>(ExtendNameHash(static_cast<std::int32_t>(hash), '\0'));
}

constexpr SlicingTables<16> kTables = MakeSlicingTables<16>(Step);

// What a set sign bit adds to the register after kBytes steps. As the highest bit of the register
// it is copied by the first step, and by those that follow while it is set; as the highest bit of a
// text's fourth byte, which the tables take it for, it would wait in its place without a trace.
template <std::size_t kBytes>
constexpr std::uint32_t SignTerm() {
  std::uint32_t hash = 0x80000000;
  for (std::size_t i = 0; i < kBytes; ++i) hash = Step(hash);
  return hash ^ kTables[kBytes - sizeof hash][0x80];
}

static_assert(SignTerm<4>() == 0xFFFFFFFF);
static_assert(SignTerm<8>() == 0xDEBBDF1C);
static_assert(SignTerm<16>() == 0xAFCAB8A5);

struct NameHash {
  template <std::size_t kBytes>
  static std::uint32_t StepOver(std::uint32_t hash, const unsigned char* text) {
    if constexpr (kBytes == 1) {
      return Step(hash ^ *text);
    } else {
      constexpr std::uint32_t kSignTerm = SignTerm<kBytes>();
      const std::uint32_t signTerm = (hash >> 31) != 0 ? kSignTerm : 0;
      return StepOverBlock<kBytes>(kTables, hash, text, signTerm);
    }
  }
};

}  // namespace

std::int32_t ExtendNameHash(std::int32_t hash, const char* text, std::size_t size) {
  return static_cast<std::int32_t>(ExtendBySlicing<NameHash>(
      static_cast<std::uint32_t>(hash), reinterpret_cast<const unsigned char*>(text), size));
}

}  // namespace kv::internal
