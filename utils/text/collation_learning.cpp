#include "utils/text/collation_learning.h"

#include "utils/text/collation_contractions.h"
#include "utils/text/collation_system.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>

namespace kv::internal {
namespace {

struct Range {
  wchar_t first;
  wchar_t last;
};

constexpr Range kAscii = {0x01, kLastAscii};
constexpr Range kLatin = {kFirstLetter, 0x24F};
constexpr Range kCyrillic = {0x400, 0x52F};

constexpr std::size_t Size(Range range) { return range.last - range.first + 1U; }

constexpr std::size_t kCharacters = Size(kAscii) + Size(kLatin) + Size(kCyrillic);
// As many ranks at most.
static_assert(kCharacters < std::numeric_limits<CollationWeight>::max() / kVariants);

// One or two characters and the terminator.
struct Sample {
  explicit Sample(wchar_t character) : units{character}, size(2) {}
  Sample(wchar_t first, wchar_t second) : units{first, second}, size(3) {}

  wchar_t units[3];
  int size;
};

// Finds the weights of characters.
//
// Sorted by the system one by one, the characters without a rank come first. Of the others let p be
// one whose rank is known, a the first and z the last of all. A character c behind p that sorts
// behind pz too has a rank of its own, above that of p. One that sorts before pa has the rank of p.
// What lies between, as a ligature behind its first letter, the system takes for several ranks.
class Learner {
 public:
  explicit Learner(unsigned flags) : flags_(flags) {}

  // Puts characters in order; whatever the answers are, one question halves the places left.
  void Add(Range range);

  // Sets the weights of those characters of which they can be told.
  void Assign(CollationRanks& ranks);

  [[nodiscard]] bool HasFailed() const { return hasFailed_; }

 private:
  int Compare(const Sample& a, const Sample& b);
  bool IsBefore(const Sample& a, const Sample& b) { return Compare(a, b) < 0; }
  bool IsOrdinary(wchar_t character);
  bool IsIgnored(wchar_t character);
  bool HasRankOf(wchar_t base, wchar_t character);

  unsigned flags_;
  bool hasFailed_ = false;
  std::array<wchar_t, kCharacters> order_{};
  std::size_t size_ = 0;
  wchar_t lowest_ = 0;  // that has a rank
  wchar_t highest_ = 0;
};

int Learner::Compare(const Sample& a, const Sample& b) {
  if (hasFailed_) return 0;
  const int result = CompareUnits(a.units, a.size, b.units, b.size, flags_);
  hasFailed_ = result == kComparisonFailed;
  return result;
}

void Learner::Add(Range range) {
  for (unsigned character = range.first; character <= range.last && !hasFailed_; ++character) {
    const Sample sample(static_cast<wchar_t>(character));
    std::size_t first = 0;
    std::size_t last = size_;
    while (first < last) {
      const std::size_t middle = (first + last) / 2;
      if (IsBefore(sample, Sample(order_[middle]))) {
        last = middle;
      } else {
        first = middle + 1;
      }
    }
    std::copy_backward(order_.begin() + first, order_.begin() + size_, order_.begin() + size_ + 1);
    order_[first] = static_cast<wchar_t>(character);
    ++size_;
  }
}

// One that sorts before the highest whatever follows it, and counts where it is doubled.
bool Learner::IsOrdinary(wchar_t character) {
  return IsBefore(Sample(character, highest_), Sample(highest_)) &&
         IsBefore(Sample(character), Sample(character, character));
}

// One that counts for nothing while ranks do: what follows it decides, in either direction.
bool Learner::IsIgnored(wchar_t character) {
  return IsBefore(Sample(lowest_, highest_), Sample(character, highest_)) &&
         IsBefore(Sample(character, lowest_), Sample(lowest_, lowest_));
}

bool Learner::HasRankOf(wchar_t base, wchar_t character) {
  return IsBefore(Sample(character), Sample(base, lowest_)) &&
         Compare(Sample(character, highest_), Sample(base, highest_)) ==
             Compare(Sample(character), Sample(base));
}

void Learner::Assign(CollationRanks& ranks) {
  highest_ = order_[size_ - 1];
  std::size_t index = 0;
  while (index < size_ && !IsOrdinary(order_[index])) ++index;
  if (index == size_) return;
  lowest_ = order_[index];
  for (std::size_t before = 0; before < index; ++before) {
    if (IsIgnored(order_[before])) WeightOf(ranks, order_[before]) = kIgnored;
  }

  wchar_t base = lowest_;      // the first of its rank
  wchar_t previous = lowest_;  // the last of its variant
  unsigned rank = 1;
  unsigned variant = 0;
  WeightOf(ranks, base) = kFirstOrdinary;
  for (++index; index < size_; ++index) {
    const wchar_t character = order_[index];
    if (IsBefore(Sample(base, highest_), Sample(character))) {
      base = character;
      ++rank;
      variant = 0;
    } else if (!HasRankOf(base, character)) {
      continue;
    } else if (Compare(Sample(previous), Sample(character)) != 0) {
      ++variant;
    }
    previous = character;
    if (variant < kVariants)
      WeightOf(ranks, character) = static_cast<CollationWeight>(rank * kVariants + variant);
  }
}

// Nothing is known but where a text ends and that some bytes begin a letter.
void Clear(CollationRanks& ranks, CollationWeight letters) {
  ranks.bytes.fill(kUnknown);
  ranks.bytes[0] = kEndOfText;
  std::fill(&ranks.bytes[kFirstLead], &ranks.bytes[kLastLead] + 1, kLeadByte);
  ranks.letters.fill(kUnknown);
  for (const Range range : {kLatin, kCyrillic})
    std::fill_n(&ranks.letters[range.first - kFirstLetter], Size(range), letters);
}

}  // namespace

bool LearnRanks(unsigned flags, Alphabet alphabet, CollationRanks& ranks) {
  Learner learner(flags);
  learner.Add(kAscii);
  if (alphabet == Alphabet::kAscii) {
    Clear(ranks, kUnlearned);
  } else {
    Clear(ranks, kUnknown);
    learner.Add(kLatin);
    learner.Add(kCyrillic);
  }
  learner.Assign(ranks);
  DropContractions(flags, alphabet, ranks);
  ranks.isPrintableKnown = std::find(&ranks.bytes[kFirstPrintable], &ranks.bytes[kLastAscii] + 1,
                                     kUnknown) == &ranks.bytes[kLastAscii] + 1;
  ranks.bytesWithoutParentheses = ranks.bytes;
  ranks.bytesWithoutParentheses['('] = kSkipped;
  ranks.bytesWithoutParentheses[')'] = kSkipped;
  return !learner.HasFailed() && HoldForSamples(flags, alphabet, ranks);
}

void ForgetLetters(CollationRanks& ranks) { ranks.letters.fill(kUnknown); }

}  // namespace kv::internal
