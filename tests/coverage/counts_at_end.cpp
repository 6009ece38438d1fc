// A part of the counting DLL: where the library ends the process at once, its counts are kept.
#include <windows.h>

extern "C" {

void __gcov_dump();

using Terminate = BOOL WINAPI(HANDLE process, UINT exitCode);

// The linker leads the library's calls of TerminateProcess to __wrap___imp_TerminateProcess, and
// this file's own one to the system's function.
extern Terminate* __real___imp_TerminateProcess;

static BOOL WINAPI CountAndTerminate(HANDLE process, UINT exitCode) {
  __gcov_dump();
  return __real___imp_TerminateProcess(process, exitCode);
}

Terminate* __wrap___imp_TerminateProcess = CountAndTerminate;
}
