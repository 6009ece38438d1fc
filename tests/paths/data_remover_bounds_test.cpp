// Whatever a descriptor, a language line or the host says, nothing outside the writable folder
// goes.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/paths/data_remover_fixture.h"
#include "tests/paths/shell_stand_in.h"

namespace {

using kv::test::CreateFolders;
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

TEST_F(DataRemoverBounds, FollowTheHostToAnotherFolder) {
  WriteBytes(Root() + "other\\b\\1.txt", "content");
  KelvarisPath::SetWritableFolder((Root() + "other\\").c_str());
  EXPECT_EQ(GoneAfter({"all;b"}), (Texts{"other\\b\\", "other\\b\\1.txt"}));
}

}  // namespace
