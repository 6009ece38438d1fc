// The decision of two texts at their first difference, under weights of the test.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

#include "tests/support/guarded_pages.h"
#include "tests/text/collation_pairs.h"
#include "utils/text/collation_walk.h"

namespace kv::internal {

void PrintTo(Verdict verdict, std::ostream* out) { *out << static_cast<int>(verdict); }

namespace {

using kv::test::GuardedPages;

constexpr std::size_t kMostBytes = 40;

// Printable characters by their codes, capitals as small letters; all others are ignored.
ByteWeights Weights() {
  ByteWeights weights;
  weights.fill(kUnknown);
  weights[0] = kEndOfText;
  for (unsigned byte = 1; byte < 0x80; ++byte) {
    const bool isCapital = byte >= 'A' && byte <= 'Z';
    const unsigned letter = isCapital ? byte + ('a' - 'A') : byte;
    const unsigned weight = kFirstOrdinary + (letter - ' ') * kVariants + (isCapital ? 1 : 0);
    weights[byte] = byte < ' ' || byte == 0x7F ? kIgnored : static_cast<CollationWeight>(weight);
  }
  weights['-'] = weights['\''] = kIgnored;
  std::fill(&weights[kFirstLead], &weights[kLastLead] + 1, kLeadByte);
  return weights;
}

LetterWeights NoLetters() {
  LetterWeights letters;
  letters.fill(kUnknown);
  return letters;
}

const ByteWeights kWeights = Weights();
const LetterWeights kLetters = NoLetters();

// Of copies with so much behind them that every block can be read.
class Copies {
 public:
  Verdict Compare(std::string_view a, std::string_view b, const ByteWeights& weights = kWeights) {
    return CompareAtFirstDifference(Put(pageOfA_, a), Put(pageOfB_, b), weights);
  }

 private:
  // From the beginning of a page.
  static const char* Put(const GuardedPages& pages, std::string_view text) {
    return pages.PutFirst(std::string(text) + '\0');
  }

  GuardedPages pageOfA_{1};
  GuardedPages pageOfB_{1};
};

class CollationWalk : public testing::Test {
 protected:
  // `a` and `b` behind equal beginnings of every length.
  void Expect(Verdict verdict, const std::string& a, const std::string& b,
              const ByteWeights& weights = kWeights) {
    const std::string beginning = "Two names - (which) begin 'alike' for 40";
    for (std::size_t size = 0; size <= beginning.size(); ++size) {
      const std::string before = beginning.substr(0, size);
      SCOPED_TRACE(testing::PrintToString(before + a) + " / " + testing::PrintToString(b));
      EXPECT_EQ(copies_.Compare(before + a, before + b, weights), verdict);
    }
  }
  // In either direction.
  void ExpectUndecided(const std::string& a, const std::string& b,
                       const ByteWeights& weights = kWeights) {
    Expect(Verdict::kUndecided, a, b, weights);
    Expect(Verdict::kUndecided, b, a, weights);
  }

  Copies copies_;
};

TEST_F(CollationWalk, DecidesAtTwoOrdinaryCharactersOfOneByte) {
  const struct {
    const char* before;
    const char* after;
  } rows[] = {
      {"a", "b"},      {"a", "B"},     {"A", "b"}, {" ", "!"}, {" ", "~"}, {"az", "b"},
      {"a", "bcdefg"}, {"9z", "az\n"}, {"(", ")"}, {"(", "1"}, {")", "a"},
  };
  for (const auto& row : rows) {
    Expect(Verdict::kBefore, row.before, row.after);
    Expect(Verdict::kAfter, row.after, row.before);
  }
}

TEST_F(CollationWalk, DecidesWhateverFollows) {
  for (const char* behind : {"", "z", "\xCC\x81", "\xC3\xA9", "-", "\x01", "\xFF"}) {
    Expect(Verdict::kBefore, std::string("e") + behind, "f");
    Expect(Verdict::kAfter, "f", std::string("e") + behind);
    Expect(Verdict::kAfter, std::string("f") + behind, "e");
  }
}

TEST_F(CollationWalk, LeavesOtherDifferences) {
  for (const char* other : {"", "-", "'", "\x01", "\x1F", "\x7F", "\xC3\xA9", "\xD0\xB0",
                            "\xE3\x81\x82", "\xCC\x81", "\x80", "\xFF"}) {
    ExpectUndecided(other, "a");
  }
  ExpectUndecided("\xC3\xA9z", "a");
  ExpectUndecided("a", "A");
  ExpectUndecided("az", "Ab");
  ExpectUndecided("\xC3\xA9", "\xC3\xA8");
  ExpectUndecided("-", "'");
}

TEST_F(CollationWalk, LeavesUnknownCharactersAndThoseThatAreSkipped) {
  ByteWeights weights = kWeights;
  weights['q'] = kUnknown;
  weights['('] = weights[')'] = kSkipped;
  for (const char* other : {"q", "(", ")"}) {
    ExpectUndecided(other, "a", weights);
    ExpectUndecided(other, "~", weights);
    ExpectUndecided(std::string(other) + "a", "a", weights);
  }
  ExpectUndecided("(", ")", weights);
  Expect(Verdict::kBefore, "(a)", "(b)", weights);
  Expect(Verdict::kAfter, ")b", ")a", weights);
}

TEST_F(CollationWalk, LeavesWhatFollowsControlCharactersAndLetters) {
  for (const char* stop : {"\x01", "\t", "\n", "\x1F", "\x80", "\xC3\xA9", "\xCC\x81", "\xFF"}) {
    ExpectUndecided(std::string(stop) + "a", std::string(stop) + "b");
    ExpectUndecided(std::string("x") + stop + "a", std::string("x") + stop + "b");
  }
}

TEST_F(CollationWalk, LeavesEqualTexts) {
  Expect(Verdict::kUndecided, "", "");
  const std::string name(1000, 'x');
  EXPECT_EQ(copies_.Compare(name, name), Verdict::kUndecided);
  EXPECT_EQ(copies_.Compare(name + '\0' + "a", name + '\0' + "b"), Verdict::kUndecided);
}

// What can be read ends with a text, or with both; where it does not, the block in the page
// decides.
TEST_F(CollationWalk, ReadsNothingBehindThePageInWhichATextEnds) {
  const GuardedPages pageOfA(1);
  const GuardedPages pageOfB(1);
  const auto check = [](const char* a, const char* b, bool isWhole) {
    const Verdict verdict = CompareAtFirstDifference(a, b, kWeights);
    if (!isWhole && verdict == Verdict::kUndecided) return;
    ASSERT_EQ(verdict, CompareWeights(a, b, kWeights, kLetters)) << a << " / " << b;
  };
  for (std::size_t place = 0; place <= kMostBytes; ++place) {
    for (std::size_t rest = 0; rest <= kMostBytes; ++rest) {
      const std::string before(place, 'n');
      const std::string a = before + 'a' + std::string(rest, 'x') + '\0';
      const std::string b = before + 'b' + std::string(rest, 'y') + '\0';
      // The block of the difference ends with the terminator or before it.
      const bool isWhole = place / 16 * 16 + 16 <= a.size();
      check(pageOfA.PutLast(a), pageOfB.PutLast(b), isWhole);
      check(pageOfA.PutLast(a), pageOfB.PutFirst(b), isWhole);
      check(pageOfA.PutFirst(a), pageOfB.PutLast(b), isWhole);
      check(pageOfA.PutFirst(b), pageOfB.PutFirst(a), true);
    }
  }
}

TEST_F(CollationWalk, ReadsNothingBehindThePageInWhichEqualTextsEnd) {
  const GuardedPages pageOfA(1);
  const GuardedPages pageOfB(1);
  for (std::size_t size = 0; size <= kMostBytes; ++size) {
    for (std::size_t more = 0; more <= kMostBytes; ++more) {
      const std::string a = std::string(size, 'n') + '\0';
      const std::string b = std::string(size + more, 'n') + '\0';
      for (const char* textOfA : {pageOfA.PutLast(a), pageOfA.PutFirst(a)}) {
        EXPECT_EQ(CompareAtFirstDifference(textOfA, pageOfB.PutLast(b), kWeights),
                  Verdict::kUndecided);
      }
      const char* textOfA = pageOfA.PutLast(a);
      EXPECT_EQ(CompareAtFirstDifference(textOfA, pageOfB.PutFirst(b), kWeights),
                Verdict::kUndecided);
      EXPECT_EQ(CompareAtFirstDifference(pageOfB.PutFirst(b), textOfA, kWeights),
                Verdict::kUndecided);
    }
  }
}

TEST_F(CollationWalk, DecidesAsTheWalkOrNotAtAll) {
  kv::test::RandomPairs pairs(
      {{'a', 'c', 8}, {'A', 'C'}, {'(', ')'}, {' ', ' '}, {'-', '-'}, {0x01, 0x7F}, {0xE8, 0xE9}},
      60, 20240229);
  ByteWeights skipping = kWeights;
  skipping['('] = skipping[')'] = kSkipped;
  int decided = 0;
  constexpr int kPairs = 100'000;
  for (int pair = 0; pair < kPairs; ++pair) {
    pairs.Next();
    for (const ByteWeights* weights : {&kWeights, &std::as_const(skipping)}) {
      const char* a = pairs.A().c_str();
      const char* b = pairs.B().c_str();
      const Verdict verdict = CompareAtFirstDifference(a, b, *weights);
      if (verdict == Verdict::kUndecided) continue;
      ++decided;
      ASSERT_EQ(verdict, CompareWeights(a, b, *weights, kLetters)) << a << " / " << b;
    }
  }
  EXPECT_GT(decided, kPairs / 4);
}

}  // namespace
}  // namespace kv::internal
