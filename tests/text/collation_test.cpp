#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "tests/support/import_patch.h"
#include "utils/text/text.h"

namespace {

constexpr const char* kSmallIe = "\xD0\xB5";    // U+0435
constexpr const char* kSmallIo = "\xD1\x91";    // U+0451
constexpr const char* kCapitalIe = "\xD0\x95";  // U+0415
constexpr const char* kEAcute = "\xC3\xA9";
constexpr const char* kEGrave = "\xC3\xA8";
constexpr const char* kCapitalEAcute = "\xC3\x89";

struct Comparison {
  const char* a;
  const char* b;
  int result;
};

// Runs `compare` over each row in both directions.
template <std::size_t size, typename Function>
void CheckComparisons(const Comparison (&rows)[size], Function compare) {
  for (const Comparison& row : rows) {
    SCOPED_TRACE(testing::Message() << row.a << " / " << row.b);
    EXPECT_EQ(compare(row.a, row.b), row.result);
    EXPECT_EQ(compare(row.b, row.a), -row.result);
  }
}

// Order that no flag changes.
const Comparison kPlainOrder[] = {
    {"", "", 0},        {"", "a", -1},  {"a", "a", 0},   {"a", "b", -1},
    {"a", "ab", -1},    {"a", "B", -1}, {"A", "b", -1},  {"Ceres", "Pallas", -1},
    {"abc", "abd", -1}, {"1", "a", -1}, {"10", "9", -1}, {kSmallIe, "\xD0\xB6", -1},
};

const Comparison kWesternOrder[] = {
    {"a", "A", 0},
    {"e", kEAcute, 0},
    {kEAcute, kEGrave, 0},
    {"E", kEAcute, 0},
    {"caf\xC3\xA9", "CAFE", 0},
    {kSmallIe, kSmallIo, 0},
    {kSmallIe, kCapitalIe, 0},
};

const Comparison kCyrillicOrder[] = {
    {"a", "A", 0},
    {"e", kEAcute, -1},
    {kEAcute, kCapitalEAcute, 0},
    {kSmallIe, kSmallIo, -1},
    {kCapitalIe, kSmallIo, -1},
    {kSmallIe, kCapitalIe, 0},
};

int WordSort(const char* a, const char* b) { return CompareStrings(a, b, false); }
int StringSort(const char* a, const char* b) { return CompareStrings(a, b, true); }

TEST(CompareStrings, IgnoresDiacriticsExceptUnderTheCyrillicCodePage) {
  for (const char* language : {"en", "ja", "pt", "ru"}) {
    SCOPED_TRACE(language);
    SetCodePage(language);
    for (const auto compare :
         {WordSort, StringSort, CompareStringsWestern, CompareStringsRussian}) {
      CheckComparisons(kPlainOrder, compare);
      if (std::string(language) == "ru") {
        CheckComparisons(kCyrillicOrder, compare);
      } else {
        CheckComparisons(kWesternOrder, compare);
      }
    }
  }
}

TEST(CompareStrings, CountsHyphensAsPunctuationInAStringSort) {
  SetCodePage("en");
  const Comparison wordRows[] = {{"coop", "co-op", -1}, {"co-op", "coor", -1}, {"cot", "co-op", 1}};
  CheckComparisons(wordRows, WordSort);
  CheckComparisons(wordRows, CompareStringsWestern);
  CheckComparisons(wordRows, CompareStringsRussian);
  const Comparison stringRows[] = {
      {"coop", "co-op", 1}, {"co-op", "coor", -1}, {"co-op", "coal", -1}};
  CheckComparisons(stringRows, StringSort);
}

TEST(CompareStrings, ComparesLongTextsWhole) {
  SetCodePage("en");
  for (const std::size_t length : {254U, 255U, 256U, 257U, 511U, 100000U}) {
    SCOPED_TRACE(length);
    const std::string run(length, 'a');
    EXPECT_EQ(CompareStrings((run + "b").c_str(), (run + "c").c_str(), false), -1);
    EXPECT_EQ(CompareStrings((run + "c").c_str(), (run + "b").c_str(), true), 1);
    EXPECT_EQ(CompareStrings((run + "B").c_str(), (run + "b").c_str(), false), 0);
    EXPECT_EQ(CompareStrings(run.c_str(), (run + "b").c_str(), false), -1);
    EXPECT_EQ(CompareStrings("b", run.c_str(), false), 1);
    EXPECT_EQ(CompareNoCaseStrings((run + "c").c_str(), (run + "b").c_str()), 1);
  }
}

TEST(CompareStrings, TakesMalformedUtf8AsReplacementCharacters) {
  SetCodePage("en");
  const Comparison rows[] = {
      {"a\x80z", "a\xEF\xBF\xBDz", 0},
      {"\xC3", "\xEF\xBF\xBD", 0},
      {"\xE3\x81", "\xEF\xBF\xBD", 0},
      {"a\xFF"
       "b",
       "a\x80"
       "b",
       0},
      {"a\xFF"
       "b",
       "a\x80"
       "c",
       -1},
  };
  CheckComparisons(rows, WordSort);
  CheckComparisons(rows, CompareNoCaseStrings);
}

TEST(CompareStrings, FailsForNull) {
  EXPECT_EQ(CompareStrings(nullptr, "a", false), -3);
  EXPECT_EQ(CompareStrings("a", nullptr, true), -3);
  EXPECT_EQ(CompareStrings(nullptr, nullptr, false), -3);
  EXPECT_EQ(CompareStringsWestern(nullptr, "a"), -3);
  EXPECT_EQ(CompareStringsRussian("a", nullptr), -3);
  EXPECT_EQ(CompareNoCaseStrings("a", nullptr), -3);
  EXPECT_EQ(CompareStringsRange(nullptr, "a", 1), -3);
  EXPECT_EQ(CompareStringsRange("a", nullptr, 1), -3);
  EXPECT_EQ(CompareStringsRangeExt(nullptr, "a", true, false), -3);
  EXPECT_EQ(CompareStringsRangeExt("a", nullptr, true, false), -3);
}

TEST(CompareStringsForJapan, AlwaysSortsBefore) {
  const struct {
    const char* a;
    const char* b;
  } rows[] = {{"a", "b"}, {"b", "a"}, {"a", "a"}, {"", ""}, {nullptr, nullptr}};
  for (const auto& row : rows) EXPECT_EQ(CompareStringsForJapan(row.a, row.b), -1);
}

TEST(CompareNoCaseStrings, CountsDiacriticsAndSortsWordsUnderEveryCodePage) {
  for (const char* language : {"en", "ja", "ru"}) {
    SCOPED_TRACE(language);
    SetCodePage(language);
    CheckComparisons(kPlainOrder, CompareNoCaseStrings);
    CheckComparisons(kCyrillicOrder, CompareNoCaseStrings);
    const Comparison wordRows[] = {{"coop", "co-op", -1}};
    CheckComparisons(wordRows, CompareNoCaseStrings);
  }
}

struct RangeCase {
  const char* a;
  const char* b;
  int maxBytes;
  int result;
};

void CheckRanges(const RangeCase& row) {
  SCOPED_TRACE(testing::Message() << row.a << " / " << row.b << " in " << row.maxBytes);
  EXPECT_EQ(CompareStringsRange(row.a, row.b, row.maxBytes), row.result);
  EXPECT_EQ(CompareStringsRange(row.b, row.a, row.maxBytes), -row.result);
}

TEST(CompareStringsRange, ComparesTheFirstBytes) {
  SetCodePage("en");
  const RangeCase rows[] = {
      {"Abc", "abcd", 3, 0}, {"Abc", "abcd", 4, -1}, {"Abc", "abcd", 100, -1},
      {"abc", "abd", 2, 0},  {"abc", "abd", 3, -1},  {"abc", "abd", 2147483647, -1},
      {"a", "b", 0, 0},      {"a", "b", -1, 0},      {"", "", 5, 0},
      {"", "a", 1, -1},      {"", "a", 5, -1},       {"abc", "b", 3, -1},
  };
  for (const RangeCase& row : rows) CheckRanges(row);
}

TEST(CompareStringsRange, OrdersEqualTextsByTheirBytes) {
  SetCodePage("en");
  const RangeCase rows[] = {
      {"e", kEAcute, 4, -1},  // equal letters, 1 and 2 bytes
      {"e", kEAcute, 2, -1},
      {kEAcute, kEGrave, 1, 0},       // two halves of letters
      {kEAcute, "e\xCC\x81", 9, -1},  // 2 and 3 bytes
  };
  for (const RangeCase& row : rows) CheckRanges(row);
  SetCodePage("ru");
  CheckRanges({"e", kEAcute, 4, -1});
  CheckRanges({"A", "a", 4, 0});
}

TEST(CompareStringsRange, ComparesLongTextsWhole) {
  SetCodePage("en");
  const std::string run(1000, 'a');
  CheckRanges({(run + "b").c_str(), (run + "c").c_str(), 1000, 0});
  CheckRanges({(run + "b").c_str(), (run + "c").c_str(), 1001, -1});
}

TEST(CompareStringsRange, NeverUsesTheStringSort) {
  SetCodePage("en");
  CheckRanges({"coop", "co-op", 5, -1});
}

TEST(CompareStringsRangeExt, LetsTheLengthsDecide) {
  SetCodePage("en");
  const struct {
    const char* a;
    const char* b;
    bool useFirstLength;
    int result;
  } rows[] = {
      {"ab", "abc", true, 0},      {"AB", "abc", true, 0},
      {"ab", "abc", false, 1},                              // before, not longer
      {"abc", "ab", false, 0},     {"abc", "ab", true, 1},  // after, longer
      {"a", "b", true, 1},                                  // before, not longer
      {"a", "b", false, 1},        {"b", "a", true, -1},    // after, not longer
      {"b", "a", false, -1},       {"ab", "b", true, -1},   // before, longer
      {"ab", "b", false, -1},      {"b", "ab", true, -1},   // after, not longer
      {"ba", "a", true, 1},                                 // after, longer
      {"ba", "a", false, 1},       {"", "", true, 0},
      {"", "a", true, 0},          {"", "a", false, 1},
      {"a", "", true, 1},          {"a", "", false, 0},
      {"e", "\xC3\xA9z", true, 0}, {"e", "\xC3\xA9z", false, 1},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message()
                 << row.a << " / " << row.b << " by " << (row.useFirstLength ? "a" : "b"));
    EXPECT_EQ(CompareStringsRangeExt(row.a, row.b, row.useFirstLength, false), row.result);
    EXPECT_EQ(CompareStringsRangeExt(row.a, row.b, row.useFirstLength, true), row.result);
  }
}

TEST(CompareStringsRangeExt, CountsUnitsNotBytes) {
  SetCodePage("en");
  // Two units of a; b has more bytes than units.
  EXPECT_EQ(CompareStringsRangeExt("ez", "\xC3\xA9z\xC3\xA9", true, false), 0);
  EXPECT_EQ(CompareStringsRangeExt("ezx", "\xC3\xA9z", false, false), 0);
}

TEST(CompareStringsRangeExt, FollowsTheCodePageAndTheStringSort) {
  SetCodePage("ru");
  EXPECT_EQ(CompareStringsRangeExt(kSmallIe, kSmallIo, true, false), 1);
  EXPECT_EQ(CompareStringsRangeExt(kSmallIo, kSmallIe, true, false), -1);
  SetCodePage("ja");
  EXPECT_EQ(CompareStringsRangeExt(kSmallIe, kSmallIo, true, false), 0);
  // "co-op", the longer one, sorts before "coop" in a string sort only.
  EXPECT_EQ(CompareStringsRangeExt("co-op", "coop", true, false), 1);
  EXPECT_EQ(CompareStringsRangeExt("co-op", "coop", true, true), -1);
}

TEST(CompareStringsRangeExt, ComparesLongTextsWhole) {
  SetCodePage("en");
  const std::string run(1000, 'a');
  EXPECT_EQ(CompareStringsRangeExt((run + "c").c_str(), (run + "bx").c_str(), true, false), -1);
  EXPECT_EQ(CompareStringsRangeExt(run.c_str(), (run + "b").c_str(), true, false), 0);
}

TEST(SpecialComparison, DoesNotExist) {
  EXPECT_EQ(GetSpecialCompareFunctionId(), -1);
  for (const int id : {0, 1, -1, 2147483647}) {
    SetSpecialCompareFunctionId(id);
    EXPECT_EQ(GetSpecialCompareFunctionId(), -1);
  }
}

// In the place of the system's conversion: refuses.
int WINAPI ConvertNothing(UINT, DWORD, const char*, int, wchar_t*, int) { return 0; }

TEST(CompareStrings, FailsWhenTheSystemDoesNotConvertACharacterBeyondTheBasicPlane) {
  constexpr const char* kGlobe = "\xF0\x9F\x8C\x8D";  // U+1F30D
  EXPECT_EQ(CompareStrings("a", "b", false), -1) << "the order is known from here on";
  const kv::test::ImportPatch patch("MultiByteToWideChar", &ConvertNothing);
  EXPECT_EQ(CompareStrings(kGlobe, "a", false), -3);
  EXPECT_EQ(CompareStrings("a", kGlobe, false), -3);
}

}  // namespace
