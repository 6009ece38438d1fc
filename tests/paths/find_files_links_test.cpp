// Links: searched like folders, unless they lead back to one that is being searched.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "tests/paths/find_files_fixture.h"
#include "tests/paths/folder_link.h"
#include "tests/support/import_patch.h"

namespace {

using kv::test::FolderLink;
using kv::test::ImportPatch;
using kv::test::WriteBytes;

class FindingFilesLinks : public kv::test::FindingFiles {};

TEST_F(FindingFilesLinks, ToTheFolderItselfArePassedOver) {
  Give("a.bin");
  const FolderLink first(Folder() + "first", Root() + "u");
  const FolderLink second(Folder() + "second", Root() + "u");
  ASSERT_TRUE(first.Exists() && second.Exists()) << "needs links to folders";
  EXPECT_EQ(FoundBy("*.bin", true), Texts{"a.bin"});
  EXPECT_EQ(FoundBy("*.*", true), Texts{"a.bin"});
  EXPECT_EQ(FoundBy("*.*", false), (Texts{"a.bin", "first", "second"}));
}

TEST_F(FindingFilesLinks, ToAFolderAboveArePassedOver) {
  Give("a.bin");
  Give("sub\\b.bin");
  Give("sub\\deeper\\c.bin");
  const FolderLink up(Folder() + "sub\\deeper\\up", Root() + "u");
  const FolderLink half(Folder() + "sub\\deeper\\half", Folder() + "sub");
  ASSERT_TRUE(up.Exists() && half.Exists()) << "needs links to folders";
  EXPECT_EQ(FoundBy("*.bin", true), (Texts{"a.bin", "sub\\b.bin", "sub\\deeper\\c.bin"}));
}

TEST_F(FindingFilesLinks, ToOtherFoldersAreSearched) {
  Give("m\\1.bin");
  Give("m\\n\\2.bin");
  WriteBytes(Root() + "outside\\3.bin", "content");
  const FolderLink sibling(Folder() + "sibling", Folder() + "m");
  const FolderLink below(Folder() + "below", Folder() + "m\\n");
  const FolderLink outside(Folder() + "m\\outside", Root() + "outside");
  ASSERT_TRUE(sibling.Exists() && below.Exists() && outside.Exists()) << "needs links to folders";
  EXPECT_EQ(FoundBy("*.bin", true),
            (Texts{"below\\2.bin", "m\\1.bin", "m\\n\\2.bin", "m\\outside\\3.bin", "sibling\\1.bin",
                   "sibling\\n\\2.bin", "sibling\\outside\\3.bin"}));
}

TEST_F(FindingFilesLinks, ToEachOtherEndTheSearch) {
  Give("m\\1.bin");
  Give("n\\2.bin");
  const FolderLink toN(Folder() + "m\\n", Folder() + "n");
  const FolderLink toM(Folder() + "n\\m", Folder() + "m");
  ASSERT_TRUE(toN.Exists() && toM.Exists()) << "needs links to folders";
  EXPECT_EQ(FoundBy("*.bin", true), (Texts{"m\\1.bin", "m\\n\\2.bin", "n\\2.bin", "n\\m\\1.bin"}));
}

// In the place of the system's function: of the first folder that is asked about, one number is
// another one.
class OtherNumber {
 public:
  explicit OtherNumber(DWORD BY_HANDLE_FILE_INFORMATION::*number)
      : patch_("GetFileInformationByHandle", Tell) {
    s_number = number;
  }

 private:
  static BOOL WINAPI Tell(HANDLE folder, BY_HANDLE_FILE_INFORMATION* information) {
    const BOOL isTold = ::GetFileInformationByHandle(folder, information);
    if (s_number != nullptr) ++(information->*s_number);
    s_number = nullptr;
    return isTold;
  }

  static inline DWORD BY_HANDLE_FILE_INFORMATION::*s_number = nullptr;
  ImportPatch patch_;
};

TEST_F(FindingFilesLinks, ToAFolderOfWhichOneNumberAloneDiffersAreSearched) {
  Give("a.bin");
  const FolderLink back(Folder() + "back", Root() + "u");
  ASSERT_TRUE(back.Exists()) << "needs links to folders";
  for (const auto number :
       {&BY_HANDLE_FILE_INFORMATION::dwVolumeSerialNumber,
        &BY_HANDLE_FILE_INFORMATION::nFileIndexHigh, &BY_HANDLE_FILE_INFORMATION::nFileIndexLow}) {
    const OtherNumber other(number);
    EXPECT_EQ(FoundBy("*.bin", true), (Texts{"a.bin", "back\\a.bin"}));
  }
}

TEST_F(FindingFilesLinks, MayBeTheFolderThatIsSearched) {
  Give("a.bin");
  const FolderLink back(Folder() + "back", Root() + "u");
  const FolderLink link(Root() + "link", Root() + "u");
  ASSERT_TRUE(back.Exists() && link.Exists()) << "needs links to folders";
  FindFiles found((Root() + "link").c_str(), "*.bin");
  found.Run(true);
  EXPECT_EQ(Found(found, Root()), Texts{"link\\a.bin"});
}

}  // namespace
