// Whatever a descriptor, a language line or the host says, nothing outside the writable folder
// goes.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "tests/paths/data_remover_fixture.h"
#include "tests/paths/folder_link.h"
#include "tests/paths/shell_stand_in.h"
#include "tests/support/process.h"

namespace {

using kv::test::CreateFolders;
using kv::test::FolderLink;
using kv::test::WriteBytes;

class DataRemoverBounds : public kv::test::DataRemover {};

TEST_F(DataRemoverBounds, HoldAgainstDescriptors) {
  for (const char* folder :
       {"..", "..\\", "..\\sibling", "..\\sibling\\a", "..\\sibling\\", "a\\..\\..\\sibling",
        "../sibling", "a/../../sibling", ".\\..\\sibling", "..\\Kelvaris_91", "..\\Kelvaris_91\\",
        "..\\..\\work", "..\\..\\outside", "..\\..\\..", "..\\1.txt", "missing\\..\\..\\sibling",
        "\\..\\..\\outside", "..\\..\\..\\..\\..\\..\\..\\..\\..\\..\\..\\.."}) {
    for (const char* rest : {"", ";delete;1.txt", ";not_delete;none", ";delete;,"}) {
      const std::string base = std::string("base;") + folder + rest;
      const std::string all = std::string("all;..\\") + folder + rest;
      SCOPED_TRACE(base);
      EXPECT_EQ(GoneAfter({base.c_str(), all.c_str()}), Texts{});
    }
  }
}

TEST_F(DataRemoverBounds, HoldAgainstLanguageLines) {
  GiveLanguages(
      "..\n..\\sibling\n..\\..\\work\n../../outside\n..\\Kelvaris_91\nde\\..\\..\\sibling\n");
  EXPECT_EQ(
      GoneAfter({"languages;.\\", "languages;a", "languages;.\\;delete;1.txt",
                 "languages;a;delete;1.txt", "languages;a;not_delete;none", "languages;sibling"}),
      Texts{});
}

TEST_F(DataRemoverBounds, LetPathsReturnInside) {
  Check({
      {{"base;a\\..\\b"}, {"b\\", "b\\1.txt"}},
      {{"base;..\\Kelvaris_9\\b"}, {"b\\", "b\\1.txt"}},
      {{"base;..\\KELVARIS_9\\b"}, {"b\\", "b\\1.txt"}},
      {{"base;a\\..\\b;delete;1.txt"}, {"b\\1.txt"}},
      {{"base;\\b"}, {"b\\", "b\\1.txt"}},
      {{"languages;..\\b"}, {"b\\", "b\\1.txt"}},
      {{"base;a/sub"}, {"a\\sub\\", "a\\sub\\3.txt"}},
      {{"base;./a/sub/"}, {"a\\sub\\", "a\\sub\\3.txt"}},
      {{"base;a/sub;delete;3.txt"}, {"a\\sub\\3.txt"}},
  });
}

TEST_F(DataRemoverBounds, HoldForLanguagesThatMeanTheWritableFolder) {
  for (const char* line : {".", ".\\", "de\\..", "de\\..\\", "..\\Kelvaris_9", "..\\KELVARIS_9\\",
                           "./", "missing\\.."}) {
    SCOPED_TRACE(line);
    GiveLanguages(std::string(line) + "\n");
    Check({
        {{"languages", "languages;.\\", "languages;a", "languages;..\\Kelvaris_9\\a"}, {}},
        {{"languages;.\\;delete;1.txt", "languages;a;delete;1.txt"}, {}},
        {{"languages;a;not_delete;none"}, {}},
        {{"all;b"}, {"b\\", "b\\1.txt"}},
        {{"all;b;delete;1.txt"}, {"b\\1.txt"}},
    });
  }
}

// The low 16 bits of these characters are those of "." and "\".
TEST_F(DataRemoverBounds, HoldForFilesWhoseNamesWouldLeadElsewhere) {
  WriteBytes(Documents() + "letter.txt", "content");
  Give("\U0001002E\U0001002E\U0001005Cletter.txt");
  Give("\U0002002E\U0002002E\U0002005Cletter.txt");
  Give("..\U0002005Cletter.txt");
  Give("a\U0002005C2.txt");
  EXPECT_EQ(GoneAfter({"base;.\\;not_delete;none"}), (Texts{"1.txt", "Other.INI"}));
  EXPECT_EQ(GoneAfter({"base;.\\;delete;letter.txt,2.txt"}), Texts{});
  EXPECT_TRUE(kv::test::FileExists(Documents() + "letter.txt"));
  EXPECT_TRUE(kv::test::FileExists(Writable() + "a\\2.txt"));
}

// "m" and "b\m" lead outside, "l" to another folder inside.
TEST_F(DataRemoverBounds, HoldForLinks) {
  const FolderLink m(Writable() + "m", Root() + "outside");
  const FolderLink deeper(Writable() + "b\\m", Root() + "outside");
  const FolderLink l(Writable() + "l", Writable() + "a");
  ASSERT_TRUE(m.Exists() && deeper.Exists() && l.Exists()) << "needs links to folders";
  GiveLanguages("m\nl\nb\\m\n");
  for (const char* folder : {"m", "m\\", "M", "m\\a", "m/a", "m\\a\\1.txt", "m\\.\\a", "a\\..\\m",
                             "b\\m", "b\\m\\a", "l", "l\\sub", "..\\Kelvaris_9\\m\\a"}) {
    for (const char* rest : {"", ";delete;1.txt,3.txt", ";not_delete;none"}) {
      const std::string descriptor = std::string("base;") + folder + rest;
      SCOPED_TRACE(descriptor);
      EXPECT_EQ(GoneAfter({descriptor.c_str()}), Texts{});
    }
  }
  EXPECT_EQ(GoneAfter({"languages", "languages;.\\", "languages;a", "languages;sub",
                       "languages;a;delete;1.txt", "languages;.\\;not_delete;none",
                       "languages;sub;not_delete;none"}),
            Texts{});
}

TEST_F(DataRemoverBounds, LetTheWritableFolderLieBehindALink) {
  WriteBytes(Root() + "other\\data\\b\\1.txt", "content");
  const FolderLink link(Root() + "link", Root() + "other");
  ASSERT_TRUE(link.Exists()) << "needs links to folders";
  for (const std::string& folder : {Root() + "link\\", Root() + "link\\data\\"}) {
    SCOPED_TRACE(folder);
    WriteBytes(folder + "b\\1.txt", "content");
    WriteBytes(folder + "b\\2.txt", "content");
    KelvarisPath::SetWritableFolder(folder.c_str());
    Remove({"base;b;delete;1.txt"});
    EXPECT_EQ(kv::test::ListTree(folder + "b"), Texts{"2.txt"});
    Remove({"base;b"});
    EXPECT_FALSE(kv::test::FolderExists(folder + "b"));
  }
}

TEST_F(DataRemoverBounds, HoldForAWritableFolderWithAPrefix) {
  KelvarisPath::SetWritableFolder(("\\\\?\\" + Documents() + "Kelvaris_9\\").c_str());
  Check({
      {{"base;..\\sibling", "base;..\\sibling\\a;delete;1.txt", "base;..",
        "languages;..\\..\\sibling"},
       {}},
      {{"base;b;delete;1.txt"}, {"b\\1.txt"}},
      {{"languages;a;delete;2.txt"}, {"de\\a\\2.txt"}},
  });
}

TEST_F(DataRemoverBounds, HoldForPatterns) {
  Check({
      {{"base;*", "base;?", "base;a*", "base;*.*", "all;*", "base;a\\*"}, {}},
      {{"base;*;delete;1.txt", "base;a\\*;not_delete;none"}, {}},
  });
}

TEST_F(DataRemoverBounds, HoldForAbsoluteAndMalformedFolders) {
  const std::string absolute = "base;" + Root() + "outside";
  EXPECT_EQ(GoneAfter({absolute.c_str(), "base;C:\\", "base;C:", "base;\xFF", "base;a\xC3",
                       "base;a\\\x80;delete;1.txt", "base;a:stream", "base;CON", "base;NUL"}),
            Texts{});
}

// The folder that the host sets may lack its separator; names then run into those of neighbours.
TEST_F(DataRemoverBounds, GoByWholeNames) {
  KelvarisPath::SetWritableFolder((Documents() + "Kelvaris_9").c_str());
  EXPECT_EQ(GoneAfter({"base;1", "base;1;delete;1.txt", "base;1;not_delete;none"}), Texts{});
  EXPECT_EQ(GoneAfter({"base;\\b"}), (Texts{"b\\", "b\\1.txt"}));
}

TEST_F(DataRemoverBounds, HoldWithoutAWritableFolder) {
  KelvarisPath::SetWritableFolder("");
  const std::string absolute = "base;" + Writable() + "a";
  const std::string withPrefix = "base;\\\\?\\" + Root() + "outside";
  EXPECT_EQ(GoneAfter({"base;a", "all;a", "languages;a", "languages;.\\", "base;.\\", "base;.",
                       "base;1.txt", "base;a;delete;1.txt", "base;.\\;not_delete;none",
                       "base;..\\outside", absolute.c_str(), withPrefix.c_str(), "base", "all",
                       "base;\\", "all;\\"}),
            Texts{});
  EXPECT_EQ(GoneAfter([] { deleteDownloads(); }), Texts{});
  EXPECT_EQ(GoneAfter([] { deleteDataAfterError(); }), Texts{});
}

TEST_F(DataRemoverBounds, HoldForPathsOver259Bytes) {
  const std::string longest(259 - Writable().size(), 'n');
  CreateFolders(Writable() + longest);
  WriteBytes(Writable() + longest + "n\\1.txt", "content");
  const std::string fits = "base;" + longest;
  const std::string tooLong = fits + "n";
  const std::string farTooLong = "base;" + std::string(100'000, 'n');
  const std::string withFiles = tooLong + ";delete;1.txt";
  const std::string inLanguages = "languages;" + longest;
  EXPECT_EQ(
      GoneAfter({tooLong.c_str(), farTooLong.c_str(), withFiles.c_str(), inLanguages.c_str()}),
      Texts{});
  const kv::test::WideShellStandIn shell;
  Remove({tooLong.c_str(), fits.c_str(), inLanguages.c_str()});
  ASSERT_EQ(shell.Requests().size(), 1U);
  EXPECT_EQ(shell.Requests()[0].from, kv::test::Widen(Writable() + longest) + L'\0');
}

// A second process clears the folder of the first.
TEST(DataRemoverChild, DISABLED_ChoosesNoFile) {
  const char* const list[] = {"base;a;delete;none"};
  KvFoldersRemover(list, 1).Run();
  std::exit(0);
}

TEST_F(DataRemoverBounds, EndTheProcessForAFileWhosePathReaches260Bytes) {
  const std::string folder = Writable() + "a\\";
  const auto nameFor = [&folder](std::size_t bytes) {
    const std::size_t left = bytes - folder.size();
    std::string name(left % 2, 'x');
    while (name.size() < left) name += "ж";
    return name;
  };
  const std::string longest = nameFor(259);
  const std::string tooLong = nameFor(260);
  WriteBytes(folder + longest, "content");
  EXPECT_EQ(kv::test::RunOwnCase("DataRemoverChild.DISABLED_ChoosesNoFile").exitCode, 0U);
  WriteBytes(folder + tooLong, "content");
  EXPECT_EQ(kv::test::RunOwnCase("DataRemoverChild.DISABLED_ChoosesNoFile").exitCode, 0xC0000409UL);
  EXPECT_EQ(kv::test::ListTree(folder).size(), 6U);
}

TEST_F(DataRemoverBounds, FollowTheHostToAnotherFolder) {
  WriteBytes(Root() + "other\\b\\1.txt", "content");
  KelvarisPath::SetWritableFolder((Root() + "other\\").c_str());
  EXPECT_EQ(GoneAfter({"all;b"}), (Texts{"other\\b\\", "other\\b\\1.txt"}));
}

}  // namespace
