// Texts with numbers at the edges of their types: sizes, counts, code pages, characters.
#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <string>

#include "tests/support/guarded_buffer.h"
#include "utils/text/text.h"

namespace {

using kv::test::GuardedBuffer;

constexpr char kAbc[] = "abc";

TEST(TextLimits, CaseIsMappedWhereTheSizeAllowsIt) {
  const struct {
    int size;
    const char* after;
  } rows[] = {{4, "ABC"}, {3, kAbc}, {1, kAbc}, {0, kAbc}, {-1, kAbc}, {INT_MIN, kAbc}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.size);
    GuardedBuffer<char> buffer(4, kAbc);
    UpperCase(buffer.Get(), row.size);
    buffer.ExpectHolds({row.after, 4});
    LowerCase(buffer.Get(), row.size);
    buffer.ExpectHolds({kAbc, 4});
  }
}

TEST(TextLimits, TextsAreReplacedWhereTheSizeAllowsIt) {
  const struct {
    int size;
    int result;
    const char* after;
  } rows[] = {{INT_MAX, 4, "aBBc"}, {INT_MAX - 511, 4, "aBBc"}, {4, 4, "aBBc"}, {3, -1, kAbc},
              {-1, -1, kAbc},       {INT_MIN, -1, kAbc}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.size);
    GuardedBuffer<char> buffer(5, kAbc);
    EXPECT_EQ(ReplaceSubstring(buffer.Get(), row.size, "b", "BB"), row.result);
    EXPECT_EQ(buffer.Text(), row.after);
    EXPECT_TRUE(buffer.GuardsHold());
  }
}

TEST(TextLimits, CodePagesAreConvertedWhereTheSizeAllowsIt) {
  SetCodePage("en");
  for (const int size : {INT_MIN, -1, 0, 1, 3, 4}) {
    SCOPED_TRACE(size);
    const bool fits = size == 0 || size >= 4;
    GuardedBuffer<char> text(4, kAbc);
    EXPECT_EQ(Ascii2Utf8(text.Get(), size, 1252), fits);
    EXPECT_EQ(Ascii2Utf8(text.Get(), size, -1), fits);
    EXPECT_EQ(Utf82Ascii(text.Get(), size), fits);
    text.ExpectHolds({kAbc, 4});
    GuardedBuffer<char> out(4);
    EXPECT_EQ(Unicode2Ascii(L"abc", out.Get(), size), size >= 4);
    EXPECT_EQ(out.IsUntouched(), size < 4);
  }
}

TEST(TextLimits, CodePagesThatAreNoneAreRefused) {
  SetCodePage("en");
  for (const int codePage : {INT_MIN, -2, INT_MAX, 65536, 66000}) {
    SCOPED_TRACE(codePage);
    GuardedBuffer<char> text(4, kAbc);
    EXPECT_FALSE(Ascii2Utf8(text.Get(), 4, codePage));
    EXPECT_TRUE(Ascii2Utf8(text.Get(), 0, codePage));
    text.ExpectHolds({kAbc, 4});
  }
}

TEST(TextLimits, BeginningsOfNoLengthAreEqual) {
  SetCodePage("en");
  for (const int bytes : {INT_MIN, -1, 0}) {
    SCOPED_TRACE(bytes);
    EXPECT_EQ(CompareStringsRange("a", "b", bytes), 0);
    EXPECT_EQ(CompareStringsRange(nullptr, nullptr, bytes), 0);
  }
  EXPECT_EQ(CompareStringsRange("a", "b", INT_MAX), -1);
}

// The platform's buffers for a comparison hold 256 units.
TEST(TextLimits, NamesOfAnyLengthAreComparedToTheirEnds) {
  SetCodePage("en");
  for (const std::size_t size : {254U, 255U, 256U, 257U, 2560U}) {
    SCOPED_TRACE(size);
    const std::string run(size - 1, 'a');
    const std::string less = run + "b";
    const std::string greater = run + "c";
    EXPECT_EQ(CompareStrings(less.c_str(), greater.c_str(), false), -1);
    EXPECT_EQ(CompareStrings(greater.c_str(), less.c_str(), true), 1);
    EXPECT_EQ(CompareNoCaseStrings(less.c_str(), greater.c_str()), -1);
    EXPECT_EQ(CompareStringsWestern(greater.c_str(), less.c_str()), 1);
    EXPECT_EQ(CompareStringsRussian(less.c_str(), less.c_str()), 0);
    EXPECT_EQ(CompareStringsRangeExt(less.c_str(), greater.c_str(), true, false), 1);
    EXPECT_EQ(CompareStringsRange(less.c_str(), greater.c_str(), static_cast<int>(size) - 1), 0);
    EXPECT_EQ(CompareStringsRange(less.c_str(), greater.c_str(), static_cast<int>(size)), -1);
    EXPECT_EQ(CompareStringWithNumber(less.c_str(), greater.c_str()), -1);
    EXPECT_EQ(CompareAsterNameWithNumber(("(" + less).c_str(), (greater + ")").c_str()), -1);
    EXPECT_EQ(SortAsterNameWithNumber(("(7) " + less).c_str(), ("(8) " + less).c_str()), -1);
    EXPECT_EQ(SortAsterNameWithNumber((std::string(size, '(') + "9").c_str(), "8"), 1);
  }
}

TEST(TextLimits, HalvesOfCharactersAreNoLetters) {
  for (const unsigned c : {0xD800U, 0xDBFFU, 0xDC00U, 0xDFFFU, 0xFFFEU, 0xFFFFU, 0xFEFFU}) {
    SCOPED_TRACE(c);
    EXPECT_FALSE(IsAlphaDigital(static_cast<wchar_t>(c)));
  }
}

TEST(TextLimits, ThePatternIsNoLongerThanTheBytes) {
  const auto* const bytes = reinterpret_cast<const unsigned char*>(kAbc);
  for (const unsigned size : {4U, 0x7FFFFFFFU, 0x80000000U, UINT_MAX}) {
    EXPECT_EQ(MemorySearch(bytes, 3, bytes, size), -1) << size;
    EXPECT_EQ(MemorySearch(bytes, 0, bytes, size), -1) << size;
    EXPECT_EQ(MemorySearch(nullptr, size, bytes, size), -1) << size;
    EXPECT_EQ(MemorySearch(bytes, size, nullptr, size), -1) << size;
  }
  EXPECT_EQ(MemorySearch(nullptr, UINT_MAX, nullptr, 0), 0);
}

TEST(TextLimits, NumbersWithoutSizeRoundToNothing) {
  for (const double x : {DBL_TRUE_MIN, -DBL_TRUE_MIN, DBL_MIN, -DBL_MIN, DBL_EPSILON}) {
    EXPECT_EQ(GetNearestInt(x), 0) << x;
  }
  EXPECT_EQ(GetNearestInt(DBL_MAX), INT_MAX);
  EXPECT_EQ(GetNearestInt(-DBL_MAX), INT_MIN);
}

TEST(TextLimits, ADigitFitsOnlyABaseAboveIt) {
  const struct {
    int value;
    int radix;
    bool isRead;
    int after;
  } rows[] = {{1, INT_MIN, false, 1},
              {1, -1, false, 1},
              {1, 0, false, 1},
              {1, 1, false, 1},
              {INT_MAX, 1, false, INT_MAX},
              {1, 2, true, 1},
              {INT_MAX, 8, false, 83647},
              {INT_MAX, INT_MAX, true, -2147483636},
              {0, INT_MIN, true, 0},
              {0, INT_MAX, true, 0},
              {INT_MIN, INT_MAX, false, 0}};
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.value << " in " << row.radix);
    int value = row.value;
    EXPECT_EQ(FromCustomRadixToDec(&value, row.radix), row.isRead);
    EXPECT_EQ(value, row.after);
  }
}

TEST(TextLimits, UrlsOfNoLengthAreEmpty) {
  for (const int length : {-1, INT_MIN}) {
    GuardedBuffer<char> out(4);
    decodeURL(out.Get(), "%41b", length);
    out.ExpectHolds({"", 1});
  }
}

TEST(TextLimits, TheFormThatDoesNothingDoesNothingForAnySize) {
  for (const int size : {INT_MIN, -1, 0, 4, INT_MAX}) {
    GuardedBuffer<char> text(4, "\xE9t\xE9");
    EXPECT_TRUE(FromDiacritic(text.Get(), size, false));
    text.ExpectHolds({"\xE9t\xE9", 4});
    EXPECT_TRUE(FromDiacritic(static_cast<char*>(nullptr), size, true));
  }
}

class FirstAlways final : public Comparator {
 public:
  int Compare(const void*, const void*) override {
    ++asked;
    return -1;
  }
  int asked = 0;
};

TEST(TextLimits, ASearchOfTheGreatestCountEnds) {
  // Half the count, as 32 bits, is the greatest number; it is halved to the last element.
  FirstAlways comparator;
  const char element = 'e';
  EXPECT_EQ(BinarySearch(&element, &element, ULLONG_MAX, 0, &comparator), &element);
  EXPECT_EQ(comparator.asked, 33);
}

}  // namespace
