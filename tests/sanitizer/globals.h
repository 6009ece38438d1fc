// The global objects of the modules that the compiler has instrumented: it tells of each where it
// lies, what it is called and which source it stands in.
#ifndef KVUTILS_TESTS_SANITIZER_GLOBALS_H_
#define KVUTILS_TESTS_SANITIZER_GLOBALS_H_

#include <cstddef>

#include "tests/sanitizer/shadow.h"

namespace kv::sanitizer {

// As the compiler lays it out.
struct GlobalObject {
  Address begin;
  std::size_t size;
  std::size_t sizeWithMargin;
  const char* name;
  const char* source;
  std::size_t isInitialisedAtStart;
  const void* place;
  std::size_t definition;
};

void RegisterGlobals(const GlobalObject* objects, std::size_t count);
void UnregisterGlobals(const GlobalObject* objects, std::size_t count);

// The object that holds the address, in itself or in its margin; null if none does.
const GlobalObject* NearestGlobal(Address address);

}  // namespace kv::sanitizer

#endif  // KVUTILS_TESTS_SANITIZER_GLOBALS_H_
