// Opening, closing, copying and settings of text files.
#include <cstring>
#include <string>

#include "tests/support/sandbox.h"
#include "utils/files/files.h"

namespace {

using kv::test::ReadBytes;
using kv::test::WriteBytes;

class TextFile : public kv::test::Sandbox {};

std::string NextLine(MTextFile& file) {
  char line[256] = "";
  file.Readln(line, sizeof line);
  return line;
}

TEST_F(TextFile, OpensForReadingOnlyWhatExists) {
  WriteBytes("a.txt", "line\n");
  MTextFile file;
  EXPECT_FALSE(file.Open("missing.txt", false));
  EXPECT_FALSE(kv::test::FileExists("missing.txt"));
  EXPECT_TRUE(file.Open("a.txt", false));
  EXPECT_EQ(file.GetFileName(), L"a.txt");
  EXPECT_FALSE(file.Open("missing.txt", false));
  EXPECT_EQ(file.GetFileName(), L"missing.txt");
  EXPECT_EQ(file.Readln(static_cast<char*>(nullptr), 0), -1) << "a failed open leaves no stream";
}

TEST_F(TextFile, KeepsNamesOfEveryLength) {
  for (const std::size_t size : {1U, 255U, 260U, 262U, 263U, 264U, 265U, 266U, 528U, 5000U}) {
    for (const char* letter : {"n", "\xC3\xA9"}) {
      SCOPED_TRACE(testing::Message() << size << " times " << letter);
      std::string name;
      for (std::size_t count = 0; count < size; ++count) name += letter;
      MTextFile file;
      EXPECT_FALSE(file.Open(name.c_str(), false));
      EXPECT_EQ(file.GetFileName(), kv::test::Widen(name));
    }
  }
}

TEST_F(TextFile, OpensForWritingAnEmptiedFile) {
  WriteBytes("a.txt", "old content\n");
  MTextFile file;
  EXPECT_TRUE(file.Open("a.txt", true));
  EXPECT_TRUE(file.Writeln("new"));
  file.Close();
  EXPECT_EQ(ReadBytes("a.txt"), "new\r\n");
}

TEST_F(TextFile, BadPathsDoNotOpen) {
  kv::test::CreateFolders("folder");
  WriteBytes("good", "x");
  const std::string overlong = std::string(300, 'x');
  for (const char* path : {"", "folder", "good\x80", "good\xC3", "good\\x", overlong.c_str()}) {
    SCOPED_TRACE(path);
    MTextFile file;
    EXPECT_FALSE(file.Open(path, false));
  }
  MTextFile file;
  EXPECT_FALSE(file.Open(nullptr, false));
  EXPECT_FALSE(file.Open(nullptr, true));
  EXPECT_FALSE(file.Open("folder", true));
  EXPECT_FALSE(file.Open("missing\\a.txt", true));
}

TEST_F(TextFile, SkipsAByteOrderMarkForGood) {
  WriteBytes("a.txt",
             "\xEF\xBB\xBF"
             "first\nsecond\n");
  MTextFile file(true);
  ASSERT_TRUE(file.Open("a.txt", false));
  EXPECT_EQ(NextLine(file), "first");
  file.SeekToBegin();
  EXPECT_EQ(NextLine(file), "first");
  EXPECT_EQ(NextLine(file), "second");
}

TEST_F(TextFile, ReadsTheBeginningThatOnlyLooksLikeAMark) {
  const struct {
    std::string content;
    std::string firstLine;
  } rows[] = {
      {"\xEF\xBBx\n", "\xEF\xBBx"},
      {"\xEF\n\xBB\xBF", "\xEF"},
      {"ab", "ab"},
      {"abcd\n", "abcd"},
      {"\xEF\xBB\xBF", ""},
      {"", ""},
      {"x\xEF\xBB\xBF", "x\xEF\xBB\xBF"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.content);
    WriteBytes("a.txt", row.content);
    MTextFile file(true);
    ASSERT_TRUE(file.Open("a.txt", false));
    EXPECT_EQ(NextLine(file), row.firstLine);
  }
}

TEST_F(TextFile, ForgetsTheMarkWithTheFile) {
  WriteBytes("marked.txt",
             "\xEF\xBB\xBF"
             "marked\n");
  WriteBytes("plain.txt", "plain\n");
  MTextFile file(true);
  ASSERT_TRUE(file.Open("marked.txt", false));
  ASSERT_TRUE(file.Open("plain.txt", false));
  file.SeekToBegin();
  EXPECT_EQ(NextLine(file), "plain");
}

TEST_F(TextFile, TellsTheEndOfTheFileOnceAReadMetIt) {
  WriteBytes("a.txt", "one\ntwo");
  MTextFile file;
  EXPECT_FALSE(file.GetEndFileStatus());
  ASSERT_TRUE(file.Open("a.txt", false));
  EXPECT_FALSE(file.GetEndFileStatus());
  EXPECT_EQ(NextLine(file), "one\n");
  EXPECT_FALSE(file.GetEndFileStatus());
  EXPECT_EQ(NextLine(file), "two");
  EXPECT_TRUE(file.GetEndFileStatus());
  file.SeekToBegin();
  EXPECT_FALSE(file.GetEndFileStatus());
}

TEST_F(TextFile, KeepsItsSettingsWhenClosed) {
  WriteBytes("a.txt", "# comment\n  \n  value  \n;\n");
  MTextFile file(false, '#', ';', 100);
  file.SetBorderSpaceDelete(true);
  file.SkipEmptyStrings(false);
  for (int round = 0; round < 2; ++round) {
    ASSERT_TRUE(file.Open("a.txt", false));
    char line[100] = "unset";
    EXPECT_EQ(file.Readln(line, sizeof line), 0) << "the blank line is significant";
    EXPECT_STREQ(line, "");
    EXPECT_EQ(file.Readln(line, sizeof line), 5);
    EXPECT_STREQ(line, "value");
    EXPECT_EQ(file.Readln(line, sizeof line), -2);
    file.Close();
  }
}

TEST_F(TextFile, CopiesShareTheStreamAndTheLine) {
  WriteBytes("a.txt", "one\ntwo\nthree\n");
  MTextFile file(true);
  ASSERT_TRUE(file.Open("a.txt", false));
  MTextFile copy(file);
  EXPECT_EQ(copy.GetFileName(), L"a.txt");
  EXPECT_EQ(NextLine(file), "one");
  EXPECT_EQ(NextLine(copy), "two");
  MTextFile assigned;
  assigned = file;
  EXPECT_EQ(NextLine(assigned), "three");
  assigned = *&assigned;
  EXPECT_EQ(assigned.GetFileName(), L"a.txt");
}

// What a derived class sees of the line.
class LineViewer : public MTextFile {
 public:
  using MTextFile::IsComment;
};

TEST_F(TextFile, CopiesShareTheCurrentLine) {
  WriteBytes("a.txt", "text\n");
  LineViewer file;
  ASSERT_TRUE(file.Open("a.txt", false));
  const LineViewer copy(file);
  EXPECT_TRUE(copy.IsComment()) << "no line yet is a blank one";
  EXPECT_EQ(NextLine(file), "text\n");
  EXPECT_FALSE(copy.IsComment()) << "the line that the other has read";
}

TEST_F(TextFile, OpeningClosesWhatIsOpen) {
  MTextFile file;
  ASSERT_TRUE(file.Open("a.txt", true));
  ASSERT_TRUE(file.Writeln("one"));
  WriteBytes("b.txt", "x\n");
  ASSERT_TRUE(file.Open("b.txt", false));
  EXPECT_EQ(ReadBytes("a.txt"), "one\r\n") << "written out";
  kv::test::RemoveFile("a.txt");
}

TEST_F(TextFile, BorderSpaceMayBeKeptAgain) {
  WriteBytes("a.txt", " a \n b \n");
  MTextFile file(true);
  ASSERT_TRUE(file.Open("a.txt", false));
  EXPECT_EQ(NextLine(file), "a");
  file.SetBorderSpaceDelete(false);
  EXPECT_EQ(NextLine(file), " b \n");
}

TEST_F(TextFile, TheLastCopyReleasesTheStream) {
  WriteBytes("a.txt", "one\ntwo\n");
  {
    MTextFile copy;
    {
      MTextFile file(true);
      ASSERT_TRUE(file.Open("a.txt", false));
      EXPECT_EQ(NextLine(file), "one");
      copy = file;
    }
    EXPECT_EQ(NextLine(copy), "two") << "the stream outlives the object that opened it";
  }
  kv::test::RemoveFile("a.txt");  // refused while anybody holds it
}

TEST_F(TextFile, ClosingThroughOneCopyClosesForAll) {
  WriteBytes("a.txt", "one\ntwo\n");
  MTextFile file(true);
  ASSERT_TRUE(file.Open("a.txt", false));
  MTextFile copy(file);
  copy.Close();
  char line[10];
  EXPECT_EQ(file.Readln(line, sizeof line), -1);
  file.Close();
  copy.Close();
  ASSERT_TRUE(file.Open("a.txt", false)) << "a copy that is closed for all can open again";
  EXPECT_EQ(NextLine(file), "one");
}

TEST_F(TextFile, AClosedObjectReadsAndWritesNothing) {
  MTextFile file;
  const int integer = 1;
  const double real = 1;
  int value = 42;
  char line[10] = "unset";
  EXPECT_EQ(file.Readln(line, sizeof line), -1);
  EXPECT_EQ(file.Readln(&value, 1), -1);
  EXPECT_FALSE(file.SearchString("x", true));
  EXPECT_EQ(file.GetNumberLines(true), 0);
  EXPECT_FALSE(file.Writeln(&integer, 1));
  EXPECT_FALSE(file.Writeln(&real, 1));
  EXPECT_TRUE(file.Writeln("text")) << "the text form never reports";
  file.Write("%d", 1);
  file.SeekToBegin();
  file.Close();
  EXPECT_STREQ(line, "unset");
  EXPECT_EQ(value, 42);
}

class TextFileInScript : public kv::test::SandboxIn {};
INSTANTIATE_TEST_SUITE_P(Scripts, TextFileInScript, testing::ValuesIn(kv::test::kFolderNames),
                         kv::test::FolderNameTag);

TEST_P(TextFileInScript, OpensByUtf8Path) {
  const std::string path = Work() + GetParam() + ".txt";
  MTextFile file(true);
  ASSERT_TRUE(file.Open(path.c_str(), true));
  EXPECT_TRUE(file.Writeln(GetParam().c_str()));
  file.Close();
  EXPECT_EQ(ReadBytes(path), GetParam() + "\r\n");
  ASSERT_TRUE(file.Open(path.c_str(), false));
  EXPECT_EQ(file.GetFileName(), kv::test::Widen(path));
  EXPECT_EQ(NextLine(file), GetParam());
}

}  // namespace
