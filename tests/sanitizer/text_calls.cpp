// Functions of the C library that read or write a caller's memory.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>

#include "tests/sanitizer/imports.h"
#include "tests/sanitizer/report.h"

namespace kv::sanitizer {
namespace {

#define KVASAN_READ(begin, size, name) \
  Check("read by " name, begin, size, __builtin_return_address(0))
#define KVASAN_WRITE(begin, size, name) \
  Check("write by " name, begin, size, __builtin_return_address(0))
// A text and its terminator.
#define KVASAN_READ_TEXT(text, name) KVASAN_READ(text, std::strlen(text) + 1, name)
#define KVASAN_READ_WIDE(text, name) \
  KVASAN_READ(text, (std::wcslen(text) + 1) * sizeof(wchar_t), name)

void* CopyBytes(void* to, const void* from, std::size_t size) {
  KVASAN_READ(from, size, "memcpy");
  KVASAN_WRITE(to, size, "memcpy");
  return std::memcpy(to, from, size);
}

void* MoveBytes(void* to, const void* from, std::size_t size) {
  KVASAN_READ(from, size, "memmove");
  KVASAN_WRITE(to, size, "memmove");
  return std::memmove(to, from, size);
}

void* SetBytes(void* to, int value, std::size_t size) {
  KVASAN_WRITE(to, size, "memset");
  return std::memset(to, value, size);
}

int CompareBytes(const void* a, const void* b, std::size_t size) {
  KVASAN_READ(a, size, "memcmp");
  KVASAN_READ(b, size, "memcmp");
  return std::memcmp(a, b, size);
}

// Reads no further than to what it finds.
const void* FindByte(const void* bytes, int value, std::size_t size) {
  const void* const found = std::memchr(bytes, value, size);
  if (found != nullptr) {
    size = static_cast<std::size_t>(static_cast<const char*>(found) -
                                    static_cast<const char*>(bytes)) +
           1;
  }
  KVASAN_READ(bytes, size, "memchr");
  return found;
}

std::size_t Length(const char* text) {
  const std::size_t length = std::strlen(text);
  KVASAN_READ(text, length + 1, "strlen");
  return length;
}

std::size_t WideLength(const wchar_t* text) {
  const std::size_t length = std::wcslen(text);
  KVASAN_READ(text, (length + 1) * sizeof(wchar_t), "wcslen");
  return length;
}

char* CopyText(char* to, const char* from) {
  KVASAN_READ_TEXT(from, "strcpy");
  KVASAN_WRITE(to, std::strlen(from) + 1, "strcpy");
  return std::strcpy(to, from);
}

char* AppendText(char* to, const char* from) {
  KVASAN_READ_TEXT(from, "strcat");
  KVASAN_READ_TEXT(to, "strcat");
  KVASAN_WRITE(to + std::strlen(to), std::strlen(from) + 1, "strcat");
  return std::strcat(to, from);
}

char* CopyCounted(char* to, const char* from, std::size_t size) {
  KVASAN_READ(from, ::strnlen(from, size), "strncpy");
  KVASAN_WRITE(to, size, "strncpy");
  return std::strncpy(to, from, size);
}

// Bytes up to the first difference are read.
int CompareTexts(const char* a, const char* b) {
  std::size_t same = 0;
  while (a[same] == b[same] && a[same] != 0) ++same;
  KVASAN_READ(a, same + 1, "strcmp");
  KVASAN_READ(b, same + 1, "strcmp");
  return std::strcmp(a, b);
}

int CompareCounted(const char* a, const char* b, std::size_t size) {
  std::size_t read = 0;
  while (read < size && a[read] == b[read] && a[read] != 0) ++read;
  if (read < size) ++read;
  KVASAN_READ(a, read, "strncmp");
  KVASAN_READ(b, read, "strncmp");
  return std::strncmp(a, b, size);
}

const char* FindCharacter(const char* text, int value) {
  const char* const found = std::strchr(text, value);
  const std::size_t size =
      found == nullptr ? std::strlen(text) + 1 : static_cast<std::size_t>(found - text) + 1;
  KVASAN_READ(text, size, "strchr");
  return found;
}

const char* FindLast(const char* text, int value) {
  KVASAN_READ_TEXT(text, "strrchr");
  return std::strrchr(text, value);
}

const char* FindText(const char* text, const char* wanted) {
  KVASAN_READ_TEXT(text, "strstr");
  KVASAN_READ_TEXT(wanted, "strstr");
  return std::strstr(text, wanted);
}

int CompareWide(const wchar_t* a, const wchar_t* b) {
  KVASAN_READ_WIDE(a, "wcscmp");
  KVASAN_READ_WIDE(b, "wcscmp");
  return std::wcscmp(a, b);
}

char* ReadLine(char* line, int size, std::FILE* file) {
  if (size > 0) KVASAN_WRITE(line, static_cast<std::size_t>(size), "fgets");
  return std::fgets(line, size, file);
}

std::size_t ReadItems(void* items, std::size_t size, std::size_t count, std::FILE* file) {
  KVASAN_WRITE(items, size * count, "fread");
  return std::fread(items, size, count, file);
}

std::size_t WriteItems(const void* items, std::size_t size, std::size_t count, std::FILE* file) {
  KVASAN_READ(items, size * count, "fwrite");
  return std::fwrite(items, size, count, file);
}

int WriteText(const char* text, std::FILE* file) {
  KVASAN_READ_TEXT(text, "fputs");
  return std::fputs(text, file);
}

void Sort(void* items, std::size_t count, std::size_t size,
          int (*compare)(const void*, const void*)) {
  KVASAN_WRITE(items, count * size, "qsort");
  std::qsort(items, count, size, compare);
}

}  // namespace

std::span<const CheckedCall> TextCalls() {
  static const CheckedCall calls[] = {
      Checked("memcpy", CopyBytes),     Checked("memmove", MoveBytes),
      Checked("memset", SetBytes),      Checked("memcmp", CompareBytes),
      Checked("memchr", FindByte),      Checked("strlen", Length),
      Checked("wcslen", WideLength),    Checked("strcpy", CopyText),
      Checked("strcat", AppendText),    Checked("strncpy", CopyCounted),
      Checked("strcmp", CompareTexts),  Checked("strncmp", CompareCounted),
      Checked("strchr", FindCharacter), Checked("strrchr", FindLast),
      Checked("strstr", FindText),      Checked("wcscmp", CompareWide),
      Checked("fgets", ReadLine),       Checked("fread", ReadItems),
      Checked("fwrite", WriteItems),    Checked("fputs", WriteText),
      Checked("qsort", Sort),
  };
  return calls;
}

}  // namespace kv::sanitizer
