// The library's allocations, counted together, each of which can be made to fail.
#ifndef KVUTILS_TESTS_FAULTS_ALLOCATIONS_H_
#define KVUTILS_TESTS_FAULTS_ALLOCATIONS_H_

#include <cstddef>
#include <cstdlib>
#include <new>

#include "tests/faults/faulty_calls.h"
#include "tests/support/failing_system.h"
#include "tests/support/import_patch.h"

namespace kv::test {

// While it lives, allocations fail as its plan says: those of C++ and, for ICU, those of C. The
// test's own go on.
class FaultyAllocations {
 public:
  FaultyAllocations() { plan_.Stop(); }

  static FailurePlan& Plan() { return plan_; }

 private:
  static void* New(std::size_t size) {
    if (plan_.Fails()) throw std::bad_alloc();
    return ::operator new(size);
  }
  static void* NewArray(std::size_t size) {
    if (plan_.Fails()) throw std::bad_alloc();
    return ::operator new[](size);
  }
  static void* NewArrayOrNull(std::size_t size, const std::nothrow_t& nothrow) {
    return plan_.Fails() ? nullptr : ::operator new[](size, nothrow);
  }
  static void* Malloc(std::size_t size) { return plan_.Fails() ? nullptr : std::malloc(size); }
  static void* Calloc(std::size_t count, std::size_t size) {
    return plan_.Fails() ? nullptr : std::calloc(count, size);
  }
  static void* Realloc(void* block, std::size_t size) {
    return plan_.Fails() ? nullptr : std::realloc(block, size);
  }

  static inline FailurePlan plan_;

  ImportPatch new_{kNew, &New};
  ImportPatch newArray_{"_Znay", &NewArray};
  ImportPatch newArrayOrNull_{kNewArrayOrNull, &NewArrayOrNull};
  ImportPatch malloc_{"malloc", &Malloc};
  ImportPatch calloc_{"calloc", &Calloc};
  ImportPatch realloc_{"realloc", &Realloc};
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_FAULTS_ALLOCATIONS_H_
