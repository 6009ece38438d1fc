// What a comparison of names needs to know of the system's order to decide most pairs by itself.
#ifndef KVUTILS_UTILS_TEXT_COLLATION_RANKS_H_
#define KVUTILS_UTILS_TEXT_COLLATION_RANKS_H_

#include <array>
#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <tuple>

namespace kv::internal {

// The part that a character plays in a comparison. An ordinary one has a rank, by which texts are
// ordered at their first difference; characters of one rank, as a letter with and without its
// accent, have different variants where they count as different when nothing else does. The weight
// is rank * kVariants + variant; ranks begin at 1.
using CollationWeight = std::uint16_t;

inline constexpr CollationWeight kEndOfText = 0;  // before every rank: the shorter text is first
inline constexpr CollationWeight kIgnored = 1;    // counts when nothing else does, as the hyphen
inline constexpr CollationWeight kLeadByte = 2;   // of two bytes that are one character
inline constexpr CollationWeight kUnknown = 3;    // the system decides
inline constexpr CollationWeight kUnlearned = 4;  // a letter that the system has not been asked of
inline constexpr CollationWeight kVariants = 64;
inline constexpr CollationWeight kFirstOrdinary = kVariants;
// Not part of the text, as "(" of an asteroid. Where two texts have it at one place they go on, as
// they do where they have the same ordinary character: hence its place next to those.
inline constexpr CollationWeight kSkipped = kFirstOrdinary - 1;

constexpr bool HaveOneRank(unsigned a, unsigned b) {
  static_assert(std::has_single_bit(kVariants));
  return (a ^ b) < kVariants;
}

// The weights of single bytes, in place of which the texts are compared.
using ByteWeights = std::array<CollationWeight, 256>;

// The characters of two bytes whose weights can be learned.
inline constexpr unsigned char kFirstLead = 0xC3;
inline constexpr unsigned char kLastLead = 0xD4;
inline constexpr std::size_t kContinuations = 64;
using LetterWeights = std::array<CollationWeight, (kLastLead - kFirstLead + 1) * kContinuations>;

inline constexpr wchar_t kLastAscii = 0x7F;
inline constexpr char kFirstPrintable = ' ';
inline constexpr wchar_t kFirstLetter = (kFirstLead & 0x1F) * kContinuations;
inline constexpr wchar_t kLastLetter = kFirstLetter + std::tuple_size_v<LetterWeights> - 1;

struct CollationRanks {
  ByteWeights bytes;
  ByteWeights bytesWithoutParentheses;  // the same, but for "(" and ")", which are dropped
  LetterWeights letters;                // from kFirstLetter on
  bool isPrintableKnown;                // no byte from " " to DEL is kUnknown
};

// Of a character that has a place there. Ranks may be const or not.
template <typename Ranks>
constexpr auto& WeightOf(Ranks& ranks, wchar_t character) {
  return character <= kLastAscii ? ranks.bytes[character] : ranks.letters[character - kFirstLetter];
}

// Of which every character is unknown.
extern const CollationRanks kNoRanks;

// The weights under one set of comparison flags, always the same. They are found when they are
// first asked for, by any thread, and stay for the life of the process.
class LearnedRanks {
 public:
  // What has been found before.
  [[nodiscard]] const CollationRanks& Current() const {
    return *current_.load(std::memory_order_acquire);
  }

  // The letters may be unlearned.
  const CollationRanks& Get(unsigned flags) {
    const CollationRanks& ranks = Current();
    return &ranks != &kNoRanks ? ranks : LearnAscii(flags);
  }

  // Follows Get. No letter is unlearned.
  const CollationRanks& GetWithLetters(unsigned flags);

 private:
  const CollationRanks& LearnAscii(unsigned flags);

  std::atomic<const CollationRanks*> current_ = &kNoRanks;
  CollationRanks ascii_{};
  CollationRanks whole_{};
};

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_TEXT_COLLATION_RANKS_H_
