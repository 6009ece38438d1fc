#include "utils/files/files.h"

#include "utils/internal/file_mode.h"
#include "utils/internal/wide_path.h"
#include "utils/internal/win32.h"
#include "utils/text/text.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <new>

namespace {

using namespace kv::internal::file_mode;
using kv::internal::NarrowPath;
using kv::internal::PathAttributes;
using kv::internal::WidePath;

enum State : unsigned { kOpen = 1, kClosed = 2, kOpenFailed = 128, kCloseFailed = 256 };

constexpr unsigned kFileErrorCode = 2;
constexpr unsigned kUnknownOrigin = 255;
constexpr int kSearchChunk = 65535;

[[noreturn]] void RaiseFileError(const char* format, const std::wstring& path = {}) {
  throw MException(kFileErrorCode, format, NarrowPath(path).c_str());
}

// Takes the read-only attribute from a file; true when it had one and has lost it.
bool ClearReadOnly(const WidePath& path) {
  const auto isReadOnly = [&path] {
    const DWORD attributes = PathAttributes(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
  };
  return isReadOnly() && ::SetFileAttributesW(path.Get(), FILE_ATTRIBUTE_NORMAL) != 0 &&
         !isReadOnly();
}

long long SecondsSince1970(const FILETIME& time) {
  constexpr long long kTicksPerSecond = 10'000'000;
  constexpr long long kSecondsFrom1601To1970 = 11'644'473'600;
  const unsigned long long ticks =
      (static_cast<unsigned long long>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
  return static_cast<long long>(ticks) / kTicksPerSecond - kSecondsFrom1601To1970;
}

}  // namespace

MFile::MFile() : m_Handle(INVALID_HANDLE_VALUE), m_State(kClosed), m_OpenCount(0) {}

MFile::MFile(const char* path, unsigned mode) : MFile() {
  if (!Load(path, mode)) RaiseFileError("MFile::Load - file open failure\n");
}

MFile::MFile(const MFile& other) = default;

MFile& MFile::operator=(const MFile& other) = default;

MFile::~MFile() { Unload(); }

bool MFile::Open(const char* path, unsigned mode) { return Load(path, mode); }

bool MFile::Close() { return Unload(); }

bool MFile::Load(const char* path, unsigned mode) {
  const WidePath widePath(path);
  if (m_State == kOpen && m_Path == widePath.View()) {
    if (m_OpenCount < std::numeric_limits<int>::max()) ++m_OpenCount;
    return true;
  }
  const DWORD access = GetAccessMode(mode);
  m_Path = widePath.View();
  const auto open = [&] {
    m_Handle = ::CreateFileW(widePath.Get(), access, GetShareMode(mode), nullptr, GetOpenMode(mode),
                             GetFlagAndAttributes(mode), nullptr);
    return m_Handle != INVALID_HANDLE_VALUE;
  };
  if (open() || (::GetLastError() == ERROR_ACCESS_DENIED && ClearReadOnly(widePath) && open())) {
    m_State = kOpen;
    m_OpenCount = 1;
    return true;
  }
  m_State = kOpenFailed;
  return false;
}

bool MFile::Unload() {
  if (m_OpenCount > std::numeric_limits<int>::min()) --m_OpenCount;
  if (m_OpenCount == 0 && m_State == kOpen) {
    m_State = ::CloseHandle(m_Handle) ? kClosed : kCloseFailed;
    m_Handle = INVALID_HANDLE_VALUE;
  }
  return m_State == kOpen || m_State == kClosed;
}

unsigned MFile::Read(void* buffer, unsigned count) {
  if (m_State != kOpen) return 0;
  DWORD transferred = 0;
  if (!::ReadFile(m_Handle, buffer, count, &transferred, nullptr)) {
    RaiseFileError("MFile::Read - reading error in file %s\n", m_Path);
  }
  return transferred;
}

unsigned MFile::Write(const void* buffer, unsigned count) {
  if (m_State != kOpen) return 0;
  DWORD transferred = 0;
  if (!::WriteFile(m_Handle, buffer, count, &transferred, nullptr)) {
    RaiseFileError("MFile::Write - writing error in file %s\n", m_Path);
  }
  return transferred;
}

unsigned MFile::Seek(unsigned origin, int distance) {
  const unsigned method = GetMethodMove(origin);
  if (method == kUnknownOrigin) RaiseFileError("MFile::Seek - bad parameter inDistanceToMove\n");
  return ::SetFilePointer(m_Handle, distance, nullptr, method);
}

unsigned MFile::GetFilePointer() const {
  if (m_State != kOpen) return 0;
  return ::SetFilePointer(m_Handle, 0, nullptr, FILE_CURRENT);
}

int MFile::GetLength() const {
  if (m_State != kOpen) return -1;
  return static_cast<int>(::GetFileSize(m_Handle, nullptr));
}

long long MFile::GetTime(int which) const {
  FILETIME creation;
  FILETIME lastAccess;
  FILETIME lastWrite;
  if (!::GetFileTime(m_Handle, &creation, &lastAccess, &lastWrite)) return 0;
  switch (which) {
    case 0:
      return SecondsSince1970(creation);
    case 1:
      return SecondsSince1970(lastAccess);
    default:
      return SecondsSince1970(lastWrite);
  }
}

bool MFile::Search(const unsigned char* pattern, unsigned length, bool fromStart) {
  if (m_State != kOpen || pattern == nullptr) return false;
  if (fromStart) Seek(0, 0);
  const int size = GetLength();
  const auto start = static_cast<int>(GetFilePointer());
  if (start < 0 || start >= size) return false;

  const int chunk = std::min(size - start, kSearchChunk);
  const auto buffer = std::make_unique_for_overwrite<unsigned char[]>(static_cast<unsigned>(chunk));
  for (int position = start;; position += chunk) {
    const auto wanted = static_cast<unsigned>(chunk);
    const unsigned read = std::min(Read(buffer.get(), wanted), wanted);
    const int index = MemorySearch(buffer.get(), read, pattern, length);
    if (index >= 0) {
      const auto end = static_cast<unsigned>(position) + static_cast<unsigned>(index) + length;
      Seek(0, static_cast<int>(end));
      return true;
    }
    if (size - position <= chunk) break;
  }
  Seek(0, start);
  return false;
}

bool MFile::GetMMInfo(long* /*info*/) { return false; }

bool MFile::IsExist(const char* path) {
  // The attributes of a file or folder can be read exactly when it exists: one question answers
  // both.
  return PathAttributes(WidePath(path)) != INVALID_FILE_ATTRIBUTES;
}

bool MFile::DeleteFileA(const char* path) { return ::DeleteFileW(WidePath(path).Get()) != 0; }

int MFile::GetLength(const char* path) {
  MFile file;
  return file.Open(path, kRead | kShareRead) ? file.GetLength() : -1;
}

long long MFile::GetTime(const char* path, int which) {
  MFile file;
  return file.Open(path, kRead | kShareRead) ? file.GetTime(which) : 0;
}

bool MFile::FileCopy(const char* source, const char* target) {
  MFile in(source, kRead);
  const auto length = static_cast<unsigned>(in.GetLength());
  const bool isUntold = length == INVALID_FILE_SIZE && ::GetLastError() != NO_ERROR;
  if (length == 0 || isUntold) return false;
  MFile out(target, kWrite);
  const std::unique_ptr<unsigned char[]> buffer(new (std::nothrow) unsigned char[length]);
  if (buffer == nullptr || in.Read(buffer.get(), length) < length) return false;
  return out.Write(buffer.get(), length) >= length;
}

unsigned MFile::GetAccessMode(unsigned mode) const {
  if (mode & kRead) return GENERIC_READ;
  if (mode & kWrite) return GENERIC_WRITE;
  if (mode & (kReadWriteShared | kReadWriteExclusive)) return GENERIC_READ | GENERIC_WRITE;
  RaiseFileError("MFile::GetAccessMode - bad parameter inAccessMode\n");
}

unsigned MFile::GetShareMode(unsigned mode) const {
  if (mode & (kRead | kShareRead)) return FILE_SHARE_READ;
  if (mode & (kWrite | kReadWriteShared | kShareWrite)) return FILE_SHARE_WRITE;
  return 0;
}

unsigned MFile::GetOpenMode(unsigned mode) const {
  if (mode & kCreate) return CREATE_ALWAYS;
  if (mode & (kRead | kReadWriteShared | kReadWriteExclusive)) return OPEN_EXISTING;
  return OPEN_ALWAYS;
}

unsigned MFile::GetFlagAndAttributes(unsigned mode) const {
  if (mode & kRead) return FILE_FLAG_RANDOM_ACCESS;
  if (mode & kCreate) return FILE_FLAG_SEQUENTIAL_SCAN;
  return FILE_ATTRIBUTE_NORMAL;
}

unsigned MFile::GetMethodMove(unsigned origin) const {
  switch (origin) {
    case 0:
      return FILE_BEGIN;
    case 1:
      return FILE_CURRENT;
    case 2:
      return FILE_END;
    default:
      return kUnknownOrigin;
  }
}
