// Replacements, for ImportPatch, of the system's functions and of the allocation that may fail.
#ifndef KVUTILS_TESTS_SUPPORT_FAILING_SYSTEM_H_
#define KVUTILS_TESTS_SUPPORT_FAILING_SYSTEM_H_

#include <windows.h>

#include <cstddef>
#include <new>

#include "tests/support/import_patch.h"

namespace kv::test {

// In the place of ReadFile: reads nothing and fails.
inline BOOL WINAPI RefuseToRead(HANDLE, void*, DWORD, DWORD*, OVERLAPPED*) {
  ::SetLastError(ERROR_CRC);
  return FALSE;
}

// In the place of WriteFile: writes nothing and fails.
inline BOOL WINAPI RefuseToWrite(HANDLE, const void*, DWORD, DWORD*, OVERLAPPED*) {
  ::SetLastError(ERROR_DISK_FULL);
  return FALSE;
}

// In the place of operator new[] that returns null: does so always.
inline void* RefuseMemory(std::size_t, const std::nothrow_t&) { return nullptr; }
inline constexpr char kNewArrayOrNull[] = "_ZnayRKSt9nothrow_t";

// In the place of operator new: throws always.
[[noreturn]] inline void* ThrowForMemory(std::size_t) { throw std::bad_alloc(); }
inline constexpr char kNew[] = "_Znwy";

// In the place of GetCurrentDirectoryW: tells nothing.
inline DWORD WINAPI TellNoFolder(DWORD, wchar_t*) { return 0; }

// Lets each read of the library take a number of bytes at most, as if the file had been cut
// meanwhile, and counts the reads. One at a time.
class LimitedReads {
 public:
  explicit LimitedReads(DWORD limit) : patch_("ReadFile", Read) {
    s_limit = limit;
    s_count = 0;
  }
  static int Count() { return s_count; }

 private:
  static BOOL WINAPI Read(HANDLE file, void* buffer, DWORD size, DWORD* read,
                          OVERLAPPED* overlapped) {
    ++s_count;
    return ::ReadFile(file, buffer, size < s_limit ? size : s_limit, read, overlapped);
  }

  static inline DWORD s_limit = 0;
  static inline int s_count = 0;
  ImportPatch patch_;
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_SUPPORT_FAILING_SYSTEM_H_
