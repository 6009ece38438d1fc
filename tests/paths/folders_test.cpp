#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/paths/resolver_fixture.h"
#include "tests/paths/test_drive.h"
#include "utils/paths/paths.h"

namespace {

using kv::test::CreateFolders;
using kv::test::CurrentFolder;
using kv::test::FileExists;
using kv::test::FolderExists;
using kv::test::ListTree;
using kv::test::ReadBytes;
using kv::test::SetCurrentFolder;
using kv::test::TestDrive;
using kv::test::WriteBytes;

using Texts = std::vector<std::string>;

class Folders : public kv::test::Sandbox {
 protected:
  std::string Below(const std::string& name) const { return Root() + name; }
  void ExpectCurrentFolderIsKept() const { EXPECT_EQ(CurrentFolder() + "\\", Work()); }
};

TEST_F(Folders, MakeFolderMakesAllParents) {
  MakeFolder(Below("a\\b\\c").c_str());
  EXPECT_EQ(ListTree(Below("a")), (Texts{"b\\", "b\\c\\"}));
  ExpectCurrentFolderIsKept();
}

TEST_F(Folders, MakeFolderMakesWhatIsMissing) {
  WriteBytes(Below("a\\b\\file"), "kept");
  MakeFolder(Below("a\\b\\c\\d").c_str());
  EXPECT_EQ(ListTree(Below("a")), (Texts{"b\\", "b\\c\\", "b\\c\\d\\", "b\\file"}));
  EXPECT_EQ(ReadBytes(Below("a\\b\\file")), "kept");
}

TEST_F(Folders, MakeFolderTakesASeparatorAtTheEndAndRunsOfThem) {
  MakeFolder(Below("a\\b\\").c_str());
  MakeFolder(Below("a\\\\c\\\\\\d\\\\").c_str());
  EXPECT_EQ(ListTree(Below("a")), (Texts{"b\\", "c\\", "c\\d\\"}));
  ExpectCurrentFolderIsKept();
}

TEST_F(Folders, MakeFolderTakesASmallDriveLetter) {
  std::string path = Below("a\\b");
  path[0] = static_cast<char>(path[0] - 'A' + 'a');
  MakeFolder(path.c_str());
  EXPECT_TRUE(FolderExists(Below("a\\b")));
}

TEST_F(Folders, MakeFolderLeavesWhatExists) {
  WriteBytes(Below("file"), "kept");
  MakeFolder(Below("file").c_str());
  EXPECT_EQ(ReadBytes(Below("file")), "kept");
  MakeFolder(Work().c_str());
  ExpectCurrentFolderIsKept();
}

TEST_F(Folders, MakeFolderMakesASingleNameInTheCurrentFolder) {
  MakeFolder("single");
  MakeFolder("x");
  MakeFolder("name with.dots");
  EXPECT_EQ(ListTree(Work() + "."), (Texts{"name with.dots\\", "single\\", "x\\"}));
  ExpectCurrentFolderIsKept();
}

TEST_F(Folders, MakeFolderMakesARelativePathInTheCurrentFolder) {
  MakeFolder("abc\\def");
  MakeFolder("x\\y\\z");
  EXPECT_EQ(ListTree(Work() + "."), (Texts{"abc\\", "abc\\def\\", "x\\", "x\\y\\", "x\\y\\z\\"}));
  ExpectCurrentFolderIsKept();
}

TEST_F(Folders, MakeFolderWithoutSeparatorsKnowsNoSlash) {
  CreateFolders(Work() + "abc");
  MakeFolder("abc/def");
  EXPECT_TRUE(FolderExists(Work() + "abc\\def"));
  MakeFolder("uvw/xyz");
  EXPECT_FALSE(FolderExists(Work() + "uvw"));
}

TEST_F(Folders, MakeFolderOfNothingDoesNothing) {
  MakeFolder("");
  MakeFolder(nullptr);
  EXPECT_EQ(ListTree(Work() + "."), Texts{});
  ExpectCurrentFolderIsKept();
}

TEST_F(Folders, MakeFolderGoesOnBesideAPieceThatCannotBeMade) {
  WriteBytes(Work() + "abcd", "in the way");
  MakeFolder("abcd\\efgh");
  EXPECT_EQ(ListTree(Work() + "."), (Texts{"abcd", "efgh\\"}));
  ExpectCurrentFolderIsKept();
}

TEST_F(Folders, MakeFolderSurvivesPathsOfAnyLength) {
  for (const std::size_t length : {300U, 5000U, 100000U}) {
    SCOPED_TRACE(length);
    MakeFolder((Below("long\\") + std::string(length, 'n')).c_str());
    EXPECT_EQ(ListTree(Below("long")), Texts{});
    ExpectCurrentFolderIsKept();
  }
}

// The system makes no folder whose path is longer, and trying piece by piece takes minutes.
TEST_F(Folders, MakeFolderMakesNothingOfAPathOver259Units) {
  const std::string base = Below("deep");
  const auto units = [](const std::string& text) { return kv::test::Widen(text).size(); };
  std::string path = base;
  while (units(path) + 2 < 259) path += "\\d";
  const std::string longest = path + std::string(259 - units(path), 'd');
  MakeFolder((longest + "\\d").c_str());
  MakeFolder((path + std::string(200000, 'd')).c_str());
  std::string manyPieces = base;
  for (int i = 0; i < 100000; ++i) manyPieces += "\\d";
  MakeFolder(manyPieces.c_str());
  CheckFileFolder((manyPieces + "\\file.txt").c_str());
  EXPECT_FALSE(FolderExists(base));
  MakeFolder(longest.c_str());
  EXPECT_TRUE(FolderExists(longest));
  ExpectCurrentFolderIsKept();
}

// The rows whose paths lead to the root of a drive, on a drive that is the test's own.
struct DriveCase {
  const char* what;
  const char* path;
  Texts made;
};

void CheckOnADrive(char letter, const std::string& root, const std::vector<DriveCase>& cases) {
  CreateFolders(root);
  const TestDrive drive(letter, root);
  ASSERT_TRUE(drive.Exists()) << "needs drives that are links";
  for (const DriveCase& row : cases) {
    SCOPED_TRACE(row.what);
    CreateFolders(drive.Root() + "here");
    SetCurrentFolder(drive.Root() + "here");
    MakeFolder(row.path);
    EXPECT_EQ(CurrentFolder(), drive.Root() + "here");
    EXPECT_EQ(ListTree(root + "\\."), row.made);
    SetCurrentFolder(root.substr(0, 3));
    for (const std::string& name : ListTree(root + "\\.")) {
      if (name.find('\\') == name.size() - 1) {
        kv::test::RemoveTree(root + "\\" + name.substr(0, name.size() - 1));
      }
    }
  }
}

TEST_F(Folders, MakeFolderGoesByTheFirstAndTheThirdCharacter) {
  CheckOnADrive(
      'T', Below("drive"),
      {
          {"from the root", "\\a\\b", {"a\\", "a\\b\\", "here\\"}},
          {"a drive", "T:\\a\\b", {"a\\", "a\\b\\", "here\\"}},
          {"a small letter", "t:\\a\\b", {"a\\", "a\\b\\", "here\\"}},
          {"a name of two letters: root, first letter lost",
           "ab\\cd",
           {"b\\", "b\\cd\\", "here\\"}},
          {"a third character further on", "abc\\de", {"here\\", "here\\abc\\", "here\\abc\\de\\"}},
          {"a separator at the second place", "a\\bc", {"here\\", "here\\a\\", "here\\a\\bc\\"}},
          {"a drive without separator", "T:ab", {"here\\", "here\\ab\\"}},
          {"three characters lost", "T:ab\\c", {"here\\", "here\\b\\", "here\\b\\c\\"}},
          {"a drive that is not there", "Q:\\a", {"a\\", "here\\"}},
      });
}

TEST_F(Folders, MakeFolderPutsTheDriveBack) {
  CreateFolders(Below("drive"));
  const TestDrive drive('U', Below("drive"));
  ASSERT_TRUE(drive.Exists()) << "needs drives that are links";
  MakeFolder("U:\\a\\b");
  EXPECT_TRUE(FolderExists(Below("drive\\a\\b")));
  ExpectCurrentFolderIsKept();
}

TEST_F(Folders, CheckFileFolderMakesTheFolderOfAFile) {
  struct Case {
    const char* path;
    const char* made;
  };
  for (const Case& row :
       {Case{"d1\\media:images:x.png", "d1\\media\\images"}, Case{"d2\\media\\x.png", "d2\\media"},
        Case{"d3/media/x.png", "d3\\media"}, Case{"d4/media:a\\b/x.png", "d4\\media\\a\\b"},
        Case{"d5\\x.png", "d5"}, Case{"d6\\", "d6"}, Case{"d7\\media:", "d7\\media"},
        Case{"d8\\a.b\\.c", "d8\\a.b"}}) {
    SCOPED_TRACE(row.path);
    const std::string path = Root() + row.path;
    const std::string copy = path;
    CheckFileFolder(path.c_str());
    EXPECT_TRUE(FolderExists(Root() + row.made));
    EXPECT_FALSE(FileExists(path));
    EXPECT_EQ(path, copy);
  }
  EXPECT_EQ(ListTree(Root() + "d1"), (Texts{"media\\", "media\\images\\"}));
  EXPECT_EQ(ListTree(Root() + "d2"), Texts{"media\\"});
  EXPECT_EQ(ListTree(Root() + "d5"), Texts{});
  EXPECT_EQ(ListTree(Root() + "d6"), Texts{});
  EXPECT_EQ(ListTree(Root() + "d7"), Texts{"media\\"});
  ExpectCurrentFolderIsKept();
}

TEST_F(Folders, CheckFileFolderTakesAPathWithoutSeparatorForTheFolder) {
  CheckFileFolder("x.png");
  EXPECT_TRUE(FolderExists(Work() + "x.png"));
  CheckFileFolder("folder/x.png");
  EXPECT_EQ(ListTree(Work() + "."), (Texts{"folder\\", "x.png\\"}));
}

TEST_F(Folders, CheckFileFolderLeavesAnExistingFolder) {
  WriteBytes(Below("d\\kept.txt"), "kept");
  CheckFileFolder(Below("d\\x.png").c_str());
  CheckFileFolder((Work() + "x.png").c_str());
  EXPECT_EQ(ListTree(Below("d")), Texts{"kept.txt"});
  EXPECT_EQ(ListTree(Work() + "."), Texts{});
}

TEST_F(Folders, CheckFileFolderOfNothingDoesNothing) {
  CheckFileFolder("");
  CheckFileFolder(nullptr);
  CheckFileFolder((Below("long\\") + std::string(100000, 'n') + "\\x.png").c_str());
  EXPECT_EQ(ListTree(Work() + "."), Texts{});
  ExpectCurrentFolderIsKept();
}

TEST_F(Folders, ChangeFolderTellsWhetherItMoved) {
  CreateFolders(Work() + "sub\\deeper");
  WriteBytes(Work() + "file", "no folder");
  EXPECT_EQ(ChangeFolder("sub"), 0);
  EXPECT_EQ(CurrentFolder(), Work() + "sub");
  EXPECT_EQ(ChangeFolder("deeper"), 0);
  EXPECT_EQ(CurrentFolder(), Work() + "sub\\deeper");
  EXPECT_EQ(ChangeFolder("..\\.."), 0);
  ExpectCurrentFolderIsKept();
  EXPECT_EQ(ChangeFolder((Work() + "sub").c_str()), 0);
  EXPECT_EQ(CurrentFolder(), Work() + "sub");
  for (const std::string& path : {std::string("missing"), Work() + "missing", Work() + "file",
                                  std::string(), std::string("Q:\\nowhere")}) {
    SCOPED_TRACE(path);
    EXPECT_EQ(ChangeFolder(path.c_str()), -1);
    EXPECT_EQ(CurrentFolder(), Work() + "sub");
  }
  EXPECT_EQ(ChangeFolder(nullptr), -1);
}

TEST_F(Folders, ChangeFolderChangesTheDrive) {
  CreateFolders(Below("drive\\sub"));
  const TestDrive drive('V', Below("drive"));
  ASSERT_TRUE(drive.Exists()) << "needs drives that are links";
  EXPECT_EQ(ChangeFolder("V:\\sub"), 0);
  EXPECT_EQ(CurrentFolder(), "V:\\sub");
  EXPECT_EQ(ChangeFolder("v:\\"), 0);
  EXPECT_EQ(CurrentFolder(), "v:\\");
  EXPECT_EQ(ChangeFolder(Work().c_str()), 0);
  ExpectCurrentFolderIsKept();
}

TEST_F(Folders, ChangeFolderLeavesTheDriveThatItReachedWhenTheFolderIsMissing) {
  CreateFolders(Below("drive"));
  const TestDrive drive('W', Below("drive"));
  ASSERT_TRUE(drive.Exists()) << "needs drives that are links";
  EXPECT_EQ(ChangeFolder("W:\\missing"), -1);
  EXPECT_EQ(CurrentFolder(), "W:\\");
  SetCurrentFolder(Work());
}

TEST_F(Folders, IsFolderKnowsFoldersOnly) {
  CreateFolders(Below("folder"));
  WriteBytes(Below("file"), "no folder");
  EXPECT_TRUE(IsFolder(Below("folder").c_str()));
  EXPECT_TRUE(IsFolder(Below("folder\\").c_str()));
  EXPECT_TRUE(IsFolder("."));
  EXPECT_FALSE(IsFolder(Below("file").c_str()));
  EXPECT_FALSE(IsFolder(Below("missing").c_str()));
  EXPECT_FALSE(IsFolder(""));
  EXPECT_FALSE(IsFolder(nullptr));
  EXPECT_FALSE(IsFolder(std::string(100000, 'n').c_str()));
}

}  // namespace
