#include "tests/fuzz/support/coverage.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace {

// Pairs of branches, by a hash of 16 bits. Two pairs with one hash count as one.
constexpr int kHashBits = 16;
constexpr std::size_t kPairs = std::size_t{1} << kHashBits;

std::array<std::uint8_t, kPairs> g_timesTaken;  // by this input; stays at its largest value
std::array<std::uint8_t, kPairs> g_seen;    // by all inputs: a bit for each rough number of times
std::array<std::uint16_t, kPairs> g_taken;  // the pairs of this input, in order
std::size_t g_takenCount = 0;
int g_seenCount = 0;
std::uintptr_t g_previous = 0;
bool g_isNoting = false;

// One of eight bits for a number of times from 1 on.
std::uint8_t RoughNumber(unsigned times) {
  int bit = 0;
  if (times <= 3) {
    bit = static_cast<int>(times) - 1;
  } else {
    for (bit = 3; times >= 8 && bit < 7; times /= 2) ++bit;
  }
  return static_cast<std::uint8_t>(1U << bit);
}

}  // namespace

// The compiler's name; its caller is the branch.
extern "C" KVCOVERAGE_API void __sanitizer_cov_trace_pc() {
  if (!g_isNoting) return;
  constexpr std::uint64_t kSpread = 0x9E37'79B9'7F4A'7C15;  // 2^64 by the golden ratio
  const auto branch = reinterpret_cast<std::uintptr_t>(__builtin_return_address(0));
  const std::size_t pair = ((branch ^ (g_previous >> 1)) * kSpread) >> (64 - kHashBits);
  g_previous = branch;
  if (g_timesTaken[pair] == 0) g_taken[g_takenCount++] = static_cast<std::uint16_t>(pair);
  if (g_timesTaken[pair] < UINT8_MAX) ++g_timesTaken[pair];
}

void KvcoverageStart() {
  g_previous = 0;
  g_isNoting = true;
}

bool KvcoverageStop() {
  g_isNoting = false;
  bool isNew = false;
  for (std::size_t i = 0; i < g_takenCount; ++i) {
    const std::size_t pair = g_taken[i];
    const std::uint8_t number = RoughNumber(g_timesTaken[pair]);
    if ((g_seen[pair] & number) == 0) {
      if (g_seen[pair] == 0) ++g_seenCount;
      g_seen[pair] |= number;
      isNew = true;
    }
    g_timesTaken[pair] = 0;
  }
  g_takenCount = 0;
  return isNew;
}

int KvcoverageCount() { return g_seenCount; }
