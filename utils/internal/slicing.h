// A register that takes a text byte by byte, carried over several bytes at once by tables.
//
// Such a register steps from h to A(h ^ c), c being the byte in the lowest place and A linear over
// the field of two elements: A(a ^ b) = A(a) ^ A(b). After a block of bytes it is therefore the
// exclusive or of what each byte alone has become: a byte that k others follow is A^(k+1) of
// itself, which table k holds, and the four bytes of the register go along with the first four of
// the block. The look-ups do not wait for one another, as those of a loop over the bytes do.
#ifndef KVUTILS_UTILS_INTERNAL_SLICING_H_
#define KVUTILS_UTILS_INTERNAL_SLICING_H_

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace kv::internal {

// Table k, entry b: the register after k + 1 steps from b.
template <std::size_t kCount>
using SlicingTables = std::array<std::array<std::uint32_t, 256>, kCount>;

template <std::size_t kCount, typename Step>
constexpr SlicingTables<kCount> MakeSlicingTables(Step step) {
  SlicingTables<kCount> tables{};
  for (std::uint32_t byte = 0; byte < 256; ++byte) {
    std::uint32_t stepped = byte;
    for (auto& table : tables) table[byte] = stepped = step(stepped);
  }
  return tables;
}

// The register after the kBytes bytes at `text`, four or a multiple of it, if each byte of the
// register steps as a byte of the text does; with the exclusive or of it and `addend`, which does
// not depend on the register, and so is taken in before the last look-ups arrive.
template <std::size_t kBytes, std::size_t kCount>
inline std::uint32_t StepOverBlock(const SlicingTables<kCount>& tables, std::uint32_t value,
                                   const unsigned char* text, std::uint32_t addend = 0) {
  static_assert(std::endian::native == std::endian::little);
  constexpr std::size_t kFollowing = kBytes - sizeof(std::uint32_t);
  std::uint32_t word;
  std::memcpy(&word, text, sizeof word);
  word ^= value;
  if constexpr (kFollowing > 0) {
    addend = StepOverBlock<kFollowing>(tables, 0, text + sizeof word, addend);
  }
  return (addend ^ tables[kFollowing + 3][word & 0xFF] ^
          tables[kFollowing + 2][(word >> 8) & 0xFF]) ^
         (tables[kFollowing + 1][(word >> 16) & 0xFF] ^ tables[kFollowing][word >> 24]);
}

// The register after `size` bytes at `text`: by blocks of sixteen, then one of eight and one of
// four, then byte by byte. StepOver<n>(value, text) of `Register` is the register after n bytes.
template <typename Register>
std::uint32_t ExtendBySlicing(std::uint32_t value, const unsigned char* text, std::size_t size) {
  for (; size >= 16; size -= 16, text += 16) value = Register::template StepOver<16>(value, text);
  if ((size & 8) != 0) {
    value = Register::template StepOver<8>(value, text);
    text += 8;
  }
  if ((size & 4) != 0) {
    value = Register::template StepOver<4>(value, text);
    text += 4;
  }
  for (size &= 3; size > 0; --size, ++text) value = Register::template StepOver<1>(value, text);
  return value;
}

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_INTERNAL_SLICING_H_
