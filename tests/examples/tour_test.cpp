// The tour as a program: the files it finds, what it prints, and what it leaves behind.

#include "tests/examples/tour_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using kv::test::Contains;
using kv::test::FileExists;
using kv::test::kRecords;
using kv::test::LayOutInstallation;
using kv::test::ProcessResult;
using kv::test::ReadBytes;
using kv::test::RunTour;
using kv::test::SandboxIn;
using kv::test::Tour;

// The line below `dataName` in the list of data names: the file and the reason.
std::string AnswerFor(const std::string& page, const std::string& dataName) {
  const std::size_t name = page.find("  " + dataName + "\n");
  if (name == std::string::npos) return {};
  const std::size_t line = page.find('\n', name) + 1;
  return page.substr(line, page.find('\n', line) - line);
}

// The table of places, from its title to the empty line behind it.
std::string Places(const std::string& page) {
  const std::size_t start = page.find("Where they stand");
  if (start == std::string::npos) return {};
  return page.substr(start, page.find("\n\n", start) - start);
}

TEST_F(Tour, ShowsTheObserversClock) {
  const struct {
    std::vector<std::string> arguments;
    const char* time;
  } kRows[] = {
      // The zone of media:observer.txt.
      {{"2026-01-01T12:00"}, "2026-01-01 13:00:00 Europe/Berlin (UTC+01:00)"},
      {{"2026-07-01T12:00"}, "2026-07-01 14:00:00 Europe/Berlin (UTC+02:00)"},
      {{"2026-12-31T20:00", "--zone", "Asia/Kathmandu"},
       "2027-01-01 01:45:00 Asia/Kathmandu (UTC+05:45)"},
      {{"2026-01-01", "--zone", "America/St_Johns"},
       "2025-12-31 20:30:00 America/St_Johns (UTC-03:30)"},
      {{"2026-01-01", "--zone", "UTC"}, "2026-01-01 00:00:00 UTC (UTC+00:00)"},
      {{"2026-01-01", "--zone", "Europe/London"}, "2026-01-01 00:00:00 Europe/London (UTC+00:00)"},
      // Local mean time, before there were zones.
      {{"1800-01-02", "--zone", "Europe/London"},
       "1800-01-01 23:58:45 Europe/London (UTC-00:01:15)"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.time);
    const ProcessResult result = Run(row.arguments);
    EXPECT_TRUE(Contains(result.out, std::string("Local time    ") + row.time + "\n"))
        << result.out << result.err;
  }
}

TEST_F(Tour, PutsTheObservatoryOnlyWhereItsOwnClockIsShown) {
  const std::string own = "  Observer      Archenhold Observatory, Berlin\n";
  const std::string given = "  Observer      given by --zone\n";
  const std::string page = Run({"2026-11-21"}).out;
  EXPECT_TRUE(Contains(page, own)) << page;
  EXPECT_FALSE(Contains(page, given)) << page;
  const std::string elsewhere = Run({"2026-11-21", "--zone", "Asia/Tokyo"}).out;
  EXPECT_FALSE(Contains(elsewhere, own)) << elsewhere;
  EXPECT_TRUE(Contains(elsewhere, given)) << elsewhere;
}

TEST_F(Tour, ExplainsItsColumnOfTheUnion) {
  EXPECT_TRUE(
      Contains(Run({"2026-11-21"}).out,
               "\n  IAU: \"yes\" is a dwarf planet named by the International "
               "Astronomical Union, \"-\" one\n  that planetary scientists count as such.\n"));
}

TEST_F(Tour, SaysWhichFileEachNameLeadsToAndWhy) {
  const ProcessResult result = Run({"2026-11-21", "--language", "de"});
  ASSERT_EQ(result.exitCode, 0U) << result.err;
  const struct {
    const char* name;
    const char* file;
    const char* reason;
  } kRows[] = {
      {"media:fileutils.ini", "media\\fileutils.ini ", "plain installation file"},
      {"media:dwarf_names.txt", "de\\media\\dwarf_names.txt ", "variant for the language \"de\""},
      {"media:Discoveries.txt", "feature_pack\\media\\discoveries.txt ", "add-on content"},
      {"catalogs:Planets&Moons:DwarfPlanets.bin", "catalogs\\Planets&Moons\\DwarfPlanets.bin ",
       "plain installation file"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.name);
    const std::string answer = AnswerFor(result.out, row.name);
    EXPECT_EQ(answer.rfind(std::string("      ") + row.file, 0), 0U) << answer;
    EXPECT_TRUE(answer.ends_with(row.reason)) << answer;
  }
  EXPECT_TRUE(Contains(result.out, "lists 3 medium folders, 2 theme folders, 2 writable folders."));
}

TEST_F(Tour, UsesThePlainNamesWhereTheLanguageHasNoVariant) {
  const struct {
    const char* language;
    const char* file;
    const char* choice;
  } kRows[] = {
      {"en", "      en\\media\\dwarf_names.txt ", "en, language folder \"en\", code page 1252"},
      {"fr", "      media\\dwarf_names.txt ", "fr, language folder \"fr\", code page 1252"},
      {"pt-PT", "      media\\dwarf_names.txt ", "pt-PT, language folder \"pt\", code page 1252"},
      {"ru", "      media\\dwarf_names.txt ", "ru, language folder \"ru\", code page 1251"},
      {"ja", "      media\\dwarf_names.txt ", "ja, language folder \"ja\", code page 932"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.language);
    const ProcessResult result = Run({"2026-11-21", "--language", row.language});
    EXPECT_EQ(AnswerFor(result.out, "media:dwarf_names.txt").rfind(row.file, 0), 0U) << result.out;
    EXPECT_TRUE(Contains(result.out, row.choice)) << result.out;
  }
}

TEST_F(Tour, ListsTheObjectsInTheOrderOfTheirNames) {
  const std::string places = Places(Run({"2026-11-21"}).out);
  std::size_t last = 0;
  for (const char* name :
       {"Ceres", "Eris", "Gonggong", "Haumea", "Makemake", "Orcus", "Pluto", "Quaoar", "Sedna"}) {
    SCOPED_TRACE(name);
    const std::size_t position = places.find(std::string("  ") + name + " ");
    ASSERT_NE(position, std::string::npos) << places;
    EXPECT_GT(position, last);
    last = position;
  }
}

TEST_F(Tour, SecondRunReadsWhatTheFirstOneSaved) {
  const std::string installed = ReadBytes(Work() + kRecords);
  const ProcessResult first = Run({"2026-11-21"});
  ASSERT_EQ(first.exitCode, 0U) << first.err;
  EXPECT_TRUE(Contains(first.out, "It has not been picked before."));
  ASSERT_TRUE(FileExists(Writable() + kRecords));
  const std::string saved = ReadBytes(Writable() + kRecords);
  EXPECT_EQ(saved.size(), 684U);
  EXPECT_NE(saved, installed);
  EXPECT_EQ(ReadBytes(Work() + kRecords), installed);

  const ProcessResult second = Run({"2026-11-21"});
  const std::string answer = AnswerFor(second.out, "catalogs:Planets&Moons:DwarfPlanets.bin");
  EXPECT_EQ(answer.rfind("      <your folder>\\catalogs\\Planets&Moons\\DwarfPlanets.bin ", 0), 0U)
      << answer;
  EXPECT_TRUE(answer.ends_with("your folder goes first")) << answer;
  EXPECT_TRUE(Contains(second.out, "Picks before: 1, the last for 2026-11-21."));
  EXPECT_EQ(Places(second.out), Places(first.out));

  const ProcessResult third = Run({"2026-11-21"});
  EXPECT_TRUE(Contains(third.out, "Picks before: 2, the last for 2026-11-21."));
}

TEST_F(Tour, PagesFitNinetyTwoColumns) {
  Run({"2026-11-21"});
  for (const char* language : {"en", "de"}) {
    SCOPED_TRACE(language);
    const std::string page = Run({"2026-11-21", "--language", language}).out;
    std::size_t start =
        page.find("Where each data name leads");  // the folders above are as long as they are
    ASSERT_NE(start, std::string::npos);
    for (std::size_t end; (end = page.find('\n', start)) != std::string::npos; start = end + 1) {
      const std::string line = page.substr(start, end - start);
      EXPECT_LE(kv::test::Widen(line).size(), 92U) << line;
    }
  }
}

TEST_F(Tour, PicksEachObjectInTurn) {
  std::vector<std::string> picks;
  for (int day = 1; day <= 9; ++day) {
    const std::string page = Run({"2026-11-0" + std::to_string(day)}).out;
    const std::size_t pick = page.find("Pick of the night");
    ASSERT_NE(pick, std::string::npos) << page;
    const std::size_t name = page.find("\n  ", pick) + 3;
    picks.push_back(page.substr(name, page.find(':', name) - name));
  }
  std::sort(picks.begin(), picks.end());
  EXPECT_EQ(picks, (std::vector<std::string>{"Ceres", "Eris", "Gonggong", "Haumea", "Makemake",
                                             "Orcus", "Pluto", "Quaoar", "Sedna"}));
}

TEST_F(Tour, RecordsOfTheInstallationAreNinePlainRecords) {
  const std::string records = ReadBytes(Work() + kRecords);
  ASSERT_EQ(records.size(), 9U * 76U);
  // Ceres: layout 1, standing 1, no pick; epoch 2461200.5 as a 64-bit number; class 1, number 1.
  EXPECT_EQ(records.substr(0, 12), std::string("\x01\0\x01\0\0\0\0\0\0\0\0\0", 12));
  EXPECT_EQ(records.substr(12, 8), std::string("\0\0\0\x40\x08\xC7\x42\x41", 8));
  EXPECT_EQ(records.substr(68, 8), std::string("\x01\0\0\0\x01\0\0\0", 8));
  // Orcus, the last one: standing 2, number 90482.
  EXPECT_EQ(records.substr(8 * 76, 4), std::string("\x01\0\x02\0", 4));
  EXPECT_EQ(records.substr(8 * 76 + 68, 8), std::string("\x01\0\0\0\x72\x61\x01\0", 8));
}

class TourIn : public SandboxIn {};
INSTANTIATE_TEST_SUITE_P(Scripts, TourIn, testing::ValuesIn(kv::test::kFolderNames),
                         kv::test::FolderNameTag);

TEST_P(TourIn, RunsFromAFolderInThatScript) {
  LayOutInstallation(Work());
  const ProcessResult result = RunTour({"2026-11-21"}, Work());
  EXPECT_EQ(result.exitCode, 0U) << result.err;
  EXPECT_TRUE(Contains(result.out, "Installation  " + Work() + "\n")) << result.out;
  EXPECT_TRUE(Contains(result.out, "Sedna")) << result.out;
}

}  // namespace
