// A block is in use as long as something that lives holds its address. So the search goes from the
// writable sections of the modules to the blocks whose addresses stand there, and from each block
// to those whose addresses stand in it. Whatever looks like an address counts as one. Blocks that
// it does not reach are lost: nobody can release them any more.
#include "tests/sanitizer/living_blocks.h"

#include <windows.h>

#include <psapi.h>

#include <cstdlib>
#include <cstring>
#include <span>

#include "tests/sanitizer/globals.h"
#include "tests/sanitizer/heap.h"

namespace kv::sanitizer {
namespace {

struct Found {
  Block* block;
  Holder holder;
  bool isReached;
};

Address ContentOf(const Found& found) { return reinterpret_cast<Address>(found.block->Content()); }

int CompareFound(const void* a, const void* b) {
  const Address addressOfA = ContentOf(*static_cast<const Found*>(a));
  const Address addressOfB = ContentOf(*static_cast<const Found*>(b));
  return (addressOfA > addressOfB) - (addressOfA < addressOfB);
}

class Search {
 public:
  Search() {
    for (Block* block = LatestBlock(); block != nullptr; block = block->previous) ++count_;
    // The memory is the system's: the search does not change what it counts.
    blocks_ = static_cast<Found*>(Reserve(count_ * sizeof(Found)));
    pending_ = static_cast<Found**>(Reserve(count_ * sizeof(Found*)));
    std::size_t i = 0;
    for (Block* block = LatestBlock(); block != nullptr; block = block->previous) {
      blocks_[i++] = {block, {nullptr, nullptr}, false};
    }
    std::qsort(blocks_, count_, sizeof(Found), CompareFound);
    FromModules();
  }
  ~Search() {
    ::VirtualFree(blocks_, 0, MEM_RELEASE);
    ::VirtualFree(pending_, 0, MEM_RELEASE);
  }
  Search(const Search&) = delete;
  Search& operator=(const Search&) = delete;

  [[nodiscard]] std::span<const Found> Blocks() const { return {blocks_, count_}; }

 private:
  static void* Reserve(std::size_t size) {
    return ::VirtualAlloc(nullptr, size + 1, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
  }

  // The block that an address lies in, or just behind.
  Found* Find(Address address) {
    std::size_t begin = 0;
    std::size_t end = count_;
    while (begin != end) {
      const std::size_t middle = (begin + end) / 2;
      if (ContentOf(blocks_[middle]) <= address) {
        begin = middle + 1;
      } else {
        end = middle;
      }
    }
    if (begin == 0) return nullptr;
    Found& found = blocks_[begin - 1];
    return address - ContentOf(found) <= found.block->size ? &found : nullptr;
  }

  template <typename GetHolder>
  void FromWords(Address begin, std::size_t size, GetHolder getHolder) {
    constexpr std::size_t kWord = sizeof(Address);
    for (Address at = begin; at + kWord <= begin + size; at += kWord) {
      Address word = 0;
      std::memcpy(&word, reinterpret_cast<const void*>(at), kWord);
      Found* const found = Find(word);
      if (found == nullptr || found->isReached) continue;
      found->isReached = true;
      found->holder = getHolder(at);
      pending_[pendingCount_++] = found;
    }
  }

  void FromPending() {
    while (pendingCount_ != 0) {
      const Found& found = *pending_[--pendingCount_];
      FromWords(ContentOf(found), found.block->size, [&](Address) { return found.holder; });
    }
  }

  void FromModules() {
    HMODULE modules[256];
    DWORD size = 0;
    ::EnumProcessModules(::GetCurrentProcess(), modules, sizeof modules, &size);
    for (const HMODULE module : std::span(modules).first(size / sizeof(HMODULE))) {
      HMODULE own = nullptr;
      ::GetModuleHandleExW(
          GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
          reinterpret_cast<const wchar_t*>(&LatestBlock), &own);
      if (module != own) FromModule(module);
    }
  }

  void FromModule(HMODULE module) {
    const auto* const image = reinterpret_cast<const char*>(module);
    const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(image);
    const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(image + dos->e_lfanew);
    const char* const name = NameOf(headers, image);
    for (const IMAGE_SECTION_HEADER& section :
         std::span(reinterpret_cast<const IMAGE_SECTION_HEADER*>(headers + 1),
                   headers->FileHeader.NumberOfSections)) {
      if ((section.Characteristics & IMAGE_SCN_MEM_WRITE) == 0) continue;
      FromWords(
          reinterpret_cast<Address>(image) + section.VirtualAddress, section.Misc.VirtualSize,
          [name](Address at) {
            const GlobalObject* const object = NearestGlobal(at);
            return object != nullptr ? Holder{object->name, object->source} : Holder{nullptr, name};
          });
      FromPending();
    }
  }

  // A DLL's own name from its export table; a program has none.
  static const char* NameOf(const IMAGE_NT_HEADERS* headers, const char* image) {
    const auto& table = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
    if (table.Size == 0) return "program";
    return image +
           reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(image + table.VirtualAddress)->Name;
  }

  std::size_t count_ = 0;
  Found* blocks_ = nullptr;
  Found** pending_ = nullptr;
  std::size_t pendingCount_ = 0;
};

}  // namespace

std::uint64_t KvasanBlockCount() { return NextBlockNumber(); }

void KvasanVisitBlocks(std::uint64_t count, void* context,
                       void (*visit)(void* context, const LivingBlock& block)) {
  if (LatestBlock() == nullptr || LatestBlock()->number < count) return;
  const Search search;
  for (const Found& found : search.Blocks()) {
    const Block& block = *found.block;
    if (block.number >= count) visit(context, {block.size, block.caller, found.holder});
  }
}

}  // namespace kv::sanitizer
