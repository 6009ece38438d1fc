#include "tests/sanitizer/shadow.h"

#include <windows.h>

#include <cstring>

#include "tests/sanitizer/report.h"

namespace kv::sanitizer {
namespace {

constexpr std::uint8_t kFirstReason = 0x80;

bool IsCovered(Address begin, std::size_t size) {
  return begin < kAddressLimit && size <= kAddressLimit - begin;
}

Address StackBegin() {
  ULONG_PTR low = 0;
  ULONG_PTR high = 0;
  ::GetCurrentThreadStackLimits(&low, &high);
  return high;
}

}  // namespace

void MapShadow() {
  void* const shadow =
      ::VirtualAlloc(reinterpret_cast<void*>(kShadowOffset), kAddressLimit / kGranule,
                     MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
  if (shadow == nullptr) EndProcess("there is no room for the shadow");
  if (StackBegin() > kAddressLimit) EndProcess("the stack lies where it has no shadow");
}

bool IsBad(Address begin, std::size_t size) {
  if (size == 0 || !IsCovered(begin, size)) return false;
  const Address last = begin + size - 1;
  const std::uint8_t* shadow = &ShadowOf(begin);
  const std::uint8_t* const end = &ShadowOf(last);
  for (; shadow != end; ++shadow) {
    if (*shadow != 0) return true;
  }
  return *shadow != 0 && (*shadow >= kFirstReason || last % kGranule >= *shadow);
}

Poison ReasonFor(Address begin, std::size_t size) {
  // The reason stands in the first granule that is wholly bad; a granule of which a part may be
  // used has it in the next.
  const std::uint8_t* shadow = &ShadowOf(begin);
  const std::uint8_t* const end = &ShadowOf(begin + size - 1) + 1;
  while (shadow != end && *shadow < kFirstReason) ++shadow;
  return static_cast<Poison>(*shadow);
}

void Allow(Address begin, std::size_t size, std::size_t total, Poison rest) {
  if (!IsCovered(begin, total)) return;
  std::uint8_t* shadow = &ShadowOf(begin);
  std::uint8_t* const end = shadow + total / kGranule;
  std::memset(shadow, 0, size / kGranule);
  shadow += size / kGranule;
  if (size % kGranule != 0) *shadow++ = size % kGranule;
  if (shadow < end) std::memset(shadow, rest, static_cast<std::size_t>(end - shadow));
}

void Forbid(Address begin, std::size_t size, Poison reason) { Allow(begin, 0, size, reason); }

void AllowStack() {
  const auto here = reinterpret_cast<Address>(__builtin_frame_address(0)) / kGranule * kGranule;
  AllowAll(here, StackBegin() - here);
}

}  // namespace kv::sanitizer
