// FileCompare: two files, byte for byte.
#include <new>
#include <string>

#include "tests/files/binary_file_fixture.h"
#include "tests/support/failing_system.h"
#include "tests/support/held_file.h"

namespace {

using namespace std::string_literals;
using kv::test::CreateFolders;
using kv::test::HeldFile;
using kv::test::ImportPatch;
using kv::test::IsFree;
using kv::test::LimitedReads;
using kv::test::Raised;
using kv::test::RemoveFile;
using kv::test::WriteBytes;

int Sign(int value) { return (value > 0) - (value < 0); }

class FileCompareTest : public kv::test::Sandbox {};
class FileCompareIn : public kv::test::SandboxIn {};

TEST_F(FileCompareTest, GivesTheDifferenceOfTheLengths) {
  const struct {
    std::string first;
    std::string second;
    int result;
  } rows[] = {
      {"0123456789", "0123456", 3},
      {"0123456", "0123456789", -3},
      {"", "a", -1},
      {"a", "", 1},
      {"a", "zz", -1},
      {"zzzz", "a", 3},
      {"ab\0"s, "ab", 1},
      {std::string(100'000, 'x'), "x", 99'999},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.first.substr(0, 20) + " " + row.second);
    WriteBytes("a.bin", row.first);
    WriteBytes("b.bin", row.second);
    EXPECT_EQ(FileCompare("a.bin", "b.bin"), row.result);
  }
}

TEST_F(FileCompareTest, ComparesTheBytesOfFilesOfOneLength) {
  const std::string large(5'000'000, 'x');
  const struct {
    std::string first;
    std::string second;
    int sign;
  } rows[] = {
      {"", "", 0},
      {"a", "a", 0},
      {"a\0b"s, "a\0b"s, 0},
      {large, large, 0},
      {"abc", "abd", -1},
      {"abd", "abc", 1},
      {"bbb", "abc", 1},
      {"a\0b"s, "a\0c"s, -1},
      {"\0a"s, "\0\0"s, 1},
      {"\x80", "\x7F", 1},
      {"\x7F", "\xFF", -1},
      {"\xEF\xBB\xBF", "abc", 1},
      {"a\r\n", "a\n\n", 1},
      {large + "a", large + "b", -1},
      {"b" + large, "a" + large, 1},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.first.substr(0, 20)));
    WriteBytes("a.bin", row.first);
    WriteBytes("b.bin", row.second);
    EXPECT_EQ(Sign(FileCompare("a.bin", "b.bin")), row.sign);
    EXPECT_EQ(Sign(FileCompare("b.bin", "a.bin")), -row.sign);
    EXPECT_TRUE(IsFree("a.bin"));
    EXPECT_TRUE(IsFree("b.bin"));
  }
}

TEST_F(FileCompareTest, AFileIsItself) {
  WriteBytes("a.bin", "abc");
  EXPECT_EQ(FileCompare("a.bin", "a.bin"), 0);
  EXPECT_EQ(FileCompare("a.bin", (Work() + "a.bin").c_str()), 0);
}

// The file that can be opened is longer than the difference of 1 that the answer looks like.
TEST_F(FileCompareTest, TellsWhichFileCannotBeOpened) {
  const std::string tooLong(40'000, 'x');
  const char* const paths[] = {
      nullptr,    "",          "missing.bin", "folder",      "folder\\",      "no\\a.bin",
      "a.bin\\a", "a.bin\x80", "\xC3",        "media:a.bin", tooLong.c_str(),
  };
  WriteBytes("a.bin", "0123456789");
  WriteBytes("media\\a.bin", "0123456789");
  CreateFolders("folder");
  for (const char* path : paths) {
    SCOPED_TRACE(testing::PrintToString(path).substr(0, 40));
    EXPECT_EQ(FileCompare(path, "a.bin"), 1);
    EXPECT_EQ(FileCompare("a.bin", path), -1);
    EXPECT_EQ(FileCompare(path, path), 1);
    EXPECT_TRUE(IsFree("a.bin"));
  }
}

TEST_F(FileCompareTest, CannotOpenWhatAnotherProcessHolds) {
  WriteBytes("a.bin", "abc");
  WriteBytes("b.bin", "abc");
  {
    const HeldFile held("a.bin");
    EXPECT_EQ(FileCompare("a.bin", "b.bin"), 1);
    EXPECT_EQ(FileCompare("b.bin", "a.bin"), -1);
    EXPECT_EQ(FileCompare("a.bin", "a.bin"), 1);
  }
  EXPECT_EQ(FileCompare("a.bin", "b.bin"), 0);
  RemoveFile("b.bin");
  EXPECT_EQ(FileCompare("a.bin", "b.bin"), -1);
}

// Runs in a second process, which changes a file that its parent has compared.
TEST(FileCompareChild, DISABLED_ChangesAFile) { WriteBytes("a.bin", "abd"); }

TEST_F(FileCompareTest, SeesWhatAnotherProcessHasWritten) {
  WriteBytes("a.bin", "abc");
  WriteBytes("b.bin", "abc");
  EXPECT_EQ(FileCompare("a.bin", "b.bin"), 0);
  EXPECT_EQ(kv::test::RunOwnCase("FileCompareChild.DISABLED_ChangesAFile").exitCode, 0U);
  EXPECT_GT(FileCompare("a.bin", "b.bin"), 0);
}

TEST_P(FileCompareIn, ComparesUnderAnyName) {
  WriteBytes(GetParam() + ".bin", "abc");
  WriteBytes(GetParam() + " 2.bin", "abc");
  EXPECT_EQ(FileCompare((GetParam() + ".bin").c_str(), (Work() + GetParam() + " 2.bin").c_str()),
            0);
}
INSTANTIATE_TEST_SUITE_P(Scripts, FileCompareIn, testing::ValuesIn(kv::test::kFolderNames),
                         kv::test::FolderNameTag);

TEST_F(FileCompareTest, TakesPathsOfAnyLength) {
  const std::string path =
      std::string(100, 'a') + "\\" + std::string(100, 'b') + "\\" + std::string(100, 'c');
  WriteBytes(path, "abc");
  WriteBytes("b.bin", "abc");
  EXPECT_EQ(FileCompare(path.c_str(), "b.bin"), 0);
}

TEST_F(FileCompareTest, CannotOpenAFileFromTwoGibibytesOn) {
  WriteBytes("a.bin", "abc");
  for (const long long size : {0x80000000LL, 0xFFFFFFFFLL}) {
    SCOPED_TRACE(size);
    kv::test::MakeSparse("b.bin", size);
    EXPECT_EQ(FileCompare("b.bin", "a.bin"), 1);
    EXPECT_EQ(FileCompare("a.bin", "b.bin"), -1);
    EXPECT_EQ(FileCompare("b.bin", "b.bin"), 1);
  }
}

TEST_F(FileCompareTest, GivesTheGreatestDifferenceWithoutReading) {
  kv::test::MakeSparse("a.bin", 0x7FFFFFFFLL);
  WriteBytes("b.bin", "");
  const LimitedReads reads(0);
  EXPECT_EQ(FileCompare("a.bin", "b.bin"), 2147483647);
  EXPECT_EQ(FileCompare("b.bin", "a.bin"), -2147483647);
  EXPECT_EQ(reads.Count(), 0);
}

TEST_F(FileCompareTest, RaisesWhenTheSystemRefusesToRead) {
  WriteBytes("a.bin", "abc");
  WriteBytes("b.bin", "abc");
  {
    const ImportPatch patch("ReadFile", kv::test::RefuseToRead);
    EXPECT_EQ(Raised([] { FileCompare("a.bin", "b.bin"); }),
              "MFile::Read - reading error in file a.bin\n");
  }
  EXPECT_TRUE(IsFree("a.bin"));
  EXPECT_TRUE(IsFree("b.bin"));
}

int g_allocations = 0;

void* RefuseTheSecond(std::size_t size, const std::nothrow_t&) {
  return ++g_allocations == 2 ? nullptr : ::operator new[](size, std::nothrow);
}

TEST_F(FileCompareTest, NeverCallsFilesIdenticalWhenMemoryIsShort) {
  WriteBytes("a.bin", "abc");
  {
    const ImportPatch patch(kv::test::kNewArrayOrNull, kv::test::RefuseMemory);
    EXPECT_EQ(FileCompare("a.bin", "a.bin"), 1);
  }
  {
    const ImportPatch patch(kv::test::kNewArrayOrNull, RefuseTheSecond);
    EXPECT_EQ(FileCompare("a.bin", "a.bin"), -1);
  }
  EXPECT_TRUE(IsFree("a.bin"));
}

// Both files are cut to as many bytes as the row says.
TEST_F(FileCompareTest, ComparesTheBytesThatArriveOfFilesThatAreCutMeanwhile) {
  WriteBytes("a.bin", "abcd");
  WriteBytes("b.bin", "abXX");
  const struct {
    unsigned long arriving;
    int sign;
  } rows[] = {{0, 0}, {2, 0}, {3, 1}, {4, 1}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.arriving);
    const LimitedReads reads(row.arriving);
    EXPECT_EQ(Sign(FileCompare("a.bin", "b.bin")), row.sign);
    EXPECT_EQ(reads.Count(), 2) << "one for each file";
  }
}

int g_reads = 0;

BOOL WINAPI CutTheSecond(HANDLE file, void* bytes, DWORD size, DWORD* read, OVERLAPPED* overlap) {
  return ::ReadFile(file, bytes, ++g_reads == 2 ? size - 3 : size, read, overlap);
}

TEST_F(FileCompareTest, AFileThatIsCutMeanwhileIsAsShortAsItIs) {
  WriteBytes("a.bin", "abc\0\0\0"s);
  WriteBytes("b.bin", "abc\0\0\0"s);
  const ImportPatch patch("ReadFile", CutTheSecond);
  EXPECT_EQ(FileCompare("a.bin", "b.bin"), 3);
}

}  // namespace
