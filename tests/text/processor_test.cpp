#include "utils/internal/processor.h"

#include <cpuid.h>
#include <gtest/gtest.h>

#include <immintrin.h>

#include "utils/internal/compiler.h"

namespace {

struct Leaf {
  unsigned eax = 0;
  unsigned ebx = 0;
  unsigned ecx = 0;
  unsigned edx = 0;
};

Leaf AskLeaf(unsigned number) {
  Leaf leaf;
  __get_cpuid_count(number, 0, &leaf.eax, &leaf.ebx, &leaf.ecx, &leaf.edx);
  return leaf;
}

bool Has(unsigned bits, unsigned place) { return ((bits >> place) & 1) != 0; }

// The parts of the registers that the system saves.
KVUTILS_TARGET("xsave") unsigned SavedParts() { return static_cast<unsigned>(_xgetbv(0)); }

// The places of the bits are those of the leaves 1 and 7 of CPUID and of XCR0 in Intel's manual.
TEST(ProcessorFlags, TellWhatTheProcessorAndTheSystemOffer) {
  const Leaf one = AskLeaf(1);
  const Leaf seven = AskLeaf(7);
  const unsigned saved = Has(one.ecx, 27) ? SavedParts() : 0;
  const bool savesAvx = (saved & 0x06) == 0x06;
  const bool savesAvx512 = (saved & 0xE6) == 0xE6;
  const bool carryless = Has(one.ecx, 1) && Has(one.ecx, 19);
  const bool avx512 = Has(seven.ebx, 16) && Has(seven.ebx, 30) && Has(seven.ebx, 31);

  EXPECT_EQ(kv::internal::g_processor.carryless128, carryless);
  EXPECT_EQ(kv::internal::g_processor.avx2, savesAvx && Has(seven.ebx, 5));
  EXPECT_EQ(kv::internal::g_processor.carryless512,
            savesAvx512 && carryless && avx512 && Has(seven.ecx, 10));
}

}  // namespace
