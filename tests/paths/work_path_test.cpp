#include <gtest/gtest.h>

#include <string>

#include "tests/paths/resolver_fixture.h"
#include "utils/paths/paths.h"

namespace {

using kv::test::Answer;
using kv::test::kNone;
using kv::test::WriteBytes;

constexpr bool kMustExist = true;
constexpr bool kNeedNotExist = false;
constexpr bool kInWritable = true;
constexpr bool kInWork = false;

class WorkPath : public kv::test::Sandbox {
 protected:
  void Give(const std::string& path) { WriteBytes(path, "content"); }

  KelvarisPath resolver;
};

TEST_F(WorkPath, OfAFileThatIsNowhere) {
  for (const char* name : {"x:y", ":x:y", "\\x\\y", "/x/y", "x\\y", "x/y"}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(Answer(resolver.GetWorkPath(name, kNeedNotExist, kInWritable)), Writable() + "x\\y");
    EXPECT_EQ(Answer(resolver.GetWorkPath(name, kNeedNotExist, kInWork)), Work() + "x\\y");
    EXPECT_EQ(Answer(resolver.GetWorkPath(name, kMustExist, kInWritable)), kNone);
    EXPECT_EQ(Answer(resolver.GetWorkPath(name, kMustExist, kInWork)), kNone);
  }
}

TEST_F(WorkPath, PrefersTheWritableCopy) {
  Give(Writable() + "x\\y");
  Give(Work() + "x\\y");
  for (const bool mustExist : {kMustExist, kNeedNotExist}) {
    for (const bool inWritable : {kInWritable, kInWork}) {
      EXPECT_EQ(Answer(resolver.GetWorkPath("x:y", mustExist, inWritable)), Writable() + "x\\y");
    }
  }
}

TEST_F(WorkPath, OfAFileOfTheWorkFolder) {
  Give(Work() + "x\\y");
  EXPECT_EQ(Answer(resolver.GetWorkPath("x:y", kNeedNotExist, kInWork)), Work() + "x\\y");
  EXPECT_EQ(Answer(resolver.GetWorkPath("x:y", kMustExist, kInWork)), Work() + "x\\y");
  EXPECT_EQ(Answer(resolver.GetWorkPath("x:y", kNeedNotExist, kInWritable)), Writable() + "x\\y");
  EXPECT_EQ(Answer(resolver.GetWorkPath("x:y", kMustExist, kInWritable)), kNone);
}

TEST_F(WorkPath, IsNotRememberedUnlessItIsTheWritableCopy) {
  KelvarisPath::ClearFileNamesStorage();
  Give(Work() + "x\\y");
  resolver.GetWorkPath("x:y", kMustExist, kInWork);
  EXPECT_TRUE(KelvarisPath::ms_FileNamesStorage.empty());
  Give(Writable() + "x\\y");
  resolver.GetWorkPath("x:y", kMustExist, kInWork);
  EXPECT_EQ(KelvarisPath::ms_FileNamesStorage.size(), 1U);
  kv::test::RemoveFile(Writable() + "x\\y");
  EXPECT_EQ(Answer(resolver.GetWorkPath("x:y", kMustExist, kInWork)), Writable() + "x\\y");
}

TEST_F(WorkPath, KnowsNoLanguageVariants) {
  Give(Writable() + "en\\x");
  Give(Work() + "en\\x");
  EXPECT_EQ(Answer(resolver.GetWorkPath("x", kNeedNotExist, kInWritable)), Writable() + "x");
  EXPECT_EQ(Answer(resolver.GetWorkPath("x", kMustExist, kInWork)), kNone);
}

TEST_F(WorkPath, OfTheEmptyNameIsTheFolderItself) {
  EXPECT_EQ(Answer(resolver.GetWorkPath("", kMustExist, kInWritable)), Writable());
  EXPECT_EQ(Answer(resolver.GetWorkPath("", kNeedNotExist, kInWork)), Work());
  // Not empty: a name that stands for the writable folder, which exists.
  EXPECT_EQ(Answer(resolver.GetWorkPath(":", kNeedNotExist, kInWork)), Writable());
}

TEST_F(WorkPath, FollowsTheWritableFolder) {
  KelvarisPath::SetWritableFolder("C:/some:where\\");
  EXPECT_EQ(Answer(resolver.GetWorkPath("x:y", kNeedNotExist, kInWritable)), "C:/some:where\\x\\y");
}

TEST_F(WorkPath, FromAPathOfTheMedium) {
  EXPECT_EQ(Answer(resolver.FromCDtoWorkPath((Work() + "media\\a.txt").c_str())),
            Work() + "media\\a.txt");
  EXPECT_EQ(Answer(resolver.FromCDtoWorkPath((Work() + "media:a.txt").c_str())),
            Work() + "media\\a.txt");
  EXPECT_EQ(Answer(resolver.FromCDtoWorkPath(Work().c_str())), Work());
  EXPECT_EQ(Answer(resolver.FromCDtoWorkPath(("before" + Work() + "a.txt").c_str())),
            Work() + "a.txt");
  Give(Writable() + "media\\a.txt");
  EXPECT_EQ(Answer(resolver.FromCDtoWorkPath((Work() + "media\\a.txt").c_str())),
            Writable() + "media\\a.txt");
}

TEST_F(WorkPath, FromAnyOtherPathIsThatPath) {
  for (const char* path : {"", "a.txt", "C:\\media:a/b.txt", "\\", "media:a.txt"}) {
    SCOPED_TRACE(path);
    EXPECT_EQ(Answer(resolver.FromCDtoWorkPath(path)), path);
  }
  EXPECT_EQ(Answer(resolver.FromCDtoWorkPath(std::string(259, 'p').c_str())),
            std::string(259, 'p'));
  EXPECT_EQ(resolver.FromCDtoWorkPath(std::string(260, 'p').c_str()), nullptr);
  EXPECT_EQ(resolver.FromCDtoWorkPath(std::string(2600, 'p').c_str()), nullptr);
}

TEST_F(WorkPath, FromAPathOfAnotherMedium) {
  std::string("Y:\\disc\\").copy(KelvarisPath::ms_CDPath, 260);
  KelvarisPath::ms_CDPath[8] = '\0';
  EXPECT_EQ(Answer(resolver.FromCDtoWorkPath("Y:\\disc\\media\\a.txt")), Work() + "media\\a.txt");
  EXPECT_EQ(Answer(resolver.FromCDtoWorkPath((Work() + "a.txt").c_str())), Work() + "a.txt");
}

}  // namespace
