#include <gtest/gtest.h>
#include <locale.h>

#include <string>

#include "tests/support/guarded_buffer.h"
#include "tests/text/scoped_locale.h"
#include "utils/text/text.h"

namespace {

using kv::test::GuardedBuffer;

constexpr const char* kReplacement = "\xEF\xBF\xBD";  // U+FFFD

struct CaseRow {
  const char* text;
  const char* lower;
  const char* upper;
};

// Checks both directions in buffers without a byte to spare.
template <std::size_t size>
void CheckCases(const CaseRow (&rows)[size]) {
  for (const CaseRow& row : rows) {
    SCOPED_TRACE(row.text);
    const std::size_t length = std::string(row.text).size();
    GuardedBuffer<char> lower(length + 1, row.text);
    LowerCase(lower.Get(), static_cast<int>(length) + 1);
    lower.ExpectHolds({row.lower, length + 1});
    GuardedBuffer<char> upper(length + 1, row.text);
    UpperCase(upper.Get(), static_cast<int>(length) + 1);
    upper.ExpectHolds({row.upper, length + 1});
  }
}

TEST(LowerAndUpperCase, MapAsciiAloneInTheCLocale) {
  ASSERT_STREQ(setlocale(LC_CTYPE, nullptr), "C");
  const CaseRow rows[] = {
      {"", "", ""},
      {"aZ09_", "az09_", "AZ09_"},
      {"\xC3\x89t\xC3\xA9T", "\xC3\x89t\xC3\xA9t", "\xC3\x89T\xC3\xA9T"},
      {"\xD0\x96\xD0\xB6", "\xD0\x96\xD0\xB6", "\xD0\x96\xD0\xB6"},
      {"x\xF0\x9F\x98\x80Y", "x\xF0\x9F\x98\x80y", "X\xF0\x9F\x98\x80Y"},
  };
  CheckCases(rows);
}

TEST(LowerAndUpperCase, FollowTheLocaleOfTheProcess) {
  const kv::test::ScopedLocale locale("German");
  const CaseRow rows[] = {
      {"\xC3\x89t\xC3\xA9", "\xC3\xA9t\xC3\xA9", "\xC3\x89T\xC3\x89"},
      {"stra\xC3\x9F"
       "e",
       "stra\xC3\x9F"
       "e",
       "STRA\xC3\x9F"
       "E"},
  };
  CheckCases(rows);
}

TEST(LowerAndUpperCase, MapTextsOfAnyLength) {
  for (const std::size_t length : {254U, 255U, 256U, 257U, 10000U}) {
    SCOPED_TRACE(length);
    GuardedBuffer<char> buffer(length + 1, std::string(length, 'a'));
    UpperCase(buffer.Get(), static_cast<int>(length) + 1);
    EXPECT_EQ(buffer.Text(), std::string(length, 'A'));
    LowerCase(buffer.Get(), static_cast<int>(length) + 1);
    EXPECT_EQ(buffer.Text(), std::string(length, 'a'));
  }
}

TEST(LowerAndUpperCase, KeepATextWhoseResultDoesNotFit) {
  const struct {
    const char* text;
    int size;
  } rows[] = {
      {"aB", 2}, {"aB", 1}, {"aB", 0}, {"aB", -1}, {"aB\x80", 4}, {"aB\x80", 5},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.text << " in " << row.size);
    const std::size_t length = std::string(row.text).size();
    for (const auto map : {LowerCase, UpperCase}) {
      GuardedBuffer<char> buffer(length + 1, row.text);
      map(buffer.Get(), row.size);
      buffer.ExpectHolds({row.text, length + 1});
    }
  }
  LowerCase(nullptr, 5);
  UpperCase(nullptr, 5);
}

TEST(LowerAndUpperCase, ReplaceMalformedUtf8) {
  GuardedBuffer<char> buffer(6, "aB\x80");
  LowerCase(buffer.Get(), 6);
  EXPECT_EQ(buffer.Text(), std::string("ab") + kReplacement);
}

// The system may take the terminator for a part of the character.
TEST(LowerAndUpperCase, EndWhereATextEndsInsideACharacter) {
  for (const std::size_t length : {1U, 100U, 254U, 255U, 256U, 300U}) {
    for (const std::string cut : {"\xC3", "\xE3", "\xE3\x81", "\xF0\x9F\x98"}) {
      SCOPED_TRACE(testing::Message() << length << " and " << cut.size());
      const std::string text = std::string(length, 'a') + cut;
      GuardedBuffer<char> buffer(length + 13, text);
      UpperCase(buffer.Get(), static_cast<int>(length) + 13);
      const std::string upper = buffer.Text();
      EXPECT_EQ(upper.substr(0, length + 3), std::string(length, 'A') + kReplacement);
      EXPECT_LE(upper.size(), length + 3 * cut.size());
      EXPECT_TRUE(buffer.GuardsHold());
    }
  }
}

TEST(ConvertToUpperCase, MapsEveryScriptInFull) {
  const struct {
    const char* in;
    const char* upper;
  } rows[] = {
      {"", ""},
      {"abcXYZ09", "ABCXYZ09"},
      {"stra\xC3\x9F"
       "e",
       "STRASSE"},
      {"\xC3\xA9t\xC3\xA9", "\xC3\x89T\xC3\x89"},
      {"\xD0\xB6\xD1\x91", "\xD0\x96\xD0\x81"},
      {"\xCF\x83\xCF\x82", "\xCE\xA3\xCE\xA3"},
      {"\xEF\xAC\x83", "FFI"},    // the ligature U+FB03
      {"\xC5\x89", "\xCA\xBCN"},  // U+0149, longer than before
      {"\xE3\x81\x82", "\xE3\x81\x82"},
      {"\xF0\x90\x90\xA8", "\xF0\x90\x90\x80"},  // beyond the Basic Multilingual Plane
      {"a\x80z", "A\xEF\xBF\xBDZ"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.in);
    const std::string upper = row.upper;
    EXPECT_EQ(ConvertToUpperCase(nullptr, row.in), static_cast<int>(upper.size()));
    GuardedBuffer<char> buffer(upper.size() + 1);
    EXPECT_EQ(ConvertToUpperCase(buffer.Get(), row.in), static_cast<int>(upper.size()));
    buffer.ExpectHolds({upper.c_str(), upper.size() + 1});
  }
}

TEST(ConvertToUpperCase, TakesNullAsEmpty) {
  GuardedBuffer<char> buffer(1);
  EXPECT_EQ(ConvertToUpperCase(nullptr, nullptr), 0);
  EXPECT_EQ(ConvertToUpperCase(buffer.Get(), nullptr), 0);
  buffer.ExpectHolds({"", 1});
}

TEST(ConvertToUpperCase, MapsTextsOfAnyLength) {
  const std::string in(5000, 'a');
  GuardedBuffer<char> buffer(in.size() + 1);
  EXPECT_EQ(ConvertToUpperCase(buffer.Get(), in.c_str()), 5000);
  EXPECT_EQ(buffer.Text(), std::string(5000, 'A'));
}

}  // namespace
