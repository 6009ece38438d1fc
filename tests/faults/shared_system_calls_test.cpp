// The same for what all processes share, the clipboard; and that no call is left out.
#include <windows.h>

#include <algorithm>
#include <set>
#include <string>
#include <string_view>

#include "tests/faults/system_calls_fixture.h"
#include "tests/support/import_table.h"
#include "utils/platform/platform.h"

namespace {

using kv::test::FaultyCall;
using kv::test::FaultyCalls;
using kv::test::FaultySystem;
using kv::test::ImportsThatDoNotFail;
using kv::test::Operation;
using kv::test::SparedImports;
using kv::test::SystemCalls;

TEST_F(SystemCalls, ThatFailLeaveTheClipboardInOrder) {
  FailEachCall(kv::test::ClipboardOperations());
}

bool CanFail(std::string_view name) {
  return std::any_of(FaultyCalls().begin(), FaultyCalls().end(),
                     [name](const FaultyCall& call) { return call.name == name; });
}

bool IsSpared(std::string_view name) {
  const auto holds = [name](const SparedImports& group) {
    return std::find(group.names.begin(), group.names.end(), name) != group.names.end();
  };
  return std::any_of(ImportsThatDoNotFail().begin(), ImportsThatDoNotFail().end(), holds);
}

TEST(Imports, CanFailOrAreSparedForAReason) {
  kv::test::ForEachImport(::GetModuleHandleW(L"kvutils.dll"), [](const char* name, void**) {
    EXPECT_NE(CanFail(name), IsSpared(name)) << name;
  });
}

void FailFirst(std::string_view name) {
  for (const FaultyCall& call : FaultyCalls()) {
    call.plan->Start(call.name == name ? 1 : 0, kv::test::Lasting::kOnce);
  }
}

void AddCalls(std::set<std::string>& made) {
  for (const FaultyCall& call : FaultyCalls()) {
    if (call.plan->Calls() != 0) made.insert(call.name);
  }
}

// The number of the format is asked for once in a process.
TEST_F(SystemCalls, ThatFailToNameTheHtmlFormatLeaveThePlainText) {
  const FaultySystem system;
  FailFirst("RegisterClipboardFormatA");
  EXPECT_NE(SendHTMLToClipboard("<body>", "plain"), 0);
  EXPECT_EQ(GetTextFromClipboard(nullptr), 7);
  const UINT format = ::RegisterClipboardFormatA("HTML Format");
  EXPECT_FALSE(::IsClipboardFormatAvailable(format));
  EXPECT_NE(SendHTMLToClipboard("<body>", "plain"), 0);
  EXPECT_TRUE(::IsClipboardFormatAvailable(format));
}

TEST_F(SystemCalls, AreAllMadeByAnOperation) {
  const FaultySystem system;
  kv::test::KeepInSandbox();
  std::set<std::string> made;
  for (const auto operations :
       {kv::test::FileOperations, kv::test::FolderOperations, kv::test::DataOperations,
        kv::test::PlatformOperations, kv::test::ClipboardOperations}) {
    for (const Operation& operation : operations()) made.merge(CallsOf(operation));
  }
  FailFirst("SetClipboardData");
  SendTextToClipboard("refused");
  AddCalls(made);
  for (const FaultyCall& call : FaultyCalls()) {
    EXPECT_TRUE(made.contains(call.name)) << call.name;
  }
}

}  // namespace
