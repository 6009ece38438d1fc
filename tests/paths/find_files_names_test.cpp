// Names of all scripts, and names that lead elsewhere or nowhere once they are UTF-8.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "tests/paths/find_files_fixture.h"
#include "tests/paths/listing_stand_in.h"

namespace {

using kv::test::CreateFolders;
using kv::test::FileExists;
using kv::test::ListingStandIn;
using kv::test::WriteBytes;

class FindingFilesNames : public kv::test::FindingFiles {};

TEST_F(FindingFilesNames, AreOfAnyScript) {
  for (const char* name : {"Каталог\\Луна.bin", "天文データ\\月.bin", "été.bin"}) Give(name);
  FindFiles found(Folder().c_str(), "*.bin");
  found.Run(true);
  EXPECT_EQ(Found(found, Folder()), (Texts{"été.bin", "Каталог\\Луна.bin", "天文データ\\月.bin"}));
  for (const std::string& path : SourcesInOrder(found)) EXPECT_TRUE(FileExists(path)) << path;
}

// Three bytes stand for the character, U+F30D for U+1F30D, and name no file.
TEST_F(FindingFilesNames, BeyondTheBmpLeadNowhere) {
  Give("🌍.bin");
  Give("🌍\\inner.bin");
  FindFiles found(Folder().c_str(), "*.bin");
  found.Run(true);
  EXPECT_EQ(Found(found, Folder()), (Texts{"\xEF\x8C\x8D.bin"}));
  EXPECT_FALSE(FileExists(found.GetSourceFile(0)));
  EXPECT_TRUE(FileExists(Folder() + "🌍.bin"));

  FindFiles inFolder((Folder() + "🌍").c_str(), "*.bin");
  inFolder.Run(false);
  EXPECT_EQ(Found(inFolder, Folder()), (Texts{"🌍\\inner.bin"}));
}

TEST_F(FindingFilesNames, AreNotListedWhenMalformed) {
  const ListingStandIn listing({{L"\xD83C.bin", FILE_ATTRIBUTE_NORMAL},
                                {L"a\xD83C", FILE_ATTRIBUTE_NORMAL},
                                {L"\xD83C", FILE_ATTRIBUTE_DIRECTORY},
                                {L"whole.bin", FILE_ATTRIBUTE_NORMAL}});
  FindFiles found("C:\\u", "*.*");
  found.Run(true);
  EXPECT_EQ(SourcesInOrder(found), Texts{"C:\\u\\whole.bin"});
  EXPECT_EQ(listing.Patterns().size(), 1U);
}

// The low 16 bits of these characters are those of ".", "\", "/", ":" and NUL.
TEST_F(FindingFilesNames, ThatWouldLeadElsewhereArePassedOver) {
  WriteBytes(Root() + "x.bin", "the parent's");
  Give("kept.bin");
  for (const char* name :
       {"\U0001002E", "\U0002002E", "\U0001002E\U0001002E", "\U0002002E\U0002002E",
        "\U0002002E\U0001002E", ".\U0002002E\U0002005Cx.bin", "\U0001002E\U0001002E\U0001005Cx.bin",
        "\U0002002E\U0002002E\U0002005Cx.bin", "\U0002002E\U0002002E\U0002002Fx.bin",
        "\U0001002E\U0001002E\U0001002Fx.bin", "a\U0002005Cx.bin", "a\U0001002Fx.bin",
        "C\U0002003A\U0002005Cx.bin", "C\U0001003Ax.bin", "stream.bin\U0002003Aname.bin",
        "\U00010000x.bin", "kept.bin\U00020000x.bin", "x\U00010000.bin"}) {
    for (const bool isFolder : {false, true}) {
      SCOPED_TRACE(std::string(name) + (isFolder ? "\\" : ""));
      if (isFolder) {
        Give(std::string(name) + "\\inner.bin");
      } else {
        Give(name);
      }
      EXPECT_EQ(FoundBy("*.*", false), Texts{"kept.bin"});
      EXPECT_EQ(FoundBy("*.*", true), Texts{"kept.bin"});
      EXPECT_EQ(FoundBy("*.bin", true), Texts{"kept.bin"});
      EXPECT_EQ(FoundBy("*.", true), Texts{});
      if (isFolder) {
        kv::test::RemoveTree(Folder() + name);
      } else {
        kv::test::RemoveFile(Folder() + name);
      }
    }
  }
}

TEST_F(FindingFilesNames, ThatMerelyHoldADisguisedDotAreListed) {
  Give("\U0002002E\U0002002E\U0002002E");
  Give("a\U0002002Ebin");
  Give(".\U0002002Ebin");
  EXPECT_EQ(FoundBy("*.*", false), (Texts{"...", "..bin", "a.bin"}));
  EXPECT_EQ(FoundBy("*.", false), (Texts{"...", "a.bin"}));
}

// Folders that become "." and ".." in UTF-8 hold themselves over and over.
TEST_F(FindingFilesNames, OfFoldersThatWouldHoldThemselvesEndTheSearch) {
  Give("a.bin");
  for (const char* name : {"\U0001002E", "\U0002002E", "\U0003002E", "\U0002002E\U0002002E"}) {
    CreateFolders(Folder() + name);
  }
  EXPECT_EQ(FoundBy("*.bin", true), Texts{"a.bin"});
  EXPECT_EQ(FoundBy("*.none", true), Texts{});
}

}  // namespace
