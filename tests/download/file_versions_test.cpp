// Which files are new, and what the registry then holds: identifiers as GetUniqueID defines them,
// checksums as zlib's crc32 gives them.
#include <string>

#include "tests/download/registry_fixture.h"
#include "utils/download/download.h"
#include "utils/paths/paths.h"

namespace {

using kv::test::CreateFolders;
using kv::test::FromHex;
using kv::test::kNoFile;
using kv::test::RemoveFile;
using kv::test::WriteBytes;

class FileVersions : public kv::test::RegistrySandbox {
 protected:
  // What the registry holds when the object writes it.
  std::string Written(CheckFileVersion& versions) {
    versions.WriteData();
    return SavedHex();
  }
};

class FileVersionsIn : public kv::test::SandboxIn {};

TEST_F(FileVersions, AFileIsNewOnceForEachContent) {
  CheckFileVersion versions;
  const struct {
    const char* content;
    bool isNew;
    const char* registry;
  } steps[] = {
      {"first", true, "FEDFF66A 57EE7192"},   {"first", false, "FEDFF66A 57EE7192"},
      {"first", false, "FEDFF66A 57EE7192"},  {"second", true, "FEDFF66A 69111FB6"},
      {"second", false, "FEDFF66A 69111FB6"}, {"", true, "FEDFF66A 00000000"},
      {"", false, "FEDFF66A 00000000"},       {"first", true, "FEDFF66A 57EE7192"},
  };
  for (const auto& step : steps) {
    SCOPED_TRACE(step.content);
    WriteBytes("media\\a.txt", step.content);
    EXPECT_EQ(versions.IsNew("media:a.txt", false), step.isNew);
    EXPECT_EQ(Written(versions), step.registry);
  }
}

TEST_F(FileVersions, AFileIsNewOnceForEachContentOverManyObjects) {
  WriteBytes("media\\a.txt", "first");
  EXPECT_TRUE(CheckFileVersion().IsNew("media:a.txt", false));
  EXPECT_FALSE(CheckFileVersion().IsNew("media:a.txt", false));
  WriteBytes("media\\a.txt", "second");
  EXPECT_TRUE(CheckFileVersion().IsNew("media:a.txt", false));
  EXPECT_FALSE(CheckFileVersion().IsNew("media:a.txt", false));
  EXPECT_EQ(SavedHex(), "FEDFF66A 69111FB6");
}

// Neither length nor time stamps tell the two contents apart.
TEST_F(FileVersions, TheContentAloneCounts) {
  CheckFileVersion versions;
  WriteBytes("a.txt", "1");
  kv::test::SetTimes("a.txt", 1'700'000'000, 1'700'000'000, 0);
  EXPECT_TRUE(versions.IsNew("a.txt", true));
  WriteBytes("a.txt", "2");
  kv::test::SetTimes("a.txt", 1'700'000'000, 1'700'000'000, 0);
  EXPECT_TRUE(versions.IsNew("a.txt", true));
  kv::test::SetTimes("a.txt", 1'700'000'001, 1'700'000'001, 0);
  EXPECT_FALSE(versions.IsNew("a.txt", true));
  EXPECT_EQ(Written(versions), "A7FF3607 0DBED51A");
}

TEST_F(FileVersions, AnEmptyFileIsNewAtFirst) {
  CheckFileVersion versions;
  WriteBytes("a.txt", "");
  EXPECT_TRUE(versions.IsNew("a.txt", true));
  EXPECT_FALSE(versions.IsNew("a.txt", true));
  EXPECT_EQ(Written(versions), "A7FF3607 00000000");
}

TEST_F(FileVersions, AFileIsNotNewWhenItsChecksumWasAdded) {
  CheckFileVersion versions;
  WriteBytes("a.txt", "123456789");
  versions.AddFile("a.txt", 0xCBF43926);
  EXPECT_FALSE(versions.IsNew("a.txt", true));
  versions.RemoveFile("a.txt");
  EXPECT_TRUE(versions.IsNew("a.txt", true));
  versions.DeleteData();
  EXPECT_TRUE(versions.IsNew("a.txt", true));
  versions.DeleteData();
  versions.AddFile("a.txt", 0xCBF43927);
  EXPECT_TRUE(versions.IsNew("a.txt", true)) << "one bit apart";
  EXPECT_EQ(Written(versions), "A7FF3607 2639F4CB");
}

TEST_F(FileVersions, AddingKeepsWhatIsThere) {
  CheckFileVersion versions;
  versions.AddFile("a.txt", 1);
  versions.AddFile("a.txt", 2);
  EXPECT_EQ(Written(versions), "A7FF3607 01000000");
  versions.RemoveFile("a.txt");
  versions.AddFile("a.txt", 2);
  EXPECT_EQ(Written(versions), "A7FF3607 02000000");
  versions.AddFile("a.txt", 1);
  EXPECT_EQ(Written(versions), "A7FF3607 02000000");
}

TEST_F(FileVersions, AddingKeepsAChecksumOfZero) {
  CheckFileVersion versions;
  versions.AddFile("a.txt", 0);
  versions.AddFile("a.txt", 0xFFFFFFFF);
  EXPECT_EQ(Written(versions), "A7FF3607 00000000");
}

TEST_F(FileVersions, RemovingTakesTheEntryOfTheNameAlone) {
  CheckFileVersion versions;
  versions.AddFile("a.txt", 1);
  versions.AddFile("b.txt", 2);
  versions.AddFile("c.txt", 3);
  versions.RemoveFile("d.txt");
  versions.RemoveFile("B.txt");
  EXPECT_EQ(Written(versions), "A7FF3607 01000000 887A693F 02000000 3853097D 03000000");
  versions.RemoveFile("b.txt");
  versions.RemoveFile("b.txt");
  EXPECT_EQ(Written(versions), "A7FF3607 01000000 3853097D 03000000");
}

TEST_F(FileVersions, AnEmptyNameHasAnEntryAndNullIsAnEmptyName) {
  CheckFileVersion versions;
  versions.AddFile(nullptr, 1);
  versions.AddFile("", 2);
  EXPECT_EQ(Written(versions), "00000000 01000000");
  versions.RemoveFile(nullptr);
  EXPECT_EQ(Written(versions), kNoFile);
}

// One file under five spellings, and one that differs in a byte above 127.
TEST_F(FileVersions, EachSpellingOfANameHasItsOwnEntry) {
  CheckFileVersion versions;
  WriteBytes("media\\a.txt", "abc");
  EXPECT_TRUE(versions.IsNew("media:a.txt", false));
  EXPECT_EQ(Written(versions), "FEDFF66A C2412435");
  EXPECT_TRUE(versions.IsNew("media\\a.txt", false));
  EXPECT_EQ(Written(versions), "CB23A666 C2412435 FEDFF66A C2412435");
  EXPECT_FALSE(versions.IsNew("media\\a.txt", true)) << "the same text as a path";
  EXPECT_TRUE(versions.IsNew("MEDIA:A.TXT", false));
  EXPECT_EQ(Written(versions), "1F222B19 C2412435 CB23A666 C2412435 FEDFF66A C2412435");
}

TEST_F(FileVersions, APathAndADataNameOfOneFileHaveTwoEntries) {
  CheckFileVersion versions;
  WriteBytes("media\\a.txt", "abc");
  EXPECT_TRUE(versions.IsNew("media:a.txt", false));
  EXPECT_TRUE(versions.IsNew((Work() + "media\\a.txt").c_str(), true));
  EXPECT_FALSE(versions.IsNew("media:a.txt", false));
  EXPECT_FALSE(versions.IsNew((Work() + "media\\a.txt").c_str(), true));
  versions.WriteData();
  EXPECT_EQ(kv::test::ReadBytes(Saved()).size(), 16U);
}

// A data name is looked for in the writable folder and as a language variant; a path is not.
TEST_F(FileVersions, ADataNameIsResolvedAndAPathIsNot) {
  CheckFileVersion versions;
  WriteBytes("a.txt", "1");
  WriteBytes(Writable() + "a.txt", "2");
  EXPECT_TRUE(versions.IsNew("a.txt", true));
  EXPECT_EQ(Written(versions), "A7FF3607 B7EFDC83");
  EXPECT_TRUE(versions.IsNew("a.txt", false));
  EXPECT_EQ(Written(versions), "A7FF3607 0DBED51A");
  WriteBytes("en\\a.txt", "3");
  EXPECT_TRUE(versions.IsNew("a.txt", false));
  EXPECT_EQ(Written(versions), "A7FF3607 9B8ED26D");
  EXPECT_FALSE(versions.IsNew("media:a.txt", true)) << "no such path";
}

TEST_F(FileVersions, APathMayHaveAnyLength) {
  const std::string path =
      std::string(100, 'a') + "\\" + std::string(100, 'b') + "\\" + std::string(100, 'c');
  WriteBytes(path, "abc");
  CheckFileVersion versions;
  EXPECT_TRUE(versions.IsNew(path.c_str(), true));
  EXPECT_FALSE(versions.IsNew(path.c_str(), true));
  EXPECT_EQ(Written(versions), "3B0B3B60 C2412435");
  EXPECT_FALSE(versions.IsNew(path.c_str(), false)) << "a data name over 259 bytes";
}

TEST_F(FileVersions, NamesInAnyScriptAreHashedAsUtf8) {
  const struct {
    const char* name;
    const char* registry;
  } rows[] = {
      {"media:каталог.bin", "C38FC47A C2412435"},
      {"каталог.bin", "91317B24 C2412435"},
      {"天文データ.bin", "B4E1BB52 C2412435"},
      {"🌍пуск.bin", "A956C752 C2412435"},
  };
  for (const char* file : {"media\\каталог.bin", "каталог.bin", "天文データ.bin", "🌍пуск.bin"}) {
    WriteBytes(file, "abc");
  }
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    CheckFileVersion versions;
    versions.DeleteData();
    EXPECT_TRUE(versions.IsNew(row.name, false));
    EXPECT_FALSE(versions.IsNew(row.name, false));
    EXPECT_EQ(Written(versions), row.registry);
  }
}

TEST_P(FileVersionsIn, FindsNewFiles) {
  WriteBytes(Work() + "media\\" + GetParam() + ".bin", "abc");
  CheckFileVersion versions;
  const std::string name = "media:" + GetParam() + ".bin";
  const std::string path = Work() + "media\\" + GetParam() + ".bin";
  EXPECT_TRUE(versions.IsNew(name.c_str(), false));
  EXPECT_FALSE(versions.IsNew(name.c_str(), false));
  EXPECT_TRUE(versions.IsNew(path.c_str(), true));
  EXPECT_FALSE(versions.IsNew(path.c_str(), true));
}
INSTANTIATE_TEST_SUITE_P(Scripts, FileVersionsIn, testing::ValuesIn(kv::test::kFolderNames),
                         kv::test::FolderNameTag);

// The byte number i is i * i + i / 65536, of which 8 bits count. The checksums are Python's:
//   zlib.crc32(bytes((i * i + (i >> 16)) & 255 for i in range(size)))
TEST_F(FileVersions, FilesMayBeLarge) {
  const struct {
    std::size_t size;
    const char* registry;
  } rows[] = {
      {1, "A7FF3607 8DEF02D2"},           {2, "A7FF3607 6922DE36"},
      {255, "A7FF3607 D5A28C76"},         {4096, "A7FF3607 39E412F4"},
      {65536, "A7FF3607 7731E5BF"},       {1'048'577, "A7FF3607 DE8F4B26"},
      {100'000'000, "A7FF3607 A33EE775"},
  };
  std::string bytes(100'000'000, '\0');
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    bytes[i] = static_cast<char>((i * i + (i >> 16)) & 255);
  }
  CheckFileVersion versions;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.size);
    WriteBytes("a.txt", std::string_view(bytes).substr(0, row.size));
    EXPECT_TRUE(versions.IsNew("a.txt", true));
    EXPECT_FALSE(versions.IsNew("a.txt", true));
    EXPECT_EQ(Written(versions), row.registry);
  }
}

}  // namespace
