#include "tests/fuzz/support/watcher.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <optional>
#include <stdexcept>
#include <string_view>

#include "tests/support/files.h"
#include "tests/support/process.h"

namespace kv::fuzz {
namespace {

// A folder for one worker, below the one for all tests. It is gone with this object.
class Surroundings {
 public:
  Surroundings()
      : root_(Root() + "\\fuzz-" + std::to_string(::GetCurrentProcessId()) + "-" +
              std::to_string(::GetTickCount64())) {
    test::CreateFolders(Work());
    test::CreateFolders(root_ + "\\Documents");
    test::SetEnvironment("KVUTILS_DOCUMENTS", root_ + "\\Documents");
  }
  ~Surroundings() { test::RemoveTree(root_); }
  Surroundings(const Surroundings&) = delete;
  Surroundings& operator=(const Surroundings&) = delete;

  [[nodiscard]] std::string Work() const { return root_ + "\\work"; }

 private:
  static std::string Root() {
    std::string path = test::Environment("KVUTILS_SANDBOX_ROOT");
    if (path.empty()) throw std::runtime_error("KVUTILS_SANDBOX_ROOT is not set");
    std::replace(path.begin(), path.end(), '/', '\\');
    return path.front() == '\\' ? "Z:" + path : path;
  }

  std::string root_;
};

// What MException prints is of no interest; what the sanitizer says is.
HANDLE OpenNowhere() {
  SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
  return ::CreateFileW(L"NUL", GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                       OPEN_EXISTING, 0, nullptr);
}

class Process {
 public:
  Process(const std::vector<std::string>& arguments, const std::string& folder) {
    std::wstring program(32768, L'\0');
    program.resize(::GetModuleFileNameW(nullptr, program.data(), 32768));
    std::wstring line = L"\"" + program + L"\"";
    for (const std::string& argument : arguments) line += L" \"" + test::Widen(argument) + L"\"";
    const HANDLE nowhere = OpenNowhere();
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdOutput = nowhere;
    start.hStdError = ::GetStdHandle(STD_ERROR_HANDLE);
    const BOOL started = ::CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, 0,
                                          nullptr, test::Widen(folder).c_str(), &start, &process_);
    ::CloseHandle(nowhere);
    if (!started) throw std::runtime_error("the worker does not start");
  }
  ~Process() {
    ::CloseHandle(process_.hThread);
    ::CloseHandle(process_.hProcess);
  }
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  // The exit code, once the process has ended.
  std::optional<unsigned long> Wait(DWORD milliseconds) {
    if (::WaitForSingleObject(process_.hProcess, milliseconds) != WAIT_OBJECT_0)
      return std::nullopt;
    DWORD code = 0;
    ::GetExitCodeProcess(process_.hProcess, &code);
    return code;
  }
  void Terminate() { ::TerminateProcess(process_.hProcess, 1); }

 private:
  PROCESS_INFORMATION process_ = {};
};

// What is wrong; nothing if the worker has come to its end.
std::optional<std::string> Attend(Process& worker, const Progress& progress, int patience) {
  std::uint64_t seen = 0;
  for (int waited = 0; waited < patience;) {
    if (const auto code = worker.Wait(1000)) {
      if (*code == 0) return std::nullopt;
      if (progress.finding[0] != '\0') return progress.finding;
      char text[64];
      std::snprintf(text, sizeof text, "the process ends with code 0x%lX", *code);
      return text;
    }
    waited = progress.inputCount == seen ? waited + 1 : 0;
    seen = progress.inputCount;
  }
  worker.Terminate();
  worker.Wait(INFINITE);
  return "the input takes longer than " + std::to_string(patience) + " s";
}

void Tell(const Run& run, const std::string& finding, std::string_view input) {
  std::string folder = run.findingsFolder.empty() ? test::CurrentFolder() : run.findingsFolder;
  test::CreateFolders(folder);
  const std::string path = folder + "\\" + run.target + "-" + FileName(input);
  test::WriteBytes(path, input);
  std::printf("FOUND in %s: %s\n  by these %llu bytes:", run.target.c_str(), finding.c_str(),
              input.size());
  for (std::size_t i = 0; i < input.size(); ++i) {
    std::printf("%s%02X", i % 32 == 0 ? "\n    " : " ", static_cast<unsigned char>(input[i]));
  }
  // A path of drive Z is one of the system that Wine stands on.
  std::string shown = path.starts_with("Z:") ? path.substr(2) : path;
  if (shown != path) std::replace(shown.begin(), shown.end(), '\\', '/');
  std::printf("\n  again: ./kv fuzz %s %s\n", run.target.c_str(), shown.c_str());
}

}  // namespace

bool Watch(const Target& target, const Run& run, const std::vector<std::string>& arguments) {
  const SharedProgress progress(::GetCurrentProcessId());
  const ULONGLONG start = ::GetTickCount64();
  std::optional<std::string> finding;
  {
    const Surroundings surroundings;
    Process worker(arguments, surroundings.Work());
    finding = Attend(worker, *progress, run.patience);
  }
  const auto milliseconds = static_cast<double>(::GetTickCount64() - start);
  const std::uint64_t count = progress->inputCount;
  if (finding) Tell(run, *finding, {progress->input, progress->inputSize});
  std::printf("%-20s %9llu inputs, %4.0f s, %8.0f a second, %d ways, %llu kept: %s\n", target.name,
              count, milliseconds / 1000, static_cast<double>(count) * 1000 / (milliseconds + 1),
              progress->ways, progress->corpusSize, finding ? "FOUND" : "nothing found");
  return !finding;
}

}  // namespace kv::fuzz
