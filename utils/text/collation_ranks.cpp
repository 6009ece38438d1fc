#include "utils/text/collation_ranks.h"

#include "utils/text/collation_learning.h"

#include <mutex>

namespace kv::internal {
namespace {

std::mutex learning;

constexpr CollationRanks NoRanks() {
  CollationRanks ranks{};
  ranks.bytes.fill(kUnknown);
  ranks.bytesWithoutParentheses.fill(kUnknown);
  ranks.letters.fill(kUnknown);
  return ranks;
}

}  // namespace

constinit const CollationRanks kNoRanks = NoRanks();

const CollationRanks& LearnedRanks::LearnAscii(unsigned flags) {
  const std::scoped_lock lock(learning);
  if (&Current() != &kNoRanks) return Current();
  if (!LearnRanks(flags, Alphabet::kAscii, ascii_)) ascii_ = NoRanks();
  current_.store(&ascii_, std::memory_order_release);
  return ascii_;
}

const CollationRanks& LearnedRanks::GetWithLetters(unsigned flags) {
  const std::scoped_lock lock(learning);
  if (current_.load(std::memory_order_relaxed) == &whole_) return whole_;
  if (!LearnRanks(flags, Alphabet::kWithLetters, whole_)) {
    whole_ = ascii_;
    ForgetLetters(whole_);
  }
  current_.store(&whole_, std::memory_order_release);
  return whole_;
}

}  // namespace kv::internal
