// The comparisons of names against the system's answers to the same questions, on random texts.
// KVUTILS_PAIR_ROUNDS=n in the environment runs the random cases n times, with other texts.
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "tests/reference/collation.h"
#include "tests/text/collation_forms.h"
#include "tests/text/collation_pairs.h"
#include "tests/text/collation_questions.h"
#include "utils/text/text.h"

namespace {

using kv::test::Alphabet;
using kv::test::CollationForm;
using kv::test::InUtf8;
using kv::test::kCollationForms;
using kv::test::kRawByte;
using kv::test::Questions;
using kv::test::RandomPairs;

using Forms = std::vector<CollationForm>;

const Forms kEverySet(std::begin(kCollationForms), std::end(kCollationForms));
const Forms kTextForms = {kCollationForms[0],
                          kCollationForms[1],
                          kCollationForms[2],
                          kCollationForms[3],
                          {"en", CompareNoCaseStrings, 0x10}};
const Forms kAsteroidForms = {
    {"en", CompareAsterNameWithNumber, 0x30},
    {"ru", CompareAsterNameWithNumber, 0x10},
};

// A pair, and what the system is to compare.
struct Pair {
  std::string a;
  std::string b;
  std::wstring unitsOfA;
  std::wstring unitsOfB;
};

// With the terminator.
std::wstring InUtf16(const std::string& text) {
  std::wstring units(text.size() + 1, L'\0');
  const int size = ::MultiByteToWideChar(kv::reference::kUtf8, 0, text.c_str(), -1, units.data(),
                                         static_cast<int>(units.size()));
  units.resize(static_cast<std::size_t>(size));
  return units;
}

Pair Ready(const std::string& a, const std::string& b) { return {a, b, InUtf16(a), InUtf16(b)}; }

Pair ReadyAsteroids(const std::string& a, const std::string& b) {
  const auto clear = [](std::string text) {
    std::erase_if(text, [](char c) { return c == '(' || c == ')'; });
    return text;
  };
  return {a, b, InUtf16(clear(a)), InUtf16(clear(b))};
}

std::string Bytes(const std::string& text) {
  std::string digits;
  for (const char c : text) {
    char byte[4];
    std::snprintf(byte, sizeof byte, "%02X ", static_cast<unsigned>(static_cast<unsigned char>(c)));
    digits += byte;
  }
  return digits;
}

// Compares pairs in several forms, and tells how often the system was asked.
class Check {
 public:
  explicit Check(Forms forms) : forms_(std::move(forms)) {
    Compare({Ready("a", "b"), Ready(InUtf8(0xC9), InUtf8(0xE8))});
    compared_ = 0;
    questions_.emplace();
  }
  ~Check() {
    const double asked = static_cast<double>(Questions::Count()) / static_cast<double>(compared_);
    std::printf("%lld comparisons, %.1f %% without the system\n", compared_, 100 * (1 - asked));
  }
  Check(const Check&) = delete;
  Check& operator=(const Check&) = delete;

  // False at the first difference.
  bool Compare(const std::vector<Pair>& pairs) {
    for (const CollationForm& form : forms_) {
      SetCodePage(form.language);
      for (const Pair& pair : pairs) {
        if (!Compare(pair, form)) return false;
      }
    }
    return true;
  }

 private:
  bool Compare(const Pair& pair, const CollationForm& form) {
    ++compared_;
    const int result = form.compare(pair.a.c_str(), pair.b.c_str());
    const int expected = kv::reference::CompareUnits(
        pair.unitsOfA.data(), static_cast<int>(pair.unitsOfA.size()), pair.unitsOfB.data(),
        static_cast<int>(pair.unitsOfB.size()), form.flags);
    EXPECT_EQ(result, expected) << "flags " << std::hex << form.flags << ": " << Bytes(pair.a)
                                << "/ " << Bytes(pair.b);
    return result == expected;
  }

  Forms forms_;
  std::optional<Questions> questions_;
  long long compared_ = 0;
};

int Rounds() {
  const char* rounds = std::getenv("KVUTILS_PAIR_ROUNDS");
  return rounds == nullptr ? 1 : std::atoi(rounds);
}

constexpr int kBlock = 5'000;

void CheckRandomPairs(const Alphabet& alphabet, std::size_t largestSize, int count,
                      const Forms& forms = kTextForms,
                      Pair (*ready)(const std::string&, const std::string&) = Ready) {
  Check check(forms);
  for (int round = 0; round < Rounds(); ++round) {
    RandomPairs random(alphabet, largestSize, 20240229U + static_cast<unsigned>(round));
    for (int block = 0; block < count / kBlock; ++block) {
      std::vector<Pair> pairs;
      for (int pair = 0; pair < kBlock; ++pair) {
        random.Next();
        pairs.push_back(ready(random.A(), random.B()));
      }
      if (!check.Compare(pairs)) return;
    }
  }
}

const Alphabet kAscii = {{0x01, 0x7F}};

const Alphabet kNames = {{'a', 'z', 6}, {'A', 'Z', 3}, {'0', '9', 2},
                         {' ', ' ', 2}, {'\'', '\''},  {'-', '-'}};

const Alphabet kFewCharacters = {{'a', 'b', 2}, {'A', 'B'}, {'-', '-'}, {'\'', '\''}, {0x01, 0x02},
                                 {0x7F, 0x7F},  {' ', ' '}, {'(', '('}, {'+', '+'}};

const Alphabet kLetters = {{'a', 'z', 2}, {0x80, 0x24F, 5}, {0x400, 0x52F, 5}, {'-', '-'}};

// e and its accents, Latin and Cyrillic.
const Alphabet kAccents = {{'e', 'e', 2},  {'E', 'E'},        {0xE8, 0xEB},
                           {0x112, 0x11B}, {0x435, 0x435, 2}, {0x415, 0x415},
                           {0x450, 0x451}, {'-', '-'},        {0x300, 0x308}};

// Scripts with rules of their own, marks that join the letter before them, letters that are
// several, characters that are not seen and that are two units, surrogates.
const Alphabet kScripts = {
    {' ', '~', 12},    {0xC0, 0x24F, 6}, {0x300, 0x36F, 2},   {0x370, 0x3FF, 2}, {0x400, 0x52F, 6},
    {0x530, 0x5FF},    {0x600, 0x6FF},   {0xE00, 0xE7F},      {0x1100, 0x11FF},  {0x1E00, 0x1FFF},
    {0x2000, 0x206F},  {0x2070, 0x218F}, {0x3040, 0x30FF, 3}, {0x4E00, 0x4EFF},  {0xAC00, 0xACFF},
    {0xD800, 0xDFFF},  {0xFB00, 0xFB06}, {0xFE00, 0xFEFF},    {0xFF00, 0xFFFF},  {0x1F300, 0x1F6FF},
    {0xC6, 0xC6},      {0xDF, 0xDF},     {0x152, 0x153},      {0x1C4, 0x1CC},    {0xAD, 0xAD},
    {0x301, 0x301, 2}, {0x306, 0x306},   {0x308, 0x308}};

const Alphabet kRawBytes = {{'a', 'c', 4},
                            {kRawByte + 0x80, kRawByte + 0xBF, 4},
                            {kRawByte + 0xC0, kRawByte + 0xC5, 2},
                            {kRawByte + 0xD0, kRawByte + 0xD5, 2},
                            {kRawByte + 0x01, kRawByte + 0xFF, 2},
                            {0xE0, 0xEF, 2},
                            {0x430, 0x43F}};

const Alphabet kAsteroids = {{'0', '9', 6}, {'(', ')', 6}, {' ', ' ', 2}, {'a', 'c', 2},
                             {'-', '-'},    {0xE8, 0xEB},  {0xDF, 0xDF}};

TEST(CollationEquality, AnswersAsTheSystemForAscii) { CheckRandomPairs(kAscii, 8, 600'000); }

TEST(CollationEquality, AnswersAsTheSystemForNames) { CheckRandomPairs(kNames, 12, 600'000); }

TEST(CollationEquality, AnswersAsTheSystemForTextsOfFewCharacters) {
  CheckRandomPairs(kFewCharacters, 4, 600'000);
}

TEST(CollationEquality, AnswersAsTheSystemForLatinAndCyrillic) {
  CheckRandomPairs(kLetters, 8, 500'000);
}

TEST(CollationEquality, AnswersAsTheSystemForLettersThatDifferInTheirAccents) {
  CheckRandomPairs(kAccents, 6, 400'000);
}

TEST(CollationEquality, AnswersAsTheSystemForAllScripts) { CheckRandomPairs(kScripts, 8, 400'000); }

TEST(CollationEquality, AnswersAsTheSystemForMalformedUtf8) {
  CheckRandomPairs(kRawBytes, 8, 400'000);
}

TEST(CollationEquality, AnswersAsTheSystemForLongTexts) {
  CheckRandomPairs(kNames, 300, 20'000);
  CheckRandomPairs(kScripts, 300, 5'000);
}

// Many of them differ behind their first sixteen bytes.
TEST(CollationEquality, AnswersAsTheSystemForNamesThatBeginAlike) {
  constexpr int kPairs = 100'000;
  RandomPairs random(kNames, 120, 20240229);
  int late = 0;
  for (int pair = 0; pair < kPairs; ++pair) {
    random.Next();
    const std::string& a = random.A();
    const auto [first, other] =
        std::mismatch(a.begin(), a.end(), random.B().begin(), random.B().end());
    late += first - a.begin() > 16 && first != a.end() && other != random.B().end();
  }
  EXPECT_GT(late, kPairs / 5);
  CheckRandomPairs(kNames, 120, kPairs);
}

// Pairs that the system decides, of short texts and of long ones.
TEST(CollationEquality, AnswersAsTheSystemForEveryLength) {
  std::vector<Pair> pairs;
  for (std::size_t length = 0; length < 600; ++length) {
    const std::string run(length, 'a');
    pairs.push_back(Ready(run + "-", run));
    pairs.push_back(Ready(run + InUtf8(0x30A2), run + InUtf8(0x30A4)));
    pairs.push_back(Ready(InUtf8(0x30A2) + run, InUtf8(0x30A2)));
    pairs.push_back(Ready(InUtf8(0x30A2), InUtf8(0x30A2) + run));
    pairs.push_back(Ready(run + "\xFF-", run + InUtf8(0x1F31F)));
  }
  Check(kTextForms).Compare(pairs);
}

TEST(CollationEquality, AnswersAsTheSystemForAsteroids) {
  CheckRandomPairs(kAsteroids, 10, 600'000, kAsteroidForms, ReadyAsteroids);
}

// All pairs of two characters of ASCII, Latin and Cyrillic, alone and between others.
void CheckAllPairs(const std::string& before, const std::string& after) {
  std::vector<std::string> texts;
  for (const auto& [first, last] : {std::pair{0x01, 0x24F}, std::pair{0x400, 0x52F}}) {
    for (int code = first; code <= last; ++code)
      texts.push_back(before + InUtf8(static_cast<char32_t>(code)) + after);
  }
  Check check(kEverySet);
  for (const std::string& a : texts) {
    std::vector<Pair> pairs;
    for (const std::string& b : texts) pairs.push_back(Ready(a, b));
    if (!check.Compare(pairs)) return;
  }
}

TEST(CollationEquality, AnswersAsTheSystemForEachPairOfCharacters) { CheckAllPairs("", ""); }

TEST(CollationEquality, AnswersAsTheSystemForEachPairOfCharactersWithinAWord) {
  CheckAllPairs("x", "y");
}

}  // namespace
