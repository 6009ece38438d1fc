// The comparisons of names under each set of flags.
#ifndef KVUTILS_TESTS_TEXT_COLLATION_FORMS_H_
#define KVUTILS_TESTS_TEXT_COLLATION_FORMS_H_

#include "utils/text/text.h"

namespace kv::test {

inline int WordSort(const char* a, const char* b) { return CompareStrings(a, b, false); }
inline int StringSort(const char* a, const char* b) { return CompareStrings(a, b, true); }

// A comparison under a language, and the flags that define its results.
struct CollationForm {
  const char* language;
  int (*compare)(const char*, const char*);
  unsigned flags;
};

inline constexpr CollationForm kCollationForms[] = {
    {"en", WordSort, 0x30},
    {"en", StringSort, 0x1030},
    {"ru", WordSort, 0x10},
    {"ru", StringSort, 0x1010},
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_TEXT_COLLATION_FORMS_H_
