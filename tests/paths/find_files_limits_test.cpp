// Where a search ends: the lengths of paths that it takes, and those that end the process.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "tests/paths/listing_stand_in.h"
#include "tests/support/process.h"
#include "tests/support/sandbox.h"
#include "utils/paths/paths.h"

namespace {

using kv::test::ListingStandIn;
using kv::test::RunOwnCase;
using kv::test::SetEnvironment;
using kv::test::WriteBytes;

class FindingFilesLimits : public kv::test::Sandbox {
 protected:
  FindingFilesLimits() : folder_(Root() + "u\\") { kv::test::CreateFolders(Root() + "u"); }
  const std::string& Folder() const { return folder_; }

 private:
  std::string folder_;
};

// A deeper folder is out of the system's reach, even where this one would list it.
TEST_F(FindingFilesLimits, ListsNoFolderWhosePatternIsLongerThan259Units) {
  for (const int length : {259, 260}) {
    SCOPED_TRACE(length);
    const ListingStandIn listing({{L"a.bin", FILE_ATTRIBUTE_DIRECTORY}});
    const std::string source = "C:\\" + std::string(static_cast<std::size_t>(length) - 7, 'n');
    FindFiles found(source.c_str(), "*.bin");
    found.Run(false);
    EXPECT_EQ(listing.Patterns().size(), length == 259 ? 1U : 0U);
  }
}

TEST_F(FindingFilesLimits, CountUnitsInPatternsAndNotBytes) {
  for (const int length : {259, 260}) {
    SCOPED_TRACE(length);
    const ListingStandIn listing({{L"sub", FILE_ATTRIBUTE_DIRECTORY}});
    std::string source = "C:\\";
    for (int i = 7; i < length; ++i) source += "ж";
    FindFiles found(source.c_str(), "*.bin");
    found.Run(false);
    EXPECT_EQ(listing.Patterns().size(), length == 259 ? 1U : 0U);
  }
}

TEST_F(FindingFilesLimits, DescendBeyond260Bytes) {
  const ListingStandIn listing({{L"sub", FILE_ATTRIBUTE_DIRECTORY}});
  std::string source = "C:\\";
  for (int i = 0; i < 130; ++i) source += "ж";
  FindFiles found(source.c_str(), "*.bin");
  found.Run(true);
  EXPECT_EQ(found.GetNumberFiles(), 0U);
  EXPECT_EQ(listing.Patterns(),
            (std::vector<std::wstring>{kv::test::Widen(source) + L"\\*.*",
                                       kv::test::Widen(source) + L"\\sub\\*.*"}));
}

// A second process makes the search. Its folder comes through the environment.

constexpr char kFolderVariable[] = "KVUTILS_TEST_FOLDER";
constexpr unsigned long kRangeCheckFailure = 0xC0000409;

class FindingFilesChild : public ::testing::Test {};

void SearchInChild(bool recursive, const char* mask) {
  FindFiles found(kv::test::Environment(kFolderVariable).c_str(), mask);
  found.Run(recursive);
  std::exit(static_cast<int>(found.GetNumberFiles()));
}

TEST_F(FindingFilesChild, DISABLED_Searches) { SearchInChild(false, "*.bin"); }
TEST_F(FindingFilesChild, DISABLED_SearchesSubfolders) { SearchInChild(true, "*.bin"); }
TEST_F(FindingFilesChild, DISABLED_SearchesForTexts) { SearchInChild(true, "*.txt"); }

// The entry alone is too long: 86 characters of three bytes and two of one are 260.
TEST_F(FindingFilesChild, DISABLED_MeetsASubfolderOfALongName) {
  const ListingStandIn listing({{std::wstring(86, L'\x6708') + L"aa", FILE_ATTRIBUTE_DIRECTORY}});
  SearchInChild(true, "*.bin");
}
TEST_F(FindingFilesChild, DISABLED_ListsASubfolderOfALongName) {
  const ListingStandIn listing({{std::wstring(86, L'\x6708') + L"aa", FILE_ATTRIBUTE_DIRECTORY}});
  SearchInChild(false, "*.bin");
}
TEST_F(FindingFilesChild, DISABLED_MeetsASubfolderOf259Bytes) {
  const ListingStandIn listing({{std::wstring(86, L'\x6708') + L"a", FILE_ATTRIBUTE_DIRECTORY}});
  SearchInChild(true, "*.bin");
}

// A name of Cyrillic letters, two bytes each, that makes a path below `folder` as long as `bytes`.
std::string NameFor(const std::string& folder, std::size_t bytes) {
  const std::size_t left = bytes - folder.size() - 4;
  std::string name(left % 2, 'x');
  while (name.size() < left) name += "ж";
  return name + ".bin";
}

TEST_F(FindingFilesLimits, APathOf260BytesEndsTheProcess) {
  SetEnvironment(kFolderVariable, Folder());
  WriteBytes(Folder() + "short.bin", "content");
  const std::string fits = Folder() + NameFor(Folder(), 259);
  WriteBytes(fits, "content");
  ASSERT_EQ(fits.size(), 259U);
  EXPECT_EQ(RunOwnCase("FindingFilesChild.DISABLED_Searches").exitCode, 2U);
  const std::string tooLong = Folder() + NameFor(Folder(), 260);
  WriteBytes(tooLong, "content");
  ASSERT_EQ(tooLong.size(), 260U);
  EXPECT_EQ(RunOwnCase("FindingFilesChild.DISABLED_Searches").exitCode, kRangeCheckFailure);
  EXPECT_EQ(RunOwnCase("FindingFilesChild.DISABLED_SearchesForTexts").exitCode, 0U);
}

TEST_F(FindingFilesLimits, APathOf260BytesInASubfolderEndsTheProcess) {
  const std::string sub = Folder() + "sub\\";
  SetEnvironment(kFolderVariable, Folder());
  WriteBytes(sub + NameFor(sub, 259), "content");
  EXPECT_EQ(RunOwnCase("FindingFilesChild.DISABLED_SearchesSubfolders").exitCode, 1U);
  WriteBytes(sub + NameFor(sub, 260), "content");
  EXPECT_EQ(RunOwnCase("FindingFilesChild.DISABLED_SearchesSubfolders").exitCode,
            kRangeCheckFailure);
  EXPECT_EQ(RunOwnCase("FindingFilesChild.DISABLED_Searches").exitCode, 0U);
}

TEST_F(FindingFilesLimits, ASubfolderNameOf260BytesEndsTheProcess) {
  SetEnvironment(kFolderVariable, "C:\\u");
  EXPECT_EQ(RunOwnCase("FindingFilesChild.DISABLED_MeetsASubfolderOfALongName").exitCode,
            kRangeCheckFailure);
  EXPECT_EQ(RunOwnCase("FindingFilesChild.DISABLED_ListsASubfolderOfALongName").exitCode, 0U);
  EXPECT_EQ(RunOwnCase("FindingFilesChild.DISABLED_MeetsASubfolderOf259Bytes").exitCode, 0U);
}

}  // namespace
