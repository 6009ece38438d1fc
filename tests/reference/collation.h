// The defining forms of the comparisons of names: each question goes to the system.
#ifndef KVUTILS_TESTS_REFERENCE_COLLATION_H_
#define KVUTILS_TESTS_REFERENCE_COLLATION_H_

#include <windows.h>

#include <cstring>

#include "utils/text/text.h"

namespace kv::reference {

inline constexpr unsigned kUtf8 = 65001;

// Of units with their terminators.
inline int CompareUnits(const wchar_t* a, int sizeOfA, const wchar_t* b, int sizeOfB,
                        unsigned flags) {
  const int result =
      ::CompareStringEx(LOCALE_NAME_INVARIANT, flags, a, sizeOfA, b, sizeOfB, nullptr, nullptr, 0);
  return result == 0 ? -3 : result - CSTR_EQUAL;
}

// Of texts of at most 255 units.
inline int CompareUtf8(const char* a, const char* b, unsigned flags) {
  constexpr int kUnits = 256;
  wchar_t unitsOfA[kUnits];
  wchar_t unitsOfB[kUnits];
  const int sizeOfA = ::MultiByteToWideChar(kUtf8, 0, a, -1, unitsOfA, kUnits);
  const int sizeOfB = ::MultiByteToWideChar(kUtf8, 0, b, -1, unitsOfB, kUnits);
  return CompareUnits(unitsOfA, sizeOfA, unitsOfB, sizeOfB, flags);
}

// Of names of at most 255 bytes.
inline int CompareAsteroidNames(const char* a, const char* b, unsigned flags) {
  constexpr std::size_t kBytes = 256;
  char copyOfA[kBytes];
  char copyOfB[kBytes];
  std::strcpy(copyOfA, a);
  std::strcpy(copyOfB, b);
  ClearString(copyOfA, "()");
  ClearString(copyOfB, "()");
  return CompareUtf8(copyOfA, copyOfB, flags);
}

}  // namespace kv::reference

#endif  // KVUTILS_TESTS_REFERENCE_COLLATION_H_
