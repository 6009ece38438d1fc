// The two-way algorithm of M. Crochemore and D. Perrin, "Two-way string-matching", Journal of the
// ACM 38 (1991).
//
// The needle is cut in two where it repeats itself least: no word shorter than the shortest period
// of the whole needle ends the left part and begins the right part as well, be it that one of both
// is only the end of that word or its beginning. Of two suffixes the shorter begins at such a cut:
// the one that is last in the order of its bytes, and the one that is last in the reverse order. At
// a place of the hay the right part is compared from the cut onwards, then the left part. Where the
// right part differs, the next place is the one that brings the cut behind that byte, since at any
// before it a word as excluded would stand around the cut. Where the left part alone differs, the
// next place is a period further on; what the right part has matched then lies at the beginning of
// the needle and need not be compared again. So no byte of the hay is compared more than twice.
#include "utils/text/memory_search_two_way.h"

#include <algorithm>
#include <functional>

namespace kv::internal {
namespace {

using Needle = std::span<const unsigned char>;

struct Suffix {
  std::size_t begin;
  std::size_t period;
};

// The suffix of the needle that is last in an order of bytes, and its shortest period.
template <typename Order>
Suffix LastSuffix(Needle needle, Order isBefore) {
  Suffix last = {0, 1};
  std::size_t rival = 1;
  std::size_t common = 0;  // bytes that both suffixes begin with, counted anew each period
  while (rival + common < needle.size()) {
    const unsigned char ofLast = needle[last.begin + common];
    const unsigned char ofRival = needle[rival + common];
    if (isBefore(ofLast, ofRival)) {
      last = {rival, 1};
      rival += 1;
      common = 0;
    } else if (isBefore(ofRival, ofLast)) {
      rival += common + 1;
      common = 0;
      last.period = rival - last.begin;
    } else if (common + 1 < last.period) {
      ++common;
    } else {
      rival += last.period;
      common = 0;
    }
  }
  return last;
}

}  // namespace

std::size_t FindByTwoWay(const unsigned char* hay, std::size_t places, Needle needle) {
  const Suffix ascending = LastSuffix(needle, std::less<>());
  const Suffix descending = LastSuffix(needle, std::greater<>());
  const auto [cut, period] = ascending.begin > descending.begin ? ascending : descending;
  const std::size_t size = needle.size();
  // The period of the suffix is that of the whole needle if the left part follows it too. If not,
  // the period of the needle is longer than the longer part.
  const bool isPeriodic = std::equal(needle.data(), needle.data() + cut, needle.data() + period);
  const std::size_t shift = isPeriodic ? period : std::max(cut, size - cut) + 1;
  const std::size_t keptByShift = isPeriodic ? size - period : 0;

  std::size_t known = 0;  // bytes at the beginning of the needle that are known to match
  for (std::size_t place = 0; place < places;) {
    const unsigned char* const text = hay + place;
    std::size_t i = std::max(cut, known);
    while (i < size && needle[i] == text[i]) ++i;
    if (i < size) {
      place += i - cut + 1;
      known = 0;
      continue;
    }
    i = cut;
    while (i > known && needle[i - 1] == text[i - 1]) --i;
    if (i <= known) return place;
    place += shift;
    known = keptByShift;
  }
  return places;
}

}  // namespace kv::internal
