// Opening, counting, closing and copying binary files.
#include <cstring>

#include "tests/files/binary_file_fixture.h"

namespace {

using kv::test::OpenedFile;
using kv::test::Raised;
using kv::test::ReadAll;
using kv::test::ReadBytes;
using kv::test::WriteBytes;

constexpr unsigned kOpen = 1;
constexpr unsigned kClosed = 2;
constexpr unsigned kOpenFailed = 128;
constexpr unsigned kCloseFailed = 256;

class BinaryFile : public kv::test::Sandbox {};

TEST_F(BinaryFile, StartsClosed) {
  OpenedFile file;
  char byte = 'x';
  EXPECT_EQ(file.State(), kClosed);
  EXPECT_EQ(file.OpenCount(), 0);
  EXPECT_TRUE(file.Path().empty());
  EXPECT_EQ(file.Read(&byte, 1), 0u);
  EXPECT_EQ(file.Write(&byte, 1), 0u);
  EXPECT_EQ(file.GetFilePointer(), 0u);
  EXPECT_EQ(file.GetLength(), -1);
  EXPECT_EQ(file.GetTime(0), 0);
  EXPECT_EQ(file.Seek(0, 0), 0xFFFFFFFFu);
  EXPECT_EQ(byte, 'x');
}

TEST_F(BinaryFile, ConstructorOpensOrRaises) {
  WriteBytes("a.bin", "abc");
  OpenedFile file("a.bin", 2);
  EXPECT_EQ(file.State(), kOpen);
  EXPECT_EQ(file.OpenCount(), 1);
  EXPECT_EQ(file.Path(), L"a.bin");
  EXPECT_EQ(Raised([] { const MFile missing("missing.bin", 2); }),
            "MFile::Load - file open failure\n");
}

TEST_F(BinaryFile, CountsOpensOfTheSamePath) {
  WriteBytes("a.bin", "abc");
  OpenedFile file;
  EXPECT_TRUE(file.Open("a.bin", 2));
  EXPECT_EQ(ReadAll(file), "abc");
  EXPECT_TRUE(file.Open("a.bin", 2));
  EXPECT_TRUE(file.Open("a.bin", 0)) << "the mode of a counted open is not looked at";
  EXPECT_EQ(file.OpenCount(), 3);
  EXPECT_EQ(file.GetFilePointer(), 3u) << "a counted open moves nothing";
  EXPECT_TRUE(file.Close());
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(file.State(), kOpen);
  EXPECT_EQ(file.GetLength(), 3);
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(file.State(), kClosed);
  EXPECT_EQ(file.GetLength(), -1);
}

TEST_F(BinaryFile, ComparesPathsByTheirText) {
  WriteBytes("a.bin", "abc");
  OpenedFile file;
  EXPECT_TRUE(file.Open("a.bin", 2));
  const OpenedFile firstHandle(file);  // closes it at the end
  EXPECT_TRUE(file.Open(".\\a.bin", 2));
  EXPECT_EQ(file.OpenCount(), 1) << "another spelling is another open";
  EXPECT_EQ(file.Path(), L".\\a.bin");
}

TEST_F(BinaryFile, CountsClosesOfAClosedFileToo) {
  WriteBytes("a.bin", "abc");
  OpenedFile file;
  EXPECT_TRUE(file.Close());
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(file.OpenCount(), -2);
  EXPECT_EQ(file.State(), kClosed);
  EXPECT_TRUE(file.Open("a.bin", 2));
  EXPECT_EQ(file.OpenCount(), 1);
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(file.State(), kClosed);
}

TEST_F(BinaryFile, AFailedOpenLeavesItUsable) {
  WriteBytes("a.bin", "abc");
  OpenedFile file;
  EXPECT_FALSE(file.Open("missing.bin", 2));
  EXPECT_EQ(file.State(), kOpenFailed);
  EXPECT_FALSE(file.Close());
  EXPECT_EQ(file.GetLength(), -1);
  EXPECT_TRUE(file.Open("a.bin", 2));
  EXPECT_EQ(ReadAll(file), "abc");
  EXPECT_TRUE(file.Close());
}

TEST_F(BinaryFile, AfterAFailedOpenOfAnotherPathNothingIsClosed) {
  WriteBytes("a.bin", "abc");
  OpenedFile file("a.bin", 2);
  OpenedFile firstHandle(file);
  EXPECT_FALSE(file.Open("missing.bin", 2));
  EXPECT_FALSE(file.Close());
  EXPECT_EQ(file.State(), kOpenFailed);
  EXPECT_EQ(ReadAll(firstHandle), "abc");
}

TEST_F(BinaryFile, ABadModeLeavesAnOpenFileOpen) {
  WriteBytes("a.bin", "abc");
  WriteBytes("b.bin", "bcdef");
  OpenedFile file("a.bin", 2);
  const OpenedFile firstHandle(file);  // closes it at the end
  EXPECT_EQ(Raised([&] { file.Open("b.bin", 1); }),
            "MFile::GetAccessMode - bad parameter inAccessMode\n");
  EXPECT_EQ(file.State(), kOpen);
  EXPECT_EQ(ReadAll(file), "abc");
  EXPECT_TRUE(file.Open("b.bin", 2)) << "a later open really opens";
  EXPECT_EQ(ReadAll(file), "bcdef");
}

TEST_F(BinaryFile, AnotherPathDoesNotCloseTheOldHandle) {
  WriteBytes("a.bin", "abc");
  WriteBytes("b.bin", "b");
  OpenedFile file("a.bin", 16);
  const OpenedFile firstHandle(file);  // closes it at the end
  EXPECT_TRUE(file.Open("b.bin", 16));
  EXPECT_EQ(MFile::GetLength("a.bin"), -1) << "the exclusive handle is still held";
}

TEST_F(BinaryFile, CopiesShareTheHandleAndCountForThemselves) {
  WriteBytes("a.bin", "abcdef");
  OpenedFile file("a.bin", 2);
  OpenedFile copy(file);
  char bytes[4] = "";
  EXPECT_EQ(copy.Read(bytes, 3), 3u);
  EXPECT_EQ(file.GetFilePointer(), 3u) << "one file pointer for both";
  EXPECT_TRUE(copy.Open("a.bin", 2));
  EXPECT_EQ(copy.OpenCount(), 2);
  EXPECT_EQ(file.OpenCount(), 1);
  EXPECT_TRUE(file.Close());
  EXPECT_TRUE(copy.Close()) << "one open is still due";
  EXPECT_FALSE(copy.Close()) << "the handle is gone";
  EXPECT_EQ(copy.State(), kCloseFailed);
  EXPECT_TRUE(copy.Open("a.bin", 2)) << "the object stays usable";
  EXPECT_EQ(copy.GetLength(), 6);
}

TEST_F(BinaryFile, AssignmentCopiesAllAndClosesNothing) {
  WriteBytes("a.bin", "abc");
  WriteBytes("b.bin", "bc");
  OpenedFile first("a.bin", 16);
  const OpenedFile firstHandle(first);  // closes it at the end
  OpenedFile second("b.bin", 2);
  first = second;
  EXPECT_EQ(first.Path(), L"b.bin");
  EXPECT_EQ(first.State(), kOpen);
  EXPECT_EQ(first.OpenCount(), 1);
  EXPECT_EQ(first.GetLength(), 2);
  EXPECT_EQ(MFile::GetLength("a.bin"), -1) << "the target's own handle stays open";
}

TEST_F(BinaryFile, DestructionCountsAsOneClose) {
  WriteBytes("a.bin", "abc");
  {
    const MFile file("a.bin", 16);
    EXPECT_EQ(MFile::GetLength("a.bin"), -1);
  }
  EXPECT_EQ(MFile::GetLength("a.bin"), 3);
}

TEST_F(BinaryFile, MemoryMappingIsNotOffered) {
  WriteBytes("a.bin", "abc");
  MFile file("a.bin", 2);
  long info = 42;
  EXPECT_FALSE(file.GetMMInfo(&info));
  EXPECT_EQ(info, 42);
}

// The slots of the virtual table: two entries of the destructor, Open, Close, Read, Write.
TEST_F(BinaryFile, KeepsTheOrderOfItsVirtualOperations) {
  WriteBytes("a.bin", "abc");
  MFile file;
  void** table = nullptr;
  std::memcpy(&table, static_cast<const void*>(&file), sizeof table);
  const auto open = reinterpret_cast<bool (*)(MFile*, const char*, unsigned)>(table[2]);
  const auto close = reinterpret_cast<bool (*)(MFile*)>(table[3]);
  const auto read = reinterpret_cast<unsigned (*)(MFile*, void*, unsigned)>(table[4]);
  const auto write = reinterpret_cast<unsigned (*)(MFile*, const void*, unsigned)>(table[5]);
  char bytes[4] = "";
  ASSERT_TRUE(open(&file, "a.bin", 16));
  EXPECT_EQ(read(&file, bytes, 3), 3u);
  EXPECT_STREQ(bytes, "abc");
  EXPECT_EQ(write(&file, "d", 1), 1u);
  EXPECT_TRUE(close(&file));
  EXPECT_EQ(ReadBytes("a.bin"), "abcd");
}

TEST_F(BinaryFile, CountsForADerivedClassAsForItsCallers) {
  WriteBytes("a.bin", "abc");
  OpenedFile file;
  EXPECT_FALSE(file.Load("missing.bin", 2));
  EXPECT_EQ(file.State(), 128u);
  EXPECT_TRUE(file.Load("a.bin", 2));
  EXPECT_TRUE(file.Open("a.bin", 2));
  EXPECT_EQ(file.OpenCount(), 2);
  EXPECT_TRUE(file.Unload());
  EXPECT_EQ(file.State(), 1u);
  EXPECT_EQ(ReadAll(file), "abc");
  EXPECT_TRUE(file.Unload());
  EXPECT_EQ(file.State(), 2u);
  EXPECT_EQ(file.OpenCount(), 0);
}

}  // namespace
