// The byte order of records, and the search in sorted arrays.
#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "tests/fuzz/support/guarded_copy.h"
#include "tests/fuzz/support/target.h"
#include "utils/text/text.h"

namespace kv::fuzz {
namespace {

void CheckSwap(Input input) {
  std::vector<int> layout(input.Below(12));
  std::size_t size = 0;
  for (int& field : layout) {
    field = input.Flag() ? input.OneOf({2, 4, 8}) : input.Between(-9, 9);
    size += static_cast<std::size_t>(std::abs(field));
  }
  std::string record(input.Rest());
  record.resize(size);
  const GuardedCopy<char> data(record);
  const auto count = static_cast<int>(layout.size());
  SwapStruct(data.Get(), layout.data(), count);
  std::string expected = record;
  auto place = expected.begin();
  for (const int field : layout) {
    const auto end = place + std::abs(field);
    if (field == 2 || field == 4 || field == 8) std::reverse(place, end);
    place = end;
  }
  Expect("record", data.Units(), expected);
  SwapStruct(data.Get(), layout.data(), count);
  Expect("record twice", data.Units(), record);
}

class Bytewise final : public Comparator {
 public:
  int Compare(const void* key, const void* element) override {
    return *static_cast<const unsigned char*>(key) - *static_cast<const unsigned char*>(element);
  }
};

void CheckBinarySearch(Input input) {
  const std::size_t size = 1 + input.Below(9);
  const unsigned char key = input.Take<unsigned char>();
  std::string keys(input.Rest());
  std::sort(keys.begin(), keys.end(), [](char a, char b) {
    return static_cast<unsigned char>(a) < static_cast<unsigned char>(b);
  });
  std::string elements;
  for (const char c : keys) elements += c + std::string(size - 1, 'x');
  const GuardedCopy<char> base(elements);
  Bytewise order;
  const auto* const found =
      static_cast<const char*>(BinarySearch(&key, base.Get(), keys.size(), size, &order));
  const std::ptrdiff_t offset = found - base.Get();
  if (keys.empty()) return Expect("place in nothing", offset, std::ptrdiff_t{0});
  ExpectThat("the place is one of the array",
             offset >= 0 && offset < static_cast<std::ptrdiff_t>(elements.size()) &&
                 offset % static_cast<std::ptrdiff_t>(size) == 0);
  const auto index = static_cast<std::size_t>(offset) / size;
  if (keys.find(static_cast<char>(key)) != std::string::npos) {
    ExpectThat("what is there is found", keys[index] == static_cast<char>(key));
    return;
  }
  const auto less = std::count_if(keys.begin(), keys.end(),
                                  [&](char c) { return static_cast<unsigned char>(c) < key; });
  ExpectThat("the place is where the key belongs, or beside it",
             std::abs(static_cast<std::ptrdiff_t>(index) - less) <= 1);
}

void Check(Input input) {
  if (input.Flag()) return CheckSwap(input);
  CheckBinarySearch(input);
}

const Registration kTarget({.name = "binary_helpers",
                            .check = Check,
                            .seeds = {std::string("\1\2\3\4\5\6\7\x8\xFE\0\2\1\1\1\3\1", 16),
                                      std::string("137aabczz\x62\3\0", 12)}});

}  // namespace
}  // namespace kv::fuzz
