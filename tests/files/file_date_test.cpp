// GetFileDate: the local day of a file's last change.
#include <windows.h>

#include <sys/stat.h>

#include <cstdlib>
#include <ctime>
#include <string>

#include "tests/files/binary_file_fixture.h"
#include "tests/support/failing_system.h"
#include "tests/support/held_file.h"
#include "tests/support/import_patch.h"
#include "tests/support/sandbox.h"
#include "utils/files/files.h"
#include "utils/paths/paths.h"

namespace {

using kv::test::CreateFolders;
using kv::test::ImportPatch;
using kv::test::RemoveFile;
using kv::test::SetTimes;
using kv::test::WriteBytes;

constexpr long long kMarch2024 = 1'709'604'000;  // 5 March 2024, 02:00 UTC

// "5.3.2024", or "untouched"; a change outside the three elements fails.
std::string DateOf(const char* name) {
  short date[5] = {-7, -7, -7, -7, -7};
  const bool isTold = GetFileDate(date + 1, name);
  EXPECT_EQ(date[0], -7);
  EXPECT_EQ(date[4], -7);
  if (!isTold) {
    EXPECT_TRUE(date[1] == -7 && date[2] == -7 && date[3] == -7);
    return "untouched";
  }
  return std::to_string(date[1]) + "." + std::to_string(date[2]) + "." + std::to_string(date[3]);
}

// Zones without daylight saving time, as the run-time library reads them: a name and the hours to
// add for UTC.
void SetZone(const char* zone) {
  ::_putenv((std::string("TZ=") + zone).c_str());
  ::_tzset();
}

class FileDate : public kv::test::Sandbox {
 protected:
  FileDate() { SetZone("GMT0"); }
  ~FileDate() override { SetZone(""); }
};
class FileDateIn : public kv::test::SandboxIn {};

TEST_F(FileDate, IsTheLocalDay) {
  const struct {
    const char* zone;
    long long seconds;  // since 1970, UTC
    const char* date;
  } rows[] = {
      {"GMT0", 1'709'596'799, "4.3.2024"},  // 4 March 2024, 23:59:59
      {"GMT0", 1'709'596'800, "5.3.2024"},
      {"GMT0", 1'709'683'199, "5.3.2024"},
      {"GMT0", 1'709'683'200, "6.3.2024"},
      {"JST-9", 1'709'564'399, "4.3.2024"},  // 4 March 2024, 14:59:59 UTC
      {"JST-9", 1'709'564'400, "5.3.2024"},
      {"JST-9", 1'709'650'800, "6.3.2024"},
      {"PST8", 1'709'625'599, "4.3.2024"},  // 5 March 2024, 07:59:59 UTC
      {"PST8", 1'709'625'600, "5.3.2024"},
      {"PST8", 1'709'712'000, "6.3.2024"},
      {"GMT0", 1'709'164'800, "29.2.2024"},
      {"GMT0", 1'709'251'200, "1.3.2024"},
      {"GMT0", 1'677'628'800, "1.3.2023"},
      {"GMT0", 1'677'628'799, "28.2.2023"},
      {"GMT0", 946'684'799, "31.12.1999"},
      {"GMT0", 946'684'800, "1.1.2000"},
      {"JST-9", 946'684'799, "1.1.2000"},
      {"PST8", 946'684'800, "31.12.1999"},
      {"GMT0", 1, "1.1.1970"},
      {"GMT0", 2'147'483'648, "19.1.2038"},
      {"GMT0", 4'102'444'799, "31.12.2099"},
  };
  WriteBytes("a.txt", "abc");
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.zone) + " " + std::to_string(row.seconds));
    SetZone(row.zone);
    SetTimes("a.txt", 1'000'000'000, row.seconds, 0);
    EXPECT_EQ(DateOf("a.txt"), row.date);
  }
}

// In the zone of this machine, whichever it is.
TEST_F(FileDate, IsTheFifthOfMarchFromMidnightToMidnight) {
  SetZone("");
  const struct {
    SYSTEMTIME local;
    const char* date;
  } rows[] = {
      {{2024, 3, 0, 4, 12, 0, 0, 0}, "4.3.2024"}, {{2024, 3, 0, 5, 0, 0, 0, 0}, "5.3.2024"},
      {{2024, 3, 0, 5, 12, 0, 0, 0}, "5.3.2024"}, {{2024, 3, 0, 5, 23, 59, 59, 0}, "5.3.2024"},
      {{2024, 3, 0, 6, 0, 0, 0, 0}, "6.3.2024"},
  };
  WriteBytes("a.txt", "abc");
  for (const auto& row : rows) {
    SCOPED_TRACE(row.local.wHour);
    SYSTEMTIME utc;
    FILETIME time;
    ASSERT_TRUE(::TzSpecificLocalTimeToSystemTime(nullptr, &row.local, &utc));
    ASSERT_TRUE(::SystemTimeToFileTime(&utc, &time));
    const auto ticks = static_cast<long long>(
        (static_cast<unsigned long long>(time.dwHighDateTime) << 32) | time.dwLowDateTime);
    SetTimes("a.txt", 0, ticks / 10'000'000 - 11'644'473'600, 0);
    EXPECT_EQ(DateOf("a.txt"), row.date);
  }
}

TEST_F(FileDate, IsThatOfTheFileThatTheNameResolvesTo) {
  const struct {
    std::string place;
    long long day;
    const char* date;
  } rows[] = {
      {Work() + "media\\a.txt", 0, "5.3.2024"},
      {Writable() + "media\\a.txt", 1, "6.3.2024"},
      {Work() + "en\\media\\a.txt", 2, "7.3.2024"},
      {Writable() + "en\\media\\a.txt", 3, "8.3.2024"},
  };
  EXPECT_EQ(DateOf("media:a.txt"), "untouched");
  for (const auto& row : rows) {
    SCOPED_TRACE(row.place);
    WriteBytes(row.place, "abc");
    SetTimes(row.place, 0, kMarch2024 + row.day * 86'400, 0);
    EXPECT_EQ(DateOf("media:a.txt"), row.date);
  }
}

TEST_P(FileDateIn, IsToldUnderAnyName) {
  const std::string place = Work() + "media\\" + GetParam() + ".txt";
  WriteBytes(place, "abc");
  SetZone("GMT0");
  SetTimes(place, 0, kMarch2024, 0);
  EXPECT_EQ(DateOf(("media:" + GetParam() + ".txt").c_str()), "5.3.2024");
}
INSTANTIATE_TEST_SUITE_P(Scripts, FileDateIn, testing::ValuesIn(kv::test::kFolderNames),
                         kv::test::FolderNameTag);

TEST_F(FileDate, IsToldOfFoldersHeldFilesAndLargeFiles) {
  kv::test::MakeSparse("large.bin", 0x100000005LL);
  SetTimes("large.bin", 0, kMarch2024, 0);
  EXPECT_EQ(DateOf("large.bin"), "5.3.2024");

  WriteBytes("held.bin", "abc");
  SetTimes("held.bin", 0, kMarch2024, 0);
  {
    const kv::test::HeldFile held("held.bin");
    EXPECT_EQ(DateOf("held.bin"), "5.3.2024");
  }
  CreateFolders("media");
  SetTimes("media", 0, kMarch2024, 0);
  EXPECT_EQ(DateOf("media"), "5.3.2024");
}

TEST_F(FileDate, StaysUntouchedForWhatResolvesNowhere) {
  const std::string tooLong(300, 'x');
  for (const char* name :
       {static_cast<const char*>(nullptr), "", "missing.txt", "a\x80", tooLong.c_str()}) {
    SCOPED_TRACE(testing::PrintToString(name).substr(0, 40));
    EXPECT_EQ(DateOf(name), "untouched");
  }
}

// The resolver goes on answering with a path that it has found once.
TEST_F(FileDate, OfAFileThatHasVanishedIsTheFirstSecondOf1970) {
  WriteBytes("a.txt", "abc");
  SetTimes("a.txt", 0, kMarch2024, 0);
  EXPECT_EQ(DateOf("a.txt"), "5.3.2024");
  RemoveFile("a.txt");
  for (int i = 0; i < 3; ++i) {
    SetZone("GMT0");
    EXPECT_EQ(DateOf("a.txt"), "1.1.1970");
    SetZone("JST-9");
    EXPECT_EQ(DateOf("a.txt"), "1.1.1970");
    SetZone("PST8");
    EXPECT_EQ(DateOf("a.txt"), "31.12.1969");
  }
  KelvarisPath::ClearFileNamesStorage();
  EXPECT_EQ(DateOf("a.txt"), "untouched");
}

long long g_lastChange = 0;  // seconds since 1970, UTC

int TellLastChange(const wchar_t*, struct _stat64* status) {
  *status = {};
  status->st_mtime = g_lastChange;
  return 0;
}

TEST_F(FileDate, StaysUntouchedForAChangeBefore1970AndAfterTheYear3000) {
  const struct {
    long long lastChange;
    const char* date;
  } rows[] = {
      {-1, "untouched"},
      {0, "1.1.1970"},
      {32'503'680'000, "1.1.3000"},
      {32'535'129'600, "31.12.3000"},
      {32'535'302'400, "untouched"},  // 2 January 3001
      {9'000'000'000'000'000'000, "untouched"},
  };
  WriteBytes("a.txt", "abc");
  const ImportPatch patch("_wstat64", TellLastChange);
  for (const auto& row : rows) {
    SCOPED_TRACE(row.lastChange);
    g_lastChange = row.lastChange;
    EXPECT_EQ(DateOf("a.txt"), row.date);
  }
}

TEST_F(FileDate, RaisesWhenTheFoldersCannotBeTold) {
  WriteBytes("a.txt", "abc");
  SetTimes("a.txt", 0, kMarch2024, 0);
  short date[3] = {-7, -7, -7};
  {
    const ImportPatch patch("GetCurrentDirectoryW", kv::test::TellNoFolder);
    EXPECT_EQ(kv::test::Raised([&date] { GetFileDate(date, "a.txt"); }, 0),
              "KelvarisPath::GetCDPath return false");
  }
  EXPECT_TRUE(date[0] == -7 && date[1] == -7 && date[2] == -7);
  EXPECT_EQ(DateOf("a.txt"), "5.3.2024");
}

}  // namespace
