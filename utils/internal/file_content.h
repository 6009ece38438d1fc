// The whole content of a file, read in one piece.
#ifndef KVUTILS_UTILS_INTERNAL_FILE_CONTENT_H_
#define KVUTILS_UTILS_INTERNAL_FILE_CONTENT_H_

#include "utils/files/files.h"
#include "utils/internal/file_mode.h"

#include <cstddef>
#include <cstring>
#include <memory>
#include <new>
#include <optional>

namespace kv::internal {

struct FileContent {
  std::unique_ptr<char[]> bytes;  // a zero byte stands behind them
  std::size_t size;
};

// Room for `size` bytes and a zero byte behind them, not filled; null when memory is short.
inline std::unique_ptr<char[]> NewContent(std::size_t size) {
  return std::unique_ptr<char[]>(new (std::nothrow) char[size + 1]);
}

// The content of an open file whose pointer stands at its beginning: one allocation, one read. None
// when the length reads as negative (from 2 GiB on) and when memory is short. A file that is cut
// while it is read has the bytes that arrived; the rest of the buffer is zero. Throws as
// MFile::Read does.
[[nodiscard]] inline std::optional<FileContent> ReadContent(MFile& file) {
  const int length = file.GetLength();
  if (length < 0) return std::nullopt;
  const auto promised = static_cast<std::size_t>(length);
  FileContent content = {NewContent(promised), 0};
  if (content.bytes == nullptr) return std::nullopt;
  content.size = file.Read(content.bytes.get(), static_cast<unsigned>(length));
  std::memset(content.bytes.get() + content.size, 0, promised + 1 - content.size);
  return content;
}

// The same of the file at `path`; none also when it cannot be opened.
[[nodiscard]] inline std::optional<FileContent> ReadContent(const char* path) {
  MFile file;
  return file.Open(path, file_mode::kRead) ? ReadContent(file) : std::nullopt;
}

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_INTERNAL_FILE_CONTENT_H_
