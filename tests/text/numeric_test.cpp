#include <gtest/gtest.h>
#include <locale.h>

#include <atomic>
#include <climits>
#include <cmath>
#include <future>
#include <limits>
#include <string>

#include "tests/text/scoped_locale.h"
#include "utils/text/text.h"

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct DoubleCase {
  const char* text;
  double value;
};

const DoubleCase kDoubles[] = {
    {"12345-3", 1.2345e-4},
    {" 12345-3", 1.2345e-4},
    {"-11606-4", -1.1606e-5},
    {"5", 0.5},
    {"+5", 0.5},
    {"-5", -0.5},
    {"0", 0.0},
    {"12345+3", 123.45},
    {"28098-4", 0.28098e-4},
    {"00000-0", 0.0},
    {"-12345+12", -0.12345e12},
    // White space counts nowhere.
    {"\t 12 34 5 - 3 ", 1.2345e-4},
    {"- 5", -0.5},
    {"+ 5", 0.5},
    {"5 + 1", 5.0},
    // What follows the number is ignored.
    {"12345-3x", 1.2345e-4},
    {"5-", 0.5},
    {"5+", 0.5},
    {"5-x", 0.5},
    {"5-1-1", 0.05},
    {"5.7", 0.5},
    {"5e1", 5.0},
    {"5E1", 5.0},
    {"5e-1", 0.5},
    {"5x", 0.5},
    {"5\xE9", 0.5},
    // Decimals are rounded correctly, out of range as well.
    {"11714391823304693-8", .11714391823304693e-8},
    {"78044125917137456-20", .78044125917137456e-20},
    {"17976931348623157+309", 1.7976931348623157e308},
    {"49406564584124654-323", 4.9406564584124654e-324},
    {"1+400", kInfinity},
    {"-1+400", -kInfinity},
    {"1-400", 0.0},
    {"1+99999999999", kInfinity},
};

void CheckDoubles() {
  for (const DoubleCase& row : kDoubles) {
    SCOPED_TRACE(row.text);
    double value = 7.0;
    EXPECT_TRUE(GetDoubleValue(&value, row.text));
    EXPECT_EQ(value, row.value);
  }
}

TEST(GetDoubleValue, ReadsAnImpliedPointAndASignedExponent) { CheckDoubles(); }

TEST(GetDoubleValue, ReadsTheSameUnderAGermanLocale) {
  const kv::test::ScopedLocale locale("German");
  ASSERT_STREQ(localeconv()->decimal_point, ",");
  CheckDoubles();
  EXPECT_STREQ(localeconv()->decimal_point, ",");
}

TEST(GetDoubleValue, LeavesTheLocaleOfTheProcessAlone) {
  const kv::test::ScopedLocale locale("German");
  std::atomic<bool> isDone = false;
  std::atomic<int> reads = 0;
  auto readPoints = std::async(std::launch::async, [&isDone, &reads] {
    int points = 0;
    for (; !isDone; ++reads) points += localeconv()->decimal_point[0] == '.' ? 1 : 0;
    return points;
  });
  for (int i = 0; i < 20000 || reads < 1000; ++i) {
    double value = 7.0;
    GetDoubleValue(&value, "1+400");
    EXPECT_EQ(value, kInfinity);
  }
  isDone = true;
  EXPECT_EQ(readPoints.get(), 0);
}

TEST(GetDoubleValue, KeepsTheSignOfZero) {
  double value = 7.0;
  EXPECT_TRUE(GetDoubleValue(&value, "-0"));
  EXPECT_TRUE(std::signbit(value));
  EXPECT_TRUE(GetDoubleValue(&value, "-1-400"));
  EXPECT_EQ(value, 0.0);
  EXPECT_TRUE(std::signbit(value));
}

TEST(GetDoubleValue, RefusesWhatIsNoNumber) {
  for (const char* text : {"", "   ", " \t\r\n\v\f", "-", "+", "--5", "+-5", "-+5", "- -5", ".",
                           ".5", "x", "e5", "inf", "nan", "-inf", "x5"}) {
    SCOPED_TRACE(text);
    double value = 7.0;
    EXPECT_FALSE(GetDoubleValue(&value, text));
    EXPECT_EQ(value, 7.0);
  }
  double value = 7.0;
  EXPECT_FALSE(GetDoubleValue(&value, nullptr));
  EXPECT_EQ(value, 7.0);
  EXPECT_FALSE(GetDoubleValue(nullptr, "5"));
}

TEST(GetDoubleValue, ReadsNumbersOfAnyLength) {
  for (const std::size_t length : {250U, 255U, 256U, 257U, 5000U}) {
    SCOPED_TRACE(length);
    double value = 7.0;
    EXPECT_TRUE(GetDoubleValue(&value, (std::string(length, '0') + "1+1").c_str()));
    EXPECT_EQ(value, length < 300 ? std::stod("1e-" + std::to_string(length)) : 0.0);
    EXPECT_TRUE(GetDoubleValue(&value, ("5" + std::string(length, '0') + "+1").c_str()));
    EXPECT_EQ(value, 5.0);
    EXPECT_TRUE(GetDoubleValue(&value, (std::string(length, ' ') + "5").c_str()));
    EXPECT_EQ(value, 0.5);
  }
}

TEST(FromCustomRadixToDec, ReadsDecimalDigitsInTheBase) {
  const struct {
    int value;
    int radix;
    int after;
  } rows[] = {
      {777, 8, 511},
      {0, 2, 0},
      {1, 2, 1},
      {10, 2, 2},
      {1010, 2, 10},
      {9, 10, 9},
      {123, 10, 123},
      {100, 16, 256},
      {99, 12, 117},
      {1111111111, 2, 1023},
      {7, 8, 7},
      {10, 8, 8},
      {0, 10, 0},
      {0, 0, 0},
      {0, -5, 0},
      {2147483647, 10, INT_MAX},
      {1234567, 8, 342391},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.value << " in " << row.radix);
    int value = row.value;
    EXPECT_TRUE(FromCustomRadixToDec(&value, row.radix));
    EXPECT_EQ(value, row.after);
  }
}

TEST(FromCustomRadixToDec, CutsLargeResultsToThirtyTwoBits) {
  const struct {
    int value;
    int radix;
    int after;
  } rows[] = {
      {2000000000, 10, 2000000000}, {1000000000, 16, 0},           // 16^9 = 2^36
      {1000000007, 16, 7},          {1123456789, 12, 1376526809},  // 5,671,494,105
      {11, INT_MAX, INT_MIN},                                      // 2^31 - 1 + 1
      {10, INT_MAX, INT_MAX},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.value << " in " << row.radix);
    int value = row.value;
    EXPECT_TRUE(FromCustomRadixToDec(&value, row.radix));
    EXPECT_EQ(value, row.after);
  }
}

TEST(FromCustomRadixToDec, LeavesTheRestBehindTheLastAcceptedDigit) {
  const struct {
    int value;
    int radix;
    int after;
  } rows[] = {
      {789, 8, 89},  {12, 2, 2},    {987, 8, 987},
      {779, 8, 9},   {1092, 2, 92}, {5, 5, 5},
      {5, 0, 5},     {5, -3, 5},    {1999999999, 9, 999999999},
      {100, 1, 100}, {2, 1, 2},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.value << " in " << row.radix);
    int value = row.value;
    EXPECT_FALSE(FromCustomRadixToDec(&value, row.radix));
    EXPECT_EQ(value, row.after);
  }
}

TEST(FromCustomRadixToDec, TurnsNegativeNumbersIntoZeroAndFails) {
  for (const int negative : {-1, -777, INT_MIN}) {
    SCOPED_TRACE(negative);
    for (const int radix : {8, 0, -1}) {
      int value = negative;
      EXPECT_FALSE(FromCustomRadixToDec(&value, radix));
      EXPECT_EQ(value, 0);
    }
  }
  EXPECT_FALSE(FromCustomRadixToDec(nullptr, 8));
}

TEST(Valhex, KnowsHexDigitsOfEitherCase) {
  const std::string digits = "0123456789abcdef";
  const std::string upperDigits = "0123456789ABCDEF";
  for (int c = CHAR_MIN; c <= CHAR_MAX; ++c) {
    SCOPED_TRACE(c);
    const char character = static_cast<char>(c);
    const std::size_t lower = digits.find(character);
    const std::size_t upper = upperDigits.find(character);
    const std::size_t place = lower != std::string::npos ? lower : upper;
    EXPECT_EQ(valhex(character), place == std::string::npos ? 0U : static_cast<unsigned>(place));
  }
}

TEST(GetNearestInt, RoundsHalvesUpwards) {
  const struct {
    double x;
    int nearest;
  } rows[] = {
      {0.0, 0},
      {-0.0, 0},
      {0.49999, 0},
      {0.5, 1},
      {-0.49999, 0},
      {-0.5, 0},
      {-0.50001, -1},
      {1.5, 2},
      {-1.5, -1},
      {2.5, 3},
      {-2.5, -2},
      {2.4, 2},
      {-2.4, -2},
      {2.6, 3},
      {-2.6, -3},
      {-3.0, -3},
      {1e9, 1000000000},
      {-1e9, -1000000000},
      // The sum rounds to 1.
      {0.49999999999999994, 1},
      {2147483646.4, 2147483646},
      {2147483646.5, INT_MAX},
      {-2147483647.4, -INT_MAX},
      {-2147483648.4, INT_MIN},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.x);
    EXPECT_EQ(GetNearestInt(row.x), row.nearest);
  }
}

TEST(GetNearestInt, SaturatesAndTakesNotANumberAsZero) {
  EXPECT_EQ(GetNearestInt(2147483647.5), INT_MAX);
  EXPECT_EQ(GetNearestInt(2147483648.0), INT_MAX);
  EXPECT_EQ(GetNearestInt(1e300), INT_MAX);
  EXPECT_EQ(GetNearestInt(kInfinity), INT_MAX);
  EXPECT_EQ(GetNearestInt(-2147483649.0), INT_MIN);
  EXPECT_EQ(GetNearestInt(-1e300), INT_MIN);
  EXPECT_EQ(GetNearestInt(-kInfinity), INT_MIN);
  EXPECT_EQ(GetNearestInt(std::nan("")), 0);
}

}  // namespace
