// Reading, seeking, measuring and copying binary files, and questions by path.
#include "tests/files/binary_file_fixture.h"
#include "tests/support/failing_system.h"

namespace {

using kv::test::FileExists;
using kv::test::OpenedFile;
using kv::test::Raised;
using kv::test::ReadBytes;
using kv::test::WriteBytes;

class BinaryFileContent : public kv::test::Sandbox {};

TEST_F(BinaryFileContent, ReadsToTheEndAndThenNothing) {
  WriteBytes("a.bin", "abcdef");
  MFile file("a.bin", 2);
  char bytes[8] = "#######";
  EXPECT_EQ(file.Read(bytes, 4), 4u);
  EXPECT_STREQ(bytes, "abcd###");
  EXPECT_EQ(file.Read(bytes, 4), 2u);
  EXPECT_STREQ(bytes, "efcd###");
  EXPECT_EQ(file.Read(bytes, 4), 0u);
  EXPECT_EQ(file.Read(bytes, 0), 0u);
  EXPECT_STREQ(bytes, "efcd###");
}

TEST_F(BinaryFileContent, NamesSeekOrigins) {
  const OpenedFile file;
  EXPECT_EQ(file.GetMethodMove(0), 0u);
  EXPECT_EQ(file.GetMethodMove(1), 1u);
  EXPECT_EQ(file.GetMethodMove(2), 2u);
  EXPECT_EQ(file.GetMethodMove(3), 255u);
  EXPECT_EQ(file.GetMethodMove(0xFFFFFFFF), 255u);
}

TEST_F(BinaryFileContent, SeeksFromEachOrigin) {
  WriteBytes("a.bin", "abcdef");
  MFile file("a.bin", 2);
  const struct {
    unsigned origin;
    int distance;
    unsigned position;
  } rows[] = {{0, 4, 4}, {1, -3, 1}, {1, 2, 3}, {2, 0, 6}, {2, -6, 0}, {0, 100, 100}, {0, 0, 0}};
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << "origin " << row.origin << " by " << row.distance);
    EXPECT_EQ(file.Seek(row.origin, row.distance), row.position);
    EXPECT_EQ(file.GetFilePointer(), row.position);
  }
  EXPECT_EQ(file.Seek(0, -1), 0xFFFFFFFFu) << "before the start is refused";
  EXPECT_EQ(file.GetFilePointer(), 0u);
}

TEST_F(BinaryFileContent, RefusesUnknownSeekOrigins) {
  WriteBytes("a.bin", "abc");
  MFile file("a.bin", 2);
  for (const unsigned origin : {3u, 255u, 0xFFFFFFFFu}) {
    SCOPED_TRACE(origin);
    EXPECT_EQ(Raised([&] { file.Seek(origin, 0); }),
              "MFile::Seek - bad parameter inDistanceToMove\n");
  }
  MFile closed;
  EXPECT_EQ(Raised([&] { closed.Seek(3, 0); }), "MFile::Seek - bad parameter inDistanceToMove\n");
}

// Lengths and positions are the low 32 bits of the system's.
TEST_F(BinaryFileContent, MeasuresLargeFilesIn32Bits) {
  kv::test::MakeSparse("large.bin", 0xC0000000);
  MFile file("large.bin", 2);
  EXPECT_EQ(file.GetLength(), -1073741824);
  EXPECT_EQ(MFile::GetLength("large.bin"), -1073741824);
  EXPECT_EQ(file.Seek(2, 0), 0xC0000000u);
  EXPECT_EQ(file.GetFilePointer(), 0xC0000000u);
  const unsigned char zero = 0;
  EXPECT_FALSE(file.Search(&zero, 1, true)) << "a negative length is not searched";
  EXPECT_EQ(file.GetFilePointer(), 0u);
  kv::test::MakeSparse("huge.bin", 0x10000000A);
  EXPECT_EQ(MFile::GetLength("huge.bin"), 10);
}

TEST_F(BinaryFileContent, ReportsTimesInWholeSecondsSince1970) {
  WriteBytes("a.bin", "abc");
  kv::test::SetTimes("a.bin", 1100000000, 1200000000, 9999999);
  MFile file("a.bin", 34);
  EXPECT_EQ(file.GetTime(1), 1100000000);
  EXPECT_EQ(file.GetTime(2), 1200000000);
  EXPECT_EQ(file.GetTime(3), 1200000000);
  EXPECT_EQ(file.GetTime(-1), 1200000000);
  // Wine takes the earlier of what its host knows for the creation: it is only known to be set.
  EXPECT_GT(file.GetTime(0), 0);
  EXPECT_EQ(MFile::GetTime("a.bin", 1), 1100000000);
  EXPECT_EQ(MFile::GetTime("a.bin", 2), 1200000000);
  EXPECT_EQ(MFile::GetTime("missing.bin", 2), 0);
}

TEST_F(BinaryFileContent, CopiesOverTheBeginningOfTheTarget) {
  WriteBytes("source.bin", "abc");
  EXPECT_TRUE(MFile::FileCopy("source.bin", "new.bin"));
  EXPECT_EQ(ReadBytes("new.bin"), "abc");
  WriteBytes("longer.bin", "0123456789");
  EXPECT_TRUE(MFile::FileCopy("source.bin", "longer.bin"));
  EXPECT_EQ(ReadBytes("longer.bin"), "abc3456789") << "a longer target keeps its tail";
}

TEST_F(BinaryFileContent, DoesNotCopyAnEmptySource) {
  WriteBytes("empty.bin", "");
  EXPECT_FALSE(MFile::FileCopy("empty.bin", "target.bin"));
  EXPECT_FALSE(FileExists("target.bin"));
}

TEST_F(BinaryFileContent, DoesNotCopyASourceThatIsCutMeanwhile) {
  WriteBytes("source.bin", "abc");
  const kv::test::LimitedReads reads(2);
  EXPECT_FALSE(MFile::FileCopy("source.bin", "target.bin"));
  EXPECT_EQ(ReadBytes("target.bin"), "");
}

// Of that length the system's answer is the one that it gives when it fails.
TEST_F(BinaryFileContent, TakesTheLengthThatLooksLikeAFailureForALength) {
  kv::test::MakeSparse("source.bin", 0xFFFFFFFFLL);
  const kv::test::ImportPatch patch(kv::test::kNewArrayOrNull, &kv::test::RefuseMemory);
  EXPECT_FALSE(MFile::FileCopy("source.bin", "target.bin"));
  EXPECT_TRUE(FileExists("target.bin"));
}

TEST_F(BinaryFileContent, CopiesOverAReadOnlyTarget) {
  WriteBytes("source.bin", "abc");
  WriteBytes("target.bin", "xyz1");
  kv::test::SetReadOnly("target.bin", true);
  EXPECT_TRUE(MFile::FileCopy("source.bin", "target.bin"));
  EXPECT_EQ(ReadBytes("target.bin"), "abc1");
}

TEST_F(BinaryFileContent, DoesNotCopyAFileOntoItself) {
  WriteBytes("source.bin", "abc");
  EXPECT_EQ(Raised([] { MFile::FileCopy("source.bin", "source.bin"); }),
            "MFile::Load - file open failure\n");
  EXPECT_EQ(ReadBytes("source.bin"), "abc");
}

TEST_F(BinaryFileContent, CopyRaisesWhenAFileCannotBeOpened) {
  WriteBytes("source.bin", "abc");
  kv::test::CreateFolders("folder");
  EXPECT_EQ(Raised([] { MFile::FileCopy("missing.bin", "target.bin"); }),
            "MFile::Load - file open failure\n");
  EXPECT_FALSE(FileExists("target.bin"));
  EXPECT_EQ(Raised([] { MFile::FileCopy("source.bin", "folder"); }),
            "MFile::Load - file open failure\n");
  EXPECT_EQ(Raised([] { MFile::FileCopy("source.bin", "missing folder\\t.bin"); }),
            "MFile::Load - file open failure\n");
}

TEST_F(BinaryFileContent, ExistenceCountsFoldersToo) {
  WriteBytes("a.bin", "abc");
  kv::test::CreateFolders("folder");
  EXPECT_TRUE(MFile::IsExist("a.bin"));
  EXPECT_TRUE(MFile::IsExist("folder"));
  EXPECT_TRUE(MFile::IsExist("folder\\"));
  EXPECT_FALSE(MFile::IsExist("missing.bin"));
  EXPECT_FALSE(MFile::IsExist("a.bin\\b"));
}

TEST_F(BinaryFileContent, DeletesFiles) {
  WriteBytes("a.bin", "abc");
  EXPECT_TRUE(MFile::DeleteFileA("a.bin"));
  EXPECT_FALSE(FileExists("a.bin"));
  EXPECT_FALSE(MFile::DeleteFileA("a.bin"));
}

TEST_F(BinaryFileContent, TellsTheLengthOfAFileInUse) {
  WriteBytes("a.bin", "abcdef");
  EXPECT_EQ(MFile::GetLength("a.bin"), 6);
  EXPECT_EQ(MFile::GetLength("missing.bin"), -1);
  const MFile reader("a.bin", 2);
  EXPECT_EQ(MFile::GetLength("a.bin"), 6) << "readers do not exclude each other";
}

}  // namespace
