#include <gtest/gtest.h>

#include <climits>
#include <vector>

#include "utils/text/text.h"

namespace {

using Bytes = std::vector<unsigned char>;

struct SwapCase {
  std::vector<int> layout;
  Bytes after;
};

TEST(SwapStruct, ReversesFieldsOfTwoFourAndEightBytes) {
  const SwapCase rows[] = {
      {{}, {1, 2, 3, 4, 5, 6, 7, 8, 9}},        {{4, -2, 2}, {4, 3, 2, 1, 5, 6, 8, 7, 9}},
      {{2}, {2, 1, 3, 4, 5, 6, 7, 8, 9}},       {{8}, {8, 7, 6, 5, 4, 3, 2, 1, 9}},
      {{1, 8}, {1, 9, 8, 7, 6, 5, 4, 3, 2}},    {{1, 2, 1, 2}, {1, 3, 2, 4, 6, 5, 7, 8, 9}},
      {{3, 4}, {1, 2, 3, 7, 6, 5, 4, 8, 9}},    {{-4, -4}, {1, 2, 3, 4, 5, 6, 7, 8, 9}},
      {{-8}, {1, 2, 3, 4, 5, 6, 7, 8, 9}},      {{0, 2, 0, 2}, {2, 1, 4, 3, 5, 6, 7, 8, 9}},
      {{6, 2}, {1, 2, 3, 4, 5, 6, 8, 7, 9}},    {{INT_MAX}, {1, 2, 3, 4, 5, 6, 7, 8, 9}},
      {{INT_MIN}, {1, 2, 3, 4, 5, 6, 7, 8, 9}},
  };
  for (const SwapCase& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.layout));
    Bytes data = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    SwapStruct(data.data(), row.layout.data(), static_cast<int>(row.layout.size()));
    EXPECT_EQ(data, row.after);
  }
}

TEST(SwapStruct, TakesTheFirstFieldsOfTheLayout) {
  Bytes data = {1, 2, 3, 4};
  const int layout[] = {2, 2};
  SwapStruct(data.data(), layout, 1);
  EXPECT_EQ(data, (Bytes{2, 1, 3, 4}));
}

TEST(SwapStruct, DoesNothingForNoFields) {
  Bytes data = {1, 2, 3, 4};
  const int layout[] = {4};
  SwapStruct(data.data(), layout, 0);
  SwapStruct(data.data(), layout, -1);
  SwapStruct(data.data(), layout, INT_MIN);
  SwapStruct(data.data(), nullptr, 1);
  SwapStruct(nullptr, layout, 1);
  EXPECT_EQ(data, (Bytes{1, 2, 3, 4}));
}

}  // namespace
