#include "utils/internal/icu_setup.h"

#include "utils/internal/win32.h"

#include <unicode/locid.h>
#include <unicode/timezone.h>
#include <unicode/uclean.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>

namespace kv::internal {
namespace {

constexpr std::size_t kAlignment = alignof(std::max_align_t);

// What stands in front of each of ICU's blocks.
struct alignas(kAlignment) Header {
  std::size_t size;  // of the block behind it
};
static_assert(sizeof(Header) == kAlignment);

// Memory for blocks one behind the other. It begins anew when all of them are released.
class Reserve {
 public:
  // Null when there is no room left.
  void* Take(std::size_t size) {
    const std::size_t room = kSize - used_;
    if (size > room) return nullptr;
    void* const block = bytes_ + used_;
    used_ += (size + kAlignment - 1) / kAlignment * kAlignment;  // not beyond the room
    ++blocks_;
    return block;
  }
  void Release() {
    if (--blocks_ == 0) used_ = 0;
  }

  [[nodiscard]] bool Holds(const void* block) const {
    const std::less<const void*> isBefore;
    return !isBefore(block, bytes_) && isBefore(block, bytes_ + kSize);
  }

 private:
  static constexpr std::size_t kSize = std::size_t{512} << 10;
  static_assert(kSize % kAlignment == 0);

  alignas(kAlignment) std::byte bytes_[kSize];
  std::size_t used_;
  std::size_t blocks_;
};

// Process-wide, and not initialised by any code. Nothing destroys them: ICU has no end. A block is
// taken by the thread that holds the reserve, and released while it holds it: no zone that is made
// of the reserve is kept.
constinit Reserve reserveOfSetUp{};
constinit Reserve reserveOfZones{};
constinit Reserve* reserveInUse = &reserveOfSetUp;
constinit std::atomic<DWORD> holder = 0;  // the thread that holds the reserve
constinit std::atomic<unsigned> refusals = 0;

void* TakeFromReserve(std::size_t size) {
  return holder.load() == ::GetCurrentThreadId() ? reserveInUse->Take(size) : nullptr;
}

void* U_CALLCONV Allocate(const void* /*context*/, std::size_t size) {
  if (size > SIZE_MAX - sizeof(Header)) return nullptr;
  const std::size_t needed = sizeof(Header) + size;
  void* memory = std::malloc(needed);
  if (memory == nullptr) {
    ++refusals;
    memory = TakeFromReserve(needed);
  }
  if (memory == nullptr) return nullptr;
  auto* const header = static_cast<Header*>(memory);
  header->size = size;
  return header + 1;
}

void U_CALLCONV Release(const void* /*context*/, void* block) {
  if (block == nullptr) return;
  Header* const header = static_cast<Header*>(block) - 1;
  for (Reserve* const reserve : {&reserveOfSetUp, &reserveOfZones}) {
    if (reserve->Holds(header)) return reserve->Release();
  }
  std::free(header);
}

void* U_CALLCONV Reallocate(const void* context, void* block, std::size_t size) {
  void* const moved = Allocate(context, size);
  if (moved == nullptr || block == nullptr) return moved;
  std::memcpy(moved, block, std::min(size, (static_cast<const Header*>(block) - 1)->size));
  Release(context, block);
  return moved;
}

// The state that ICU keeps of what the library asks for: the default locale, the bundle of the
// zones and its version, and what zones of the other kinds need, of a fixed offset and none.
bool SetUp() {
  UErrorCode status = U_ZERO_ERROR;
  ::u_setMemoryFunctions(nullptr, Allocate, Reallocate, Release, &status);
  const IcuReserve reserve;
  icu::Locale::getDefault();
  for (const char16_t* name : {u"Europe/Berlin", u"GMT+5", u""}) {
    const std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(name));
  }
  icu::TimeZone::getTZDataVersion(status);
  reserveInUse = &reserveOfZones;
  return true;
}

}  // namespace

void SetUpIcu() { [[maybe_unused]] static const bool isSetUp = SetUp(); }

IcuReserve::IcuReserve() : isHeld_(false), refusals_(refusals.load()) {
  DWORD none = 0;
  isHeld_ = holder.compare_exchange_strong(none, ::GetCurrentThreadId());
}

IcuReserve::~IcuReserve() {
  if (isHeld_) holder = 0;
}

bool IcuReserve::IsNeeded() const { return refusals_ != refusals.load(); }

}  // namespace kv::internal
