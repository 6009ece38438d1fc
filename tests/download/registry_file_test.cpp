// The registry file: how it is read, where it is written, and what it then holds, byte for byte.
//
// Identifiers of names, least significant byte first, by the definition of GetUniqueID:
//   "a.txt" A7FF3607, "b.txt" 887A693F, "c.txt" 3853097D, "d.txt" D770D64F
#include <algorithm>
#include <string>
#include <vector>

#include "tests/download/registry_fixture.h"
#include "tests/support/process.h"
#include "utils/download/download.h"
#include "utils/paths/paths.h"

namespace {

using kv::test::CreateFolders;
using kv::test::FileExists;
using kv::test::FolderExists;
using kv::test::FromHex;
using kv::test::HexOfFile;
using kv::test::kNoFile;
using kv::test::ReadBytes;
using kv::test::RemoveFile;
using kv::test::ToHex;
using kv::test::WriteBytes;

class RegistryFile : public kv::test::RegistrySandbox {};

class RegistryFileIn : public kv::test::SandboxIn {};

TEST_F(RegistryFile, HoldsEightBytesAnEntryInAscendingOrder) {
  {
    CheckFileVersion versions;
    versions.AddFile("c.txt", 0x03020100);
    versions.AddFile("a.txt", 0xFFFEFDFC);
    versions.AddFile("b.txt", 0x13121110);
  }
  EXPECT_EQ(ReadBytes(Saved()).size(), 24U);
  EXPECT_EQ(SavedHex(), "A7FF3607 FCFDFEFF 887A693F 10111213 3853097D 00010203");
}

TEST_F(RegistryFile, IsReadBackAsItWasWritten) {
  {
    CheckFileVersion versions;
    versions.AddFile("c.txt", 3);
    versions.AddFile("a.txt", 1);
  }
  {
    CheckFileVersion versions;
    versions.AddFile("b.txt", 2);
    versions.AddFile("a.txt", 99);
  }
  EXPECT_EQ(SavedHex(), "A7FF3607 01000000 887A693F 02000000 3853097D 03000000");
}

TEST_F(RegistryFile, IsWrittenAgainWithoutAChange) {
  WriteBytes(Saved(), FromHex("A7FF3607 01000000"));
  {
    const CheckFileVersion versions;
    RemoveFile(Saved());
  }
  EXPECT_EQ(SavedHex(), "A7FF3607 01000000");
}

TEST_F(RegistryFile, IsSortedBySignedIdentifiers) {
  WriteBytes(Saved(), FromHex("00000000 05000000 FFFFFF7F 07000000 FFFFFFFF 04000000"
                              "01000000 06000000 00000080 01000000 FEFFFFFF 03000000"
                              "01000080 02000000"));
  { const CheckFileVersion versions; }
  EXPECT_EQ(SavedHex(),
            "00000080 01000000 01000080 02000000 FEFFFFFF 03000000 FFFFFFFF 04000000 "
            "00000000 05000000 01000000 06000000 FFFFFF7F 07000000");
}

TEST_F(RegistryFile, CountsTheFirstRecordOfAnIdentifier) {
  const struct {
    const char* read;
    const char* written;
  } rows[] = {
      {"A7FF3607 01000000 A7FF3607 02000000", "A7FF3607 01000000"},
      {"A7FF3607 02000000 A7FF3607 01000000 A7FF3607 02000000", "A7FF3607 02000000"},
      {"887A693F 01000000 A7FF3607 02000000 887A693F 03000000 A7FF3607 04000000",
       "A7FF3607 02000000 887A693F 01000000"},
      {"FFFFFFFF 01000000 FFFFFFFF 02000000", "FFFFFFFF 01000000"},
      {"00000000 00000000 00000000 01000000", "00000000 00000000"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.read);
    WriteBytes(Saved(), FromHex(row.read));
    { const CheckFileVersion versions; }
    EXPECT_EQ(SavedHex(), row.written);
  }
}

// Of three records, as many bytes as the row says.
TEST_F(RegistryFile, IsReadWhereverItWasTorn) {
  const std::string whole = FromHex("01000000 A1A2A3A4 02030405 B1B2B3B4 06070809 C1C2C3C4");
  const struct {
    std::size_t size;
    const char* written;
  } rows[] = {
      {0, kNoFile},
      {1, "01000000 00000000"},
      {2, "01000000 00000000"},
      {3, "01000000 00000000"},
      {4, "01000000 00000000"},
      {5, "01000000 A1000000"},
      {6, "01000000 A1A20000"},
      {7, "01000000 A1A2A300"},
      {8, "01000000 A1A2A3A4"},
      {9, "01000000 A1A2A3A4 02000000 00000000"},
      {10, "01000000 A1A2A3A4 02030000 00000000"},
      {11, "01000000 A1A2A3A4 02030400 00000000"},
      {12, "01000000 A1A2A3A4 02030405 00000000"},
      {13, "01000000 A1A2A3A4 02030405 B1000000"},
      {14, "01000000 A1A2A3A4 02030405 B1B20000"},
      {15, "01000000 A1A2A3A4 02030405 B1B2B300"},
      {16, "01000000 A1A2A3A4 02030405 B1B2B3B4"},
      {17, "01000000 A1A2A3A4 06000000 00000000 02030405 B1B2B3B4"},
      {18, "01000000 A1A2A3A4 06070000 00000000 02030405 B1B2B3B4"},
      {19, "01000000 A1A2A3A4 06070800 00000000 02030405 B1B2B3B4"},
      {20, "01000000 A1A2A3A4 02030405 B1B2B3B4 06070809 00000000"},
      {21, "01000000 A1A2A3A4 02030405 B1B2B3B4 06070809 C1000000"},
      {22, "01000000 A1A2A3A4 02030405 B1B2B3B4 06070809 C1C20000"},
      {23, "01000000 A1A2A3A4 02030405 B1B2B3B4 06070809 C1C2C300"},
      {24, "01000000 A1A2A3A4 02030405 B1B2B3B4 06070809 C1C2C3C4"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.size);
    WriteBytes(Saved(), whole.substr(0, row.size));
    { const CheckFileVersion versions; }
    EXPECT_EQ(SavedHex(), row.written);
  }
}

// 100,000 records from the greatest identifier to the smallest, each there twice.
TEST_F(RegistryFile, MayBeLarge) {
  constexpr int kCount = 20'000;
  std::vector<std::string> records;
  for (int i = 0; i < kCount; ++i) {
    const int identifier = (i - kCount / 2) * 200'000;
    std::string record;
    for (int shift = 0; shift < 32; shift += 8) {
      record += static_cast<char>((static_cast<unsigned>(identifier) >> shift) & 255);
    }
    records.push_back(record + "abcd");
  }
  std::string sorted;
  for (const std::string& record : records) sorted += record;
  std::reverse(records.begin(), records.end());
  std::string given;
  for (const std::string& record : records) given += record;
  for (const std::string& record : records) given += record.substr(0, 4) + "late";
  WriteBytes(Saved(), given);
  { const CheckFileVersion versions; }
  EXPECT_TRUE(ReadBytes(Saved()) == sorted) << "not the 160,000 bytes that are expected";
}

TEST_F(RegistryFile, ReplacesALongerFile) {
  WriteBytes(Saved(), FromHex("A7FF3607 01000000 887A693F 02000000 3853097D 03000000"));
  {
    CheckFileVersion versions;
    versions.RemoveFile("b.txt");
    versions.RemoveFile("c.txt");
  }
  EXPECT_EQ(SavedHex(), "A7FF3607 01000000");
}

TEST_F(RegistryFile, IsDeletedWhenNoEntriesAreLeft) {
  const struct {
    const char* what;
    void (*empty)(CheckFileVersion& versions);
  } rows[] = {
      {"all at once", [](CheckFileVersion& versions) { versions.DeleteData(); }},
      {"one by one",
       [](CheckFileVersion& versions) {
         versions.RemoveFile("a.txt");
         versions.RemoveFile("b.txt");
       }},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    WriteBytes(Saved(), FromHex("A7FF3607 01000000 887A693F 02000000"));
    {
      CheckFileVersion versions;
      row.empty(versions);
      EXPECT_TRUE(FileExists(Saved())) << "memory alone has changed";
    }
    EXPECT_FALSE(FileExists(Saved()));
    EXPECT_TRUE(FolderExists(Writable() + "download"));
  }
}

TEST_F(RegistryFile, WithoutEntriesLeavesTheInstallationAlone) {
  WriteBytes(Installed(), FromHex("A7FF3607 01000000"));
  {
    CheckFileVersion versions;
    versions.DeleteData();
  }
  EXPECT_EQ(HexOfFile(Installed()), "A7FF3607 01000000");
  EXPECT_FALSE(FileExists(Saved()));
}

TEST_F(RegistryFile, StartsEmptyWithoutAFile) {
  { const CheckFileVersion versions; }
  EXPECT_EQ(SavedHex(), kNoFile);
  EXPECT_TRUE(FolderExists(Writable() + "download")) << "the folder is made before the deletion";
  EXPECT_EQ(kv::test::ListTree(Work().substr(0, Work().size() - 1)), std::vector<std::string>());
}

TEST_F(RegistryFile, IsReadInTheInstallationAndWrittenToTheWritableFolder) {
  WriteBytes(Installed(), FromHex("887A693F 02000000"));
  kv::test::SetReadOnly(Installed(), true);
  {
    CheckFileVersion versions;
    versions.AddFile("a.txt", 1);
    versions.AddFile("b.txt", 99);
  }
  EXPECT_EQ(SavedHex(), "A7FF3607 01000000 887A693F 02000000");
  EXPECT_EQ(HexOfFile(Installed()), "887A693F 02000000");
  EXPECT_TRUE(kv::test::IsReadOnly(Installed()));
}

TEST_F(RegistryFile, IsReadInTheWritableFolderBeforeTheInstallation) {
  WriteBytes(Installed(), FromHex("887A693F 02000000"));
  WriteBytes(Saved(), FromHex("A7FF3607 01000000"));
  { const CheckFileVersion versions; }
  EXPECT_EQ(SavedHex(), "A7FF3607 01000000");
}

TEST_F(RegistryFile, IsReadAsALanguageVariantAndWrittenAsItself) {
  const std::string variant = Writable() + "en\\" + kv::test::kRegistryPlace;
  WriteBytes(variant, FromHex("887A693F 02000000"));
  WriteBytes(Saved(), FromHex("A7FF3607 01000000"));
  {
    CheckFileVersion versions;
    versions.AddFile("c.txt", 3);
  }
  EXPECT_EQ(SavedHex(), "887A693F 02000000 3853097D 03000000");
  EXPECT_EQ(HexOfFile(variant), "887A693F 02000000");
}

TEST_F(RegistryFile, LosesItsReadOnlyAttributeWhenWritten) {
  WriteBytes(Saved(), FromHex("A7FF3607 01000000"));
  kv::test::SetReadOnly(Saved(), true);
  {
    CheckFileVersion versions;
    versions.AddFile("b.txt", 2);
  }
  EXPECT_EQ(SavedHex(), "A7FF3607 01000000 887A693F 02000000");
}

TEST_F(RegistryFile, MayBeWrittenAtAnyTime) {
  {
    CheckFileVersion versions;
    versions.AddFile("a.txt", 1);
    EXPECT_EQ(SavedHex(), kNoFile);
    versions.WriteData();
    EXPECT_EQ(SavedHex(), "A7FF3607 01000000");
    versions.AddFile("b.txt", 2);
    EXPECT_EQ(SavedHex(), "A7FF3607 01000000");
    versions.WriteData();
    versions.WriteData();
    EXPECT_EQ(SavedHex(), "A7FF3607 01000000 887A693F 02000000");
    versions.DeleteData();
    versions.WriteData();
    EXPECT_EQ(SavedHex(), kNoFile);
    versions.AddFile("c.txt", 3);
  }
  EXPECT_EQ(SavedHex(), "3853097D 03000000");
}

TEST_F(RegistryFile, HoldsTheEntriesOfTheObjectThatEndsLast) {
  WriteBytes(Saved(), FromHex("D770D64F 04000000"));
  {
    CheckFileVersion last;
    last.AddFile("a.txt", 1);
    {
      CheckFileVersion first;
      first.AddFile("b.txt", 2);
    }
    EXPECT_EQ(SavedHex(), "887A693F 02000000 D770D64F 04000000");
  }
  EXPECT_EQ(SavedHex(), "A7FF3607 01000000 D770D64F 04000000");
}

TEST_F(RegistryFile, FollowsTheWritableFolder) {
  const std::string other = Root() + "other\\";
  {
    CheckFileVersion versions;
    versions.AddFile("a.txt", 1);
    KelvarisPath::SetWritableFolder(other.c_str());
  }
  EXPECT_EQ(HexOfFile(other + kv::test::kRegistryPlace), "A7FF3607 01000000");
  EXPECT_FALSE(FileExists(Saved()));
}

TEST_F(RegistryFile, BearsTheNameThatItIsGiven) {
  const struct {
    const char* name;
    const char* place;
  } rows[] = {
      {"own.dat", "own.dat"},           {":own2.dat", "own2.dat"},
      {"a:b:own.dat", "a\\b\\own.dat"}, {"a/c\\own.dat", "a\\c\\own.dat"},
      {"ü:день.dat", "ü\\день.dat"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    {
      CheckFileVersion versions(row.name);
      versions.AddFile("a.txt", 1);
    }
    EXPECT_EQ(HexOfFile(Writable() + row.place), "A7FF3607 01000000");
    {
      CheckFileVersion versions(row.name);
      versions.AddFile("b.txt", 2);
    }
    EXPECT_EQ(HexOfFile(Writable() + row.place), "A7FF3607 01000000 887A693F 02000000");
  }
  EXPECT_FALSE(FileExists(Saved()));
}

// The name is kept, not the caller's text.
TEST_F(RegistryFile, OutlivesTheTextOfItsName) {
  char name[] = "own.dat";
  {
    CheckFileVersion versions(name);
    name[0] = 'x';
    versions.AddFile("a.txt", 1);
  }
  EXPECT_EQ(HexOfFile(Writable() + "own.dat"), "A7FF3607 01000000");
}

TEST_P(RegistryFileIn, IsReadAndWritten) {
  const std::string folder = Work() + "own\\";
  WriteBytes(Work() + "download\\" + GetParam() + ".dat", FromHex("A7FF3607 01000000"));
  {
    CheckFileVersion versions(("download:" + GetParam() + ".dat").c_str());
    versions.AddFile("b.txt", 2);
    KelvarisPath::SetWritableFolder(folder.c_str());
  }
  EXPECT_EQ(HexOfFile(folder + "download\\" + GetParam() + ".dat"),
            "A7FF3607 01000000 887A693F 02000000");
}
INSTANTIATE_TEST_SUITE_P(Scripts, RegistryFileIn, testing::ValuesIn(kv::test::kFolderNames),
                         kv::test::FolderNameTag);

}  // namespace
