#include "tests/faults/system_calls_fixture.h"

#include <windows.h>

#include <direct.h>

#include <regex>
#include <string_view>

#include "tests/support/files.h"
#include "tests/support/held_file.h"

namespace kv::test {
namespace {

// A process that has ended already: handles that are signalled.
BOOL WINAPI StartNothing(const wchar_t*, wchar_t*, SECURITY_ATTRIBUTES*, SECURITY_ATTRIBUTES*, BOOL,
                         DWORD, void*, const wchar_t*, STARTUPINFOW*,
                         PROCESS_INFORMATION* started) {
  started->hProcess = ::CreateEventW(nullptr, TRUE, TRUE, nullptr);
  started->hThread = ::CreateEventW(nullptr, TRUE, TRUE, nullptr);
  return TRUE;
}

// The folder of the sandbox, which the system takes long to tell.
HRESULT WINAPI TellDocuments(HWND, int, HANDLE, DWORD, wchar_t* path) {
  ::GetEnvironmentVariableW(L"KVUTILS_DOCUMENTS", path, MAX_PATH);
  return S_OK;
}

// A folder outside the sandbox is refused: without a folder of its own, or where it cannot go, the
// library makes folders elsewhere.
bool IsInSandbox(const wchar_t* path) {
  wchar_t full[1024] = L"";
  ::GetFullPathNameW(path, 1024, full, nullptr);
  const std::string documents = DocumentsFolder();
  return Narrow(full).starts_with(documents.substr(0, documents.rfind('\\') + 1));
}
BOOL WINAPI CreateInSandbox(const wchar_t* path, SECURITY_ATTRIBUTES* security) {
  return IsInSandbox(path) && ::CreateDirectoryW(path, security);
}
int MakeInSandbox(const wchar_t* path) { return IsInSandbox(path) ? ::_wmkdir(path) : -1; }

// Each folder below another looks like a link.
BOOL WINAPI ListFoldersAsLinks(HANDLE listing, WIN32_FIND_DATAW* entry) {
  const BOOL isFound = ::FindNextFileW(listing, entry);
  if ((entry->dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    entry->dwFileAttributes |= FILE_ATTRIBUTE_REPARSE_POINT;
  }
  return isFound;
}

template <typename Function>
void StandInFor(std::string_view name, Function* function) {
  for (const FaultyCall& call : FaultyCalls()) {
    if (call.name == name) *call.original = reinterpret_cast<void*>(function);
  }
}

void Prepare(const Operation& operation) {
  ForgetEverything();
  operation.prepare();
}

// Nobody else can open a file that is read-only as IsFree does.
bool IsClosed(const std::string& path) {
  const DWORD attributes = ::GetFileAttributesW(Widen(path).c_str());
  return (attributes & FILE_ATTRIBUTE_READONLY) != 0 || IsFree(path);
}

}  // namespace

void KeepInSandbox() {
  StandInFor("CreateProcessW", &StartNothing);
  StandInFor("SHGetFolderPathW", &TellDocuments);
  StandInFor("CreateDirectoryW", &CreateInSandbox);
  StandInFor("_wmkdir", &MakeInSandbox);
  StandInFor("FindNextFileW", &ListFoldersAsLinks);
}

std::set<std::string> SystemCalls::CallsOf(const Operation& operation) {
  Prepare(operation);
  for (const FaultyCall& call : FaultyCalls()) call.plan->Stop();
  std::set<std::string> names;
  EXPECT_EQ(OutcomeOf(operation), operation.clean) << operation.name;
  for (const FaultyCall& call : FaultyCalls()) {
    if (call.plan->Calls() != 0) names.insert(call.name);
  }
  return names;
}

void SystemCalls::FailEachCall(const std::vector<Operation>& operations) {
  const FaultySystem system;
  KeepInSandbox();
  for (const Operation& operation : operations) {
    const std::set<std::string> names = CallsOf(operation);
    for (const FaultyCall& call : FaultyCalls()) {
      if (!names.contains(call.name)) continue;
      FailInTurn(operation, call, Lasting::kOnce);
      FailInTurn(operation, call, Lasting::kFromThenOn);
    }
  }
}

void SystemCalls::FailInTurn(const Operation& operation, const FaultyCall& call, Lasting lasting) {
  std::string outcome;
  for (int n = 1;; ++n) {
    SCOPED_TRACE(operation.name + ": " + call.name + " fails at call " + std::to_string(n) +
                 (lasting == Lasting::kOnce ? ", once" : " and later"));
    Prepare(operation);
    call.plan->Start(n, lasting);
    outcome = OutcomeOf(operation);
    const bool hasFailed = call.plan->HasFailed();
    call.plan->Stop();
    // The way back may be what fails.
    if (std::string_view(call.name) != "_wchdir") ExpectOldFolder();
    SetCurrentFolder(Work());
    if (!hasFailed) break;
    EXPECT_TRUE(std::regex_match(outcome, std::regex(operation.outcomes))) << outcome;
  }
  SCOPED_TRACE(operation.name + ", " + call.name);
  EXPECT_EQ(outcome, operation.clean) << "after the failures";
  ExpectFilesClosed();
}

void SystemCalls::ExpectOldFolder() const {
  EXPECT_EQ(CurrentFolder() + "\\", Work()) << "the current folder";
}

void SystemCalls::ExpectFilesClosed() const {
  for (const std::string& folder : {Work(), Documents()}) {
    for (const std::string& name : ListTree(folder.substr(0, folder.size() - 1))) {
      if (name.ends_with('\\')) continue;
      EXPECT_TRUE(IsClosed(folder + name)) << name << " is open";
    }
  }
}

}  // namespace kv::test
