// Links: searched like folders, unless they lead back to one that is being searched.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/paths/find_files_fixture.h"
#include "tests/paths/folder_link.h"

namespace {

using kv::test::FolderLink;
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
