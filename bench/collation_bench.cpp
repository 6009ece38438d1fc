// Sorting lists of names.
#include <windows.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "bench/support/comparison.h"
#include "bench/support/main.h"
#include "bench/support/opaque.h"
#include "tests/reference/collation.h"
#include "utils/text/text.h"

namespace {

using kv::bench::Comparison;

constexpr std::size_t kNames = 200'000;
constexpr std::size_t kFewerNames = 50'000;
constexpr std::size_t kNeighbours = 25'000;  // that are compared beforehand
constexpr unsigned kWesternFlags = LINGUISTIC_IGNORECASE | LINGUISTIC_IGNOREDIACRITIC;
constexpr unsigned kCyrillicFlags = LINGUISTIC_IGNORECASE;

using Names = std::vector<std::string>;

// Characters of one alphabet, in UTF-8.
using Letters = std::vector<std::string>;

Letters Range(wchar_t first, wchar_t last) {
  Letters letters;
  for (wchar_t letter = first; letter <= last; ++letter) {
    char bytes[4] = {};
    ::WideCharToMultiByte(CP_UTF8, 0, &letter, 1, bytes, sizeof bytes, nullptr, nullptr);
    letters.emplace_back(bytes);
  }
  return letters;
}

class Composer {
 public:
  std::string Name(const Letters& capitals, const Letters& letters) {
    std::string name = OneOf(capitals);
    for (unsigned size = 3 + Below(8); size > 0; --size) name += OneOf(letters);
    return name;
  }

  const std::string& OneOf(const Letters& letters) {
    return letters[Below(static_cast<unsigned>(letters.size()))];
  }

  unsigned Below(unsigned limit) { return random_() % limit; }

  void Shuffle(Names& names) { std::shuffle(names.begin(), names.end(), random_); }

 private:
  std::mt19937 random_{20240229};
};

Names AsteroidNames() {
  Composer composer;
  Names names;
  for (std::size_t number = 1; number <= kNames; ++number)
    names.push_back("(" + std::to_string(number) + ") " +
                    composer.Name(Range('A', 'Z'), Range('a', 'z')));
  composer.Shuffle(names);
  return names;
}

// Every twelfth with a hyphen or an apostrophe.
Names PlainNames() {
  Composer composer;
  Names names(kNames);
  for (std::string& name : names) {
    name = composer.Name(Range('A', 'Z'), Range('a', 'z'));
    if (composer.Below(12) == 0) name.insert(2, composer.OneOf({"-", "'"}));
  }
  return names;
}

// Every fourth with an accent.
Names AccentedNames() {
  Composer composer;
  Names names(kFewerNames);
  const Letters accented = {"\xC3\xA9", "\xC3\xA8", "\xC3\xBC", "\xC3\xB6", "\xC3\xA4", "\xC3\xB1",
                            "\xC3\xA7", "\xC3\xB4", "\xC4\x8D", "\xC5\xA1", "\xC3\xAD", "\xC3\xA1"};
  for (std::string& name : names) {
    name = composer.Name(Range('A', 'Z'), Range('a', 'z'));
    if (composer.Below(4) == 0) name.replace(1 + composer.Below(3), 1, composer.OneOf(accented));
  }
  return names;
}

Names NamesOf(const Letters& capitals, const Letters& letters) {
  Composer composer;
  Names names(kFewerNames);
  for (std::string& name : names) name = composer.Name(capitals, letters);
  return names;
}

Names CyrillicNames() { return NamesOf(Range(0x410, 0x42F), Range(0x430, 0x44F)); }
Names KanaNames() { return NamesOf(Range(0x30A2, 0x30ED), Range(0x30A2, 0x30ED)); }

using Compare = int (*)(const char*, const char*);

// Results of sorting depend on the names alone.
std::vector<const char*> Sorted(const Names& names, Compare compare) {
  const kv::bench::Opaque call(compare);
  std::vector<const char*> sorted;
  sorted.reserve(names.size());
  for (const std::string& name : names) sorted.push_back(name.c_str());
  std::sort(sorted.begin(), sorted.end(),
            [&call](const char* a, const char* b) { return call(a, b) < 0; });
  return sorted;
}

auto Sorting(const Names& names, Compare compare) {
  return [&names, compare] { return Sorted(names, compare); };
}

// UTF-16 of a name as it is compared: without parentheses where those are asteroids'.
std::wstring Units(std::string name, bool isOfAsteroid) {
  if (isOfAsteroid) ClearString(name.data(), "()");
  wchar_t buffer[256];
  ::MultiByteToWideChar(CP_UTF8, 0, name.c_str(), -1, buffer, 256);
  return buffer;
}

int CompareUnits(const std::wstring& a, const std::wstring& b, unsigned flags) {
  return kv::reference::CompareUnits(a.c_str(), static_cast<int>(a.size()) + 1, b.c_str(),
                                     static_cast<int>(b.size()) + 1, flags);
}

// The same with names that are UTF-16 beforehand.
auto SortingUnits(const Names& names, bool areOfAsteroids, unsigned flags) {
  std::vector<std::wstring> units;
  for (const std::string& name : names) units.push_back(Units(name, areOfAsteroids));
  return [units = std::move(units), flags] {
    std::vector<const std::wstring*> sorted;
    sorted.reserve(units.size());
    for (const std::wstring& name : units) sorted.push_back(&name);
    std::sort(sorted.begin(), sorted.end(), [=](const std::wstring* a, const std::wstring* b) {
      return CompareUnits(*a, *b, flags) < 0;
    });
    return sorted;
  };
}

const kv::bench::Opaque kPlain(kv::reference::CompareUtf8);
const kv::bench::Opaque kPlainAsteroid(kv::reference::CompareAsteroidNames);

int WordSort(const char* a, const char* b) { return CompareStrings(a, b, false); }

template <unsigned flags>
int PlainSort(const char* a, const char* b) {
  return kPlain(a, b, flags);
}

int PlainAsteroidSort(const char* a, const char* b) { return kPlainAsteroid(a, b, kWesternFlags); }

// One operation under one code page.
struct Group {
  const char* operation;
  const char* language;
  const Names& names;
  Compare library;
  Compare plain;
  unsigned flags;

  [[nodiscard]] bool IsOfAsteroids() const { return library == CompareAsterNameWithNumber; }
};

const std::vector<Group>& Groups() {
  static const Names asteroids = AsteroidNames();
  static const Names plain = PlainNames();
  static const Names accented = AccentedNames();
  static const Names cyrillic = CyrillicNames();
  static const Names kana = KanaNames();
  static const std::vector<Group> groups = {
      {"CompareAsterNameWithNumber, sort of 200,000 asteroids", "en", asteroids,
       CompareAsterNameWithNumber, PlainAsteroidSort, kWesternFlags},
      {"CompareStrings, sort of 200,000 plain names", "en", plain, WordSort,
       PlainSort<kWesternFlags>, kWesternFlags},
      {"CompareStrings, sort of 50,000 names, a quarter accented", "en", accented, WordSort,
       PlainSort<kWesternFlags>, kWesternFlags},
      {"CompareStrings, sort of 50,000 Cyrillic names", "en", cyrillic, WordSort,
       PlainSort<kWesternFlags>, kWesternFlags},
      {"CompareStrings, sort of 50,000 Cyrillic names with diacritics", "ru", cyrillic, WordSort,
       PlainSort<kCyrillicFlags>, kCyrillicFlags},
      {"CompareStrings, sort of 50,000 kana names", "ja", kana, WordSort, PlainSort<kWesternFlags>,
       kWesternFlags},
  };
  return groups;
}

// Pairs that end at once, late, or never differ: nothing to win, and nothing to lose.
constexpr struct {
  const char* what;
  const char* a;
  const char* b;
} kPairs[] = {
    {"empty", "", ""},
    {"one letter", "a", "b"},
    {"equal", "Ceres", "Ceres"},
    {"equal but for a hyphen", "Ra-Shalom", "RaShalom"},
    {"kana of one letter", "\xE3\x82\xA2", "\xE3\x82\xA4"},
    {"Latin before kana", "Messier 31, Andromeda \xE3\x82\xA2",
     "Messier 31, Andromeda \xE3\x82\xA4"},
};

void RegisterPairs() {
  for (const auto& pair : kPairs) {
    Comparison(std::string("CompareStrings, ") + pair.what)
        .Add("library", [pair] { return WordSort(pair.a, pair.b); })
        .Add("plain", [pair] { return PlainSort<kWesternFlags>(pair.a, pair.b); });
  }
}

void CheckPair(const Group& group, const char* a, const char* b) {
  const int expected = group.plain(a, b);
  kv::bench::Require(group.library(a, b) == expected, group.operation);
  const std::wstring unitsOfA = Units(a, group.IsOfAsteroids());
  const std::wstring unitsOfB = Units(b, group.IsOfAsteroids());
  kv::bench::Require(CompareUnits(unitsOfA, unitsOfB, group.flags) == expected, group.operation);
}

// Of the sorted names the neighbours, which have the most in common, either way round.
void CheckNeighbours(const Group& group) {
  const std::vector<const char*> sorted = Sorted(group.names, group.library);
  for (std::size_t i = 0; i + 1 < sorted.size(); i += group.names.size() / kNeighbours) {
    CheckPair(group, sorted[i], sorted[i + 1]);
    CheckPair(group, sorted[i + 1], sorted[i]);
  }
}

}  // namespace

void kv::bench::CheckAgreement() {
  Composer composer;
  for (const Group& group : Groups()) {
    SetCodePage(group.language);
    CheckNeighbours(group);
    for (int pair = 0; pair < 10'000; ++pair)
      CheckPair(group, composer.OneOf(group.names).c_str(), composer.OneOf(group.names).c_str());
  }
  SetCodePage("en");
  for (const auto& pair : kPairs)
    Require(WordSort(pair.a, pair.b) == PlainSort<kWesternFlags>(pair.a, pair.b), pair.what);
}

void kv::bench::RegisterComparisons() {
  for (const Group& group : Groups()) {
    const auto library = [group, sort = Sorting(group.names, group.library)] {
      SetCodePage(group.language);
      return sort();
    };
    Comparison(group.operation)
        .CallOnceIn(kFewRounds)
        .Add("library", library)
        .Add("plain", Sorting(group.names, group.plain))
        .Add("CompareStringEx of UTF-16",
             SortingUnits(group.names, group.IsOfAsteroids(), group.flags))
        .Add("limit strcmp", Sorting(group.names, std::strcmp));
  }
  SetCodePage("en");
  RegisterPairs();
}
