// The comparisons of names where the system has another order. What has been learned stays for the
// life of the process, so each case needs a process of its own.
#include <windows.h>

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>

#include "tests/text/collation_forms.h"
#include "tests/text/collation_pairs.h"
#include "tests/text/collation_questions.h"

namespace {

using kv::test::AnswerOfSystem;
using kv::test::kCollationForms;
using kv::test::Questions;
using kv::test::System;

// -----------------------------------------------------------

// "a" and "z", "b" and "y" and so on change places.
std::wstring Mirror(std::wstring_view text) {
  std::wstring mirrored(text);
  for (wchar_t& unit : mirrored) {
    if (unit >= L'a' && unit <= L'z') unit = static_cast<wchar_t>(L'a' + L'z' - unit);
    if (unit >= L'A' && unit <= L'Z') unit = static_cast<wchar_t>(L'A' + L'Z' - unit);
  }
  return mirrored;
}

int AnswerOfMirror(DWORD flags, std::wstring_view a, std::wstring_view b) {
  return AnswerOfSystem(flags, Mirror(a), Mirror(b));
}

int AnswerWithCase(DWORD flags, std::wstring_view a, std::wstring_view b) {
  return AnswerOfSystem(flags & ~DWORD{LINGUISTIC_IGNORECASE}, a, b);
}

int AnswerWithDiacritics(DWORD flags, std::wstring_view a, std::wstring_view b) {
  return AnswerOfSystem(flags & ~DWORD{LINGUISTIC_IGNOREDIACRITIC}, a, b);
}

std::wstring Replace(std::wstring text, wchar_t unit, std::wstring_view replacement) {
  for (std::size_t at = text.find(unit); at != text.npos;
       at = text.find(unit, at + replacement.size()))
    text.replace(at, 1, replacement);
  return text;
}

// A letter that is two, the second of them the last of all.
int AnswerWithDoubleLetter(DWORD flags, std::wstring_view a, std::wstring_view b) {
  return AnswerOfSystem(flags, Replace(std::wstring(a), L'q', L"pz"),
                        Replace(std::wstring(b), L'q', L"pz"));
}

// A letter that is two, the second of them before all that is known.
int AnswerWithLowLetter(DWORD flags, std::wstring_view a, std::wstring_view b) {
  return AnswerOfSystem(flags, Replace(std::wstring(a), L'q', L"p\x309F"),
                        Replace(std::wstring(b), L'q', L"p\x309F"));
}

// A hyphen removes what follows it.
int AnswerWithoutWhatFollowsHyphens(DWORD flags, std::wstring_view a, std::wstring_view b) {
  const auto remove = [](std::wstring text) {
    for (std::size_t at = text.find(L'-'); at != text.npos; at = text.find(L'-', at))
      text.erase(at, text[at + 1] == L'\0' ? 1 : 2);
    return text;
  };
  return AnswerOfSystem(flags, remove(std::wstring(a)), remove(std::wstring(b)));
}

class OtherSystem : public testing::TestWithParam<System> {};

TEST_P(OtherSystem, GivesTheOrder) {
  const kv::test::Answer answer = GetParam().answer;
  const Questions asked(answer);
  long long compared = 0;
  for (const kv::test::CollationForm& form : kCollationForms) {
    SetCodePage(form.language);
    kv::test::RandomPairs pairs({{'a', 'z', 4}, {'A', 'Z', 4}, {' ', '~'}}, 6, 20240229);
    for (int count = 0; count < 20'000; ++count, ++compared) {
      pairs.Next();
      const std::wstring a(pairs.A().c_str(), pairs.A().c_str() + pairs.A().size() + 1);
      const std::wstring b(pairs.B().c_str(), pairs.B().c_str() + pairs.B().size() + 1);
      ASSERT_EQ(form.compare(pairs.A().c_str(), pairs.B().c_str()) + CSTR_EQUAL,
                answer(form.flags, a, b))
          << pairs.A() << " / " << pairs.B() << std::hex << ", " << form.flags;
    }
  }
  EXPECT_LT(Questions::Count(), compared / 3);
}

INSTANTIATE_TEST_SUITE_P(
    CollationLearning, OtherSystem,
    testing::Values(System{"Mirror", AnswerOfMirror}, System{"WithCase", AnswerWithCase},
                    System{"WithDoubleLetter", AnswerWithDoubleLetter},
                    System{"WithLowLetter", AnswerWithLowLetter},
                    System{"WithoutWhatFollowsHyphens", AnswerWithoutWhatFollowsHyphens},
                    System{"WithDiacritics", AnswerWithDiacritics}),
    [](const auto& system) { return system.param.what; });

// z follows all others, which differ by their codes when nothing else does.
int AnswerOfTwoRanks(DWORD, std::wstring_view a, std::wstring_view b) {
  const auto ranks = [](std::wstring_view text) {
    std::wstring result;
    for (const wchar_t unit : text) result += unit == 0 ? L'0' : unit == L'z' ? L'2' : L'1';
    return result;
  };
  const int order = ranks(a).compare(ranks(b));
  const int result = order != 0 ? order : a.compare(b);
  return result < 0 ? CSTR_LESS_THAN : result > 0 ? CSTR_GREATER_THAN : CSTR_EQUAL;
}

// The first 64 of them are told apart.
TEST(CollationLearning, LeavesToTheSystemWhatIsTooManyOfOneRank) {
  SetCodePage("en");
  const Questions asked(AnswerOfTwoRanks);
  EXPECT_EQ(kv::test::WordSort("\x01", "z"), -1);
  for (const char* known : {"\x01", "0", "@"}) {
    SCOPED_TRACE(known);
    const Questions sinceLearned(AnswerOfTwoRanks);
    EXPECT_EQ(kv::test::WordSort(known, "z"), -1);
    EXPECT_EQ(kv::test::WordSort("z", known), 1);
    EXPECT_EQ(Questions::Count(), 0);
  }
  for (const char* unknown : {"A", "y", "~"}) {
    SCOPED_TRACE(unknown);
    const Questions sinceLearned(AnswerOfTwoRanks);
    EXPECT_EQ(kv::test::WordSort(unknown, "z"), -1);
    EXPECT_EQ(Questions::Count(), 1);
  }
}

}  // namespace
