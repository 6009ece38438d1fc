// UniteFiles: one file appended to another.
#include <windows.h>

#include <string>

#include "tests/files/binary_file_fixture.h"
#include "tests/support/failing_system.h"
#include "tests/support/held_file.h"

namespace {

using namespace std::string_literals;
using kv::test::CreateFolders;
using kv::test::FileExists;
using kv::test::HeldFile;
using kv::test::ImportPatch;
using kv::test::IsFree;
using kv::test::LimitedReads;
using kv::test::Raised;
using kv::test::ReadBytes;
using kv::test::WriteBytes;

// "t.bin" holds "target", "s.bin" holds "source".
class UniteFilesTest : public kv::test::Sandbox {
 protected:
  UniteFilesTest() {
    WriteBytes("t.bin", "target");
    WriteBytes("s.bin", "source");
  }
};
class UniteFilesIn : public kv::test::SandboxIn {};

TEST_F(UniteFilesTest, AppendsTheSourceToTheTarget) {
  const struct {
    std::string target;
    std::string source;
    std::string united;
  } rows[] = {
      {"target", "source", "targetsource"},
      {"", "source", "source"},
      {"target", "", "target"},
      {"", "", ""},
      {"a\0b"s, "\0c"s, "a\0b\0c"s},
      {"a\r\n", "\n\x1A", "a\r\n\n\x1A"},
      {"\xEF\xBB\xBF"
       "a",
       "\xEF\xBB\xBF"
       "b",
       "\xEF\xBB\xBF"
       "a"
       "\xEF\xBB\xBF"
       "b"},
      {std::string(70'000, 'x'), std::string(9'000'000, 'y'),
       std::string(70'000, 'x') + std::string(9'000'000, 'y')},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.united.substr(0, 40)));
    WriteBytes("t.bin", row.target);
    WriteBytes("s.bin", row.source);
    EXPECT_TRUE(UniteFiles("t.bin", "s.bin"));
    EXPECT_TRUE(ReadBytes("t.bin") == row.united);
    EXPECT_TRUE(ReadBytes("s.bin") == row.source);
    EXPECT_TRUE(IsFree("t.bin"));
    EXPECT_TRUE(IsFree("s.bin"));
  }
}

TEST_F(UniteFilesTest, AppendsAsOftenAsItIsAsked) {
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(UniteFiles("t.bin", "s.bin"));
  EXPECT_EQ(ReadBytes("t.bin"), "targetsourcesourcesource");
}

TEST_F(UniteFilesTest, CreatesNoTarget) {
  EXPECT_FALSE(UniteFiles("missing.bin", "s.bin"));
  EXPECT_FALSE(FileExists("missing.bin"));
  WriteBytes("s.bin", "");
  EXPECT_FALSE(UniteFiles("missing.bin", "s.bin"));
  EXPECT_FALSE(FileExists("missing.bin"));
}

TEST_F(UniteFilesTest, RefusesWhatNamesNoFile) {
  const std::string tooLong(40'000, 'x');
  const char* const paths[] = {
      nullptr,    "",          "missing.bin", "folder",      "folder\\",      "no\\a.bin",
      "t.bin\\a", "t.bin\x80", "\xC3",        "media:a.bin", tooLong.c_str(),
  };
  CreateFolders("folder");
  WriteBytes("media\\a.bin", "abc");
  for (const char* path : paths) {
    SCOPED_TRACE(testing::PrintToString(path).substr(0, 40));
    EXPECT_FALSE(UniteFiles("t.bin", path));
    EXPECT_FALSE(UniteFiles(path, "s.bin"));
    EXPECT_FALSE(UniteFiles(path, path));
    EXPECT_EQ(ReadBytes("t.bin"), "target");
  }
  EXPECT_EQ(ReadBytes("media\\a.bin"), "abc");
}

// The target is open and shared with nobody when the source is to be opened.
TEST_F(UniteFilesTest, DoesNotAppendAFileToItself) {
  for (const std::string& path : {"t.bin"s, ".\\t.bin"s, Work() + "t.bin"}) {
    SCOPED_TRACE(path);
    EXPECT_FALSE(UniteFiles("t.bin", path.c_str()));
    EXPECT_FALSE(UniteFiles(path.c_str(), "t.bin"));
    EXPECT_EQ(ReadBytes("t.bin"), "target");
  }
}

TEST_F(UniteFilesTest, TakesTheReadOnlyAttributeFromTheTargetAlone) {
  kv::test::SetReadOnly("t.bin", true);
  kv::test::SetReadOnly("s.bin", true);
  EXPECT_TRUE(UniteFiles("t.bin", "s.bin"));
  EXPECT_EQ(ReadBytes("t.bin"), "targetsource");
  EXPECT_TRUE(kv::test::IsReadOnly("s.bin"));
}

TEST_F(UniteFilesTest, TakesTheReadOnlyAttributeFromTheTargetOfARefusedSource) {
  kv::test::SetReadOnly("t.bin", true);
  EXPECT_FALSE(UniteFiles("t.bin", "missing.bin"));
  EXPECT_EQ(ReadBytes("t.bin"), "target");
  EXPECT_FALSE(kv::test::IsReadOnly("t.bin"));
}

TEST_F(UniteFilesTest, RefusesAFileThatAnotherProcessHolds) {
  {
    const HeldFile held("t.bin");
    EXPECT_FALSE(UniteFiles("t.bin", "s.bin"));
  }
  {
    const HeldFile held("s.bin");
    EXPECT_FALSE(UniteFiles("t.bin", "s.bin"));
  }
  EXPECT_EQ(ReadBytes("t.bin"), "target");
  EXPECT_TRUE(UniteFiles("t.bin", "s.bin"));
}

// The others share everything.
TEST_F(UniteFilesTest, WantsTheTargetForItselfAndSharesTheSourceWithReaders) {
  const struct {
    DWORD access;
    bool sharesSource;
  } rows[] = {{GENERIC_READ, true}, {GENERIC_WRITE, false}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.access);
    WriteBytes("t.bin", "target");
    const auto open = [&row](const wchar_t* path) {
      return ::CreateFileW(path, row.access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                           nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    };
    const HANDLE target = open(L"t.bin");
    EXPECT_FALSE(UniteFiles("t.bin", "s.bin"));
    ::CloseHandle(target);
    const HANDLE source = open(L"s.bin");
    EXPECT_EQ(UniteFiles("t.bin", "s.bin"), row.sharesSource);
    ::CloseHandle(source);
    EXPECT_EQ(ReadBytes("t.bin"), row.sharesSource ? "targetsource" : "target");
  }
}

TEST_P(UniteFilesIn, AppendsUnderAnyName) {
  const std::string target = GetParam() + ".bin";
  const std::string source = Work() + GetParam() + " 2.bin";
  WriteBytes(target, "target");
  WriteBytes(source, "source");
  EXPECT_TRUE(UniteFiles(target.c_str(), source.c_str()));
  EXPECT_EQ(ReadBytes(target), "targetsource");
}
INSTANTIATE_TEST_SUITE_P(Scripts, UniteFilesIn, testing::ValuesIn(kv::test::kFolderNames),
                         kv::test::FolderNameTag);

TEST_F(UniteFilesTest, TakesPathsOfAnyLength) {
  const std::string folder = std::string(100, 'a') + "\\" + std::string(100, 'b') + "\\";
  const std::string target = folder + std::string(100, 'c');
  const std::string source = folder + std::string(100, 'd');
  WriteBytes(target, "target");
  WriteBytes(source, "source");
  EXPECT_TRUE(UniteFiles(target.c_str(), source.c_str()));
  EXPECT_EQ(ReadBytes(target), "targetsource");
}

TEST_F(UniteFilesTest, RefusesASourceFromTwoGibibytesOn) {
  for (const long long size : {0x80000000LL, 0xFFFFFFFFLL}) {
    SCOPED_TRACE(size);
    kv::test::MakeSparse("s.bin", size);
    EXPECT_FALSE(UniteFiles("t.bin", "s.bin"));
    EXPECT_EQ(ReadBytes("t.bin"), "target");
  }
}

TEST_F(UniteFilesTest, AppendsToATargetFromTwoGibibytesOn) {
  kv::test::MakeSparse("t.bin", 0x80000000LL);
  EXPECT_TRUE(UniteFiles("t.bin", "s.bin"));
  MFile file("t.bin", 2);
  EXPECT_EQ(file.Seek(2, -7), 0x7FFFFFFFU);
  EXPECT_EQ(kv::test::ReadAll(file), "\0source"s);
}

TEST_F(UniteFilesTest, NeverWritesOverTheBeginningOfALargeTarget) {
  kv::test::MakeSparse("t.bin", 0x100000005LL);
  UniteFiles("t.bin", "s.bin");
  char bytes[6] = "?????";
  EXPECT_EQ(MFile("t.bin", 2).Read(bytes, 6), 6U);
  EXPECT_EQ(std::string(bytes, 6), "\0\0\0\0\0\0"s);
}

DWORD WINAPI RefuseToSeek(HANDLE, LONG, LONG*, DWORD) {
  ::SetLastError(ERROR_INVALID_PARAMETER);
  return INVALID_SET_FILE_POINTER;
}

TEST_F(UniteFilesTest, WritesNothingWhenTheEndCannotBeReached) {
  const ImportPatch patch("SetFilePointer", RefuseToSeek);
  EXPECT_FALSE(UniteFiles("t.bin", "s.bin"));
  EXPECT_EQ(ReadBytes("t.bin"), "target");
}

TEST_F(UniteFilesTest, WritesNothingForAnEmptySource) {
  WriteBytes("s.bin", "");
  const ImportPatch seekPatch("SetFilePointer", RefuseToSeek);
  const ImportPatch writePatch("WriteFile", kv::test::RefuseToWrite);
  EXPECT_TRUE(UniteFiles("t.bin", "s.bin"));
  EXPECT_EQ(ReadBytes("t.bin"), "target");
}

BOOL WINAPI WriteTwo(HANDLE file, const void* bytes, DWORD, DWORD* written, OVERLAPPED* overlap) {
  return ::WriteFile(file, bytes, 2, written, overlap);
}

TEST_F(UniteFilesTest, DoesNotCheckHowMuchIsWritten) {
  const ImportPatch patch("WriteFile", WriteTwo);
  EXPECT_TRUE(UniteFiles("t.bin", "s.bin"));
  EXPECT_EQ(ReadBytes("t.bin"), "targetso");
}

TEST_F(UniteFilesTest, RaisesWhenTheSystemRefusesToReadOrWrite) {
  {
    const ImportPatch patch("ReadFile", kv::test::RefuseToRead);
    EXPECT_EQ(Raised([] { UniteFiles("t.bin", "s.bin"); }),
              "MFile::Read - reading error in file s.bin\n");
  }
  {
    const ImportPatch patch("WriteFile", kv::test::RefuseToWrite);
    EXPECT_EQ(Raised([] { UniteFiles("t.bin", "s.bin"); }),
              "MFile::Write - writing error in file t.bin\n");
  }
  EXPECT_TRUE(IsFree("t.bin"));
  EXPECT_TRUE(IsFree("s.bin"));
  EXPECT_EQ(ReadBytes("t.bin"), "target");
}

TEST_F(UniteFilesTest, RefusesWhenMemoryIsShort) {
  const ImportPatch patch(kv::test::kNewArrayOrNull, kv::test::RefuseMemory);
  EXPECT_FALSE(UniteFiles("t.bin", "s.bin"));
  EXPECT_EQ(ReadBytes("t.bin"), "target");
}

TEST_F(UniteFilesTest, AppendsTheBytesThatArriveOfASourceThatIsCutMeanwhile) {
  const struct {
    unsigned long arriving;
    const char* united;
  } rows[] = {{0, "target"}, {2, "targetso"}, {6, "targetsource"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.arriving);
    WriteBytes("t.bin", "target");
    const LimitedReads reads(row.arriving);
    EXPECT_TRUE(UniteFiles("t.bin", "s.bin"));
    EXPECT_EQ(reads.Count(), 1);
    EXPECT_EQ(ReadBytes("t.bin"), row.united);
  }
}

}  // namespace
