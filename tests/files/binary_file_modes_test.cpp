// What the mode bits ask of the system, and what comes of it.
#include <windows.h>

#include <string>

#include "tests/files/binary_file_fixture.h"
#include "tests/support/import_patch.h"

namespace {

using kv::test::FileExists;
using kv::test::OpenedFile;
using kv::test::Raised;
using kv::test::ReadAll;
using kv::test::ReadBytes;
using kv::test::WriteBytes;

class BinaryFileModes : public kv::test::Sandbox {};

TEST_F(BinaryFileModes, ChoosesAccessByTheFirstMatchingBit) {
  constexpr unsigned kGenericRead = 0x80000000;
  constexpr unsigned kGenericWrite = 0x40000000;
  const struct {
    unsigned mode;
    unsigned access;
  } rows[] = {
      {2, kGenericRead},
      {2 | 4, kGenericRead},
      {2 | 1, kGenericRead},
      {2 | 16, kGenericRead},
      {34, kGenericRead},
      {4, kGenericWrite},
      {5, kGenericWrite},
      {4 | 8 | 16, kGenericWrite},
      {8, kGenericRead | kGenericWrite},
      {16, kGenericRead | kGenericWrite},
      {8 | 16 | 1, kGenericRead | kGenericWrite},
      {16 | 64, kGenericRead | kGenericWrite},
  };
  const OpenedFile file;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.mode);
    EXPECT_EQ(file.GetAccessMode(row.mode), row.access);
  }
}

TEST_F(BinaryFileModes, RefusesModesWithoutAccess) {
  for (const unsigned mode : {0u, 1u, 32u, 64u, 1u | 32u | 64u, 128u}) {
    SCOPED_TRACE(mode);
    OpenedFile file;
    EXPECT_EQ(Raised([&] { file.Open("a.bin", mode); }),
              "MFile::GetAccessMode - bad parameter inAccessMode\n");
    EXPECT_EQ(Raised([&] { const MFile made("a.bin", mode); }),
              "MFile::GetAccessMode - bad parameter inAccessMode\n");
    EXPECT_FALSE(FileExists("a.bin"));
  }
}

TEST_F(BinaryFileModes, ChoosesSharingByTheFirstMatchingBit) {
  const struct {
    unsigned mode;
    unsigned share;
  } rows[] = {
      {2, 1}, {32, 1}, {2 | 64, 1},  {4 | 32, 1}, {16 | 32, 1}, {4, 2}, {5, 2},
      {8, 2}, {64, 2}, {16 | 64, 2}, {16, 0},     {1, 0},       {0, 0},
  };
  const OpenedFile file;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.mode);
    EXPECT_EQ(file.GetShareMode(row.mode), row.share);
  }
}

TEST_F(BinaryFileModes, ChoosesDispositionByTheFirstMatchingBit) {
  constexpr unsigned kCreateAlways = 2;
  constexpr unsigned kOpenExisting = 3;
  constexpr unsigned kOpenAlways = 4;
  const struct {
    unsigned mode;
    unsigned disposition;
  } rows[] = {
      {1, kCreateAlways}, {5, kCreateAlways},    {1 | 2, kCreateAlways}, {2, kOpenExisting},
      {8, kOpenExisting}, {16, kOpenExisting},   {2 | 4, kOpenExisting}, {34, kOpenExisting},
      {4, kOpenAlways},   {4 | 64, kOpenAlways}, {0, kOpenAlways},
  };
  const OpenedFile file;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.mode);
    EXPECT_EQ(file.GetOpenMode(row.mode), row.disposition);
  }
}

TEST_F(BinaryFileModes, ChoosesFlagsByTheFirstMatchingBit) {
  constexpr unsigned kRandomAccess = 0x10000000;
  constexpr unsigned kSequentialScan = 0x08000000;
  constexpr unsigned kNormal = 0x80;
  const struct {
    unsigned mode;
    unsigned flags;
  } rows[] = {
      {2, kRandomAccess},   {1 | 2, kRandomAccess}, {34, kRandomAccess},
      {1, kSequentialScan}, {5, kSequentialScan},   {4, kNormal},
      {8, kNormal},         {16, kNormal},          {0, kNormal},
  };
  const OpenedFile file;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.mode);
    EXPECT_EQ(file.GetFlagAndAttributes(row.mode), row.flags);
  }
}

TEST_F(BinaryFileModes, Mode6ReadsOnly) {
  WriteBytes("a.bin", "abc");
  MFile file;
  EXPECT_FALSE(file.Open("missing.bin", 6));
  EXPECT_FALSE(FileExists("missing.bin"));
  EXPECT_TRUE(file.Open("a.bin", 6));
  EXPECT_EQ(ReadAll(file), "abc");
  EXPECT_EQ(Raised([&] { file.Write("x", 1); }), "MFile::Write - writing error in file a.bin\n");
  EXPECT_EQ(MFile::GetLength("a.bin"), 3) << "others may read";
}

TEST_F(BinaryFileModes, Mode4KeepsWhatItDoesNotOverwrite) {
  WriteBytes("a.bin", "abcdef");
  MFile file("a.bin", 4);
  EXPECT_EQ(file.Write("XY", 2), 2u);
  EXPECT_EQ(Raised([&] { ReadAll(file); }), "MFile::Read - reading error in file a.bin\n");
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(ReadBytes("a.bin"), "XYcdef");
}

TEST_F(BinaryFileModes, Mode4CreatesAMissingFile) {
  MFile file("new.bin", 4);
  EXPECT_EQ(file.Write("a\0b", 3), 3u);
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(ReadBytes("new.bin"), std::string("a\0b", 3));
}

TEST_F(BinaryFileModes, Mode5EmptiesTheFile) {
  WriteBytes("a.bin", "abcdef");
  MFile file("a.bin", 5);
  EXPECT_EQ(file.GetLength(), 0);
  EXPECT_EQ(file.Write("x", 1), 1u);
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(ReadBytes("a.bin"), "x");
}

TEST_F(BinaryFileModes, Mode16IsExclusiveAndNeverCreates) {
  WriteBytes("a.bin", "abc");
  MFile file;
  EXPECT_FALSE(file.Open("missing.bin", 16));
  EXPECT_FALSE(FileExists("missing.bin"));
  EXPECT_TRUE(file.Open("a.bin", 16));
  EXPECT_EQ(ReadAll(file), "abc");
  EXPECT_EQ(file.Write("d", 1), 1u);
  MFile other;
  EXPECT_FALSE(other.Open("a.bin", 34));
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(ReadBytes("a.bin"), "abcd");
}

TEST_F(BinaryFileModes, Mode8LetsOthersWriteAndNotRead) {
  WriteBytes("a.bin", "abc");
  MFile file("a.bin", 8);
  WriteBytes("a.bin", "xyz");
  EXPECT_EQ(ReadAll(file), "xyz");
  EXPECT_EQ(file.Write("!", 1), 1u);
  EXPECT_EQ(MFile::GetLength("a.bin"), -1);
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(ReadBytes("a.bin"), "xyz!");
}

TEST_F(BinaryFileModes, TakesTheReadOnlyAttributeFromAFileItWrites) {
  WriteBytes("a.bin", "abc");
  kv::test::SetReadOnly("a.bin", true);
  MFile reader("a.bin", 2);
  EXPECT_TRUE(reader.Close());
  EXPECT_TRUE(kv::test::IsReadOnly("a.bin")) << "reading leaves the attribute";
  MFile file;
  EXPECT_TRUE(file.Open("a.bin", 4));
  EXPECT_FALSE(kv::test::IsReadOnly("a.bin"));
  EXPECT_EQ(file.Write("X", 1), 1u);
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(ReadBytes("a.bin"), "Xbc");
}

BOOL WINAPI ChangeNothing(const wchar_t* /*path*/, DWORD /*attributes*/) { return TRUE; }

TEST_F(BinaryFileModes, DoesNotOpenAFileThatOnlySeemsToLoseTheReadOnlyAttribute) {
  WriteBytes("a.bin", "abc");
  kv::test::SetReadOnly("a.bin", true);
  const kv::test::ImportPatch patch("SetFileAttributesW", &ChangeNothing);
  MFile file;
  EXPECT_FALSE(file.Open("a.bin", 4));
  EXPECT_TRUE(kv::test::IsReadOnly("a.bin"));
}

TEST_F(BinaryFileModes, AFolderIsNoFile) {
  kv::test::CreateFolders("folder");
  MFile file;
  EXPECT_FALSE(file.Open("folder", 2));
  EXPECT_FALSE(file.Open("folder", 5));
  EXPECT_FALSE(MFile::DeleteFileA("folder"));
  EXPECT_EQ(MFile::GetLength("folder"), -1);
  EXPECT_TRUE(kv::test::FolderExists("folder"));
}

TEST_F(BinaryFileModes, AReadOnlyFolderIsNoFileEither) {
  kv::test::CreateFolders("folder");
  kv::test::SetReadOnly("folder", true);
  MFile file;
  EXPECT_FALSE(file.Open("folder", 2)) << "asked again once, not for ever";
  EXPECT_TRUE(kv::test::FolderExists("folder"));
}

TEST_F(BinaryFileModes, AReaderKeepsWritersOut) {
  WriteBytes("a.bin", "abc");
  const MFile reader("a.bin", 2);
  MFile writer;
  EXPECT_FALSE(writer.Open("a.bin", 4));
  EXPECT_FALSE(writer.Open("a.bin", 5));
  EXPECT_FALSE(writer.Open("a.bin", 16));
  EXPECT_EQ(ReadBytes("a.bin"), "abc");
}

}  // namespace
