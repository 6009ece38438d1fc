// Natural order of catalogue names.
#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "bench/support/comparison.h"
#include "bench/support/main.h"
#include "bench/support/opaque.h"
#include "tests/reference/natural_order.h"
#include "utils/text/text.h"

namespace {

constexpr int kFewNames = 1000;
constexpr int kManyNames = 1'000'000;

// Numbers of ten digits are beyond int, as most identifiers of big surveys are.
constexpr std::size_t kLongNumbers[] = {10, 20};

using Compare = int (*)(const char*, const char*);
using Names = std::vector<std::string>;

// A catalogue's prefix and a number, some with a component's letter.
Names CatalogueNames(int count) {
  static constexpr const char* kPrefixes[] = {"NGC ", "IC ", "HD ", "HIP ", "SAO ", "TYC ", "M "};
  std::mt19937 random(20240303);
  Names names;
  for (int i = 0; i < count; ++i) {
    std::string name = kPrefixes[random() % std::size(kPrefixes)];
    name += std::to_string(random() % (random() % 2 == 0 ? 8'000 : 300'000));
    if (random() % 8 == 0) name += static_cast<char>('A' + random() % 4);
    names.push_back(name);
  }
  return names;
}

// One prefix and numbers of so many digits, a quarter of them the first name's, with a component's
// letter.
Names SurveyNames(int count, std::size_t digits) {
  std::mt19937 random(20240304);
  const auto number = [&random, digits] {
    std::string text(digits, ' ');
    for (char& digit : text) digit = static_cast<char>('1' + random() % 9);
    return text;
  };
  const std::string first = number();
  Names names = {"Gaia " + first + "A"};
  while (static_cast<int>(names.size()) < count) {
    const char letter = static_cast<char>('A' + random() % 4);
    names.push_back("Gaia " + (random() % 4 == 0 ? first : number()) + letter);
  }
  return names;
}

std::vector<const char*> Texts(const Names& names) {
  std::vector<const char*> texts;
  for (const std::string& name : names) texts.push_back(name.c_str());
  return texts;
}

// The pairs that a search in a sorted list compares: one name with many.
int CompareOneWithAll(const Names& names, Compare compare) {
  const kv::bench::Opaque call(compare);
  int before = 0;
  for (const std::string& name : names) {
    before += call(name.c_str(), names[0].c_str()) < 0 ? 1 : 0;
  }
  return before;
}

std::vector<const char*> Sorted(std::vector<const char*> texts, Compare compare) {
  const kv::bench::Opaque call(compare);
  std::sort(texts.begin(), texts.end(),
            [&call](const char* a, const char* b) { return call(a, b) < 0; });
  return texts;
}

void CheckPairs(const Names& names) {
  for (const std::string& a : names) {
    for (const std::string& b : names) {
      kv::bench::Require(CompareStringWithNumber(a.c_str(), b.c_str()) ==
                             kv::reference::CompareNatural(a.c_str(), b.c_str()),
                         "CompareStringWithNumber");
    }
  }
}

void RegisterFew(const std::string& what, const Names& names) {
  kv::bench::Comparison("CompareStringWithNumber, " + what)
      .Add("library", [names] { return CompareOneWithAll(names, CompareStringWithNumber); })
      .Add("plain", [names] { return CompareOneWithAll(names, kv::reference::CompareNatural); })
      .Add("limit strcmp", [names] { return CompareOneWithAll(names, std::strcmp); });
}

}  // namespace

void kv::bench::CheckAgreement() {
  CheckPairs(CatalogueNames(kFewNames));
  for (const std::size_t digits : kLongNumbers) CheckPairs(SurveyNames(kFewNames, digits));
}

void kv::bench::RegisterComparisons() {
  RegisterFew("1000 names", CatalogueNames(kFewNames));
  for (const std::size_t digits : kLongNumbers)
    RegisterFew("1000 names with " + std::to_string(digits) + " digits",
                SurveyNames(kFewNames, digits));
  static const Names names = CatalogueNames(kManyNames);
  static const std::vector<const char*> texts = Texts(names);
  Comparison("CompareStringWithNumber, sort of 1000000 names")
      .CallOnceIn(kFewRounds)
      .Add("library", [] { return Sorted(texts, CompareStringWithNumber); })
      .Add("plain", [] { return Sorted(texts, reference::CompareNatural); })
      .Add("limit strcmp", [] { return Sorted(texts, std::strcmp); });
}
