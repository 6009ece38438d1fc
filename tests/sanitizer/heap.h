// A heap whose blocks stand between margins, and whose released blocks stay unused for a while.
#ifndef KVUTILS_TESTS_SANITIZER_HEAP_H_
#define KVUTILS_TESTS_SANITIZER_HEAP_H_

#include <cstddef>
#include <cstdint>

namespace kv::sanitizer {

// Stands in front of a block's content, as a part of its margin.
struct Block {
  const Block* self;
  Block* previous;
  Block* next;
  std::size_t size;
  std::uint64_t number;  // how many blocks there were before it
  const void* caller;    // the code that asked for it

  [[nodiscard]] char* Content() { return reinterpret_cast<char*>(this) + kMargin; }

  // The content lies at an address for any object.
  static constexpr std::size_t kMargin = 64;
};
static_assert(sizeof(Block) <= Block::kMargin);

void CreateHeap();

// Null if there is no memory.
void* Allocate(std::size_t size, const void* caller);
// Releases a block. One that the C library's own code has allocated goes back to it; anything else
// is a finding.
void Release(void* content, const void* caller);
void* Resize(void* content, std::size_t size, const void* caller);

// The number of the next block, and the latest living one, from which `previous` leads to all
// others. For a process at rest.
std::uint64_t NextBlockNumber();
Block* LatestBlock();

}  // namespace kv::sanitizer

#endif  // KVUTILS_TESTS_SANITIZER_HEAP_H_
