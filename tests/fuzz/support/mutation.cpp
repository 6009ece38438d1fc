#include "tests/fuzz/support/mutation.h"

#include <utility>

namespace kv::fuzz {
namespace {

// What means something to many readers of text.
const char* const kCommonWords[] = {"\n",
                                    "\r\n",
                                    "\t",
                                    " ",
                                    ":",
                                    "\\",
                                    "/",
                                    "..",
                                    ",",
                                    ";",
                                    ".",
                                    "!",
                                    "}",
                                    "0",
                                    "-1",
                                    "1e308",
                                    "nan",
                                    "inf",
                                    "0x",
                                    "%",
                                    "###",
                                    "\xFF",
                                    "\x80",
                                    "\xC3",
                                    "\xE2\x82\xAC",
                                    "\xF0\x9F\x98\x80",
                                    "4294967295",
                                    "\xEF\xBB\xBF",
                                    "2147483648",
                                    "-9223372036854775809",
                                    "\xED\xA0\x80"};

}  // namespace

// Marsaglia's xorshift with 64 bits of state; the upper half of the state is what is given.
std::uint32_t Random::Next() {
  state_ ^= state_ << 13;
  state_ ^= state_ >> 7;
  state_ ^= state_ << 17;
  return static_cast<std::uint32_t>(state_ >> 32);
}

Mutator::Mutator(std::vector<std::string> words, std::size_t maxSize, std::uint64_t seed)
    : words_(std::move(words)), maxSize_(maxSize), random_(seed) {
  words_.insert(words_.end(), std::begin(kCommonWords), std::end(kCommonWords));
  words_.emplace_back(1, '\0');
}

std::string Mutator::Make(const std::vector<std::string>& inputs) {
  std::string input = inputs[random_.Below(inputs.size())];
  for (std::size_t changes = 1 + random_.Below(4); changes > 0; --changes) Change(input, inputs);
  if (input.size() > maxSize_) input.resize(maxSize_);
  return input;
}

void Mutator::Change(std::string& input, const std::vector<std::string>& inputs) {
  const std::size_t place = random_.Below(input.size() + 1);
  switch (random_.Below(7)) {
    case 0:
      return ChangeByte(input);
    case 1:
      input.insert(place, 1, static_cast<char>(random_.Next()));
      return;
    case 2:
      return Remove(input);
    case 3:
      input.insert(place, words_[random_.Below(words_.size())]);
      return;
    case 4:
      return Repeat(input);
    case 5:
      return Continue(input, inputs[random_.Below(inputs.size())]);
    default:
      input.insert(place, 1 + random_.Below(maxSize_ / 2 + 1), "aZ0 \n\xC3"[random_.Below(6)]);
  }
}

// A bit, a small step, or anything.
void Mutator::ChangeByte(std::string& input) {
  if (input.empty()) return;
  char& byte = input[random_.Below(input.size())];
  switch (random_.Below(3)) {
    case 0:
      byte = static_cast<char>(byte ^ (1 << random_.Below(8)));
      break;
    case 1:
      byte = static_cast<char>(byte + (random_.Below(2) == 0 ? 1 : -1));
      break;
    default:
      byte = static_cast<char>(random_.Next());
  }
}

void Mutator::Remove(std::string& input) {
  if (input.empty()) return;
  const std::size_t size = random_.Below(4) == 0 ? 1 + random_.Below(input.size()) : 1;
  input.erase(random_.Below(input.size()), size);
}

void Mutator::Repeat(std::string& input) {
  if (input.empty()) return;
  const std::size_t begin = random_.Below(input.size());
  const std::string piece = input.substr(begin, 1 + random_.Below(input.size() - begin));
  input.insert(random_.Below(input.size() + 1), piece);
}

void Mutator::Continue(std::string& input, const std::string& other) {
  input.resize(random_.Below(input.size() + 1));
  input += other.substr(random_.Below(other.size() + 1));
}

}  // namespace kv::fuzz
