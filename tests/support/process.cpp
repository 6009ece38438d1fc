#include "tests/support/process.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <cstdlib>

#include "tests/support/files.h"

namespace kv::test {
namespace {

std::string ProgramPath() {
  std::wstring path(1024, L'\0');
  path.resize(::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return Narrow(path);
}

// One argument in the quoting that the run-time library takes apart again.
std::string Quoted(const std::string& argument) {
  std::string quoted = "\"";
  std::size_t backslashes = 0;
  for (const char c : argument) {
    if (c == '\\') {
      ++backslashes;
    } else {
      if (c == '"') quoted.append(backslashes + 1, '\\');
      backslashes = 0;
    }
    quoted += c;
  }
  return quoted.append(backslashes, '\\') + '"';
}

// Ends the test program: without what it asked for it cannot go on.
[[noreturn]] void GiveUp(const char* function, const std::wstring& argument) {
  std::fprintf(stderr, "%s failed with error %lu: %s\n", function, ::GetLastError(),
               Narrow(argument).c_str());
  std::exit(99);
}

// A file that collects one stream of the child.
class Capture {
 public:
  Capture() : path_(NewFile()) {
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    // What the child starts may outlive it with this handle: the file goes with the last one.
    handle_ = ::CreateFileW(path_.c_str(), GENERIC_WRITE,
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, &inherited,
                            CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle_ == INVALID_HANDLE_VALUE) GiveUp("CreateFileW", path_);
  }
  ~Capture() {
    Close();
    ::DeleteFileW(path_.c_str());
  }
  Capture(const Capture&) = delete;
  Capture& operator=(const Capture&) = delete;

  HANDLE Get() const { return handle_; }
  std::string Take() {
    Close();
    return ReadBytes(Narrow(path_));
  }

 private:
  void Close() {
    if (handle_ != INVALID_HANDLE_VALUE) ::CloseHandle(handle_);
    handle_ = INVALID_HANDLE_VALUE;
  }

  static std::wstring NewFile() {
    wchar_t folder[MAX_PATH] = L"";
    wchar_t path[MAX_PATH] = L"";
    if (::GetTempPathW(MAX_PATH, folder) == 0 || ::GetTempFileNameW(folder, L"kvt", 0, path) == 0) {
      GiveUp("GetTempFileNameW", folder);
    }
    return path;
  }

  std::wstring path_;
  HANDLE handle_ = INVALID_HANDLE_VALUE;
};

class Handle {
 public:
  explicit Handle(HANDLE handle) : handle_(handle) {}
  ~Handle() {
    if (handle_ != nullptr) ::CloseHandle(handle_);
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  HANDLE Get() const { return handle_; }

 private:
  HANDLE handle_;
};

// Starts a program whose output goes to the two files; its handle is the caller's to close.
HANDLE StartProgram(const std::string& program, const std::vector<std::string>& arguments,
                    const std::string& folder, const Capture& out, const Capture& err) {
  std::string commandLine = Quoted(program);
  for (const std::string& argument : arguments) commandLine += " " + Quoted(argument);
  std::wstring wideCommandLine = Widen(commandLine);
  const std::wstring wideFolder = Widen(folder);

  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = out.Get();
  startup.hStdError = err.Get();
  PROCESS_INFORMATION process = {};
  if (!::CreateProcessW(nullptr, wideCommandLine.data(), nullptr, nullptr, TRUE, 0, nullptr,
                        folder.empty() ? nullptr : wideFolder.c_str(), &startup, &process)) {
    GiveUp("CreateProcessW", wideCommandLine);
  }
  ::CloseHandle(process.hThread);
  return process.hProcess;
}

ProcessResult Result(HANDLE process, Capture& out, Capture& err) {
  ProcessResult result;
  ::GetExitCodeProcess(process, &result.exitCode);
  result.out = out.Take();
  result.err = err.Take();
  // What Wine says of a heap would stay in the file.
  EXPECT_EQ(result.err.find(":warn:heap:"), std::string::npos) << result.err;
  return result;
}

std::vector<std::string> OwnCaseArguments(const std::string& filter) {
  return {"--gtest_filter=" + filter, "--gtest_also_run_disabled_tests"};
}

// A background process finds the two events that it shares with its parent through these.
constexpr char kReadyEvent[] = "KVUTILS_READY_EVENT";
constexpr char kReleaseEvent[] = "KVUTILS_RELEASE_EVENT";
constexpr DWORD kPatience = 60'000;  // milliseconds

// A new event, named for all processes that are started from here on.
HANDLE CreateEventFor(const std::string& variable) {
  static int count = 0;
  const std::string name =
      variable + "-" + std::to_string(::GetCurrentProcessId()) + "-" + std::to_string(++count);
  SetEnvironment(variable, name);
  return ::CreateEventW(nullptr, TRUE, FALSE, Widen(name).c_str());
}

// Null in a process that is not in the background.
HANDLE OpenEventOf(const char* variable) {
  const char* name = std::getenv(variable);
  if (name == nullptr) return nullptr;
  return ::OpenEventW(SYNCHRONIZE | EVENT_MODIFY_STATE, FALSE, Widen(name).c_str());
}

}  // namespace

std::string ProgramFolder() {
  const std::string path = ProgramPath();
  return path.substr(0, path.rfind('\\') + 1);
}

std::string Environment(const std::string& name) {
  const std::wstring wideName = Widen(name);
  std::wstring value(::GetEnvironmentVariableW(wideName.c_str(), nullptr, 0), L'\0');
  value.resize(
      ::GetEnvironmentVariableW(wideName.c_str(), value.data(), static_cast<DWORD>(value.size())));
  return Narrow(value);
}

void SetEnvironment(const std::string& name, const std::string& value) {
  ::SetEnvironmentVariableW(Widen(name).c_str(), Widen(value).c_str());
}

ProcessResult RunProgram(const std::string& program, const std::vector<std::string>& arguments,
                         const std::string& folder) {
  Capture out;
  Capture err;
  const Handle process(StartProgram(program, arguments, folder, out, err));
  ::WaitForSingleObject(process.Get(), INFINITE);
  return Result(process.Get(), out, err);
}

ProcessResult RunOwnCase(const std::string& filter) {
  return RunProgram(ProgramPath(), OwnCaseArguments(filter));
}

struct BackgroundProcess::Child {
  Child(const std::string& program, const std::vector<std::string>& arguments,
        const std::string& folder)
      : ready(CreateEventFor(kReadyEvent)),
        release(CreateEventFor(kReleaseEvent)),
        process(StartProgram(program, arguments, folder, out, err)) {
    ::SetEnvironmentVariableA(kReadyEvent, nullptr);
    ::SetEnvironmentVariableA(kReleaseEvent, nullptr);
  }

  Capture out;
  Capture err;
  Handle ready;
  Handle release;
  Handle process;
};

BackgroundProcess::BackgroundProcess(const std::string& program,
                                     const std::vector<std::string>& arguments,
                                     const std::string& folder)
    : child_(std::make_unique<Child>(program, arguments, folder)) {
  const HANDLE either[] = {child_->ready.Get(), child_->process.Get()};
  if (::WaitForMultipleObjects(2, either, FALSE, kPatience) == WAIT_OBJECT_0) return;
  Terminate();
  const ProcessResult result = Result(child_->process.Get(), child_->out, child_->err);
  std::fprintf(stderr, "%s was never ready; it ended with %lu\n%s%s\n", program.c_str(),
               result.exitCode, result.out.c_str(), result.err.c_str());
  std::exit(99);
}

BackgroundProcess BackgroundProcess::OwnCase(const std::string& filter) {
  return BackgroundProcess(ProgramPath(), OwnCaseArguments(filter));
}

BackgroundProcess::~BackgroundProcess() { Terminate(); }

ProcessResult BackgroundProcess::Finish() {
  ::SetEvent(child_->release.Get());
  ::WaitForSingleObject(child_->process.Get(), kPatience);
  Terminate();
  return Result(child_->process.Get(), child_->out, child_->err);
}

void BackgroundProcess::Terminate() {
  ::TerminateProcess(child_->process.Get(), 98);  // has no effect on one that has ended
  ::WaitForSingleObject(child_->process.Get(), INFINITE);
}

void SayReady() {
  const Handle event(OpenEventOf(kReadyEvent));
  if (event.Get() != nullptr) ::SetEvent(event.Get());
}

void AwaitRelease() {
  const Handle event(OpenEventOf(kReleaseEvent));
  if (event.Get() != nullptr) ::WaitForSingleObject(event.Get(), kPatience);
}

}  // namespace kv::test
