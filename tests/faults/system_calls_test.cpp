// Every call that the library makes of the system fails at its first, second and each further time.
#include "tests/faults/system_calls_fixture.h"

namespace {

using kv::test::SystemCalls;

TEST_F(SystemCalls, ThatFailLeaveFilesInOrder) { FailEachCall(kv::test::FileOperations()); }

TEST_F(SystemCalls, ThatFailLeaveFoldersInOrder) { FailEachCall(kv::test::FolderOperations()); }

TEST_F(SystemCalls, ThatFailLeaveDataInOrder) { FailEachCall(kv::test::DataOperations()); }

TEST_F(SystemCalls, ThatFailLeaveTheProcessInOrder) {
  FailEachCall(kv::test::PlatformOperations());
}

}  // namespace
