#include <gtest/gtest.h>

#include <string>

#include "tests/support/guarded_buffer.h"
#include "utils/text/text.h"

namespace {

using kv::test::GuardedBuffer;

struct EscapeCase {
  std::string text;
  std::string result;
};

// The escapes that both functions know.
const EscapeCase kCommonEscapes[] = {
    {"", ""},
    {"plain", "plain"},
    {R"(\")", "\""},
    {R"(\\)", "\\"},
    {R"(\n)", "\n"},
    {R"(\r)", "\r"},
    {R"(\s)", " "},
    {R"(\t)", "\t"},
    {R"(a\nb\tc)", "a\nb\tc"},
    {R"(\\n)", "\\n"},
    {R"(a\qb)", "aqb"},
    {R"(\N\S)", "NS"},
    {R"(\0)", "0"},
    {"\\\xE9\xFF", "\xE9\xFF"},
};

TEST(ParseString, ExpandsEscapes) {
  for (const EscapeCase& row : kCommonEscapes) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(ParseString(row.text), row.result);
  }
}

TEST(ParseString, ExpandsHexPairs) {
  const EscapeCase rows[] = {
      {R"(\x41\s)", "A "},
      {R"(\X41)", "A"},
      {R"(\x4a\x4A\xfF)", "JJ\xFF"},
      {R"(\x414)", "A4"},
      {R"(\x00z)", std::string("\0z", 2)},
      {R"(\x4g)", "@"},
      {R"(\xg1z)", "\x01z"},
      {R"(\xzz)", std::string(1, '\0')},
      {R"(\x\n)", std::string(1, '\0')},
  };
  for (const EscapeCase& row : rows) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(ParseString(row.text), row.result);
  }
}

TEST(ParseString, ReadsNulBehindTheEnd) {
  const EscapeCase rows[] = {
      {R"(a\)", std::string("a\0", 2)},
      {R"(\)", std::string(1, '\0')},
      {R"(\x)", std::string(1, '\0')},
      {R"(\x4)", "@"},
      {R"(b\x7)", "bp"},
  };
  for (const EscapeCase& row : rows) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(ParseString(row.text), row.result);
  }
}

TEST(ParseString, ReadsPastNulCharacters) {
  EXPECT_EQ(ParseString(std::string("a\0\\n\\\0b", 7)), std::string("a\0\n\0b", 5));
}

TEST(ParseString2, ExpandsEscapesWithoutTerminator) {
  for (const EscapeCase& row : kCommonEscapes) {
    SCOPED_TRACE(row.text);
    std::string source = row.text;
    GuardedBuffer<char> buffer(row.text.size());
    EXPECT_EQ(ParseString2(source.data(), buffer.Get()), static_cast<int>(row.result.size()));
    buffer.ExpectHolds(row.result);
    EXPECT_EQ(source, row.text);
  }
}

TEST(ParseString2, HasNoHexForm) {
  std::string source = R"(\x41\X41)";
  GuardedBuffer<char> buffer(8);
  EXPECT_EQ(ParseString2(source.data(), buffer.Get()), 6);
  buffer.ExpectHolds("x41X41");
}

TEST(ParseString2, WritesNothingForABackslashAtTheEnd) {
  std::string source = R"(ab\)";
  GuardedBuffer<char> buffer(4);
  EXPECT_EQ(ParseString2(source.data(), buffer.Get()), 2);
  buffer.ExpectHolds("ab");
}

TEST(ParseString2, WorksInPlace) {
  char text[] = R"(a\tb)";
  EXPECT_EQ(ParseString2(text, text), 3);
  EXPECT_EQ(std::string(text, sizeof text), std::string("a\tbb\0", 5));
}

TEST(ParseString2, TakesNull) {
  char text[] = "a";
  EXPECT_EQ(ParseString2(nullptr, text), 0);
  EXPECT_EQ(ParseString2(text, nullptr), 0);
  EXPECT_STREQ(text, "a");
}

}  // namespace
