// Functions of the system that read or write as much of a caller's memory as he says there is.
#include <windows.h>

#include <cstddef>
#include <cwchar>

#include "tests/sanitizer/imports.h"
#include "tests/sanitizer/report.h"

namespace kv::sanitizer {
namespace {

// Room or text of `count` units, where there is any; texts that end in a terminator have the count
// -1 and are left to the system.
template <typename Unit, typename Count>
void CheckUnits(const char* use, const Unit* units, Count count, const void* caller) {
  if (units == nullptr || count == static_cast<Count>(-1)) return;
  Check(use, units, static_cast<std::size_t>(count) * sizeof(Unit), caller);
}

#define KVASAN_READ(units, count, name) \
  CheckUnits("read by " name, units, count, __builtin_return_address(0))
#define KVASAN_WRITE(units, count, name) \
  CheckUnits("write by " name, units, count, __builtin_return_address(0))

BOOL WINAPI ReadFileChecked(HANDLE file, void* buffer, DWORD size, DWORD* read, OVERLAPPED* at) {
  KVASAN_WRITE(static_cast<char*>(buffer), size, "ReadFile");
  return ::ReadFile(file, buffer, size, read, at);
}

BOOL WINAPI WriteFileChecked(HANDLE file, const void* buffer, DWORD size, DWORD* written,
                             OVERLAPPED* at) {
  KVASAN_READ(static_cast<const char*>(buffer), size, "WriteFile");
  return ::WriteFile(file, buffer, size, written, at);
}

HANDLE WINAPI CreateFileChecked(const wchar_t* path, DWORD access, DWORD sharing,
                                SECURITY_ATTRIBUTES* security, DWORD disposition, DWORD flags,
                                HANDLE model) {
  KVASAN_READ(path, std::wcslen(path) + 1, "CreateFileW");
  return ::CreateFileW(path, access, sharing, security, disposition, flags, model);
}

int WINAPI WidenChecked(UINT codePage, DWORD flags, const char* text, int size, wchar_t* wide,
                        int room) {
  KVASAN_READ(text, size, "MultiByteToWideChar");
  KVASAN_WRITE(wide, room, "MultiByteToWideChar");
  return ::MultiByteToWideChar(codePage, flags, text, size, wide, room);
}

int WINAPI NarrowChecked(UINT codePage, DWORD flags, const wchar_t* wide, int size, char* text,
                         int room, const char* substitute, BOOL* isSubstituted) {
  KVASAN_READ(wide, size, "WideCharToMultiByte");
  KVASAN_WRITE(text, room, "WideCharToMultiByte");
  return ::WideCharToMultiByte(codePage, flags, wide, size, text, room, substitute, isSubstituted);
}

int WINAPI CompareChecked(const wchar_t* locale, DWORD flags, const wchar_t* a, int sizeOfA,
                          const wchar_t* b, int sizeOfB, NLSVERSIONINFO* version, void* reserved,
                          LPARAM parameter) {
  KVASAN_READ(a, sizeOfA, "CompareStringEx");
  KVASAN_READ(b, sizeOfB, "CompareStringEx");
  return ::CompareStringEx(locale, flags, a, sizeOfA, b, sizeOfB, version, reserved, parameter);
}

int WINAPI CompareOrdinalChecked(const wchar_t* a, int sizeOfA, const wchar_t* b, int sizeOfB,
                                 BOOL isAnyCase) {
  KVASAN_READ(a, sizeOfA, "CompareStringOrdinal");
  KVASAN_READ(b, sizeOfB, "CompareStringOrdinal");
  return ::CompareStringOrdinal(a, sizeOfA, b, sizeOfB, isAnyCase);
}

DWORD WINAPI FullPathChecked(const wchar_t* path, DWORD room, wchar_t* full, wchar_t** name) {
  KVASAN_WRITE(full, room, "GetFullPathNameW");
  return ::GetFullPathNameW(path, room, full, name);
}

DWORD WINAPI CurrentDirectoryChecked(DWORD room, wchar_t* path) {
  KVASAN_WRITE(path, room, "GetCurrentDirectoryW");
  return ::GetCurrentDirectoryW(room, path);
}

int WINAPI LocaleInfoChecked(LCID locale, LCTYPE type, char* text, int room) {
  KVASAN_WRITE(text, room, "GetLocaleInfoA");
  return ::GetLocaleInfoA(locale, type, text, room);
}

int WINAPI LocaleNameChecked(wchar_t* name, int room) {
  KVASAN_WRITE(name, room, "GetUserDefaultLocaleName");
  return ::GetUserDefaultLocaleName(name, room);
}

}  // namespace

std::span<const CheckedCall> SystemCalls() {
  static const CheckedCall calls[] = {
      Checked("ReadFile", ReadFileChecked),
      Checked("WriteFile", WriteFileChecked),
      Checked("CreateFileW", CreateFileChecked),
      Checked("MultiByteToWideChar", WidenChecked),
      Checked("WideCharToMultiByte", NarrowChecked),
      Checked("CompareStringEx", CompareChecked),
      Checked("CompareStringOrdinal", CompareOrdinalChecked),
      Checked("GetFullPathNameW", FullPathChecked),
      Checked("GetCurrentDirectoryW", CurrentDirectoryChecked),
      Checked("GetLocaleInfoA", LocaleInfoChecked),
      Checked("GetUserDefaultLocaleName", LocaleNameChecked),
  };
  return calls;
}

}  // namespace kv::sanitizer
