#include "utils/text/collation_learning.h"
#include "utils/text/collation_system.h"
#include "utils/text/collation_walk.h"
#include "utils/text/encoding_units.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>

namespace kv::internal {
namespace {

constexpr int kSamples = 200;

// Pairs of short texts that differ little.
class RandomPairs {
 public:
  explicit RandomPairs(Alphabet alphabet) : alphabet_(alphabet) {}

  void Next() {
    a_.clear();
    for (unsigned size = Below(kMaxSize); size > 0; --size) a_ += Character();
    b_ = a_;
    for (unsigned changes = 1 + Below(2); changes > 0; --changes) Change(b_);
  }
  [[nodiscard]] std::string A() const { return InUtf8(a_); }
  [[nodiscard]] std::string B() const { return InUtf8(b_); }

 private:
  static constexpr unsigned kMaxSize = 6;

  // A linear congruential generator modulo 2^32, whose high bits are the random ones.
  unsigned Below(unsigned limit) {
    state_ = state_ * 1664525 + 1013904223;
    return (state_ >> 16) % limit;
  }

  wchar_t Character() {
    constexpr wchar_t kMarks[] = {0x300, 0x301, 0x306, 0x308};  // accents that follow a letter
    switch (alphabet_ == Alphabet::kAscii ? 0 : Below(4)) {
      case 1:
        return static_cast<wchar_t>(kFirstLetter + Below(std::tuple_size_v<LetterWeights>));
      case 2:
        return static_cast<wchar_t>(0x410 + Below(0x50));
      case 3:
        return kMarks[Below(std::size(kMarks))];
      default:
        return static_cast<wchar_t>(1 + Below(kLastAscii));
    }
  }

  void Change(std::wstring& text) {
    const std::size_t place = Below(static_cast<unsigned>(text.size()) + 1);
    switch (Below(3)) {
      case 0:
        text.insert(place, 1, Character());
        break;
      case 1:
        text.erase(place);
        break;
      default:
        text.replace(place, 1, 1, Character());
    }
  }

  // Of characters of one byte and of two.
  static std::string InUtf8(const std::wstring& text) {
    std::string bytes;
    for (const wchar_t character : text) {
      if (character <= kLastAscii) {
        bytes += static_cast<char>(character);
      } else {
        bytes += LeadOfTwo(character);
        bytes += LastByte(character);
      }
    }
    return bytes;
  }

  Alphabet alphabet_;
  std::uint32_t state_ = 0;
  std::wstring a_;
  std::wstring b_;
};

}  // namespace

bool HoldForSamples(unsigned flags, Alphabet alphabet, const CollationRanks& ranks) {
  RandomPairs pairs(alphabet);
  for (int sample = 0; sample < kSamples; ++sample) {
    pairs.Next();
    const std::string a = pairs.A();
    const std::string b = pairs.B();
    const Verdict verdict = CompareWeights(a.c_str(), b.c_str(), ranks.bytes, ranks.letters);
    if (!IsDecided(verdict)) continue;
    const int order = CompareBySystem(a.c_str(), b.c_str(), flags);
    if (order != static_cast<int>(verdict)) return false;
    if (CompareBySystem(b.c_str(), a.c_str(), flags) != -order) return false;
  }
  return true;
}

}  // namespace kv::internal
