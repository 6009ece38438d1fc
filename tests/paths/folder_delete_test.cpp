#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "tests/paths/listing_stand_in.h"
#include "tests/paths/shell_stand_in.h"
#include "tests/support/held_file.h"
#include "tests/support/sandbox.h"
#include "utils/paths/paths.h"

namespace {

using kv::test::CreateFolders;
using kv::test::FileExists;
using kv::test::FolderExists;
using kv::test::HeldFile;
using kv::test::ListTree;
using kv::test::Sharing;
using kv::test::Widen;
using kv::test::WideShellStandIn;
using kv::test::WriteBytes;

using Texts = std::vector<std::string>;

class DeletingFolders : public kv::test::Sandbox {
 protected:
  std::string Below(const std::string& name) const { return Root() + name; }
  void Give(const std::string& name) { WriteBytes(Root() + name, "content"); }
  // A folder with all kinds of entries, and its neighbours.
  void GiveTrees() {
    for (const char* name : {"d\\a.txt", "d\\sub\\deeper\\b.txt", "d\\hidden.txt",
                             "d\\readonly.txt", "d\\no extension", "d\\Каталог\\Луна.txt",
                             "d\\天文データ\\月.txt", "d\\🌍\\🌍.txt", "d2\\kept.txt", "kept.txt"}) {
      Give(name);
    }
    CreateFolders(Below("d\\empty"));
    kv::test::SetHidden(Below("d\\hidden.txt"));
    kv::test::SetReadOnly(Below("d\\readonly.txt"), true);
    kv::test::SetReadOnly(Below("d\\sub\\deeper\\b.txt"), true);
    kv::test::SetHidden(Below("d\\empty"));
  }
};

const Texts kNeighbours = {"Documents\\", "d2\\", "d2\\kept.txt", "kept.txt", "work\\"};

TEST_F(DeletingFolders, TakesTheWholeTreeAndNothingElse) {
  GiveTrees();
  DeleteFolder(Below("d").c_str());
  EXPECT_EQ(ListTree(Root()), kNeighbours);
}

TEST_F(DeletingFolders, TakesASeparatorAtTheEnd) {
  GiveTrees();
  DeleteFolder(Below("d\\").c_str());
  EXPECT_EQ(ListTree(Root()), kNeighbours);
}

TEST_F(DeletingFolders, TakesARelativePath) {
  GiveTrees();
  DeleteFolder("..\\d");
  EXPECT_EQ(ListTree(Root()), kNeighbours);
}

TEST_F(DeletingFolders, TakesFoldersOfAnyScript) {
  for (const std::string& name : kv::test::kFolderNames) {
    SCOPED_TRACE(name);
    Give("d\\" + name + "\\" + name);
    Give("d\\kept");
    DeleteFolder(Below("d\\" + name).c_str());
    EXPECT_EQ(ListTree(Below("d")), Texts{"kept"});
  }
}

TEST_F(DeletingFolders, TakesAFileToo) {
  GiveTrees();
  DeleteFolder(Below("d2\\kept.txt").c_str());
  EXPECT_EQ(ListTree(Below("d2")), Texts{});
  EXPECT_TRUE(FolderExists(Below("d2")));
}

TEST_F(DeletingFolders, TakesThousandsOfFiles) {
  for (int i = 0; i < 3000; ++i) {
    WriteBytes(Below("d\\" + std::to_string(i % 3) + "\\" + std::to_string(i)), "");
  }
  DeleteFolder(Below("d").c_str());
  EXPECT_FALSE(FolderExists(Below("d")));
}

TEST_F(DeletingFolders, LeavesAFileInOtherHands) {
  Give("d\\sub\\held.txt");
  Give("kept.txt");
  {
    const HeldFile held(Below("d\\sub\\held.txt"), Sharing::kRead);
    DeleteFolder(Below("d").c_str());
    EXPECT_TRUE(FileExists(Below("d\\sub\\held.txt")));
  }
  DeleteFolder(Below("d").c_str());
  EXPECT_EQ(ListTree(Root()), (Texts{"Documents\\", "kept.txt", "work\\"}));
}

TEST_F(DeletingFolders, AsksForADeletionWithoutConfirmation) {
  const WideShellStandIn shell(2);
  DeleteFolder("C:\\Каталог\\🌍\\");
  ASSERT_EQ(shell.Requests().size(), 1U);
  EXPECT_EQ(shell.Requests()[0].owner, nullptr);
  EXPECT_EQ(shell.Requests()[0].operation, 3U);
  EXPECT_EQ(shell.Requests()[0].from, Widen("C:\\Каталог\\🌍") + L'\0');
  EXPECT_EQ(shell.Requests()[0].to, L"");
  EXPECT_EQ(shell.Requests()[0].flags, 0x10);
}

TEST_F(DeletingFolders, LosesOneSeparatorAtTheEnd) {
  const WideShellStandIn shell;
  DeleteFolder("C:\\d\\\\");
  DeleteFolder("C:\\d/");
  ASSERT_EQ(shell.Requests().size(), 2U);
  EXPECT_EQ(shell.Requests()[0].from, std::wstring(L"C:\\d\\\0", 6));
  EXPECT_EQ(shell.Requests()[1].from, std::wstring(L"C:\\d/\0", 6));
}

TEST_F(DeletingFolders, TakesPathsOfUpTo259Bytes) {
  const WideShellStandIn shell;
  const std::string longest = "C:\\" + std::string(256, 'n');
  DeleteFolder((longest + "n").c_str());
  DeleteFolder((longest + "\\").c_str());
  DeleteFolder(std::string(100'000, 'n').c_str());
  EXPECT_EQ(shell.Requests().size(), 0U);
  DeleteFolder(longest.c_str());
  ASSERT_EQ(shell.Requests().size(), 1U);
  EXPECT_EQ(shell.Requests()[0].from, Widen(longest) + L'\0');
}

// ---- Files by a mask
// -----------------------------------------------------------------------------

class DeletingFiles : public DeletingFolders {};

TEST_F(DeletingFiles, TakesFilesThatMatch) {
  struct Case {
    const char* mask;
    Texts left;
  };
  const std::vector<Case> cases = {
      {"*.tmp", {"a.txt", "b.txt", "sub.tmp\\", "sub.tmp\\in.tmp", "sub\\", "sub\\in.tmp"}},
      {"*.TMP", {"a.txt", "b.txt", "sub.tmp\\", "sub.tmp\\in.tmp", "sub\\", "sub\\in.tmp"}},
      {"a.*", {"b.tmp", "b.txt", "sub.tmp\\", "sub.tmp\\in.tmp", "sub\\", "sub\\in.tmp"}},
      {"a.txt",
       {"a.tmp", "b.tmp", "b.txt", "sub.tmp\\", "sub.tmp\\in.tmp", "sub\\", "sub\\in.tmp"}},
      {"?.tmp", {"a.txt", "b.txt", "sub.tmp\\", "sub.tmp\\in.tmp", "sub\\", "sub\\in.tmp"}},
      {"*.*", {"sub.tmp\\", "sub.tmp\\in.tmp", "sub\\", "sub\\in.tmp"}},
      {"*", {"sub.tmp\\", "sub.tmp\\in.tmp", "sub\\", "sub\\in.tmp"}},
  };
  for (const Case& row : cases) {
    for (const char* folder : {"d", "d\\"}) {
      SCOPED_TRACE(std::string(row.mask) + " in " + folder);
      for (const char* name :
           {"a.tmp", "b.tmp", "a.txt", "b.txt", "sub\\in.tmp", "sub.tmp\\in.tmp"}) {
        Give(std::string("d\\") + name);
      }
      DeleteFolder(Below(folder).c_str(), row.mask);
      EXPECT_EQ(ListTree(Below("d")), row.left);
      EXPECT_EQ(ListTree(Work() + "."), Texts{});
    }
  }
}

TEST_F(DeletingFiles, TakesReadOnlyAndHiddenOnes) {
  for (const char* name : {"d\\a.tmp", "d\\hidden.tmp", "d\\readonly.tmp", "d\\readonly.txt"}) {
    Give(name);
  }
  kv::test::SetHidden(Below("d\\hidden.tmp"));
  kv::test::SetReadOnly(Below("d\\readonly.tmp"), true);
  kv::test::SetReadOnly(Below("d\\readonly.txt"), true);
  DeleteFolder(Below("d").c_str(), "*.tmp");
  EXPECT_EQ(ListTree(Below("d")), Texts{"readonly.txt"});
  EXPECT_TRUE(kv::test::IsReadOnly(Below("d\\readonly.txt")));
}

std::vector<std::wstring> g_steps;
BOOL WINAPI NoteAttributes(LPCWSTR path, DWORD attributes) {
  g_steps.push_back(std::to_wstring(attributes) + L" " + path);
  return FALSE;
}
BOOL WINAPI NoteDeletion(LPCWSTR path) {
  g_steps.push_back(std::wstring(L"delete ") + path);
  return FALSE;
}

TEST_F(DeletingFiles, ClearsTheReadOnlyAttributeAlone) {
  const kv::test::ListingStandIn listing(
      {{L"folder", FILE_ATTRIBUTE_DIRECTORY},
       {L"a", FILE_ATTRIBUTE_NORMAL},
       {L"b", FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM},
       {L"locked", FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY},
       {L"c", FILE_ATTRIBUTE_HIDDEN},
       {L"\xD83C", FILE_ATTRIBUTE_NORMAL}});
  const kv::test::ImportPatch attributes("SetFileAttributesW", &NoteAttributes);
  const kv::test::ImportPatch deletion("DeleteFileW", &NoteDeletion);
  DeleteFolder("C:\\d", "*.tmp");
  EXPECT_EQ(g_steps,
            (std::vector<std::wstring>{L"delete C:\\d\\a", L"6 C:\\d\\b", L"delete C:\\d\\b",
                                       L"delete C:\\d\\c", L"delete C:\\d\\\xD83C"}));
  EXPECT_EQ(listing.Patterns(), std::vector<std::wstring>{L"C:\\d\\*.tmp"});
  EXPECT_EQ(listing.Closed(), 1);
}

TEST_F(DeletingFiles, TakesNamesOfAnyScript) {
  for (const char* name : {"d\\Луна.tmp", "d\\月.tmp", "d\\🌍.tmp", "d\\🌍.txt"}) Give(name);
  DeleteFolder(Below("d").c_str(), "*.tmp");
  EXPECT_EQ(ListTree(Below("d")), Texts{"🌍.txt"});
  DeleteFolder(Below("d").c_str(), "🌍.*");
  EXPECT_EQ(ListTree(Below("d")), Texts{});
  for (const std::string& name : kv::test::kFolderNames) {
    SCOPED_TRACE(name);
    Give("d\\" + name + "\\a.tmp");
    DeleteFolder(Below("d\\" + name).c_str(), "*.tmp");
    EXPECT_EQ(ListTree(Below("d\\" + name)), Texts{});
  }
}

TEST_F(DeletingFiles, LeavesOneInOtherHandsAndGoesOn) {
  for (const char* name : {"d\\a.tmp", "d\\b.tmp", "d\\c.tmp"}) Give(name);
  const HeldFile held(Below("d\\b.tmp"), Sharing::kRead);
  DeleteFolder(Below("d").c_str(), "*.tmp");
  EXPECT_EQ(ListTree(Below("d")), Texts{"b.tmp"});
}

TEST_F(DeletingFiles, TakesHundreds) {
  for (int i = 0; i < 1000; ++i) WriteBytes(Below("d\\" + std::to_string(i) + ".tmp"), "");
  Give("d\\kept.txt");
  DeleteFolder(Below("d").c_str(), "*.tmp");
  EXPECT_EQ(ListTree(Below("d")), Texts{"kept.txt"});
}

// ---- The writable folder
// -------------------------------------------------------------------------

class DeletingUserContent : public DeletingFolders {
 protected:
  void Fill() {
    for (const char* name : {"user.wsi", "catalogs\\stars.bin", "media\\find\\a.kwd"}) {
      WriteBytes(Writable() + name, "content");
    }
    kv::test::SetReadOnly(Writable() + "user.wsi", true);
  }
};

TEST_F(DeletingUserContent, TakesTheWritableFolderAlone) {
  Fill();
  WriteBytes(Documents() + "letter.txt", "content");
  WriteBytes(Documents() + "Kelvaris_9.txt", "content");
  WriteBytes(Documents() + "Kelvaris_91\\user.wsi", "content");
  WriteBytes(Work() + "media\\a.txt", "content");
  deleteUserFolderContent();
  EXPECT_EQ(ListTree(Root()),
            (Texts{"Documents\\", "Documents\\Kelvaris_9.txt", "Documents\\Kelvaris_91\\",
                   "Documents\\Kelvaris_91\\user.wsi", "Documents\\letter.txt", "work\\",
                   "work\\media\\", "work\\media\\a.txt"}));
}

TEST_F(DeletingUserContent, ForgetsRememberedPaths) {
  Fill();
  KelvarisPath resolver;
  ASSERT_NE(resolver.GetPath("catalogs:stars.bin"), nullptr);
  deleteUserFolderContent();
  EXPECT_EQ(KelvarisPath::ms_FileNamesStorage.size(), 0U);
  EXPECT_EQ(resolver.GetPath("catalogs:stars.bin"), nullptr);
}

TEST_F(DeletingUserContent, GoesByTheFolderOfTheHost) {
  Fill();
  { const KelvarisPath resolver; }
  for (const std::string& name : kv::test::kFolderNames) {
    SCOPED_TRACE(name);
    WriteBytes(Root() + name + "\\a.txt", "content");
    KelvarisPath::SetWritableFolder((Root() + name + "\\").c_str());
    deleteUserFolderContent();
    EXPECT_FALSE(FolderExists(Root() + name));
  }
  EXPECT_TRUE(FileExists(Writable() + "user.wsi"));
}

TEST_F(DeletingUserContent, NeedsAWritableFolder) {
  Fill();
  WriteBytes(Work() + "a.txt", "content");
  { const KelvarisPath resolver; }
  const Texts before = ListTree(Root());
  KelvarisPath::SetWritableFolder("");
  const WideShellStandIn shell;
  deleteUserFolderContent();
  KelvarisPath::SetWritableFolder("\\");
  deleteUserFolderContent();
  KelvarisPath::SetWritableFolder("C:\\");
  deleteUserFolderContent();
  EXPECT_EQ(shell.Requests().size(), 0U);
  EXPECT_EQ(ListTree(Root()), before);
}

TEST_F(DeletingUserContent, LeavesTheFolderPathsOfTheProcess) {
  Fill();
  deleteUserFolderContent();
  EXPECT_EQ(KelvarisPath::ms_WritablePath, Writable());
  deleteUserFolderContent();
  EXPECT_FALSE(FolderExists(Documents() + "Kelvaris_9"));
}

}  // namespace
