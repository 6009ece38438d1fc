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

// Each gives the first of so many places at which the needle stands, or `places`.

std::size_t FindOneByOne(const unsigned char* hay, std::size_t places, Needle needle) {
  for (std::size_t place = 0; place < places; ++place) {
    std::size_t common = 0;
    while (common < needle.size() && needle[common] == hay[place + common]) ++common;
    if (common == needle.size()) return place;
  }
  return places;
}

// Compares the needle where its ends stand. Once that has cost more than going over the hay,
// because the ends stand in too many places, the rest is searched in linear time.
std::size_t FindByEnds(const unsigned char* hay, std::size_t places, Needle needle) {
  using namespace kv::internal;
  constexpr std::size_t kCostOfPlace = 24;  // as that of so many bytes that are compared
  const BytePair ends = {needle.front(), needle.back(), needle.size() - 1};
  auto* const findPair = g_processor.avx2 ? FindPairByAvx2 : FindPairBySse2;
  std::size_t budget = places;
  for (std::size_t place = 0;; ++place) {
    place += findPair(hay + place, places - place, ends);
    if (place == places) return places;
    const std::size_t common = CommonSize(needle, hay + place);
    if (common == needle.size()) return place;
    const std::size_t cost = kCostOfPlace + common;
    if (cost > budget) return place + FindByTwoWay(hay + place, places - place, needle);
    budget -= cost;
  }
}

}  // namespace

int MemorySearch(const unsigned char* hay, unsigned int haySize, const unsigned char* needle,
                 unsigned int needleSize) {
  if (needleSize == 0) return 0;
  if (hay == nullptr || needle == nullptr || haySize < needleSize) return kNotFound;
  const std::size_t places = std::min<std::size_t>(haySize - needleSize, INT_MAX) + 1;
  constexpr std::size_t kFewPlaces = 32;
  const std::size_t place = places < kFewPlaces ? FindOneByOne(hay, places, {needle, needleSize})
                                                : FindByEnds(hay, places, {needle, needleSize});
  return place == places ? kNotFound : static_cast<int>(place);
}
