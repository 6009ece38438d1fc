#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "tests/support/guarded_buffer.h"
#include "utils/text/text.h"

namespace {

using kv::test::GuardedBuffer;

struct Replacement {
  const char* text;
  const char* find;
  const char* repl;
  const char* after;
  int count;
};

const Replacement kReplacements[] = {
    {"", "a", "b", "", 0},
    {"abc", "x", "y", "abc", 0},
    {"abc", "b", "", "ac", 1},
    {"abc", "b", nullptr, "ac", 1},
    {"aaa", "a", "aa", "aaaaaa", 3},
    {"aaa", "aa", "b", "ba", 1},
    {"aaaa", "aa", "a", "aa", 2},
    {"abab", "ab", "ba", "baba", 2},
    {"one two one", "one", "three", "three two three", 2},
    {"abc", "abc", "", "", 1},
    {"abc", "abcd", "x", "abc", 0},
    {"abc", "", "x", "abc", 0},
    {"abc", nullptr, "x", "abc", 0},
    {"\xC3\xA9", "\xA9", "\xA8", "\xC3\xA8", 1},
};

TEST(ReplaceSubstring, ReplacesEveryOccurrence) {
  for (const Replacement& row : kReplacements) {
    SCOPED_TRACE(testing::Message() << row.text << " -> " << row.after);
    GuardedBuffer<char> buffer(32, row.text);
    const std::string after = row.after;
    EXPECT_EQ(ReplaceSubstring(buffer.Get(), 31, row.find, row.repl),
              static_cast<int>(after.size()));
    EXPECT_EQ(buffer.Text(), after);
  }
}

TEST(ReplaceSubstring, TakesAResultOfExactlyTheBufferSize) {
  const struct {
    const char* text;
    int bufSize;
    int result;
    const char* after;
  } rows[] = {
      {"a.b", 4, 4, "a--b"},   {"a.b", 5, 4, "a--b"},  {"a.b", 3, -1, "a.b"},
      {"a.b", 0, -1, "a.b"},   {"a.b", -1, -1, "a.b"}, {"....", 8, 8, "--------"},
      {"....", 7, -1, "...."}, {"abc", 3, 3, "abc"},   {"abc", 2, -1, "abc"},
      {"", 0, 0, ""},          {"", -1, -1, ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.text << " in " << row.bufSize);
    const std::size_t used = std::max(std::string(row.text).size(), std::string(row.after).size());
    GuardedBuffer<char> buffer(used + 1, row.text);
    EXPECT_EQ(ReplaceSubstring(buffer.Get(), row.bufSize, ".", "--"), row.result);
    EXPECT_EQ(buffer.Text(), row.after);
    EXPECT_EQ(buffer.Get()[used + 1], GuardedBuffer<char>::kGuard);
  }
}

TEST(ReplaceSubstring, RefusesGrowthFarBeyondTheBuffer) {
  GuardedBuffer<char> buffer(8, "aaaaaaa");
  const std::string large(10000, 'x');
  EXPECT_EQ(ReplaceSubstring(buffer.Get(), 7, "a", large.c_str()), -1);
  buffer.ExpectHolds({"aaaaaaa", 8});
  EXPECT_EQ(ReplaceSubstring(nullptr, 7, "a", "b"), -1);
}

TEST(ReplaceSubstring, GivesTheLengthForAnEmptyFindString) {
  GuardedBuffer<char> buffer(4, "abc");
  EXPECT_EQ(ReplaceSubstring(buffer.Get(), 3, "", "xyz"), 3);
  buffer.ExpectHolds({"abc", 4});
}

TEST(FindAndReplace, ReplacesAndCounts) {
  for (const Replacement& row : kReplacements) {
    SCOPED_TRACE(testing::Message() << row.text << " -> " << row.after);
    std::string s = row.text;
    EXPECT_EQ(findAndReplace(s, row.find, row.repl), row.count);
    EXPECT_EQ(s, row.after);
  }
}

TEST(FindAndReplace, SearchesBehindNulCharacters) {
  std::string s("a\0b\0b", 5);
  EXPECT_EQ(findAndReplace(s, "b", "cd"), 2);
  EXPECT_EQ(s, std::string("a\0cd\0cd", 7));
}

TEST(FindAndReplace, TakesItsOwnTextAsArguments) {
  std::string s = "abab";
  EXPECT_EQ(findAndReplace(s, s.c_str() + 3, s.c_str()), 2);
  EXPECT_EQ(s, "aababaabab");
}

}  // namespace
