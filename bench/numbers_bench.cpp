// Rows of numbers and lines of text files.
#include <windows.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <random>
#include <string>

#include "bench/support/comparison.h"
#include "bench/support/main.h"
#include "tests/reference/numbers.h"
#include "utils/files/files.h"

namespace {

using kv::bench::kFewRounds;
using kv::reference::LineReader;

using ScanFunction = int (*)(const char*, const char*, ...);

constexpr int kColumns = 5;
constexpr int kDifferentRows = 20'000;
constexpr int kRows = 1'000'000;
constexpr int kFewRows = 400;
constexpr int kLineSize = 4096;

constexpr struct {
  const char* format;
  const char* token;
} kTokens[] = {{"%d", "7"}, {"%d", "123456"}, {"%lf", "-12899199.520548"}};

// A file of the system's temporary folder, gone at the end of the program.
class TemporaryFile {
 public:
  TemporaryFile(const std::string& name, const std::string& part, int parts)
      : path_((std::filesystem::temp_directory_path() / (name + "_" + Tag() + ".txt")).string()) {
    std::FILE* file = std::fopen(path_.c_str(), "wb");
    kv::bench::Require(file != nullptr, "the temporary file cannot be written");
    for (int i = 0; i < parts; ++i) std::fwrite(part.data(), 1, part.size(), file);
    std::fclose(file);
  }
  ~TemporaryFile() { std::remove(path_.c_str()); }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  [[nodiscard]] const char* Path() const { return path_.c_str(); }

 private:
  static std::string Tag() { return std::to_string(::GetCurrentProcessId()); }

  std::string path_;
};

template <typename... Values>
std::string Row(const char* format, Values... values) {
  char row[200];
  return {row, static_cast<std::size_t>(std::snprintf(row, sizeof row, format, values...))};
}

std::string RowsOfIntegers() {
  std::mt19937 random(20240301);
  std::string text;
  for (int i = 0; i < kDifferentRows; ++i) {
    text += Row("%u %u %u %d %u\r\n", random() % 1'000'000, random() % 360, random() % 60,
                static_cast<int>(random() % 180) - 90, random() % 100'000'000);
  }
  return text;
}

std::string RowsOfReals() {
  std::mt19937 random(20240302);
  std::uniform_real_distribution<double> unit(0, 1);
  std::string text;
  for (int i = 0; i < kDifferentRows; ++i) {
    text += Row("%.6f %.6f %.2f %.4f %.8f\r\n", unit(random) * 360, unit(random) * 180 - 90,
                unit(random) * 20, unit(random) * 1000, unit(random));
  }
  return text;
}

// The rows as a program reads them that is written for speed: no token is copied.
class InPlaceReader {
 public:
  explicit InPlaceReader(std::FILE* stream) : stream_(stream) {}

  template <typename Value>
  int Row(Value* values, int count, const char* format, ScanFunction scan) {
    constexpr char kDelimiters[] = " \t\n";
    const char* token = nullptr;
    do {
      if (std::fgets(line_, kLineSize, stream_) == nullptr) return -1;
      token = std::strtok(line_, kDelimiters);
    } while (token == nullptr || *token == '!');
    if (*token == '}') return -2;
    int stored = 0;
    for (; stored < count && token != nullptr && scan(token, format, values + stored) == 1;
         ++stored)
      token = std::strtok(nullptr, kDelimiters);
    return stored;
  }

 private:
  std::FILE* stream_;
  char line_[kLineSize];
};

using Stream = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;
Stream OpenedStream(const char* path) { return {std::fopen(path, "rt"), &std::fclose}; }

// Calls `read` until it gives -1 for the end of the file.
template <typename Read>
void ReadRows(Read read) {
  int rows = 0;
  while (read() != -1) ++rows;
  kv::bench::Require(rows == kRows, "rows were lost");
}

template <typename Value>
void ReadByLibrary(const char* path) {
  MTextFile file;
  file.Open(path, false);
  Value values[kColumns];
  ReadRows([&] { return file.Readln(values, kColumns); });
}

template <typename Value, typename Reader>
void ReadByScan(const char* path, const char* format, ScanFunction scan) {
  const Stream stream = OpenedStream(path);
  Reader reader(stream.get());
  Value values[kColumns];
  ReadRows([&] { return reader.Row(values, kColumns, format, scan); });
}

void ReadLinesAlone(const char* path) {
  const Stream stream = OpenedStream(path);
  char line[kLineSize];
  ReadRows([&] { return std::fgets(line, sizeof line, stream.get()) == nullptr ? -1 : 0; });
}

// sscanf of the system's run-time library; the compiler binds another.
ScanFunction SystemScan() {
  return reinterpret_cast<ScanFunction>(
      reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"msvcrt.dll"), "sscanf")));
}

template <typename Value>
void CompareRows(const std::string& what, const std::shared_ptr<TemporaryFile>& file,
                 const char* format) {
  kv::bench::Comparison comparison("Readln, 1000000 rows of five " + what);
  comparison.CallOnceIn(kFewRounds)
      .Add("library", [file] { ReadByLibrary<Value>(file->Path()); })
      .Add("plain",
           [file, format] { ReadByScan<Value, LineReader>(file->Path(), format, std::sscanf); })
      .Add("limit fgets alone", [file] { ReadLinesAlone(file->Path()); });
  if (const ScanFunction scan = SystemScan(); scan != nullptr) {
    comparison
        .Add("msvcrt sscanf",
             [file, format, scan] { ReadByScan<Value, LineReader>(file->Path(), format, scan); })
        .Add("strtok and msvcrt sscanf", [file, format, scan] {
          ReadByScan<Value, InPlaceReader>(file->Path(), format, scan);
        });
  }
}

void CompareLines(const std::shared_ptr<TemporaryFile>& file) {
  kv::bench::Comparison("Readln, 1000000 rows as text")
      .CallOnceIn(kFewRounds)
      .Add("library",
           [file] {
             MTextFile reader;
             reader.Open(file->Path(), false);
             char line[kLineSize];
             ReadRows([&] { return reader.Readln(line, sizeof line); });
           })
      .Add("plain",
           [file] {
             const Stream stream = OpenedStream(file->Path());
             LineReader reader(stream.get());
             char line[kLineSize];
             ReadRows([&] { return reader.Text(line, sizeof line); });
           })
      .Add("limit fgets alone", [file] { ReadLinesAlone(file->Path()); });
}

// The row reader with a format of its own, which a class that derives from the reader may use.
class ScannedFile : public MTextFile {
 public:
  double Number(const char* format) {
    double value = 0;
    if (Readln(&value, 1, format, sizeof value) == -1) {
      SeekToBegin();
      Readln(&value, 1, format, sizeof value);
    }
    return value;
  }
};

// The same of any reader of rows on a stream, from the beginning again at the end.
template <typename Reader>
double Number(Reader& reader, std::FILE* stream, const char* format, ScanFunction scan) {
  double value = 0;
  if (reader.Row(&value, 1, format, scan) == -1) {
    std::rewind(stream);
    reader.Row(&value, 1, format, scan);
  }
  return value;
}

template <typename Reader>
auto ReadingNumbers(const std::shared_ptr<TemporaryFile>& file, const char* format,
                    ScanFunction scan) {
  const std::shared_ptr<std::FILE> stream = OpenedStream(file->Path());
  return [file, stream, reader = Reader(stream.get()), format, scan]() mutable {
    return Number(reader, stream.get(), format, scan);
  };
}

// Rows of one token each, in a file that the system's buffer holds.
void CompareTokens(const char* format, const std::string& token) {
  std::string rows;
  for (int i = 0; i < kFewRows; ++i) rows += token + "\r\n";
  const auto file = std::make_shared<TemporaryFile>("token " + token, rows, 1);
  const auto library = std::make_shared<ScannedFile>();
  library->Open(file->Path(), false);
  kv::bench::Comparison comparison("Readln, a row of " + token + " by " + format);
  comparison.Add("library", [library, format] { return library->Number(format); })
      .Add("plain", ReadingNumbers<LineReader>(file, format, std::sscanf));
  if (const ScanFunction scan = SystemScan())
    comparison.Add("strtok and msvcrt sscanf", ReadingNumbers<InPlaceReader>(file, format, scan));
}

// A file opened, its first row read, and closed again.
void CompareShortVisits(const std::shared_ptr<TemporaryFile>& file) {
  kv::bench::Comparison("Open, Readln of one row of integers, Close")
      .Add("library",
           [file] {
             MTextFile reader;
             reader.Open(file->Path(), false);
             int values[kColumns];
             return reader.Readln(values, kColumns);
           })
      .Add("plain", [file] {
        const Stream stream = OpenedStream(file->Path());
        char mark[4];
        std::fgets(mark, sizeof mark, stream.get());
        std::fseek(stream.get(), 0, SEEK_SET);
        LineReader reader(stream.get());
        int values[kColumns];
        return reader.Row(values, kColumns, "%d", std::sscanf);
      });
}

// The rows of the file by the library and by a reader.
template <typename Value, typename Reader>
void CheckRows(const char* path, const char* format, ScanFunction scan) {
  const Stream stream = OpenedStream(path);
  Reader reader(stream.get());
  MTextFile file;
  file.Open(path, false);
  for (int row = 0; row < kDifferentRows; ++row) {
    Value expected[kColumns];
    Value values[kColumns];
    kv::bench::Require(reader.Row(expected, kColumns, format, scan) == kColumns, "row");
    kv::bench::Require(file.Readln(values, kColumns) == kColumns, "Readln");
    for (int i = 0; i < kColumns; ++i) kv::bench::Require(values[i] == expected[i], "Readln");
  }
}

void CheckToken(const char* format, const char* token, ScanFunction scan) {
  const TemporaryFile rows("token", std::string(token) + "\r\n", 1);
  const Stream stream = OpenedStream(rows.Path());
  InPlaceReader reader(stream.get());
  ScannedFile file;
  file.Open(rows.Path(), false);
  for (int row = 0; row < 3; ++row)
    kv::bench::Require(file.Number(format) == Number(reader, stream.get(), format, scan), token);
}

std::shared_ptr<TemporaryFile> FileOf(const char* name, const std::string& rows) {
  return std::make_shared<TemporaryFile>(name, rows, kRows / kDifferentRows);
}

}  // namespace

// Decimals of up to eight significant digits are read alike by all; the bound library's sscanf
// rounds longer ones twice, the system's does not.
void kv::bench::CheckAgreement() {
  const TemporaryFile integers("integers", RowsOfIntegers(), 1);
  const TemporaryFile reals("reals", RowsOfReals(), 1);
  CheckRows<int, LineReader>(integers.Path(), "%d", std::sscanf);
  CheckRows<float, LineReader>(reals.Path(), "%f", std::sscanf);
  const ScanFunction scan = SystemScan();
  if (scan == nullptr) return;
  CheckRows<int, InPlaceReader>(integers.Path(), "%d", scan);
  CheckRows<double, InPlaceReader>(reals.Path(), "%lf", scan);
  for (const auto& [format, token] : kTokens) CheckToken(format, token, scan);
}

void kv::bench::RegisterComparisons() {
  const auto integers = FileOf("integers", RowsOfIntegers());
  const auto reals = FileOf("reals", RowsOfReals());
  CompareRows<int>("integers", integers, "%d");
  CompareRows<double>("reals", reals, "%lf");
  CompareLines(integers);
  CompareShortVisits(integers);
  for (const auto& [format, token] : kTokens) CompareTokens(format, token);
}
