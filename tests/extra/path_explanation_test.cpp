#include "utils/extra/path_explanation.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "tests/support/files.h"
#include "tests/support/sandbox.h"
#include "utils/paths/paths.h"
#include "utils/text/text.h"

namespace {

using kv::DataFolder;
using kv::ExplainPath;
using kv::PathCandidate;
using kv::PathExplanation;
using kv::test::WriteBytes;

constexpr char kListPath[] = "feature_pack\\feature_pack_filelist.txt";

class Explanation : public kv::test::Sandbox {
 protected:
  void WriteInWork(const std::string& name, const std::string& bytes) {
    WriteBytes(Work() + name, bytes);
  }
  void WriteInWritable(const std::string& name, const std::string& bytes) {
    WriteBytes(Writable() + name, bytes);
  }

  KelvarisPath resolver_;
};

TEST_F(Explanation, NamesAllPlacesInTheOrderOfTheQuestions) {
  const PathExplanation why = ExplainPath("Media:Stars.kwd");
  const struct {
    int pass;
    DataFolder folder;
    std::string name;
    std::string path;
  } places[] = {
      {0, DataFolder::kWritable, "en:Media:Stars.kwd", Writable() + "en\\Media\\Stars.kwd"},
      {0, DataFolder::kWork, "en:Media:Stars.kwd", Work() + "en\\Media\\Stars.kwd"},
      {1, DataFolder::kWritable, "en:media:stars.kwd", Writable() + "en\\media\\stars.kwd"},
      {1, DataFolder::kWork, "en:media:stars.kwd", Work() + "en\\media\\stars.kwd"},
      {2, DataFolder::kWritable, "Media:Stars.kwd", Writable() + "Media\\Stars.kwd"},
      {2, DataFolder::kWork, "Media:Stars.kwd", Work() + "Media\\Stars.kwd"},
      {3, DataFolder::kWritable, "media:stars.kwd", Writable() + "media\\stars.kwd"},
      {3, DataFolder::kWork, "media:stars.kwd", Work() + "media\\stars.kwd"},
  };
  ASSERT_EQ(why.candidates.size(), 8U);
  for (int i = 0; i < 8; ++i) {
    const PathCandidate& candidate = why.candidates[static_cast<std::size_t>(i)];
    EXPECT_EQ(candidate.pass, places[i].pass) << i;
    EXPECT_EQ(candidate.folder, places[i].folder) << i;
    EXPECT_EQ(candidate.name, places[i].name) << i;
    EXPECT_EQ(candidate.path, places[i].path) << i;
    EXPECT_FALSE(candidate.exists) << i;
    EXPECT_FALSE(candidate.isRemembered) << i;
    EXPECT_FALSE(candidate.isAddOn) << i;
  }
  EXPECT_EQ(why.winner, -1);
  EXPECT_EQ(why.answer, "");
}

TEST_F(Explanation, TellsWhatIsThere) {
  WriteInWork("media\\stars.kwd", "12345");
  kv::test::SetTimes(Work() + "media\\stars.kwd", 0, 1'000'000'007, 9'999'999);
  WriteInWritable("en\\media\\stars.kwd\\file", "");
  const PathExplanation why = ExplainPath("media:stars.kwd");
  EXPECT_EQ(why.winner, 0);
  EXPECT_EQ(why.answer, Writable() + "en\\media\\stars.kwd");
  EXPECT_TRUE(why.candidates[0].exists);
  EXPECT_TRUE(why.candidates[0].isFolder);
  EXPECT_EQ(why.candidates[0].size, 0U);
  EXPECT_FALSE(why.candidates[1].exists);
  EXPECT_TRUE(why.candidates[5].exists);
  EXPECT_FALSE(why.candidates[5].isFolder);
  EXPECT_EQ(why.candidates[5].size, 5U);
  EXPECT_EQ(why.candidates[5].modified, 1'000'000'007);
}

TEST_F(Explanation, TellsWhatIsRemembered) {
  WriteInWork("media\\stars.kwd", "");
  const std::string path = Work() + "media\\stars.kwd";
  ASSERT_NE(resolver_.GetPath("media:stars.kwd"), nullptr);
  kv::test::RemoveTree(Work() + "media");
  const PathExplanation why = ExplainPath("media:stars.kwd");
  EXPECT_EQ(why.winner, 5);
  EXPECT_EQ(why.answer, path);
  EXPECT_TRUE(why.candidates[5].isRemembered);
  EXPECT_EQ(why.candidates[5].remembered, path);
  EXPECT_FALSE(why.candidates[5].exists);
}

TEST_F(Explanation, TellsOfAnotherPathThatIsRememberedUnderTheIdentifier) {
  const std::string path = Writable() + "en\\a";
  KelvarisPath::ms_FileNamesStorage[GetUniqueID(path.c_str())] = "C:\\elsewhere";
  const PathExplanation why = ExplainPath("a");
  EXPECT_EQ(why.winner, 0);
  EXPECT_EQ(why.answer, "C:\\elsewhere");
  EXPECT_EQ(why.candidates[0].path, path);
  EXPECT_EQ(why.candidates[0].remembered, "C:\\elsewhere");
}

TEST_F(Explanation, ShowsWhereTheAddOnHasAFile) {
  WriteInWork(kListPath, "feature_pack\\data\\\nmedia:stars.kwd\n}\n");
  WriteInWork("feature_pack\\data\\media\\stars.kwd", "add-on");
  WriteInWork("media\\stars.kwd", "installed");
  const PathExplanation why = ExplainPath("media:Stars.kwd");
  EXPECT_EQ(why.winner, 5);
  EXPECT_TRUE(why.candidates[5].isAddOn);
  EXPECT_EQ(why.candidates[5].name, "media:Stars.kwd");
  EXPECT_EQ(why.candidates[5].path, Work() + "feature_pack\\data\\media\\stars.kwd");
  EXPECT_EQ(why.candidates[5].size, 6U);
  EXPECT_FALSE(why.candidates[4].isAddOn);
  EXPECT_FALSE(why.candidates[1].isAddOn);
}

TEST_F(Explanation, LeavesCacheAndListsAsTheyAre) {
  WriteInWork(kListPath, "feature_pack\\data\\\nmedia:stars.kwd\n}\n");
  WriteInWork("feature_pack\\data\\media\\stars.kwd", "");
  KelvarisPath::Done();
  KelvarisPath::ms_FileNamesStorage[7] = "kept";
  const char* const text = KelvarisPath::ms_FileNamesStorage[7].c_str();
  EXPECT_EQ(ExplainPath("media:stars.kwd").winner, 5);
  EXPECT_EQ(KelvarisPath::ms_FileNamesStorage, (std::map<int, std::string>{{7, "kept"}}));
  EXPECT_EQ(KelvarisPath::ms_FileNamesStorage[7].c_str(), text);
  EXPECT_EQ(KelvarisPath::sFeaturePackFolder, "");
  EXPECT_TRUE(KelvarisPath::sFeaturePackFileNames.empty());
}

TEST_F(Explanation, OfANameThatResolvesNowhereIsEmpty) {
  const std::string overlong(520, 'n');
  for (const char* name : {static_cast<const char*>(nullptr), overlong.c_str()}) {
    const PathExplanation why = ExplainPath(name);
    EXPECT_TRUE(why.candidates.empty());
    EXPECT_EQ(why.winner, -1);
  }
}

TEST_F(Explanation, HasNoPathForWhatIsNotAsked) {
  const std::string longName(250, 'n');
  for (const PathCandidate& candidate : ExplainPath(longName.c_str()).candidates) {
    EXPECT_EQ(candidate.path, "") << candidate.name;
  }
  const PathExplanation empty = ExplainPath("");
  EXPECT_EQ(empty.winner, -1);
  EXPECT_EQ(empty.candidates[0].path, Writable() + "en\\");
  EXPECT_EQ(empty.candidates[4].path, "");
  EXPECT_EQ(empty.candidates[5].path, "");
}

// A world of few names, of which some are remembered, some there, and some supplied by an add-on.
class RandomWorld : public Explanation {
 protected:
  std::size_t Below(std::size_t bound) { return random_() % bound; }
  std::string OneOf(std::initializer_list<const char*> texts) {
    return *(texts.begin() + Below(texts.size()));
  }
  std::string RandomName() {
    std::string name = OneOf({"", "", ":", "en:"});
    for (std::size_t parts = 1 + Below(2); parts > 0; --parts) {
      name += OneOf({"a", "B", "\xC3\x84"});
      if (parts > 1) name += OneOf({":", "\\", "/"});
    }
    return name;
  }
  std::string RandomPath() {
    const std::string folder = OneOf({"", "en\\", "p\\"});
    return folder + OneOf({"a", "b", "B", "\xC3\x84", "a\\a", "b\\B", "a\\\xC3\x84", "b\\b"});
  }

  // Whether something that is there already is no folder, or is one, on the way.
  static bool IsInTheWay(const std::string& path) {
    const std::string parent = path.substr(0, path.rfind('\\'));
    return kv::test::FolderExists(path) || kv::test::FileExists(parent);
  }

  // A world is the last one but for a few files, and sometimes the list of the add-on.
  void ChangeWorld() {
    for (int change = 0; change < 3; ++change) {
      const std::string path = (Below(2) == 0 ? Work() : Writable()) + RandomPath();
      if (kv::test::FileExists(path)) {
        kv::test::RemoveFile(path);
      } else if (Below(2) == 0 && !IsInTheWay(path)) {
        WriteBytes(path, "");
      }
    }
    if (Below(8) == 0) {
      std::string list = "p\\\n";
      for (std::size_t names = Below(9); names > 0; --names) list += RandomName() + "\n";
      WriteInWork(kListPath, list);
    }
    KelvarisPath::Done();
    SetLocalFolder("en");
    if (Below(4) == 0) KelvarisPath::SetLocaleFolder(OneOf({"", "p", "EN"}).c_str());
    for (std::size_t questions = Below(4); questions > 0; --questions) {
      resolver_.GetPath(RandomName().c_str());
    }
    const std::string path = Work() + RandomPath();
    if (kv::test::FileExists(path)) kv::test::RemoveFile(path);
  }

  std::mt19937 random_{20241122};
};

TEST_F(RandomWorld, HasTheWinnerThatTheResolverTakes) {
  int answers = 0;
  int remembered = 0;
  int addOns = 0;
  for (int world = 0; world < 2000; ++world) {
    ChangeWorld();
    const auto storage = KelvarisPath::ms_FileNamesStorage;
    const auto names = KelvarisPath::sFeaturePackFileNames;
    for (int question = 0; question < 4; ++question) {
      const std::string name = RandomName();
      KelvarisPath::ms_FileNamesStorage = storage;
      KelvarisPath::sFeaturePackFileNames = names;
      const PathExplanation why = ExplainPath(name.c_str());
      ASSERT_EQ(KelvarisPath::ms_FileNamesStorage, storage);
      ASSERT_EQ(KelvarisPath::sFeaturePackFileNames, names);
      const char* const answer = resolver_.GetPath(name.c_str());
      ASSERT_EQ(why.winner >= 0, answer != nullptr) << name;
      if (answer == nullptr) continue;
      ASSERT_EQ(why.answer, answer) << name;
      const PathCandidate& winner = why.candidates[static_cast<std::size_t>(why.winner)];
      ASSERT_TRUE(winner.exists || winner.isRemembered) << name;
      ++answers;
      remembered += winner.isRemembered ? 1 : 0;
      addOns += winner.isAddOn ? 1 : 0;
    }
  }
  EXPECT_GT(answers, 1000);
  EXPECT_GT(remembered, 100);
  EXPECT_GT(addOns, 20);
}

}  // namespace
