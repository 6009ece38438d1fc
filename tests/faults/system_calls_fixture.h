// The loop over all calls of the system that an operation makes: each fails in its turn.
#ifndef KVUTILS_TESTS_FAULTS_SYSTEM_CALLS_FIXTURE_H_
#define KVUTILS_TESTS_FAULTS_SYSTEM_CALLS_FIXTURE_H_

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "tests/faults/faulty_system.h"
#include "tests/faults/operations.h"
#include "tests/support/sandbox.h"

namespace kv::test {

class SystemCalls : public Sandbox {
 protected:
  // The first call of each function fails, then the second, until there are no more; once, and from
  // then on. Checks outcomes, current folder and open files after each, and that the operation
  // works again.
  void FailEachCall(const std::vector<Operation>& operations);

  // The calls that the operation makes where nothing fails; a FaultySystem counts them.
  static std::set<std::string> CallsOf(const Operation& operation);

 private:
  void FailInTurn(const Operation& operation, const FaultyCall& call, Lasting lasting);
  void ExpectOldFolder() const;
  void ExpectFilesClosed() const;
};

// Lets some calls of the system do what suits a sandbox: no folder is made elsewhere, no program is
// started, Documents is told quickly, and folders are listed as links. For the life of a
// FaultySystem.
void KeepInSandbox();

}  // namespace kv::test

#endif  // KVUTILS_TESTS_FAULTS_SYSTEM_CALLS_FIXTURE_H_
