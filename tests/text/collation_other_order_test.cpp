// The comparisons of names where the system has another order. What has been learned stays for the
// life of the process, so each case needs a process of its own.
#include <windows.h>

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>
#include <utility>

#include "tests/text/collation_forms.h"
#include "tests/text/collation_pairs.h"
#include "tests/text/collation_questions.h"

namespace {

using kv::test::AnswerOfSystem;
using kv::test::kCollationForms;
using kv::test::Questions;
using kv::test::System;

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

constexpr wchar_t kBehindAllLetters = 0x4E00;

// Two characters together are a letter of its own, behind all that begins with `before`.
template <wchar_t first, wchar_t second, wchar_t before>
int AnswerWithJoined(DWORD flags, std::wstring_view a, std::wstring_view b) {
  const auto join = [](std::wstring text) {
    for (const wchar_t capital : {L'\0', L' '}) {
      for (const wchar_t other : {L'\0', L' '}) {
        const wchar_t pair[] = {static_cast<wchar_t>(first ^ capital),
                                static_cast<wchar_t>(second <= 'z' ? second ^ other : second), 0};
        for (std::size_t at = text.find(pair); at != text.npos; at = text.find(pair)) {
          text[at] = before;
          text[at + 1] = kBehindAllLetters;
        }
      }
    }
    return text;
  };
  return AnswerOfSystem(flags, join(std::wstring(a)), join(std::wstring(b)));
}

// The same where capitals count, too.
int AnswerWithJoinedAndCase(DWORD flags, std::wstring_view a, std::wstring_view b) {
  return AnswerWithJoined<'c', 'h', 'c'>(flags & ~DWORD{LINGUISTIC_IGNORECASE}, a, b);
}

// A character that is not seen itself doubles and mirrors the one behind it.
template <wchar_t turning>
int AnswerWithTurned(DWORD flags, std::wstring_view a, std::wstring_view b) {
  const auto turn = [](std::wstring_view text) {
    std::wstring turned;
    bool isTurning = false;
    for (const wchar_t unit : text) {
      const bool wasTurning = std::exchange(isTurning, unit == turning);
      if (isTurning) continue;
      turned += wasTurning && unit != 0 ? Mirror(std::wstring(2, unit)) : std::wstring(1, unit);
    }
    return turned;
  };
  return AnswerOfSystem(flags, turn(a), turn(b));
}

std::wstring InUtf16(const std::string& text) {
  wchar_t units[64];
  const int size = ::MultiByteToWideChar(CP_UTF8, 0, text.c_str(), -1, units, 64);
  return {units, static_cast<std::size_t>(size)};
}

class OtherSystem : public testing::TestWithParam<System> {};

// Compares random pairs of the alphabet, and tells how often the system was asked for each.
double ExpectOrderOf(const kv::test::Alphabet& alphabet, kv::test::Answer answer) {
  const Questions asked(answer);
  long long compared = 0;
  for (const kv::test::CollationForm& form : kCollationForms) {
    SetCodePage(form.language);
    kv::test::RandomPairs pairs(alphabet, 6, 20240229);
    for (int count = 0; count < 20'000; ++count, ++compared) {
      pairs.Next();
      const int order = form.compare(pairs.A().c_str(), pairs.B().c_str()) + CSTR_EQUAL;
      EXPECT_EQ(order, answer(form.flags, InUtf16(pairs.A()), InUtf16(pairs.B())))
          << pairs.A() << " / " << pairs.B() << std::hex << ", " << form.flags;
      if (testing::Test::HasFailure()) return 0;
    }
  }
  return static_cast<double>(Questions::Count()) / static_cast<double>(compared);
}

TEST_P(OtherSystem, GivesTheOrder) {
  EXPECT_LT(ExpectOrderOf({{'a', 'z', 4}, {'A', 'Z', 4}, {' ', '~'}}, GetParam().answer), 0.33);
}

// Of texts in which the letters that join, those near them and marks are frequent.
TEST_P(OtherSystem, GivesTheOrderOfLettersThatMayJoin) {
  const kv::test::Alphabet alphabet = {
      {'a', 'e', 2},  {'C', 'E'},        {'h', 'i', 2},  {'x', 'z', 2},     {' ', ' '},
      {'-', '-'},     {'~', 0x7F},       {'9', '9'},     {0x300, 0x301, 2}, {0x306, 0x306},
      {0x308, 0x308}, {0x327, 0x327, 3}, {0x437, 0x43A}, {0xE8, 0xE9}};
  ExpectOrderOf(alphabet, GetParam().answer);
}

INSTANTIATE_TEST_SUITE_P(
    CollationLearning, OtherSystem,
    testing::Values(System{"Mirror", AnswerOfMirror}, System{"WithCase", AnswerWithCase},
                    System{"WithDoubleLetter", AnswerWithDoubleLetter},
                    System{"WithLowLetter", AnswerWithLowLetter},
                    System{"WithoutWhatFollowsHyphens", AnswerWithoutWhatFollowsHyphens},
                    System{"WithDiacritics", AnswerWithDiacritics},
                    System{"ContractionBehindItsWords", AnswerWithJoined<'c', 'h', 'c'>},
                    System{"ContractionWithCase", AnswerWithJoinedAndCase},
                    System{"ContractionBehindAllLetters", AnswerWithJoined<'a', 'a', 'z'>},
                    System{"ContractionOfLastLetters", AnswerWithJoined<'y', 'z', 'z'>},
                    System{"ContractionBeforeItsWords", AnswerWithJoined<'c', 'a', 'b'>},
                    System{"MarkMakesALaterLetter", AnswerWithJoined<'e', 0x301, 'z'>},
                    System{"MarkMakesAnEarlierLetter", AnswerWithJoined<'e', 0x327, 'a'>},
                    System{"MarkMakesAnotherCyrillicLetter", AnswerWithJoined<0x438, 0x306, 0x439>},
                    System{"TurningHyphen", AnswerWithTurned<'-'>},
                    System{"TurningSpace", AnswerWithTurned<' '>},
                    System{"TurningTilde", AnswerWithTurned<'~'>},
                    System{"TurningDelete", AnswerWithTurned<0x7F>}),
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
