#include <gtest/gtest.h>

#include <string>

#include "utils/text/text.h"

namespace {

TEST(IsAlphaDigital, KnowsLettersAndDigitsOfEveryScript) {
  for (const wchar_t c : std::wstring(L"azAZ09\x00E9\x00DF\x0416\x03B1\x3042\x4E00")) {
    SCOPED_TRACE(static_cast<unsigned>(c));
    EXPECT_TRUE(IsAlphaDigital(c));
  }
  for (const wchar_t c : std::wstring(L" _-'.@[`{\t\n\x00A0\x00D7\x2013\x3001")) {
    SCOPED_TRACE(static_cast<unsigned>(c));
    EXPECT_FALSE(IsAlphaDigital(c));
  }
  EXPECT_FALSE(IsAlphaDigital(L'\0'));
}

}  // namespace
