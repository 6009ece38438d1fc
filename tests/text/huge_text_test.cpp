// Texts whose length is at the limit of the interface's counts.
#include <gtest/gtest.h>

#include <climits>
#include <cstddef>

#include "tests/support/huge_text.h"
#include "utils/text/text.h"

namespace {

using kv::test::HugeText;

constexpr std::size_t kLargestInt = INT_MAX;

TEST(HugeText, UnescapeCountsUpToTheLargestInt) {
  HugeText longest(kLargestInt);
  ASSERT_NE(longest.Get(), nullptr);
  EXPECT_EQ(unescape(nullptr, longest.Get()), INT_MAX);
}

TEST(HugeText, UnescapeRefusesMore) {
  HugeText tooLong(kLargestInt + 1);
  ASSERT_NE(tooLong.Get(), nullptr);
  char out[2] = "x";
  EXPECT_EQ(unescape(out, tooLong.Get()), -1);
  EXPECT_STREQ(out, "x");
}

TEST(HugeText, ParseString2CountsNoMoreThanTheLargestInt) {
  HugeText text(kLargestInt + 10);
  ASSERT_NE(text.Get(), nullptr);
  EXPECT_EQ(ParseString2(text.Get(), text.Get()), INT_MAX);
  EXPECT_EQ(text.Get()[kLargestInt + 9], 'a');
}

TEST(HugeText, UpperCaseOfMoreThanIcuHoldsIsEmpty) {
  HugeText text(kLargestInt);
  ASSERT_NE(text.Get(), nullptr);
  EXPECT_EQ(ConvertToUpperCase(nullptr, text.Get()), 0);
  char out[2] = "x";
  EXPECT_EQ(ConvertToUpperCase(out, text.Get()), 0);
  EXPECT_STREQ(out, "");
}

}  // namespace
