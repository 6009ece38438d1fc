#include "utils/internal/wide_path.h"

#include "utils/internal/text_length.h"
#include "utils/internal/win32.h"
#include "utils/text/text.h"

#include <climits>

namespace kv::internal {

WidePath::WidePath(const char* utf8) {
  short_[0] = L'\0';
  const std::size_t length = utf8 == nullptr ? 0 : TextLength(utf8);
  if (length == 0 || length > INT_MAX) return;
  const int bytes = static_cast<int>(length);

  int capacity = kShortSize - 1;
  size_ = utf8_to_utf16(short_, capacity, utf8, bytes);
  if (size_ < 0 && capacity >= kShortSize) {  // capacity is the size needed
    long_.resize(static_cast<std::size_t>(capacity));
    size_ = utf8_to_utf16(long_.data(), capacity, utf8, bytes);
  } else if (size_ >= 0) {
    short_[size_] = L'\0';
  }
  // The system would take a NUL inside for the end. Only an overlong form can spell one, and has
  // more bytes than units.
  const bool isAscii = size_ == bytes;
  if (size_ < 0 || (!isAscii && View().find(L'\0') != std::wstring_view::npos)) Clear();
}

void WidePath::Clear() {
  size_ = 0;
  short_[0] = L'\0';
  long_.clear();
}

std::wstring_view WidePath::View() const { return {Get(), static_cast<std::size_t>(size_)}; }

std::string NarrowPath(std::wstring_view path) {
  if (path.empty() || path.size() > INT_MAX) return {};
  const int units = static_cast<int>(path.size());
  char buffer[1024];
  const bool isShort = path.size() <= sizeof buffer / 3;  // no unit takes more than three bytes
  const int bytes = ::WideCharToMultiByte(CP_UTF8, 0, path.data(), units, buffer,
                                          isShort ? sizeof buffer : 0, nullptr, nullptr);
  if (bytes <= 0) return {};
  if (isShort) return {buffer, static_cast<std::size_t>(bytes)};

  std::string text(static_cast<std::size_t>(bytes), '\0');
  ::WideCharToMultiByte(CP_UTF8, 0, path.data(), units, text.data(), bytes, nullptr, nullptr);
  return text;
}

std::wstring CurrentFolder() {
  std::wstring path(::GetCurrentDirectoryW(0, nullptr), L'\0');
  const DWORD length = ::GetCurrentDirectoryW(static_cast<DWORD>(path.size()), path.data());
  path.resize(length < path.size() ? length : 0);
  return path;
}

std::wstring FullPath(const WidePath& path) {
  if (path.IsEmpty()) return {};
  std::wstring full(::GetFullPathNameW(path.Get(), 0, nullptr, nullptr), L'\0');
  const DWORD length =
      ::GetFullPathNameW(path.Get(), static_cast<DWORD>(full.size()), full.data(), nullptr);
  full.resize(length < full.size() ? length : 0);
  return full;
}

unsigned long PathAttributes(const WidePath& path) { return ::GetFileAttributesW(path.Get()); }

bool IsExistingFolder(const wchar_t* path) {
  const DWORD attributes = ::GetFileAttributesW(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

}  // namespace kv::internal
