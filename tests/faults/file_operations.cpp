// The file classes and the functions for whole files.
#include <windows.h>

#include <share.h>

#include <cstdio>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "tests/faults/operations.h"
#include "tests/support/files.h"
#include "utils/files/files.h"

namespace kv::test {
namespace {

constexpr unsigned kRead = 2;
constexpr unsigned kWrite = 4;
constexpr unsigned kCreateAnew = 5;

const std::string kReadError = "|MException 2: MFile::Read - reading error in file a.bin";
const std::string kWriteError = "|MException 2: MFile::Write - writing error in file ";
const std::string kSeekError = "MException 2: MFile::Seek - bad parameter inDistanceToMove";
const std::string kOpenError = "|MException 2: MFile::Load - file open failure";

void MakeTwoFiles() {
  WriteBytes("a.bin", "abcde");
  WriteBytes("b.bin", "vwxyz12");
}

int Signed(unsigned value) { return static_cast<int>(value); }

std::string ReadThroughMFile() {
  MFile file;
  std::ostringstream told;
  told << file.Open("a.bin", kRead) << ' ' << file.GetLength() << ' ' << Signed(file.Seek(2, 0))
       << ' ' << Signed(file.GetFilePointer()) << ' ' << Signed(file.Seek(0, 0)) << ' ';
  char bytes[8];
  told << std::string(bytes, file.Read(bytes, sizeof bytes)) << ' ' << (file.GetTime(2) > 0) << ' ';
  told << file.Close();
  return told.str();
}

std::string WriteThroughMFile(const char* path, unsigned mode) {
  MFile file;
  std::ostringstream told;
  told << file.Open(path, mode) << ' ' << file.Write("new", 3) << ' ' << file.Close() << ' '
       << ContentOf(path);
  return told.str();
}

std::string SearchFile() {
  MFile file("a.bin", kRead);
  std::ostringstream told;
  told << file.Search(reinterpret_cast<const unsigned char*>("cd"), 2, true) << ' '
       << Signed(file.GetFilePointer());
  return told.str();
}

// A file opened twice, and another one with the same object.
std::string ReopenFile() {
  MFile file;
  std::ostringstream told;
  told << file.Open("a.bin", kRead) << file.Open("a.bin", kRead) << file.Close() << file.Close()
       << file.Open("b.bin", kRead) << ' ' << file.GetLength();
  return told.str();
}

void MakeTextFile() { WriteBytes("t.txt", "one\n! none\n\n1 2 3\n}\n0.5\nlast\n"); }

std::string ReadLines() {
  MTextFile file(true);
  if (!file.Open("t.txt", false)) return "closed";
  std::ostringstream told;
  char line[16] = "";
  while (file.Readln(line, sizeof line) != -1) told << line << ',';
  told << file.GetEndFileStatus();
  return told.str();
}

std::string ReadNumbers() {
  MTextFile file;
  if (!file.Open("t.txt", false)) return "closed";
  int integers[4] = {};
  double real = 0;
  std::ostringstream told;
  told << file.Readln(integers, 4) << ' ' << file.Readln(integers, 4) << ' ' << integers[2] << ' '
       << file.Readln(integers, 4) << ' ' << file.Readln(&real, 1) << ' ' << (real == 0.5);
  return told.str();
}

std::string SearchLine() {
  MTextFile file;
  if (!file.Open("t.txt", false)) return "closed";
  char line[16] = "";
  std::ostringstream told;
  told << file.SearchString("}", true) << ' ' << file.Readln(line, sizeof line);
  return told.str();
}

std::string CountLines() {
  MTextFile file(true);
  if (!file.Open("t.txt", false)) return "closed";
  return std::to_string(file.GetNumberLines(true));
}

std::string WriteLines() {
  const int integers[] = {1, -2};
  const unsigned short small[] = {65535};
  const double reals[] = {0.5};
  std::ostringstream told;
  {
    MTextFile file;
    told << file.Open("w.txt", true);
    file.Write("%d%s\n", 7, "x");
    told << file.Writeln("line") << file.Writeln(integers, 2) << file.Writeln(small, 1)
         << file.Writeln(reals, 1) << ' ';
  }
  told << ContentOf("w.txt");
  return told.str();
}

std::string ReadStream(std::FILE* stream) {
  if (stream == nullptr) return "null";
  char bytes[16];
  const std::size_t size = std::fread(bytes, 1, sizeof bytes, stream);
  std::fclose(stream);
  return std::string(bytes, size);
}

void MakeNamedFiles() {
  WriteBytes("media\\a.txt", "abcde");
  WriteBytes("media\\table.txt", "a\tb\nc\t\td\n}\n");
}

std::string ContentOfName() {
  const std::unique_ptr<char[]> content(GetKvFileContent("media:a.txt"));
  return content == nullptr ? "null" : content.get();
}

std::string LoadText(const char* path) {
  std::string text = "+";
  std::ostringstream told;
  told << loadUTF8StringFromFile(text, path) << ' ' << text;
  return told.str();
}

std::string DateOfName() {
  short date[3] = {};
  if (!GetFileDate(date, "media:a.txt")) return date[2] == 0 ? "none" : "changed";
  return date[2] >= 2024 ? "now" : date[2] == 1970 || date[2] == 1969 ? "zero" : "?";
}

std::string ColumnOfName() {
  std::vector<std::string> fields;
  std::ostringstream told;
  told << ReadTabSeparatedColumn(fields, "media:table.txt", 1);
  for (const std::string& field : fields) told << ' ' << field;
  return told.str();
}

// A function with a result, and what a file holds afterwards.
template <typename Result>
std::string ResultAndContent(Result result, const char* path) {
  std::ostringstream told;
  told << result << ' ' << ContentOf(path);
  return told.str();
}

}  // namespace

std::vector<Operation> FileOperations() {
  const std::string noFolders = "|MException 0: KelvarisPath::GetCDPath return false";
  const std::string nameError = "|MException 2: MFile::Read - reading error in file .*a\\.txt";
  return {
      {"MFile, read", MakeTwoFiles, ReadThroughMFile, "1 5 5 5 0 abcde 1 1",
       "0 -1 -1 0 -1  0 0|1 (5|-1) (5|-1) (5|0|-1) (0|-1) (abcde)? (0|1) (0|1)" + kReadError},
      {"MFile, create", MakeTwoFiles, [] { return WriteThroughMFile("c.bin", kCreateAnew); },
       "1 3 1 new", "0 0 0 (new|none)|1 3 (0|1) new" + kWriteError + "c.bin"},
      {"MFile, write what is read-only",
       [] {
         SetReadOnly("a.bin", false);
         MakeTwoFiles();
         SetReadOnly("a.bin", true);
       },
       [] { return WriteThroughMFile("a.bin", kWrite); }, "1 3 1 newde",
       "0 0 0 abcde|1 3 (0|1) newde" + kWriteError + "a.bin"},
      {"MFile, count opens", MakeTwoFiles, ReopenFile, "11111 7", "[01]{5} (7|-1)"},
      {"MFile::Search", MakeTwoFiles, SearchFile, "1 4",
       "1 (4|0|-1|5)|0 (0|-1|5)" + kReadError + kOpenError},
      {"MFile::Seek, refused", MakeTwoFiles,
       [] { return std::to_string(MFile("a.bin", kRead).Seek(3, 0)); }, kSeekError,
       kSeekError + kOpenError},
      {"MFile::IsExist", MakeTwoFiles, [] { return std::to_string(MFile::IsExist("a.bin")); }, "1",
       "0|1"},
      {"MFile::DeleteFileA", MakeTwoFiles,
       [] { return ResultAndContent(MFile::DeleteFileA("a.bin"), "a.bin"); }, "1 none",
       "1 none|0 abcde"},
      {"MFile::GetLength", MakeTwoFiles, [] { return std::to_string(MFile::GetLength("a.bin")); },
       "5", "5|-1"},
      {"MFile::GetTime", MakeTwoFiles,
       [] { return std::to_string(MFile::GetTime("a.bin", 0) > 0); }, "1", "0|1"},
      {"MFile::FileCopy", MakeTwoFiles,
       [] { return ResultAndContent(MFile::FileCopy("a.bin", "b.bin"), "b.bin"); }, "1 abcde12",
       "1 abcde12|0 vwxyz12" + kReadError + kWriteError + "b.bin" + kOpenError},
      {"MTextFile, lines", MakeTextFile, ReadLines, "one,1 2 3,},0.5,last,1",
       "closed|(one,)?(1 2 3,)?(\\},)?(0.5,)?(last,)?[01]"},
      {"MTextFile, numbers", MakeTextFile, ReadNumbers, "0 3 3 -2 1 1",
       "closed|(0|3|-2|1|-1) (0|3|-2|1|-1) (0|3) (0|3|-2|1|-1) (0|3|-2|1|-1) [01]"},
      {"MTextFile::SearchString", MakeTextFile, SearchLine, "1 4",
       "closed|1 (4|-1)|0 (-2|-1|2|4|5|6)"},
      {"MTextFile::GetNumberLines", MakeTextFile, CountLines, "2", "closed|-?[012]"},
      {"MTextFile, write", [] { MakeTextFile(); }, WriteLines,
       "11111 7x\r\nline\r\n1 -2 \r\n65535 \r\n0.5 \r\n", "01000 (none|[^?]*)|11[01]{3} [^?]*"},
      {"mm_fopen", MakeTwoFiles, [] { return ReadStream(mm_fopen("a.bin", "rb")); }, "abcde",
       "null|abcde"},
      {"mm_fsopen", MakeTwoFiles, [] { return ReadStream(mm_fsopen("a.bin", "rb", _SH_DENYNO)); },
       "abcde", "null|abcde"},
      {"GetKvFileContent", MakeNamedFiles, ContentOfName, "abcde",
       "abcde|null" + nameError + noFolders},
      {"loadUTF8StringFromFile", MakeTwoFiles, [] { return LoadText("a.bin"); }, "1 +abcde",
       "1 \\+abcde|0 \\+"},
      {"UniteFiles", MakeTwoFiles,
       [] { return ResultAndContent(UniteFiles("b.bin", "a.bin"), "b.bin"); }, "1 vwxyz12abcde",
       "1 vwxyz12abcde|0 vwxyz12" + kReadError + kWriteError + "b.bin"},
      {"FileCompare",
       [] {
         WriteBytes("a.bin", "abcde");
         WriteBytes("b.bin", "abcde");
       },
       [] { return std::to_string(FileCompare("a.bin", "b.bin")); }, "0",
       "0|1|-1|6|-6" + kReadError + "|MException 2: MFile::Read - reading error in file b.bin"},
      {"GetFileDate", MakeNamedFiles, DateOfName, "now", "now|zero|none" + noFolders},
      {"ReadTabSeparatedColumn", MakeNamedFiles, ColumnOfName, "1 b d",
       "1 b d|1 b|1 d|0" + noFolders},
  };
}

}  // namespace kv::test
