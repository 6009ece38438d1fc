#include <gtest/gtest.h>
#include <windows.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "tests/paths/test_drive.h"
#include "tests/support/held_file.h"
#include "tests/support/import_patch.h"
#include "tests/support/sandbox.h"
#include "utils/paths/paths.h"

namespace {

using kv::test::CreateFolders;
using kv::test::HeldFile;
using kv::test::ListTree;
using kv::test::ReadBytes;
using kv::test::Sharing;
using kv::test::TestDrive;
using kv::test::WriteBytes;

using Texts = std::vector<std::string>;

TEST(HeldFileChild, DISABLED_Holds) { kv::test::HoldFileForParent(); }

class UpdatedFiles : public kv::test::Sandbox {
 protected:
  UpdatedFiles() : folder_(Root() + "u\\") { CreateFolders(Root() + "u"); }

  void Give(const std::string& name, const std::string& content) {
    WriteBytes(folder_ + name, content);
  }
  void Rename() { RenameUpdatedFiles((Root() + "u").c_str()); }
  std::string Content(const std::string& name) const { return ReadBytes(folder_ + name); }
  Texts Tree() const { return ListTree(Root() + "u"); }
  const std::string& Folder() const { return folder_; }

 private:
  std::string folder_;
};

TEST_F(UpdatedFiles, TakeThePlaceOfTheirFiles) {
  Give("stars_new.bin", "new content");
  Give("stars.bin", "old");
  Give("x.bin", "untouched");
  Rename();
  EXPECT_EQ(Tree(), (Texts{"stars.bin", "x.bin"}));
  EXPECT_EQ(Content("stars.bin"), "new content");
  EXPECT_EQ(Content("x.bin"), "untouched");
}

TEST_F(UpdatedFiles, LoseTheFirstMarkOfTheirNames) {
  struct Case {
    const char* before;
    const char* after;
  };
  const std::vector<Case> cases = {
      {"a_new.bin", "a.bin"},         {"b_new", "b"},
      {"_new.bin", ".bin"},           {"c_newer.bin", "cer.bin"},
      {"d_new_new.bin", "d_new.bin"}, {"e.b_new.bin", "e.b.bin"},
      {"f.bin_new", "f.bin"},         {"g_NEW.bin", "g_NEW.bin"},
      {"h_ne.bin", "h_ne.bin"},       {"new.bin", "new.bin"},
      {"i-new.bin", "i-new.bin"},     {"Луна_new.bin", "Луна.bin"},
      {"月_new.bin", "月.bin"},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.before);
    Give(row.before, row.before);
    Rename();
    EXPECT_EQ(Tree(), Texts{row.after});
    EXPECT_EQ(Content(row.after), row.before);
    kv::test::RemoveFile(Folder() + row.after);
  }
}

TEST_F(UpdatedFiles, AreTakenWithAndWithoutTheSeparatorOfTheFolder) {
  Give("a_new.bin", "a");
  RenameUpdatedFiles((Root() + "u\\").c_str());
  EXPECT_EQ(Tree(), Texts{"a.bin"});
  Give("b_new.bin", "b");
  RenameUpdatedFiles("..\\u");
  EXPECT_EQ(Tree(), (Texts{"a.bin", "b.bin"}));
}

TEST_F(UpdatedFiles, MayBeHiddenAndReadOnly) {
  Give("a_new.bin", "new a");
  kv::test::SetReadOnly(Folder() + "a_new.bin", true);
  Give("b_new.bin", "new b");
  kv::test::SetHidden(Folder() + "b_new.bin");
  Give("a.bin", "a");
  Rename();
  EXPECT_EQ(Tree(), (Texts{"a.bin", "b.bin"}));
  EXPECT_EQ(Content("a.bin"), "new a");
  EXPECT_TRUE(kv::test::IsReadOnly(Folder() + "a.bin"));
}

TEST_F(UpdatedFiles, OfSubfoldersStay) {
  Give("sub\\a_new.bin", "a");
  Give("sub\\a.bin", "old");
  Rename();
  EXPECT_EQ(Tree(), (Texts{"sub\\", "sub\\a.bin", "sub\\a_new.bin"}));
  EXPECT_EQ(Content("sub\\a.bin"), "old");
}

TEST_F(UpdatedFiles, MayBeFolders) {
  Give("fonts_new\\a_new.bin", "a");
  Give("maps_new\\b.bin", "new");
  Give("maps\\b.bin", "old");
  Rename();
  EXPECT_EQ(Tree(), (Texts{"fonts\\", "fonts\\a_new.bin", "maps\\", "maps\\b.bin", "maps_new\\",
                           "maps_new\\b.bin"}));
  EXPECT_EQ(Content("maps\\b.bin"), "old");
}

TEST_F(UpdatedFiles, AreSoughtInTheWholePath) {
  WriteBytes(Root() + "data_new\\a.bin", "a");
  WriteBytes(Root() + "data_new\\b_new.bin", "b");
  CreateFolders(Root() + "data");
  RenameUpdatedFiles((Root() + "data_new").c_str());
  EXPECT_EQ(ListTree(Root() + "data_new"), Texts{});
  EXPECT_EQ(ListTree(Root() + "data"), (Texts{"a.bin", "b_new.bin"}));
}

TEST_F(UpdatedFiles, StayWhenTheMarkedFolderHasNoCounterpart) {
  WriteBytes(Root() + "data_new\\a.bin", "a");
  RenameUpdatedFiles((Root() + "data_new").c_str());
  EXPECT_EQ(ListTree(Root() + "data_new"), Texts{"a.bin"});
  EXPECT_FALSE(kv::test::FolderExists(Root() + "data"));
}

TEST_F(UpdatedFiles, InOtherHandsStayAndTheOthersGoOn) {
  for (const char* name : {"a", "b", "c", "d", "e"}) {
    Give(std::string(name) + "_new.bin", std::string("new ") + name);
    Give(std::string(name) + ".bin", name);
  }
  {
    const HeldFile held(Folder() + "c_new.bin", Sharing::kRead);
    Rename();
    EXPECT_EQ(Tree(), (Texts{"a.bin", "b.bin", "c.bin", "c_new.bin", "d.bin", "e.bin"}));
    for (const std::string name : {"a", "b", "d", "e"}) {
      EXPECT_EQ(Content(name + ".bin"), "new " + name);
    }
    EXPECT_EQ(Content("c.bin"), "c");
    EXPECT_EQ(Content("c_new.bin"), "new c");
  }
  Rename();
  EXPECT_EQ(Tree(), (Texts{"a.bin", "b.bin", "c.bin", "d.bin", "e.bin"}));
  EXPECT_EQ(Content("c.bin"), "new c");
}

TEST_F(UpdatedFiles, ReplaceNoFileInOtherHands) {
  Give("a_new.bin", "new a");
  Give("a.bin", "a");
  Give("b_new.bin", "new b");
  const HeldFile held(Folder() + "a.bin", Sharing::kRead);
  Rename();
  EXPECT_EQ(Tree(), (Texts{"a.bin", "a_new.bin", "b.bin"}));
  EXPECT_EQ(Content("a.bin"), "a");
}

TEST_F(UpdatedFiles, WithNamesBeyondTheBmpStay) {
  Give("🌍_new.bin", "new");
  Give("🌍.bin", "old");
  Rename();
  EXPECT_EQ(Tree(), (Texts{"🌍.bin", "🌍_new.bin"}));
  EXPECT_EQ(Content("🌍.bin"), "old");
}

// The low 16 bits of these characters are those of ".", "\" and "/".
TEST_F(UpdatedFiles, WhoseNamesWouldLeadElsewhereStay) {
  WriteBytes(Root() + "x_new.bin", "the parent's new");
  WriteBytes(Root() + "x.bin", "the parent's");
  const Texts disguised = {"..\U0002005Cx_new.bin", "\U0001002E\U0001002E\U0001005Cx_new.bin",
                           "\U0002002E\U0002002E\U0002005Cx_new.bin",
                           "\U0002002E\U0002002E\U0002002Fx_new.bin", "a_new.bin\U0002003A"};
  for (const std::string& name : disguised) Give(name, "new");
  Give("a_new.bin", "new");
  Give("a.bin", "old");
  Rename();
  EXPECT_EQ(ReadBytes(Root() + "x_new.bin"), "the parent's new");
  EXPECT_EQ(ReadBytes(Root() + "x.bin"), "the parent's");
  for (const std::string& name : disguised) EXPECT_EQ(Content(name), "new") << name;
  EXPECT_EQ(Content("a.bin"), "new");
  EXPECT_EQ(Tree().size(), disguised.size() + 1);
}

TEST_F(UpdatedFiles, AreFoundInAFolderOfAnyScript) {
  for (const std::string& name : kv::test::kFolderNames) {
    SCOPED_TRACE(name);
    WriteBytes(Folder() + name + "\\a_new.bin", "a");
    RenameUpdatedFiles((Folder() + name).c_str());
    EXPECT_EQ(ListTree(Folder() + name), Texts{"a.bin"});
  }
}

TEST_F(UpdatedFiles, OfThousandsAllTakeTheirPlaces) {
  for (int i = 0; i < 3000; ++i) {
    Give(std::to_string(i) + "_new.bin", "new");
    Give(std::to_string(i) + ".bin", "");
  }
  Rename();
  const Texts tree = Tree();
  EXPECT_EQ(tree.size(), 3000U);
  for (const std::string& name : tree) EXPECT_EQ(Content(name), "new") << name;
}

TEST_F(UpdatedFiles, OfNoFolderAreNone) {
  Give("file_new.bin", "new");
  WriteBytes(Work() + "a_new.bin", "a");
  for (const std::string& folder :
       {Root() + "missing", Folder() + "file_new.bin", Folder() + "\xFF", std::string("\x80"),
        Folder() + std::string(300, 'n'), std::string(100'000, 'n'), std::string("Q:\\nowhere")}) {
    SCOPED_TRACE(folder.substr(0, 100));
    RenameUpdatedFiles(folder.c_str());
  }
  EXPECT_EQ(Tree(), Texts{"file_new.bin"});
  EXPECT_EQ(ListTree(Work() + "."), Texts{"a_new.bin"});
}

TEST_F(UpdatedFiles, OfAnEmptyFolderNameAreNone) {
  WriteBytes(Root() + "drive\\a_new.bin", "a");
  WriteBytes(Root() + "drive\\here\\b_new.bin", "b");
  const TestDrive drive('R', Root() + "drive");
  ASSERT_TRUE(drive.Exists()) << "needs drives that are links";
  kv::test::SetCurrentFolder(drive.Root() + "here");
  RenameUpdatedFiles("");
  RenameUpdatedFiles(nullptr);
  EXPECT_EQ(ListTree(Root() + "drive"), (Texts{"a_new.bin", "here\\", "here\\b_new.bin"}));
  kv::test::SetCurrentFolder(Work());
}

std::vector<DWORD> g_flags;
BOOL WINAPI NoteMove(LPCWSTR /*from*/, LPCWSTR /*to*/, DWORD flags) {
  g_flags.push_back(flags);
  return FALSE;
}

TEST_F(UpdatedFiles, AreMovedOverWhatIsThereAndNothingElseIsAsked) {
  Give("a_new.bin", "a");
  Give("b.bin", "b");
  Give("c_new.bin", "c");
  const kv::test::ImportPatch patch("MoveFileExW", &NoteMove);
  Rename();
  EXPECT_EQ(g_flags, (std::vector<DWORD>{1, 1}));
}

class UpdatedFilesChild : public ::testing::Test {};

TEST_F(UpdatedFilesChild, DISABLED_RenamesAndExits) {
  RenameUpdatedFiles(kv::test::Environment("KVUTILS_TEST_FOLDER").c_str());
  std::exit(0);
}

TEST_F(UpdatedFiles, EndTheProcessWhenAPathReaches260Bytes) {
  kv::test::SetEnvironment("KVUTILS_TEST_FOLDER", Folder());
  const std::size_t left = 260 - Folder().size();
  std::string name(left % 2, 'x');
  while (name.size() < left) name += "ж";
  Give(name, "too long");
  Give("a_new.bin", "a");
  EXPECT_EQ(kv::test::RunOwnCase("UpdatedFilesChild.DISABLED_RenamesAndExits").exitCode,
            0xC0000409UL);
  EXPECT_EQ(Tree(), (Texts{"a_new.bin", name}));
}

}  // namespace
