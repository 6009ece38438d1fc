#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "utils/text/text.h"

namespace {

int Search(const std::string& hay, const std::string& needle) {
  return MemorySearch(
      reinterpret_cast<const unsigned char*>(hay.data()), static_cast<unsigned>(hay.size()),
      reinterpret_cast<const unsigned char*>(needle.data()), static_cast<unsigned>(needle.size()));
}

TEST(MemorySearch, FindsTheFirstOccurrence) {
  const struct {
    std::string hay;
    std::string needle;
    int offset;
  } rows[] = {
      {"abcabc", "abc", 0},
      {"abcabc", "bc", 1},
      {"abcabc", "ca", 2},
      {"abcabc", "abcabc", 0},
      {"aab", "ab", 1},
      {"aaab", "aab", 1},
      {"abc", "c", 2},
      {"abc", "d", -1},
      {"abc", "abd", -1},
      {"abc", "abcd", -1},
      {"ab", "bc", -1},
      {"", "a", -1},
      {"abc", "", 0},
      {"", "", 0},
      {std::string("a\0b\0c", 5), std::string("\0c", 2), 3},
      {"\xFF\xFE\xFF\x80", "\xFF\x80", 2},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.hay + " / " + row.needle);
    EXPECT_EQ(Search(row.hay, row.needle), row.offset);
  }
}

TEST(MemorySearch, LooksAtNothingBehindTheHay) {
  const unsigned char hay[] = {1, 2, 3, 4};
  EXPECT_EQ(MemorySearch(hay, 3, hay + 2, 2), -1);
  EXPECT_EQ(MemorySearch(hay, 4, hay + 2, 2), 2);
  EXPECT_EQ(MemorySearch(hay, 3, hay, 4), -1);
}

TEST(MemorySearch, FindsNullOnlyWhenItIsEmpty) {
  const unsigned char byte[] = {1};
  const struct {
    const unsigned char* hay;
    unsigned haySize;
    const unsigned char* needle;
    unsigned needleSize;
    int offset;
  } rows[] = {
      {nullptr, 0, byte, 1, -1}, {nullptr, 5, byte, 1, -1},    {byte, 1, nullptr, 1, -1},
      {byte, 1, nullptr, 5, -1}, {nullptr, 5, nullptr, 5, -1}, {byte, 1, nullptr, 0, 0},
      {nullptr, 5, byte, 0, 0},  {nullptr, 0, nullptr, 0, 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.haySize << " / " << row.needleSize);
    EXPECT_EQ(MemorySearch(row.hay, row.haySize, row.needle, row.needleSize), row.offset);
  }
}

TEST(MemorySearch, FindsNothingBeyondTheRangeOfInt) {
  constexpr unsigned kSize = 0x80000010;
  auto* hay = static_cast<unsigned char*>(
      ::VirtualAlloc(nullptr, kSize, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
  ASSERT_NE(hay, nullptr) << "needs 2 GB of address space";
  const unsigned char needle[] = {7};
  hay[kSize - 1] = 7;
  hay[0x80000000] = 7;
  EXPECT_EQ(MemorySearch(hay, kSize, needle, 1), -1);
  hay[0x7FFFFFFF] = 7;
  EXPECT_EQ(MemorySearch(hay, kSize, needle, 1), 0x7FFFFFFF);
  ::VirtualFree(hay, 0, MEM_RELEASE);
}

}  // namespace
