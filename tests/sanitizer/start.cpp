// The start of the sanitizer: before the constructors of any module that it watches.
#include "tests/sanitizer/heap.h"
#include "tests/sanitizer/imports.h"
#include "tests/sanitizer/report.h"
#include "tests/sanitizer/shadow.h"

namespace {

// In a program that holds the sanitizer itself, the compiler's registration of globals has the
// priority 99.
[[gnu::constructor(98)]] void Start() {
  kv::sanitizer::MapShadow();
  kv::sanitizer::CreateHeap();
  kv::sanitizer::WatchTraps();
  kv::sanitizer::CheckCallsOfCppLibrary();
}

}  // namespace
