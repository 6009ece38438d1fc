// The search for bytes among bytes beside the comparison at each place.
#include <string>
#include <string_view>

#include "tests/fuzz/support/guarded_copy.h"
#include "tests/fuzz/support/target.h"
#include "tests/reference/memory_search.h"
#include "utils/text/text.h"

namespace kv::fuzz {
namespace {

using Bytes = std::basic_string<unsigned char>;

void Compare(const Bytes& hayBytes, const Bytes& needleBytes) {
  const GuardedCopy<unsigned char> hay(hayBytes);
  const GuardedCopy<unsigned char> needle(needleBytes);
  const auto haySize = static_cast<unsigned>(hayBytes.size());
  const auto needleSize = static_cast<unsigned>(needleBytes.size());
  Expect("place", MemorySearch(hay.Get(), haySize, needle.Get(), needleSize),
         reference::MemorySearch(hay.Get(), haySize, needle.Get(), needleSize));
}

// A needle of the input's own, and one out of the hay, which is found there.
void Check(Input input) {
  const std::size_t begin = input.Take<unsigned short>();
  const std::size_t size = input.Below(300);
  const bool isRepeated = input.Flag();
  const std::string_view needle = input.Until('\xFF');
  const std::string_view rest = input.Rest();
  Bytes hay(rest.begin(), rest.end());
  if (isRepeated) {
    while (hay.size() < 2000 && !hay.empty()) hay.append(hay, 0, Bytes::npos);
  }
  Compare(hay, Bytes(needle.begin(), needle.end()));
  Compare(hay, hay.substr(begin % (hay.size() + 1), size));
  Compare(hay, hay.substr(begin % (hay.size() + 1), size) + Bytes{0});
}

const Registration kTarget({.name = "memory_search",
                            .check = Check,
                            .seeds = {"moon\xFFPlanets and moons; comets\2\3\0",
                                      "aaab\xFF"
                                      "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaab\1\1\1",
                                      "abab\xFF"
                                      "abaabaababaabab\1\3\3"},
                            .words = {"\xFF", "aaaaaaaa", "abababab"}});

}  // namespace
}  // namespace kv::fuzz
