// What UnzipFile leaves on the disk, with Info-ZIP's unzip.exe.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "tests/platform/unzip_stand_in.h"
#include "tests/support/zip.h"
#include "utils/platform/platform.h"

namespace {

using namespace kv::test;

constexpr long long kBeforeArchive = 978'307'200;   // 1 January 2001
constexpr long long kAfterArchive = 1'893'456'000;  // 1 January 2030

// The program stands in the current folder; archives are "dl\pack.zip" in the sandbox.
class UnzipArchive : public UnzipSandbox {
 protected:
  UnzipArchive() { PlaceRealProgram(Work() + "unzip.exe"); }

  std::string Archive() const { return Root() + "dl\\pack.zip"; }
  std::string Out() const { return Root() + "out\\"; }

  void WriteArchive(const std::vector<ZipEntry>& entries) {
    WriteBytes(Archive(), ZipArchive(entries));
  }

  bool UnzipTo(const std::string& folder) { return UnzipFile(Archive().c_str(), folder.c_str()); }
};

using Tree = std::vector<std::string>;

const std::vector<ZipEntry> kLevels = {
    {"readme.txt", "read me"},
    {"empty.txt", ""},
    {"folder/", ""},
    {"catalogs/Planets&Moons/stars.bin", std::string("\0\n\r\x1A", 4)}};

TEST_F(UnzipArchive, UnpacksAllLevelsIntoTheGivenFolder) {
  // A missing folder, with and without "\" at its end; missing parents; relative; existing ones.
  for (const char* folder : {"{root}out", "{root}out\\", "{root}out\\a\\b", "{root}out\\a\\b\\",
                             "out", "out\\", "out\\inner", "{root}made", "{root}made\\"}) {
    SCOPED_TRACE(folder);
    CreateFolders(Root() + "made");
    WriteArchive(kLevels);
    const std::string given = InRoot(folder);
    EXPECT_TRUE(UnzipTo(given));
    EXPECT_EQ(ListTree(given),
              (Tree{"catalogs\\", "catalogs\\Planets&Moons\\", "catalogs\\Planets&Moons\\stars.bin",
                    "empty.txt", "folder\\", "readme.txt"}));
    EXPECT_EQ(ReadBytes(given + "\\readme.txt"), "read me");
    EXPECT_EQ(ReadBytes(given + "\\empty.txt"), "");
    EXPECT_EQ(ReadBytes(given + "\\catalogs\\Planets&Moons\\stars.bin"),
              std::string("\0\n\r\x1A", 4));
    for (const char* used : {"out", "made", "work\\out"}) RemoveTree(Root() + used);
  }
}

TEST_F(UnzipArchive, UnpacksIntoTheArchivesOwnFolder) {
  WriteArchive({{"readme.txt", "read me"}, {"folder/stars.bin", "stars"}});
  EXPECT_TRUE(UnzipFile(Archive().c_str(), nullptr));
  EXPECT_EQ(ListTree(Root() + "dl"),
            (Tree{"folder\\", "folder\\stars.bin", "pack.zip", "readme.txt"}));
  EXPECT_EQ(ReadBytes(Root() + "dl\\folder\\stars.bin"), "stars");
}

TEST_F(UnzipArchive, UnpacksLargeEntries) {
  std::string content;
  for (long long i = 0; i < 1'000'000; ++i) content += static_cast<char>((i * i / 7) & 0xFF);
  WriteArchive({{"large.bin", content}});
  EXPECT_TRUE(UnzipTo(Out()));
  EXPECT_EQ(ReadBytes(Out() + "large.bin") == content, true);
}

// Made by Python's zipfile: 100 times "136199 Eris\n" as "names.txt", ZIP_DEFLATED, of 12:00 on
// 1 January 2020, create_system 0.
constexpr char kDeflated[] =
    "\x50\x4B\x03\x04\x14\x00\x00\x00\x08\x00\x00\x60\x21\x50\xC6\x7D\xFD\xF7\x19\x00"
    "\x00\x00\xB0\x04\x00\x00\x09\x00\x00\x00\x6E\x61\x6D\x65\x73\x2E\x74\x78\x74\x33"
    "\x34\x36\x33\xB4\xB4\x54\x70\x2D\xCA\x2C\xE6\x32\x1C\x65\x8F\xB2\x47\xD9\xA3\xEC"
    "\x41\xCC\x06\x00\x50\x4B\x01\x02\x14\x00\x14\x00\x00\x00\x08\x00\x00\x60\x21\x50"
    "\xC6\x7D\xFD\xF7\x19\x00\x00\x00\xB0\x04\x00\x00\x09\x00\x00\x00\x00\x00\x00\x00"
    "\x00\x00\x00\x00\x80\x01\x00\x00\x00\x00\x6E\x61\x6D\x65\x73\x2E\x74\x78\x74\x50"
    "\x4B\x05\x06\x00\x00\x00\x00\x01\x00\x01\x00\x37\x00\x00\x00\x40\x00\x00\x00\x00"
    "\x00";

TEST_F(UnzipArchive, UnpacksCompressedEntries) {
  std::string lines;
  for (int i = 0; i < 100; ++i) lines += "136199 Eris\n";
  WriteBytes(Archive(), std::string(kDeflated, sizeof kDeflated - 1));
  EXPECT_TRUE(UnzipTo(Out()));
  EXPECT_EQ(ReadBytes(Out() + "names.txt"), lines);
}

TEST_F(UnzipArchive, AddsToWhatIsThere) {
  WriteBytes(Out() + "old.txt", "old");
  WriteBytes(Out() + "folder\\old.txt", "old too");
  WriteArchive({{"new.txt", "new"}, {"folder/new.txt", "new too"}});
  EXPECT_TRUE(UnzipTo(Out()));
  EXPECT_EQ(ListTree(Out()),
            (Tree{"folder\\", "folder\\new.txt", "folder\\old.txt", "new.txt", "old.txt"}));
  EXPECT_EQ(ReadBytes(Out() + "old.txt"), "old");
  EXPECT_EQ(ReadBytes(Out() + "folder\\old.txt"), "old too");
}

TEST_F(UnzipArchive, KeepsNewerFilesAndReplacesOlderOnes) {
  SetEnvironment("UNZIPOPT", "-o");  // or the program would ask, and wait
  WriteBytes(Out() + "newer.txt", "newer on disk");
  WriteBytes(Out() + "older.txt", "older on disk");
  SetTimes(Out() + "newer.txt", kAfterArchive, kAfterArchive, 0);
  SetTimes(Out() + "older.txt", kBeforeArchive, kBeforeArchive, 0);
  WriteArchive({{"newer.txt", "archived"}, {"older.txt", "archived"}, {"absent.txt", "archived"}});
  EXPECT_TRUE(UnzipTo(Out()));
  EXPECT_EQ(ReadBytes(Out() + "newer.txt"), "newer on disk");
  EXPECT_EQ(ReadBytes(Out() + "older.txt"), "archived");
  EXPECT_EQ(ReadBytes(Out() + "absent.txt"), "archived");
}

TEST_F(UnzipArchive, UnpacksTheSameArchiveAgainWithoutAQuestion) {
  WriteArchive(kLevels);
  EXPECT_TRUE(UnzipTo(Out()));
  WriteBytes(Out() + "readme.txt", "changed since");
  EXPECT_TRUE(UnzipTo(Out()));
  EXPECT_EQ(ReadBytes(Out() + "readme.txt"), "changed since");
}

// The program speaks the system's narrow code page, 1252 in the tests' environment: it spells other
// characters "#U" and four digits, and those beyond the Basic Multilingual Plane "_". A name that
// is said to be UTF-8 is read so only where the entry has an extra field.
TEST_F(UnzipArchive, NamesFilesInTheSystemsCodePage) {
  ASSERT_EQ(::GetACP(), 1252U);
  struct Case {
    const char* name;
    const char* onDisk;
  };
  for (const Case& row : {Case{"naïve.txt", "naïve.txt"},
                          {"10€.txt", "10€.txt"},
                          {"Ж.txt", "#U0416.txt"},
                          {"天.txt", "#U5929.txt"},
                          {"🌍.txt", "_.txt"}}) {
    SCOPED_TRACE(row.name);
    WriteArchive({{row.name, "content", true}});
    EXPECT_TRUE(UnzipTo(Out()));
    EXPECT_EQ(ListTree(Out()), Tree{row.onDisk});
    EXPECT_EQ(ReadBytes(Out() + row.onDisk), "content");
    RemoveTree(Root() + "out");
  }
  WriteArchive({{"Ж.txt", "content"}});
  EXPECT_TRUE(UnzipTo(Out()));
  EXPECT_EQ(ListTree(Out()).size(), 1U);
  EXPECT_FALSE(FileExists(Out() + "Ж.txt"));
  EXPECT_FALSE(FileExists(Out() + "#U0416.txt"));
}

// The same code page limits the folders that the program can use; the call tells nothing of it.
TEST_F(UnzipArchive, FindsFoldersOfTheSystemsCodePageOnly) {
  ASSERT_EQ(::GetACP(), 1252U);
  struct Case {
    const char* archiveFolder;
    const char* folder;
    bool isUnpacked;
  };
  for (const Case& row : {Case{"{root}été", "{root}naïve", true},
                          {"{root}été", "{root}naïve\\été\\", true},
                          {"{root}Каталог", "{root}out", false},
                          {"{root}dl", "{root}Каталог", false},
                          {"{root}dl", "{root}Каталог\\", false},
                          {"{root}天🌍", "{root}out\\", false},
                          // Blanks divide what was one path.
                          {"{root}my dl", "{root}out", false},
                          {"{root}dl", "{root}my out", false}}) {
    SCOPED_TRACE(std::string(row.archiveFolder) + " to " + row.folder);
    const std::string archive = InRoot(row.archiveFolder) + "\\pack.zip";
    WriteBytes(archive, ZipArchive({{"readme.txt", "read me"}}));
    const std::string folder = InRoot(row.folder);
    EXPECT_TRUE(UnzipFile(archive.c_str(), folder.c_str()));
    EXPECT_EQ(FileExists(folder + "\\readme.txt"), row.isUnpacked);
  }
}

TEST_F(UnzipArchive, UnpacksOwnFolderOfTheSystemsCodePage) {
  const std::string archive = Root() + "été\\pack.zip";
  WriteBytes(archive, ZipArchive({{"readme.txt", "read me"}}));
  EXPECT_TRUE(UnzipFile(archive.c_str(), nullptr));
  EXPECT_EQ(ReadBytes(Root() + "été\\readme.txt"), "read me");
}

TEST_F(UnzipArchive, GivesTrueWhereNothingIsUnpacked) {
  struct Case {
    const char* what;
    std::string bytes;
  };
  const std::string whole = ZipArchive(kLevels);
  for (const Case& row : {Case{"no entries", ZipArchive({})},
                          {"no bytes", ""},
                          {"no archive", std::string(1000, '!')},
                          {"cut behind the first entry", whole.substr(0, 50)},
                          {"no directory at the end", whole.substr(0, whole.size() - 22)}}) {
    SCOPED_TRACE(row.what);
    WriteBytes(Archive(), row.bytes);
    EXPECT_TRUE(UnzipTo(Out()));
    EXPECT_EQ(ListTree(Out()), Tree{});
  }
  RemoveFile(Archive());
  EXPECT_TRUE(UnzipTo(Out()));
  EXPECT_EQ(ListTree(Out()), Tree{});
}

TEST_F(UnzipArchive, GivesTrueForEntriesThatAreDamaged) {
  std::string archive = ZipArchive({{"bad.txt", "content"}, {"good.txt", "content"}});
  archive[archive.find("content")] = 'C';  // no longer what the sum says
  WriteBytes(Archive(), archive);
  EXPECT_TRUE(UnzipTo(Out()));
  EXPECT_EQ(ReadBytes(Out() + "good.txt"), "content");
}

}  // namespace
