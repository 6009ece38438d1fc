#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "tests/paths/resolver_fixture.h"
#include "utils/paths/paths.h"
#include "utils/text/text.h"

namespace {

using kv::test::Answer;
using kv::test::CreateFolders;
using kv::test::kNone;
using kv::test::OpenResolver;
using kv::test::PathBuffer;
using kv::test::RemoveFile;
using kv::test::WriteBytes;

class PathResolver : public kv::test::Sandbox {
 protected:
  void Give(const std::string& path) { WriteBytes(path, "content"); }

  // Makes the resolver remember `path` as found, with `answer` as its answer.
  static void Remember(const std::string& path, const std::string& answer) {
    KelvarisPath::ms_FileNamesStorage[GetUniqueID(path.c_str())] = answer;
  }

  KelvarisPath resolver;
};

TEST_F(PathResolver, JoinsANameToABase) {
  Give(Work() + "media\\a.txt");
  Give(Root() + "other\\media\\a.txt");
  const std::string other = Root() + "other\\";
  struct Case {
    const char* name;
    std::string base;
    bool hasBase;
    std::string answer;
  };
  for (const Case& row : {
           Case{":media:a.txt", other, true, other + "media\\a.txt"},
           Case{"media:a.txt", other, true, other + "media\\a.txt"},
           Case{"\\media\\a.txt", other, true, other + "media\\a.txt"},
           Case{"/media/a.txt", other, true, other + "media\\a.txt"},
           Case{"media/a.txt", "", false, Work() + "media\\a.txt"},
           Case{"media\\a.txt", "", false, Work() + "media\\a.txt"},
           Case{"media:", "", false, Work() + "media\\"},
           Case{"media", "", false, Work() + "media"},
           Case{"media::a.txt", "", false, Work() + "media\\\\a.txt"},
           Case{"::media:a.txt", "", false, Work() + "\\media\\a.txt"},
           Case{"a.txt", Work() + "media:", true, kNone},
           Case{"a.txt", Work() + "media/", true, Work() + "media/a.txt"},
           Case{"dia:a.txt", Work() + "me", true, Work() + "media\\a.txt"},
           Case{"media:a.txt", "", true, "media\\a.txt"},
           Case{"media:b.txt", "", false, kNone},
           Case{"", "", false, kNone},
           Case{"", other, true, kNone},
       }) {
    SCOPED_TRACE(std::string(row.name) + " in " + (row.hasBase ? row.base : "the work folder"));
    KelvarisPath::ClearFileNamesStorage();
    EXPECT_EQ(Answer(resolver.CheckPath(row.name, row.hasBase ? row.base.c_str() : nullptr)),
              row.answer);
  }
}

TEST_F(PathResolver, ResolvesNoNullName) {
  EXPECT_EQ(resolver.GetPath(nullptr), nullptr);
  EXPECT_EQ(resolver.CheckPath(nullptr, nullptr), nullptr);
  EXPECT_EQ(resolver.CheckPath(nullptr, Work().c_str()), nullptr);
  EXPECT_EQ(resolver.GetWorkPath(nullptr, false, true), nullptr);
  EXPECT_EQ(resolver.GetWorkPath(nullptr, true, false), nullptr);
  EXPECT_EQ(resolver.FromCDtoWorkPath(nullptr), nullptr);
}

TEST_F(PathResolver, TakesANullNameForAnEmptyOneInItsSteps) {
  OpenResolver steps;
  PathBuffer out;
  EXPECT_TRUE(steps.CheckLocalFiles(out.Get(), nullptr));
  EXPECT_EQ(out.Text(), "en:");
  EXPECT_FALSE(steps.CheckFeaturePackFile(out.Get(), nullptr));
  EXPECT_EQ(out.Text(), "");
}

TEST_F(PathResolver, UsesTheWorkFolderNotTheCurrentOne) {
  Give(Work() + "a.txt");
  CreateFolders(Root() + "elsewhere");
  kv::test::SetCurrentFolder(Root() + "elsewhere");
  EXPECT_EQ(Answer(resolver.CheckPath("a.txt", nullptr)), Work() + "a.txt");
}

TEST_F(PathResolver, KeepsAnsweringADeletedFileUntilTheCacheIsCleared) {
  Give(Work() + "a.txt");
  EXPECT_EQ(Answer(resolver.CheckPath("a.txt", nullptr)), Work() + "a.txt");
  EXPECT_EQ(Answer(resolver.GetPath("a.txt")), Work() + "a.txt");
  RemoveFile(Work() + "a.txt");
  KelvarisPath other;
  EXPECT_EQ(Answer(other.CheckPath("a.txt", nullptr)), Work() + "a.txt");
  EXPECT_EQ(Answer(other.GetPath("a.txt")), Work() + "a.txt");
  EXPECT_EQ(Answer(other.GetPath("/a.txt")), Work() + "a.txt");
  KelvarisPath::ClearFileNamesStorage();
  EXPECT_EQ(other.CheckPath("a.txt", nullptr), nullptr);
  EXPECT_EQ(other.GetPath("a.txt"), nullptr);
}

TEST_F(PathResolver, RemembersNoMisses) {
  EXPECT_EQ(resolver.GetPath("a.txt"), nullptr);
  EXPECT_EQ(resolver.CheckPath("a.txt", nullptr), nullptr);
  EXPECT_TRUE(KelvarisPath::ms_FileNamesStorage.empty());
  Give(Work() + "a.txt");
  EXPECT_EQ(Answer(resolver.GetPath("a.txt")), Work() + "a.txt");
}

TEST_F(PathResolver, RemembersAFoundPathUnderItsIdentifier) {
  Give(Work() + "media\\a.txt");
  resolver.CheckPath("media:a.txt", nullptr);
  const std::string path = Work() + "media\\a.txt";
  const std::map<int, std::string> expected = {{GetUniqueID(path.c_str()), path}};
  EXPECT_EQ(KelvarisPath::ms_FileNamesStorage, expected);
}

TEST_F(PathResolver, AnswersARememberedIdentifierWithoutTheDisk) {
  Remember(Work() + "a.txt", "remembered answer");
  EXPECT_EQ(Answer(resolver.CheckPath("a.txt", nullptr)), "remembered answer");
  EXPECT_EQ(Answer(resolver.GetPath("a.txt")), "remembered answer");
}

// Below one folder these two names have the same identifier.
TEST_F(PathResolver, AnswersTheEarlierOfTwoPathsOfOneIdentifier) {
  Give(Work() + "cmvzcgqa.dat");
  Give(Work() + "oyflwtaq.dat");
  ASSERT_EQ(GetUniqueID((Work() + "cmvzcgqa.dat").c_str()),
            GetUniqueID((Work() + "oyflwtaq.dat").c_str()));
  EXPECT_EQ(Answer(resolver.CheckPath("cmvzcgqa.dat", nullptr)), Work() + "cmvzcgqa.dat");
  EXPECT_EQ(Answer(resolver.CheckPath("oyflwtaq.dat", nullptr)), Work() + "cmvzcgqa.dat");
  KelvarisPath::ClearFileNamesStorage();
  EXPECT_EQ(Answer(resolver.CheckPath("oyflwtaq.dat", nullptr)), Work() + "oyflwtaq.dat");
  EXPECT_EQ(Answer(resolver.CheckPath("cmvzcgqa.dat", nullptr)), Work() + "oyflwtaq.dat");
}

TEST_F(PathResolver, AnswersInABufferOfItsOwn) {
  Give(Work() + "a.txt");
  Give(Work() + "b.txt");
  KelvarisPath other;
  const char* const a = resolver.CheckPath("a.txt", nullptr);
  const char* const b = other.CheckPath("b.txt", nullptr);
  EXPECT_NE(a, b);
  EXPECT_EQ(Answer(a), Work() + "a.txt");
  EXPECT_EQ(resolver.GetPath("b.txt"), a);
  EXPECT_EQ(resolver.GetWorkPath("c.txt", false, false), a);
  EXPECT_EQ(resolver.FromCDtoWorkPath("d.txt"), a);
  EXPECT_EQ(Answer(a), "d.txt");
}

TEST_F(PathResolver, CopiesShareTheBuffer) {
  Give(Work() + "a.txt");
  KelvarisPath assigned;
  const char* answer = nullptr;
  {
    KelvarisPath original;
    KelvarisPath copy(original);
    assigned = original;
    answer = original.CheckPath("a.txt", nullptr);
    EXPECT_EQ(copy.CheckPath("a.txt", nullptr), answer);
  }
  EXPECT_EQ(Answer(answer), Work() + "a.txt");
  EXPECT_EQ(assigned.CheckPath("a.txt", nullptr), answer);
}

TEST_F(PathResolver, AsksLanguageVariantsFirstAndTheWritableFolderBeforeTheWorkFolder) {
  const std::string places[] = {
      Writable() + "en\\media\\a.txt",
      Work() + "en\\media\\a.txt",
      Writable() + "media\\a.txt",
      Work() + "media\\a.txt",
  };
  for (const std::string& place : places) Give(place);
  for (const std::string& place : places) {
    SCOPED_TRACE(place);
    KelvarisPath::ClearFileNamesStorage();
    EXPECT_EQ(Answer(resolver.GetPath("media:a.txt")), place);
    RemoveFile(place);
  }
  KelvarisPath::ClearFileNamesStorage();
  EXPECT_EQ(resolver.GetPath("media:a.txt"), nullptr);
}

// The system's file names know no case, so that the candidates are told apart by what is remembered
// of them. The language folder and the base folders keep their capitals.
TEST_F(PathResolver, AsksEightCandidatesInOrder) {
  KelvarisPath::SetLocaleFolder("EN");
  const std::string candidates[] = {
      Writable() + "EN\\Media\\A.txt", Work() + "EN\\Media\\A.txt", Writable() + "EN\\media\\a.txt",
      Work() + "EN\\media\\a.txt",     Writable() + "Media\\A.txt", Work() + "Media\\A.txt",
      Writable() + "media\\a.txt",     Work() + "media\\a.txt",
  };
  for (const char* name : {"Media:A.txt", ":Media:A.txt", "\\Media\\A.txt", "/Media/A.txt"}) {
    SCOPED_TRACE(name);
    KelvarisPath::ClearFileNamesStorage();
    for (const std::string& candidate : candidates) Remember(candidate, "found " + candidate);
    for (const std::string& candidate : candidates) {
      EXPECT_EQ(Answer(resolver.GetPath(name)), "found " + candidate);
      KelvarisPath::ms_FileNamesStorage.erase(GetUniqueID(candidate.c_str()));
    }
    EXPECT_EQ(resolver.GetPath(name), nullptr);
  }
}

TEST_F(PathResolver, LowersOnlyTheLettersOfAscii) {
  Remember(Work() + "media\\\xC3\x84\xD0\xAF.txt", "found");
  EXPECT_EQ(Answer(resolver.GetPath("MEDIA:\xC3\x84\xD0\xAF.TXT")), "found");
}

TEST_F(PathResolver, AsksThePlainNameTwiceWithoutALanguageFolder) {
  Give(Work() + "media\\a.txt");
  Give(Work() + "en\\media\\a.txt");
  KelvarisPath::SetLocaleFolder("");
  EXPECT_EQ(Answer(resolver.GetPath("media:a.txt")), Work() + "media\\a.txt");
  EXPECT_EQ(Answer(resolver.GetPath(":media:a.txt")), Work() + "media\\a.txt");
  KelvarisPath::SetLocaleFolder("en");
  KelvarisPath::SetLocaleFolder(nullptr);
  EXPECT_STREQ(KelvarisPath::GetLocaleFolder(), "");
}

TEST_F(PathResolver, FollowsTheLanguageFolder) {
  Give(Work() + "en\\a.txt");
  Give(Work() + "de\\a.txt");
  EXPECT_EQ(Answer(resolver.GetPath("a.txt")), Work() + "en\\a.txt");
  KelvarisPath::SetLocaleFolder("de");
  EXPECT_EQ(Answer(resolver.GetPath("a.txt")), Work() + "de\\a.txt");
  KelvarisPath::ms_LanguageFolder = "fr";
  EXPECT_EQ(resolver.GetPath("a.txt"), nullptr);
}

TEST_F(PathResolver, FollowsTheWritableFolder) {
  const std::string other = Root() + "other\\";
  Give(Writable() + "a.txt");
  Give(other + "a.txt");
  EXPECT_EQ(Answer(resolver.GetPath("a.txt")), Writable() + "a.txt");
  KelvarisPath::SetWritableFolder(other.c_str());
  EXPECT_EQ(Answer(resolver.GetPath("a.txt")), other + "a.txt");
}

TEST_F(PathResolver, FindsFolders) {
  CreateFolders(Work() + "media\\information");
  EXPECT_EQ(Answer(resolver.GetPath("media:information:")), Work() + "media\\information\\");
  EXPECT_EQ(Answer(resolver.GetPath("media:information")), Work() + "media\\information");
}

TEST_F(PathResolver, TakesTheEmptyNameForTheLanguageFolder) {
  EXPECT_EQ(resolver.GetPath(""), nullptr);
  CreateFolders(Work() + "en");
  EXPECT_EQ(Answer(resolver.GetPath("")), Work() + "en\\");
}

TEST_F(PathResolver, FindsTheEphemeris) {
  EXPECT_EQ(resolver.GetEphemerisPath(), nullptr);
  Give(Work() + "de441pc");
  EXPECT_EQ(Answer(resolver.GetEphemerisPath()), Work() + "de441pc");
}

TEST_F(PathResolver, FindsTheDictionaryFolder) {
  EXPECT_EQ(resolver.GetDictionaryFilesFolder(), "");
  CreateFolders(Work() + "media\\information");
  EXPECT_EQ(resolver.GetDictionaryFilesFolder(), Work() + "media\\information\\");
  CreateFolders(Work() + "en\\media\\information");
  EXPECT_EQ(resolver.GetDictionaryFilesFolder(), Work() + "en\\media\\information\\");
}

TEST_F(PathResolver, CheckLocalFilesPutsTheLanguageInFront) {
  struct Case {
    const char* language;
    const char* name;
    const char* variant;
  };
  OpenResolver open;
  for (const Case& row :
       {Case{"en", "media:a.txt", "en:media:a.txt"}, Case{"en", ":media:a.txt", "en:media:a.txt"},
        Case{"en", "\\Media\\A.txt", "en:Media\\A.txt"},
        Case{"en", "/media/a.txt", "en:media/a.txt"}, Case{"en", "::a.txt", "en::a.txt"},
        Case{"en", "", "en:"}, Case{"", "a.txt", ":a.txt"}, Case{"pt", "a.txt", "pt:a.txt"}}) {
    SCOPED_TRACE(std::string(row.language) + " " + row.name);
    KelvarisPath::SetLocaleFolder(row.language);
    PathBuffer out;
    EXPECT_TRUE(open.CheckLocalFiles(out.Get(), row.name));
    EXPECT_EQ(out.Text(), row.variant);
    EXPECT_TRUE(out.GuardsHold());
  }
}

TEST_F(PathResolver, CheckLocalFilesGivesNothingWhereItDoesNotFit) {
  OpenResolver open;
  for (const std::size_t length : {256U, 257U, 300U, 5000U}) {
    SCOPED_TRACE(length);
    PathBuffer out;
    const std::string name(length, 'n');
    EXPECT_TRUE(open.CheckLocalFiles(out.Get(), name.c_str()));
    EXPECT_EQ(out.Text(), length == 256 ? "en:" + name : "");
    EXPECT_TRUE(out.GuardsHold());
  }
}

// A name whose path in `folder` has this many bytes.
std::string NameFor(const std::string& folder, std::size_t pathLength) {
  return std::string(pathLength - folder.size(), 'n');
}

TEST_F(PathResolver, ResolvesPathsOfUpTo259Bytes) {
  const std::string longest = NameFor(Work(), 259);
  Give(Work() + longest);
  EXPECT_EQ(Answer(resolver.CheckPath(longest.c_str(), nullptr)), Work() + longest);
  EXPECT_EQ(Answer(resolver.GetPath(longest.c_str())), Work() + longest);
  EXPECT_EQ(Answer(resolver.GetWorkPath(longest.c_str(), false, false)), Work() + longest);
  EXPECT_EQ(Answer(resolver.GetWorkPath(longest.c_str(), true, false)), Work() + longest);
}

TEST_F(PathResolver, ResolvesNoLongerPath) {
  for (const std::size_t length : {260U, 261U, 2600U, 100000U}) {
    SCOPED_TRACE(length);
    const std::string inWork = NameFor(Work(), length);
    const std::string inWritable = NameFor(Writable(), length);
    Remember(Work() + inWork, "found");
    Remember(Writable() + inWritable, "found");
    EXPECT_EQ(resolver.CheckPath(inWork.c_str(), nullptr), nullptr);
    EXPECT_EQ(resolver.CheckPath(inWritable.c_str(), Writable().c_str()), nullptr);
    EXPECT_EQ(resolver.CheckPath("a.txt", inWork.c_str()), nullptr);
    EXPECT_EQ(resolver.GetPath(inWork.c_str()), nullptr);
    EXPECT_EQ(resolver.GetWorkPath(inWork.c_str(), false, false), nullptr);
    EXPECT_EQ(resolver.GetWorkPath(inWork.c_str(), true, false), nullptr);
    EXPECT_EQ(resolver.GetWorkPath(inWritable.c_str(), false, true), nullptr);
    EXPECT_EQ(resolver.FromCDtoWorkPath((Work() + inWork).c_str()), nullptr);
  }
}

// The plain name may fit where its language variant does not.
TEST_F(PathResolver, SkipsCandidatesThatDoNotFit) {
  const std::string name = NameFor(Work(), 258);
  Give(Work() + name);
  EXPECT_EQ(Answer(resolver.GetPath(name.c_str())), Work() + name);
}

TEST_F(PathResolver, IgnoresAnOverlongLanguageFolder) {
  Give(Work() + "a.txt");
  for (const std::size_t length : {250U, 260U, 5000U}) {
    SCOPED_TRACE(length);
    KelvarisPath::SetLocaleFolder(std::string(length, 'l').c_str());
    EXPECT_EQ(Answer(resolver.GetPath("a.txt")), Work() + "a.txt");
  }
}

}  // namespace
