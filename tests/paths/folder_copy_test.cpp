#include <gtest/gtest.h>
#include <windows.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "tests/paths/held_file.h"
#include "tests/paths/shell_stand_in.h"
#include "tests/support/sandbox.h"
#include "utils/paths/paths.h"

namespace {

using kv::test::CreateFolders;
using kv::test::FolderExists;
using kv::test::HeldFile;
using kv::test::ListTree;
using kv::test::NarrowShellStandIn;
using kv::test::ReadBytes;
using kv::test::Widen;
using kv::test::WideShellStandIn;
using kv::test::WriteBytes;

using Texts = std::vector<std::string>;

class CopyingFolders : public kv::test::Sandbox {
 protected:
  std::string Below(const std::string& name) const { return Root() + name; }
  void Give(const std::string& name, const std::string& content) {
    WriteBytes(Root() + name, content);
  }
  std::string Content(const std::string& name) const { return ReadBytes(Root() + name); }
  bool CopyTree(const std::string& source, const std::string& target) {
    return CopyDirTo(Widen(Root() + source), Widen(Root() + target));
  }
};

// ---- CopyFolder
// ----------------------------------------------------------------------------------

TEST_F(CopyingFolders, CopyFolderAsksForACopyOntoItself) {
  const HWND owner = reinterpret_cast<HWND>(0x1234);
  const NarrowShellStandIn shell;
  CopyFolder("C:\\from", "C:\\folder", owner);
  CopyFolder(nullptr, "relative\\", nullptr);
  ASSERT_EQ(shell.Requests().size(), 2U);
  EXPECT_EQ(shell.Requests()[0].owner, owner);
  EXPECT_EQ(shell.Requests()[0].operation, 2U);
  EXPECT_EQ(shell.Requests()[0].from, std::string("C:\\folder\0", 10));
  EXPECT_EQ(shell.Requests()[0].to, std::string("C:\\folder\0", 10));
  EXPECT_EQ(shell.Requests()[0].flags, 0x4);
  EXPECT_EQ(shell.Requests()[1].owner, nullptr);
  EXPECT_EQ(shell.Requests()[1].from, std::string("relative\\\0", 10));
  EXPECT_EQ(shell.Requests()[1].to, std::string("relative\\\0", 10));
}

TEST_F(CopyingFolders, CopyFolderTakesUpTo510Bytes) {
  const NarrowShellStandIn shell;
  CopyFolder("C:\\from", std::string(511, 'n').c_str(), nullptr);
  CopyFolder("C:\\from", std::string(512, 'n').c_str(), nullptr);
  CopyFolder("C:\\from", std::string(100'000, 'n').c_str(), nullptr);
  CopyFolder("C:\\from", "", nullptr);
  CopyFolder("C:\\from", nullptr, nullptr);
  EXPECT_EQ(shell.Requests().size(), 0U);
  CopyFolder("C:\\from", std::string(510, 'n').c_str(), nullptr);
  ASSERT_EQ(shell.Requests().size(), 1U);
  EXPECT_EQ(shell.Requests()[0].from, std::string(510, 'n') + '\0');
  EXPECT_EQ(shell.Requests()[0].to, std::string(510, 'n') + '\0');
}

// Wine's shell answers without a dialog; one that shows its errors would wait for the user here.
TEST_F(CopyingFolders, CopyFolderLeavesEverythingAsItIs) {
  Give("from\\other.txt", "other");
  Give("folder\\a.txt", "a");
  Give("folder\\sub\\b.txt", "b");
  const Texts before = ListTree(Root());
  CopyFolder(Below("from").c_str(), Below("folder").c_str(), nullptr);
  CopyFolder(Below("from").c_str(), Below("folder\\a.txt").c_str(), nullptr);
  CopyFolder(Below("from").c_str(), Below("missing").c_str(), nullptr);
  EXPECT_EQ(ListTree(Root()), before);
  EXPECT_EQ(Content("folder\\a.txt"), "a");
}

// ---- CopyDirTo
// -----------------------------------------------------------------------------------

TEST_F(CopyingFolders, CopyDirToAsksForACopyOfAllWithoutQuestions) {
  const WideShellStandIn shell;
  EXPECT_TRUE(CopyDirTo(L"C:\\source", L"D:\\Цель 月"));
  ASSERT_EQ(shell.Requests().size(), 1U);
  EXPECT_EQ(shell.Requests()[0].owner, nullptr);
  EXPECT_EQ(shell.Requests()[0].operation, 2U);
  EXPECT_EQ(shell.Requests()[0].from, std::wstring(L"C:\\source\\*\0", 12));
  EXPECT_EQ(shell.Requests()[0].to, std::wstring(L"D:\\Цель 月\0", 10));
  EXPECT_EQ(shell.Requests()[0].flags, 0x614);
  CopyDirTo(L"C:\\source\\", L"D:\\target\\");
  EXPECT_EQ(shell.Requests()[1].from, std::wstring(L"C:\\source\\\\*\0", 13));
  EXPECT_EQ(shell.Requests()[1].to, std::wstring(L"D:\\target\\\0", 11));
}

TEST_F(CopyingFolders, CopyDirToTellsWhetherTheShellSucceeded) {
  for (const int result : {1, 2, 0x71, 0x402, 0x10000, -1}) {
    SCOPED_TRACE(result);
    const WideShellStandIn shell(result);
    EXPECT_FALSE(CopyDirTo(L"C:\\source", L"D:\\target"));
    EXPECT_EQ(shell.Requests().size(), 1U);
  }
}

TEST_F(CopyingFolders, CopyDirToOfNothingAsksForNothing) {
  const WideShellStandIn shell;
  EXPECT_FALSE(CopyDirTo(L"", L"D:\\target"));
  EXPECT_FALSE(CopyDirTo(L"C:\\source", L""));
  EXPECT_FALSE(CopyDirTo(std::wstring(L"C:\\source\0C:\\more", 17), L"D:\\target"));
  EXPECT_FALSE(CopyDirTo(L"C:\\source", std::wstring(L"D:\\target\0", 10)));
  EXPECT_EQ(shell.Requests().size(), 0U);
}

class CopyDirToChild : public ::testing::Test {};

// Exits with 1 for true; the lengths stand in the environment.
TEST_F(CopyDirToChild, DISABLED_CopiesPathsOfTheGivenLengths) {
  const auto path = [](const char* variable) {
    return std::wstring(std::strtoul(std::getenv(variable), nullptr, 10), L'n');
  };
  const WideShellStandIn shell;
  const bool copied = CopyDirTo(path("KVUTILS_SOURCE_LENGTH"), path("KVUTILS_TARGET_LENGTH"));
  std::exit(copied && shell.Requests().size() == 1 ? 1 : 2);
}

TEST_F(CopyingFolders, CopyDirToEndsTheProcessForPathsBeyond259Units) {
  struct Case {
    const char* source;
    const char* target;
    unsigned long exitCode;
  };
  for (const Case& row :
       {Case{"257", "10", 1}, Case{"258", "10", 0xC0000417}, Case{"10", "259", 1},
        Case{"10", "260", 0xC0000417}, Case{"257", "259", 1}, Case{"100000", "100000", 0xC0000417},
        Case{"0", "260", 0xC0000417}, Case{"258", "0", 0xC0000417}}) {
    SCOPED_TRACE(std::string(row.source) + " to " + row.target);
    kv::test::SetEnvironment("KVUTILS_SOURCE_LENGTH", row.source);
    kv::test::SetEnvironment("KVUTILS_TARGET_LENGTH", row.target);
    const auto child = kv::test::RunOwnCase("CopyDirToChild.DISABLED_CopiesPathsOfTheGivenLengths");
    EXPECT_EQ(child.exitCode, row.exitCode);
  }
}

TEST_F(CopyingFolders, CopyDirToCopiesATree) {
  Give("s\\a.txt", "a");
  Give("s\\sub\\deeper\\b.txt", "b");
  CreateFolders(Below("s\\empty"));
  Give("s\\hidden.txt", "hidden");
  kv::test::SetHidden(Below("s\\hidden.txt"));
  Give("s\\readonly.txt", "readonly");
  kv::test::SetReadOnly(Below("s\\readonly.txt"), true);
  Give("s\\no extension", "");
  Give("s\\Каталог\\Луна.txt", "Луна");
  Give("s\\天文データ\\月.txt", "月");
  Give("s\\🌍\\🌍.txt", "🌍");
  const Texts source = ListTree(Below("s"));
  ASSERT_EQ(source.size(), 14U);
  EXPECT_TRUE(CopyTree("s", "t"));
  EXPECT_EQ(ListTree(Below("t")), source);
  EXPECT_EQ(ListTree(Below("s")), source);
  EXPECT_EQ(Content("t\\sub\\deeper\\b.txt"), "b");
  EXPECT_EQ(Content("t\\🌍\\🌍.txt"), "🌍");
  EXPECT_EQ(Content("t\\天文データ\\月.txt"), "月");
}

TEST_F(CopyingFolders, CopyDirToReplacesWhatIsThere) {
  Give("s\\a.txt", "new");
  Give("s\\sub\\b.txt", "new");
  Give("s\\readonly.txt", "new");
  Give("t\\a.txt", "old and longer");
  Give("t\\sub\\b.txt", "old");
  Give("t\\readonly.txt", "old");
  kv::test::SetReadOnly(Below("t\\readonly.txt"), true);
  Give("t\\own.txt", "own");
  EXPECT_TRUE(CopyTree("s", "t"));
  EXPECT_EQ(ListTree(Below("t")),
            (Texts{"a.txt", "own.txt", "readonly.txt", "sub\\", "sub\\b.txt"}));
  EXPECT_EQ(Content("t\\a.txt"), "new");
  EXPECT_EQ(Content("t\\sub\\b.txt"), "new");
  EXPECT_EQ(Content("t\\own.txt"), "own");
}

// Two files: Wine's shell takes a missing target for the new name of a single one.
TEST_F(CopyingFolders, CopyDirToMakesTheFoldersOfTheTarget) {
  Give("s\\a.txt", "a");
  Give("s\\b.txt", "b");
  EXPECT_TRUE(CopyTree("s", "t\\x\\y"));
  EXPECT_EQ(ListTree(Below("t")), (Texts{"x\\", "x\\y\\", "x\\y\\a.txt", "x\\y\\b.txt"}));
}

TEST_F(CopyingFolders, CopyDirToCopiesFoldersOfAnyScript) {
  for (const std::string& name : kv::test::kFolderNames) {
    SCOPED_TRACE(name);
    Give(name + "\\" + name, name);
    CreateFolders(Below("t " + name));
    EXPECT_TRUE(CopyTree(name, "t " + name));
    EXPECT_EQ(ListTree(Below("t " + name)), Texts{name});
  }
}

TEST_F(CopyingFolders, CopyDirToCopiesThousandsOfFiles) {
  for (int i = 0; i < 3000; ++i) Give("s\\" + std::to_string(i % 3) + "\\" + std::to_string(i), "");
  const Texts source = ListTree(Below("s"));
  EXPECT_TRUE(CopyTree("s", "t"));
  EXPECT_EQ(ListTree(Below("t")), source);
  EXPECT_EQ(source.size(), 3003U);
}

TEST_F(CopyingFolders, CopyDirToOfAMissingFolderMakesNothing) {
  Give("file", "no folder");
  Give("t\\own.txt", "own");
  const Texts before = ListTree(Root());
  CopyTree("missing", "t");
  CopyTree("missing", "t2");
  CopyTree("file", "t2");
  EXPECT_EQ(ListTree(Root()), before);
}

TEST_F(CopyingFolders, CopyDirToAFileFails) {
  Give("s\\a.txt", "a");
  Give("s\\b.txt", "b");
  Give("file", "no folder");
  EXPECT_FALSE(CopyTree("s", "file"));
  EXPECT_EQ(Content("file"), "no folder");
}

TEST_F(CopyingFolders, CopyDirToLeavesAFileInOtherHands) {
  Give("s\\a.txt", "new a");
  Give("s\\b.txt", "new b");
  Give("t\\a.txt", "a");
  Give("t\\b.txt", "b");
  const HeldFile held(Below("t\\a.txt"));
  CopyTree("s", "t");
  EXPECT_EQ(Content("t\\a.txt"), "a");
}

// ---- CopyFilesFromList
// ---------------------------------------------------------------------------

class CopyingFiles : public CopyingFolders {};

TEST_F(CopyingFiles, GoesAsFarAsBothListsGo) {
  Give("s\\1", "one");
  Give("s\\2", "two");
  Give("s\\3", "three");
  CreateFolders(Below("t"));
  const Texts sources = {Below("s\\1"), Below("s\\2"), Below("s\\3")};
  CopyFilesFromList(sources, Texts{Below("t\\a"), Below("t\\b")});
  EXPECT_EQ(ListTree(Below("t")), (Texts{"a", "b"}));
  EXPECT_EQ(Content("t\\a"), "one");
  EXPECT_EQ(Content("t\\b"), "two");
  CopyFilesFromList(Texts{Below("s\\3")}, Texts{Below("t\\c"), Below("t\\d")});
  EXPECT_EQ(ListTree(Below("t")), (Texts{"a", "b", "c"}));
  EXPECT_EQ(Content("t\\c"), "three");
  CopyFilesFromList(sources, Texts{});
  CopyFilesFromList(Texts{}, sources);
  CopyFilesFromList(Texts{}, Texts{});
  EXPECT_EQ(ListTree(Below("t")), (Texts{"a", "b", "c"}));
  EXPECT_EQ(Content("s\\1"), "one");
}

TEST_F(CopyingFiles, ReplacesWhatIsThere) {
  Give("s\\1", "new");
  Give("t\\1", "old and longer");
  CopyFilesFromList(Texts{Below("s\\1")}, Texts{Below("t\\1")});
  EXPECT_EQ(Content("t\\1"), "new");
}

TEST_F(CopyingFiles, PassesOverWhatCannotBeCopied) {
  Give("s\\1", "one");
  Give("s\\2", "two");
  CreateFolders(Below("t"));
  CreateFolders(Below("folder"));
  const std::string tooLong = Below("t\\" + std::string(300, 'n'));
  const Texts sources = {
      Below("missing"), Below("s\\1"), "",      Below("s\\1"), Below("\xFF"), Below("s\\1"),
      Below("s"),       Below("s\\1"), tooLong, Below("s\\1"), Below("s\\1"), Below("s\\2")};
  const Texts targets = {
      Below("t\\a"), Below("missing\\b"), Below("t\\c"), "",      Below("t\\e"), Below("t\\\xC3"),
      Below("t\\g"), Below("folder"),     Below("t\\i"), tooLong, "\x80",        Below("t\\last")};
  ASSERT_EQ(sources.size(), targets.size());
  CopyFilesFromList(sources, targets);
  EXPECT_EQ(ListTree(Below("t")), Texts{"last"});
  EXPECT_FALSE(FolderExists(Below("missing")));
  EXPECT_EQ(ListTree(Work() + "."), Texts{});
}

TEST_F(CopyingFiles, LeavesFilesInOtherHands) {
  Give("s\\1", "one");
  Give("s\\2", "two");
  Give("t\\1", "old");
  const HeldFile held(Below("t\\1"));
  CopyFilesFromList(Texts{Below("s\\1"), Below("s\\2")}, Texts{Below("t\\1"), Below("t\\2")});
  EXPECT_EQ(Content("t\\1"), "old");
  EXPECT_EQ(Content("t\\2"), "two");
}

TEST_F(CopyingFiles, CopiesInAnyScript) {
  for (const std::string& name : kv::test::kFolderNames) {
    SCOPED_TRACE(name);
    Give("s\\" + name, name);
    CreateFolders(Below("t " + name));
    CopyFilesFromList(Texts{Below("s\\" + name)}, Texts{Below("t " + name + "\\" + name)});
    EXPECT_EQ(Content("t " + name + "\\" + name), name);
    CopyFilesFromList(Texts{name}, Below("s").c_str(), Below("u " + name).c_str());
    EXPECT_EQ(Content("u " + name + "\\" + name), name);
  }
}

TEST_F(CopyingFiles, ByNameMakesTheFoldersOfBothSides) {
  Give("s\\1", "one");
  Give("s\\2", "two");
  Give("s\\sub\\3", "three");
  Give("t\\1", "old");
  CopyFilesFromList(Texts{"1", "sub\\3", "sub2/4", "2"}, Below("s").c_str(), Below("t").c_str());
  EXPECT_EQ(ListTree(Below("t")), (Texts{"1", "2", "sub2\\", "sub\\", "sub\\3"}));
  EXPECT_EQ(ListTree(Below("s")), (Texts{"1", "2", "sub2\\", "sub\\", "sub\\3"}));
  EXPECT_EQ(Content("t\\1"), "one");
  EXPECT_EQ(Content("t\\2"), "two");
  EXPECT_EQ(Content("t\\sub\\3"), "three");
  CopyFilesFromList(Texts{"1"}, Below("new\\source").c_str(), Below("new\\target").c_str());
  EXPECT_EQ(ListTree(Below("new")), (Texts{"source\\", "target\\"}));
}

TEST_F(CopyingFiles, ByNamePassesOverWhatCannotBeCopied) {
  Give("s\\1", "one");
  Give("s\\sub\\2", "two");
  Give("t\\1", "old");
  kv::test::SetReadOnly(Below("t\\1"), true);
  CopyFilesFromList(Texts{"missing", "1", "", "\xFF", "sub", std::string(300, 'n'), "sub\\2"},
                    Below("s").c_str(), Below("t").c_str());
  EXPECT_EQ(ListTree(Below("t")), (Texts{"1", "sub\\", "sub\\2"}));
  EXPECT_EQ(Content("t\\1"), "old");
}

TEST_F(CopyingFiles, ByNameOfNoFolderDoesNothing) {
  Give("s\\1", "one");
  Give("work\\1", "one");
  const Texts before = ListTree(Root());
  const std::string source = Below("s");
  const std::string malformed = Below("new\\\xFF");
  const std::string tooLong = Below("new\\" + std::string(300, 'n'));
  for (const char* folder :
       {"", static_cast<const char*>(nullptr), malformed.c_str(), tooLong.c_str()}) {
    CopyFilesFromList(Texts{"1", "new\\1"}, source.c_str(), folder);
    CopyFilesFromList(Texts{"1", "new\\1"}, folder, Below("t").c_str());
  }
  CopyFilesFromList(Texts{}, Below("new").c_str(), Below("t").c_str());
  EXPECT_EQ(ListTree(Root()), before);
}

// The folder, "\" and the name together.
TEST_F(CopyingFiles, ByNameTakesPathsOfUpTo259Bytes) {
  Give("s\\1", "one");
  const std::string target = Below("t");
  const std::string longest(259 - target.size() - 1, 'n');
  Give("s\\" + longest, "longest");
  Give("s\\" + longest + "n", "too long");
  CopyFilesFromList(Texts{longest + "n"}, Below("s").c_str(), target.c_str());
  EXPECT_FALSE(FolderExists(target));
  CopyFilesFromList(Texts{longest}, Below("s").c_str(), target.c_str());
  EXPECT_EQ(ListTree(target), Texts{longest});
}

}  // namespace
