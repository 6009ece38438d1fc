// The process that gives inputs to a target. A bug may end it in any way or keep it for ever, so
// what it does stands in memory that it shares with the process that watches it.
#ifndef KVUTILS_TESTS_FUZZ_SUPPORT_WORKER_H_
#define KVUTILS_TESTS_FUZZ_SUPPORT_WORKER_H_

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "tests/fuzz/support/target.h"

namespace kv::fuzz {

// What a run is made of. Paths are the system's.
struct Run {
  std::string target;
  int count = 0;  // 0: the target's own
  std::uint64_t seed = 1;
  std::string corpusFolder;    // inputs worth keeping; empty for none
  std::string findingsFolder;  // empty: the current folder
  std::string inputFile;       // this input alone
  int patience = 60;           // seconds that one input may take
};

struct Progress {
  static constexpr std::size_t kMaxInput = std::size_t{1} << 20;
  static constexpr std::size_t kMaxText = 4096;

  volatile std::uint64_t inputCount;  // that have been begun
  std::size_t corpusSize;
  int ways;  // pairs of branches
  std::size_t inputSize;
  char input[kMaxInput];
  char finding[kMaxText];
};

// The memory shared by the process with this identifier and the workers that it starts.
class SharedProgress {
 public:
  explicit SharedProgress(unsigned long watcher);
  ~SharedProgress();
  SharedProgress(const SharedProgress&) = delete;
  SharedProgress& operator=(const SharedProgress&) = delete;

  Progress& operator*() const { return *progress_; }
  Progress* operator->() const { return progress_; }

 private:
  HANDLE mapping_;
  Progress* progress_;
};

// Gives the target its inputs. False with a finding, which stands in `progress`.
bool GiveInputs(const Target& target, const Run& run, Progress& progress);

// The same in the process, and its exit code.
int Work(const Target& target, const Run& run, unsigned long watcher);

// A name for a file with these bytes.
std::string FileName(std::string_view bytes);

}  // namespace kv::fuzz

#endif  // KVUTILS_TESTS_FUZZ_SUPPORT_WORKER_H_
