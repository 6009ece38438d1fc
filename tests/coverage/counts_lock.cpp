// A part of each program that counts: processes that end at the same time add their counts to a
// file one after the other. The run-time library's lock sleeps a second before it tries again, and
// gives up after ten; this one tries again after a millisecond, for as long as it takes.
#include <windows.h>

#include <io.h>
#include <sys/locking.h>

extern "C" {

static int TakeLock(int file, int mode, long size) {
  constexpr DWORD kTry = LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY;
  const auto handle = reinterpret_cast<HANDLE>(::_get_osfhandle(file));
  OVERLAPPED beginning = {};
  while (!::LockFileEx(handle, kTry, 0, static_cast<DWORD>(size), 0, &beginning)) {
    if (mode != _LK_LOCK || ::GetLastError() != ERROR_LOCK_VIOLATION) return -1;
    ::Sleep(1);
  }
  return 0;
}

// The linker leads the calls of _locking here, all of which are those of the counts.
int (*__wrap___imp__locking)(int file, int mode, long size) = TakeLock;
}
