// CompareStringWithNumber beside its defining form.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "tests/reference/natural_order.h"
#include "tests/support/guarded_pages.h"
#include "utils/internal/number_scan.h"
#include "utils/text/text.h"

namespace {

using kv::internal::BeginsWithEightDigits;
using kv::test::GuardedPages;

class Names {
 public:
  // A short name of letters and numbers, or one that differs little from `other`.
  std::string Next(const std::string& other) {
    if (Choose(3) == 0) return Random();
    std::string name = other;
    for (unsigned changes = Choose(3); changes > 0; --changes) Change(name);
    return name;
  }

  std::string Random() {
    std::string name;
    for (unsigned pieces = Choose(5); pieces > 0; --pieces) name += Piece();
    return name;
  }

 private:
  unsigned Choose(unsigned count) { return random_() % count; }

  char Character() {
    static constexpr char kUsual[] = "aAbBzZ 0019/:@[`{.-\x7F\x80\xC9\xE9\xFF";
    if (Choose(8) > 0) return kUsual[Choose(sizeof kUsual - 1)];
    return static_cast<char>(Choose(255) + 1);
  }

  std::string Digits(unsigned count) {
    std::string digits(count, '0');
    for (char& digit : digits) digit = static_cast<char>('0' + Choose(10));
    return digits;
  }

  std::string Piece() {
    switch (Choose(8)) {
      case 0:
        return std::string(Choose(4), '0') + Digits(Choose(4));
      case 1:
        return Digits(8 + Choose(4));
      case 2:  // at the limits of int
        return std::to_string(2147483640LL + Choose(16));
      case 3:
        return std::to_string(4294967290LL + Choose(12));
      case 4:
        return std::string(Choose(12), '0') + Digits(Choose(25));
      case 5:
        return Digits(1 + Choose(3));
      default:
        return std::string(1 + Choose(3), Character());
    }
  }

  void Change(std::string& name) {
    const std::size_t place = Choose(static_cast<unsigned>(name.size()) + 1);
    switch (Choose(4)) {
      case 0:
        name.insert(place, 1, Character());
        break;
      case 1:
        name.insert(place, 1, '0');
        break;
      case 2:
        if (place < name.size()) name[place] = Character();
        break;
      default:
        name.erase(place, 1);
    }
  }

  std::mt19937 random_{20240307};
};

TEST(EightDigits, AreSeenWhereNoOtherByteStandsAmongThemAndThePageGoesOn) {
  const GuardedPages pages(8);
  char* const text = pages.PutFirst("90123456\xFF");
  EXPECT_TRUE(BeginsWithEightDigits(text));
  EXPECT_TRUE(BeginsWithEightDigits(pages.PutLast("12345678")));
  EXPECT_FALSE(BeginsWithEightDigits(pages.PutLast("1234567")));
  for (std::size_t place = 0; place < 8; ++place) {
    for (unsigned byte = 0; byte < 256; ++byte) {
      SCOPED_TRACE(testing::Message() << byte << " at " << place);
      const char digit = text[place];
      text[place] = static_cast<char>(byte);
      EXPECT_EQ(BeginsWithEightDigits(text), byte >= '0' && byte <= '9');
      text[place] = digit;
    }
  }
}

TEST(NaturalOrderEquality, ComparesMillionsOfPairs) {
  constexpr std::size_t kRoom = 512;
  constexpr int kPairs = 3'000'000;
  const GuardedPages pages(kRoom);
  const GuardedPages otherPages(kRoom);
  Names names;
  std::string other;
  for (int i = 0; i < kPairs; ++i) {
    const std::string name = names.Next(other);
    const std::string_view text(name.c_str(), name.size() + 1);
    const char* a = i % 2 == 0 ? pages.PutLast(text) : pages.PutFirst(text);
    const char* b = otherPages.PutLast(std::string_view(other.c_str(), other.size() + 1));
    const int expected = kv::reference::CompareNatural(a, b);
    ASSERT_EQ(CompareStringWithNumber(a, b), expected)
        << testing::PrintToString(name) << " against " << testing::PrintToString(other);
    other = i % 4 == 0 ? names.Random() : name;
  }
}

// Behind a common beginning, every pair of bytes.
TEST(NaturalOrderEquality, ComparesEveryPairOfBytes) {
  for (const char* beginning : {"", "x", "7", "007", "1234567890"}) {
    for (unsigned first = 0; first < 256; ++first) {
      for (unsigned second = 0; second < 256; ++second) {
        const std::string a = std::string(beginning) + static_cast<char>(first);
        const std::string b = std::string(beginning) + static_cast<char>(second);
        ASSERT_EQ(CompareStringWithNumber(a.c_str(), b.c_str()),
                  kv::reference::CompareNatural(a.c_str(), b.c_str()))
            << testing::PrintToString(a) << " against " << testing::PrintToString(b);
      }
    }
  }
}

}  // namespace
