// Writing text files: rows of numbers, lines, formats.
#include <climits>
#include <clocale>
#include <cstdarg>
#include <cstdio>
#include <string>
#include <vector>

#include "tests/support/sandbox.h"
#include "utils/files/files.h"

namespace {

using kv::test::ReadBytes;

class TextFileWriting : public kv::test::Sandbox {
 protected:
  TextFileWriting() { EXPECT_TRUE(file.Open("a.txt", true)); }

  // What has been written so far; the file is emptied for the next row.
  std::string Written() {
    file.Close();
    const std::string bytes = ReadBytes("a.txt");
    EXPECT_TRUE(file.Open("a.txt", true));
    return bytes;
  }

  MTextFile file;
};

TEST_F(TextFileWriting, PrintsRowsOfIntegers) {
  const short shorts[] = {-32768, 0, 32767};
  EXPECT_TRUE(file.Writeln(shorts, 3));
  EXPECT_EQ(Written(), "-32768 0 32767 \r\n");
  const unsigned short unsignedShorts[] = {65535, 1};
  EXPECT_TRUE(file.Writeln(unsignedShorts, 2));
  EXPECT_EQ(Written(), "65535 1 \r\n");
  const int ints[] = {INT_MIN, INT_MAX};
  EXPECT_TRUE(file.Writeln(ints, 2));
  EXPECT_EQ(Written(), "-2147483648 2147483647 \r\n");
  const unsigned unsigneds[] = {4294967295, 2147483648, 2147483647};
  EXPECT_TRUE(file.Writeln(unsigneds, 1));
  EXPECT_EQ(Written(), "-1 \r\n") << "large unsigned values print as negative numbers";
  EXPECT_TRUE(file.Writeln(unsigneds, 3));
  EXPECT_EQ(Written(), "-1 -2147483648 2147483647 \r\n");
}

TEST_F(TextFileWriting, ARowOfNothingIsALineEnd) {
  const int ints[] = {1};
  EXPECT_TRUE(file.Writeln(ints, 0));
  EXPECT_TRUE(file.Writeln(ints, -1));
  EXPECT_EQ(Written(), "\r\n\r\n");
}

TEST_F(TextFileWriting, PrintsRowsOfRealsWithTheDefaultFormats) {
  const double doubles[] = {0.5, 2, 1e-7, 123456789, -1e100};
  EXPECT_TRUE(file.Writeln(doubles, 2, nullptr));
  EXPECT_EQ(Written(), "0.5 2 \r\n");
  EXPECT_TRUE(file.Writeln(doubles, 5));
  EXPECT_EQ(Written(), "0.5 2 1e-07 1.23457e+08 -1e+100 \r\n");
  const float floats[] = {0.1F, -3};
  EXPECT_TRUE(file.Writeln(floats, 2));
  EXPECT_EQ(Written(), "0.1 -3 \r\n");
}

TEST_F(TextFileWriting, PrintsRealsWithTheCallersFormat) {
  const double values[] = {1.5, -2.25};
  const float floats[] = {1.5F, -2.25F};
  const struct {
    const char* format;
    const char* row;
  } rows[] = {
      {"%.3f;", "1.500;-2.250;\r\n"},
      {"%8.2lf|", "    1.50|   -2.25|\r\n"},
      {"%+e ", "+1.500000e+00 -2.250000e+00 \r\n"},
      {"%-6g.", "1.5   .-2.25 .\r\n"},
      {"100%% %g ", "100% 1.5 100% -2.25 \r\n"},
      {"x", "xx\r\n"},
      {"", "\r\n"},
      {"%A ", "0X1.8P+0 -0X1.2P+1 \r\n"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.format);
    EXPECT_TRUE(file.Writeln(values, 2, row.format));
    EXPECT_EQ(Written(), row.row);
    EXPECT_TRUE(file.Writeln(floats, 2, row.format));
    EXPECT_EQ(Written(), row.row);
  }
}

TEST_F(TextFileWriting, CutsTheCallersFormatAt31Characters) {
  const double value = 1;
  const std::string dots(28, '.');
  EXPECT_TRUE(file.Writeln(&value, 1, (dots + "%g;").c_str()));
  EXPECT_EQ(Written(), dots + "1;\r\n");
  EXPECT_TRUE(file.Writeln(&value, 1, (dots + "%g;" + std::string(300, 'x')).c_str()));
  EXPECT_EQ(Written(), dots + "1;\r\n");
}

TEST_F(TextFileWriting, RefusesFormatsThatDoNotSuitANumber) {
  const double value = 1;
  const std::string cutInside = std::string(30, '.') + "%g";
  for (const char* format : {"%s", "%d", "%n", "%c", "%Lf", "%*f", "%.*f", "%g %g", "%", "%5",
                             "%hf", "%llg", "%.99999f", "%99999g", cutInside.c_str()}) {
    SCOPED_TRACE(format);
    EXPECT_FALSE(file.Writeln(&value, 1, format));
    EXPECT_EQ(Written(), "");
  }
}

TEST_F(TextFileWriting, PrintsPointsWhateverTheHostsLocale) {
  ASSERT_NE(std::setlocale(LC_ALL, "German_Germany.1252"), nullptr);
  const double values[] = {0.5, 1.25};
  EXPECT_TRUE(file.Writeln(values, 2));
  EXPECT_TRUE(file.Writeln(values, 2, "%.2f "));
  file.Write("%g\n", 2.5);
  EXPECT_EQ(Written(), "0.5 1.25 \r\n0.50 1.25 \r\n2.5\r\n");
  EXPECT_STREQ(std::localeconv()->decimal_point, ",") << "the host's locale is put back";
}

TEST_F(TextFileWriting, PrintsLinesAsTheyAre) {
  EXPECT_TRUE(file.Writeln("100% \xC3\xA9 %s"));
  EXPECT_TRUE(file.Writeln(""));
  EXPECT_TRUE(file.Writeln(static_cast<const char*>(nullptr)));
  file.Write(nullptr);
  EXPECT_EQ(Written(), "100% \xC3\xA9 %s\r\n\r\n\r\n");
}

TEST_F(TextFileWriting, WriteFlushesWhatItPrints) {
  file.Write("%s=%d", "x", 5);
  EXPECT_EQ(ReadBytes("a.txt"), "x=5") << "on disk before the file is closed";
}

TEST_F(TextFileWriting, AFileOpenForReadingTakesNoNumbers) {
  file.Close();
  kv::test::WriteBytes("b.txt", "abc\n");
  ASSERT_TRUE(file.Open("b.txt", false));
  const int integer = 1;
  const double real = 1;
  EXPECT_FALSE(file.Writeln(&integer, 1));
  EXPECT_FALSE(file.Writeln(&real, 1));
  EXPECT_TRUE(file.Writeln("text"));
  file.Close();
  EXPECT_EQ(ReadBytes("b.txt"), "abc\n");
}

TEST_F(TextFileWriting, TellsWhenTheDiskIsFull) {
  // The device that refuses every write stands where Wine shows its host's files.
  ASSERT_TRUE(file.Open("Z:\\dev\\full", true));
  const std::vector<int> integers(10000, 1234567);
  const std::vector<double> reals(10000, 0.125);
  EXPECT_FALSE(file.Writeln(integers.data(), 10000));
  EXPECT_FALSE(file.Writeln(reals.data(), 10000));
}

// What a derived class is given.
class DerivedFile : public MTextFile {
 public:
  using MTextFile::fgets;
  using MTextFile::fprintf;
  using MTextFile::IsComment;
  using MTextFile::MTextFile;
  using MTextFile::Readln;
  int Printed(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int printed = vfprintf(format, arguments);
    va_end(arguments);
    return printed;
  }
};

TEST_F(TextFileWriting, DerivedClassesReachTheStream) {
  DerivedFile derived;
  char line[10] = "unset";
  EXPECT_EQ(derived.fgets(line, sizeof line), nullptr);
  EXPECT_EQ(derived.fprintf("%d", 1), -1);
  EXPECT_EQ(derived.Printed("%d", 1), -1);
  ASSERT_TRUE(derived.Open("d.txt", true));
  EXPECT_EQ(derived.fprintf("! %s\n", "comment"), 10);
  EXPECT_EQ(derived.Printed("%d %d\n", 7, 8), 4);
  ASSERT_TRUE(derived.Open("d.txt", false));
  EXPECT_EQ(derived.fgets(line, 5), line);
  EXPECT_STREQ(line, "! co");
  EXPECT_EQ(derived.fgets(line, 1), nullptr) << "no room to read";
  unsigned char bytes[3] = {9, 9, 9};
  derived.SeekToBegin();
  EXPECT_EQ(derived.Readln(bytes, 2, "%d", 1), 2) << "one byte a value";
  EXPECT_EQ(bytes[0], 7);
  EXPECT_EQ(bytes[1], 8);
  EXPECT_EQ(bytes[2], 9);
  EXPECT_FALSE(derived.IsComment()) << "the current line is the row";
}

TEST_F(TextFileWriting, ReadsRowsWithFormatsOfOneNumberOnly) {
  const struct {
    const char* format;
    int result;
    unsigned long long value;
  } rows[] = {
      {"%x", 1, 0x123}, {"%o", 1, 83},     {"%llu", 1, 123}, {"%hhd", 1, 123}, {"%hd", 1, 123},
      {"%i", 1, 123},   {"%lX", 1, 0x123}, {"%s", 0, 0},     {"%Lf", 0, 0},    {"%d %d", 0, 0},
      {"%*d", 0, 0},    {"%n", 0, 0},      {"%c", 0, 0},     {"%p", 0, 0},     {"%[0-9]", 0, 0},
      {"%", 0, 0},      {"", 0, 0},        {"%5d", 0, 0},    {nullptr, 0, 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.format == nullptr ? "null" : row.format);
    kv::test::WriteBytes("d.txt", "123 " + std::string(100, '4') + "\n");
    DerivedFile derived;
    ASSERT_TRUE(derived.Open("d.txt", false));
    unsigned long long value = 0;
    EXPECT_EQ(derived.Readln(&value, 1, row.format, 8), row.result);
    EXPECT_EQ(value, row.value);
  }
}

TEST_F(TextFileWriting, CopiesNoMoreThanEightBytesOfAValue) {
  kv::test::WriteBytes("d.txt", "123\n");
  DerivedFile derived;
  ASSERT_TRUE(derived.Open("d.txt", false));
  unsigned char bytes[9] = {9, 9, 9, 9, 9, 9, 9, 9, 9};
  EXPECT_EQ(derived.Readln(bytes, 1, "%d", 100), 1);
  EXPECT_EQ(bytes[0], 123);
  EXPECT_EQ(bytes[8], 9);
}

}  // namespace
