// The only road from a UTF-8 path to a Win32 call, and back.
#ifndef KVUTILS_UTILS_INTERNAL_WIDE_PATH_H_
#define KVUTILS_UTILS_INTERNAL_WIDE_PATH_H_

#include <string>
#include <string_view>

namespace kv::internal {

// A path in the system's form. Null, empty and malformed UTF-8 give the empty path, which every
// system call refuses: a path cut at the fault could name another file. Paths of ordinary length
// need no allocation.
class WidePath {
 public:
  explicit WidePath(const char* utf8);
  WidePath(const WidePath&) = delete;
  WidePath& operator=(const WidePath&) = delete;

  [[nodiscard]] const wchar_t* Get() const { return long_.empty() ? short_ : long_.c_str(); }
  [[nodiscard]] bool IsEmpty() const { return Get()[0] == L'\0'; }
  [[nodiscard]] std::wstring_view View() const;

 private:
  static constexpr int kShortSize = 264;

  void Clear();

  int size_ = 0;
  wchar_t short_[kShortSize];
  std::wstring long_;  // in use when the path does not fit in short_
};

// A path from the system as UTF-8, characters beyond the Basic Multilingual Plane as four bytes.
std::string NarrowPath(std::wstring_view path);

// The process's current folder; empty when the system does not tell.
std::wstring CurrentFolder();

// The absolute path without ".", ".." and repeated separators, as the system reads it; a separator
// at its end stays. Empty when the system makes none of it.
std::wstring FullPath(const WidePath& path);

// The system's attributes of a file or folder, INVALID_FILE_ATTRIBUTES when there is none.
unsigned long PathAttributes(const WidePath& path);
bool IsExistingFolder(const wchar_t* path);

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_INTERNAL_WIDE_PATH_H_
