#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "tests/support/files.h"
#include "tests/support/sandbox.h"
#include "utils/extra/path_explanation.h"
#include "utils/paths/paths.h"

namespace {

using kv::ListShadowed;
using kv::ShadowedFile;
using kv::test::WriteBytes;

constexpr long long kOld = 1'000'000'000;
constexpr long long kNew = 1'000'000'001;

class Shadows : public kv::test::Sandbox {
 protected:
  // Of the same relative path in both folders.
  void Write(const std::string& name, const std::string& own, long long ownTime,
             const std::string& installed, long long installedTime) {
    WriteBytes(Writable() + name, own);
    kv::test::SetTimes(Writable() + name, 0, ownTime, 0);
    WriteBytes(Work() + name, installed);
    kv::test::SetTimes(Work() + name, 0, installedTime, 0);
  }

  // In the order of their names.
  static std::vector<std::string> NamesBelow(const char* folder) {
    std::vector<std::string> names;
    for (const ShadowedFile& file : ListShadowed(folder)) names.push_back(file.name);
    std::sort(names.begin(), names.end());
    return names;
  }

  KelvarisPath resolver_;
};

using Names = std::vector<std::string>;

TEST_F(Shadows, AreOfFilesThatAreNewerOrDifferent) {
  Write("same.bin", "1234", kNew, "1234", kOld);
  Write("newer.bin", "1234", kOld, "1234", kNew);
  Write("different.bin", "1234", kNew, "1235", kOld);
  Write("shorter.bin", "1234", kNew, "123", kOld);
  Write("both.bin", "1234", kOld, "4321", kNew);
  WriteBytes(Writable() + "own.bin", "");
  WriteBytes(Work() + "installed.bin", "");
  std::map<std::string, ShadowedFile> files;
  for (const ShadowedFile& file : ListShadowed(nullptr)) files[file.name] = file;
  ASSERT_EQ(files.size(), 4U);
  EXPECT_TRUE(files["newer.bin"].isInstalledNewer);
  EXPECT_FALSE(files["newer.bin"].isDifferent);
  EXPECT_FALSE(files["different.bin"].isInstalledNewer);
  EXPECT_TRUE(files["different.bin"].isDifferent);
  EXPECT_FALSE(files["shorter.bin"].isInstalledNewer);
  EXPECT_TRUE(files["shorter.bin"].isDifferent);
  EXPECT_TRUE(files["both.bin"].isInstalledNewer);
  EXPECT_TRUE(files["both.bin"].isDifferent);
  EXPECT_EQ(files["both.bin"].writablePath, Writable() + "both.bin");
  EXPECT_EQ(files["both.bin"].installedPath, Work() + "both.bin");
}

TEST_F(Shadows, AreFoundInSubfoldersOfAnyScript) {
  const std::string folder = "media\\\xE5\xA4\xA9\xE6\x96\x87\\\xF0\x9F\x94\xAD";
  Write(folder + "\\\xD0\xB7.kwd", "1", kNew, "2", kOld);
  Write("en\\a.kwd", "1", kNew, "2", kOld);
  EXPECT_EQ(NamesBelow(""), (Names{"en\\a.kwd", folder + "\\\xD0\xB7.kwd"}));
}

TEST_F(Shadows, AreListedBelowTheFolderThatIsNamed) {
  Write("media\\a", "1", kNew, "2", kOld);
  Write("media\\stars\\b", "1", kNew, "2", kOld);
  Write("catalogs\\c", "1", kNew, "2", kOld);
  for (const char* folder : {"media", "media:", "\\media\\", "media/"})
    EXPECT_EQ(NamesBelow(folder), (Names{"media\\a", "media\\stars\\b"})) << folder;
  EXPECT_EQ(NamesBelow("media:stars"), Names{"media\\stars\\b"});
  EXPECT_EQ(NamesBelow("nowhere"), Names());
}

TEST_F(Shadows, OfAnAddOnLieInItsFolder) {
  WriteBytes(Work() + "feature_pack\\feature_pack_filelist.txt",
             "feature_pack\\data\\\nmedia:stars.kwd\n");
  WriteBytes(Work() + "feature_pack\\data\\media\\stars.kwd", "add-on");
  Write("media\\stars.kwd", "same", kNew, "same", kOld);
  const std::vector<ShadowedFile> files = ListShadowed("media");
  ASSERT_EQ(files.size(), 1U);
  EXPECT_EQ(files[0].installedPath, Work() + "feature_pack\\data\\media\\stars.kwd");
  EXPECT_TRUE(KelvarisPath::sFeaturePackFileNames.empty());
}

TEST_F(Shadows, OfLongFilesAreComparedToTheLastByte) {
  std::string bytes((64U << 10) * 3 + 1, '.');
  Write("same", bytes, kNew, bytes, kOld);
  std::string other = bytes;
  other.back() = ',';
  Write("other", bytes, kNew, other, kOld);
  EXPECT_EQ(NamesBelow(nullptr), Names{"other"});
}

TEST_F(Shadows, AreNoneWhereBothFoldersAreTheSame) {
  WriteBytes(Work() + "a", "");
  KelvarisPath::SetWritableFolder((Work() + ".\\").c_str());
  EXPECT_EQ(NamesBelow(nullptr), Names());
}

TEST_F(Shadows, BeyondTheLongestPathArePassedOver) {
  const std::string folder(100, 'f');
  const std::string deep = folder + "\\" + folder + "\\" + folder + "\\a";
  WriteBytes(Writable() + deep, "1");
  Write("b", "1", kNew, "2", kOld);
  EXPECT_EQ(NamesBelow(nullptr), Names{"b"});
}

TEST_F(Shadows, AreNotLookedForInFilesAndFoldersOfTheSameName) {
  WriteBytes(Writable() + "a", "");
  kv::test::CreateFolders(Work() + "a");
  kv::test::CreateFolders(Writable() + "b");
  WriteBytes(Work() + "b", "");
  EXPECT_EQ(NamesBelow(nullptr), Names());
}

}  // namespace
