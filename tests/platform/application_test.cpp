#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "utils/platform/platform.h"

namespace {

TEST(WorkspaceVersion, IsKeptAsItIs) {
  EXPECT_EQ(GetWorkspaceVersion(), 0x08010000U);
  for (const unsigned version : {0U, 1U, 0x09000000U, 0xFFFFFFFFU, 0x80000000U}) {
    SCOPED_TRACE(version);
    SetWorkspaceVersion(version);
    EXPECT_EQ(GetWorkspaceVersion(), version);
    EXPECT_EQ(GetWorkspaceVersion(), version);
  }
}

TEST(RetinaDisplay, IsOffUntilItIsSet) {
  EXPECT_EQ(IsRetinaDisplay(), 0U);
  for (const bool isRetina : {true, true, false, true, false}) {
    SetRetinaDisplay(isRetina);
    EXPECT_EQ(IsRetinaDisplay(), isRetina ? 1U : 0U);
    EXPECT_EQ(GetNightVision(), 0);
  }
}

TEST(NightVision, IsOnForEveryValueButZero) {
  struct Case {
    int given;
    int kept;
  };
  EXPECT_EQ(GetNightVision(), 0);
  for (const Case& row :
       {Case{42, 1}, {0, 0}, {1, 1}, {-1, 1}, {0, 0}, {INT_MIN, 1}, {INT_MAX, 1}, {0x100, 1}}) {
    SCOPED_TRACE(row.given);
    SetNightVision(row.given);
    EXPECT_EQ(GetNightVision(), row.kept);
    EXPECT_EQ(IsRetinaDisplay(), 0U);
  }
}

TEST(Dictionary, IsThereForFourLanguages) {
  struct Case {
    const char* language;
    int isEnabled;
  };
  for (const Case& row :
       {Case{"de", 1}, {"en", 1}, {"fr", 1},  {"ru", 1},    {"es", 0},  {"it", 0},  {"nl", 0},
        {"ja", 0},     {"xx", 0}, {"DE", 0},  {"Ru", 0},    {"d", 0},   {"e", 0},   {"deu", 0},
        {"eng", 0},    {"r", 0},  {"fr ", 0}, {"pt-PT", 0}, {"en-", 0}, {" en", 0}, {"de-DE", 0}}) {
    SCOPED_TRACE(row.language);
    SetSystemLocale(row.language);
    EXPECT_EQ(isDictionaryEnable(), row.isEnabled);
  }
}

TEST(PanelName, StaysWhereThereIsADictionary) {
  for (const char* language : {"de", "en", "fr", "ru"}) {
    for (const char* name : {"panel.ldf", "panel", "", ".ldf", "a.b.c", "media:panels:sky.ldf"}) {
      SCOPED_TRACE(std::string(language) + " " + name);
      SetSystemLocale(language);
      EXPECT_EQ(GetPanelLdfFileNameWD(name), name);
    }
    EXPECT_EQ(GetPanelLdfFileNameWD(nullptr), "");
  }
}

TEST(PanelName, EndsDifferentlyWithoutADictionary) {
  struct Case {
    const char* name;
    const char* expected;
  };
  SetSystemLocale("ja");
  for (const Case& row : {Case{"panel.ldf", "panel_wd.ldf"},
                          {"panel.small.ldf", "panel_wd.ldf"},
                          {"panel", "panel_wd.ldf"},
                          {"panel.", "panel_wd.ldf"},
                          {"panel.png", "panel_wd.ldf"},
                          {"", "_wd.ldf"},
                          {".ldf", "_wd.ldf"},
                          {"..\\panel.ldf", "_wd.ldf"},
                          {"media:v1.2:panel.ldf", "media:v1_wd.ldf"},
                          {"панель.ldf", "панель_wd.ldf"},
                          {"\xFF.ldf", "\xFF_wd.ldf"},
                          {nullptr, "_wd.ldf"}}) {
    SCOPED_TRACE(row.expected);
    EXPECT_EQ(GetPanelLdfFileNameWD(row.name), row.expected);
  }
  const std::string longName(100'000, 'p');
  EXPECT_EQ(GetPanelLdfFileNameWD((longName + ".ldf").c_str()), longName + "_wd.ldf");
}

TEST(Platform, GivesItsFixedAnswers) {
  for (int i = 0; i < 2; ++i) {
    EXPECT_STREQ(GetVersionString(), "9.0.0");
    EXPECT_EQ(GetBuildNumber(), -1);
    EXPECT_EQ(IsiPad(), 1);
    EXPECT_EQ(GetNullIrrlichDevice(), nullptr);
    EXPECT_EQ(createOSSpecificThreadObject(), nullptr);
    releaseOSSpecificThreadObject();
  }
}

}  // namespace
