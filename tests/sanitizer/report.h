// What is said of a finding, and the end of the process that follows.
#ifndef KVUTILS_TESTS_SANITIZER_REPORT_H_
#define KVUTILS_TESTS_SANITIZER_REPORT_H_

#include <cstddef>

#include "tests/sanitizer/shadow.h"

namespace kv::sanitizer {

// The process ends with one of these after a finding. Neither is an exit code of the library or of
// a program of the tests.
enum class Finding : unsigned { kMemory = 81, kUndefinedBehaviour = 82 };

// The sanitizer itself cannot go on.
[[noreturn]] void EndProcess(const char* reason);

// Says that `use`, such as "read" or "write by ReadFile", touches bytes that it must not touch.
// `caller` is an address in the code that is to blame.
[[noreturn]] void ReportMemory(const char* use, Address begin, std::size_t size,
                               const void* caller);

// Says of a block what is wrong with the attempt to release it.
[[noreturn]] void ReportRelease(const char* fault, const void* block, const void* caller);

// Has the traps of -fsanitize-undefined-trap-on-error reported.
void WatchTraps();

// Reports if any of the bytes must not be used.
inline void Check(const char* use, const void* begin, std::size_t size, const void* caller) {
  const auto address = reinterpret_cast<Address>(begin);
  if (IsBad(address, size)) [[unlikely]]
    ReportMemory(use, address, size, caller);
}

}  // namespace kv::sanitizer

#endif  // KVUTILS_TESTS_SANITIZER_REPORT_H_
