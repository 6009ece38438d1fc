#include "utils/text/collation_contractions.h"

#include "utils/text/collation_system.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <tuple>

namespace kv::internal {
namespace {

// Of the marks that join the letter before them, those by which an order may make other letters:
// the first four make letters of Cyrillic ones, the cedilla of Latin ones.
constexpr wchar_t kMarks[] = {0x300, 0x301, 0x306, 0x308, 0x327};

struct Letter {
  wchar_t character;
  CollationWeight weight;
};

constexpr bool IsBelow(Letter a, Letter b) { return a.weight < b.weight; }

// The letters that have a rank, in its order, and a digit before them.
class RankedLetters {
 public:
  RankedLetters(Alphabet alphabet, const CollationRanks& ranks) {
    Add(L'9', L'9', ranks);
    Add(L'a', L'z', ranks);
    if (alphabet == Alphabet::kWithLetters) {
      Add(L'A', L'Z', ranks);
      Add(kFirstLetter, kLastLetter, ranks);
    }
    std::sort(letters_.data(), end_, IsBelow);
  }
  RankedLetters(const RankedLetters&) = delete;
  RankedLetters& operator=(const RankedLetters&) = delete;

  [[nodiscard]] const Letter* begin() const { return letters_.data(); }
  [[nodiscard]] const Letter* end() const { return end_; }

  // The first letter of the rank, and the first behind it.
  [[nodiscard]] const Letter* FirstOf(Letter letter) const {
    letter.weight = static_cast<CollationWeight>(letter.weight / kVariants * kVariants);
    return std::lower_bound(begin(), end(), letter, IsBelow);
  }
  [[nodiscard]] const Letter* Behind(Letter letter) const {
    letter.weight = static_cast<CollationWeight>(letter.weight | (kVariants - 1));
    return std::upper_bound(begin(), end(), letter, IsBelow);
  }

 private:
  static constexpr std::size_t kMost = 1 + 26 + 26 + std::tuple_size_v<LetterWeights>;

  void Add(wchar_t first, wchar_t last, const CollationRanks& ranks) {
    for (unsigned character = first; character <= last; ++character) {
      const auto unit = static_cast<wchar_t>(character);
      const CollationWeight weight = WeightOf(ranks, unit);
      if (weight >= kFirstOrdinary) *end_++ = {unit, weight};
    }
  }

  std::array<Letter, kMost> letters_;
  Letter* end_ = letters_.data();
};

void DropRank(CollationWeight weight, CollationRanks& ranks) {
  const auto hasRank = [weight](CollationWeight other) { return HaveOneRank(weight, other); };
  std::replace_if(ranks.bytes.begin(), ranks.bytes.end(), hasRank, kUnknown);
  std::replace_if(ranks.letters.begin(), ranks.letters.end(), hasRank, kUnknown);
}

// Finds contractions.
//
// The ranks decide where two texts first differ, so a letter has to keep its rank whatever follows
// it. Let z be the last letter, x any, w and y letters of the ranks before and behind x. A word
// "xb" that counts as one letter is nowhere else than its ranks say if for all neighbours a and b
// "xaz" is before "xb"; among these are "xxz" and "xy", which tell it of "xz". A mark m leaves x in
// place if "wz" is before "xm" and "xmz" before "y". Capitals join what small letters join.
class Finder {
 public:
  Finder(unsigned flags, Alphabet alphabet, const CollationRanks& ranks)
      : flags_(flags), words_(Alphabet::kAscii, ranks), letters_(alphabet, ranks) {}

  void Drop(CollationRanks& ranks) const {
    for (const Letter x : words_) {
      if (BeginsAWord(x)) DropRank(x.weight, ranks);
    }
    for (const Letter x : letters_) {
      if (JoinsAMark(x)) DropRank(x.weight, ranks);
    }
  }

 private:
  template <std::size_t sizeOfA, std::size_t sizeOfB>
  [[nodiscard]] bool IsBefore(const wchar_t (&a)[sizeOfA], const wchar_t (&b)[sizeOfB]) const {
    return CompareUnits(a, int{sizeOfA}, b, int{sizeOfB}, flags_) == -1;
  }

  [[nodiscard]] bool BeginsAWord(Letter x) const {
    const wchar_t z = words_.end()[-1].character;
    const Letter* a = words_.begin();
    for (const Letter* b = words_.Behind(*a); b != words_.end(); a = b, b = words_.Behind(*a)) {
      if (!IsBefore({x.character, a->character, z, 0}, {x.character, b->character, 0})) return true;
    }
    return false;
  }

  [[nodiscard]] bool JoinsAMark(Letter x) const {
    const wchar_t z = letters_.end()[-1].character;
    const Letter* first = letters_.FirstOf(x);
    const Letter* y = letters_.Behind(x);
    return std::any_of(std::begin(kMarks), std::end(kMarks), [&](wchar_t m) {
      return (first != letters_.begin() &&
              !IsBefore({first[-1].character, z, 0}, {x.character, m, 0})) ||
             (y != letters_.end() && !IsBefore({x.character, m, z, 0}, {y->character, 0}));
    });
  }

  unsigned flags_;
  RankedLetters words_;
  RankedLetters letters_;
};

}  // namespace

void DropContractions(unsigned flags, Alphabet alphabet, CollationRanks& ranks) {
  Finder(flags, alphabet, ranks).Drop(ranks);
}

}  // namespace kv::internal
