#include <gtest/gtest.h>

#include <ostream>
#include <stdexcept>
#include <string>

#include "tests/paths/resolver_fixture.h"
#include "utils/paths/paths.h"

namespace {

using kv::test::FolderExists;
using kv::test::PathBuffer;
using kv::test::RemoveFile;
using kv::test::WriteBytes;

constexpr char kOutOfRange[] = "invalid string position";

class DataFileLocations : public kv::test::Sandbox {
 protected:
  void Give(const std::string& path) { WriteBytes(path, "content"); }
};

TEST_F(DataFileLocations, SetLocalFolderKnowsElevenCodes) {
  struct Case {
    const char* code;
    const char* folder;
  };
  for (const Case& row : {
           Case{"en", "en"},
           {"de", "de"},
           {"fr", "fr"},
           {"ru", "ru"},
           {"es", "es"},
           {"pt-PT", "pt"},
           {"pt", "pt"},
           {"it", "it"},
           {"nl", "nl"},
           {"zh", "zh"},
           {"ja", "ja"},
           // Any other code, another case included.
           {"PT", "en"},
           {"pt-pt", "en"},
           {"pt-BR", "en"},
           {"DE", "en"},
           {"d", "en"},
           {"deu", "en"},
           {"de-DE", "en"},
           {"xx", "en"},
           {"", "en"},
           {nullptr, "en"},
       }) {
    SCOPED_TRACE(row.code == nullptr ? "(null)" : row.code);
    KelvarisPath::SetLocaleFolder("before");
    SetLocalFolder(row.code);
    EXPECT_EQ(KelvarisPath::ms_LanguageFolder, row.folder);
  }
}

TEST_F(DataFileLocations, SetLocalFolderKeepsTheRememberedPaths) {
  const KelvarisPath resolver;
  KelvarisPath::ms_FileNamesStorage = {{7, "remembered"}};
  SetLocalFolder("de");
  EXPECT_EQ(KelvarisPath::ms_FileNamesStorage.size(), 1U);
}

// The function for catalogues and the one for media, each with the folder that it knows and the
// other's.
struct Kind {
  const char* what;
  bool (*place)(char*, const char*);
  std::string folder;
  std::string otherFolder;
};
void PrintTo(const Kind& row, std::ostream* out) { *out << row.what; }

class WorkPathFor : public DataFileLocations, public ::testing::WithParamInterface<Kind> {
 protected:
  // The place of `name`, "(false)" when there is none.
  static std::string Place(const std::string& name) {
    PathBuffer out;
    const bool isFound = GetParam().place(out.Get(), name.c_str());
    EXPECT_TRUE(out.GuardsHold());
    if (isFound) return out.Text();
    EXPECT_TRUE(out.IsUntouched());
    return "(false)";
  }

  const std::string& folder = GetParam().folder;
};

TEST_P(WorkPathFor, NoFileIsNone) {
  EXPECT_EQ(Place(folder + ":stars.bin"), "(false)");
  PathBuffer out;
  EXPECT_FALSE(GetParam().place(out.Get(), nullptr));
  EXPECT_TRUE(out.IsUntouched());
  EXPECT_FALSE(FolderExists(Writable() + folder));
}

TEST_P(WorkPathFor, AnInstalledFileIsItsPlaceInTheWritableFolder) {
  Give(Work() + folder + "\\sub\\stars.bin");
  EXPECT_EQ(Place(folder + ":sub:stars.bin"), Writable() + folder + "\\sub\\stars.bin");
  EXPECT_TRUE(FolderExists(Writable() + folder + "\\sub"));
  EXPECT_FALSE(kv::test::FileExists(Writable() + folder + "\\sub\\stars.bin"));
}

TEST_P(WorkPathFor, AWritableCopyIsThatCopy) {
  Give(Work() + folder + "\\stars.bin");
  Give(Writable() + folder + "\\stars.bin");
  EXPECT_EQ(Place(folder + ":stars.bin"), Writable() + folder + "\\stars.bin");
}

TEST_P(WorkPathFor, ALanguageVariantIsThePlaceOfTheVariant) {
  SetLocalFolder("de");
  Give(Work() + folder + "\\stars.bin");
  Give(Work() + "de\\" + folder + "\\stars.bin");
  EXPECT_EQ(Place(folder + ":stars.bin"), Writable() + "de\\" + folder + "\\stars.bin");
  EXPECT_TRUE(FolderExists(Writable() + "de\\" + folder));
}

TEST_P(WorkPathFor, AWritableVariantIsThatVariant) {
  Give(Writable() + "en\\" + folder + "\\stars.bin");
  EXPECT_EQ(Place(folder + ":stars.bin"), Writable() + "en\\" + folder + "\\stars.bin");
}

TEST_P(WorkPathFor, AVariantOfTheOtherKindIsThePlainPlace) {
  Give(Work() + "en\\" + GetParam().otherFolder + "\\stars.bin");
  EXPECT_EQ(Place(GetParam().otherFolder + ":stars.bin"),
            Writable() + GetParam().otherFolder + "\\stars.bin");
}

// The language folder and the kind's folder are looked for anywhere in the path.
TEST_P(WorkPathFor, ANameThatContainsTheProbeCountsAsAVariant) {
  Give(Work() + "Xen\\" + folder + "\\stars.bin");
  EXPECT_EQ(Place("Xen:" + folder + ":stars.bin"),
            Writable() + "en\\Xen\\" + folder + "\\stars.bin");
  Give(Work() + "en\\" + folder + "XY\\stars.bin");
  EXPECT_EQ(Place(folder + "XY:stars.bin"), Writable() + "en\\" + folder + "XY\\stars.bin");
}

TEST_P(WorkPathFor, APathOfUpTo259BytesFits) {
  KelvarisPath resolver;
  const std::string shortFolder = Root() + "w\\";
  KelvarisPath::SetWritableFolder(shortFolder.c_str());
  const std::string name =
      folder + "\\" + std::string(259 - Work().size() - folder.size() - 1, 'n');
  Give(Work() + name);
  EXPECT_EQ(Place(name), shortFolder + name);
  const std::string longFolder = Root() + std::string(60, 'w') + "\\";
  KelvarisPath::SetWritableFolder(longFolder.c_str());
  EXPECT_EQ(Place(name), "(false)");
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, WorkPathFor,
    testing::Values(Kind{"DbFiles", GetWorkPathForDBfiles, "catalogs", "media"},
                    Kind{"MediaFiles", GetWorkPathForMediafiles, "media", "catalogs"}),
    kv::test::WhatTag());

TEST_F(DataFileLocations, IsFirstRunWithoutAWorkspaceFileAndKeepsTheAnswer) {
  Give(Work() + "user.wsi");
  Give(Writable() + "en\\user.wsi");
  EXPECT_TRUE(IsFirstRun());
  Give(Writable() + "user.wsi");
  EXPECT_TRUE(IsFirstRun());
}

TEST_F(DataFileLocations, IsNoFirstRunWithAWorkspaceFileAndKeepsTheAnswer) {
  Give(Writable() + "user.wsi");
  EXPECT_FALSE(IsFirstRun());
  RemoveFile(Writable() + "user.wsi");
  KelvarisPath::ClearFileNamesStorage();
  EXPECT_FALSE(IsFirstRun());
}

// The image that is found, "(false)" when there is none.
std::string Image(const char* name, const char* subFolder) {
  KelvarisPath::ClearFileNamesStorage();
  std::string path = "untouched";
  if (GetImageFilePath(path, name, subFolder)) return path;
  EXPECT_EQ(path, "untouched");
  return "(false)";
}

TEST_F(DataFileLocations, ImageIsLookedForInTheSubFolderFirstAsPngThenAsBmp) {
  const std::string places[] = {
      Work() + "media\\icons\\dark\\star.png",
      Work() + "media\\icons\\dark\\star.bmp",
      Work() + "media\\icons\\star.png",
      Work() + "media\\icons\\star.bmp",
  };
  for (const std::string& place : places) Give(place);
  for (const std::string& place : places) {
    SCOPED_TRACE(place);
    EXPECT_EQ(Image("media:icons:star.png", "dark"), place);
    RemoveFile(place);
  }
  EXPECT_EQ(Image("media:icons:star.png", "dark"), "(false)");
}

TEST_F(DataFileLocations, ImageWithoutSubFolder) {
  Give(Work() + "media\\dark\\star.png");
  Give(Work() + "media\\star.bmp");
  EXPECT_EQ(Image("media:star.png", nullptr), Work() + "media\\star.bmp");
  Give(Work() + "en\\media\\star.bmp");
  EXPECT_EQ(Image("media:star.png", nullptr), Work() + "en\\media\\star.bmp");
  Give(Work() + "media\\star.png");
  EXPECT_EQ(Image("media:star.png", nullptr), Work() + "media\\star.png");
  EXPECT_EQ(Image("media:moon.png", nullptr), "(false)");
}

TEST_F(DataFileLocations, ImageNameWithoutFolderTakesNoSubFolder) {
  Give(Work() + "star.png");
  Give(Work() + "dark\\star.png");
  EXPECT_EQ(Image("star.png", "dark"), Work() + "star.png");
}

TEST_F(DataFileLocations, ImageSubFolderIsPutBeforeTheLastComponent) {
  Give(Work() + "a\\b\\c\\d\\star.png");
  EXPECT_EQ(Image("a:b:star.png", "c:d"), Work() + "a\\b\\c\\d\\star.png");
  Give(Work() + "a\\b\\star.png");
  EXPECT_EQ(Image("a:b:star.png", ""), Work() + "a\\b\\\\star.png");
}

TEST_F(DataFileLocations, ImageReplacesTheFirstPng) {
  Give(Work() + "media\\a.bmp.png");
  Give(Work() + "media\\b.png.bmp");
  EXPECT_EQ(Image("media:a.png.png", nullptr), Work() + "media\\a.bmp.png");
  EXPECT_EQ(Image("media:b.png.png", nullptr), "(false)");
}

TEST_F(DataFileLocations, ImageThatIsNotPngIsFoundOrThrows) {
  Give(Work() + "media\\star.gif");
  EXPECT_EQ(Image("media:star.gif", nullptr), Work() + "media\\star.gif");
  struct Case {
    const char* name;
    const char* subFolder;
  };
  // The plain name is not reached when the sub-folder has no such image.
  for (const Case& row : {Case{"media:moon.gif", nullptr}, Case{"media:star.gif", "dark"},
                          Case{"media:moon.PNG", nullptr}, Case{"", nullptr}, Case{"", "dark"},
                          Case{nullptr, nullptr}, Case{nullptr, "dark"}}) {
    SCOPED_TRACE(row.name == nullptr ? "null" : row.name);
    std::string path = "untouched";
    try {
      GetImageFilePath(path, row.name, row.subFolder);
      ADD_FAILURE() << "no exception";
    } catch (const std::out_of_range& e) {
      EXPECT_STREQ(e.what(), kOutOfRange);
    }
    EXPECT_EQ(path, "untouched");
  }
}

TEST_F(DataFileLocations, TempFileNameHasNewBeforeTheExtension) {
  struct Case {
    const char* name;
    const char* temporary;
  };
  for (const Case& row :
       {Case{"stars.bin", "stars_new.bin"}, Case{"a.b.c", "a.b_new.c"}, Case{".bin", "_new.bin"},
        Case{"stars.", "stars_new."}, Case{".", "_new."}, Case{"a.b\\c", "a_new.b\\c"},
        Case{"catalogs:stars.bin", "catalogs:stars_new.bin"}}) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(GetTempFileNameForDbUpdate(row.name), row.temporary);
  }
  const std::string longName(100000, 'n');
  EXPECT_EQ(GetTempFileNameForDbUpdate((longName + ".bin").c_str()), longName + "_new.bin");
}

TEST_F(DataFileLocations, TempFileNameOfANameWithoutExtensionThrows) {
  for (const char* name : {"stars", "", "catalogs:stars", static_cast<const char*>(nullptr)}) {
    SCOPED_TRACE(name == nullptr ? "null" : name);
    try {
      GetTempFileNameForDbUpdate(name);
      ADD_FAILURE() << "no exception";
    } catch (const std::out_of_range& e) {
      EXPECT_STREQ(e.what(), kOutOfRange);
    }
  }
}

}  // namespace
