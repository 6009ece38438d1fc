#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/paths/find_files_fixture.h"
#include "tests/paths/listing_stand_in.h"
#include "tests/paths/test_drive.h"

namespace {

using kv::test::CreateFolders;
using kv::test::FindingFiles;
using kv::test::ListingStandIn;
using kv::test::TestDrive;
using kv::test::WriteBytes;

// Four texts, the list, and two flags.
static_assert(sizeof(FindFiles) == 4 * sizeof(std::string) + sizeof(std::vector<std::string>) + 8);
static_assert(!std::is_polymorphic_v<FindFiles>);

std::string OutOfRangeText(FindFiles& found, unsigned int index, bool target) {
  try {
    target ? found.GetTargetFile(index) : found.GetSourceFile(index);
  } catch (const std::out_of_range& error) {
    return error.what();
  }
  return "(nothing thrown)";
}

TEST_F(FindingFiles, GoesByTheTextBehindTheFirstDot) {
  for (const char* name : {"a.BIN", "b.bin", "c.bin.bak", "d", ".bin", "x.tar.gz", "Ж.ФАЙЛ",
                           "sub\\inner.bin", "sub.bin\\deep"}) {
    Give(name);
  }
  const Texts everything = {".bin", "a.BIN",   "b.bin",    "c.bin.bak", "d",
                            "sub",  "sub.bin", "x.tar.gz", "Ж.ФАЙЛ"};
  struct Case {
    const char* mask;
    Texts found;
  };
  const std::vector<Case> cases = {
      {"*.bin", {".bin", "a.BIN", "b.bin"}},
      {"*.BiN", {".bin", "a.BIN", "b.bin"}},
      {"bin", {".bin", "a.BIN", "b.bin"}},
      {".bin", {".bin", "a.BIN", "b.bin"}},
      {"zzz.bin", {".bin", "a.BIN", "b.bin"}},
      {"?.bin", {".bin", "a.BIN", "b.bin"}},
      {"*.bin.bak", {"c.bin.bak"}},
      {"*.bak", {}},
      {"*.bi", {}},
      {"*.binn", {}},
      {"*.tar.gz", {"x.tar.gz"}},
      {"*.gz", {}},
      {"*.tar", {}},
      {"*.файл", {"Ж.ФАЙЛ"}},
      {"*.", {"d"}},
      {".", {"d"}},
      {"", {"d"}},
      {nullptr, {"d"}},
      {"*", {}},
      {"d", {}},
      {"*.*", everything},
      {"*.*.*", {}},
      {"*.**", {}},
      {".*", {}},
      {"**.*", {}},
      {"*.\xFF", {}},
      {"*.\xC3", {}},
      {"*.b?n", {}},
      {"\xFF.bin", {".bin", "a.BIN", "b.bin"}},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.mask == nullptr ? "(null)" : row.mask);
    FindFiles found(Folder().c_str(), row.mask);
    EXPECT_EQ(found.GetNumberFiles(), 0U);
    found.Run(false);
    EXPECT_EQ(Found(found, Folder()), row.found);
    FindFiles withTarget(Folder().c_str(), "D:\\t", row.mask);
    withTarget.Run(false);
    EXPECT_EQ(Found(withTarget, Folder()), row.found);
  }
}

TEST_F(FindingFiles, DescendsIntoSubfoldersOnDemand) {
  for (const char* name : {"a.bin", "b.txt", "plain", "sub\\c.bin", "sub\\deeper\\d.bin",
                           "sub\\deeper\\e.txt", "x.bin\\f.bin", "x.bin\\plain"}) {
    Give(name);
  }
  CreateFolders(Folder() + "empty\\emptier");
  struct Case {
    const char* mask;
    bool recursive;
    Texts found;
  };
  const std::vector<Case> cases = {
      {"*.bin", true, {"a.bin", "sub\\c.bin", "sub\\deeper\\d.bin", "x.bin\\f.bin"}},
      {"*.bin", false, {"a.bin"}},
      {"*.*",
       true,
       {"a.bin", "b.txt", "plain", "sub\\c.bin", "sub\\deeper\\d.bin", "sub\\deeper\\e.txt",
        "x.bin\\f.bin", "x.bin\\plain"}},
      {"*.*", false, {"a.bin", "b.txt", "empty", "plain", "sub", "x.bin"}},
      {"*.", true, {"plain", "x.bin\\plain"}},
      {"*.", false, {"plain"}},
      {"*.none", true, {}},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(std::string(row.mask) + (row.recursive ? " with subfolders" : ""));
    FindFiles found(Folder().c_str(), row.mask);
    found.Run(row.recursive);
    EXPECT_EQ(Found(found, Folder()), row.found);
  }
}

TEST_F(FindingFiles, KeepsTheOrderOfTheFileSystem) {
  for (int i = 0; i < 40; ++i) Give(std::to_string(i * 7919 % 1000) + ".bin");
  Texts expected;
  WIN32_FIND_DATAW data;
  const HANDLE listing = ::FindFirstFileW(kv::test::Widen(Folder() + "*").c_str(), &data);
  do {
    const std::string name = kv::test::Narrow(data.cFileName);
    if (name[0] != '.') expected.push_back(Folder() + name);
  } while (::FindNextFileW(listing, &data));
  ::FindClose(listing);

  FindFiles found(Folder().c_str(), "*.bin");
  found.Run(false);
  EXPECT_EQ(found.GetNumberFiles(), 40U);
  EXPECT_EQ(SourcesInOrder(found), expected);
}

TEST_F(FindingFiles, SearchesASubfolderWhenItIsMet) {
  const ListingStandIn listing({{L".", FILE_ATTRIBUTE_DIRECTORY},
                                {L"..", FILE_ATTRIBUTE_DIRECTORY},
                                {L"a.bin", FILE_ATTRIBUTE_NORMAL},
                                {L"sub", FILE_ATTRIBUTE_DIRECTORY},
                                {L"b.bin", FILE_ATTRIBUTE_NORMAL}});
  FindFiles found("C:\\u", "*.bin");
  found.Run(true);
  EXPECT_EQ(SourcesInOrder(found), (Texts{"C:\\u\\a.bin", "C:\\u\\b.bin"}));
  EXPECT_EQ(listing.Patterns(), (std::vector<std::wstring>{L"C:\\u\\*.*", L"C:\\u\\sub\\*.*"}));
  EXPECT_EQ(listing.Closed(), 1);
}

TEST_F(FindingFiles, ListsFilesOfASubfolderTogether) {
  for (const char* name : {"a.bin", "m\\1.bin", "m\\2.bin", "m\\n\\3.bin", "z.bin"}) Give(name);
  FindFiles found(Folder().c_str(), "*.bin");
  found.Run(true);
  const Texts paths = SourcesInOrder(found);
  ASSERT_EQ(paths.size(), 5U);
  const auto isBelowM = [this](const std::string& path) {
    return path.find(Folder() + "m\\") == 0;
  };
  const auto first = std::find_if(paths.begin(), paths.end(), isBelowM);
  ASSERT_LE(first - paths.begin(), 2);
  EXPECT_TRUE(std::all_of(first, first + 3, isBelowM));
}

TEST_F(FindingFiles, ASecondRunAppends) {
  Give("a.bin");
  Give("b.bin");
  Give("sub\\c.bin");
  FindFiles found(Folder().c_str(), "*.bin");
  found.Run(false);
  found.Run(false);
  EXPECT_EQ(Found(found, Folder()), (Texts{"a.bin", "a.bin", "b.bin", "b.bin"}));
  found.Run(true);
  EXPECT_EQ(found.GetNumberFiles(), 7U);
  found.Run(false);
  EXPECT_EQ(found.GetNumberFiles(), 9U);
}

TEST_F(FindingFiles, TakesTheFolderWithAndWithoutItsSeparator) {
  Give("a.bin");
  for (const std::string& source : {Root() + "u", Root() + "u\\"}) {
    SCOPED_TRACE(source);
    FindFiles found(source.c_str(), "*.bin");
    found.Run(false);
    ASSERT_EQ(found.GetNumberFiles(), 1U);
    EXPECT_EQ(found.GetSourceFile(0), Folder() + "a.bin");
  }
  FindFiles relative("..\\u", "*.bin");
  relative.Run(false);
  ASSERT_EQ(relative.GetNumberFiles(), 1U);
  EXPECT_STREQ(relative.GetSourceFile(0), "..\\u\\a.bin");
}

TEST_F(FindingFiles, FindsHiddenReadOnlyAndEmptyFiles) {
  Give("hidden.bin");
  kv::test::SetHidden(Folder() + "hidden.bin");
  Give("readonly.bin");
  kv::test::SetReadOnly(Folder() + "readonly.bin", true);
  WriteBytes(Folder() + "empty.bin", "");
  Give("sub\\inner.bin");
  kv::test::SetHidden(Folder() + "sub");
  FindFiles found(Folder().c_str(), "*.bin");
  found.Run(true);
  EXPECT_EQ(Found(found, Folder()),
            (Texts{"empty.bin", "hidden.bin", "readonly.bin", "sub\\inner.bin"}));
}

TEST_F(FindingFiles, FindsSystemFilesAndFolders) {
  const ListingStandIn listing(
      {{L"sub", FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_DIRECTORY},
       {L"a.bin", FILE_ATTRIBUTE_SYSTEM},
       {L"b.bin", FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_READONLY}});
  FindFiles found("C:\\u", "*.bin");
  found.Run(true);
  EXPECT_EQ(SourcesInOrder(found), (Texts{"C:\\u\\a.bin", "C:\\u\\b.bin"}));
  EXPECT_EQ(listing.Patterns().size(), 2U);
}

TEST_F(FindingFiles, FindsNothingWhereNothingCanBeListed) {
  Give("file.bin");
  const std::string tooLong = Folder() + std::string(300, 'n');
  const std::string farTooLong = Folder() + std::string(100'000, 'n');
  for (const std::string& source :
       {Root() + "missing", Folder() + "file.bin", std::string("Q:\\nowhere"), Folder() + "\xFF",
        Folder() + "a\xC3", tooLong, farTooLong, std::string("*"), std::string("?")}) {
    SCOPED_TRACE(source.substr(0, 100));
    FindFiles found(source.c_str(), "*.*");
    found.Run(true);
    found.Run(false);
    EXPECT_EQ(found.GetNumberFiles(), 0U);
  }
}

TEST_F(FindingFiles, AnEmptyFolderIsTheRootOfTheCurrentDrive) {
  WriteBytes(Root() + "drive\\root.bin", "content");
  WriteBytes(Root() + "drive\\here\\below.bin", "content");
  const TestDrive drive('S', Root() + "drive");
  ASSERT_TRUE(drive.Exists()) << "needs drives that are links";
  kv::test::SetCurrentFolder(drive.Root() + "here");
  for (const char* source : {"", "\\", static_cast<const char*>(nullptr)}) {
    FindFiles found(source, "*.bin");
    found.Run(false);
    EXPECT_EQ(SourcesInOrder(found), Texts{"\\root.bin"});
  }
  kv::test::SetCurrentFolder(Work());
}

TEST_F(FindingFiles, MapsFilesToTheTargetFolder) {
  Give("sub\\x.bin");
  struct Case {
    const char* target;
    const char* mapped;
  };
  for (const Case& row : {Case{"D:\\t", "D:\\t\\sub\\x.bin"}, Case{"D:\\t\\", "D:\\t\\sub\\x.bin"},
                          Case{"t", "t\\sub\\x.bin"}, Case{"Цель", "Цель\\sub\\x.bin"},
                          Case{"D:\\t/", "D:\\t/\\sub\\x.bin"}, Case{"", "\\sub\\x.bin"},
                          Case{nullptr, "sub\\x.bin"}}) {
    SCOPED_TRACE(row.mapped);
    for (const std::string& source : {Root() + "u", Root() + "u\\"}) {
      FindFiles found(source.c_str(), row.target, "*.bin");
      found.Run(true);
      ASSERT_EQ(found.GetNumberFiles(), 1U);
      EXPECT_EQ(found.GetSourceFile(0), Folder() + "sub\\x.bin");
      EXPECT_STREQ(found.GetTargetFile(0), row.mapped);
    }
  }
  FindFiles withoutTarget(Folder().c_str(), "*.bin");
  withoutTarget.Run(true);
  ASSERT_EQ(withoutTarget.GetNumberFiles(), 1U);
  EXPECT_STREQ(withoutTarget.GetTargetFile(0), "sub\\x.bin");
}

TEST_F(FindingFiles, EachFileHasItsOwnTarget) {
  Give("a.bin");
  Give("b.bin");
  FindFiles found(Folder().c_str(), "D:\\t", "*.bin");
  found.Run(false);
  Texts targets;
  for (unsigned int i = 0; i < found.GetNumberFiles(); ++i) {
    targets.emplace_back(found.GetTargetFile(i));
    EXPECT_EQ(targets.back().substr(5),
              std::string(found.GetSourceFile(i)).substr(Folder().size()));
  }
  std::sort(targets.begin(), targets.end());
  EXPECT_EQ(targets, (Texts{"D:\\t\\a.bin", "D:\\t\\b.bin"}));
}

TEST_F(FindingFiles, AnIndexBeyondTheListIsOutOfRange) {
  Give("a.bin");
  FindFiles found(Folder().c_str(), "D:\\t", "*.bin");
  for (const bool target : {false, true}) {
    EXPECT_EQ(OutOfRangeText(found, 0, target), "invalid vector subscript");
  }
  found.Run(false);
  for (const bool target : {false, true}) {
    EXPECT_EQ(OutOfRangeText(found, 0, target), "(nothing thrown)");
    EXPECT_EQ(OutOfRangeText(found, 1, target), "invalid vector subscript");
    EXPECT_EQ(OutOfRangeText(found, 0x7FFFFFFF, target), "invalid vector subscript");
    EXPECT_EQ(OutOfRangeText(found, 0xFFFFFFFF, target), "invalid vector subscript");
  }
  EXPECT_STREQ(found.GetTargetFile(0), "D:\\t\\a.bin");
}

TEST_F(FindingFiles, CopiesAreSearchesOfTheirOwn) {
  Give("a.bin");
  FindFiles found(Folder().c_str(), "D:\\t", "*.bin");
  found.Run(false);
  FindFiles copy(found);
  FindFiles assigned("C:\\", "*.txt");
  assigned = found;
  found.Run(false);
  EXPECT_EQ(found.GetNumberFiles(), 2U);
  for (FindFiles* other : {&copy, &assigned}) {
    ASSERT_EQ(other->GetNumberFiles(), 1U);
    EXPECT_STREQ(other->GetTargetFile(0), "D:\\t\\a.bin");
    other->Run(false);
    EXPECT_EQ(other->GetNumberFiles(), 2U);
  }
}

TEST_F(FindingFiles, FindsThousandsOfFiles) {
  for (int folder = 0; folder < 5; ++folder) {
    for (int i = 0; i < 1000; ++i) {
      WriteBytes(Folder() + std::to_string(folder) + "\\" + std::to_string(i) + ".bin", "");
    }
  }
  FindFiles found(Folder().c_str(), "*.bin");
  found.Run(true);
  const Texts names = Found(found, Folder());
  EXPECT_EQ(names.size(), 5000U);
  EXPECT_EQ(std::adjacent_find(names.begin(), names.end()), names.end());
}

}  // namespace
