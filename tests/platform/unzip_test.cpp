// How UnzipFile runs the program: what a stand-in for it records.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

#include "tests/platform/unzip_stand_in.h"
#include "utils/platform/platform.h"

namespace {

using namespace kv::test;

// A stand-in stands in the current folder.
class Unzip : public UnzipSandbox {
 protected:
  Unzip() { PlaceStandIn(Work() + "unzip.exe"); }
};

TEST_F(Unzip, PassesFolderAndArchiveUnquoted) {
  struct Case {
    const char* archive;
    const char* folder;
    const char* commandLine;
  };
  for (const Case& row : {
           // The archive's own folder, without a "\" at its end.
           Case{"C:\\dl\\pack.zip", nullptr, "unzip.exe -q -u -d C:\\dl C:\\dl\\pack.zip"},
           {"C:\\dl\\new\\pack.zip", nullptr,
            "unzip.exe -q -u -d C:\\dl\\new C:\\dl\\new\\pack.zip"},
           {"C:\\pack.zip", nullptr, "unzip.exe -q -u -d C: C:\\pack.zip"},
           {"dl\\pack.zip", nullptr, "unzip.exe -q -u -d dl dl\\pack.zip"},
           {"\\pack.zip", nullptr, "unzip.exe -q -u -d  \\pack.zip"},
           {"C:\\dl\\", nullptr, "unzip.exe -q -u -d C:\\dl C:\\dl\\"},
           {"C:\\dl/new/pack.zip", nullptr, "unzip.exe -q -u -d C: C:\\dl/new/pack.zip"},
           {"C:\\dl\\каталог\\天🌍.zip", nullptr,
            "unzip.exe -q -u -d C:\\dl\\каталог C:\\dl\\каталог\\天🌍.zip"},
           // The given folder, always with a "\" at its end.
           {"C:\\dl\\pack.zip", "C:\\out", "unzip.exe -q -u -d C:\\out\\ C:\\dl\\pack.zip"},
           {"C:\\dl\\pack.zip", "C:\\", "unzip.exe -q -u -d C:\\ C:\\dl\\pack.zip"},
           {"C:\\dl\\pack.zip", "C:", "unzip.exe -q -u -d C:\\ C:\\dl\\pack.zip"},
           {"C:\\dl\\pack.zip", "out", "unzip.exe -q -u -d out\\ C:\\dl\\pack.zip"},
           {"C:\\dl\\pack.zip", "C:/out", "unzip.exe -q -u -d C:/out\\ C:\\dl\\pack.zip"},
           {"C:\\dl\\pack.zip", "", "unzip.exe -q -u -d \\ C:\\dl\\pack.zip"},
           {"pack.zip", "out", "unzip.exe -q -u -d out\\ pack.zip"},
           {"", "out", "unzip.exe -q -u -d out\\ "},
           {"C:\\dl\\pack.zip", "天🌍", "unzip.exe -q -u -d 天🌍\\ C:\\dl\\pack.zip"},
           // Blanks, quotes and percent signs are passed on as they are.
           {"C:\\my dl\\pack.zip", nullptr, "unzip.exe -q -u -d C:\\my dl C:\\my dl\\pack.zip"},
           {"C:\\dl\\my pack.zip", "my out", "unzip.exe -q -u -d my out\\ C:\\dl\\my pack.zip"},
           {"\"C:\\dl\\pack.zip\"", "out", "unzip.exe -q -u -d out\\ \"C:\\dl\\pack.zip\""},
           {"C:\\%s%n\\%d.zip", nullptr, "unzip.exe -q -u -d C:\\%s%n C:\\%s%n\\%d.zip"},
       }) {
    SCOPED_TRACE(row.commandLine);
    EXPECT_TRUE(UnzipFile(row.archive, row.folder));
    EXPECT_EQ(TakeRecord()["command line"], row.commandLine);
  }
}

// Which of the folders exist when the program starts.
TEST_F(Unzip, MakesTheFolderReadyAsItIsGiven) {
  struct Case {
    const char* folder;
    std::vector<std::string> watched;
    std::vector<std::string> existing;
    std::string lastArgumentButOne;
  };
  const std::vector<std::string> ab = {"{root}a", "{root}a\\b"};
  for (const Case& row : {
           Case{"{root}a", {"{root}a"}, {}, "{root}a\\"},
           {"{root}a\\", {"{root}a"}, {"{root}a"}, "{root}a\\"},
           {"{root}a\\b", ab, {"{root}a"}, "{root}a\\b\\"},
           {"{root}a\\b\\", ab, ab, "{root}a\\b\\"},
           {"{root}a\\каталог\\天🌍\\",
            {"{root}a", "{root}a\\каталог", "{root}a\\каталог\\天🌍"},
            {"{root}a", "{root}a\\каталог", "{root}a\\каталог\\天🌍"},
            "{root}a\\каталог\\天🌍\\"},
           // Both other separators count as "\" when folders are made.
           {"{root}a/b", ab, {"{root}a"}, "{root}a/b\\"},
           {"{root}a/b/", ab, ab, "{root}a/b/\\"},
           {"{root}a:b", ab, {"{root}a"}, "{root}a:b\\"},
           // A folder without any separator is made, in the current one.
           {"out", {"{root}work\\out"}, {"{root}work\\out"}, "out\\"},
           {"out\\", {"{root}work\\out"}, {"{root}work\\out"}, "out\\"},
           {"out\\inner",
            {"{root}work\\out", "{root}work\\out\\inner"},
            {"{root}work\\out"},
            "out\\inner\\"},
           {"", {"{root}a", "{root}work\\out"}, {}, "\\"},
           // The archive's own folder is not made.
           {nullptr, ab, {}, "{root}a\\b"},
       }) {
    SCOPED_TRACE(row.folder == nullptr ? "null" : row.folder);
    const auto joined = [this](const std::vector<std::string>& folders) {
      std::string text;
      for (const std::string& folder : folders) text += InRoot(folder) + ";";
      return text;
    };
    SetEnvironment(kWatchedFolders, joined(row.watched));
    const std::string archive = InRoot("{root}a\\b\\pack.zip");
    const std::string folder = row.folder == nullptr ? "" : InRoot(row.folder);
    EXPECT_TRUE(UnzipFile(archive.c_str(), row.folder == nullptr ? nullptr : folder.c_str()));

    Record record = TakeRecord();
    EXPECT_EQ(record["command line"],
              "unzip.exe -q -u -d " + InRoot(row.lastArgumentButOne) + " " + archive);
    EXPECT_EQ(record["existing folders"], joined(row.existing));
    EXPECT_EQ(record["folder"] + "\\", Work());
    EXPECT_EQ(CurrentFolder() + "\\", Work());
    RemoveTree(Root() + "a");
    RemoveTree(Work() + "out");
  }
}

TEST_F(Unzip, RunsAlsoWhereTheFolderCannotBeMade) {
  WriteBytes(Root() + "a", "a file where a folder is wanted");
  EXPECT_TRUE(UnzipFile("C:\\dl\\pack.zip", (Root() + "a\\b\\").c_str()));
  EXPECT_EQ(TakeRecord()["command line"],
            "unzip.exe -q -u -d " + Root() + "a\\b\\ C:\\dl\\pack.zip");
  EXPECT_EQ(ReadBytes(Root() + "a"), "a file where a folder is wanted");
}

TEST_F(Unzip, RunsNothingForPathsThatNameNoArchive) {
  struct Case {
    const char* what;
    const char* archive;
    const char* folder;
  };
  const std::vector<std::string> before = ListTree(Root());
  for (const Case& row : {Case{"no archive", nullptr, nullptr},
                          {"no archive, a folder", nullptr, "out\\"},
                          {"no folder part", "data.zip", nullptr},
                          {"no folder part but a drive", "C:data.zip", nullptr},
                          {"other separators only", "C:/dl/data.zip", nullptr},
                          {"empty archive", "", nullptr},
                          {"lone continuation byte", "C:\\dl\\\x80.zip", nullptr},
                          {"lone continuation byte, a folder", "C:\\dl\\\x80.zip", "out\\"},
                          {"cut sequence at the end", "C:\\dl\\pack\xE5\xA4", "out\\"},
                          {"Latin-1", "C:\\\xE9t\xE9\\pack.zip", nullptr},
                          {"malformed folder", "C:\\dl\\pack.zip", "out\\\xFF\\"},
                          {"cut sequence at the folder's end", "C:\\dl\\pack.zip", "out\xD0"},
                          {"a NUL spelt with two bytes", "C:\\dl\\\xC0\x80.zip", "out\\"}}) {
    SCOPED_TRACE(row.what);
    EXPECT_FALSE(UnzipFile(row.archive, row.folder));
    EXPECT_TRUE(TakeRecord().empty());
    EXPECT_EQ(ListTree(Root()), before);
  }
}

// The limit is 32,766 UTF-16 units; 24 are the program, its options, "out\" and the blanks.
TEST_F(Unzip, RunsCommandLinesUpToTheSystemsLimit) {
  const std::string longest = std::string(32742 - 8, 'x') + "天天天天.zip";
  EXPECT_TRUE(UnzipFile(longest.c_str(), "out"));
  EXPECT_TRUE(TakeRecord()["command line"] == "unzip.exe -q -u -d out\\ " + longest);

  for (const std::size_t surplus : {std::size_t{1}, std::size_t{2}, std::size_t{1'000'000}}) {
    SCOPED_TRACE(surplus);
    EXPECT_FALSE(UnzipFile((std::string(surplus, 'y') + longest).c_str(), "out"));
    EXPECT_TRUE(TakeRecord().empty());
  }
  EXPECT_FALSE(UnzipFile(("C:\\" + std::string(16'500, 'z') + "\\pack.zip").c_str(), nullptr));
  EXPECT_FALSE(UnzipFile("C:\\dl\\pack.zip", std::string(40'000, 'z').c_str()));
  EXPECT_FALSE(UnzipFile(longest.c_str(), "made\\inner\\"));
  EXPECT_TRUE(FolderExists(Work() + "made\\inner"));
  EXPECT_TRUE(TakeRecord().empty());
}

TEST_F(Unzip, DoesNotExamineTheExitCode) {
  for (const char* exitCode : {"0", "1", "3", "50", "255", "0xFFFFFFFF", "0xC0000005"}) {
    SCOPED_TRACE(exitCode);
    SetEnvironment(kExitCode, exitCode);
    EXPECT_TRUE(UnzipFile("C:\\dl\\pack.zip", nullptr));
    EXPECT_FALSE(TakeRecord().empty());
  }
}

TEST_F(Unzip, GoesOnWhenTheProgramCrashes) {
  constexpr unsigned long kAccessViolation = 0xC0000005;
  SetEnvironment(kCrashes, "1");
  ASSERT_EQ(RunProgram(Work() + "unzip.exe", {}).exitCode, kAccessViolation);
  TakeRecord();
  EXPECT_TRUE(UnzipFile("C:\\dl\\pack.zip", nullptr));
  EXPECT_FALSE(TakeRecord().empty());
  SetEnvironment(kCrashes, "");
  EXPECT_TRUE(UnzipFile("C:\\dl\\pack.zip", nullptr));
  EXPECT_FALSE(TakeRecord().empty());
}

TEST_F(Unzip, WaitsForTheEnd) {
  SetEnvironment(kDelay, "1500");  // the record is written behind it
  const ULONGLONG begin = ::GetTickCount64();
  EXPECT_TRUE(UnzipFile("C:\\dl\\pack.zip", nullptr));
  EXPECT_GE(::GetTickCount64() - begin, 1400U);
  EXPECT_FALSE(TakeRecord().empty());
}

TEST_F(Unzip, GivesTheCallersEnvironmentAndFolder) {
  CreateFolders(Root() + "天🌍");
  PlaceStandIn(Root() + "天🌍\\unzip.exe");
  SetCurrentFolder(Root() + "天🌍");
  SetEnvironment(kAnyVariable, "Ж and more");
  EXPECT_TRUE(UnzipFile("C:\\dl\\pack.zip", nullptr));
  Record record = TakeRecord();
  EXPECT_EQ(record["variable"], "Ж and more");
  EXPECT_EQ(record["folder"], Root() + "天🌍");
}

TEST_F(Unzip, PassesNoHandleOn) {
  SECURITY_ATTRIBUTES inheritable = {sizeof inheritable, nullptr, TRUE};
  const HANDLE event = ::CreateEventW(&inheritable, TRUE, FALSE, nullptr);
  ASSERT_NE(event, nullptr);
  SetEnvironment(kCallersEvent, std::to_string(reinterpret_cast<std::uintptr_t>(event)));

  // A program that inherits handles has this one, and sets it.
  RunProgram(Work() + "unzip.exe", {});
  EXPECT_EQ(::WaitForSingleObject(event, 0), WAIT_OBJECT_0);
  TakeRecord();
  ::ResetEvent(event);

  EXPECT_TRUE(UnzipFile("C:\\dl\\pack.zip", nullptr));
  EXPECT_FALSE(TakeRecord().empty());
  EXPECT_EQ(::WaitForSingleObject(event, 0), static_cast<DWORD>(WAIT_TIMEOUT));
  ::CloseHandle(event);
}

// Where the program is looked for. The host's folder is the test program's, in a copy of its own.
class UnzipSearch : public UnzipSandbox {
 protected:
  UnzipSearch() {
    host_ = Root() + "host\\unzip_tests.exe";
    WriteBytes(host_, ReadBytes(ProgramFolder() + "unzip_tests.exe"));
    CreateFolders(Root() + "first");
    CreateFolders(Root() + "second");
    // The library and its run-time DLLs stay where they are.
    SetEnvironment("PATH", Root() + "first;" + Root() + "second;" + ProgramFolder());
  }

  // The program that a host in a folder of its own runs, empty when it finds none.
  std::string Found() {
    const ProcessResult result = RunProgram(
        host_, {"--gtest_filter=UnzipHost.DISABLED_Unpacks", "--gtest_also_run_disabled_tests"});
    Record record = TakeRecord();
    EXPECT_EQ(result.exitCode, record.empty() ? 1U : 0U) << result.out << result.err;
    return record["program"];
  }

 private:
  std::string host_;
};

TEST(UnzipHost, DISABLED_Unpacks) { EXPECT_TRUE(UnzipFile("C:\\dl\\pack.zip", nullptr)); }

TEST_F(UnzipSearch, TakesTheHostsFolderThenTheCurrentOneThenThePath) {
  EXPECT_EQ(Found(), "");
  for (const char* folder : {"second\\", "first\\", "work\\", "host\\"}) {
    SCOPED_TRACE(folder);
    const std::string program = Root() + folder + "unzip.exe";
    PlaceStandIn(program);
    EXPECT_EQ(Found(), program);
  }
}

TEST_F(UnzipSearch, GivesFalseForAProgramThatCannotBeStarted) {
  EXPECT_FALSE(UnzipFile("C:\\dl\\pack.zip", nullptr));
  EXPECT_FALSE(UnzipFile("C:\\dl\\pack.zip", (Root() + "a\\b\\").c_str()));
  EXPECT_TRUE(FolderExists(Root() + "a\\b"));
  WriteBytes(Work() + "unzip.exe", "no program");
  EXPECT_FALSE(UnzipFile("C:\\dl\\pack.zip", nullptr));
}

}  // namespace
