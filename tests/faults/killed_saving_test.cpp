// A process that dies while the library saves: what is left loads, and keeps what was there before
// the write that was cut, or what was written until then.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "tests/faults/operations.h"
#include "tests/support/import_patch.h"
#include "tests/support/process.h"
#include "tests/support/sandbox.h"
#include "utils/astro/astro.h"
#include "utils/download/download.h"
#include "utils/files/files.h"
#include "utils/paths/paths.h"

namespace {

using kv::test::ContentOf;
using kv::test::ImportPatch;
using kv::test::ReadBytes;
using kv::test::WriteBytes;

constexpr char kWhatToSave[] = "KVUTILS_WHAT_TO_SAVE";
constexpr char kWriteToDieIn[] = "KVUTILS_WRITE_TO_DIE_IN";
constexpr unsigned kKilled = 99;

int g_writesLeft = 0;

[[noreturn]] void Die() {
  ::TerminateProcess(::GetCurrentProcess(), kKilled);
  std::abort();
}

BOOL WINAPI WriteAndDie(HANDLE file, const void* bytes, DWORD size, DWORD* written,
                        OVERLAPPED* overlapped) {
  if (--g_writesLeft > 0) return ::WriteFile(file, bytes, size, written, overlapped);
  ::WriteFile(file, bytes, size / 2, written, overlapped);
  Die();
}

int FlushAndDie(std::FILE* stream) { return --g_writesLeft > 0 ? std::fflush(stream) : (Die(), 0); }

void SaveRegistry() {
  CheckFileVersion versions;
  for (const char* name : {"a", "b", "c"}) versions.AddFile(name, 7);
}

void SaveRecords() {
  DwarfPlanetsIO records;
  DwarfPlanetRecord record = {};
  for (record.id.objectNumber = 1; record.id.objectNumber <= 3; ++record.id.objectNumber) {
    records.Set(record);
  }
}

void SaveLines() {
  MTextFile file;
  file.Open("t.txt", true);
  for (int i = 1; i <= 3; ++i) file.Write("%d\n", i);
}

TEST(KilledChild, DISABLED_Saves) {
  g_writesLeft = std::atoi(std::getenv(kWriteToDieIn));
  const std::string what = std::getenv(kWhatToSave);
  const ImportPatch write("WriteFile", &WriteAndDie);
  const ImportPatch flush("fflush", &FlushAndDie);
  if (what == "registry") SaveRegistry();
  if (what == "records") SaveRecords();
  if (what == "lines") SaveLines();
  if (what == "united") UniteFiles("target", "source");
  if (what == "copied") MFile::FileCopy("source", "target");
}

class KilledSaving : public kv::test::Sandbox {
 protected:
  // Whether the process was killed in that write; it makes no more than it must.
  static bool IsKilled(const char* what, int write) {
    kv::test::SetEnvironment(kWhatToSave, what);
    kv::test::SetEnvironment(kWriteToDieIn, std::to_string(write));
    const auto result = kv::test::RunOwnCase("KilledChild.DISABLED_Saves");
    EXPECT_TRUE(result.exitCode == kKilled || result.exitCode == 0) << result.exitCode;
    return result.exitCode == kKilled;
  }
};

TEST_F(KilledSaving, OfTheRegistryLeavesWhatWasWritten) {
  const std::string saved = Writable() + "download\\files_crc_sum.dat";
  ASSERT_TRUE(IsKilled("registry", 1));
  EXPECT_EQ(ReadBytes(saved).size(), 12U);
  { const CheckFileVersion versions; }
  EXPECT_EQ(ReadBytes(saved).size(), 16U);
  ASSERT_FALSE(IsKilled("registry", 2)) << "the registry is one write";
  EXPECT_EQ(ReadBytes(saved).size(), 24U);
}

TEST_F(KilledSaving, OfRecordsLeavesTheWholeOnes) {
  const std::string saved = Writable() + "catalogs\\Planets&Moons\\DwarfPlanets.bin";
  std::size_t whole = 0;
  for (; whole < 3; ++whole) {
    if (kv::test::FileExists(saved)) kv::test::RemoveFile(saved);
    ASSERT_TRUE(IsKilled("records", static_cast<int>(whole) + 1));
    DwarfPlanetsIO::ms_DwarfPlanets.clear();
    KelvarisPath::ClearFileNamesStorage();
    const DwarfPlanetsIO reader;
    EXPECT_EQ(DwarfPlanetsIO::ms_DwarfPlanets.size(), whole);
  }
  EXPECT_FALSE(IsKilled("records", 4));
  EXPECT_EQ(ReadBytes(saved).size(), 3 * sizeof(DwarfPlanetRecord));
}

TEST_F(KilledSaving, OfATextLeavesTheLinesThatWereFlushed) {
  const std::string lines[] = {"", "1\r\n", "1\r\n2\r\n", "1\r\n2\r\n3\r\n"};
  for (int i = 0; i < 3; ++i) {
    ASSERT_TRUE(IsKilled("lines", i + 1));
    // The last line may have gone out before it is flushed.
    const std::string text = ContentOf("t.txt");
    EXPECT_TRUE(text == lines[i] || text == lines[i + 1]) << text;
  }
  EXPECT_FALSE(IsKilled("lines", 4));
}

TEST_F(KilledSaving, OfAUnionLeavesTheTargetInFront) {
  WriteBytes("target", "there");
  WriteBytes("source", "12345678");
  ASSERT_TRUE(IsKilled("united", 1));
  EXPECT_EQ(ContentOf("target"), "there1234");
  EXPECT_EQ(ContentOf("source"), "12345678");
  EXPECT_FALSE(IsKilled("united", 2));
}

TEST_F(KilledSaving, OfACopyLeavesTheSource) {
  WriteBytes("target", "there");
  WriteBytes("source", "12345678");
  ASSERT_TRUE(IsKilled("copied", 1));
  EXPECT_EQ(ContentOf("target"), "1234e");
  EXPECT_EQ(ContentOf("source"), "12345678");
  EXPECT_FALSE(IsKilled("copied", 2));
}

}  // namespace
