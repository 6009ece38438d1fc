#include "tests/support/process.h"

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

// A file that collects one stream of the child.
class Capture {
 public:
  Capture() {
    wchar_t folder[MAX_PATH];
    wchar_t path[MAX_PATH];
    ::GetTempPathW(MAX_PATH, folder);
    ::GetTempFileNameW(folder, L"kvt", 0, path);
    path_ = path;
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    handle_ = ::CreateFileW(path, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                            CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
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

  std::wstring path_;
  HANDLE handle_ = INVALID_HANDLE_VALUE;
};

}  // namespace

std::string ProgramFolder() {
  const std::string path = ProgramPath();
  return path.substr(0, path.rfind('\\') + 1);
}

void SetEnvironment(const std::string& name, const std::string& value) {
  ::SetEnvironmentVariableW(Widen(name).c_str(), Widen(value).c_str());
}

ProcessResult RunProgram(const std::string& program, const std::vector<std::string>& arguments,
                         const std::string& folder) {
  std::string commandLine = Quoted(program);
  for (const std::string& argument : arguments) commandLine += " " + Quoted(argument);
  std::wstring wideCommandLine = Widen(commandLine);
  const std::wstring wideFolder = Widen(folder);

  Capture out;
  Capture err;
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = out.Get();
  startup.hStdError = err.Get();
  PROCESS_INFORMATION process = {};
  if (!::CreateProcessW(nullptr, wideCommandLine.data(), nullptr, nullptr, TRUE, 0, nullptr,
                        folder.empty() ? nullptr : wideFolder.c_str(), &startup, &process)) {
    std::fprintf(stderr, "CreateProcessW failed with error %lu: %s\n", ::GetLastError(),
                 commandLine.c_str());
    std::exit(99);
  }
  ProcessResult result;
  ::WaitForSingleObject(process.hProcess, INFINITE);
  ::GetExitCodeProcess(process.hProcess, &result.exitCode);
  ::CloseHandle(process.hThread);
  ::CloseHandle(process.hProcess);
  result.out = out.Take();
  result.err = err.Take();
  return result;
}

ProcessResult RunOwnCase(const std::string& filter) {
  return RunProgram(ProgramPath(), {"--gtest_filter=" + filter, "--gtest_also_run_disabled_tests"});
}

}  // namespace kv::test
