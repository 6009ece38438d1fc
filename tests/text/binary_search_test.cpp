#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <vector>

#include "utils/text/text.h"

namespace {

// Compares ints and keeps what it was asked about.
class IntComparator final : public Comparator {
 public:
  int Compare(const void* key, const void* element) override {
    const int value = *static_cast<const int*>(element);
    asked.push_back(value);
    return *static_cast<const int*>(key) - value;
  }

  std::vector<int> asked;
};

struct SearchCase {
  std::vector<int> array;
  int key;
  std::size_t place;
  std::vector<int> asked;
};

TEST(BinarySearch, EndsAtAnElement) {
  const SearchCase rows[] = {
      {{5}, 5, 0, {5}},
      {{5}, 1, 0, {5}},
      {{5}, 9, 0, {5}},
      {{1, 3}, 1, 0, {1}},
      {{1, 3}, 3, 1, {1, 3}},
      {{1, 3}, 0, 0, {1}},
      {{1, 3}, 2, 1, {1, 3}},
      {{1, 3}, 9, 1, {1, 3}},
      {{1, 3, 7}, 5, 2, {3, 7}},
      {{1, 3, 7}, 0, 0, {3, 1}},
      {{1, 3, 7}, 2, 0, {3, 1}},
      {{1, 3, 7}, 3, 1, {3}},
      {{1, 3, 7}, 9, 2, {3, 7}},
      {{1, 3, 5, 7}, 0, 0, {3, 1}},
      {{1, 3, 5, 7}, 2, 0, {3, 1}},
      {{1, 3, 5, 7}, 4, 2, {3, 5}},
      {{1, 3, 5, 7}, 6, 3, {3, 5, 7}},
      {{1, 3, 5, 7}, 9, 3, {3, 5, 7}},
      {{1, 3, 5, 7, 9}, 5, 2, {5}},
      {{1, 3, 5, 7, 9}, 4, 1, {5, 1, 3}},
      {{1, 3, 5, 7, 9}, 0, 0, {5, 1}},
      {{1, 3, 5, 7, 9}, 8, 4, {5, 7, 9}},
      {{1, 3, 5, 7, 9}, 6, 3, {5, 7}},
      {{1, 1, 1}, 1, 1, {1}},
  };
  for (const SearchCase& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.array));
    SCOPED_TRACE(row.key);
    IntComparator comparator;
    EXPECT_EQ(BinarySearch(&row.key, row.array.data(), row.array.size(), sizeof(int), &comparator),
              row.array.data() + row.place);
    EXPECT_EQ(comparator.asked, row.asked);
  }
}

TEST(BinarySearch, FindsEveryElement) {
  std::vector<int> array;
  for (int count = 1; count <= 100; ++count) {
    array.push_back(2 * count);
    for (const int& element : array) {
      IntComparator comparator;
      EXPECT_EQ(BinarySearch(&element, array.data(), array.size(), sizeof(int), &comparator),
                &element);
    }
  }
}

TEST(BinarySearch, StepsByTheElementSize) {
  struct Wide {
    int key;
    char rest[12];
  };
  const Wide array[] = {{1, {}}, {3, {}}, {7, {}}};
  const int key = 7;
  IntComparator comparator;
  EXPECT_EQ(BinarySearch(&key, array, 3, sizeof(Wide), &comparator), array + 2);
}

TEST(BinarySearch, GivesTheArrayWhenThereIsNothingToSearch) {
  const int array[] = {1, 3};
  const int key = 3;
  IntComparator comparator;
  EXPECT_EQ(BinarySearch(&key, array, 0, sizeof(int), &comparator), array);
  EXPECT_EQ(BinarySearch(&key, array, 2, sizeof(int), nullptr), array);
  EXPECT_EQ(BinarySearch(&key, nullptr, 0, sizeof(int), &comparator), nullptr);
  EXPECT_TRUE(comparator.asked.empty());
}

// With elements of size 0 the counts are free: every element is the first one.
TEST(BinarySearch, TakesHalfTheCountAsThirtyTwoBits) {
  const struct {
    unsigned long long count;
    int key;
    std::vector<int> asked;
  } rows[] = {
      {0x200000000, 9, {}},      // half is 2^32, cut to 0
      {0x200000001, 9, {}},      // the same, with an odd count
      {0x200000002, 9, {5, 5}},  // half is cut to 1
      {0x200000002, 1, {5}},    {0x200000003, 1, {5, 5}}, {0x200000002, 5, {5}},
  };
  const int element = 5;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.count);
    IntComparator comparator;
    EXPECT_EQ(BinarySearch(&row.key, &element, row.count, 0, &comparator), &element);
    EXPECT_EQ(comparator.asked, row.asked);
  }
}

TEST(Comparator, HasCompareInItsFirstVirtualSlot) {
  static_assert(sizeof(Comparator) == sizeof(void*));
  using Compare = int (*)(Comparator*, const void*, const void*);
  IntComparator comparator;
  Comparator* base = &comparator;
  const Compare* slots = nullptr;
  std::memcpy(&slots, base, sizeof slots);
  const int key = 9;
  const int element = 4;
  EXPECT_EQ(slots[0](base, &key, &element), 5);
  EXPECT_EQ(comparator.asked, std::vector<int>{4});
}

}  // namespace
