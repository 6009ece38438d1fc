// Calls of code that the compiler has not instrumented, the system and the C library: the import
// tables of the modules under test lead to functions that check the caller's claims first.
#ifndef KVUTILS_TESTS_SANITIZER_IMPORTS_H_
#define KVUTILS_TESTS_SANITIZER_IMPORTS_H_

#include <span>

namespace kv::sanitizer {

struct CheckedCall {
  const char* name;  // as import tables name the function
  void* replacement;
};

template <typename Function>
CheckedCall Checked(const char* name, Function* replacement) {
  return {name, reinterpret_cast<void*>(replacement)};
}

// One table for each kind of function, in the source of that name.
std::span<const CheckedCall> AllocationCalls();
std::span<const CheckedCall> TextCalls();
std::span<const CheckedCall> SystemCalls();

// Has the calls of the module that holds the address checked from here on. A module that has been
// seen before stays as it is.
void CheckCallsOfModuleAt(const void* address);

// The same of the C++ library, if the process has it as a DLL: what it allocates is released by its
// callers.
void CheckCallsOfCppLibrary();

}  // namespace kv::sanitizer

#endif  // KVUTILS_TESTS_SANITIZER_IMPORTS_H_
