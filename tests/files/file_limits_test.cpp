// Files of both kinds with numbers at the edges of their types.
#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <cmath>
#include <cstring>
#include <limits>
#include <new>
#include <string>
#include <vector>

#include "tests/files/binary_file_fixture.h"
#include "tests/support/sandbox.h"
#include "utils/files/files.h"

namespace {

using kv::test::OpenedFile;
using kv::test::Raised;
using kv::test::ReadBytes;
using kv::test::WriteBytes;

constexpr unsigned kRefused = 0xFFFFFFFF;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

class FileLimits : public kv::test::Sandbox {};

TEST_F(FileLimits, SeekGoesAsFarAsItsDistanceReaches) {
  const struct {
    unsigned origin;
    int distance;
    unsigned result;
    unsigned position;
  } rows[] = {
      {0, INT_MAX, 0x7FFFFFFF, 0x7FFFFFFF},
      {0, INT_MIN, kRefused, 3},
      {1, INT_MAX, 0x80000002, 0x80000002},
      {1, INT_MIN, kRefused, 3},
      {1, -3, 0, 0},
      {1, -4, kRefused, 3},
      {2, INT_MAX, 0x80000005, 0x80000005},
      {2, INT_MIN, kRefused, 3},
      {2, -6, 0, 0},
      {2, -7, kRefused, 3},
  };
  WriteBytes("a.bin", "abcdef");
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.distance << " from " << row.origin);
    MFile file("a.bin", 2);
    file.Seek(0, 3);
    EXPECT_EQ(file.Seek(row.origin, row.distance), row.result);
    EXPECT_EQ(file.GetFilePointer(), row.position);
  }
}

TEST_F(FileLimits, NothingIsReadWrittenOrFoundWithoutBytes) {
  WriteBytes("a.bin", "abc");
  MFile file("a.bin", 16);
  EXPECT_EQ(file.Read(nullptr, 0), 0U);
  EXPECT_EQ(file.Write(nullptr, 0), 0U);
  EXPECT_EQ(file.GetFilePointer(), 0U);
  EXPECT_FALSE(file.Search(nullptr, 0, true));
  EXPECT_FALSE(file.Search(nullptr, UINT_MAX, true));
  const unsigned char pattern[] = {'b'};
  EXPECT_FALSE(file.Search(pattern, UINT_MAX, true)) << "no pattern is so long";
  EXPECT_FALSE(file.Search(pattern, INT_MAX, true));
  EXPECT_TRUE(file.Search(pattern, 1, true));
  EXPECT_FALSE(file.GetMMInfo(nullptr));
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(ReadBytes("a.bin"), "abc");
}

TEST_F(FileLimits, EveryModeIsTakenByItsBits) {
  const OpenedFile file;
  const struct {
    unsigned mode;
    unsigned access;
    unsigned share;
    unsigned disposition;
    unsigned flags;
  } rows[] = {
      {UINT_MAX, 0x80000000, 1, 2, 0x10000000},
      {UINT_MAX - 2, 0x40000000, 1, 2, 0x08000000},
      {UINT_MAX - 3, 0x40000000, 1, 3, 0x80},
      {0x80000004, 0x40000000, 2, 4, 0x80},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.mode);
    EXPECT_EQ(file.GetAccessMode(row.mode), row.access);
    EXPECT_EQ(file.GetShareMode(row.mode), row.share);
    EXPECT_EQ(file.GetOpenMode(row.mode), row.disposition);
    EXPECT_EQ(file.GetFlagAndAttributes(row.mode), row.flags);
  }
  for (const unsigned mode : {0x80000000U, UINT_MAX & ~(2U | 4U | 8U | 16U)}) {
    SCOPED_TRACE(mode);
    EXPECT_EQ(Raised([&] { MFile("a.bin", mode); }),
              "MFile::GetAccessMode - bad parameter inAccessMode\n");
  }
}

TEST_F(FileLimits, AnyOtherKindOfTimeIsThatOfTheLastWrite) {
  WriteBytes("a.bin", "a");
  kv::test::SetTimes("a.bin", 1'100'000'000, 1'200'000'000, 0);
  const MFile file("a.bin", 2);
  for (const int which : {2, 3, -1, INT_MAX, INT_MIN}) {
    SCOPED_TRACE(which);
    EXPECT_EQ(file.GetTime(which), 1'200'000'000);
    EXPECT_EQ(MFile::GetTime("a.bin", which), 1'200'000'000);
  }
}

class CountedFile : public OpenedFile {
 public:
  void SetOpenCount(int count) { m_OpenCount = count; }
};

TEST_F(FileLimits, TheCountOfOpensStaysInItsRange) {
  WriteBytes("a.bin", "abc");
  CountedFile file;
  ASSERT_TRUE(file.Open("a.bin", 2));
  file.SetOpenCount(INT_MAX - 1);
  for (int i = 0; i < 3; ++i) {
    EXPECT_TRUE(file.Open("a.bin", 2));
    EXPECT_EQ(file.OpenCount(), INT_MAX);
  }
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(file.OpenCount(), INT_MAX - 1);
  file.SetOpenCount(1);
  EXPECT_TRUE(file.Close());
  file.SetOpenCount(INT_MIN + 1);
  for (int i = 0; i < 3; ++i) {
    EXPECT_TRUE(file.Close());
    EXPECT_EQ(file.OpenCount(), INT_MIN);
  }
}

TEST_F(FileLimits, ALineIsCutToTheSizeThatIsLeft) {
  const struct {
    int size;
    int result;
    const char* line;
  } rows[] = {{INT_MAX, 4, "abc\n"}, {5, 4, "abc\n"}, {4, 3, "abc"},    {1, 0, ""},
              {0, 0, "?"},           {-1, 0, "?"},    {INT_MIN, 0, "?"}};
  WriteBytes("a.txt", "abc\n");
  for (const auto& row : rows) {
    SCOPED_TRACE(row.size);
    MTextFile file;
    ASSERT_TRUE(file.Open("a.txt", false));
    char line[] = "?????";
    EXPECT_EQ(file.Readln(line, row.size), row.result);
    EXPECT_EQ(std::string(line).substr(0, std::strlen(row.line)), row.line);
    EXPECT_EQ(file.Readln(line, row.size), -1) << "each call takes a line";
  }
}

TEST_F(FileLimits, ALineLengthMayBeTheGreatestNumber) {
  WriteBytes("a.txt", "abc\ndef\n");
  MTextFile file(false, '!', '}', INT_MAX);
  ASSERT_TRUE(file.Open("a.txt", false));
  char line[8] = "";
  EXPECT_EQ(file.Readln(line, sizeof line), 4);
  EXPECT_STREQ(line, "abc\n");
  EXPECT_EQ(file.GetNumberLines(false), 1);
}

template <typename Number>
void CheckCounts() {
  SCOPED_TRACE(testing::Message() << sizeof(Number) << " bytes");
  for (const int count : {INT_MIN, -1, 0, 1, 2, 3, INT_MAX}) {
    SCOPED_TRACE(count);
    MTextFile file;
    ASSERT_TRUE(file.Open("numbers.txt", false));
    Number values[3] = {77, 77, 77};
    const int stored = count < 0 ? 0 : count < 2 ? count : 2;
    EXPECT_EQ(file.Readln(values, count), stored);
    EXPECT_EQ(values[0], stored > 0 ? Number(1) : Number(77));
    EXPECT_EQ(values[1], stored > 1 ? Number(2) : Number(77));
    EXPECT_EQ(values[2], Number(77));
    EXPECT_EQ(file.Readln(static_cast<Number*>(nullptr), count), 0);
    EXPECT_EQ(file.Readln(values, count), -1);
  }
}

TEST_F(FileLimits, RowsHoldNoMoreThanTheCount) {
  WriteBytes("numbers.txt", "1 2\n3 4\n");
  CheckCounts<short>();
  CheckCounts<unsigned short>();
  CheckCounts<int>();
  CheckCounts<unsigned int>();
  CheckCounts<long>();
  CheckCounts<float>();
  CheckCounts<double>();
}

TEST_F(FileLimits, ShortsAreTheLowBitsOfWhatIsRead) {
  const struct {
    const char* token;
    short asShort;
    unsigned short asUnsigned;
  } rows[] = {
      {"32767", 32767, 32767},   {"32768", -32768, 32768}, {"-32768", -32768, 32768},
      {"-32769", 32767, 32767},  {"65535", -1, 65535},     {"65536", 0, 0},
      {"2147483647", -1, 65535}, {"-2147483648", 0, 0},    {"-1", -1, 65535},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.token);
    WriteBytes("n.txt", std::string(row.token) + "\n" + row.token + "\n");
    MTextFile file;
    ASSERT_TRUE(file.Open("n.txt", false));
    short asShort = 7;
    unsigned short asUnsigned = 7;
    EXPECT_EQ(file.Readln(&asShort, 1), 1);
    EXPECT_EQ(file.Readln(&asUnsigned, 1), 1);
    EXPECT_EQ(asShort, row.asShort);
    EXPECT_EQ(asUnsigned, row.asUnsigned);
  }
}

// Compares bit for bit, but for a value that is not a number.
template <typename Real>
void ExpectSame(Real value, Real expected) {
  if (std::isnan(expected)) {
    EXPECT_TRUE(std::isnan(value)) << value;
  } else {
    EXPECT_EQ(std::memcmp(&value, &expected, sizeof value), 0) << value << " for " << expected;
  }
}

TEST_F(FileLimits, RealsAreReadAtTheEdgesOfTheirTypes) {
  const struct {
    const char* token;
    double asDouble;
    float asFloat;
  } rows[] = {
      {"nan", kNaN, std::numeric_limits<float>::quiet_NaN()},
      {"inf", kInfinity, std::numeric_limits<float>::infinity()},
      {"1.7976931348623157e308", DBL_MAX, std::numeric_limits<float>::infinity()},
      {"-1.7976931348623157e308", -DBL_MAX, -std::numeric_limits<float>::infinity()},
      {"1.7976931348623159e308", kInfinity, std::numeric_limits<float>::infinity()},
      {"2.2250738585072014e-308", DBL_MIN, 0.0F},
      {"4.9406564584124654e-324", DBL_TRUE_MIN, 0.0F},
      {"-4.9406564584124654e-324", -DBL_TRUE_MIN, -0.0F},
      {"-0", -0.0, -0.0F},
      {"3.4028234663852886e38", 3.4028234663852886e38, FLT_MAX},
      {"3.4028236e38", 3.4028236e38, std::numeric_limits<float>::infinity()},
      {"1.1754943508222875e-38", 1.1754943508222875e-38, FLT_MIN},
      {"1.401298464324817e-45", 1.401298464324817e-45, FLT_TRUE_MIN},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.token);
    WriteBytes("n.txt", std::string(row.token) + "\n" + row.token + "\n");
    MTextFile file;
    ASSERT_TRUE(file.Open("n.txt", false));
    double asDouble = 7;
    float asFloat = 7;
    EXPECT_EQ(file.Readln(&asDouble, 1), 1);
    EXPECT_EQ(file.Readln(&asFloat, 1), 1);
    ExpectSame(asDouble, row.asDouble);
    ExpectSame(asFloat, row.asFloat);
  }
}

// What `write` writes.
template <typename Write>
std::string Written(Write write) {
  {
    MTextFile file;
    EXPECT_TRUE(file.Open("w.txt", true));
    write(file);
  }
  return ReadBytes("w.txt");
}

TEST_F(FileLimits, RealsAreWrittenAtTheEdgesOfTheirTypes) {
  const struct {
    double value;
    const char* text;
  } rows[] = {
      {kInfinity, "inf "},
      {-kInfinity, "-inf "},
      {DBL_MAX, "1.79769e+308 "},
      {DBL_MIN, "2.22507e-308 "},
      {DBL_TRUE_MIN, "4.94066e-324 "},
      {-0.0, "-0 "},
      {kNaN, "nan "},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(Written([&](MTextFile& file) { EXPECT_TRUE(file.Writeln(&row.value, 1)); }),
              std::string(row.text) + "\r\n");
  }
  const float floats[] = {FLT_MAX, FLT_MIN, FLT_TRUE_MIN};
  EXPECT_EQ(Written([&](MTextFile& file) { EXPECT_TRUE(file.Writeln(floats, 3)); }),
            "3.40282e+38 1.17549e-38 1.4013e-45 \r\n");
}

TEST_F(FileLimits, TheLongestNumbersAreWrittenWhole) {
  const std::string greatest = Written([](MTextFile& file) {
    const double value = DBL_MAX;
    EXPECT_TRUE(file.Writeln(&value, 1, "%f"));
  });
  EXPECT_EQ(greatest.size(), 309 + std::string(".000000\r\n").size());
  EXPECT_EQ(greatest.substr(0, 17), "17976931348623157");
  const std::string widest = Written([](MTextFile& file) {
    const double value = -0.5;
    EXPECT_TRUE(file.Writeln(&value, 1, "%9999.9990f"));
  });
  EXPECT_EQ(widest, "      -0.5" + std::string(9989, '0') + "\r\n");
}

template <typename Number>
void CheckCountsOfRows(const char* row) {
  SCOPED_TRACE(row);
  const Number values[] = {1, 2};
  EXPECT_EQ(Written([&](MTextFile& file) {
              for (const int count : {INT_MIN, -1, 0}) EXPECT_TRUE(file.Writeln(values, count));
              EXPECT_TRUE(file.Writeln(static_cast<const Number*>(nullptr), 0));
              EXPECT_TRUE(file.Writeln(static_cast<const Number*>(nullptr), INT_MIN));
              EXPECT_FALSE(file.Writeln(static_cast<const Number*>(nullptr), 1));
              EXPECT_FALSE(file.Writeln(static_cast<const Number*>(nullptr), INT_MAX));
              EXPECT_TRUE(file.Writeln(values, 2));
            }),
            std::string("\r\n\r\n\r\n\r\n\r\n") + row);
}

TEST_F(FileLimits, RowsWithoutValuesAreEmptyLines) {
  CheckCountsOfRows<short>("1 2 \r\n");
  CheckCountsOfRows<unsigned short>("1 2 \r\n");
  CheckCountsOfRows<int>("1 2 \r\n");
  CheckCountsOfRows<unsigned int>("1 2 \r\n");
  CheckCountsOfRows<float>("1 2 \r\n");
  CheckCountsOfRows<double>("1 2 \r\n");
}

class DerivedFile : public MTextFile {
 public:
  using MTextFile::fgets;
  using MTextFile::Readln;
};

TEST_F(FileLimits, ADerivedClassStoresNoMoreThanEightBytesAValue) {
  const struct {
    int itemSize;
    unsigned char second;  // of the bytes
    unsigned char ninth;
  } rows[] = {{INT_MIN, 9, 9}, {-1, 9, 9}, {0, 9, 9},      {1, 4, 9},
              {8, 0, 4},       {9, 0, 4},  {INT_MAX, 0, 4}};
  WriteBytes("n.txt", "3 4\n");
  for (const auto& row : rows) {
    SCOPED_TRACE(row.itemSize);
    DerivedFile file;
    ASSERT_TRUE(file.Open("n.txt", false));
    unsigned char bytes[17];
    std::memset(bytes, 9, sizeof bytes);
    EXPECT_EQ(file.Readln(bytes, 2, "%d", row.itemSize), 2);
    EXPECT_EQ(bytes[0], row.itemSize < 1 ? 9 : 3);
    EXPECT_EQ(bytes[1], row.second);
    EXPECT_EQ(bytes[8], row.ninth);
    EXPECT_EQ(bytes[16], 9);
  }
}

TEST_F(FileLimits, ADerivedClassReadsNothingWithoutRoom) {
  WriteBytes("n.txt", "abc\n");
  DerivedFile file;
  ASSERT_TRUE(file.Open("n.txt", false));
  char line[8] = "?";
  for (const int size : {INT_MIN, -1, 0, 1}) EXPECT_EQ(file.fgets(line, size), nullptr) << size;
  EXPECT_STREQ(line, "?");
  EXPECT_EQ(file.fgets(line, 8), line);
  EXPECT_STREQ(line, "abc\n");
}

}  // namespace
