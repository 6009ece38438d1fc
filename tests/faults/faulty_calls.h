// The library's calls of the system and of the run-time library, each of which can be made to fail
// at its n-th time, once or from then on.
#ifndef KVUTILS_TESTS_FAULTS_FAULTY_CALLS_H_
#define KVUTILS_TESTS_FAULTS_FAULTY_CALLS_H_

#include <windows.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <string_view>

#include "tests/support/import_patch.h"

namespace kv::test {

enum class Lasting { kOnce, kFromThenOn };

// Which calls of one function fail: the n-th, counted from 1, and perhaps all later ones.
class FailurePlan {
 public:
  void Start(int first, Lasting lasting) {
    first_ = first;
    lasting_ = lasting;
    calls_ = 0;
  }
  void Stop() { Start(0, Lasting::kOnce); }

  // Counts a call and tells whether it fails.
  bool Fails() {
    ++calls_;
    return first_ != 0 && (lasting_ == Lasting::kOnce ? calls_ == first_ : calls_ >= first_);
  }
  // Since Start or Stop.
  [[nodiscard]] int Calls() const { return calls_; }
  // Whether a call has failed.
  [[nodiscard]] bool HasFailed() const { return first_ != 0 && calls_ >= first_; }

 private:
  int first_ = 0;
  Lasting lasting_ = Lasting::kOnce;
  int calls_ = 0;
};

// What a failing call leaves undone.
enum class Failure {
  kNothingIsDone,
  kSaidOnly,  // it is done all the same: what is closed is closed
};

struct FaultyCall {
  const char* name;
  void* replacement;
  void** original;  // the function that is called when nothing fails
  FailurePlan* plan;
};

// A text as an argument of a template.
template <std::size_t kSize>
struct FixedName {
  constexpr FixedName(const char (&name)[kSize]) { std::copy_n(name, kSize, text); }
  char text[kSize];
};

// One imported function. `kFailure` decides what a failing call does; its result is `failed`.
template <FixedName kName, typename Function, Failure kFailure = Failure::kNothingIsDone>
class FaultyImport;

template <FixedName kName, typename Result, typename... Arguments, Failure kFailure>
class FaultyImport<kName, Result(Arguments...), kFailure> {
 public:
  // The entry of a table; `error` is the system's last error of a failing call.
  static FaultyCall Make(Result failed, DWORD error = ERROR_GEN_FAILURE) {
    failed_ = failed;
    error_ = error;
    return {kName.text, reinterpret_cast<void*>(&Call), &original_, &plan_};
  }

 private:
  static Result Call(Arguments... arguments) {
    const auto original = reinterpret_cast<Result (*)(Arguments...)>(original_);
    if (!plan_.Fails()) return original(arguments...);
    if (kFailure == Failure::kSaidOnly) original(arguments...);
    errno = EIO;
    ::SetLastError(error_);
    return failed_;
  }

  static inline void* original_ = nullptr;
  static inline FailurePlan plan_;
  static inline Result failed_{};
  static inline DWORD error_ = 0;
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_FAULTS_FAULTY_CALLS_H_
