// Every allocation of the library fails, the first, the second and each further one.
#include <gtest/gtest.h>

#include <regex>
#include <string>

#include "tests/faults/allocations.h"
#include "tests/faults/operations.h"
#include "tests/faults/system_calls_fixture.h"
#include "tests/support/files.h"
#include "tests/support/held_file.h"
#include "tests/support/sandbox.h"

namespace {

using kv::test::FailurePlan;
using kv::test::FaultyAllocations;
using kv::test::Lasting;
using kv::test::Operation;

class Allocations : public kv::test::Sandbox {
 protected:
  Allocations() { kv::test::KeepInSandbox(); }

  void FailInTurn(const std::vector<Operation>& operations) {
    for (const Operation& operation : operations) {
      RunClean(operation);
      for (const Lasting lasting : {Lasting::kOnce, Lasting::kFromThenOn}) {
        FailInTurn(operation, lasting);
      }
    }
  }

 private:
  // ICU sets itself up at its first use, with a reserve of memory; cases of their own are about
  // that.
  static void RunClean(const Operation& operation) {
    kv::test::ForgetEverything();
    operation.prepare();
    EXPECT_EQ(OutcomeOf(operation), operation.clean) << operation.name;
  }

  // The last run is the one in which nothing fails.
  void FailInTurn(const Operation& operation, Lasting lasting) {
    std::string outcome;
    for (int n = 1;; ++n) {
      SCOPED_TRACE(operation.name + ": allocation " + std::to_string(n) + " fails" +
                   (lasting == Lasting::kOnce ? ", once" : " and later ones"));
      kv::test::ForgetEverything();
      operation.prepare();
      FailurePlan& plan = FaultyAllocations::Plan();
      plan.Start(n, lasting);
      outcome = OutcomeOf(operation);
      const bool hasFailed = plan.HasFailed();
      plan.Stop();
      EXPECT_EQ(kv::test::CurrentFolder() + "\\", Work());
      if (!hasFailed) break;
      EXPECT_TRUE(outcome == "bad_alloc" ||
                  std::regex_match(outcome, std::regex(operation.outcomes)))
          << outcome;
    }
    EXPECT_EQ(outcome, operation.clean) << operation.name << ", after the failures";
  }

  kv::test::FaultySystem system_;
  FaultyAllocations allocations_;
};

TEST_F(Allocations, ThatFailLeaveTextsInOrder) { FailInTurn(kv::test::TextOperations()); }

TEST_F(Allocations, ThatFailLeaveFilesInOrder) { FailInTurn(kv::test::FileOperations()); }

TEST_F(Allocations, ThatFailLeaveFoldersInOrder) { FailInTurn(kv::test::FolderOperations()); }

TEST_F(Allocations, ThatFailLeaveDataInOrder) { FailInTurn(kv::test::DataOperations()); }

TEST_F(Allocations, ThatFailLeaveTheProcessInOrder) { FailInTurn(kv::test::PlatformOperations()); }

}  // namespace
