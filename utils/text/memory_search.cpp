#include "utils/text/text.h"

#include "utils/internal/processor.h"
#include "utils/text/memory_search_pair.h"
#include "utils/text/memory_search_two_way.h"

#include <algorithm>
#include <bit>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

namespace {

constexpr int kNotFound = -1;

using Needle = std::span<const unsigned char>;

// How many bytes at the beginning of the needle stand at the beginning of the text.
std::size_t CommonSize(Needle needle, const unsigned char* text) {
  std::size_t common = 0;
  for (; needle.size() - common >= sizeof(std::uint64_t); common += sizeof(std::uint64_t)) {
    std::uint64_t word;
    std::uint64_t wordOfText;
    std::memcpy(&word, needle.data() + common, sizeof word);
    std::memcpy(&wordOfText, text + common, sizeof word);
    if (word != wordOfText) {
      return common + static_cast<std::size_t>(std::countr_zero(word ^ wordOfText)) / CHAR_BIT;
    }
  }
  while (common < needle.size() && needle[common] == text[common]) ++common;
  return common;
}

// The first of so many places at which the needle stands, or at which `isEnough` says so of how
// many bytes have been compared there in vain; else `places`.
template <typename IsEnough>
inline std::size_t FindOneByOne(const unsigned char* hay, std::size_t places, Needle needle,
                                IsEnough isEnough) {
  for (std::size_t place = 0; place < places; ++place) {
    if (hay[place] != needle[0]) continue;
    std::size_t common = 1;
    while (common < needle.size() && hay[place + common] == needle[common]) ++common;
    if (common == needle.size() || isEnough(common)) return place;
  }
  return places;
}

// Compares the needle where two of its bytes stand, its ends at first. Where those stand at many
// places, the byte that differed at the last one takes the place of the second, and some places are
// searched one by one, twice as many each time. A budget of compared bytes that is linear in what
// is searched keeps needles in check that differ late at many places: when it is spent, the rest is
// searched in linear time. Comparing is so much faster than preparing that search that the budget
// is a multiple.
std::size_t FindByPair(const unsigned char* hay, std::size_t places, Needle needle) {
  using namespace kv::internal;
  constexpr std::size_t kManyPlaces = 32;  // the pair stands at more than one of so many
  constexpr std::size_t kOneByOne = 64;
  constexpr std::size_t kFewBytes = 16;
  constexpr std::size_t kComparedPerByte = 16;
  auto* const findPair = g_processor.avx2 ? FindPairByAvx2 : FindPairBySse2;
  BytePair pair = {needle.front(), needle.back(), needle.size() - 1};
  std::size_t budget = kComparedPerByte * (places + needle.size());
  // A few bytes at a place are linear anyway, and not counted.
  const auto spend = [&budget](std::size_t compared) {
    if (compared <= kFewBytes) return false;
    const bool isSpent = compared > budget;
    budget = isSpent ? 0 : budget - compared;
    return isSpent;
  };
  std::size_t oneByOne = kOneByOne;
  for (std::size_t place = 0;;) {
    const std::size_t passed = findPair(hay + place, places - place, pair);
    place += passed;
    if (place == places) return places;
    const std::size_t common = CommonSize(needle, hay + place);
    if (common == needle.size()) return place;
    if (common > budget) return place + FindByTwoWay(hay + place, places - place, needle);
    budget -= common;
    ++place;
    if (passed >= kManyPlaces) {
      oneByOne = kOneByOne;
      continue;
    }
    pair = {needle.front(), needle[common], common};
    // The pair stands where the needle does: a needle found is found again by it.
    place += FindOneByOne(hay + place, std::min(oneByOne, places - place), needle, spend);
    oneByOne *= 2;
  }
}

}  // namespace

int MemorySearch(const unsigned char* hay, unsigned int haySize, const unsigned char* needle,
                 unsigned int needleSize) {
  if (needleSize == 0) return 0;
  if (hay == nullptr || needle == nullptr || haySize < needleSize) return kNotFound;
  const std::size_t places = std::min<std::size_t>(haySize - needleSize, INT_MAX) + 1;
  constexpr std::size_t kFewPlaces = 16;
  const auto goOn = [](std::size_t) { return false; };
  const std::size_t place = places < kFewPlaces
                                ? FindOneByOne(hay, places, {needle, needleSize}, goOn)
                                : FindByPair(hay, places, {needle, needleSize});
  return place == places ? kNotFound : static_cast<int>(place);
}
