// What the system tells of a path without opening it.
#ifndef KVUTILS_UTILS_EXTRA_FILE_STATUS_H_
#define KVUTILS_UTILS_EXTRA_FILE_STATUS_H_

#include "utils/internal/wide_path.h"
#include "utils/internal/win32.h"

#include <cstdint>
#include <optional>

namespace kv::internal {

struct FileStatus {
  bool isFolder;
  std::uint64_t size;
  std::uint64_t modified;  // in the system's ticks of 100 ns
};

// None when nothing is there.
inline std::optional<FileStatus> StatusOf(const char* path) {
  const auto join = [](DWORD high, DWORD low) { return std::uint64_t{high} << 32 | low; };
  WIN32_FILE_ATTRIBUTE_DATA data;
  const WidePath wide(path);
  if (wide.IsEmpty() || !::GetFileAttributesExW(wide.Get(), GetFileExInfoStandard, &data)) {
    return std::nullopt;
  }
  const bool isFolder = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  return FileStatus{isFolder, isFolder ? 0 : join(data.nFileSizeHigh, data.nFileSizeLow),
                    join(data.ftLastWriteTime.dwHighDateTime, data.ftLastWriteTime.dwLowDateTime)};
}

// The system's ticks as seconds since 1970-01-01 00:00 UTC, rounded down.
constexpr std::int64_t UnixSeconds(std::uint64_t ticks) {
  constexpr std::uint64_t kTicksPerSecond = 10'000'000;
  constexpr std::int64_t kFrom1601To1970 = 11'644'473'600;
  return static_cast<std::int64_t>(ticks / kTicksPerSecond) - kFrom1601To1970;
}

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_EXTRA_FILE_STATUS_H_
