// Stands in for unzip.exe: unpacks nothing, and writes into a file what it was started with. The
// environment tells the rest.
#include <windows.h>

#include <cstdlib>
#include <string>

#include "tests/platform/unzip_recorder.h"
#include "tests/support/files.h"

namespace {

using namespace kv::test;

std::string Variable(const char* name) {
  const wchar_t* value = ::_wgetenv(Widen(name).c_str());
  return value == nullptr ? "" : Narrow(value);
}

std::string ProgramPath() {
  std::wstring path(1024, L'\0');
  path.resize(::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return Narrow(path);
}

// Those of the watched folders that exist, each followed by ";".
std::string ExistingFolders() {
  std::string existing;
  const std::string watched = Variable(kWatchedFolders);
  std::size_t begin = 0;
  for (std::size_t end; (end = watched.find(';', begin)) != std::string::npos; begin = end + 1) {
    const std::string folder = watched.substr(begin, end - begin);
    if (FolderExists(folder)) existing += folder + ";";
  }
  return existing;
}

// Sets the event whose handle the caller names; it is none here unless it was inherited.
void UseCallersEvent() {
  const std::string handle = Variable(kCallersEvent);
  if (handle.empty()) return;
  ::SetEvent(reinterpret_cast<HANDLE>(std::stoull(handle)));
}

// Writes where no program may.
void Crash() {
  void* const nowhere = ::VirtualAlloc(nullptr, 1, MEM_RESERVE, PAGE_NOACCESS);
  *static_cast<volatile char*>(nowhere) = 1;
}

}  // namespace

int main() {
  const std::string record = "command line=" + Narrow(::GetCommandLineW()) +
                             "\nprogram=" + ProgramPath() + "\nfolder=" + CurrentFolder() +
                             "\nvariable=" + Variable(kAnyVariable) +
                             "\nexisting folders=" + ExistingFolders() + "\n";
  UseCallersEvent();
  ::Sleep(static_cast<DWORD>(std::atoi(Variable(kDelay).c_str())));
  WriteBytes(Variable(kRecordFile), record);
  if (!Variable(kCrashes).empty()) Crash();
  ::TerminateProcess(::GetCurrentProcess(),
                     static_cast<UINT>(std::strtoul(Variable(kExitCode).c_str(), nullptr, 0)));
}
