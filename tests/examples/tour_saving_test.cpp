// What the tour says about saving its pick, and what is saved.

#include "examples/tour/saving.h"
#include "tests/examples/tour_fixture.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <string>

namespace {

using kv::test::Contains;
using kv::test::CreateFolders;
using kv::test::FileExists;
using kv::test::FolderExists;
using kv::test::kRecords;
using kv::test::ListTree;
using kv::test::ProcessResult;
using kv::test::ReadBytes;
using kv::test::RemoveTree;
using kv::test::Widen;
using kv::test::WriteBytes;
using TourSaving = kv::test::Tour;

// The pick of a run that goes well all the same will be forgotten for the reason, and is.
void ExpectForgotten(const ProcessResult& result, const std::string& reason) {
  EXPECT_EQ(result.exitCode, 0U) << result.err;
  EXPECT_EQ(result.err, "");
  EXPECT_TRUE(Contains(result.out, "\n  This pick will be forgotten: " + reason + ".\n"))
      << result.out;
  EXPECT_FALSE(Contains(result.out, "The store saves"));
}

TEST_F(TourSaving, IsPromisedWhereItHappens) {
  const std::string promise =
      "  This pick is noted in its record. The store saves its records to your folder when the\n"
      "  program ends, and the next run reads them there.\n";
  for (int run = 0; run < 2; ++run) {
    const ProcessResult result = Run({"2026-11-21"});
    EXPECT_TRUE(Contains(result.out, promise)) << result.out;
    EXPECT_EQ(ReadBytes(Writable() + kRecords).size(), 684U);
  }
}

TEST_F(TourSaving, IsNotPromisedWhereAFileIsInTheWayOfAFolder) {
  for (const char* inTheWay : {"catalogs", "catalogs\\Planets&Moons"}) {
    SCOPED_TRACE(inTheWay);
    RemoveTree(Writable());
    WriteBytes(Writable() + inTheWay, "a file");
    ExpectForgotten(Run({"2026-11-21"}), "the folder to save it in cannot be made: " + Writable() +
                                             "catalogs\\Planets&Moons");
    EXPECT_EQ(ReadBytes(Writable() + inTheWay), "a file");
  }
}

TEST_F(TourSaving, IsNotPromisedWhereAFolderIsInTheWayOfTheFile) {
  // The records of the installation are read all the same: the writable folder has none in a
  // variant for the language.
  WriteBytes(Work() + "en\\" + kRecords, ReadBytes(Work() + kRecords));
  CreateFolders(Writable() + kRecords);
  ExpectForgotten(Run({"2026-11-21"}),
                  "the file to save it in cannot be written: " + Writable() + kRecords);
  EXPECT_EQ(ListTree(Writable() + kRecords), std::vector<std::string>{});
}

TEST_F(TourSaving, IsNotPromisedWhereTheFileIsHeld) {
  Run({"2026-11-21"});
  const std::string saved = ReadBytes(Writable() + kRecords);
  const HANDLE holder =
      ::CreateFileW(Widen(Writable() + kRecords).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(holder, INVALID_HANDLE_VALUE);
  ExpectForgotten(Run({"2026-11-21"}),
                  "the file to save it in cannot be written: " + Writable() + kRecords);
  ::CloseHandle(holder);
  EXPECT_EQ(ReadBytes(Writable() + kRecords), saved);
  EXPECT_TRUE(Contains(Run({"2026-11-21"}).out, "Picks before: 1, "));
}

TEST_F(TourSaving, IsFoundOutWithoutATrace) {
  EXPECT_EQ(tour::SavingObstacle(), "");
  EXPECT_TRUE(FolderExists(Writable() + "catalogs\\Planets&Moons"));
  EXPECT_FALSE(FileExists(Writable() + kRecords));
  WriteBytes(Writable() + kRecords, "what was saved");
  EXPECT_EQ(tour::SavingObstacle(), "");
  EXPECT_EQ(ReadBytes(Writable() + kRecords), "what was saved");
}

}  // namespace
