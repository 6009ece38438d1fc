#include "utils/files/files.h"

#include "utils/files/text_position.h"
#include "utils/files/text_stream.h"
#include "utils/internal/characters.h"
#include "utils/internal/number_scan.h"
#include "utils/internal/text_length.h"
#include "utils/internal/wide_path.h"
#include "utils/text/text.h"

#include <algorithm>
#include <cstring>
#include <cwchar>

namespace {

using kv::internal::kScannedSize;
using kv::internal::NumberScanner;
using kv::internal::TextLength;
using kv::internal::WidePath;

constexpr int kEndOfFile = -1;
constexpr int kEndMarker = -2;
constexpr long kByteOrderMarkSize = 3;

bool StartsWithByteOrderMark(std::FILE* file) {
  char head[kByteOrderMarkSize + 1] = "";
  return std::fgets(head, sizeof head, file) != nullptr && std::strcmp(head, "\xEF\xBB\xBF") == 0;
}

char* SkipDelimiters(char* text) {
  while (kv::internal::IsTokenDelimiter(*text)) ++text;
  return text;
}

// The sizes of the number types are copied without a call.
void CopyNumber(unsigned char* target, const unsigned char* value, std::size_t size) {
  switch (size) {
    case 2:
      std::memcpy(target, value, 2);
      break;
    case 4:
      std::memcpy(target, value, 4);
      break;
    case 8:
      std::memcpy(target, value, 8);
      break;
    default:
      std::memcpy(target, value, size);
  }
}

std::size_t LineBufferSize(int lineLength) {
  return static_cast<std::size_t>(std::max(lineLength, 0)) + 1;
}

}  // namespace

MTextFile::MTextFile(bool deleteBorderSpace, char commentChar, char endChar, int lineLength)
    : m_BomSkipped(0),
      m_CommentChar(commentChar),
      m_EndChar(endChar),
      m_DeleteBorderSpace(deleteBorderSpace),
      m_SkipEmptyStrings(true),
      m_Line(std::make_shared_for_overwrite<char[]>(LineBufferSize(lineLength))),
      m_LineLength(lineLength) {
  m_Line[0] = '\0';
}

MTextFile::MTextFile(const MTextFile& other) = default;

MTextFile& MTextFile::operator=(const MTextFile& other) = default;

MTextFile::~MTextFile() = default;

bool MTextFile::Open(const char* path, bool write) {
  Close();
  const WidePath widePath(path);
  m_FileName = widePath.View();
  m_Stream.reset();
  if (widePath.IsEmpty()) return false;
  m_Stream = std::make_shared<Stream>(!write);
  std::FILE* file = m_Stream->Open(widePath.Get(), write ? L"wt" : L"rt");
  if (file == nullptr) return false;
  if (write) return true;
  if (StartsWithByteOrderMark(file)) {
    m_BomSkipped = 1;
  } else if (std::fseek(file, 0, SEEK_SET) != 0) {
    m_Stream->Close();  // what has been read would be lost
    return false;
  }
  return true;
}

void MTextFile::Close() {
  m_BomSkipped = 0;
  if (m_Stream != nullptr) m_Stream->Close();
}

void MTextFile::SeekToBegin() {
  if (std::FILE* file = Internals::StreamOf(*this)) {
    std::fseek(file, m_BomSkipped == 1 ? kByteOrderMarkSize : 0, SEEK_SET);
  }
}

void MTextFile::SetBorderSpaceDelete(bool deleteBorderSpace) {
  m_DeleteBorderSpace = deleteBorderSpace;
}

void MTextFile::SkipEmptyStrings(bool skip) { m_SkipEmptyStrings = skip; }

bool MTextFile::GetEndFileStatus() const {
  std::FILE* file = Internals::StreamOf(*this);
  return file != nullptr && std::feof(file) != 0;
}

std::wstring MTextFile::GetFileName() const { return m_FileName; }

int MTextFile::Readln(char* dst, int size) {
  if (!Internals::ReadSignificantLine(*this)) return kEndOfFile;
  if (m_DeleteBorderSpace) DeleteBorderSpace(m_Line.get());
  int stored = 0;
  if (dst != nullptr && size > 0) {
    const std::size_t length = TextLength(m_Line.get());
    stored = static_cast<int>(std::min(static_cast<std::size_t>(size - 1), length));
    std::memcpy(dst, m_Line.get(), static_cast<std::size_t>(stored));
    dst[stored] = '\0';
  }
  return m_Line[0] == m_EndChar ? kEndMarker : stored;
}

int MTextFile::Readln(short* values, int count) { return Readln(values, count, "%d", 2); }
int MTextFile::Readln(unsigned short* values, int count) { return Readln(values, count, "%u", 2); }
int MTextFile::Readln(int* values, int count) { return Readln(values, count, "%d", 4); }
int MTextFile::Readln(unsigned int* values, int count) { return Readln(values, count, "%u", 4); }
int MTextFile::Readln(long* values, int count) { return Readln(values, count, "%li", 4); }
int MTextFile::Readln(float* values, int count) { return Readln(values, count, "%f", 4); }
int MTextFile::Readln(double* values, int count) { return Readln(values, count, "%lf", 8); }

int MTextFile::Readln(void* out, int count, const char* format, int itemSize) {
  if (!Internals::ReadSignificantLine(*this)) return kEndOfFile;
  char* token = SkipDelimiters(m_Line.get());
  if (*token != '\0' && *token == m_EndChar) return kEndMarker;

  const NumberScanner scanner(format);
  const auto size = std::min(static_cast<std::size_t>(std::max(itemSize, 0)), kScannedSize);
  char* const end = token + TextLength(token);
  auto* target = static_cast<unsigned char*>(out);
  int stored = 0;
  while (target != nullptr && stored < count && token != end) {
    alignas(double) unsigned char value[kScannedSize] = {};
    char* const tokenEnd = scanner.Scan(token, end, value);
    if (tokenEnd == nullptr) break;
    CopyNumber(target, value, size);
    target += size;
    ++stored;
    token = SkipDelimiters(tokenEnd);
  }
  return stored;
}

bool MTextFile::SearchString(const char* text, bool fromStart) {
  if (text == nullptr) return false;
  if (fromStart) SeekToBegin();
  while (Internals::ReadSignificantLine(*this)) {
    DeleteBorderSpace(m_Line.get());
    if (std::strcmp(m_Line.get(), text) == 0) return true;
  }
  return false;
}

int MTextFile::GetNumberLines(bool untilEndMarker) {
  std::FILE* file = Internals::StreamOf(*this);
  if (file == nullptr || !m_Stream->IsForReading()) return 0;
  const kv::internal::ScopedTextPosition position(file);
  char line[19];
  int lines = 0;
  int result = Readln(line, sizeof line);
  for (; result > 0; result = Readln(line, sizeof line)) ++lines;
  return untilEndMarker && result != kEndMarker ? -lines : lines;
}

bool MTextFile::IsComment() const {
  const char* first = m_Line.get();
  while (kv::internal::IsSpace(*first)) ++first;
  return *first == m_CommentChar || (m_SkipEmptyStrings && *first == '\0');
}

char* MTextFile::fgets(char* buffer, int size) {
  std::FILE* file = Internals::StreamOf(*this);
  // With room for the terminator alone the standard function succeeds for ever without reading.
  return file == nullptr || size < 2 ? nullptr : std::fgets(buffer, size, file);
}

int MTextFile::fprintf(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const int printed = vfprintf(format, arguments);
  va_end(arguments);
  return printed;
}

int MTextFile::vfprintf(const char* format, va_list arguments) {
  std::FILE* file = Internals::StreamOf(*this);
  return file == nullptr ? -1 : std::vfprintf(file, format, arguments);
}
