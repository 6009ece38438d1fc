// Random pairs of texts for comparisons of names, made to hit what distinguishes their rules.
#ifndef KVUTILS_TESTS_TEXT_COLLATION_PAIRS_H_
#define KVUTILS_TESTS_TEXT_COLLATION_PAIRS_H_

#include <cstddef>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace kv::test {

// The code points from first to last, drawn with the given weight.
struct CodePoints {
  char32_t first;
  char32_t last;
  unsigned weight = 1;
};
using Alphabet = std::vector<CodePoints>;

// Behind the last code point, the bytes themselves: kRawByte + 0xFF is FF.
inline constexpr char32_t kRawByte = 0x110000;

inline std::string InUtf8(char32_t code) {
  const auto byte = [](char32_t value) { return static_cast<char>(value); };
  if (code < 0x80) return {byte(code)};
  if (code > kRawByte) return {byte(code - kRawByte)};
  if (code < 0x800) return {byte(0xC0 | code >> 6), byte(0x80 | (code & 0x3F))};
  if (code < 0x10000)
    return {byte(0xE0 | code >> 12), byte(0x80 | (code >> 6 & 0x3F)), byte(0x80 | (code & 0x3F))};
  return {byte(0xF0 | code >> 18), byte(0x80 | (code >> 12 & 0x3F)),
          byte(0x80 | (code >> 6 & 0x3F)), byte(0x80 | (code & 0x3F))};
}

// Two texts of which the second is a changed copy of the first.
class RandomPairs {
 public:
  RandomPairs(Alphabet alphabet, std::size_t largestSize, unsigned seed)
      : alphabet_(std::move(alphabet)), largestSize_(largestSize), random_(seed) {
    for (const CodePoints& range : alphabet_) weights_ += range.weight;
  }

  void Next() {
    characters_.clear();
    for (std::size_t size = Below(largestSize_ + 1); size > 0; --size)
      characters_.push_back(Character());
    a_ = Join();
    for (std::size_t changes = Below(4); changes > 0; --changes) Change();
    b_ = Join();
    if (Below(2) == 0) std::swap(a_, b_);
  }

  [[nodiscard]] const std::string& A() const { return a_; }
  [[nodiscard]] const std::string& B() const { return b_; }

 private:
  std::size_t Below(std::size_t limit) { return random_() % limit; }

  std::string Character() {
    std::size_t weight = Below(weights_);
    auto range = alphabet_.begin();
    for (; weight >= range->weight; ++range) weight -= range->weight;
    const char32_t code =
        range->first + static_cast<char32_t>(Below(range->last - range->first + 1));
    return InUtf8(code);
  }

  // Replaces, inserts, removes, ends the text, or changes a byte to one near it.
  void Change() {
    const std::size_t place = Below(characters_.size() + 1);
    const auto at = characters_.begin() + static_cast<std::ptrdiff_t>(place);
    const bool isEnd = at == characters_.end();
    switch (Below(8)) {
      case 0:
      case 1:
        characters_.insert(at, Character());
        break;
      case 2:
        if (!isEnd) characters_.erase(at);
        break;
      case 3:
        characters_.erase(at, characters_.end());
        break;
      case 4:
        if (!isEnd) NudgeByte(*at);
        break;
      default:
        if (!isEnd) *at = Character();
    }
  }

  void NudgeByte(std::string& character) {
    char& byte = character[Below(character.size())];
    const auto nudged = static_cast<char>(byte ^ static_cast<char>(1U << Below(6)));
    if (nudged != '\0') byte = nudged;
  }

  [[nodiscard]] std::string Join() const {
    std::string text;
    for (const std::string& character : characters_) text += character;
    return text;
  }

  Alphabet alphabet_;
  std::size_t largestSize_;
  std::size_t weights_ = 0;
  std::mt19937 random_;
  std::vector<std::string> characters_;
  std::string a_;
  std::string b_;
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_TEXT_COLLATION_PAIRS_H_
