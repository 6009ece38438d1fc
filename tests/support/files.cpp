#include "tests/support/files.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace kv::test {
namespace {

[[noreturn]] void Fail(const char* call, const std::string& path) {
  std::fprintf(stderr, "%s failed with error %lu: %s\n", call, ::GetLastError(), path.c_str());
  std::exit(99);
}

DWORD Attributes(const std::string& path) { return ::GetFileAttributesW(Widen(path).c_str()); }

class File {
 public:
  File(const std::string& path, DWORD access, DWORD disposition)
      : handle_(::CreateFileW(Widen(path).c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE,
                              nullptr, disposition, FILE_FLAG_BACKUP_SEMANTICS, nullptr)) {
    if (handle_ == INVALID_HANDLE_VALUE) Fail("CreateFileW", path);
  }
  ~File() { ::CloseHandle(handle_); }
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  HANDLE Get() const { return handle_; }

 private:
  HANDLE handle_;
};

// Calls visit(name, isFolder) for each entry but "." and "..".
template <typename Visit>
void ForEachEntry(const std::string& folder, Visit visit) {
  WIN32_FIND_DATAW data;
  const HANDLE find = ::FindFirstFileW(Widen(folder + "\\*").c_str(), &data);
  if (find == INVALID_HANDLE_VALUE) return;
  do {
    const std::string name = Narrow(data.cFileName);
    if (name == "." || name == "..") continue;
    visit(name, (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0);
  } while (::FindNextFileW(find, &data));
  ::FindClose(find);
}

void ListInto(const std::string& folder, const std::string& prefix,
              std::vector<std::string>& entries) {
  ForEachEntry(folder, [&](const std::string& name, bool isFolder) {
    entries.push_back(prefix + name + (isFolder ? "\\" : ""));
    if (isFolder) ListInto(folder + "\\" + name, prefix + name + "\\", entries);
  });
}

// The console of a program may outlive it a little, and holds the folder that it was started in.
bool RemoveEmptyFolder(const std::string& path) {
  constexpr int kAttempts = 500;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    if (::RemoveDirectoryW(Widen(path).c_str())) return true;
    if (::GetLastError() != ERROR_SHARING_VIOLATION) return false;
    ::Sleep(20);
  }
  return false;
}

}  // namespace

std::wstring Widen(std::string_view utf8) {
  const int size = static_cast<int>(utf8.size());
  std::wstring wide(
      static_cast<std::size_t>(::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0)),
      L'\0');
  ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

std::string Narrow(std::wstring_view utf16) {
  const int size = static_cast<int>(utf16.size());
  std::string text(static_cast<std::size_t>(::WideCharToMultiByte(CP_UTF8, 0, utf16.data(), size,
                                                                  nullptr, 0, nullptr, nullptr)),
                   '\0');
  ::WideCharToMultiByte(CP_UTF8, 0, utf16.data(), size, text.data(), static_cast<int>(text.size()),
                        nullptr, nullptr);
  return text;
}

void WriteBytes(const std::string& path, std::string_view bytes) {
  const std::size_t slash = path.rfind('\\');
  if (slash != std::string::npos) CreateFolders(path.substr(0, slash));
  const File file(path, GENERIC_WRITE, CREATE_ALWAYS);
  DWORD written = 0;
  const auto size = static_cast<DWORD>(bytes.size());
  if (!::WriteFile(file.Get(), bytes.data(), size, &written, nullptr) || written != size) {
    Fail("WriteFile", path);
  }
}

std::string ReadBytes(const std::string& path) {
  const File file(path, GENERIC_READ, OPEN_EXISTING);
  std::string bytes(::GetFileSize(file.Get(), nullptr), '\0');
  DWORD read = 0;
  if (!::ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr)) {
    Fail("ReadFile", path);
  }
  bytes.resize(read);
  return bytes;
}

void CreateFolders(const std::string& path) {
  if (path.empty() || path.back() == ':' || FolderExists(path)) return;
  const std::size_t slash = path.rfind('\\');
  if (slash != std::string::npos) CreateFolders(path.substr(0, slash));
  if (!::CreateDirectoryW(Widen(path).c_str(), nullptr) && !FolderExists(path)) {
    Fail("CreateDirectoryW", path);
  }
}

bool FileExists(const std::string& path) {
  const DWORD attributes = Attributes(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool FolderExists(const std::string& path) {
  const DWORD attributes = Attributes(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

void RemoveFile(const std::string& path) {
  if (!::DeleteFileW(Widen(path).c_str())) Fail("DeleteFileW", path);
}

void RemoveTree(const std::string& path) {
  if (!FolderExists(path)) return;
  ForEachEntry(path, [&](const std::string& name, bool isFolder) {
    const std::string entry = path + "\\" + name;
    ::SetFileAttributesW(Widen(entry).c_str(), FILE_ATTRIBUTE_NORMAL);
    if (isFolder) {
      RemoveTree(entry);
    } else {
      RemoveFile(entry);
    }
  });
  if (!RemoveEmptyFolder(path)) Fail("RemoveDirectoryW", path);
}

void SetTimes(const std::string& path, long long lastAccess, long long lastWrite, int ticks) {
  const auto fileTime = [ticks](long long seconds) {
    const long long value = (seconds + 11'644'473'600) * 10'000'000 + ticks;
    return FILETIME{static_cast<DWORD>(value & 0xFFFFFFFF), static_cast<DWORD>(value >> 32)};
  };
  const FILETIME access = fileTime(lastAccess);
  const FILETIME write = fileTime(lastWrite);
  const File file(path, FILE_WRITE_ATTRIBUTES, OPEN_EXISTING);
  if (!::SetFileTime(file.Get(), nullptr, &access, &write)) Fail("SetFileTime", path);
}

void MakeSparse(const std::string& path, long long size) {
  const File file(path, GENERIC_WRITE, CREATE_ALWAYS);
  LARGE_INTEGER end;
  end.QuadPart = size;
  if (!::SetFilePointerEx(file.Get(), end, nullptr, FILE_BEGIN) || !::SetEndOfFile(file.Get())) {
    Fail("SetEndOfFile", path);
  }
}

void SetReadOnly(const std::string& path, bool readOnly) {
  const DWORD attributes = readOnly ? FILE_ATTRIBUTE_READONLY : FILE_ATTRIBUTE_NORMAL;
  if (!::SetFileAttributesW(Widen(path).c_str(), attributes)) Fail("SetFileAttributesW", path);
}

bool IsReadOnly(const std::string& path) {
  const DWORD attributes = Attributes(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

void SetHidden(const std::string& path) {
  if (!::SetFileAttributesW(Widen(path).c_str(), FILE_ATTRIBUTE_HIDDEN)) {
    Fail("SetFileAttributesW", path);
  }
}

std::vector<std::string> ListTree(const std::string& folder) {
  std::vector<std::string> entries;
  ListInto(folder, "", entries);
  std::sort(entries.begin(), entries.end());
  return entries;
}

std::map<std::string, std::string> ReadTree(const std::string& folder) {
  struct Letter {
    DWORD attribute;
    char letter;
  };
  constexpr Letter kLetters[] = {{FILE_ATTRIBUTE_READONLY, 'r'},
                                 {FILE_ATTRIBUTE_HIDDEN, 'h'},
                                 {FILE_ATTRIBUTE_SYSTEM, 's'},
                                 {FILE_ATTRIBUTE_REPARSE_POINT, 'l'}};
  std::map<std::string, std::string> tree;
  for (const std::string& entry : ListTree(folder)) {
    const std::string path = folder + "\\" + entry;
    std::string& text = tree[entry];
    for (const Letter& letter : kLetters) {
      if ((Attributes(path) & letter.attribute) != 0) text += letter.letter;
    }
    text += ": ";
    if (entry.back() != '\\') text += ReadBytes(path);
  }
  return tree;
}

std::string CurrentFolder() {
  std::wstring path(::GetCurrentDirectoryW(0, nullptr), L'\0');
  path.resize(::GetCurrentDirectoryW(static_cast<DWORD>(path.size()), path.data()));
  return Narrow(path);
}

void SetCurrentFolder(const std::string& path) {
  if (!::SetCurrentDirectoryW(Widen(path).c_str())) Fail("SetCurrentDirectoryW", path);
}

}  // namespace kv::test
