// The allocation of the C library, upon which operator new stands, and the beginning of a throw.
#include <unwind.h>

#include <cstdlib>
#include <cstring>

#include "tests/sanitizer/heap.h"
#include "tests/sanitizer/imports.h"
#include "tests/sanitizer/shadow.h"

namespace kv::sanitizer {
namespace {

void* AllocateChecked(std::size_t size) { return Allocate(size, __builtin_return_address(0)); }

void ReleaseChecked(void* content) { Release(content, __builtin_return_address(0)); }

void* AllocateZeros(std::size_t count, std::size_t size) {
  std::size_t product = 0;
  if (__builtin_mul_overflow(count, size, &product)) return nullptr;
  void* const content = Allocate(product, __builtin_return_address(0));
  if (content != nullptr) std::memset(content, 0, product);
  return content;
}

void* ResizeChecked(void* content, std::size_t size) {
  return Resize(content, size, __builtin_return_address(0));
}

// The C++ library throws as well, through frames of instrumented code that do not clean up.
_Unwind_Reason_Code Raise(_Unwind_Exception* exception) {
  AllowStack();
  return ::_Unwind_RaiseException(exception);
}

}  // namespace

std::span<const CheckedCall> AllocationCalls() {
  static const CheckedCall calls[] = {
      Checked("malloc", AllocateChecked),       Checked("calloc", AllocateZeros),
      Checked("realloc", ResizeChecked),        Checked("free", ReleaseChecked),
      Checked("_Unwind_RaiseException", Raise),
  };
  return calls;
}

}  // namespace kv::sanitizer
