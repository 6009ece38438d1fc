#include <gtest/gtest.h>
#include <windows.h>

#include <climits>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "tests/paths/data_remover_fixture.h"
#include "tests/paths/shell_stand_in.h"
#include "tests/support/held_file.h"
#include "tests/support/import_patch.h"

namespace {

static_assert(offsetof(KvRemoveFolderDesc, base) == 0);
static_assert(offsetof(KvRemoveFolderDesc, languages) == 1);
static_assert(offsetof(KvRemoveFolderDesc, folder) == 8);
static_assert(offsetof(KvRemoveFolderDesc, deleteListed) == 8 + sizeof(std::string));
static_assert(offsetof(KvRemoveFolderDesc, files) == 16 + sizeof(std::string));
// Three keywords and two lists.
static_assert(sizeof(KvFoldersRemover) == 3 * sizeof(void*) + 2 * sizeof(std::vector<std::string>));

using kv::test::CreateFolders;
using kv::test::DataRemover;
using kv::test::ListTree;
using kv::test::WriteBytes;

TEST_F(DataRemover, TakesWholeFoldersOfEachRoot) {
  const Texts languagesA = {"de\\a\\", "de\\a\\1.txt", "de\\a\\2.txt", "fr\\a\\", "fr\\a\\1.txt"};
  Texts everyA = kA;
  everyA.insert(everyA.end(), languagesA.begin(), languagesA.end());
  Check({
      {{"base;a"}, kA},
      {{"languages;a"}, languagesA},
      {{"all;a"}, everyA},
      {{"base;a\\"}, kA},
      {{"base;A"}, kA},
      {{"base;a\\sub"}, {"a\\sub\\", "a\\sub\\3.txt"}},
      {{"languages;b"}, {"fr\\b\\", "fr\\b\\1.txt"}},
      {{"all;b"}, {"b\\", "b\\1.txt", "fr\\b\\", "fr\\b\\1.txt"}},
      {{"base;de"}, {"de\\", "de\\1.txt", "de\\a\\", "de\\a\\1.txt", "de\\a\\2.txt"}},
      {{"base;1.txt"}, {"1.txt"}},
      {{"base;missing", "all;missing\\deeper", "languages;sub"}, {}},
      {{"base;b", "base;a", "base;b"},
       {"a\\", "a\\1.txt", "a\\2.txt", "a\\sub\\", "a\\sub\\3.txt", "b\\", "b\\1.txt"}},
  });
}

TEST_F(DataRemover, TakesTheRootsThemselves) {
  Check({
      {{"languages;.\\"}, kLanguageFolders},
      {{"base;.\\"}, kEverything},
      {{"all;.\\"}, kEverything},
      {{"languages"}, kLanguageFolders},
      {{"base"}, kEverything},
      {{"all"}, kEverything},
      {{"base;a\\.."}, kEverything},
  });
}

TEST_F(DataRemover, TakesListedFiles) {
  Check({
      {{"base;a;delete;1.txt"}, {"a\\1.txt"}},
      {{"base;a;delete;2.TXT"}, {"a\\2.txt"}},
      {{"base;a;delete;1.txt,2.txt"}, {"a\\1.txt", "a\\2.txt"}},
      {{"base;a;delete;2.txt,none,1.txt,1.txt"}, {"a\\1.txt", "a\\2.txt"}},
      {{"base;a;delete;none"}, {}},
      {{"base;a;delete;1.tx"}, {}},
      {{"base;a;delete;1.txtx"}, {}},
      {{"base;a;delete; 1.txt"}, {}},
      {{"base;a;delete;3.txt"}, {}},
      {{"base;a;delete;sub"}, {}},
      {{"base;a;delete;sub\\3.txt"}, {}},
      {{"base;a;delete;*.txt"}, {}},
      {{"base;.\\;delete;other.ini,1.TXT"}, {"1.txt", "Other.INI"}},
      {{"languages;.\\;delete;1.txt"}, {"de\\1.txt"}},
      {{"languages;a;delete;1.txt"}, {"de\\a\\1.txt", "fr\\a\\1.txt"}},
      {{"all;a;delete;1.txt"}, {"a\\1.txt", "de\\a\\1.txt", "fr\\a\\1.txt"}},
      {{"all;.\\;delete;1.txt"}, {"1.txt", "de\\1.txt"}},
      {{"base;a\\sub;delete;3.txt"}, {"a\\sub\\3.txt"}},
      {{"base;missing;delete;1.txt"}, {}},
      {{"base;1.txt;delete;1.txt"}, {}},
  });
}

TEST_F(DataRemover, SparesOneFile) {
  Check({
      {{"base;a;not_delete;1.txt"}, {"a\\2.txt"}},
      {{"base;a;not_delete;2.TXT"}, {"a\\1.txt"}},
      {{"base;a;not_delete;none"}, {"a\\1.txt", "a\\2.txt"}},
      {{"base;a;not_delete;sub"}, {"a\\1.txt", "a\\2.txt"}},
      {{"all;a;not_delete;1.txt"}, {"a\\2.txt", "de\\a\\2.txt"}},
      {{"base;.\\;not_delete;1.txt"}, {"Other.INI"}},
      {{"languages;.\\;not_delete;none"}, {"de\\1.txt"}},
      {{"base;1.txt;not_delete;none"}, {}},
      // What cannot be compared is no file's name.
      {{"base;a;not_delete;\xFF"}, {"a\\1.txt", "a\\2.txt"}},
      {{"base;a;delete;\xFF"}, {}},
  });
}

TEST_F(DataRemover, SparesNoFileOfSeveralNames) {
  Check({
      {{"base;a;not_delete;1.txt,2.txt"}, {"a\\1.txt", "a\\2.txt"}},
      {{"base;a;not_delete;1.txt,1.TXT"}, {"a\\2.txt"}},
      {{"base;.\\;not_delete;1.txt,other.ini"}, {"1.txt", "Other.INI"}},
  });
}

TEST_F(DataRemover, CountsNoEmptyFieldAndNoEmptyName) {
  Check({
      {{";;base;;;a;;"}, kA},
      {{";base;a;;delete;1.txt;"}, {"a\\1.txt"}},
      {{"base;a;delete;,,2.txt,"}, {"a\\2.txt"}},
      {{"base;a;delete;1.txt;b;2.txt"}, {"a\\1.txt"}},
  });
}

TEST_F(DataRemover, TakesTheWholeFolderWhenTheListNamesNothing) {
  Check({
      {{"base;a;delete;,"}, kA},
      {{"base;a;not_delete;,,,"}, kA},
      {{"base;a;unknown;,"}, kA},
  });
}

TEST_F(DataRemover, DoesNotApplyDescriptorsOfNoFieldOrThree) {
  Check({
      {{"base;a;delete"}, {}},
      {{"base;a;not_delete"}, {}},
      {{"base;a;;;delete;"}, {}},
      {{"base;a;1.txt"}, {}},
      {{"base;.\\;delete"}, {}},
      {{""}, {}},
      {{";;;"}, {}},
      {{nullptr}, {}},
      {{"base;missing", "", ";", nullptr}, {}},
      {{nullptr, "", "base;b", nullptr}, {"b\\", "b\\1.txt"}},
  });
}

TEST_F(DataRemover, KnowsRootsAndModesByTheirExactWords) {
  Check({
      {{"All;a", "ALL;a", "Base;a", "BASE;a", "bas;a", "basee;a", " base;a", "base ;a", "*;a"}, {}},
      {{"Languages;a", "language;a", "LANGUAGES;.\\", "unknown;.\\", "unknown"}, {}},
      {{"unknown;a;delete;1.txt", "unknown;a;not_delete;1.txt"}, {}},
      {{"base;missing;not_delete;x", "base;a;DELETE;1.txt"}, {"a\\2.txt"}},
      {{"base;missing;not_delete;x", "base;a; delete;1.txt"}, {"a\\2.txt"}},
      {{"base;a;NOT_DELETE;1.txt"}, {"a\\1.txt"}},
      {{"base;a;notdelete;1.txt"}, {"a\\1.txt"}},
  });
}

TEST_F(DataRemover, KeepsTheFlagsOfTheDescriptorBefore) {
  Check({
      {{"base;missing", "unknown;b"}, {"b\\", "b\\1.txt"}},
      {{"languages;missing", "unknown;b"}, {"fr\\b\\", "fr\\b\\1.txt"}},
      {{"all;missing", "unknown;b"}, {"b\\", "b\\1.txt", "fr\\b\\", "fr\\b\\1.txt"}},
      {{"all;missing", "base;missing", "unknown;b"}, {"b\\", "b\\1.txt"}},
      {{"all;missing", "languages;missing", "unknown;b"}, {"fr\\b\\", "fr\\b\\1.txt"}},
      {{"base;missing", "languages;missing", "unknown;b"}, {"fr\\b\\", "fr\\b\\1.txt"}},
      {{"base;missing", nullptr, "", "unknown;b"}, {"b\\", "b\\1.txt"}},
      {{"unknown;b", "base;missing"}, {}},
      {{"base;missing;not_delete;x", "base;a;unknown;1.txt"}, {"a\\2.txt"}},
      {{"base;missing;not_delete;x", "base;missing;delete;x", "base;a;unknown;1.txt"},
       {"a\\1.txt"}},
      {{"base;missing;not_delete;x", "base;missing", "base;a;unknown;1.txt"}, {"a\\2.txt"}},
      {{"base;a;not_delete", "unknown;a;unknown;1.txt"}, {"a\\2.txt"}},
      {{"languages;a;delete", "unknown;b"}, {"fr\\b\\", "fr\\b\\1.txt"}},
  });
}

TEST_F(DataRemover, ReadsTheLanguageList) {
  struct Row {
    std::string content;
    bool german;
    bool french;
  };
  for (const Row& row :
       {Row{"de\nfr\n", true, true}, Row{"fr\r\nde", true, true}, Row{"  de \t\r\n", true, false},
        Row{"! de\n\n \nfr\n", false, true}, Row{"de\n}\nfr\n", true, false},
        Row{"de\n } fr\nfr\n", true, false}, Row{"}\nde\nfr\n", false, false},
        Row{"", false, false}, Row{"DE\n", true, false},
        Row{"\xEF\xBB\xBF"
            "de\n",
            true, false},
        Row{std::string(300, ' ') + "de\n" + std::string(4090, '\t') + "fr\n", true, true},
        Row{"de fr\nde;fr\nde,fr\n", false, false}}) {
    SCOPED_TRACE(row.content);
    GiveLanguages(row.content);
    Fill();
    Remove({"languages;.\\"});
    EXPECT_EQ(kv::test::FolderExists(Writable() + "de"), !row.german);
    EXPECT_EQ(kv::test::FolderExists(Writable() + "fr"), !row.french);
    EXPECT_EQ(ListTree(Writable() + "a").size(), 4U);
    EXPECT_EQ(ListTree(Writable() + "ru").size(), 2U);
  }
}

TEST_F(DataRemover, KnowsNoLanguagesWithoutTheirList) {
  kv::test::RemoveFile(Work() + "media\\supported_languages.ini");
  Check({
      {{"languages;.\\", "languages;a"}, {}},
      {{"all;b"}, {"b\\", "b\\1.txt"}},
      {{"all;b;delete;1.txt"}, {"b\\1.txt"}},
  });
}

TEST_F(DataRemover, CutsALanguageNameAt255Bytes) {
  GiveLanguages(std::string(300, 'n') + "\nde\n");
  EXPECT_EQ(GoneAfter({"languages;a"}), (Texts{"de\\a\\", "de\\a\\1.txt", "de\\a\\2.txt"}));
}

TEST_F(DataRemover, TakesLongLanguageNames) {
  const std::string name(150, 'n');
  GiveLanguages(name + "\n");
  Give(name + "\\a\\1.txt");
  EXPECT_EQ(GoneAfter({"languages;a"}), (Texts{name + "\\a\\", name + "\\a\\1.txt"}));
}

TEST_F(DataRemover, ReadsTheListThatTheResolverFinds) {
  WriteBytes(Work() + "en\\media\\supported_languages.ini", "ru\n");
  EXPECT_EQ(GoneAfter({"languages;a"}), (Texts{"ru\\a\\", "ru\\a\\1.txt"}));
}

TEST_F(DataRemover, TakesAsManyDescriptorsAsCounted) {
  const char* const list[] = {"base;a", "base;b"};
  for (const int count : {0, -1, INT_MIN}) {
    SCOPED_TRACE(count);
    EXPECT_EQ(GoneAfter([&] { KvFoldersRemover(list, count).Run(); }), Texts{});
  }
  EXPECT_EQ(GoneAfter([] { KvFoldersRemover(nullptr, 0).Run(); }), Texts{});
  EXPECT_EQ(GoneAfter([] { KvFoldersRemover(nullptr, 5).Run(); }), Texts{});
  EXPECT_EQ(GoneAfter([&] { KvFoldersRemover(list, 1).Run(); }), kA);
  EXPECT_EQ(GoneAfter([&] { KvFoldersRemover(list, 2).Run(); }), (Texts{"b\\", "b\\1.txt"}));
}

TEST_F(DataRemover, DeletesNothingUntilItRuns) {
  EXPECT_EQ(GoneAfter([] {
              const char* const list[] = {"all;.\\"};
              const KvFoldersRemover remover(list, 1);
              KvFoldersRemover copy(remover);
              copy = remover;
            }),
            Texts{});
}

TEST_F(DataRemover, KeepsNoTextOfItsCaller) {
  std::string text = "base;b";
  const char* list[] = {text.c_str()};
  KvFoldersRemover remover(list, 1);
  text = "base;a";
  list[0] = nullptr;
  GiveLanguages("ru\n");
  EXPECT_EQ(GoneAfter([&] { remover.Run(); }), (Texts{"b\\", "b\\1.txt"}));
}

TEST_F(DataRemover, RunsAsOftenAsItIsAsked) {
  const char* const list[] = {"base;b"};
  KvFoldersRemover remover(list, 1);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(GoneAfter([&] { remover.Run(); }), (Texts{"b\\", "b\\1.txt"}));
    EXPECT_EQ(GoneAfter([&] { remover.Run(); }), Texts{});
    Give("b\\1.txt");
  }
}

TEST_F(DataRemover, CopiesRemoveTheSame) {
  const char* const list[] = {"all;b", "base;a;delete;1.txt"};
  const char* const others[] = {"base;de"};
  const Texts gone = {"a\\1.txt", "b\\", "b\\1.txt", "fr\\b\\", "fr\\b\\1.txt"};
  auto original = std::make_unique<KvFoldersRemover>(list, 2);
  KvFoldersRemover copy(*original);
  KvFoldersRemover assigned(others, 1);
  assigned = *original;
  original.reset();
  EXPECT_EQ(GoneAfter([&] { copy.Run(); }), gone);
  Fill();
  EXPECT_EQ(GoneAfter([&] { assigned.Run(); }), gone);
}

TEST_F(DataRemover, TakesAllKindsOfEntriesWithAFolder) {
  for (const char* name : {"k\\hidden.txt", "k\\readonly.txt", "k\\Каталог\\Луна.txt",
                           "k\\天文データ\\月.txt", "k\\🌍\\🌍.txt"}) {
    Give(name);
  }
  CreateFolders(Writable() + "k\\empty");
  kv::test::SetHidden(Writable() + "k\\hidden.txt");
  kv::test::SetReadOnly(Writable() + "k\\readonly.txt", true);
  EXPECT_EQ(GoneAfter({"base;k"}), (Texts{"k\\", "k\\empty\\", "k\\hidden.txt", "k\\readonly.txt",
                                          "k\\Каталог\\", "k\\Каталог\\Луна.txt", "k\\天文データ\\",
                                          "k\\天文データ\\月.txt", "k\\🌍\\", "k\\🌍\\🌍.txt"}));
}

TEST_F(DataRemover, TakesFoldersAndFilesOfAnyScript) {
  GiveLanguages("天文データ\nКаталог\n🌍пуск\n");
  for (const std::string& name : kv::test::kFolderNames) {
    SCOPED_TRACE(name);
    Give(name + "\\1.txt");
    Give(name + "\\Луна.txt");
    Give(name + "\\" + name + "\\2.txt");
    EXPECT_EQ(GoneAfter({("base;" + name + ";delete;ЛУНА.TXT").c_str()}),
              Texts{name + "\\Луна.txt"});
    EXPECT_EQ(GoneAfter({("languages;" + name).c_str()}),
              (Texts{name + "\\" + name + "\\", name + "\\" + name + "\\2.txt"}));
    EXPECT_EQ(GoneAfter({"languages;.\\"}), (Texts{name + "\\", name + "\\1.txt"}));
  }
}

// A listed name with such a character leads nowhere, so the file cannot be chosen.
TEST_F(DataRemover, LeavesFilesWithNamesBeyondTheBmp) {
  Give("k\\🌍.txt");
  Give("k\\1.txt");
  EXPECT_EQ(GoneAfter({"base;k;delete;🌍.txt"}), Texts{});
  EXPECT_EQ(GoneAfter({"base;k;not_delete;none"}), Texts{"k\\1.txt"});
  EXPECT_EQ(GoneAfter({"base;k"}), (Texts{"k\\", "k\\🌍.txt"}));
}

TEST_F(DataRemover, LeavesReadOnlyFilesThatAreChosen) {
  kv::test::SetReadOnly(Writable() + "a\\1.txt", true);
  kv::test::SetHidden(Writable() + "a\\2.txt");
  EXPECT_EQ(GoneAfter({"base;a;delete;1.txt,2.txt"}), Texts{"a\\2.txt"});
  EXPECT_EQ(GoneAfter({"base;a;not_delete;none"}), Texts{});
}

TEST_F(DataRemover, LeavesFilesInOtherHandsAndGoesOn) {
  const kv::test::HeldFile held(Writable() + "a\\1.txt", kv::test::Sharing::kRead);
  EXPECT_EQ(GoneAfter({"base;a;not_delete;none"}), Texts{"a\\2.txt"});
  Remove({"base;a", "base;b"});
  EXPECT_TRUE(kv::test::FileExists(Writable() + "a\\1.txt"));
  EXPECT_FALSE(kv::test::FolderExists(Writable() + "b"));
}

TEST_F(DataRemover, TellsAccentsApartAsCompareNoCaseStringsDoes) {
  Give("k\\été.txt");
  EXPECT_EQ(GoneAfter({"base;k;delete;ete.txt"}), Texts{});
  EXPECT_EQ(GoneAfter({"base;k;delete;ÉTÉ.TXT"}), Texts{"k\\été.txt"});
}

TEST_F(DataRemover, AsksTheShellForFoldersThatExistAsTheyAreWritten) {
  const kv::test::WideShellStandIn shell;
  Remove({"base;missing", "all;missing\\deeper", "languages;sub", "base;.\\", "languages;.\\",
          "base;a\\sub\\"});
  Texts asked;
  for (const auto& request : shell.Requests()) {
    ASSERT_EQ(request.from.back(), L'\0');
    asked.push_back(kv::test::Narrow(request.from.c_str()));
  }
  EXPECT_EQ(asked,
            (Texts{Writable() + ".", Writable() + "de", Writable() + "fr", Writable() + "a\\sub"}));
}

std::vector<std::string> g_deletions;
BOOL WINAPI NoteDeletion(LPCWSTR path) {
  g_deletions.push_back(kv::test::Narrow(path));
  return FALSE;
}

TEST_F(DataRemover, DeletesFilesByThePathsOfTheirFoldersAsTheyAreWritten) {
  const kv::test::ImportPatch patch("DeleteFileW", &NoteDeletion);
  Remove({"all;.\\;delete;1.txt", "base;a\\..\\b;delete;1.txt"});
  EXPECT_EQ(g_deletions, (Texts{Writable() + "de\\.\\1.txt", Writable() + ".\\1.txt",
                                Writable() + "a\\..\\b\\1.txt"}));
}

}  // namespace
