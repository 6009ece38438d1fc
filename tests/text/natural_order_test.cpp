#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "tests/support/guarded_pages.h"
#include "tests/text/scoped_locale.h"
#include "utils/text/text.h"

namespace {

using kv::test::ScopedLocale;

struct Pair {
  std::string a;
  std::string b;
  int result;
};

template <std::size_t size, typename Function>
void CheckPairs(const Pair (&rows)[size], Function compare) {
  for (const Pair& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.a) + " against " + testing::PrintToString(row.b));
    EXPECT_EQ(compare(row.a.c_str(), row.b.c_str()), row.result);
  }
}

TEST(CompareStringWithNumber, ComparesTextWithoutCase) {
  const Pair rows[] = {
      {"", "", 0},
      {"abc", "ABC", 0},
      {"abc", "abd", -1},
      {"abC", "ABa", 2},
      {"a", "B", -1},
      {"Z", "a", 25},
      {"[", "a", 91 - 65},
      {"_", "a", 95 - 65},
      {"{", "z", 123 - 90},
      {"@", "`", 64 - 96},
      {"\xE9", "\xE9", 0},
      {"\xE9", "\xC9", 32},
      {"z", "\x80", -65318},
      {"\xFF", "a", 65535 - 65},
      {"\x80", "\xFF", -127},
  };
  CheckPairs(rows, CompareStringWithNumber);
}

TEST(CompareStringWithNumber, DecidesAnEndByTheRawCharacters) {
  const Pair rows[] = {
      {"", "a", -97},          {"a", "", 97},
      {"", "A", -65},          {"ab", "abc", -99},
      {"abC", "ab", 67},       {"", "7", -55},
      {"7", "", 55},           {"a", "a1", -49},
      {"a1", "ab", '1' - 'b'}, {"aB", "a1", 'B' - '1'},
      {"a1", "a", '1'},        {"", "\xFF", -65535},
      {"\x80", "", 65408},     {"1", "\x80", 49 - 65408},
      {"5", "A", 53 - 65},     {"5", "a", 53 - 97},
  };
  CheckPairs(rows, CompareStringWithNumber);
}

TEST(CompareStringWithNumber, ComparesNumbersByTheirValue) {
  const Pair rows[] = {
      {"M 31", "m 4", 27},
      {"Item9", "Item10", -1},
      {"Item10", "Item9", 1},
      {"10", "9", 1},
      {"1", "1000000", -999999},
      {"a5b", "a5B", 0},
      {"a5b7", "A5B9", -2},
      {"a5b", "a5c", -1},
      {"999999999", "1", 999999998},
      {"2147483647", "1", 2147483646},
      {"1999999999", "2000000000", -1},
      {"x1y2z3", "X1Y2Z4", -1},
      {"NGC 224", "NGC 0224a", -52},
  };
  CheckPairs(rows, CompareStringWithNumber);
}

// Behind equal numbers both cursors move on while both see digits.
TEST(CompareStringWithNumber, DoesNotSkipLeadingZeros) {
  const Pair rows[] = {
      {"x2y", "x02y", 'y' - '2'}, {"x02y", "x2y", '2' - 'y'}, {"007", "7", '0'}, {"7", "007", -'0'},
      {"00", "0", '0'},           {"0", "00", -'0'},          {"00", "00", 0},   {"007", "007", 0},
      {"010", "10", '0'},         {"1 2", "01 2", ' ' - '1'},
  };
  CheckPairs(rows, CompareStringWithNumber);
}

// What a number beyond 32 bits reads as is the run-time library's; the difference keeps its low 32
// bits.
TEST(CompareStringWithNumber, SharesTheOverflowOfAtoi) {
  for (const char* huge : {"2147483648", "4294967301", "9999999999", "99999999999999999999"}) {
    for (const char* other : {"1", "77", "2147483647"}) {
      SCOPED_TRACE(std::string(huge) + " against " + other);
      const long long difference = static_cast<long long>(std::atoi(huge)) - std::atoi(other);
      if (difference == 0) continue;
      EXPECT_EQ(CompareStringWithNumber(huge, other), static_cast<int>(difference));
      EXPECT_EQ(CompareStringWithNumber(other, huge), static_cast<int>(-difference));
    }
  }
  EXPECT_EQ(CompareStringWithNumber("99999999999999999999", "99999999999999999999"), 0);
  EXPECT_EQ(CompareStringWithNumber("1000000000", "1000000001"), -1);
}

TEST(CompareStringWithNumber, ReadsNumbersBeyondIntAcrossPages) {
  constexpr std::size_t kPage = 4096;
  const kv::test::GuardedPages pages(2 * kPage);
  for (std::size_t before = 1; before <= 12; ++before) {
    char* const number = pages.Begin() + kPage - before;
    std::strcpy(number, "1000000000");
    EXPECT_EQ(CompareStringWithNumber(number, "1000000001"), -1) << before;
    EXPECT_EQ(CompareStringWithNumber("1000000001", number), 1) << before;
  }
}

TEST(CompareStringWithNumber, SortsACatalogue) {
  std::vector<std::string> names = {"NGC 10", "Vega", "ngc 9", "M 101", "NGC 224",
                                    "m 31",   "M 4",  "",      "10",    "9"};
  std::stable_sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
    return CompareStringWithNumber(a.c_str(), b.c_str()) < 0;
  });
  EXPECT_EQ(names, (std::vector<std::string>{"", "9", "10", "M 4", "m 31", "M 101", "ngc 9",
                                             "NGC 10", "NGC 224", "Vega"}));
}

TEST(CompareStringWithNumber, TakesNullAndTextsOfAnyLength) {
  EXPECT_EQ(CompareStringWithNumber(nullptr, nullptr), 0);
  EXPECT_EQ(CompareStringWithNumber(nullptr, "a"), -97);
  EXPECT_EQ(CompareStringWithNumber("a", nullptr), 97);
  const std::string text(100000, 'x');
  EXPECT_EQ(CompareStringWithNumber((text + "9").c_str(), (text + "10").c_str()), -1);
  const std::string zeros(100000, '0');
  EXPECT_EQ(CompareStringWithNumber((zeros + "5").c_str(), (zeros + "7").c_str()), -2);
}

TEST(CompareStringWithNumber, IsTheSameInEveryLocale) {
  const ScopedLocale locale("German_Germany.1252");
  EXPECT_EQ(CompareStringWithNumber("\xE9", "\xC9"), 32);
  EXPECT_EQ(CompareStringWithNumber("abc", "ABC"), 0);
  EXPECT_EQ(CompareStringWithNumber("1.5", "1,5"), '.' - ',');
}

// ---- Minor planets -----------------------------------------------------------------------------

TEST(CompareAsterNameWithNumber, LeavesParenthesesOut) {
  const Pair rows[] = {
      {"(2) Name", "2 Name", 0},
      {"(1) Ceres", "(2) Pallas", -1},
      {"(2) Pallas", "(1) Ceres", 1},
      {"(((a", "A)))", 0},
      {"()", "", 0},
      {"", "", 0},
      {"(a)b(c)", "abc", 0},
      {"(10) a", "(9) a", -1},
      {"(2) N\xC3\xA4me", "2 name", 0},
      {"[2]", "(2)", -1},
  };
  CheckPairs(rows, CompareAsterNameWithNumber);
}

// Without the string sort, a hyphen is a weak character: the letters behind it decide first.
TEST(CompareAsterNameWithNumber, ComparesAsCompareStringsWithoutStringSort) {
  const Pair rows[] = {{"(1) co-op", "(1) cooa", 1}, {"(1) coop", "(1) co-op", -1}};
  CheckPairs(rows, CompareAsterNameWithNumber);
}

TEST(CompareAsterNameWithNumber, FollowsTheCodePage) {
  SetCodePage("ru");
  EXPECT_EQ(CompareAsterNameWithNumber("(1) \xC3\xA9t\xC3\xA9", "(1) ete"), 1);
  SetCodePage("fr");
  EXPECT_EQ(CompareAsterNameWithNumber("(1) \xC3\xA9t\xC3\xA9", "(1) ete"), 0);
}

TEST(CompareAsterNameWithNumber, TakesNullAndNamesOfAnyLength) {
  EXPECT_EQ(CompareAsterNameWithNumber(nullptr, "a"), -3);
  EXPECT_EQ(CompareAsterNameWithNumber("a", nullptr), -3);
  EXPECT_EQ(CompareAsterNameWithNumber(nullptr, nullptr), -3);
  for (const std::size_t length : {254U, 255U, 256U, 257U, 10000U}) {
    SCOPED_TRACE(length);
    const std::string name(length, 'n');
    EXPECT_EQ(CompareAsterNameWithNumber(("(" + name + "a)").c_str(), (name + "A").c_str()), 0);
    EXPECT_EQ(CompareAsterNameWithNumber(("(" + name + "a)").c_str(), (name + "b").c_str()), -1);
  }
}

TEST(SortAsterNameWithNumber, GoesByTheLeadingNumbers) {
  const Pair rows[] = {
      {"(10) Name", "(9) Other", 1},
      {"(9) Other", "(10) Name", -1},
      {"(9) Other", "(9) Name", 0},
      {"10", "9", 1},
      {"  7 a", "\t\n\v\f\r7 b", 0},
      {"-3", "2", -1},
      {"+3", "3", 0},
      {"(-(3)) a", "-3", 0},
      {"1(2)3", "122", 1},
      {"007", "7", 0},
      {"12abc", "12", 0},
      {"2.9", "2.1", 0},
      {"2147483647", "2147483646", 1},
      // The difference is beyond int.
      {"2147483647", "-2", 1},
      {"-2147483648", "1", -1},
  };
  CheckPairs(rows, SortAsterNameWithNumber);
}

TEST(SortAsterNameWithNumber, CountsNamesWithoutANumberAsEqual) {
  const Pair rows[] = {
      {"Name", "(9) Other", 0},
      {"(9) Other", "Name", 0},
      {"", "1", 0},
      {"1", "", 0},
      {"Name", "Other", 0},
      {"", "", 0},
      {"- 5", "3", 0},
      {"+-5", "3", 0},
      {"a1", "2", 0},
      {"()", "2", 0},
      {"-", "2", 0},
      {"\xA0"
       "5",
       "2", 0},
  };
  CheckPairs(rows, SortAsterNameWithNumber);
}

TEST(SortAsterNameWithNumber, TakesNullNumbersBeyondIntAndNamesOfAnyLength) {
  EXPECT_EQ(SortAsterNameWithNumber(nullptr, "1"), 0);
  EXPECT_EQ(SortAsterNameWithNumber("1", nullptr), 0);
  EXPECT_EQ(SortAsterNameWithNumber("99999999999", "2147483647"), 0);
  EXPECT_EQ(SortAsterNameWithNumber("99999999999", "2147483646"), 1);
  EXPECT_EQ(SortAsterNameWithNumber("-99999999999", "-2147483647"), -1);
  const std::string blanks(1000, ' ');
  EXPECT_EQ(SortAsterNameWithNumber((blanks + "(10)").c_str(), (blanks + "(9)").c_str()), 1);
  const std::string parentheses(1000, '(');
  EXPECT_EQ(SortAsterNameWithNumber((parentheses + "10").c_str(), "9"), 1);
}

}  // namespace
