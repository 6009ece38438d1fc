// The tour with a standard output that takes nothing.

#include "tests/examples/tour_fixture.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <string>

namespace {

using kv::test::ProgramFolder;
using kv::test::ReadBytes;
using kv::test::Widen;
using kv::test::WriteBytes;
using TourOutput = kv::test::Tour;

HANDLE OpenForChild(const std::string& path, DWORD access) {
  SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
  return ::CreateFileW(Widen(path).c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                       OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
}

// Runs the tour with an output that is open for reading only; its exit code.
DWORD RunWithReadOnlyOutput(const std::string& argument, const std::string& folder,
                            const std::string& output, const std::string& errors) {
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = OpenForChild(output, GENERIC_READ);
  startup.hStdError = OpenForChild(errors, GENERIC_WRITE);
  PROCESS_INFORMATION process = {};
  std::wstring commandLine = Widen("\"" + ProgramFolder() + "tour.exe\" " + argument);
  DWORD exitCode = 99;
  if (::CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr,
                       Widen(folder).c_str(), &startup, &process)) {
    ::WaitForSingleObject(process.hProcess, INFINITE);
    ::GetExitCodeProcess(process.hProcess, &exitCode);
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
  }
  ::CloseHandle(startup.hStdOutput);
  ::CloseHandle(startup.hStdError);
  return exitCode;
}

TEST_F(TourOutput, ThatCannotBeWrittenIsAFailure) {
  const std::string output = Documents() + "output.txt";
  const std::string errors = Documents() + "errors.txt";
  for (const char* argument : {"2026-11-21 --only places", "--help"}) {
    SCOPED_TRACE(argument);
    WriteBytes(output, "");
    WriteBytes(errors, "");
    EXPECT_EQ(RunWithReadOnlyOutput(argument, Work(), output, errors), 1U);
    EXPECT_EQ(ReadBytes(output), "");
    EXPECT_EQ(ReadBytes(errors), "tour: the output could not be written\n");
  }
}

}  // namespace
