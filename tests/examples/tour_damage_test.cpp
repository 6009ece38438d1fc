// The tour on an installation that is damaged, and on damaged copies in the user's folder.

#include "tests/examples/tour_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

using kv::test::Contains;
using kv::test::CreateFolders;
using kv::test::FileExists;
using kv::test::kRecords;
using kv::test::LayOutInstallation;
using kv::test::ProcessResult;
using kv::test::ReadBytes;
using kv::test::RemoveFile;
using kv::test::RemoveTree;
using kv::test::RunTour;
using kv::test::WriteBytes;
using TourDamage = kv::test::Tour;
using TourElsewhere = kv::test::Sandbox;

constexpr std::size_t kRecordSize = 76;

void ExpectFailure(const ProcessResult& result, const std::string& complaint) {
  EXPECT_EQ(result.exitCode, 1U);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "tour: " + complaint + "\n");
}

// `line` is a whole line of the page of a run that went well.
void ExpectLine(const ProcessResult& result, const std::string& line) {
  EXPECT_EQ(result.exitCode, 0U) << result.err;
  EXPECT_EQ(result.err, "");
  EXPECT_TRUE(Contains(result.out, "\n" + line + "\n")) << line << "\n" << result.out;
}

TEST_F(TourElsewhere, FailsWithOneLineInAFolderThatIsNoInstallation) {
  ExpectFailure(RunTour({"2026-11-21", "--zone", "UTC"}, Work()),
                "no dwarf planets: " + Work() +
                    " is not the sample installation: it has no media:dwarf_names.txt");
}

TEST_F(TourDamage, MissingVariantLeavesThePlainNames) {
  RemoveTree(Work() + "en");
  const ProcessResult result = Run({"2026-11-21"});
  ExpectLine(result, "  media:dwarf_names.txt\n      media\\dwarf_names.txt" +
                         std::string(33, ' ') + " plain installation file");
  EXPECT_TRUE(Contains(result.out, "  50000  Quaoar  "));
}

TEST_F(TourDamage, MissingNamesEndTheTour) {
  RemoveTree(Work() + "en");
  RemoveFile(Work() + "media\\dwarf_names.txt");
  ExpectFailure(Run({}), "no dwarf planets: " + Work() +
                             " is not the sample installation: it has no media:dwarf_names.txt");
}

TEST_F(TourDamage, NamesOfNothingEndTheTour) {
  const std::string names = Writable() + "en\\media\\dwarf_names.txt";
  WriteBytes(names, "! nothing\nCeres\n\t\nx\tCeres\n");
  ExpectFailure(Run({}), "no dwarf planets: " + names +
                             " names no object; remove it to use the installed one");
  RemoveFile(names);
  WriteBytes(Work() + "en\\media\\dwarf_names.txt", "");
  ExpectFailure(Run({}),
                "no dwarf planets: " + Work() + "en\\media\\dwarf_names.txt names no object");
}

TEST_F(TourDamage, MissingRecordsEndTheTour) {
  RemoveFile(Work() + kRecords);
  ExpectFailure(Run({}),
                "no dwarf planets: 9 of 9 named objects have no usable record in "
                "catalogs:Planets&Moons:DwarfPlanets.bin, which is not found");
}

TEST_F(TourDamage, MissingMediaFolderLeavesTheVariants) {
  RemoveTree(Work() + "media");
  const ProcessResult result = Run({"2026-11-21"});
  ExpectLine(result, "  Observer      an unnamed place");
  ExpectLine(result, "  Local time    2026-11-21 00:00:00 UTC (UTC+00:00)");
  ExpectLine(result,
             "  media:fileutils.ini lists 0 medium folders, 0 theme folders, 0 writable folders.");
  ExpectLine(result, "  media:observer.txt\n      " + std::string(54, ' ') + " not found");
}

TEST_F(TourDamage, MissingAddOnLeavesOutTheDiscoveries) {
  const ProcessResult whole = Run({"2026-11-21"});
  EXPECT_TRUE(Contains(whole.out, "  Discovered in "));
  RemoveTree(Work() + "feature_pack");
  const ProcessResult result = Run({"2026-11-21"});
  ExpectLine(result, "  media:Discoveries.txt\n      " + std::string(54, ' ') + " not found");
  EXPECT_FALSE(Contains(result.out, "  Discovered in "));
}

TEST_F(TourDamage, TornInstallationSaysHowManyRecordsItLost) {
  const std::string records = ReadBytes(Work() + kRecords);
  WriteBytes(Work() + kRecords, records.substr(0, 5 * kRecordSize + 30));
  ExpectLine(Run({"2026-11-21"}),
             "  4 of 9 named objects have no usable record in " + Work() + kRecords);
}

TEST_F(TourDamage, TornSavedCopyIsNamedWithItsRemedy) {
  const std::string saved = Writable() + kRecords;
  for (const char* bytes : {"", "torn", "\x01"}) {
    SCOPED_TRACE(bytes);
    WriteBytes(saved, bytes);
    ExpectFailure(Run({}), "no dwarf planets: 9 of 9 named objects have no usable record in " +
                               saved + "; remove it to use the installed one");
    EXPECT_EQ(ReadBytes(saved), bytes);
  }
  WriteBytes(saved, ReadBytes(Work() + kRecords).substr(0, 8 * kRecordSize));
  ExpectLine(Run({}), "  1 of 9 named objects have no usable record in " + saved +
                          "; remove it to use the installed one");
  RemoveFile(saved);
  const ProcessResult mended = Run({});
  EXPECT_EQ(mended.exitCode, 0U);
  EXPECT_FALSE(Contains(mended.out, "no usable record"));
}

TEST_F(TourDamage, DamagedNumbersStayOutOfTheTable) {
  const std::string records = ReadBytes(Work() + kRecords);
  const struct {
    std::size_t offset;  // of the first record, Ceres
    std::string bytes;
  } kRows[] = {
      {0, std::string("\x02\0", 2)},                             // layout
      {12, std::string("\0\0\0\0\0\0\xF8\x7F", 8)},              // epoch: not a number
      {12, std::string("\x9C\x75\0\x88\x3C\xE4\x37\x7E", 8)},    // epoch: 1e300
      {20, std::string("\0\0\0\0\0\0\xF0\x7F", 8)},              // axis: infinite
      {20, std::string("\0\0\0\0\0\0\0\0", 8)},                  // axis: 0
      {28, std::string("\0\0\0\0\0\0\xF0\x3F", 8)},              // eccentricity: 1
      {60, std::string("\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF", 8)},  // mean anomaly: not a number
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE("row " + std::to_string(&row - kRows));
    std::string damaged = records;
    damaged.replace(row.offset, row.bytes.size(), row.bytes);
    WriteBytes(Work() + kRecords, damaged);
    RemoveTree(Writable());
    const ProcessResult result = Run({"2026-11-21"});
    ExpectLine(result, "  1 of 9 named objects have no usable record in " + Work() + kRecords);
    EXPECT_FALSE(Contains(result.out, "  Ceres  "));
    EXPECT_TRUE(Contains(result.out, "  Sedna  "));
    EXPECT_FALSE(Contains(result.out, "nan"));
  }
}

TEST_F(TourDamage, WrongZoneOfTheObserverNamesItsFile) {
  WriteBytes(Work() + "media\\observer.txt", "Somewhere\nMiddle/Earth\x07\n");
  ExpectFailure(Run({}), Work() +
                             "media\\observer.txt: \"Middle/Earth?\" is not a time zone like "
                             "Europe/Berlin");
  ExpectLine(Run({"--zone", "UTC"}), "  Observer      given by --zone");
}

TEST_F(TourDamage, PickIsForgottenWhereTheWritableFolderIsAFile) {
  const std::string inTheWay = Documents() + "Kelvaris_9";
  WriteBytes(inTheWay, "a file");
  for (int run = 0; run < 2; ++run) {
    const ProcessResult result = Run({"2026-11-21"});
    ExpectLine(result, "  It has not been picked before.");
    ExpectLine(
        result,
        "  This pick will be forgotten: your folder, where it would be saved, is no folder.");
    EXPECT_FALSE(Contains(result.out, "The store saves"));
  }
  EXPECT_EQ(ReadBytes(inTheWay), "a file");
  RemoveFile(inTheWay);
  const ProcessResult result = Run({"2026-11-21"});
  EXPECT_FALSE(Contains(result.out, "forgotten"));
  EXPECT_TRUE(FileExists(Writable() + kRecords));
}

TEST_F(TourElsewhere, InstallationInsideTheWritableFolderIsNoCopy) {
  const std::string installation = Writable() + "sample\\";
  LayOutInstallation(installation);
  const ProcessResult result = RunTour({"2026-11-21"}, installation);
  const struct {
    const char* name;
    const char* file;
    const char* reason;
  } kRows[] = {
      {"media:fileutils.ini", "media\\fileutils.ini", "plain installation file"},
      {"media:dwarf_names.txt", "en\\media\\dwarf_names.txt", "variant for the language \"en\""},
      {"media:Discoveries.txt", "feature_pack\\media\\discoveries.txt", "add-on content"},
  };
  for (const auto& row : kRows) {
    const std::string file = row.file;
    ExpectLine(result, std::string("  ") + row.name + "\n      " + file +
                           std::string(54 - file.size(), ' ') + " " + row.reason);
  }
}

// 300 bytes of UTF-8 in 150 characters: more than the library takes, less than the system does.
TEST_F(TourElsewhere, EndsInOrderWhereTheFoldersCannotBeTold) {
  std::string folder = Work();
  for (int depth = 0; depth < 3; ++depth) {
    for (int i = 0; i < 49; ++i) folder += "ж";
    folder += '\\';
  }
  CreateFolders(folder);
  const ProcessResult result = RunTour({}, folder);
  EXPECT_EQ(result.exitCode, 1U);
  EXPECT_EQ(result.out, "KelvarisPath::GetCDPath return false");
  EXPECT_EQ(result.err, "tour: stopped by the error above\n");
}

}  // namespace
