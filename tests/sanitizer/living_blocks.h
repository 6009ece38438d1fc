// The blocks of the heap that live, for a test that asks what its case has left behind.
#ifndef KVUTILS_TESTS_SANITIZER_LIVING_BLOCKS_H_
#define KVUTILS_TESTS_SANITIZER_LIVING_BLOCKS_H_

#include <cstddef>
#include <cstdint>

namespace kv::sanitizer {

// What a block is reached from: an object, in the words of the compiler, or a module of which more
// is not known. A block that nothing reaches has neither.
struct Holder {
  const char* object;  // null, or the name of a global object
  const char* source;  // null, or the source it stands in, or the name of the module
};

struct LivingBlock {
  std::size_t size;
  const void* caller;  // the code that asked for it
  Holder holder;
};

extern "C" {

// The number of blocks that have been allocated so far.
__declspec(dllexport) std::uint64_t KvasanBlockCount();

// Calls visit for each block that lives and is none of the first `count`, for a process of which no
// other thread runs.
__declspec(dllexport) void KvasanVisitBlocks(std::uint64_t count, void* context,
                                             void (*visit)(void* context,
                                                           const LivingBlock& block));
}

}  // namespace kv::sanitizer

#endif  // KVUTILS_TESTS_SANITIZER_LIVING_BLOCKS_H_
