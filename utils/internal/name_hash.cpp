#include "utils/internal/name_hash.h"

#include "utils/internal/slicing.h"

namespace kv::internal {
namespace {

// One step with a byte of zero. A copied sign bit is as linear as a moved one.
constexpr std::uint32_t Step(std::uint32_t hash) {
  return static_cast<std::uint32_t>(ExtendNameHash(static_cast<std::int32_t>(hash), '\0'));
}

constexpr std::size_t kBlock = 16;

constexpr SlicingTables<kBlock> kTables = MakeSlicingTables<kBlock>(Step);

// What a set sign bit adds to the register after kBytes steps. As the highest bit of a register's
// fourth byte it is copied by the first step and the two that follow; as the highest bit of a
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

template <std::size_t kBytes>
inline std::uint32_t ExtendByBlock(std::uint32_t hash, const unsigned char* text) {
  constexpr std::uint32_t kSignTerm = SignTerm<kBytes>();
  const std::uint32_t signTerm = (hash >> 31) != 0 ? kSignTerm : 0;
  return StepOverBlock<kBytes>(kTables, hash, text) ^ signTerm;
}

}  // namespace

std::int32_t ExtendNameHash(std::int32_t hash, const char* text, std::size_t size) {
  const auto* byte = reinterpret_cast<const unsigned char*>(text);
  auto value = static_cast<std::uint32_t>(hash);
  const unsigned char* const end = byte + size;
  for (; size >= kBlock; size -= kBlock, byte += kBlock) value = ExtendByBlock<16>(value, byte);
  if ((size & 8) != 0) {
    value = ExtendByBlock<8>(value, byte);
    byte += 8;
  }
  if ((size & 4) != 0) {
    value = ExtendByBlock<4>(value, byte);
    byte += 4;
  }
  for (; byte != end; ++byte) value = Step(value ^ *byte);
  return static_cast<std::int32_t>(value);
}

}  // namespace kv::internal
