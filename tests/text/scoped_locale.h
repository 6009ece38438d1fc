#ifndef KVUTILS_TESTS_TEXT_SCOPED_LOCALE_H_
#define KVUTILS_TESTS_TEXT_SCOPED_LOCALE_H_

#include <gtest/gtest.h>
#include <locale.h>

namespace kv::test {

// While alive, the process runs under the named locale; afterwards under "C".
class ScopedLocale {
 public:
  explicit ScopedLocale(const char* name) { EXPECT_NE(::setlocale(LC_ALL, name), nullptr); }
  ~ScopedLocale() { ::setlocale(LC_ALL, "C"); }
  ScopedLocale(const ScopedLocale&) = delete;
  ScopedLocale& operator=(const ScopedLocale&) = delete;
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_TEXT_SCOPED_LOCALE_H_
