// Copies of single files, by two lists and by names from folder to folder.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/held_file.h"
#include "tests/support/sandbox.h"
#include "utils/paths/paths.h"

namespace {

using kv::test::CreateFolders;
using kv::test::FolderExists;
using kv::test::HeldFile;
using kv::test::ListTree;
using kv::test::ReadBytes;
using kv::test::Sharing;
using kv::test::WriteBytes;

using Texts = std::vector<std::string>;

class CopyingFiles : public kv::test::Sandbox {
 protected:
  std::string Below(const std::string& name) const { return Root() + name; }
  void Give(const std::string& name, const std::string& content) {
    WriteBytes(Root() + name, content);
  }
  std::string Content(const std::string& name) const { return ReadBytes(Root() + name); }
};

TEST_F(CopyingFiles, GoesAsFarAsBothListsGo) {
  Give("s\\1", "one");
  Give("s\\2", "two");
  Give("s\\3", "three");
  CreateFolders(Below("t"));
  const Texts sources = {Below("s\\1"), Below("s\\2"), Below("s\\3")};
  CopyFilesFromList(sources, Texts{Below("t\\a"), Below("t\\b")});
  EXPECT_EQ(ListTree(Below("t")), (Texts{"a", "b"}));
  EXPECT_EQ(Content("t\\a"), "one");
  EXPECT_EQ(Content("t\\b"), "two");
  CopyFilesFromList(Texts{Below("s\\3")}, Texts{Below("t\\c"), Below("t\\d")});
  EXPECT_EQ(ListTree(Below("t")), (Texts{"a", "b", "c"}));
  EXPECT_EQ(Content("t\\c"), "three");
  CopyFilesFromList(sources, Texts{});
  CopyFilesFromList(Texts{}, sources);
  CopyFilesFromList(Texts{}, Texts{});
  EXPECT_EQ(ListTree(Below("t")), (Texts{"a", "b", "c"}));
  EXPECT_EQ(Content("s\\1"), "one");
}

TEST_F(CopyingFiles, ReplacesWhatIsThere) {
  Give("s\\1", "new");
  Give("t\\1", "old and longer");
  CopyFilesFromList(Texts{Below("s\\1")}, Texts{Below("t\\1")});
  EXPECT_EQ(Content("t\\1"), "new");
}

TEST_F(CopyingFiles, PassesOverWhatCannotBeCopied) {
  Give("s\\1", "one");
  Give("s\\2", "two");
  CreateFolders(Below("t"));
  CreateFolders(Below("folder"));
  const std::string tooLong = Below("t\\" + std::string(300, 'n'));
  const Texts sources = {
      Below("missing"), Below("s\\1"), "",      Below("s\\1"), Below("\xFF"), Below("s\\1"),
      Below("s"),       Below("s\\1"), tooLong, Below("s\\1"), Below("s\\1"), Below("s\\2")};
  const Texts targets = {
      Below("t\\a"), Below("missing\\b"), Below("t\\c"), "",      Below("t\\e"), Below("t\\\xC3"),
      Below("t\\g"), Below("folder"),     Below("t\\i"), tooLong, "\x80",        Below("t\\last")};
  ASSERT_EQ(sources.size(), targets.size());
  CopyFilesFromList(sources, targets);
  EXPECT_EQ(ListTree(Below("t")), Texts{"last"});
  EXPECT_FALSE(FolderExists(Below("missing")));
  EXPECT_EQ(ListTree(Work() + "."), Texts{});
}

TEST_F(CopyingFiles, LeavesFilesInOtherHands) {
  Give("s\\1", "one");
  Give("s\\2", "two");
  Give("t\\1", "old");
  const HeldFile held(Below("t\\1"), Sharing::kRead);
  CopyFilesFromList(Texts{Below("s\\1"), Below("s\\2")}, Texts{Below("t\\1"), Below("t\\2")});
  EXPECT_EQ(Content("t\\1"), "old");
  EXPECT_EQ(Content("t\\2"), "two");
}

TEST_F(CopyingFiles, CopiesInAnyScript) {
  for (const std::string& name : kv::test::kFolderNames) {
    SCOPED_TRACE(name);
    Give("s\\" + name, name);
    CreateFolders(Below("t " + name));
    CopyFilesFromList(Texts{Below("s\\" + name)}, Texts{Below("t " + name + "\\" + name)});
    EXPECT_EQ(Content("t " + name + "\\" + name), name);
    CopyFilesFromList(Texts{name}, Below("s").c_str(), Below("u " + name).c_str());
    EXPECT_EQ(Content("u " + name + "\\" + name), name);
  }
}

TEST_F(CopyingFiles, ByNameMakesTheFoldersOfBothSides) {
  Give("s\\1", "one");
  Give("s\\2", "two");
  Give("s\\sub\\3", "three");
  Give("t\\1", "old");
  CopyFilesFromList(Texts{"1", "sub\\3", "sub2/4", "2"}, Below("s").c_str(), Below("t").c_str());
  EXPECT_EQ(ListTree(Below("t")), (Texts{"1", "2", "sub2\\", "sub\\", "sub\\3"}));
  EXPECT_EQ(ListTree(Below("s")), (Texts{"1", "2", "sub2\\", "sub\\", "sub\\3"}));
  EXPECT_EQ(Content("t\\1"), "one");
  EXPECT_EQ(Content("t\\2"), "two");
  EXPECT_EQ(Content("t\\sub\\3"), "three");
  CopyFilesFromList(Texts{"1"}, Below("new\\source").c_str(), Below("new\\target").c_str());
  EXPECT_EQ(ListTree(Below("new")), (Texts{"source\\", "target\\"}));
}

TEST_F(CopyingFiles, ByNamePassesOverWhatCannotBeCopied) {
  Give("s\\1", "one");
  Give("s\\sub\\2", "two");
  Give("t\\1", "old");
  kv::test::SetReadOnly(Below("t\\1"), true);
  CopyFilesFromList(Texts{"missing", "1", "", "\xFF", "sub", std::string(300, 'n'), "sub\\2"},
                    Below("s").c_str(), Below("t").c_str());
  EXPECT_EQ(ListTree(Below("t")), (Texts{"1", "sub\\", "sub\\2"}));
  EXPECT_EQ(Content("t\\1"), "old");
}

TEST_F(CopyingFiles, ByNameOfNoFolderDoesNothing) {
  Give("s\\1", "one");
  Give("work\\1", "one");
  const Texts before = ListTree(Root());
  const std::string source = Below("s");
  const std::string malformed = Below("new\\\xFF");
  const std::string tooLong = Below("new\\" + std::string(300, 'n'));
  for (const char* folder :
       {"", static_cast<const char*>(nullptr), malformed.c_str(), tooLong.c_str()}) {
    CopyFilesFromList(Texts{"1", "new\\1"}, source.c_str(), folder);
    CopyFilesFromList(Texts{"1", "new\\1"}, folder, Below("t").c_str());
  }
  CopyFilesFromList(Texts{}, Below("new").c_str(), Below("t").c_str());
  EXPECT_EQ(ListTree(Root()), before);
}

// The folder, "\" and the name together.
TEST_F(CopyingFiles, ByNameTakesPathsOfUpTo259Bytes) {
  Give("s\\1", "one");
  const std::string target = Below("t");
  const std::string longest(259 - target.size() - 1, 'n');
  Give("s\\" + longest, "longest");
  Give("s\\" + longest + "n", "too long");
  CopyFilesFromList(Texts{longest + "n"}, Below("s").c_str(), target.c_str());
  EXPECT_FALSE(FolderExists(target));
  CopyFilesFromList(Texts{longest}, Below("s").c_str(), target.c_str());
  EXPECT_EQ(ListTree(target), Texts{longest});
}

TEST_F(CopyingFiles, TakesHiddenAndReadOnlySources) {
  Give("s\\hidden", "hidden");
  Give("s\\readonly", "readonly");
  kv::test::SetHidden(Below("s\\hidden"));
  kv::test::SetReadOnly(Below("s\\readonly"), true);
  CreateFolders(Below("t"));
  CopyFilesFromList(Texts{Below("s\\hidden"), Below("s\\readonly")},
                    Texts{Below("t\\hidden"), Below("t\\readonly")});
  CopyFilesFromList(Texts{"hidden", "readonly"}, Below("s").c_str(), Below("t2").c_str());
  for (const char* target : {"t", "t2"}) {
    SCOPED_TRACE(target);
    EXPECT_EQ(kv::test::ReadTree(Below(target)), kv::test::ReadTree(Below("s")));
  }
}

// Both paths lie between 260 bytes and 260 units.
TEST_F(CopyingFiles, TakesPathsOfMoreThan259Bytes) {
  std::string letters;
  for (int i = 0; i < 60; ++i) letters += "ж";
  const std::string folder = "s\\" + letters + "\\";
  Give(folder + letters, "content");
  ASSERT_GT(Below(folder + letters).size(), 260U);
  CopyFilesFromList(Texts{Below(folder + letters)}, Texts{Below(folder + "t" + letters)});
  EXPECT_EQ(Content(folder + "t" + letters), "content");
}

TEST_F(CopyingFiles, ByNameMakesFoldersBesideThoseGiven) {
  CreateFolders(Below("s\\deep"));
  CreateFolders(Below("t\\deep"));
  CopyFilesFromList(Texts{"..\\new\\1"}, Below("s\\deep").c_str(), Below("t\\deep").c_str());
  EXPECT_EQ(ListTree(Below("s")), (Texts{"deep\\", "new\\"}));
  EXPECT_EQ(ListTree(Below("t")), (Texts{"deep\\", "new\\"}));
  Give("s\\new\\1", "one");
  CopyFilesFromList(Texts{"..\\new\\1"}, Below("s\\deep").c_str(), Below("t\\deep").c_str());
  EXPECT_EQ(Content("t\\new\\1"), "one");
}

}  // namespace
