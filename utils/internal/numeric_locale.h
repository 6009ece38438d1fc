#ifndef KVUTILS_UTILS_INTERNAL_NUMERIC_LOCALE_H_
#define KVUTILS_UTILS_INTERNAL_NUMERIC_LOCALE_H_

#include <clocale>

#include <string>

namespace kv::internal {

// While alive, the calling thread reads and prints numbers with ".", whatever locale the host has
// set. Other threads keep theirs. Where "." already holds, it costs one look at the locale and
// changes nothing.
class ScopedCNumericLocale {
 public:
  ScopedCNumericLocale() {
    const char* point = std::localeconv()->decimal_point;
    if (point[0] == '.' && point[1] == '\0') return;
    previousMode_ = ::_configthreadlocale(_ENABLE_PER_THREAD_LOCALE);
    if (const char* name = std::setlocale(LC_NUMERIC, nullptr)) previousName_ = name;
    std::setlocale(LC_NUMERIC, "C");
  }
  ~ScopedCNumericLocale() {
    if (previousName_.empty()) return;
    std::setlocale(LC_NUMERIC, previousName_.c_str());
    if (previousMode_ != -1) ::_configthreadlocale(previousMode_);
  }
  ScopedCNumericLocale(const ScopedCNumericLocale&) = delete;
  ScopedCNumericLocale& operator=(const ScopedCNumericLocale&) = delete;

 private:
  int previousMode_ = -1;
  std::string previousName_;
};

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_INTERNAL_NUMERIC_LOCALE_H_
