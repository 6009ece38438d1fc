// What code compiled with -fsanitize=kernel-address calls: before each access to memory, at the
// start and end of each module, before each throw. The names are the compiler's.
#include <cstddef>
#include <cstdint>

#include "tests/sanitizer/globals.h"
#include "tests/sanitizer/heap.h"
#include "tests/sanitizer/imports.h"
#include "tests/sanitizer/report.h"
#include "tests/sanitizer/shadow.h"

using kv::sanitizer::Address;

namespace {

// Before the constructors of any module that it watches: the compiler registers globals with the
// priority 99.
[[gnu::constructor(98)]] void Start() {
  kv::sanitizer::MapShadow();
  kv::sanitizer::CreateHeap();
  kv::sanitizer::WatchTraps();
  kv::sanitizer::CheckCallsOfCppLibrary();
}

}  // namespace

#define KVASAN_EXPORT extern "C" __declspec(dllexport)

// A hook has no name but this one, and none of its names can be made by the language.
#define KVASAN_CHECK(use, address, size)                \
  if (kv::sanitizer::IsBad(address, size)) [[unlikely]] \
  kv::sanitizer::ReportMemory(use, address, size, __builtin_return_address(0))

#define KVASAN_HOOKS_FOR(size)                                       \
  KVASAN_EXPORT void __asan_load##size##_noabort(Address address) {  \
    KVASAN_CHECK("read", address, size);                             \
  }                                                                  \
  KVASAN_EXPORT void __asan_store##size##_noabort(Address address) { \
    KVASAN_CHECK("write", address, size);                            \
  }

KVASAN_HOOKS_FOR(1)
KVASAN_HOOKS_FOR(2)
KVASAN_HOOKS_FOR(4)
KVASAN_HOOKS_FOR(8)
KVASAN_HOOKS_FOR(16)

KVASAN_EXPORT void __asan_loadN_noabort(Address address, std::size_t size) {
  KVASAN_CHECK("read", address, size);
}
KVASAN_EXPORT void __asan_storeN_noabort(Address address, std::size_t size) {
  KVASAN_CHECK("write", address, size);
}

KVASAN_EXPORT void __asan_poison_stack_memory(Address begin, std::size_t size) {
  kv::sanitizer::Forbid(begin, size, kv::sanitizer::kOutOfScope);
}
KVASAN_EXPORT void __asan_unpoison_stack_memory(Address begin, std::size_t size) {
  kv::sanitizer::AllowAll(begin, size);
}
KVASAN_EXPORT void __asan_handle_no_return() { kv::sanitizer::AllowStack(); }

KVASAN_EXPORT void __asan_register_globals(const kv::sanitizer::GlobalObject* objects,
                                           std::size_t count) {
  kv::sanitizer::RegisterGlobals(objects, count);
  kv::sanitizer::CheckCallsOfModuleAt(objects);
}
KVASAN_EXPORT void __asan_unregister_globals(const kv::sanitizer::GlobalObject* objects,
                                             std::size_t count) {
  kv::sanitizer::UnregisterGlobals(objects, count);
}
// Objects whose initialisers run at the start may be used by one another in any order.
KVASAN_EXPORT void __asan_before_dynamic_init(const char*) {}
KVASAN_EXPORT void __asan_after_dynamic_init() {}
