// Rows of numbers beside sscanf, token by token.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "tests/files/number_tokens.h"
#include "tests/reference/numbers.h"
#include "tests/support/sandbox.h"
#include "tests/text/scoped_locale.h"
#include "utils/files/files.h"

namespace {

using kv::reference::LineReader;
using kv::test::NumberTokens;
using kv::test::WriteBytes;

constexpr int kLineLength = 4096;

// Drops the digits at the beginning of `text` and tells how many they were.
std::size_t DropDigits(std::string_view& text) {
  const std::size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
  text.remove_prefix(digits);
  return digits;
}

// Digits with perhaps a minus, a point and an exponent, and nothing else.
bool IsDecimal(std::string_view text) {
  if (text.starts_with('-')) text.remove_prefix(1);
  std::size_t digits = DropDigits(text);
  if (text.starts_with('.')) {
    text.remove_prefix(1);
    digits += DropDigits(text);
  }
  if (digits == 0) return false;
  if (text.starts_with('e') || text.starts_with('E')) {
    text.remove_prefix(1);
    if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
    if (DropDigits(text) == 0) return false;
  }
  return text.empty();
}

// sscanf, but that decimals within the type's range are correctly rounded.
template <typename Value>
int Scan(const char* token, const char* format, void* value) {
  if constexpr (std::is_floating_point_v<Value>) {
    Value number = 0;
    if (IsDecimal(token) &&
        std::from_chars(token, token + std::strlen(token), number).ec == std::errc{}) {
      std::memcpy(value, &number, sizeof number);
      return 1;
    }
  }
  return std::sscanf(token, format, value);
}

using Stream = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

class TextFileNumbers : public kv::test::Sandbox {
 protected:
  // Reads `content` as rows of up to six numbers by the library and by the reference.
  template <typename Value>
  void CheckRows(const std::string& content, const char* format, int lineLength = kLineLength) {
    constexpr int kCount = 6;
    WriteBytes("rows.txt", content);
    MTextFile file(false, '!', '}', lineLength);
    ASSERT_TRUE(file.Open("rows.txt", false));
    const Stream stream(std::fopen("rows.txt", "rt"), &std::fclose);
    LineReader reader(stream.get(), lineLength);
    for (int result = 0; result != -1;) {
      Value values[kCount + 1];
      Value expected[kCount + 1];
      std::memset(values, 0x5A, sizeof values);
      std::memset(expected, 0x5A, sizeof expected);
      result = reader.Row(expected, kCount, format, &Scan<Value>);
      ASSERT_EQ(file.Readln(values, kCount), result) << testing::PrintToString(reader.Tokens());
      ASSERT_EQ(std::memcmp(values, expected, sizeof values), 0)
          << testing::PrintToString(reader.Tokens());
    }
  }

  template <typename Value>
  void CheckRandomRows(unsigned seed, const char* format) {
    constexpr int kLines = 200'000;
    NumberTokens tokens(seed);
    std::string content;
    for (int i = 0; i < kLines; ++i) content += tokens.Line();
    CheckRows<Value>(content, format);
  }
};

TEST_F(TextFileNumbers, ReadsShortsAsSscanfDoes) { CheckRandomRows<short>(1, "%d"); }
TEST_F(TextFileNumbers, ReadsUnsignedShortsAsSscanfDoes) {
  CheckRandomRows<unsigned short>(2, "%u");
}
TEST_F(TextFileNumbers, ReadsIntsAsSscanfDoes) { CheckRandomRows<int>(3, "%d"); }
TEST_F(TextFileNumbers, ReadsUnsignedIntsAsSscanfDoes) { CheckRandomRows<unsigned>(4, "%u"); }
TEST_F(TextFileNumbers, ReadsLongsAsSscanfDoes) { CheckRandomRows<long>(5, "%li"); }
TEST_F(TextFileNumbers, ReadsFloatsAsSscanfDoesButRounded) { CheckRandomRows<float>(6, "%f"); }
TEST_F(TextFileNumbers, ReadsDoublesAsSscanfDoesButRounded) { CheckRandomRows<double>(7, "%lf"); }

// Lines are cut anywhere: within a token, before a delimiter, behind a sign.
TEST_F(TextFileNumbers, ReadsCutLines) {
  NumberTokens tokens(8);
  std::string content;
  for (int i = 0; i < 300; ++i) content += tokens.Line();
  for (int lineLength = 2; lineLength <= 40; ++lineLength) {
    SCOPED_TRACE(lineLength);
    CheckRows<unsigned short>(content, "%u", lineLength);
    CheckRows<long>(content, "%li", lineLength);
    CheckRows<double>(content, "%lf", lineLength);
  }
}

// Lines about as long as one read takes, which end in or behind a token.
TEST_F(TextFileNumbers, ReadsLinesAtTheLimit) {
  NumberTokens tokens(9);
  for (int size = kLineLength - 4; size <= kLineLength + 4; ++size) {
    SCOPED_TRACE(size);
    std::string content;
    for (int i = 0; i < 20; ++i) {
      const std::string token = tokens.Token();
      content += std::string(static_cast<std::size_t>(size) - token.size(), ' ') + token + "\n";
      content += std::string(static_cast<std::size_t>(size), '0') + "7\n";
    }
    CheckRows<int>(content, "%d");
    CheckRows<long>(content, "%li");
    CheckRows<double>(content, "%lf");
  }
}

// The shortest decimal of a number is nearest to that number, and to no other.
template <typename Value, typename Bits>
void CheckShortestDecimals(unsigned seed) {
  constexpr int kNumbers = 200'000;
  std::mt19937_64 random(seed);
  std::vector<Value> numbers;
  std::string content;
  while (numbers.size() < kNumbers) {
    const auto bits = static_cast<Bits>(random());
    Value number = 0;
    std::memcpy(&number, &bits, sizeof number);
    if (!std::isfinite(number)) continue;
    char text[64];
    content.append(text, std::to_chars(text, text + sizeof text, number).ptr);
    content += '\n';
    numbers.push_back(number);
  }
  WriteBytes("numbers.txt", content);
  MTextFile file;
  ASSERT_TRUE(file.Open("numbers.txt", false));
  for (const Value& number : numbers) {
    Value value = 0;
    ASSERT_EQ(file.Readln(&value, 1), 1);
    ASSERT_EQ(std::memcmp(&value, &number, sizeof value), 0) << number;
  }
}

TEST_F(TextFileNumbers, ReadsBackEveryFloat) { CheckShortestDecimals<float, std::uint32_t>(10); }
TEST_F(TextFileNumbers, ReadsBackEveryDouble) { CheckShortestDecimals<double, std::uint64_t>(11); }

// What the sscanf of the library's own run-time makes of them; that of msvcrt.dll differs in most.
TEST_F(TextFileNumbers, ReadsOddIntegersAsTheBoundSscanfDoes) {
  const struct {
    const char* token;
    int asInt;
    unsigned asUnsigned;
    long asLong;
  } rows[] = {
      {"2147483648", 2147483647, 2147483648, 2147483647},
      {"-2147483649", -2147483647 - 1, 2147483647, -2147483647 - 1},
      {"4294967296", 2147483647, 4294967295, 2147483647},
      {"-4294967296", -2147483647 - 1, 1, -2147483647 - 1},
      {"99999999999999999999999", 2147483647, 4294967295, 2147483647},
      {"-99999999999999999999999", -2147483647 - 1, 1, -2147483647 - 1},
      {"-1", -1, 4294967295, -1},
      {"+5", 5, 5, 5},
      {"0x1F", 0, 0, 31},
      {"0x", 0, 0, 0},
      {"010", 10, 10, 8},
      {"08", 8, 8, 0},
      {"12abc", 12, 12, 12},
      {"3.9", 3, 3, 3},
      {"\r\v\f7", 7, 7, 7},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.token));
    const std::string token = row.token;
    WriteBytes("odd.txt", token + " 1\n" + token + "\n" + token + "\t1");
    MTextFile file;
    ASSERT_TRUE(file.Open("odd.txt", false));
    int asInt = -7;
    unsigned asUnsigned = 7;
    long asLong = -7;
    EXPECT_EQ(file.Readln(&asInt, 1), 1);
    EXPECT_EQ(file.Readln(&asUnsigned, 1), 1);
    EXPECT_EQ(file.Readln(&asLong, 1), 1);
    EXPECT_EQ(asInt, row.asInt);
    EXPECT_EQ(asUnsigned, row.asUnsigned);
    EXPECT_EQ(asLong, row.asLong);
  }
}

TEST_F(TextFileNumbers, ReadsOddRealsAsTheBoundSscanfDoes) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const struct {
    const char* token;
    int stored;
    double value;
  } rows[] = {
      {"inf", 1, kInfinity},
      {"-Infinity", 1, -kInfinity},
      {"infx", 1, kInfinity},
      {"1e400", 1, kInfinity},
      {"-1e400", 1, -kInfinity},
      {"1e-400", 1, 0},
      {"0x10", 1, 16},
      {"0x.8", 1, 0.5},
      {"0x", 0, -7},
      {"1e", 1, 1},
      {"1e+", 1, 1},
      {"1d5", 1, 1},
      {"1e5x", 1, 1e5},
      {"2.5x", 1, 2.5},
      {"+1.5", 1, 1.5},
      {"1,5", 1, 1},
      {".", 0, -7},
      {"-", 0, -7},
      {"+-1", 0, -7},
      {"--1", 0, -7},
      {"e5", 0, -7},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.token);
    WriteBytes("odd.txt", std::string(row.token) + " 1\n");
    MTextFile file;
    ASSERT_TRUE(file.Open("odd.txt", false));
    double value = -7;
    EXPECT_EQ(file.Readln(&value, 1), row.stored);
    EXPECT_EQ(value, row.value);
  }
}

// An odd token is read by itself, and the tokens behind it are as they were.
TEST_F(TextFileNumbers, KeepsWhatStandsBehindAnOddToken) {
  WriteBytes("odd.txt", "+1\t+2 +3\n\r 7\n");
  MTextFile file;
  ASSERT_TRUE(file.Open("odd.txt", false));
  MTextFile copy(file);
  int values[4] = {-7, -7, -7, -7};
  EXPECT_EQ(file.Readln(values, 4), 3);
  EXPECT_EQ(values[2], 3);
  EXPECT_EQ(copy.Readln(values, 4), 0) << "a carriage return is a token of its own, and no number";
}

class FormatReader : public MTextFile {
 public:
  using MTextFile::IsComment;
  using MTextFile::Readln;
};

TEST_F(TextFileNumbers, ReadsRealsByAnyFormatWithAPointInEveryLocale) {
  WriteBytes("reals.txt", "1.5 -2.25e1 3,5\n1.5\n");
  const kv::test::ScopedLocale locale("German");
  FormatReader file;
  ASSERT_TRUE(file.Open("reals.txt", false));
  double values[3] = {-7, -7, -7};
  EXPECT_EQ(file.Readln(values, 3, "%lg", 8), 3);
  EXPECT_EQ(values[0], 1.5);
  EXPECT_EQ(values[1], -22.5);
  EXPECT_EQ(values[2], 3);
  float value = -7;
  EXPECT_EQ(file.Readln(&value, 1, "%g", 4), 1);
  EXPECT_EQ(value, 1.5F);
}

TEST_F(TextFileNumbers, ReadsNothingByAFormatThatBeginsWithoutAPercentSign) {
  WriteBytes("line.txt", "x7\n");
  FormatReader file;
  ASSERT_TRUE(file.Open("line.txt", false));
  int value = -7;
  EXPECT_EQ(file.Readln(&value, 1, "x%d", 4), 0);
  EXPECT_EQ(value, -7);
}

TEST_F(TextFileNumbers, LeavesTheLineAsItWasBehindATokenThatIsNoNumber) {
  WriteBytes("line.txt", "\r x\n");
  FormatReader file;
  ASSERT_TRUE(file.Open("line.txt", false));
  int value = -7;
  EXPECT_EQ(file.Readln(&value, 1), 0);
  EXPECT_FALSE(file.IsComment()) << "the line is cut behind its first token";
}

TEST_F(TextFileNumbers, ReadsALineAsFarAsItsFirstNul) {
  using namespace std::string_literals;
  WriteBytes("gap.txt", "1 2\0 3 4\n5 \0\n\0 6\n7\n"s);
  MTextFile file;
  ASSERT_TRUE(file.Open("gap.txt", false));
  int values[4] = {-7, -7, -7, -7};
  EXPECT_EQ(file.Readln(values, 4), 2);
  EXPECT_EQ(values[1], 2);
  EXPECT_EQ(values[2], -7);
  EXPECT_EQ(file.Readln(values, 4), 1);
  EXPECT_EQ(values[0], 5);
  EXPECT_EQ(file.Readln(values, 4), 1) << "a line that begins with NUL is blank";
  EXPECT_EQ(values[0], 7);
  EXPECT_EQ(file.Readln(values, 4), -1);
}

}  // namespace
