#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "tests/paths/resolver_fixture.h"
#include "tests/support/process.h"
#include "tests/support/sandbox.h"
#include "utils/files/files.h"
#include "utils/paths/paths.h"

namespace {

using kv::test::Answer;
using kv::test::CreateFolders;
using kv::test::FolderExists;
using kv::test::OpenResolver;
using kv::test::PathBuffer;
using kv::test::SetCurrentFolder;
using kv::test::WriteBytes;

using Texts = std::vector<std::string>;

class FolderDiscovery : public kv::test::Sandbox {
 protected:
  void GiveLists(const std::string& text) { WriteBytes(Work() + "media\\fileutils.ini", text); }
};

TEST_F(FolderDiscovery, LeavesEverythingEmptyBeforeTheFirstResolver) {
  EXPECT_FALSE(KelvarisPath::ms_IsInit);
  EXPECT_STREQ(KelvarisPath::ms_ExePath, "");
  EXPECT_STREQ(KelvarisPath::ms_WorkDir, "");
  EXPECT_STREQ(KelvarisPath::ms_CDPath, "");
  EXPECT_STREQ(KelvarisPath::ms_WritablePath, "");
  EXPECT_STREQ(KelvarisPath::ms_UserPath, "");
  EXPECT_STREQ(KelvarisPath::ms_WorkspacesFolder, "");
  EXPECT_STREQ(KelvarisPath::ms_GuidedToursFolder, "");
  EXPECT_EQ(KelvarisPath::ms_LanguageFolder, "en");
  EXPECT_EQ(static_cast<int>(KelvarisPath::ms_SetupType), -1);
  EXPECT_TRUE(KelvarisPath::ms_FileNamesStorage.empty());
  EXPECT_TRUE(KelvarisPath::ms_CDFolders.empty());
  EXPECT_TRUE(KelvarisPath::ms_ThemePaths.empty());
  EXPECT_TRUE(KelvarisPath::ms_WritablePaths.empty());
  EXPECT_EQ(KelvarisPath::sFeaturePackFolder, "");
  EXPECT_TRUE(KelvarisPath::sFeaturePackFileNames.empty());
  EXPECT_FALSE(FolderExists(Writable()));
}

TEST_F(FolderDiscovery, FindsTheFoldersOfTheProcess) {
  KelvarisPath resolver;
  EXPECT_TRUE(KelvarisPath::ms_IsInit);
  EXPECT_EQ(resolver.GetWorkFolder(), Work());
  EXPECT_EQ(resolver.GetCDPath(), Work());
  EXPECT_EQ(resolver.GetWritableFolder(), Writable());
  EXPECT_EQ(resolver.GetUserFolder(), Writable());
  EXPECT_EQ(resolver.GetWorkspacesFolder(), Writable() + "workspaces");
  EXPECT_STREQ(resolver.GetGuidedToursFolder(), "");
  EXPECT_STREQ(KelvarisPath::GetLocaleFolder(), "en");
  EXPECT_STREQ(KelvarisPath::ms_ExePath, "");
  EXPECT_EQ(static_cast<int>(KelvarisPath::ms_SetupType), -1);
}

TEST_F(FolderDiscovery, AnswersWithTheStaticStorageItself) {
  KelvarisPath resolver;
  EXPECT_EQ(resolver.GetWorkFolder(), KelvarisPath::ms_WorkDir);
  EXPECT_EQ(resolver.GetCDPath(), KelvarisPath::ms_CDPath);
  EXPECT_EQ(resolver.GetWritableFolder(), KelvarisPath::ms_WritablePath);
  EXPECT_EQ(resolver.GetUserFolder(), KelvarisPath::ms_UserPath);
  EXPECT_EQ(resolver.GetWorkspacesFolder(), KelvarisPath::ms_WorkspacesFolder);
  EXPECT_EQ(resolver.GetGuidedToursFolder(), KelvarisPath::ms_GuidedToursFolder);
  std::string("tours").copy(KelvarisPath::ms_GuidedToursFolder, 5);
  EXPECT_STREQ(resolver.GetGuidedToursFolder(), "tours");
}

TEST_F(FolderDiscovery, MakesTheWritableAndTheWorkspacesFolder) {
  const KelvarisPath resolver;
  EXPECT_EQ(kv::test::ListTree(Documents() + "."),
            (Texts{"Kelvaris_9\\", "Kelvaris_9\\workspaces\\"}));
  EXPECT_EQ(kv::test::CurrentFolder() + "\\", Work());
}

TEST_F(FolderDiscovery, KeepsAnExistingWritableFolder) {
  WriteBytes(Writable() + "workspaces\\mine.txt", "kept");
  const KelvarisPath resolver;
  EXPECT_EQ(kv::test::ReadBytes(Writable() + "workspaces\\mine.txt"), "kept");
}

TEST_F(FolderDiscovery, GoesOnWhenTheWritableFolderIsAFile) {
  WriteBytes(Documents() + "Kelvaris_9", "in the way");
  KelvarisPath resolver;
  EXPECT_TRUE(KelvarisPath::ms_IsInit);
  EXPECT_EQ(resolver.GetWritableFolder(), Writable());
  EXPECT_EQ(resolver.GetWorkFolder(), Work());
}

TEST_F(FolderDiscovery, HappensOnce) {
  GiveLists("one\n}\n}\n}\n");
  { const KelvarisPath first; }
  CreateFolders(Root() + "elsewhere");
  SetCurrentFolder(Root() + "elsewhere");
  GiveLists("two\n}\n}\n}\n");
  KelvarisPath second;
  EXPECT_EQ(second.GetWorkFolder(), Work());
  EXPECT_EQ(KelvarisPath::ms_CDFolders, Texts{"one"});
}

// A current folder of `length` bytes in UTF-8, three bytes a character where it is long.
std::string FolderOfLength(const std::string& root, std::size_t length) {
  std::string path = root;
  for (int i = 0; i < 40; ++i) path += "\xE5\xA4\xA9";
  path += '\\';
  return path + std::string(length - path.size(), 'f');
}

TEST_F(FolderDiscovery, TakesACurrentFolderOf258Bytes) {
  const std::string folder = FolderOfLength(Root(), 258);
  CreateFolders(folder);
  SetCurrentFolder(folder);
  KelvarisPath resolver;
  EXPECT_EQ(resolver.GetWorkFolder(), folder + "\\");
}

TEST_F(FolderDiscovery, ThrowsForALongerCurrentFolderAndTriesAgain) {
  const std::string folder = FolderOfLength(Root(), 259);
  CreateFolders(folder);
  SetCurrentFolder(folder);
  for (int i = 0; i < 2; ++i) {
    try {
      const KelvarisPath resolver;
      ADD_FAILURE() << "no exception";
    } catch (const MException& e) {
      EXPECT_EQ(e.GetCode(), 0U);
      EXPECT_STREQ(e.GetMessage(), "KelvarisPath::GetCDPath return false");
    }
    EXPECT_FALSE(KelvarisPath::ms_IsInit);
  }
  SetCurrentFolder(Work());
  KelvarisPath resolver;
  EXPECT_TRUE(KelvarisPath::ms_IsInit);
  EXPECT_EQ(resolver.GetWorkFolder(), Work());
}

TEST_F(FolderDiscovery, GetWorkDirNeedsRoomForTheFolderASeparatorAndTheNul) {
  OpenResolver resolver;
  const auto length = static_cast<unsigned>(Work().size());
  for (const bool isMedium : {false, true}) {
    SCOPED_TRACE(isMedium ? "GetCDPath" : "GetWorkDir");
    PathBuffer fits;
    EXPECT_TRUE(isMedium ? resolver.GetCDPath(fits.Get(), length + 1)
                         : resolver.GetWorkDir(fits.Get(), length + 1));
    EXPECT_EQ(fits.Text(), Work());
    EXPECT_EQ(fits.Get()[length + 1], PathBuffer::kGuard);
    for (const unsigned size : {0U, 1U, length - 1, length}) {
      SCOPED_TRACE(size);
      PathBuffer small;
      EXPECT_FALSE(isMedium ? resolver.GetCDPath(small.Get(), size)
                            : resolver.GetWorkDir(small.Get(), size));
      EXPECT_TRUE(small.IsUntouched());
    }
  }
}

TEST_F(FolderDiscovery, GetWorkDirFollowsTheCurrentFolder) {
  OpenResolver resolver;
  CreateFolders(Root() + "elsewhere");
  SetCurrentFolder(Root() + "elsewhere");
  PathBuffer out;
  EXPECT_TRUE(resolver.GetWorkDir(out.Get(), 260));
  EXPECT_EQ(out.Text(), Root() + "elsewhere\\");
}

TEST_F(FolderDiscovery, GetWritableDirDoesNotConsultTheSize) {
  OpenResolver resolver;
  PathBuffer out;
  EXPECT_TRUE(resolver.GetWritableDir(out.Get(), 0));
  EXPECT_EQ(out.Text(), Writable());
  EXPECT_TRUE(out.GuardsHold());
}

TEST_F(FolderDiscovery, GetWritableDirTellsWhetherTheFolderExists) {
  OpenResolver resolver;
  kv::test::RemoveTree(Documents() + "Kelvaris_9");
  PathBuffer made;
  EXPECT_TRUE(resolver.GetWritableDir(made.Get(), 260));
  EXPECT_TRUE(FolderExists(Documents() + "Kelvaris_9"));
  kv::test::RemoveTree(Documents() + "Kelvaris_9");
  WriteBytes(Documents() + "Kelvaris_9", "in the way");
  PathBuffer blocked;
  EXPECT_FALSE(resolver.GetWritableDir(blocked.Get(), 260));
  EXPECT_EQ(blocked.Text(), Writable());
}

TEST_F(FolderDiscovery, StepsThatAreNotOfferedWriteNothing) {
  OpenResolver resolver;
  PathBuffer out;
  EXPECT_FALSE(resolver.GetWorkDir2(out.Get(), 260));
  EXPECT_TRUE(out.IsUntouched());
  EXPECT_FALSE(resolver.IsSearchFileInCD("media:fileutils.ini"));
}

struct ListsCase {
  const char* what;
  std::string text;
  Texts mediumFolders;
  Texts themes;
  Texts writable;
};
void PrintTo(const ListsCase& row, std::ostream* out) { *out << row.what; }

class ListFile : public FolderDiscovery, public ::testing::WithParamInterface<ListsCase> {};

TEST_P(ListFile, IsReadInThreeBlocks) {
  GiveLists(GetParam().text);
  const KelvarisPath resolver;
  EXPECT_EQ(KelvarisPath::ms_CDFolders, GetParam().mediumFolders);
  EXPECT_EQ(KelvarisPath::ms_ThemePaths, GetParam().themes);
  EXPECT_EQ(KelvarisPath::ms_WritablePaths, GetParam().writable);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, ListFile,
    testing::Values(
        ListsCase{"Plain", "a\nb\n}\nc\n}\nd\ne\n}\n", {"a", "b"}, {"c"}, {"d", "e"}},
        ListsCase{"DosLines", "a\r\n}\r\nc\r\n}\r\nd\r\n}\r\n", {"a"}, {"c"}, {"d"}},
        ListsCase{"Comments", "! one\na\n  ! two\n}\n!}\nc\n}\n}\n", {"a"}, {"c"}, {}},
        ListsCase{"BlankLines", "\n  \t\na\n\n}\n\n}\n\n}\n", {"a"}, {}, {}},
        ListsCase{"BorderSpace", "  a b\t \n}\n\tc\n}\n}\n", {"a b"}, {"c"}, {}},
        ListsCase{"TextBehindTheMark", "a\n} end\nc\n}}\nd\n}d\n", {"a"}, {"c"}, {"d"}},
        ListsCase{"LinesBehindTheBlocks", "a\n}\nc\n}\nd\n}\ne\n}\n", {"a"}, {"c"}, {"d"}},
        ListsCase{"NoLastMark", "a\n}\nc\n}\nd\n", {"a"}, {"c"}, {"d"}},
        ListsCase{"OneMark", "a\n}\nc", {"a"}, {"c"}, {}},
        ListsCase{"NoMark", "a\nb", {"a", "b"}, {}, {}}, ListsCase{"Empty", "", {}, {}, {}},
        ListsCase{
            "Line255", std::string(255, 'x') + "\n}\n}\n}\n", {std::string(255, 'x')}, {}, {}},
        ListsCase{"Line256",
                  std::string(256, 'x') + "\n}\nc\n}\n}\n",
                  {std::string(255, 'x')},
                  {"c"},
                  {}},
        ListsCase{"Line3000",
                  std::string(3000, 'x') + "\nb\n}\n}\n}\n",
                  {std::string(255, 'x'), "b"},
                  {},
                  {}}),
    kv::test::WhatTag());

TEST_F(FolderDiscovery, LeavesTheListsEmptyWithoutTheirFile) {
  const KelvarisPath resolver;
  EXPECT_TRUE(KelvarisPath::ms_IsInit);
  EXPECT_TRUE(KelvarisPath::ms_CDFolders.empty());
  EXPECT_TRUE(KelvarisPath::ms_ThemePaths.empty());
  EXPECT_TRUE(KelvarisPath::ms_WritablePaths.empty());
}

TEST_F(FolderDiscovery, ReadsTheListsOfTheLanguageSetBefore) {
  GiveLists("plain\n}\n}\n}\n");
  WriteBytes(Work() + "en\\media\\fileutils.ini", "english\n}\n}\n}\n");
  WriteBytes(Work() + "de\\media\\fileutils.ini", "german\n}\n}\n}\n");
  KelvarisPath::SetLocaleFolder("de");
  const KelvarisPath resolver;
  EXPECT_EQ(KelvarisPath::ms_CDFolders, Texts{"german"});
}

TEST_F(FolderDiscovery, ReadsTheListsOfTheWritableFolderFirst) {
  GiveLists("installed\n}\n}\n}\n");
  WriteBytes(Writable() + "media\\fileutils.ini", "mine\n}\n}\n}\n");
  const KelvarisPath resolver;
  EXPECT_EQ(KelvarisPath::ms_CDFolders, Texts{"mine"});
}

TEST_F(FolderDiscovery, DoneEmptiesCacheAndListsForGood) {
  GiveLists("a\n}\nc\n}\nd\n}\n");
  WriteBytes(Work() + "feature_pack\\feature_pack_filelist.txt", "pack\\\nmedia:x.png\n");
  {
    KelvarisPath resolver;
    resolver.GetPath("media:fileutils.ini");
  }
  EXPECT_FALSE(KelvarisPath::ms_FileNamesStorage.empty());
  EXPECT_EQ(KelvarisPath::sFeaturePackFileNames, Texts{"media\\x.png"});
  KelvarisPath::Done();
  EXPECT_TRUE(KelvarisPath::ms_FileNamesStorage.empty());
  EXPECT_TRUE(KelvarisPath::sFeaturePackFileNames.empty());
  EXPECT_TRUE(KelvarisPath::ms_IsInit);
  EXPECT_EQ(KelvarisPath::sFeaturePackFolder, "pack\\");
  const KelvarisPath resolver;
  EXPECT_TRUE(KelvarisPath::ms_CDFolders.empty());
  EXPECT_TRUE(KelvarisPath::ms_ThemePaths.empty());
  EXPECT_TRUE(KelvarisPath::ms_WritablePaths.empty());
}

TEST_F(FolderDiscovery, SetWritableFolderLeavesTheOtherFolders) {
  KelvarisPath resolver;
  KelvarisPath::SetWritableFolder("C:\\other\\");
  EXPECT_STREQ(resolver.GetWritableFolder(), "C:\\other\\");
  EXPECT_EQ(resolver.GetUserFolder(), Writable());
  EXPECT_EQ(resolver.GetWorkspacesFolder(), Writable() + "workspaces");
}

TEST_F(FolderDiscovery, SetWritableFolderTakesUpTo259Bytes) {
  const KelvarisPath resolver;
  const std::string longest(259, 'w');
  KelvarisPath::SetWritableFolder(longest.c_str());
  EXPECT_EQ(KelvarisPath::ms_WritablePath, longest);
  for (const std::size_t size : {260U, 261U, 2600U}) {
    SCOPED_TRACE(size);
    KelvarisPath::SetWritableFolder(std::string(size, 'x').c_str());
    EXPECT_EQ(KelvarisPath::ms_WritablePath, longest);
  }
  KelvarisPath::SetWritableFolder(nullptr);
  EXPECT_EQ(KelvarisPath::ms_WritablePath, longest);
  EXPECT_EQ(KelvarisPath::ms_UserPath, Writable());
}

TEST_F(FolderDiscovery, SetWritableFolderTakesAPartOfItself) {
  KelvarisPath::SetWritableFolder("C:\\one\\two\\");
  KelvarisPath::SetWritableFolder(KelvarisPath::ms_WritablePath + 3);
  EXPECT_STREQ(KelvarisPath::ms_WritablePath, "one\\two\\");
  KelvarisPath::SetWritableFolder(KelvarisPath::ms_WritablePath);
  EXPECT_STREQ(KelvarisPath::ms_WritablePath, "one\\two\\");
  KelvarisPath::SetWritableFolder(nullptr);
  EXPECT_STREQ(KelvarisPath::ms_WritablePath, "one\\two\\");
}

TEST_F(FolderDiscovery, SetLocaleFolderTakesAnyText) {
  for (const char* folder : {"de", "", "a:b", "xx-YY"}) {
    SCOPED_TRACE(folder);
    KelvarisPath::SetLocaleFolder(folder);
    EXPECT_STREQ(KelvarisPath::GetLocaleFolder(), folder);
    EXPECT_EQ(KelvarisPath::ms_LanguageFolder, folder);
  }
}

struct DocumentsCase {
  const char* what;
  const char* folder;
  const char* text;
};
void PrintTo(const DocumentsCase& row, std::ostream* out) { *out << row.what; }

class DocumentsFolder : public FolderDiscovery,
                        public ::testing::WithParamInterface<DocumentsCase> {};

TEST_P(DocumentsFolder, LeadsToTheWritableFolder) {
  CreateFolders(Root() + GetParam().folder);
  kv::test::SetEnvironment("KVUTILS_DOCUMENTS", Root() + GetParam().folder);
  KelvarisPath resolver;
  EXPECT_TRUE(FolderExists(Root() + GetParam().folder + "\\Kelvaris_9"));
  EXPECT_EQ(resolver.GetWritableFolder(), Root() + GetParam().text + "\\Kelvaris_9\\");
}

// Beyond the Basic Multilingual Plane the text is that of utf16_to_utf8: one character of 16 bits,
// (high << 10) | (low & 0x3FF), for U+1F30D the three bytes of U+F30D.
INSTANTIATE_TEST_SUITE_P(Scripts, DocumentsFolder,
                         testing::Values(DocumentsCase{"Latin", "Téléchargés", "Téléchargés"},
                                         DocumentsCase{"Cyrillic", "Документы", "Документы"},
                                         DocumentsCase{"Japanese", "書類", "書類"},
                                         DocumentsCase{"BeyondBmp", "a🌍b",
                                                       "a\xEF\x8C\x8D"
                                                       "b"}),
                         kv::test::WhatTag());

}  // namespace
