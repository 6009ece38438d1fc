// All functions by which the library reaches the world outside: files, folders, clipboard,
// processes, settings of the user.
#ifndef KVUTILS_TESTS_FAULTS_FAULTY_SYSTEM_H_
#define KVUTILS_TESTS_FAULTS_FAULTY_SYSTEM_H_

#include <list>
#include <vector>

#include "tests/faults/faulty_calls.h"
#include "tests/support/import_patch.h"

namespace kv::test {

// The functions that can be made to fail.
const std::vector<FaultyCall>& FaultyCalls();

// The other functions that the library imports, in groups.
struct SparedImports {
  const char* reason;
  std::vector<std::string_view> names;
};
const std::vector<SparedImports>& ImportsThatDoNotFail();

// While it lives, the library's calls are counted, and fail as the plans say.
class FaultySystem {
 public:
  FaultySystem() {
    for (const FaultyCall& call : FaultyCalls()) {
      call.plan->Stop();
      *call.original = patches_.emplace_back(call.name, call.replacement).Original();
    }
  }

 private:
  std::list<ImportPatch> patches_;
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_FAULTS_FAULTY_SYSTEM_H_
