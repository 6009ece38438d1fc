// The second half of the tour, run as a program: its sections in order, its failures, and what it
// leaves behind, which is nothing.

#include "tests/examples/tour_services_fixture.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using kv::test::Contains;
using kv::test::kRecords;
using kv::test::ListTree;
using kv::test::ProcessResult;
using kv::test::RemoveFile;
using kv::test::RemoveTree;
using kv::test::UseTemporary;
using kv::test::WriteBytes;
using TourServices = kv::test::TourServices;
using Entries = std::vector<std::string>;

constexpr const char* kServiceTitles[] = {
    "A download, checked by its CRC-32",
    "An update, installed over the file that it replaces",
    "An archive, unpacked",
    "Names in natural order",
    "Greek letters and accents",
    "The clock of an animation",
    "HTML on the clipboard",
};

// The titles of a page, which are underlined.
Entries Titles(const std::string& page) {
  Entries titles;
  const std::string underline = "\n" + std::string(92, '-') + "\n";
  for (std::size_t end = page.find(underline); end != std::string::npos;
       end = page.find(underline, end + 1)) {
    const std::size_t start = page.rfind('\n', end - 1) + 1;
    titles.push_back(page.substr(start, end - start));
  }
  return titles;
}

// What a section says, without its title.
std::string Section(const std::string& page, const std::string& title) {
  const std::string head = "\n" + title + "\n" + std::string(92, '-') + "\n";
  const std::size_t start = page.find(head);
  if (start == std::string::npos) return "no section";
  const std::size_t text = start + head.size();
  // The next title, with an empty line before it and its underline behind it.
  const std::size_t underline = page.find("\n-----", text);
  if (underline == std::string::npos) return page.substr(text);
  return page.substr(text, page.rfind("\n\n", underline) + 1 - text);
}

void ExpectWhole(const std::string& page) {
  for (const char* title : kServiceTitles) {
    const std::string section = Section(page, title);
    EXPECT_GT(section.size(), 100U) << title << "\n" << section;
  }
}

TEST_F(TourServices, FollowTheDwarfPlanets) {
  const ProcessResult result = RunWhole({"2026-11-21"});
  EXPECT_EQ(result.exitCode, 0U);
  EXPECT_EQ(result.err, "");
  Entries titles = {"Where each data name leads",
                    "Where they stand, seen from the centre of the Earth (astrometric, J2000)",
                    "Pick of the night"};
  titles.insert(titles.end(), std::begin(kServiceTitles), std::end(kServiceTitles));
  EXPECT_EQ(Titles(result.out), titles);
  ExpectWhole(result.out);
}

TEST_F(TourServices, LeaveNothingButWhatThePlacesSave) {
  const Entries work = ListTree(Work());
  RunWhole({"2026-11-21"});
  EXPECT_EQ(ListTree(Work()), work);
  EXPECT_EQ(ListTree(Temporary()), Entries{});
  EXPECT_EQ(
      ListTree(Documents()),
      (Entries{"Kelvaris_9\\", "Kelvaris_9\\catalogs\\", "Kelvaris_9\\catalogs\\Planets&Moons\\",
               std::string("Kelvaris_9\\") + kRecords, "Kelvaris_9\\workspaces\\"}));
}

TEST_F(TourServices, AloneSaveNothing) {
  const Entries work = ListTree(Work());
  const ProcessResult result = RunServices();
  EXPECT_EQ(result.exitCode, 0U);
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(Titles(result.out), Entries(std::begin(kServiceTitles), std::end(kServiceTitles)));
  ExpectWhole(result.out);
  EXPECT_EQ(ListTree(Work()), work);
  EXPECT_EQ(ListTree(Temporary()), Entries{});
  EXPECT_EQ(ListTree(Documents()), (Entries{"Kelvaris_9\\", "Kelvaris_9\\workspaces\\"}));
}

TEST_F(TourServices, FitNinetyTwoColumns) {
  const std::string page = RunServices().out;
  std::size_t start = page.find(kServiceTitles[0]);
  ASSERT_NE(start, std::string::npos);
  for (std::size_t end; (end = page.find('\n', start)) != std::string::npos; start = end + 1) {
    const std::string line = page.substr(start, end - start);
    EXPECT_LE(kv::test::Widen(line).size(), 92U) << line;
    EXPECT_FALSE(line.ends_with(' ')) << line;
  }
}

// Each failure is one line, and takes nothing away but its own section.
TEST_F(TourServices, GoOnBehindAFailure) {
  const struct {
    std::string file;  // of the installation, missing
    const char* title;
    const char* complaint;
  } kRows[] = {
      {"server\\constellations.zip", "An archive, unpacked",
       "server:constellations.zip is not found"},
      {"unzip.exe", "An archive, unpacked",
       "unzip.exe cannot be started: it is not in this folder, nor on the search path"},
      {"catalogs\\Planets&Moons\\Moons.txt", "An update, installed over the file that it replaces",
       "catalogs:Planets&Moons:Moons.txt is not found"},
      {"media\\messier.txt", "Names in natural order", "media:messier.txt is missing or empty"},
      {"media\\stars.txt", "Greek letters and accents", "media:stars.txt is missing or empty"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.complaint);
    const std::string content = kv::test::ReadBytes(Work() + row.file);
    RemoveFile(Work() + row.file);
    const Entries work = ListTree(Work());
    const ProcessResult result = RunServices();
    EXPECT_EQ(result.exitCode, 1U);
    EXPECT_EQ(result.err, std::string("tour: ") + row.complaint + "\n");
    for (const char* title : kServiceTitles) {
      const std::string section = Section(result.out, title);
      EXPECT_EQ(section.empty(), std::string(title) == row.title) << title << "\n" << section;
    }
    EXPECT_EQ(ListTree(Work()), work);
    EXPECT_EQ(ListTree(Temporary()), Entries{});
    EXPECT_EQ(ListTree(Documents()), (Entries{"Kelvaris_9\\", "Kelvaris_9\\workspaces\\"}));
    WriteBytes(Work() + row.file, content);
  }
}

TEST_F(TourServices, WriteNothingWithoutAFolderForTemporaryFiles) {
  const std::string tooLong = Temporary() + std::string(150, 'x') + "\\";
  UseTemporary(tooLong);
  const ProcessResult result = RunServices();
  EXPECT_EQ(result.exitCode, 1U);
  EXPECT_EQ(result.err, "tour: the path of the folder for temporary files (TMP) is too long: " +
                            tooLong + "kvutils-tour-1\\\n");
  EXPECT_EQ(Titles(result.out), Entries(std::begin(kServiceTitles) + 3, std::end(kServiceTitles)));
  EXPECT_EQ(ListTree(tooLong), Entries{});
}

TEST_F(TourServices, DoWithoutTheFolderOfTheUser) {
  WriteBytes(Documents() + "Kelvaris_9", "a file");
  const ProcessResult result = RunServices();
  EXPECT_EQ(result.exitCode, 0U) << result.err;
  ExpectWhole(result.out);
  EXPECT_EQ(kv::test::ReadBytes(Documents() + "Kelvaris_9"), "a file");
}

TEST_F(TourServices, DoWithoutTheDwarfPlanets) {
  RemoveTree(Work() + "en");
  RemoveFile(Work() + "media\\dwarf_names.txt");
  EXPECT_EQ(RunServices().exitCode, 0U);
}

class TourServicesIn : public kv::test::TourServices,
                       public ::testing::WithParamInterface<std::string> {};
INSTANTIATE_TEST_SUITE_P(Scripts, TourServicesIn, testing::ValuesIn(kv::test::kFolderNames),
                         kv::test::FolderNameTag);

TEST_P(TourServicesIn, RunWithFoldersInThatScript) {
  const std::string installation = Root() + GetParam() + " 1\\";
  kv::test::LayOutInstallation(installation);
  UseTemporary(Root() + GetParam() + " 2\\");
  const ProcessResult result = RunTourProgram({"--only", "services"}, installation);
  EXPECT_EQ(result.exitCode, 0U);
  EXPECT_EQ(result.err, "");
  ExpectWhole(result.out);
  EXPECT_EQ(ListTree(Root() + GetParam() + " 2"), Entries{});
}

}  // namespace
