#include "utils/files/files.h"

#include "utils/internal/append_guard.h"
#include "utils/internal/file_content.h"
#include "utils/internal/file_mode.h"
#include "utils/internal/wide_path.h"
#include "utils/paths/paths.h"
#include "utils/text/text.h"

#include <sys/stat.h>

#include <climits>
#include <cstring>
#include <ctime>
#include <memory>
#include <optional>

namespace {

namespace file_mode = kv::internal::file_mode;

using kv::internal::FileContent;
using kv::internal::ReadContent;
using kv::internal::WidePath;

constexpr unsigned kFromEnd = 2;
constexpr unsigned kSeekFailed = 0xFFFFFFFF;

struct StreamCloser {
  void operator()(std::FILE* stream) const { std::fclose(stream); }
};
using Stream = std::unique_ptr<std::FILE, StreamCloser>;

// The length of the stream, whose position is then its beginning; 0 when it cannot be told.
long long LengthOf(std::FILE* stream) {
  if (std::fseek(stream, 0, SEEK_END) != 0) return 0;
  const long long length = ::_ftelli64(stream);
  return std::fseek(stream, 0, SEEK_SET) == 0 ? length : 0;
}

bool IsUtf8(const char* text, int size) {
  constexpr int kMalformed = -2;
  int room = 0;
  return utf8_to_utf16(nullptr, room, text, size) != kMalformed;
}

}  // namespace

char* GetKvFileContent(const char* name) {
  KelvarisPath resolver;
  const char* path = resolver.GetPath(name);
  if (path == nullptr) return nullptr;
  std::optional<FileContent> content = ReadContent(path);
  return content ? content->bytes.release() : nullptr;
}

bool loadUTF8StringFromFile(std::string& out, const char* path) {
  const Stream stream(mm_fopen(path, "rb"));
  if (stream == nullptr) return false;
  const long long length = LengthOf(stream.get());
  if (length <= 0 || length > INT_MAX) return false;
  const auto size = static_cast<std::size_t>(length);
  const std::unique_ptr<char[]> text = kv::internal::NewContent(size);
  if (text == nullptr || std::fread(text.get(), 1, size, stream.get()) != size) return false;
  if (std::memchr(text.get(), '\0', size) != nullptr) return false;
  if (!IsUtf8(text.get(), static_cast<int>(size))) return false;
  out.append(text.get(), size);
  return true;
}

bool UniteFiles(const char* target, const char* source) {
  MFile out;
  if (!out.Open(target, file_mode::kReadWriteExclusive)) return false;
  const std::optional<FileContent> content = ReadContent(source);
  if (!content) return false;
  if (content->size == 0) return true;
  // Beyond what a Seek can reach nothing is written: it would go over the beginning.
  if (out.Seek(kFromEnd, 0) == kSeekFailed) return false;
  out.Write(content->bytes.get(), static_cast<unsigned>(content->size));
  return true;
}

int FileCompare(const char* first, const char* second) {
  constexpr int kNoFirst = 1;
  constexpr int kNoSecond = -1;
  MFile firstFile;
  if (!firstFile.Open(first, file_mode::kRead) || firstFile.GetLength() < 0) return kNoFirst;
  MFile secondFile;
  if (!secondFile.Open(second, file_mode::kRead) || secondFile.GetLength() < 0) return kNoSecond;
  const int difference = firstFile.GetLength() - secondFile.GetLength();
  if (difference != 0) return difference;

  const std::optional<FileContent> firstContent = ReadContent(firstFile);
  if (!firstContent) return kNoFirst;
  const std::optional<FileContent> secondContent = ReadContent(secondFile);
  if (!secondContent) return kNoSecond;
  // Files that were cut meanwhile are as long as what arrived.
  if (firstContent->size != secondContent->size) {
    return static_cast<int>(firstContent->size) - static_cast<int>(secondContent->size);
  }
  return std::memcmp(firstContent->bytes.get(), secondContent->bytes.get(), firstContent->size);
}

bool GetFileDate(short* date, const char* name) {
  KelvarisPath resolver;
  const char* path = resolver.GetPath(name);
  if (path == nullptr) return false;
  // Callers rely on the answer of the status query being left unchecked: a file that is gone has
  // the date of second 0.
  struct _stat64i32 status = {};
  ::_wstat64i32(WidePath(path).Get(), &status);
  const std::tm* local = ::_localtime64(&status.st_mtime);
  if (local == nullptr) return false;
  date[0] = static_cast<short>(local->tm_mday);
  date[1] = static_cast<short>(local->tm_mon + 1);
  date[2] = static_cast<short>(local->tm_year + 1900);
  return true;
}

bool ReadTabSeparatedColumn(std::vector<std::string>& out, const char* name, int column) {
  constexpr int kLineLength = 4096;
  constexpr int kKeptLength = 512;
  KelvarisPath resolver;
  const char* path = resolver.GetPath(name);
  MTextFile table(true, '!', '}', kLineLength);
  if (path == nullptr || !table.Open(path, false)) return false;
  // Callers rely on a negative column lying behind the end of every line.
  const auto wanted = static_cast<std::size_t>(column);
  char line[kKeptLength];
  std::vector<std::string> fields;
  kv::internal::AppendGuard appended(out);
  while (table.Readln(line, kKeptLength) > 0) {
    GetTokens(fields, line, '\t');
    if (fields.size() > wanted) out.push_back(std::move(fields[wanted]));
  }
  appended.Keep();
  return !out.empty();
}
