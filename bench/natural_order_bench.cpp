// Natural order of catalogue names.
#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "bench/support/comparison.h"
#include "bench/support/main.h"
#include "tests/reference/natural_order.h"
#include "utils/text/text.h"

namespace {

constexpr int kNames = 1'000'000;
constexpr int kRepetitions = 3;

using Compare = int (*)(const char*, const char*);

// A catalogue's prefix and a number, some with a component's letter.
std::vector<std::string> CatalogueNames(int count) {
  static constexpr const char* kPrefixes[] = {"NGC ", "IC ", "HD ", "HIP ", "SAO ", "TYC ", "M "};
  std::mt19937 random(20240303);
  std::vector<std::string> names;
  for (int i = 0; i < count; ++i) {
    std::string name = kPrefixes[random() % std::size(kPrefixes)];
    name += std::to_string(random() % (random() % 2 == 0 ? 8'000 : 300'000));
    if (random() % 8 == 0) name += static_cast<char>('A' + random() % 4);
    names.push_back(name);
  }
  return names;
}

std::vector<const char*> Texts(const std::vector<std::string>& names) {
  std::vector<const char*> texts;
  for (const std::string& name : names) texts.push_back(name.c_str());
  return texts;
}

// The pairs that a search in a sorted list compares: one name with many.
int CompareOneWithAll(const std::vector<std::string>& names, Compare compare) {
  int before = 0;
  for (const std::string& name : names) {
    before += compare(name.c_str(), names[0].c_str()) < 0 ? 1 : 0;
  }
  return before;
}

std::vector<const char*> Sorted(std::vector<const char*> texts, Compare compare) {
  std::sort(texts.begin(), texts.end(),
            [compare](const char* a, const char* b) { return compare(a, b) < 0; });
  return texts;
}

}  // namespace

void kv::bench::CheckAgreement() {
  const std::vector<std::string> names = CatalogueNames(1000);
  for (const std::string& a : names) {
    for (const std::string& b : names) {
      Require(CompareStringWithNumber(a.c_str(), b.c_str()) ==
                  reference::CompareNatural(a.c_str(), b.c_str()),
              "CompareStringWithNumber");
    }
  }
}

void kv::bench::RegisterComparisons() {
  static const std::vector<std::string> few = CatalogueNames(1000);
  static const std::vector<std::string> names = CatalogueNames(kNames);
  static const std::vector<const char*> texts = Texts(names);
  Comparison("CompareStringWithNumber, 1000 names")
      .Add("library", [] { return CompareOneWithAll(few, CompareStringWithNumber); })
      .Add("plain", [] { return CompareOneWithAll(few, reference::CompareNatural); })
      .Add("limit strcmp", [] { return CompareOneWithAll(few, std::strcmp); });
  Comparison("CompareStringWithNumber, sort of 1000000 names")
      .Repeat(kRepetitions)
      .Add("library", [] { return Sorted(texts, CompareStringWithNumber); })
      .Add("plain", [] { return Sorted(texts, reference::CompareNatural); })
      .Add("limit strcmp", [] { return Sorted(texts, std::strcmp); });
}
