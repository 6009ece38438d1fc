// When the comparisons of names ask the system, and what they make of its answers. What has been
// learned stays for the life of the process, so each case needs a process of its own.
#include <windows.h>

#include <pthread.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <iterator>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "tests/reference/collation.h"
#include "tests/support/failing_system.h"
#include "tests/support/import_patch.h"
#include "tests/text/collation_forms.h"
#include "tests/text/collation_questions.h"
#include "utils/text/text.h"

namespace {

using kv::test::AnswerOfSystem;
using kv::test::CollationForm;
using kv::test::kCollationForms;
using kv::test::Questions;
using kv::test::System;
using kv::test::WordSort;

constexpr struct Pair {
  const char* a;
  const char* b;
} kAsciiPairs[] = {
    {"a", "b"},      {"Ceres", "Pallas"}, {"pallas", "PALLAS"}, {"M 31", "M 33"},
    {"M 3", "M 31"}, {"", "a"},           {"NGC 1", "ngc 1"},   {"co-op", "coal"},
    {"x.y", "x,y"},  {"A", "a"},          {"Vega", "vEGA"},
};

// An accent, words of Cyrillic, both, a capital.
constexpr Pair kLetterPairs[] = {
    {"C\xC3\xA9res", "Cyres"},
    {"\xD0\x92\xD0\xB5\xD0\xB3\xD0\xB0", "\xD0\x94\xD0\xB5\xD0\xBD\xD0\xB5\xD0\xB1"},
    {"\xC5\xA0\x61", "\xD0\x92"},
    {"\xC3\xA9", "\xC3\x89"},
};

// Hyphens alone, kana, a mark behind a letter, several letters in one, malformed UTF-8.
constexpr Pair kPairsForTheSystem[] = {
    {"x\xE3\x81\x82", "x\xE3\x81\x84"},
    {"ae\xCC\x81", "ae"},
    {"Stra\xC3\x9F", "Strass"},
    {"a\x80", "a\xFF"},
    {"a\xC3", "a"},
    {"a\xC3(", "a\xC3)"},
    {"\xF0\x9F\x8C\x9F", ""},
    {"\xCE\xB1", "\xCE\xB2"},
};
constexpr Pair kWordsWithHyphens[] = {{"co-op", "coop"}, {"co-op", "CO-OP"}, {"'a", "a'"}};

void Warm() {
  for (const CollationForm& form : kCollationForms) {
    SetCodePage(form.language);
    for (const auto& pairs : {kAsciiPairs[0], kLetterPairs[0]}) form.compare(pairs.a, pairs.b);
  }
}

// Compares the pairs under `form`: results are those of the system, which is asked `questions`
// times for each.
void CheckPair(const CollationForm& form, const Pair& pair, int questions) {
  SCOPED_TRACE(testing::Message() << pair.a << " / " << pair.b << std::hex << ", " << form.flags);
  SetCodePage(form.language);
  const Questions asked;
  EXPECT_EQ(form.compare(pair.a, pair.b), kv::reference::CompareUtf8(pair.a, pair.b, form.flags));
  EXPECT_EQ(Questions::Count(), questions);
}

template <std::size_t count>
void CheckPairs(const Pair (&pairs)[count], int questions) {
  for (const CollationForm& form : kCollationForms) {
    for (const Pair& pair : pairs) {
      CheckPair(form, pair, questions);
      CheckPair(form, {pair.b, pair.a}, questions);
    }
  }
}

TEST(CollationLearning, LeavesNothingToAskOfAsciiAndLetters) {
  Warm();
  CheckPairs(kAsciiPairs, 0);
  CheckPairs(kLetterPairs, 0);
}

TEST(CollationLearning, AsksOnceForEveryOtherPair) {
  Warm();
  CheckPairs(kPairsForTheSystem, 1);
  for (const Pair& pair : kWordsWithHyphens) {
    CheckPair(kCollationForms[0], pair, 1);
    CheckPair(kCollationForms[2], pair, 1);
  }
  const CollationForm asteroids = {"en", CompareAsterNameWithNumber, 0x30};
  for (const Pair& pair : kPairsForTheSystem) {
    // "(" and ")" are not part of the text that the reference compares.
    if (std::string(pair.a).find('(') == std::string::npos) CheckPair(asteroids, pair, 1);
  }
  const Questions asked;
  EXPECT_EQ(CompareAsterNameWithNumber("(1) co-op", "(1) coop"), 1);
  EXPECT_EQ(CompareAsterNameWithNumber("a\xC3(\xA9", "ae)"), 0);
  EXPECT_EQ(Questions::Count(), 2);
}

TEST(CollationLearning, PassesOverTheParenthesesOfAsteroids) {
  Warm();
  SetCodePage("en");
  const Questions asked;
  EXPECT_EQ(CompareAsterNameWithNumber("(2) Pallas", "2 pallas"), 0);
  EXPECT_EQ(CompareAsterNameWithNumber("(2) Pallas", "(20) Massalia"), -1);
  EXPECT_EQ(CompareAsterNameWithNumber("2)", "2"), 0);
  EXPECT_EQ(CompareAsterNameWithNumber("((", ")"), 0);
  EXPECT_EQ(CompareAsterNameWithNumber("(2) P\xC3\xA4ris", "2 Paris"), 0);
  EXPECT_EQ(Questions::Count(), 0);
}

TEST(CollationLearning, FindsATextEqualToItself) {
  Warm();
  for (const char* text : {"", "Ra-Shalom", "\xD1\x91-\xD1\x91", "(1) 'x'"}) {
    for (const CollationForm& form : kCollationForms) CheckPair(form, {text, text}, 0);
  }
}

TEST(CollationLearning, BeginsWithTheFirstComparisonAndTheFirstLetter) {
  bool isLetterInFirst = false;
  for (const CollationForm& form : kCollationForms) {
    SetCodePage(form.language);
    isLetterInFirst = !isLetterInFirst;
    const auto [a, b] = kLetterPairs[0];
    for (const Pair& pair : {kAsciiPairs[0], isLetterInFirst ? Pair{a, b} : Pair{b, a}}) {
      {
        const Questions asked;
        form.compare(pair.a, pair.b);
        EXPECT_GT(Questions::Count(), 100);
        EXPECT_LT(Questions::Count(), 25'000);
      }
      CheckPair(form, pair, 0);
    }
  }
}

TEST(CollationLearning, NeedsNoMemoryForWhatItKnows) {
  Warm();
  SetCodePage("en");
  const std::string longName(1000, 'x');
  const kv::test::ImportPatch patch(kv::test::kNew, kv::test::ThrowForMemory);
  for (const Pair& pair :
       {Pair{longName.c_str(), "xx"}, {"\xC3\xA9", "E"}, {"(1) a-b", "(1) a-c"}}) {
    EXPECT_NO_THROW(CompareStrings(pair.a, pair.b, false));
    EXPECT_NO_THROW(CompareNoCaseStrings(pair.a, pair.b));
    EXPECT_NO_THROW(CompareAsterNameWithNumber(pair.a, pair.b));
  }
}

constexpr int kThreads = 8;

// Notes the threads that are about to learn: where the library locks, and where it asks. The first
// question about ASCII, and the first about a letter, wait until all threads have come so far.
class Meeting {
 public:
  // Of the calling thread, once all have done with the stage before.
  static void Begin(int stage) {
    ++s_begun[stage];
    WaitForAll(s_begun[stage]);
    s_stage = stage;
    s_hasArrived = false;
  }

  static int Answer(DWORD flags, std::wstring_view a, std::wstring_view b) {
    Arrive();
    WaitForAll(s_arrived[s_stage]);
    return AnswerOfSystem(flags, a, b);
  }

 private:
  static int Lock(pthread_mutex_t* mutex) {
    Arrive();
    return ::pthread_mutex_lock(mutex);
  }
  static void Arrive() {
    if (!std::exchange(s_hasArrived, true)) ++s_arrived[s_stage];
  }

  static void WaitForAll(const std::atomic<int>& count) {
    while (count < kThreads) ::Sleep(0);
  }

  static inline std::atomic<int> s_begun[2];
  static inline std::atomic<int> s_arrived[2];
  static inline thread_local int s_stage = 0;
  static inline thread_local bool s_hasArrived = true;
  kv::test::ImportPatch lock_{"pthread_mutex_lock", &Lock};
};

void CompareInStages(int& errors) {
  const auto compare = [&errors](const Pair& pair) {
    errors += WordSort(pair.a, pair.b) != kv::reference::CompareUtf8(pair.a, pair.b, 0x30);
  };
  Meeting::Begin(0);
  std::for_each(std::begin(kAsciiPairs), std::end(kAsciiPairs), compare);
  Meeting::Begin(1);
  std::for_each(std::begin(kLetterPairs), std::end(kLetterPairs), compare);
}

TEST(CollationLearning, HappensOnceWhateverThreadsCompare) {
  SetCodePage("en");
  std::vector<int> errors(kThreads);
  long long byThreads = 0;
  {
    const Meeting meeting;
    const Questions asked(Meeting::Answer);
    std::vector<std::thread> threads;
    for (int& count : errors) threads.emplace_back(CompareInStages, std::ref(count));
    for (std::thread& thread : threads) thread.join();
    byThreads = Questions::Count();
  }
  EXPECT_EQ(errors, std::vector<int>(kThreads));
  SetCodePage("ru");
  const Questions asked;
  for (const Pair& pair : {kAsciiPairs[0], kLetterPairs[0]}) WordSort(pair.a, pair.b);
  // Under other flags a few questions more or less.
  EXPECT_NEAR(static_cast<double>(byThreads), static_cast<double>(Questions::Count()), 100);
}

// ---- Systems that answer otherwise

int Refuse(DWORD, std::wstring_view, std::wstring_view) { return 0; }
int SayBefore(DWORD, std::wstring_view, std::wstring_view) { return CSTR_LESS_THAN; }
int SayEqual(DWORD, std::wstring_view, std::wstring_view) { return CSTR_EQUAL; }
int SayAfter(DWORD, std::wstring_view, std::wstring_view) { return CSTR_GREATER_THAN; }

int SayAnything(DWORD, std::wstring_view, std::wstring_view) {
  static unsigned state = 1;
  state = state * 1664525 + 1013904223;
  return 1 + static_cast<int>((state >> 16) % 3);
}

int Reverse(int answer) { return CSTR_LESS_THAN + CSTR_GREATER_THAN - answer; }

int SayTheReverse(DWORD flags, std::wstring_view a, std::wstring_view b) {
  return Reverse(AnswerOfSystem(flags, a, b));
}

int CompareFromTheEnd(DWORD flags, std::wstring_view a, std::wstring_view b) {
  const std::wstring reverseOfA(a.rbegin() + 1, a.rend());
  const std::wstring reverseOfB(b.rbegin() + 1, b.rend());
  return AnswerOfSystem(flags, reverseOfA, reverseOfB);
}

int SortLongerTextsFirst(DWORD flags, std::wstring_view a, std::wstring_view b) {
  if (a.size() != b.size()) return a.size() > b.size() ? CSTR_LESS_THAN : CSTR_GREATER_THAN;
  return AnswerOfSystem(flags, a, b);
}

int SortLongerTextsFirstIfTheyBeginAlike(DWORD flags, std::wstring_view a, std::wstring_view b) {
  const std::size_t size = std::min(a.size(), b.size()) - 1;
  const int answer = AnswerOfSystem(flags, a, b);
  return a.size() != b.size() && a.substr(0, size) == b.substr(0, size) ? Reverse(answer) : answer;
}

// Right for the one or two characters that are compared to learn.
int ReverseTextsOfThree(DWORD flags, std::wstring_view a, std::wstring_view b) {
  const int answer = AnswerOfSystem(flags, a, b);
  return a.size() > 4 && b.size() > 4 ? Reverse(answer) : answer;
}

int NeverSayEqual(DWORD flags, std::wstring_view a, std::wstring_view b) {
  return AnswerOfSystem(flags, a, b) == CSTR_LESS_THAN ? CSTR_LESS_THAN : CSTR_GREATER_THAN;
}

// To a question that is the last one reversed, what was answered to that.
int SayTheSameInReverse(DWORD flags, std::wstring_view a, std::wstring_view b) {
  static std::wstring lastOfA;
  static std::wstring lastOfB;
  const int answer =
      a == lastOfB && b == lastOfA ? AnswerOfSystem(flags, b, a) : AnswerOfSystem(flags, a, b);
  lastOfA = a;
  lastOfB = b;
  return answer;
}

template <int allowed>
int RefuseAfter(DWORD flags, std::wstring_view a, std::wstring_view b) {
  return Questions::Count() > allowed ? 0 : AnswerOfSystem(flags, a, b);
}

class ContradictorySystem : public testing::TestWithParam<System> {};

TEST_P(ContradictorySystem, IsAskedAboutEveryPair) {
  for (const CollationForm& form : kCollationForms) {
    SetCodePage(form.language);
    const Questions asked(GetParam().answer);
    form.compare("a", "b");
    form.compare("\xC3\xA9", "b");
  }
  CheckPairs(kAsciiPairs, 1);
  CheckPairs(kLetterPairs, 1);
}

INSTANTIATE_TEST_SUITE_P(
    CollationLearning, ContradictorySystem,
    testing::Values(
        System{"Refuse", Refuse}, System{"SayBefore", SayBefore}, System{"SayEqual", SayEqual},
        System{"SayAfter", SayAfter}, System{"SayAnything", SayAnything},
        System{"SayTheReverse", SayTheReverse}, System{"CompareFromTheEnd", CompareFromTheEnd},
        System{"SortLongerTextsFirst", SortLongerTextsFirst},
        System{"SortLongerTextsFirstIfTheyBeginAlike", SortLongerTextsFirstIfTheyBeginAlike},
        System{"ReverseTextsOfThree", ReverseTextsOfThree}, System{"NeverSayEqual", NeverSayEqual},
        System{"SayTheSameInReverse", SayTheSameInReverse}, System{"RefuseAfter0", RefuseAfter<0>},
        System{"RefuseAfter1", RefuseAfter<1>}, System{"RefuseAfter100", RefuseAfter<100>},
        System{"RefuseAfter700", RefuseAfter<700>}, System{"RefuseAfter1200", RefuseAfter<1200>},
        System{"RefuseAfter1800", RefuseAfter<1800>}),
    [](const auto& system) { return system.param.what; });

TEST(CollationLearning, GivesTheFailureOfTheSystem) {
  const Questions asked(Refuse);
  for (const CollationForm& form : kCollationForms) {
    SetCodePage(form.language);
    const long long before = Questions::Count();
    EXPECT_EQ(form.compare("b", "a"), -3);
    EXPECT_EQ(Questions::Count() - before, 2);  // one for learning
    for (const Pair& pair : kAsciiPairs) EXPECT_EQ(form.compare(pair.a, pair.b), -3);
    for (const Pair& pair : kLetterPairs) EXPECT_EQ(form.compare(pair.a, pair.b), -3);
    EXPECT_EQ(form.compare("", ""), -3);
  }
  EXPECT_EQ(CompareNoCaseStrings("a", "a"), -3);
  EXPECT_EQ(CompareAsterNameWithNumber("(1) a", "1 a"), -3);
  EXPECT_EQ(CompareAsterNameWithNumber("()", ""), -3);
}

// Marks, which are asked about behind letters of ASCII too, are none.
bool HasLetter(std::wstring_view text) {
  return std::any_of(text.begin(), text.end(),
                     [](wchar_t unit) { return unit > 0x7F && (unit < 0x300 || unit > 0x36F); });
}

int RefuseLetters(DWORD flags, std::wstring_view a, std::wstring_view b) {
  return HasLetter(a) || HasLetter(b) ? 0 : AnswerOfSystem(flags, a, b);
}

int ReverseTextsOfThreeWithLetters(DWORD flags, std::wstring_view a, std::wstring_view b) {
  return HasLetter(a) || HasLetter(b) ? ReverseTextsOfThree(flags, a, b)
                                      : AnswerOfSystem(flags, a, b);
}

class ContradictoryLetters : public testing::TestWithParam<System> {};

TEST_P(ContradictoryLetters, LeaveWhatIsKnownOfAscii) {
  {
    const Questions asked(GetParam().answer);
    Warm();
  }
  CheckPairs(kAsciiPairs, 0);
  CheckPairs(kLetterPairs, 1);
}

INSTANTIATE_TEST_SUITE_P(CollationLearning, ContradictoryLetters,
                         testing::Values(System{"Refuse", RefuseLetters},
                                         System{"ReverseTextsOfThree",
                                                ReverseTextsOfThreeWithLetters}),
                         [](const auto& system) { return system.param.what; });

}  // namespace
