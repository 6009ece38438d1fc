// Whether the content of a big file is new.
#include <windows.h>

#include <cstdint>
#include <fstream>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "bench/support/comparison.h"
#include "bench/support/main.h"
#include "tests/reference/crc32.h"
#include "utils/download/download.h"
#include "utils/paths/paths.h"

namespace {

constexpr std::size_t kFileSize = std::size_t{256} << 20;

// A file in the current folder, removed at the end of the program.
class BigFile {
 public:
  BigFile() {
    char folder[MAX_PATH];
    char name[MAX_PATH];
    kv::bench::Require(::GetCurrentDirectoryA(MAX_PATH, folder) != 0 &&
                           ::GetTempFileNameA(folder, "kvb", 0, name) != 0,
                       "a temporary file");
    path_ = name;
    std::mt19937_64 random(20240305);
    std::vector<std::uint64_t> piece(1 << 17);
    std::ofstream file(path_, std::ios::binary);
    for (std::size_t size = 0; size < kFileSize; size += piece.size() * sizeof piece[0]) {
      for (std::uint64_t& word : piece) word = random();
      file.write(reinterpret_cast<const char*>(piece.data()),
                 static_cast<std::streamsize>(piece.size() * sizeof piece[0]));
    }
    kv::bench::Require(file.good(), "room for the temporary file");
  }
  BigFile(const BigFile&) = delete;
  BigFile& operator=(const BigFile&) = delete;
  ~BigFile() { ::DeleteFileA(path_.c_str()); }

  [[nodiscard]] const char* Path() const { return path_.c_str(); }

 private:
  std::string path_;
};

const char* BigFilePath() {
  static const BigFile file;
  return file.Path();
}

class OpenFile {
 public:
  OpenFile()
      : handle_(::CreateFileA(BigFilePath(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                              0, nullptr)) {}
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;
  ~OpenFile() { ::CloseHandle(handle_); }

  // The number of bytes that have been read.
  std::size_t Read(char* buffer, std::size_t size) {
    DWORD read = 0;
    ::ReadFile(handle_, buffer, static_cast<DWORD>(size), &read, nullptr);
    return read;
  }

 private:
  HANDLE handle_;
};

// The file in a new buffer by one call, and what `use` makes of it.
template <typename Use>
unsigned ReadAtOnce(Use use) {
  const std::unique_ptr<char[]> buffer(new char[kFileSize]);
  return use(buffer.get(), OpenFile().Read(buffer.get(), kFileSize));
}

unsigned Plain() { return ReadAtOnce(kv::reference::Crc32); }

unsigned LastByte() {
  return ReadAtOnce([](const char* buffer, std::size_t size) {
    return static_cast<unsigned>(static_cast<unsigned char>(buffer[size - 1]));
  });
}

// What reading alone costs where the memory is at hand.
unsigned ReadInPieces() {
  static std::vector<char> piece(256 << 10);
  OpenFile file;
  unsigned size = 0;
  while (const std::size_t read = file.Read(piece.data(), piece.size()))
    size += static_cast<unsigned>(read);
  return size;
}

// With an empty registry, which leaves no file behind.
unsigned Library() {
  CheckFileVersion registry("bench_crc_sum.dat");
  const bool isNew = registry.IsNew(BigFilePath(), true);
  registry.DeleteData();
  return isNew ? 1 : 0;
}

}  // namespace

void kv::bench::CheckAgreement() {
  const std::string file = BigFilePath();
  const KelvarisPath discovery;
  KelvarisPath::SetWritableFolder(file.substr(0, file.rfind('\\') + 1).c_str());
  CheckFileVersion registry("bench_crc_sum.dat");
  registry.AddFile(file.c_str(), Plain());
  Require(!registry.IsNew(file.c_str(), true), "the checksum of a file");
  registry.DeleteData();
  Require(Library() == 1, "a file that is new");
}

void kv::bench::RegisterComparisons() {
  Comparison("CheckFileVersion::IsNew, 256 MiB")
      .CallOnceIn(kFewRounds)
      .Add("library", Library)
      .Add("plain", Plain)
      .Add("limit: one read, new memory", LastByte)
      .Add("limit: pieces of 256 KiB", ReadInPieces);
}
