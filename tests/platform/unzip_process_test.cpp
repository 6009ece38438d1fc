// What UnzipFile asks of the system: the calls themselves, noted on their way.
#include <gtest/gtest.h>
#include <windows.h>

#include <set>
#include <string>
#include <vector>

#include "tests/platform/unzip_stand_in.h"
#include "tests/support/import_patch.h"
#include "utils/platform/platform.h"

namespace {

using namespace kv::test;

struct Start {
  bool hasApplicationName;
  std::wstring commandLine;
  bool hasSecurity;
  BOOL inheritsHandles;
  DWORD flags;
  bool hasEnvironment;
  bool hasFolder;
  STARTUPINFOW startup;
  PROCESS_INFORMATION started;
};

struct Wait {
  HANDLE handle;
  DWORD milliseconds;
  bool handlesAreOpen;
};

std::vector<Start> starts;
std::vector<Wait> waits;
std::vector<HANDLE> closed;

bool IsOpen(HANDLE handle) {
  DWORD flags = 0;
  return ::GetHandleInformation(handle, &flags) != FALSE;
}

BOOL WINAPI NoteStart(LPCWSTR application, LPWSTR commandLine, LPSECURITY_ATTRIBUTES process,
                      LPSECURITY_ATTRIBUTES thread, BOOL inherits, DWORD flags, LPVOID environment,
                      LPCWSTR folder, LPSTARTUPINFOW startup, LPPROCESS_INFORMATION started) {
  const wchar_t last = commandLine[::wcslen(commandLine) - 1];
  commandLine[::wcslen(commandLine) - 1] = last;  // the system may write into the command line
  starts.push_back({application != nullptr,
                    commandLine,
                    process != nullptr || thread != nullptr,
                    inherits,
                    flags,
                    environment != nullptr,
                    folder != nullptr,
                    *startup,
                    {}});
  const BOOL result = ::CreateProcessW(application, commandLine, process, thread, inherits, flags,
                                       environment, folder, startup, started);
  starts.back().started = *started;
  return result;
}

BOOL WINAPI RefuseStart(LPCWSTR, LPWSTR, LPSECURITY_ATTRIBUTES, LPSECURITY_ATTRIBUTES, BOOL, DWORD,
                        LPVOID, LPCWSTR, LPSTARTUPINFOW, LPPROCESS_INFORMATION) {
  ::SetLastError(ERROR_ACCESS_DENIED);
  return FALSE;
}

DWORD WINAPI NoteWait(HANDLE handle, DWORD milliseconds) {
  const PROCESS_INFORMATION& started = starts.back().started;
  waits.push_back({handle, milliseconds, IsOpen(started.hProcess) && IsOpen(started.hThread)});
  return ::WaitForSingleObject(handle, milliseconds);
}

BOOL WINAPI NoteClose(HANDLE handle) {
  closed.push_back(handle);
  return ::CloseHandle(handle);
}

// Notes the calls; the program is the stand-in, in the current folder.
class UnzipCalls : public UnzipSandbox {
 protected:
  UnzipCalls() { PlaceStandIn(Work() + "unzip.exe"); }

 private:
  ImportPatch start_{"CreateProcessW", &NoteStart};
  ImportPatch wait_{"WaitForSingleObject", &NoteWait};
  ImportPatch close_{"CloseHandle", &NoteClose};
};

TEST_F(UnzipCalls, StartOneProgramWithoutAWindow) {
  EXPECT_TRUE(UnzipFile("C:\\dl\\pack.zip", "C:\\out"));
  ASSERT_EQ(starts.size(), 1U);
  Start& start = starts.front();
  EXPECT_FALSE(start.hasApplicationName);
  EXPECT_EQ(Narrow(start.commandLine), "unzip.exe -q -u -d C:\\out\\ C:\\dl\\pack.zip");
  EXPECT_FALSE(start.hasSecurity);
  EXPECT_EQ(start.inheritsHandles, 0);
  EXPECT_EQ(start.flags, 0x08000000U);
  EXPECT_FALSE(start.hasEnvironment);
  EXPECT_FALSE(start.hasFolder);
  // The start-up record holds its size and zeros.
  EXPECT_EQ(start.startup.cb, 104U);
  start.startup.cb = 0;
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(&start.startup), 104),
            std::string(104, '\0'));
}

TEST_F(UnzipCalls, WaitWithoutATimeOutAndCloseBothHandles) {
  for (std::size_t run = 0; run < 3; ++run) {
    SCOPED_TRACE(run);
    closed.clear();
    EXPECT_TRUE(UnzipFile("C:\\dl\\pack.zip", nullptr));
    ASSERT_EQ(waits.size(), run + 1);
    const PROCESS_INFORMATION& started = starts.back().started;
    EXPECT_EQ(waits.back().handle, started.hProcess);
    EXPECT_EQ(waits.back().milliseconds, 0xFFFFFFFF);
    EXPECT_TRUE(waits.back().handlesAreOpen);

    std::multiset<HANDLE> expected = {started.hProcess, started.hThread};
    EXPECT_EQ(std::multiset<HANDLE>(closed.begin(), closed.end()), expected);
    EXPECT_FALSE(IsOpen(started.hProcess));
    EXPECT_FALSE(IsOpen(started.hThread));
  }
}

TEST_F(UnzipCalls, EndWithARefusedStart) {
  const ImportPatch patch("CreateProcessW", &RefuseStart);
  EXPECT_FALSE(UnzipFile("C:\\dl\\pack.zip", nullptr));
  EXPECT_FALSE(UnzipFile("C:\\dl\\pack.zip", "out\\"));
  EXPECT_TRUE(waits.empty());
  EXPECT_TRUE(closed.empty());
  EXPECT_TRUE(TakeRecord().empty());
}

TEST_F(UnzipCalls, StartNothingForPathsThatNameNoArchive) {
  EXPECT_FALSE(UnzipFile("data.zip", nullptr));
  EXPECT_FALSE(UnzipFile(nullptr, "out\\"));
  EXPECT_FALSE(UnzipFile("C:\\dl\\\xFF.zip", nullptr));
  EXPECT_FALSE(UnzipFile(std::string(40'000, 'x').c_str(), "out\\"));
  EXPECT_TRUE(starts.empty());
}

}  // namespace
