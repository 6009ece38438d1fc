#include "tests/sanitizer/heap.h"

#include <malloc.h>
#include <windows.h>

#include <cstdlib>
#include <cstring>

#include "tests/sanitizer/report.h"
#include "tests/sanitizer/shadow.h"

namespace kv::sanitizer {
namespace {

constexpr std::size_t kMarginBehind = 64;

// Released blocks wait until so many bytes were released after them.
constexpr std::size_t kMaxWaiting = std::size_t{64} << 20;

// New content is neither zero nor a likely number; of big blocks the beginning.
constexpr int kFill = 0xBE;
constexpr std::size_t kMaxFill = 4096;

HANDLE g_heap = nullptr;
SRWLOCK g_lock = SRWLOCK_INIT;
std::uint64_t g_nextNumber = 0;
Block* g_latest = nullptr;
Block* g_oldestWaiting = nullptr;
Block* g_youngestWaiting = nullptr;
std::size_t g_waiting = 0;

class Locked {
 public:
  Locked() { ::AcquireSRWLockExclusive(&g_lock); }
  ~Locked() { ::ReleaseSRWLockExclusive(&g_lock); }
  Locked(const Locked&) = delete;
  Locked& operator=(const Locked&) = delete;
};

Address AddressOf(const void* pointer) { return reinterpret_cast<Address>(pointer); }

std::size_t Rounded(std::size_t size) { return (size + kGranule - 1) / kGranule * kGranule; }

std::size_t WholeSize(const Block& block) {
  return Block::kMargin + Rounded(block.size) + kMarginBehind;
}

Block& BlockOf(void* content) {
  return *reinterpret_cast<Block*>(static_cast<char*>(content) - Block::kMargin);
}

// Whether a living or waiting block has its content at the address. Behind a margin the header of
// the block can be read.
bool IsContent(void* content) {
  const Address address = AddressOf(content);
  return address % alignof(std::max_align_t) == 0 && address < kAddressLimit &&
         ShadowOf(address - 1) == kHeapMargin && ShadowOf(address) != kHeapMargin &&
         BlockOf(content).self == &BlockOf(content);
}

// Content of no bytes has a granule of its own in the margin behind, so that its state can be told.
void Mark(Block& block, bool isReleased) {
  const Address content = AddressOf(block.Content());
  const std::size_t room = Rounded(block.size) + kMarginBehind;
  if (isReleased) {
    Forbid(content, block.size == 0 ? kGranule : Rounded(block.size), kFreed);
  } else {
    Forbid(AddressOf(&block), Block::kMargin, kHeapMargin);
    Allow(content, block.size, room, kHeapMargin);
    if (block.size == 0) Forbid(content, kGranule, kEmptyBlock);
  }
}

void Unlink(Block& block) {
  if (block.previous != nullptr) block.previous->next = block.next;
  (block.next != nullptr ? block.next->previous : g_latest) = block.previous;
}

// Gives the oldest waiting blocks back to the system.
void LimitWaiting() {
  while (g_waiting > kMaxWaiting) {
    Block& oldest = *g_oldestWaiting;
    g_oldestWaiting = oldest.next;
    if (g_oldestWaiting == nullptr) g_youngestWaiting = nullptr;
    g_waiting -= WholeSize(oldest);
    AllowAll(AddressOf(&oldest), WholeSize(oldest));
    ::HeapFree(g_heap, 0, &oldest);
  }
}

void ReleaseForeign(void* content, const void* caller) {
  const auto heapOfCLibrary = reinterpret_cast<HANDLE>(::_get_heap_handle());
  if (!::HeapValidate(heapOfCLibrary, 0, content)) {
    ReportRelease("release of what is not the beginning of a block", content, caller);
  }
  std::free(content);
}

}  // namespace

void CreateHeap() {
  g_heap = ::HeapCreate(0, 0, 0);
  if (g_heap == nullptr) EndProcess("there is no heap");
}

void* Allocate(std::size_t size, const void* caller) {
  constexpr std::size_t kMax = SIZE_MAX / 2;
  if (size > kMax) return nullptr;
  void* const memory = ::HeapAlloc(g_heap, 0, Block::kMargin + Rounded(size) + kMarginBehind);
  if (memory == nullptr) return nullptr;
  auto& block = *static_cast<Block*>(memory);
  block = {&block, nullptr, nullptr, size, 0, caller};
  std::memset(block.Content(), kFill, size < kMaxFill ? size : kMaxFill);
  Mark(block, false);
  const Locked locked;
  block.number = g_nextNumber++;
  block.previous = g_latest;
  if (g_latest != nullptr) g_latest->next = &block;
  g_latest = &block;
  return block.Content();
}

void Release(void* content, const void* caller) {
  if (content == nullptr) return;
  if (!IsContent(content)) return ReleaseForeign(content, caller);
  Block& block = BlockOf(content);
  const Locked locked;
  if (ShadowOf(AddressOf(content)) == kFreed) {
    ReportRelease("release of a block that is released", content, caller);
  }
  Mark(block, true);
  Unlink(block);
  block.next = nullptr;
  (g_youngestWaiting != nullptr ? g_youngestWaiting->next : g_oldestWaiting) = &block;
  g_youngestWaiting = &block;
  g_waiting += WholeSize(block);
  LimitWaiting();
}

void* Resize(void* content, std::size_t size, const void* caller) {
  if (content == nullptr) return Allocate(size, caller);
  if (!IsContent(content)) return std::realloc(content, size);
  if (size == 0) {
    Release(content, caller);
    return nullptr;
  }
  void* const resized = Allocate(size, caller);
  if (resized == nullptr) return nullptr;
  const std::size_t oldSize = BlockOf(content).size;
  std::memcpy(resized, content, oldSize < size ? oldSize : size);
  Release(content, caller);
  return resized;
}

std::uint64_t NextBlockNumber() { return g_nextNumber; }
Block* LatestBlock() { return g_latest; }

}  // namespace kv::sanitizer
