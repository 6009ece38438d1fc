#include <gtest/gtest.h>

#include <string>

#include "tests/reference/encoding.h"
#include "tests/text/encoding_texts.h"
#include "utils/text/text.h"

namespace {

struct WideCase {
  std::string text;
  std::wstring wide;
};

void CheckWide(const WideCase& row, bool isUtf8) {
  SCOPED_TRACE(testing::PrintToString(row.text));
  EXPECT_EQ(Ascii2Unicode(row.text.c_str(), isUtf8), row.wide);
}

TEST(Ascii2Unicode, ConvertsUtf8) {
  const WideCase rows[] = {
      {"", L""},
      {"C:\\path", L"C:\\path"},
      {"\xC3\xA9\xE3\x81\x82", L"\x00E9\x3042"},
      {"\xF0\x9F\x98\x80", L"\xD83D\xDE00"},
      {"\xED\xA0\x80", L"\xD800"},
  };
  for (const WideCase& row : rows) CheckWide(row, true);
}

TEST(Ascii2Unicode, EndsBeforeMalformedUtf8) {
  const WideCase rows[] = {
      {"\x80", L""},
      {"abc\x80"
       "def",
       L"abc"},
      {"ab\xC3", L"ab"},
      {"ab\xE3\x81", L"ab"},
      {"\xC3\xA9\xC3z", L"\x00E9"},
      {"a\xF4\x90\x80\x80", L"a"},
  };
  for (const WideCase& row : rows) CheckWide(row, true);
}

TEST(Ascii2Unicode, EndsAtAnOverlongNul) {
  const std::string run(400, 'a');
  const WideCase rows[] = {
      {"ab\xC0\x80"
       "cd",
       L"ab"},
      {"\xE0\x80\x80"
       "cd",
       L""},
      {run + "\xC0\x80" + run, std::wstring(400, L'a')},
  };
  for (const WideCase& row : rows) CheckWide(row, true);
}

TEST(Ascii2Unicode, ConvertsTextsOfAnyLength) {
  for (const std::size_t length : {255U, 256U, 257U, 262U, 263U, 264U, 265U, 400U, 100000U}) {
    CheckWide({std::string(length, 'x'), std::wstring(length, L'x')}, true);
    CheckWide({std::string(length, 'x'), std::wstring(length, L'x')}, false);
    CheckWide({std::string(length, 'x') + "\xC3\xA9\x80z", std::wstring(length, L'x') + L"\x00E9"},
              true);
  }
  // A pair at the border of what fits without an allocation.
  for (const std::size_t length : {260U, 261U, 262U, 263U, 264U}) {
    CheckWide({std::string(length, 'x') + "\xF0\x9F\x98\x80",
               std::wstring(length, L'x') + L"\xD83D\xDE00"},
              true);
  }
}

TEST(Ascii2Unicode, EndsLatin1AfterAsManyBytesOfItsUtf8Form) {
  const WideCase rows[] = {
      {"", L""},
      {"abc", L"abc"},
      {"\xE9", L""},
      {"\xE9\xE9", L"\x00E9"},
      {"\xE9\xE9\xE9", L"\x00E9"},
      {"\xE9\xE9\xE9\xE9", L"\x00E9\x00E9"},
      {"\xE9t\xE9", L"\x00E9t"},
      {"t\xE9", L"t"},
      {"ab\xE9", L"ab"},
      {"\xE9"
       "ab",
       L"\x00E9"
       L"a"},
      {"\x80\xFFz", L"\x0080"},
      {"\xC3\xA9", L"\x00C3"},
  };
  for (const WideCase& row : rows) CheckWide(row, false);
  CheckWide({std::string(1000, '\xFF'), std::wstring(500, L'\x00FF')}, false);
}

TEST(Ascii2Unicode, GivesEmptyTextForNull) {
  EXPECT_EQ(Ascii2Unicode(nullptr, true), L"");
  EXPECT_EQ(Ascii2Unicode(nullptr, false), L"");
}

template <typename Kinds>
void CompareKinds(const Kinds& kinds, bool isUtf8) {
  kv::test::RandomTexts<char> texts;
  for (const auto& kind : kinds) {
    SCOPED_TRACE(kind.name);
    for (std::size_t i = 0; i < 1000; ++i) {
      const std::string text = texts.Text(kind, i < 300 ? i : texts.Below(1000));
      ASSERT_EQ(Ascii2Unicode(text.c_str(), isUtf8),
                kv::reference::Ascii2Unicode(text.c_str(), isUtf8))
          << testing::PrintToString(text);
    }
  }
}

TEST(Ascii2Unicode, GivesWhatItsDefiningFormGives) {
  CompareKinds(kv::test::Utf8Kinds(), true);
  CompareKinds(kv::test::Isolat1Kinds(), false);
}

}  // namespace
