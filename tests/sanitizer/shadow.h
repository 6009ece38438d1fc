// The shadow of the address space: one byte tells of eight bytes of memory which of them may be
// used. 0 says all of them, 1 to 7 says so many at the beginning, and a value of 0x80 or more says
// none and why. The compiler reads and writes the shadow of the stack itself, by the same rule.
#ifndef KVUTILS_TESTS_SANITIZER_SHADOW_H_
#define KVUTILS_TESTS_SANITIZER_SHADOW_H_

#include <cstddef>
#include <cstdint>

namespace kv::sanitizer {

using Address = std::uintptr_t;

constexpr Address kGranule = 8;

// Where the shadow stands is told to the compiler as well, by -fasan-shadow-offset. It covers the
// addresses below the limit: the stacks, the heap and the modules of a program of ordinary size.
// Nothing is known of addresses above, and they pass.
constexpr Address kShadowOffset = 0x100'0000'0000;
constexpr Address kAddressLimit = 0x4'0000'0000;

// Why a granule must not be used. The first four are written by the compiler.
enum Poison : std::uint8_t {
  kBeforeStackObjects = 0xF1,
  kBetweenStackObjects = 0xF2,
  kBehindStackObjects = 0xF3,
  kOutOfScope = 0xF8,
  kGlobalMargin = 0xF9,
  kHeapMargin = 0xFA,
  kEmptyBlock = 0xFB,
  kFreed = 0xFD,
};

// Makes room for the shadow. The process ends if there is none.
void MapShadow();

inline std::uint8_t& ShadowOf(Address address) {
  return *reinterpret_cast<std::uint8_t*>(kShadowOffset + address / kGranule);
}

// Whether any of the bytes must not be used.
bool IsBad(Address begin, std::size_t size);

// Why bytes that are bad are so.
Poison ReasonFor(Address begin, std::size_t size);

// Allows `size` bytes from `begin` on, the beginning of a granule, and none of the rest up to
// `total`, the end of one.
void Allow(Address begin, std::size_t size, std::size_t total, Poison rest);

inline void AllowAll(Address begin, std::size_t size) { Allow(begin, size, size, kHeapMargin); }
void Forbid(Address begin, std::size_t size, Poison reason);

// Allows the stack from here up to its beginning: before an exception unwinds frames that do not
// clean up after themselves.
void AllowStack();

}  // namespace kv::sanitizer

#endif  // KVUTILS_TESTS_SANITIZER_SHADOW_H_
