// Paths that stress the road to the system: other scripts, over-long, empty, malformed.
#include <climits>
#include <string>
#include <vector>

#include "tests/files/binary_file_fixture.h"
#include "tests/support/huge_text.h"
#include "tests/support/sandbox.h"
#include "utils/files/files.h"

namespace {

using kv::test::FileExists;
using kv::test::ReadBytes;
using kv::test::WriteBytes;

class BinaryFileInScript : public kv::test::SandboxIn {};
INSTANTIATE_TEST_SUITE_P(Scripts, BinaryFileInScript, testing::ValuesIn(kv::test::kFolderNames),
                         kv::test::FolderNameTag);

TEST_P(BinaryFileInScript, TakesUtf8PathsEverywhere) {
  const std::string path = Work() + GetParam() + ".bin";
  const std::string copy = Work() + "копия " + GetParam() + ".bin";
  {
    MFile file(path.c_str(), 5);
    EXPECT_EQ(file.Write("abc", 3), 3u);
  }
  EXPECT_EQ(ReadBytes(path), "abc");
  EXPECT_TRUE(MFile::IsExist(path.c_str()));
  EXPECT_TRUE(MFile::IsExist(Work().c_str()));
  EXPECT_EQ(MFile::GetLength(path.c_str()), 3);
  EXPECT_GT(MFile::GetTime(path.c_str(), 2), 1577836800);
  EXPECT_TRUE(MFile::FileCopy(path.c_str(), copy.c_str()));
  EXPECT_EQ(ReadBytes(copy), "abc");
  EXPECT_TRUE(MFile::DeleteFileA(path.c_str()));
  EXPECT_FALSE(FileExists(path));
}

TEST_P(BinaryFileInScript, MessagesCarryThePathInUtf8) {
  const std::string path = Work() + GetParam() + ".bin";
  WriteBytes(path, "abc");
  MFile file(path.c_str(), 2);
  testing::internal::CaptureStdout();
  try {
    file.Write("x", 1);
    ADD_FAILURE() << "wrote to a file open for reading";
  } catch (const MException& error) {
    EXPECT_EQ(error.GetMessage(), "MFile::Write - writing error in file " + path + "\n");
  }
  testing::internal::GetCapturedStdout();
}

class BinaryFilePath : public kv::test::Sandbox {};

TEST_F(BinaryFilePath, BadPathsFailAsMissingFilesDo) {
  WriteBytes("good", "abc");
  const std::string overlong = Work() + std::string(300, 'x') + ".bin";
  const std::vector<const char*> paths = {
      nullptr,          "",
      "good\x80",       "good\xFF.bin",
      "go\xC3",         "good\xF5\x80\x80\x80",
      "good\xC0\x80x",  "good\\x",
      "q:\\a.bin",      "a?b",
      overlong.c_str(),
  };
  for (const char* path : paths) {
    SCOPED_TRACE(path == nullptr ? "null" : path);
    MFile file;
    EXPECT_FALSE(file.Open(path, 2));
    EXPECT_FALSE(MFile::IsExist(path));
    EXPECT_FALSE(MFile::DeleteFileA(path));
    EXPECT_EQ(MFile::GetLength(path), -1);
    EXPECT_EQ(MFile::GetTime(path, 2), 0);
    EXPECT_TRUE(file.Open("good", 2)) << "the object stays usable";
  }
  EXPECT_EQ(ReadBytes("good"), "abc") << "a path cut at its fault is never used";
}

TEST_F(BinaryFilePath, LongPathsWithinTheLimitWork) {
  const std::string path = Work() + std::string(250 - Work().size(), 'x');
  MFile file(path.c_str(), 5);
  EXPECT_EQ(file.Write("abc", 3), 3u);
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(MFile::GetLength(path.c_str()), 3);
}

TEST_F(BinaryFilePath, MessagesCarryPathsOfSeveralHundredCharacters) {
  WriteBytes("a.bin", "abc");
  std::string path;
  for (int i = 0; i < 200; ++i) path += ".\\";
  path += "a.bin";
  MFile file(path.c_str(), 2);
  EXPECT_EQ(kv::test::Raised([&] { file.Write("x", 1); }),
            "MFile::Write - writing error in file " + path + "\n");
}

TEST_F(BinaryFilePath, OfMoreBytesThanAnIntCanTellNamesNothing) {
  kv::test::HugeText path(std::size_t{INT_MAX} + 1);
  ASSERT_NE(path.Get(), nullptr);
  EXPECT_FALSE(MFile::IsExist(path.Get()));
}

}  // namespace
