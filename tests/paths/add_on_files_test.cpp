#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/paths/resolver_fixture.h"
#include "utils/paths/paths.h"

namespace {

using kv::test::Answer;
using kv::test::kNone;
using kv::test::OpenResolver;
using kv::test::PathBuffer;
using kv::test::WriteBytes;

using Texts = std::vector<std::string>;

constexpr char kListPlace[] = "feature_pack\\feature_pack_filelist.txt";

class AddOnFiles : public kv::test::Sandbox {
 protected:
  void Give(const std::string& path) { WriteBytes(path, "content"); }
  void GiveList(const std::string& text) { WriteBytes(Work() + kListPlace, text); }

  OpenResolver resolver;
};

TEST_F(AddOnFiles, ReplaceFilesOfTheWorkFolder) {
  GiveList("feature_pack\\content\\\nmedia:a.txt\n");
  Give(Work() + "media\\a.txt");
  Give(Work() + "feature_pack\\content\\media\\a.txt");
  EXPECT_EQ(Answer(resolver.GetPath("media:a.txt")),
            Work() + "feature_pack\\content\\media\\a.txt");
}

TEST_F(AddOnFiles, DoNotReplaceFilesOfTheWritableFolder) {
  GiveList("feature_pack\\content\\\nmedia:a.txt\n");
  Give(Writable() + "media\\a.txt");
  Give(Work() + "feature_pack\\content\\media\\a.txt");
  EXPECT_EQ(Answer(resolver.GetPath("media:a.txt")), Writable() + "media\\a.txt");
}

TEST_F(AddOnFiles, HideTheInstalledFileEvenWhereTheyAreMissing) {
  GiveList("feature_pack\\content\\\nmedia:a.txt\n");
  Give(Work() + "media\\a.txt");
  EXPECT_EQ(resolver.GetPath("media:a.txt"), nullptr);
  EXPECT_EQ(Answer(resolver.CheckPath("media:a.txt", nullptr)), Work() + "media\\a.txt");
}

TEST_F(AddOnFiles, MatchWhateverTheCaseAndSeparators) {
  GiveList("Pack/\nMedia:Icons/Star\\A.PNG\n");
  Give(Work() + "Pack\\media\\icons\\star\\a.png");
  for (const char* name :
       {"Media:Icons:Star:A.PNG", "media/icons/star/a.png", "MEDIA\\ICONS\\STAR\\A.png"}) {
    SCOPED_TRACE(name);
    KelvarisPath::ClearFileNamesStorage();
    EXPECT_EQ(Answer(resolver.GetPath(name)), Work() + "Pack\\media\\icons\\star\\a.png");
  }
  EXPECT_EQ(KelvarisPath::sFeaturePackFolder, "Pack/");
  EXPECT_EQ(KelvarisPath::sFeaturePackFileNames, Texts{"media\\icons\\star\\a.png"});
}

TEST_F(AddOnFiles, AreListedForLanguageVariantsByTheirWholeName) {
  GiveList("pack\\\nde:media:a.txt\nmedia:b.txt\n");
  for (const char* place : {"de\\media\\a.txt", "media\\a.txt", "de\\media\\b.txt", "media\\b.txt",
                            "pack\\de\\media\\a.txt", "pack\\media\\a.txt",
                            "pack\\de\\media\\b.txt", "pack\\media\\b.txt"}) {
    Give(Work() + place);
  }
  KelvarisPath::SetLocaleFolder("de");
  EXPECT_EQ(Answer(resolver.GetPath("media:a.txt")), Work() + "pack\\de\\media\\a.txt");
  EXPECT_EQ(Answer(resolver.GetPath("media:b.txt")), Work() + "de\\media\\b.txt");
  KelvarisPath::SetLocaleFolder("fr");
  EXPECT_EQ(Answer(resolver.GetPath("media:a.txt")), Work() + "media\\a.txt");
  EXPECT_EQ(Answer(resolver.GetPath("media:b.txt")), Work() + "pack\\media\\b.txt");
}

// Only equal text matches: not a leading separator, not an empty language folder.
TEST_F(AddOnFiles, DoNotMatchANameWithALeadingSeparator) {
  GiveList("pack\\\nmedia:a.txt\n");
  Give(Work() + "media\\a.txt");
  Give(Work() + "pack\\media\\a.txt");
  EXPECT_EQ(Answer(resolver.GetPath(":media:a.txt")), Work() + "media\\a.txt");
  KelvarisPath::SetLocaleFolder("");
  EXPECT_EQ(Answer(resolver.GetPath("media:a.txt")), Work() + "media\\a.txt");
}

TEST_F(AddOnFiles, FolderIsPutInFrontAsItStands) {
  GiveList("feature_pack\\con\ntent:a.txt\n");
  Give(Work() + "feature_pack\\content\\a.txt");
  EXPECT_EQ(Answer(resolver.GetPath("tent:a.txt")), Work() + "feature_pack\\content\\a.txt");
}

TEST_F(AddOnFiles, ListSkipsCommentsAndBlankLinesAndEndsAtItsMark) {
  GiveList("! add-on\n\n  pack\\  \n! names\n\n  a.txt\t\n\r\nb.txt\r\n} end\nc.txt\n");
  resolver.GetPath("a.txt");
  EXPECT_EQ(KelvarisPath::sFeaturePackFolder, "pack\\");
  EXPECT_EQ(KelvarisPath::sFeaturePackFileNames, (Texts{"a.txt", "b.txt"}));
}

TEST_F(AddOnFiles, ListKeeps255BytesOfALine) {
  GiveList("pack\\\n" + std::string(300, 'N') + "\nb\n");
  resolver.GetPath("a.txt");
  EXPECT_EQ(KelvarisPath::sFeaturePackFileNames, (Texts{std::string(255, 'n'), "b"}));
}

TEST_F(AddOnFiles, ListIsReadOnce) {
  GiveList("pack\\\na.txt\n");
  resolver.GetPath("a.txt");
  GiveList("other\\\nb.txt\n");
  KelvarisPath::ClearFileNamesStorage();
  resolver.GetPath("b.txt");
  EXPECT_EQ(KelvarisPath::sFeaturePackFolder, "pack\\");
  EXPECT_EQ(KelvarisPath::sFeaturePackFileNames, Texts{"a.txt"});
}

TEST_F(AddOnFiles, MissingOrEmptyListIsLookedForAgain) {
  Give(Work() + "pack\\a.txt");
  EXPECT_EQ(resolver.GetPath("a.txt"), nullptr);
  for (const char* text : {"", "! nothing\n", "pack\\\n", "pack\\\n}\na.txt\n"}) {
    SCOPED_TRACE(text);
    GiveList(text);
    EXPECT_EQ(resolver.GetPath("a.txt"), nullptr);
    EXPECT_TRUE(KelvarisPath::sFeaturePackFileNames.empty());
  }
  GiveList("pack\\\na.txt\n");
  EXPECT_EQ(Answer(resolver.GetPath("a.txt")), Work() + "pack\\a.txt");
}

TEST_F(AddOnFiles, ListIsTakenFromTheWorkFolderAlone) {
  const std::string text = "pack\\\na.txt\n";
  Give(Work() + "pack\\a.txt");
  WriteBytes(Writable() + kListPlace, text);
  WriteBytes(Work() + "en\\" + kListPlace, text);
  EXPECT_EQ(resolver.GetPath("a.txt"), nullptr);
}

TEST_F(AddOnFiles, AreReadAgainAfterDone) {
  GiveList("pack\\\na.txt\n");
  resolver.GetPath("a.txt");
  KelvarisPath::Done();
  GiveList("other\\\nb.txt\n");
  resolver.GetPath("b.txt");
  EXPECT_EQ(KelvarisPath::sFeaturePackFolder, "other\\");
  EXPECT_EQ(KelvarisPath::sFeaturePackFileNames, Texts{"b.txt"});
}

TEST_F(AddOnFiles, CheckFeaturePackFileMapsListedNames) {
  GiveList("pack\\\nMedia:A.txt\n");
  struct Case {
    const char* name;
    bool isListed;
    const char* mapped;
  };
  for (const Case& row :
       {Case{"Media:A.txt", true, "pack\\media\\a.txt"},
        Case{"MEDIA/a.TXT", true, "pack\\media\\a.txt"},
        Case{":Media:A.txt", false, ":Media:A.txt"}, Case{"Media:A.tx", false, "Media:A.tx"},
        Case{"Media:A.txtt", false, "Media:A.txtt"}, Case{"edia:A.txt", false, "edia:A.txt"},
        Case{"", false, ""}}) {
    SCOPED_TRACE(row.name);
    PathBuffer out;
    EXPECT_EQ(resolver.CheckFeaturePackFile(out.Get(), row.name), row.isListed);
    EXPECT_EQ(out.Text(), row.mapped);
    EXPECT_TRUE(out.GuardsHold());
  }
}

TEST_F(AddOnFiles, FirstOfTwoEqualEntriesCounts) {
  KelvarisPath::sFeaturePackFolder = "pack\\";
  KelvarisPath::sFeaturePackFileNames = {"b", "a", "a"};
  PathBuffer out;
  EXPECT_TRUE(resolver.CheckFeaturePackFile(out.Get(), "A"));
  EXPECT_EQ(out.Text(), "pack\\a");
}

TEST_F(AddOnFiles, CheckFeaturePackFileGivesNothingWhereItDoesNotFit) {
  struct Case {
    std::size_t folder;
    std::size_t name;
    bool fits;
  };
  for (const Case& row :
       {Case{0, 259, true}, Case{0, 260, false}, Case{4, 255, true}, Case{5, 255, false},
        Case{255, 255, false}, Case{0, 5000, false}, Case{5000, 10, false}}) {
    SCOPED_TRACE(std::to_string(row.folder) + " + " + std::to_string(row.name));
    const std::string folder(row.folder, 'f');
    const std::string name(row.name, 'n');
    KelvarisPath::sFeaturePackFolder = folder;
    KelvarisPath::sFeaturePackFileNames = {name};
    PathBuffer out;
    resolver.CheckFeaturePackFile(out.Get(), name.c_str());
    EXPECT_EQ(out.Text(), row.fits ? folder + name : "");
    EXPECT_TRUE(out.GuardsHold());
    EXPECT_EQ(Answer(resolver.GetPath(name.c_str())), kNone);

    KelvarisPath::sFeaturePackFileNames = {"other"};
    PathBuffer unlisted;
    EXPECT_FALSE(resolver.CheckFeaturePackFile(unlisted.Get(), name.c_str()));
    EXPECT_EQ(unlisted.Text(), row.name <= 259 ? name : "");
    EXPECT_TRUE(unlisted.GuardsHold());
  }
}

// The list has a folder of its own and no names: the folder is replaced while the name is looked
// for.
TEST_F(AddOnFiles, ListMayReplaceTheTextThatIsLookedFor) {
  const std::string longer(200, 'f');
  GiveList(longer + "\\\n");
  Give(Work() + "some_folder_of_twenty\\a.txt");
  KelvarisPath::sFeaturePackFolder = "some_folder_of_twenty\\";
  EXPECT_EQ(Answer(resolver.GetPath(KelvarisPath::sFeaturePackFolder.c_str())),
            Work() + "some_folder_of_twenty\\");

  KelvarisPath::sFeaturePackFolder = "some_folder_of_twenty\\";
  PathBuffer mapped;
  EXPECT_FALSE(
      resolver.CheckFeaturePackFile(mapped.Get(), KelvarisPath::sFeaturePackFolder.c_str()));
  EXPECT_STREQ(mapped.Get(), "some_folder_of_twenty\\");
}

TEST_F(AddOnFiles, FolderEndsAtANul) {
  GiveList("pack\\\nmedia:a.txt\n");
  Give(Work() + "pack\\media\\a.txt");
  EXPECT_EQ(Answer(resolver.GetPath("media:a.txt")), Work() + "pack\\media\\a.txt");
  KelvarisPath::ClearFileNamesStorage();
  KelvarisPath::sFeaturePackFolder = std::string("pack\\\0x\\", 8);
  EXPECT_EQ(Answer(resolver.GetPath("media:a.txt")), Work() + "pack\\media\\a.txt");
}

TEST_F(AddOnFiles, LanguageFolderEndsAtANul) {
  Give(Work() + "de\\media\\a.txt");
  KelvarisPath::ms_LanguageFolder = std::string("de\0x", 4);
  EXPECT_EQ(Answer(resolver.GetPath("media:a.txt")), Work() + "de\\media\\a.txt");
  EXPECT_EQ(KelvarisPath::ms_FileNamesStorage.size(), 1U);
  EXPECT_EQ(KelvarisPath::ms_FileNamesStorage.begin()->second, Work() + "de\\media\\a.txt");
}

}  // namespace
