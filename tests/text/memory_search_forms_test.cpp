#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "tests/reference/memory_search.h"
#include "tests/support/guarded_pages.h"
#include "utils/internal/processor.h"
#include "utils/text/memory_search_pair.h"
#include "utils/text/memory_search_two_way.h"
#include "utils/text/text.h"

namespace {

using kv::internal::BytePair;
using kv::internal::Processor;
using kv::test::GuardedPages;

const unsigned char* Bytes(const char* text) {
  return reinterpret_cast<const unsigned char*>(text);
}

// Of letters from the beginning of the alphabet.
std::string RandomText(std::mt19937& random, std::size_t size, unsigned letters) {
  std::string text(size, '\0');
  for (char& letter : text) letter = static_cast<char>('a' + random() % letters);
  return text;
}

std::string Repeated(std::string_view word, std::size_t size) {
  std::string text;
  while (text.size() < size) text += word;
  text.resize(size);
  return text;
}

// a, ab, aba, abaab, ...: the words that repeat themselves as often as words without a period can.
std::string FibonacciWord(std::size_t size) {
  std::string before = "b";
  std::string word = "a";
  while (word.size() < size) {
    std::string next = word + before;
    before = word;
    word = next;
  }
  word.resize(size);
  return word;
}

int PlainSearch(std::string_view hay, std::string_view needle) {
  return kv::reference::MemorySearch(Bytes(hay.data()), static_cast<unsigned>(hay.size()),
                                     Bytes(needle.data()), static_cast<unsigned>(needle.size()));
}

int Search(std::string_view hay, std::string_view needle) {
  return MemorySearch(Bytes(hay.data()), static_cast<unsigned>(hay.size()), Bytes(needle.data()),
                      static_cast<unsigned>(needle.size()));
}

int SearchTwoWay(std::string_view hay, std::string_view needle) {
  if (hay.size() < needle.size()) return -1;
  const std::size_t places = hay.size() - needle.size() + 1;
  const std::size_t place =
      kv::internal::FindByTwoWay(Bytes(hay.data()), places, {Bytes(needle.data()), needle.size()});
  return place == places ? -1 : static_cast<int>(place);
}

struct PairForm {
  const char* name;
  std::size_t (*find)(const unsigned char* hay, std::size_t places, const BytePair& pair);
  bool Processor::*needs = nullptr;  // what not every processor offers
};

const PairForm kPairForms[] = {
    {"Sse2", kv::internal::FindPairBySse2},
    {"Avx2", kv::internal::FindPairByAvx2, &Processor::avx2},
};

class BytePairs : public testing::TestWithParam<PairForm> {
 protected:
  void SetUp() override {
    const auto needs = GetParam().needs;
    if (needs != nullptr && !(kv::internal::g_processor.*needs))
      GTEST_SKIP() << "this processor lacks the instructions";
  }

  static std::size_t Find(const char* hay, std::size_t places, char first, char second,
                          std::size_t distance) {
    const BytePair pair = {static_cast<unsigned char>(first), static_cast<unsigned char>(second),
                           distance};
    return GetParam().find(Bytes(hay), places, pair);
  }
};

TEST_P(BytePairs, AreFoundAtTheFirstPlace) {
  const char hay[] = "abcabdabd";
  EXPECT_EQ(Find(hay, 7, 'a', 'd', 2), 3U);
  EXPECT_EQ(Find(hay, 3, 'a', 'd', 2), 3U) << "none";
  EXPECT_EQ(Find(hay, 9, 'd', 'd', 0), 5U);
  EXPECT_EQ(Find(hay, 0, 'a', 'a', 0), 0U) << "none";
  EXPECT_EQ(Find(hay, 6, '\x80', 'b', 3), 6U) << "none";
}

// The first byte alone stands at all places before.
TEST_P(BytePairs, AreFoundAtEveryPlaceOfEveryNumberOfPlaces) {
  for (const std::size_t distance : {1U, 16U, 100U}) {
    for (std::size_t places = 1; places <= 200; ++places) {
      SCOPED_TRACE(testing::Message() << distance << ' ' << places);
      for (std::size_t place = 0; place < places; ++place) {
        std::string hay = std::string(place + 1, '\xC3') + std::string(places + distance, '.');
        hay[place + distance] = '\xA9';
        ASSERT_EQ(Find(hay.data(), places, '\xC3', '\xA9', distance), place);
        ASSERT_EQ(Find(hay.data(), place, '\xC3', '\xA9', distance), place) << "none";
        ASSERT_EQ(Find(hay.data(), places, '\xA9', '\xC3', distance), places) << "none";
      }
    }
  }
}

TEST_P(BytePairs, AreLookedForInsideTheHayAlone) {
  const GuardedPages pages(4096);
  for (const std::size_t distance : {0U, 1U, 16U, 99U}) {
    for (std::size_t places = 0; places <= 300; ++places) {
      SCOPED_TRACE(testing::Message() << distance << ' ' << places);
      const std::string hay(places + distance, 'a');
      for (const char* place : {pages.PutFirst(hay), pages.PutLast(hay)}) {
        EXPECT_EQ(Find(place, places, 'a', 'a', distance), 0U);
        EXPECT_EQ(Find(place, places, 'a', 'b', distance), places) << "none";
      }
    }
  }
}

std::string NameOf(const testing::TestParamInfo<PairForm>& info) { return info.param.name; }

INSTANTIATE_TEST_SUITE_P(Each, BytePairs, testing::ValuesIn(kPairForms), NameOf);

// All words of two letters: needles of up to seven in hays of up to thirteen.
TEST(TwoWaySearch, FindsEveryShortNeedleInEveryShortHay) {
  std::vector<std::string> words;
  for (unsigned size = 1; size <= 13; ++size) {
    for (unsigned bits = 0; bits < 1U << size; ++bits) {
      std::string word(size, 'a');
      for (unsigned i = 0; i < size; ++i) word[i] = static_cast<char>('a' + ((bits >> i) & 1));
      words.push_back(word);
    }
  }
  for (const std::string& needle : words) {
    if (needle.size() > 7) break;
    for (const std::string& hay : words)
      ASSERT_EQ(SearchTwoWay(hay, needle), PlainSearch(hay, needle)) << hay << ' ' << needle;
  }
}

TEST(TwoWaySearch, FindsRandomNeedlesOfAllSizes) {
  std::mt19937 random(223606);
  for (int i = 0; i < 200'000; ++i) {
    const unsigned letters = 1 + random() % 3;
    const std::string hay = RandomText(random, random() % 120, letters);
    const std::string needle = RandomText(random, 1 + random() % 24, letters);
    ASSERT_EQ(SearchTwoWay(hay, needle), PlainSearch(hay, needle)) << hay << ' ' << needle;
  }
}

TEST(TwoWaySearch, ReadsNothingBesideHayAndNeedle) {
  const GuardedPages hays(4096);
  const GuardedPages needles(4096);
  std::mt19937 random(244948);
  for (int i = 0; i < 20'000; ++i) {
    const unsigned letters = 1 + random() % 2;
    const std::string hay = RandomText(random, random() % 60, letters);
    const std::string needle = RandomText(random, 1 + random() % 12, letters);
    const int expected = PlainSearch(hay, needle);
    ASSERT_EQ(
        SearchTwoWay({hays.PutFirst(hay), hay.size()}, {needles.PutFirst(needle), needle.size()}),
        expected);
    ASSERT_EQ(
        SearchTwoWay({hays.PutLast(hay), hay.size()}, {needles.PutLast(needle), needle.size()}),
        expected);
  }
}

TEST(MemorySearchForms, FindEveryNeedleSizeInEveryHaySize) {
  const GuardedPages hays(4096);
  const GuardedPages needles(4096);
  std::mt19937 random(264575);
  for (std::size_t haySize = 0; haySize <= 300; ++haySize) {
    for (std::size_t needleSize = 0; needleSize <= 20; ++needleSize) {
      for (const unsigned letters : {1U, 2U, 3U, 26U}) {
        const std::string hay = RandomText(random, haySize, letters);
        std::string needle = RandomText(random, needleSize, letters);
        if (random() % 2 == 0 && haySize > needleSize)
          needle = hay.substr(random() % (haySize - needleSize + 1), needleSize);
        SCOPED_TRACE(hay + " / " + needle);
        const int expected = PlainSearch(hay, needle);
        ASSERT_EQ(Search({hays.PutFirst(hay), haySize}, {needles.PutFirst(needle), needleSize}),
                  expected);
        ASSERT_EQ(Search({hays.PutLast(hay), haySize}, {needles.PutLast(needle), needleSize}),
                  expected);
      }
    }
  }
}

// The ends of the needle stand in most places of the hay, which differs from it in between: the
// search by them is given up on the way.
TEST(MemorySearchForms, FindRepetitiveNeedlesInRepetitiveHay) {
  std::mt19937 random(282842);
  for (int i = 0; i < 3'000; ++i) {
    const std::size_t size = 2 + random() % 90;
    const std::string words[] = {std::string(size, 'a'),       std::string(size - 1, 'a') + 'b',
                                 'b' + std::string(size, 'a'), Repeated("ab", size),
                                 Repeated("ab", size) + 'a',   Repeated("aab", size),
                                 Repeated("abaabaaa", size),   FibonacciWord(size),
                                 FibonacciWord(size) + "aa"};
    const std::string& word = words[random() % std::size(words)];
    std::string hay = Repeated(words[random() % std::size(words)], 500 + random() % 2'000);
    std::string needle = word;
    for (std::size_t j = random() % 4; j > 0; --j) hay[random() % hay.size()] ^= 'a' ^ 'b';
    if (random() % 2 == 0) needle[random() % needle.size()] ^= 'a' ^ 'b';
    if (random() % 2 == 0) hay += needle + word;
    SCOPED_TRACE(hay + " / " + needle);
    const int expected = PlainSearch(hay, needle);
    ASSERT_EQ(Search(hay, needle), expected);
    ASSERT_EQ(SearchTwoWay(hay, needle), expected);
  }
}

TEST(MemorySearchForms, FindOneOtherByteInALongRun) {
  constexpr std::size_t kHaySize = 65535;
  for (const std::size_t size : {3U, 16U, 4096U}) {
    for (const std::size_t place : {std::size_t{0}, std::size_t{1}, size / 2, size - 2, size - 1}) {
      SCOPED_TRACE(testing::Message() << size << ' ' << place);
      std::string hay(kHaySize, 'a');
      std::string needle(size, 'a');
      needle[place] = 'b';
      EXPECT_EQ(Search(hay, needle), -1);
      for (const std::size_t found : {std::size_t{0}, std::size_t{40'000}, kHaySize - size}) {
        hay.assign(kHaySize, 'a');
        hay[found + place] = 'b';
        EXPECT_EQ(Search(hay, needle), static_cast<int>(found));
      }
    }
  }
}

// So few places that preparing anything for the whole needle would be in vain.
TEST(MemorySearchForms, FindNeedlesNearlyAsLongAsTheHay) {
  std::mt19937 random(316227);
  for (const std::size_t size : {100U, 1'000U, 20'000U}) {
    for (std::size_t places = 31; places <= 100; ++places) {
      SCOPED_TRACE(testing::Message() << size << ' ' << places);
      const std::string hay = RandomText(random, size + places - 1, 4);
      EXPECT_EQ(Search(hay, RandomText(random, size, 4)), -1);
      for (const std::size_t place : {std::size_t{0}, places / 2, places - 1})
        EXPECT_EQ(Search(hay, hay.substr(place, size)), static_cast<int>(place));
      std::string almost = hay.substr(places - 1);
      almost[random() % size] = 'z';
      EXPECT_EQ(Search(hay, almost), -1);
    }
  }
}

// The first byte that differs is another one at every place, and it differs late: only a search in
// linear time comes to an end.
TEST(MemorySearchForms, FindMebibytesThatDifferLateInLinearTime) {
  constexpr std::size_t kMebi = std::size_t{1} << 20;
  const std::string needle(4 * kMebi + 1, 'a');
  const std::string hay = Repeated(std::string(4 * kMebi, 'a') + 'b', 16 * kMebi);
  EXPECT_EQ(Search(hay, needle), -1);
  EXPECT_EQ(Search(hay + needle, needle), 12'582'915);
}

TEST(MemorySearchForms, FindMebibytesWithOneOtherByteInLinearTime) {
  constexpr std::size_t kMebi = std::size_t{1} << 20;
  const std::string hay(16 * kMebi, 'a');
  for (const std::size_t place : {std::size_t{0}, 4 * kMebi, 8 * kMebi - 1}) {
    std::string needle(8 * kMebi, 'a');
    needle[place] = 'b';
    EXPECT_EQ(Search(hay, needle), -1) << place;
    EXPECT_EQ(SearchTwoWay(hay, needle), -1) << place;
  }
}

}  // namespace
