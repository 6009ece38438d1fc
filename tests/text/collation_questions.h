// What the library asks CompareStringEx: counted, and answered by the system or the test.
#ifndef KVUTILS_TESTS_TEXT_COLLATION_QUESTIONS_H_
#define KVUTILS_TESTS_TEXT_COLLATION_QUESTIONS_H_

#include <windows.h>

#include <atomic>
#include <ostream>
#include <string_view>

#include "tests/support/import_patch.h"

namespace kv::test {

// The result of CompareStringEx for two texts in the invariant locale.
using Answer = int (*)(DWORD flags, std::wstring_view a, std::wstring_view b);

inline int AnswerOfSystem(DWORD flags, std::wstring_view a, std::wstring_view b) {
  return ::CompareStringEx(LOCALE_NAME_INVARIANT, flags, a.data(), static_cast<int>(a.size()),
                           b.data(), static_cast<int>(b.size()), nullptr, nullptr, 0);
}

// A stand-in for the system, and its name.
struct System {
  const char* what;
  Answer answer;
};
inline void PrintTo(const System& system, std::ostream* out) { *out << system.what; }

// For the life of the object the library's questions get these answers. One at a time.
class Questions {
 public:
  explicit Questions(Answer answer = AnswerOfSystem) : patch_("CompareStringEx", Ask) {
    s_answer = answer;
    s_count = 0;
  }

  static long long Count() { return s_count; }

 private:
  static int WINAPI Ask(const wchar_t*, DWORD flags, const wchar_t* a, int sizeOfA,
                        const wchar_t* b, int sizeOfB, NLSVERSIONINFO*, void*, LPARAM) {
    ++s_count;
    return s_answer(flags, {a, static_cast<std::size_t>(sizeOfA)},
                    {b, static_cast<std::size_t>(sizeOfB)});
  }

  static inline Answer s_answer = nullptr;
  static inline std::atomic<long long> s_count = 0;
  ImportPatch patch_;
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_TEXT_COLLATION_QUESTIONS_H_
