#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <string>

#include "utils/platform/platform.h"

namespace {

TEST(ClockSetting, Is24HoursUntilItIsSet) {
  EXPECT_EQ(get24HoursKvTimeFormat(), 1);
  EXPECT_EQ(get24HoursKvTimeFormat(), 1);
}

TEST(ClockSetting, KeepsAnyValueButMinusOne) {
  struct Case {
    int given;
    int kept;
  };
  for (const Case& row : {Case{0, 0},
                          {1, 1},
                          {2, 2},
                          {-2, -2},
                          {INT_MAX, INT_MAX},
                          {INT_MIN, INT_MIN},
                          {0, 0},
                          {-1, 1}}) {
    SCOPED_TRACE(row.given);
    set24HoursKvTimeFormat(row.given);
    EXPECT_EQ(get24HoursKvTimeFormat(), row.kept);
    EXPECT_EQ(get24HoursKvTimeFormat(), row.kept);
  }
}

TEST(Language, IsKeptUnchecked) {
  for (const char* code : {"xx", "de", "EN", "pt-BR", "j", "zh-Hans", "\xD1\x8F", " "}) {
    SCOPED_TRACE(code);
    SetSystemLocale(code);
    EXPECT_STREQ(GetSystemLocale(), code);
    EXPECT_STREQ(GetSystemLocale(), code);
  }
}

TEST(Language, IsCutToThirtyOneBytes) {
  const std::string kept = "abcdefghijklmnopqrstuvwxyz01234";
  for (const char* tail : {"", "5", "56", "56789"}) {
    SCOPED_TRACE(tail);
    SetSystemLocale((kept + tail).c_str());
    EXPECT_EQ(GetSystemLocale(), kept);
  }
  SetSystemLocale(std::string(100000, 'x').c_str());
  EXPECT_EQ(GetSystemLocale(), std::string(31, 'x'));
  SetSystemLocale("de");
  EXPECT_STREQ(GetSystemLocale(), "de");
}

TEST(Language, StaysInTheSamePlace) {
  SetSystemLocale("xx");
  const char* const place = GetSystemLocale();
  SetSystemLocale("de");
  EXPECT_EQ(GetSystemLocale(), place);
  EXPECT_STREQ(place, "de");
}

TEST(Language, MayBeSetFromItsOwnText) {
  SetSystemLocale("xxde");
  SetSystemLocale(GetSystemLocale() + 2);
  EXPECT_STREQ(GetSystemLocale(), "de");
}

// What the user's locale should lead to, from the environment: the case is run once for each of
// several locales of the user.
const char* Expected(const char* name) {
  const char* value = std::getenv(name);
  EXPECT_NE(value, nullptr) << name << " is not set";
  return value == nullptr ? "" : value;
}

TEST(UserLocale, DISABLED_GivesLanguageAndClock) {
  const char* const language = Expected("KVUTILS_EXPECTED_LANGUAGE");
  EXPECT_STREQ(GetSystemLocale(), language);
  SetSystemLocale("xx");
  EXPECT_STREQ(GetSystemLocale(), "xx");
  SetSystemLocale("");
  EXPECT_STREQ(GetSystemLocale(), language);
  SetSystemLocale(nullptr);
  EXPECT_STREQ(GetSystemLocale(), language);

  EXPECT_EQ(is24HoursSystemTimeFormat(), std::string(Expected("KVUTILS_EXPECTED_CLOCK")) == "24");
  EXPECT_EQ(get24HoursKvTimeFormat(), 1);
}

}  // namespace
