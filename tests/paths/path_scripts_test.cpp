// Paths in any script, and texts that are not UTF-8, through every function that takes a path.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/paths/resolver_fixture.h"
#include "utils/paths/paths.h"

namespace {

using kv::test::Answer;
using kv::test::CreateFolders;
using kv::test::FolderExists;
using kv::test::kNone;
using kv::test::ListTree;
using kv::test::PathBuffer;
using kv::test::WriteBytes;

using Texts = std::vector<std::string>;

// The work folder and the files bear the parameter's name.
class PathsIn : public kv::test::SandboxIn {
 protected:
  PathsIn() : own_(Root() + "own " + GetParam() + "\\") {
    CreateFolders(own_.substr(0, own_.size() - 1));
    const KelvarisPath resolver;
    KelvarisPath::SetWritableFolder(own_.c_str());
  }

  void Give(const std::string& path) { WriteBytes(path, "content"); }
  const std::string& Own() const { return own_; }  // the writable folder
  const std::string& Name() const { return GetParam(); }

 private:
  std::string own_;
};

TEST_P(PathsIn, AreTheFoldersOfTheProcess) {
  KelvarisPath resolver;
  EXPECT_EQ(resolver.GetWorkFolder(), Root() + Name() + "\\");
  EXPECT_EQ(resolver.GetCDPath(), Root() + Name() + "\\");
}

TEST_P(PathsIn, AreResolved) {
  KelvarisPath resolver;
  Give(Work() + Name() + "\\" + Name() + ".txt");
  const std::string name = Name() + ":" + Name() + ".txt";
  EXPECT_EQ(Answer(resolver.GetPath(name.c_str())), Work() + Name() + "\\" + Name() + ".txt");
  EXPECT_EQ(Answer(resolver.CheckPath((Name() + ".txt").c_str(), (Work() + Name() + "\\").c_str())),
            Work() + Name() + "\\" + Name() + ".txt");
  KelvarisPath::SetLocaleFolder(Name().c_str());
  EXPECT_EQ(Answer(resolver.GetPath((Name() + ".txt").c_str())),
            Work() + Name() + "\\" + Name() + ".txt");
  KelvarisPath::ClearFileNamesStorage();
  Give(Own() + Name() + "\\" + Name() + ".txt");
  EXPECT_EQ(Answer(resolver.GetPath((Name() + ".txt").c_str())),
            Own() + Name() + "\\" + Name() + ".txt");
}

TEST_P(PathsIn, AreWorkPaths) {
  KelvarisPath resolver;
  const std::string name = Name() + ":a.txt";
  EXPECT_EQ(Answer(resolver.GetWorkPath(name.c_str(), false, true)), Own() + Name() + "\\a.txt");
  EXPECT_EQ(Answer(resolver.GetWorkPath(name.c_str(), false, false)), Work() + Name() + "\\a.txt");
  EXPECT_EQ(Answer(resolver.GetWorkPath(name.c_str(), true, false)), kNone);
  Give(Work() + Name() + "\\a.txt");
  EXPECT_EQ(Answer(resolver.GetWorkPath(name.c_str(), true, false)), Work() + Name() + "\\a.txt");
  EXPECT_EQ(Answer(resolver.FromCDtoWorkPath((Work() + name).c_str())),
            Work() + Name() + "\\a.txt");
}

TEST_P(PathsIn, AreListedByTheAddOn) {
  KelvarisPath resolver;
  WriteBytes(Work() + "feature_pack\\feature_pack_filelist.txt",
             Name() + "\\\nMedia:" + Name() + ".TXT\n");
  Give(Work() + Name() + "\\media\\" + Name() + ".txt");
  EXPECT_EQ(Answer(resolver.GetPath(("MEDIA:" + Name() + ".txt").c_str())),
            Work() + Name() + "\\media\\" + Name() + ".txt");
}

TEST_P(PathsIn, AreMade) {
  MakeFolder((Root() + "a\\" + Name() + "\\" + Name() + "\\b").c_str());
  EXPECT_EQ(ListTree(Root() + "a"), (Texts{Name() + "\\", Name() + "\\" + Name() + "\\",
                                           Name() + "\\" + Name() + "\\b\\"}));
  EXPECT_EQ(kv::test::CurrentFolder() + "\\", Work());
  MakeFolder((Name() + "2").c_str());
  EXPECT_TRUE(FolderExists(Work() + Name() + "2"));
  CheckFileFolder((Root() + "c/" + Name() + ":" + Name() + ".txt").c_str());
  CheckFileFolder((Root() + "d\\" + Name() + ":" + Name() + ".txt").c_str());
  EXPECT_EQ(ListTree(Root() + "d"), Texts{Name() + "\\"});
}

TEST_P(PathsIn, AreFolders) {
  EXPECT_TRUE(IsFolder(Work().c_str()));
  EXPECT_FALSE(IsFolder((Work() + Name()).c_str()));
  WriteBytes(Work() + Name(), "no folder");
  EXPECT_FALSE(IsFolder((Work() + Name()).c_str()));
}

TEST_P(PathsIn, ArePlacesForUpdatedFiles) {
  Give(Work() + "catalogs\\" + Name() + ".bin");
  Give(Work() + "en\\media\\" + Name() + ".bin");
  PathBuffer catalogue;
  EXPECT_TRUE(GetWorkPathForDBfiles(catalogue.Get(), ("catalogs:" + Name() + ".bin").c_str()));
  EXPECT_EQ(catalogue.Text(), Own() + "catalogs\\" + Name() + ".bin");
  EXPECT_TRUE(FolderExists(Own() + "catalogs"));
  PathBuffer media;
  EXPECT_TRUE(GetWorkPathForMediafiles(media.Get(), ("media:" + Name() + ".bin").c_str()));
  EXPECT_EQ(media.Text(), Own() + "en\\media\\" + Name() + ".bin");
  EXPECT_TRUE(FolderExists(Own() + "en\\media"));
}

TEST_P(PathsIn, AreImages) {
  Give(Work() + "media\\" + Name() + "\\" + Name() + ".bmp");
  std::string path;
  EXPECT_TRUE(GetImageFilePath(path, ("media:" + Name() + ".png").c_str(), Name().c_str()));
  EXPECT_EQ(path, Work() + "media\\" + Name() + "\\" + Name() + ".bmp");
  EXPECT_EQ(GetTempFileNameForDbUpdate((Name() + ".bin").c_str()), Name() + "_new.bin");
}

TEST_P(PathsIn, HoldTheFileOfTheFirstRun) {
  Give(Own() + "user.wsi");
  EXPECT_FALSE(IsFirstRun());
}

INSTANTIATE_TEST_SUITE_P(Scripts, PathsIn, testing::ValuesIn(kv::test::kFolderNames),
                         kv::test::FolderNameTag);

// A stray continuation byte, a lead without its continuation, leads that no text holds, and a text
// that is cut off in the middle of a character.
const char* const kMalformed[] = {
    "\x80", "a\xFF", "media\xC3(", "\xE5\xA4", "a\xF8\x88\x80\x80\x80", "\xF0\x9F\x8C"};

class MalformedPaths : public kv::test::Sandbox {};

TEST_F(MalformedPaths, ResolveNowhere) {
  KelvarisPath resolver;
  CreateFolders(Work() + "a");
  CreateFolders(Work() + "media");
  for (const char* name : kMalformed) {
    SCOPED_TRACE(name);
    EXPECT_EQ(Answer(resolver.GetPath(name)), kNone);
    EXPECT_EQ(Answer(resolver.CheckPath(name, nullptr)), kNone);
    EXPECT_EQ(Answer(resolver.CheckPath("a", (Work() + name).c_str())), kNone);
    EXPECT_EQ(Answer(resolver.GetWorkPath(name, true, true)), kNone);
    EXPECT_EQ(Answer(resolver.GetWorkPath(name, true, false)), kNone);
    PathBuffer out;
    EXPECT_FALSE(GetWorkPathForDBfiles(out.Get(), name));
    EXPECT_FALSE(GetWorkPathForMediafiles(out.Get(), name));
    EXPECT_TRUE(out.IsUntouched());
    std::string path;
    EXPECT_FALSE(GetImageFilePath(path, (std::string(name) + ".png").c_str(), nullptr));
    EXPECT_FALSE(IsFolder(name));
    EXPECT_FALSE(IsFolder((Work() + name).c_str()));
  }
}

TEST_F(MalformedPaths, MakeNothing) {
  for (const char* name : kMalformed) {
    SCOPED_TRACE(name);
    MakeFolder(name);
    MakeFolder((Work() + "new\\" + name).c_str());
    CheckFileFolder((Work() + name + "\\file").c_str());
    CheckFileFolder(name);
    EXPECT_EQ(ListTree(Work() + "."), Texts{});
    EXPECT_EQ(kv::test::CurrentFolder() + "\\", Work());
  }
}

TEST_F(MalformedPaths, AsLanguageFolderHideNoPlainFile) {
  KelvarisPath resolver;
  for (const char* folder : kMalformed) {
    SCOPED_TRACE(folder);
    KelvarisPath::SetLocaleFolder(folder);
    EXPECT_EQ(Answer(resolver.GetPath("a.txt")), kNone);
  }
  WriteBytes(Work() + "a.txt", "content");
  EXPECT_EQ(Answer(resolver.GetPath("a.txt")), Work() + "a.txt");
}

}  // namespace
