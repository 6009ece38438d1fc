// What the functions that delete leave alone: roots, and what is named by nothing or in no way that
// they take.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "tests/paths/listing_stand_in.h"
#include "tests/paths/shell_stand_in.h"
#include "tests/paths/test_drive.h"
#include "tests/support/sandbox.h"
#include "utils/paths/paths.h"

namespace {

using kv::test::ListTree;
using kv::test::TestDrive;
using kv::test::Widen;
using kv::test::WideShellStandIn;
using kv::test::WriteBytes;

using Texts = std::vector<std::string>;

class DeletingFoldersBounds : public kv::test::Sandbox {
 protected:
  std::string Below(const std::string& name) const { return Root() + name; }
  void Give(const std::string& name) { WriteBytes(Root() + name, "content"); }
};

TEST_F(DeletingFoldersBounds, HoldForPathsThatNameNothingOrARoot) {
  const WideShellStandIn shell;
  for (const char* path : {
           // Nothing.
           static_cast<const char*>(nullptr),
           "",
           "\x80",
           "C:\\\xFF",
           "C:\\a\xC3",
           "C:\\d\\\xE5\xA4",
           // Drives.
           "\\",
           "\\\\",
           "/",
           "//",
           "\\..",
           "\\.\\",
           "/.",
           "/..",
           "C:",
           "C:\\",
           "C:/",
           "C:\\\\",
           "C:\\.",
           "C:\\..",
           "C:/./",
           "C:\\a\\..",
           "C:\\a\\..\\",
           "c:\\..\\..\\",
           "\\\\?\\C:",
           "\\\\?\\C:\\",
           "\\\\.\\C:",
           "\\\\.\\C:\\",
           // Shares.
           "\\\\server",
           "\\\\server\\",
           "\\\\server\\share",
           "\\\\server\\share\\",
           "\\\\server\\share\\.",
           "\\\\server\\share\\..",
           "\\\\server\\share\\d\\..",
           "//server/share",
           "//server/share/",
           "\\\\?\\UNC",
           "\\\\?\\UNC\\server",
           "\\\\?\\UNC\\server\\share",
           "\\\\?\\UNC\\server\\share\\",
           "\\\\?\\unc\\server\\share",
           "\\\\.\\UNC\\server\\share",
           // Volumes and devices.
           "\\\\?",
           "\\\\?\\",
           "\\\\.",
           "\\\\.\\",
           "\\\\?\\Volume{01234567-89ab-cdef-0123-456789abcdef}",
           "\\\\?\\Volume{01234567-89ab-cdef-0123-456789abcdef}\\",
           "\\\\.\\PhysicalDrive0",
           "\\\\.\\NUL",
           "NUL",
           "C:\\NUL",
       }) {
    SCOPED_TRACE(path == nullptr ? "(null)" : path);
    DeleteFolder(path);
    EXPECT_EQ(shell.Requests().size(), 0U);
  }
}

TEST_F(DeletingFoldersBounds, EndBehindARoot) {
  for (const char* path :
       {"C:\\d", "\\d", "\\\\server\\share\\d", "//server/share/d", "\\\\?\\C:\\d", "\\\\.\\C:\\d",
        "\\\\?\\UNC\\server\\share\\d", "\\\\?\\Volume{01234567-89ab-cdef-0123-456789abcdef}\\d"}) {
    SCOPED_TRACE(path);
    const WideShellStandIn shell;
    DeleteFolder(path);
    ASSERT_EQ(shell.Requests().size(), 1U);
    EXPECT_EQ(shell.Requests()[0].from, Widen(path) + L'\0');
  }
}

TEST_F(DeletingFoldersBounds, HoldForEmptyNamesOnADrive) {
  WriteBytes(Root() + "drive\\root.txt", "content");
  WriteBytes(Root() + "drive\\here\\below.txt", "content");
  WriteBytes(Root() + "drive\\here\\sub\\deeper.txt", "content");
  const Texts before = ListTree(Root() + "drive");
  const TestDrive drive('X', Root() + "drive");
  ASSERT_TRUE(drive.Exists()) << "needs drives that are links";
  kv::test::SetCurrentFolder(drive.Root() + "here");
  for (const char* path : {"", "\\", "\\\\", "/", "X:", "X:\\", "X:/", "X:\\here\\..", "..",
                           static_cast<const char*>(nullptr)}) {
    SCOPED_TRACE(path == nullptr ? "(null)" : path);
    DeleteFolder(path);
    EXPECT_EQ(ListTree(Root() + "drive"), before);
  }
  for (const char* path : {"", static_cast<const char*>(nullptr)}) {
    for (const char* mask : {"*.*", "*", "*.txt", "root.txt", "below.txt", "", "\\"}) {
      SCOPED_TRACE(mask);
      DeleteFolder(path, mask);
      EXPECT_EQ(ListTree(Root() + "drive"), before);
    }
  }
  kv::test::SetCurrentFolder(Work());
}

TEST_F(DeletingFoldersBounds, HoldForMissingFolders) {
  Give("d\\a.txt");
  Give("kept.txt");
  const Texts before = ListTree(Root());
  for (const std::string& name :
       {std::string("missing"), std::string("missing\\deeper"), std::string("d\\a.txt\\x"),
        std::string("d\\\xFF"), std::string("d") + std::string(300, 'n')}) {
    SCOPED_TRACE(name);
    DeleteFolder(Below(name).c_str());
    EXPECT_EQ(ListTree(Root()), before);
  }
}

// Such a mask would find names in one folder and delete them in another.
TEST_F(DeletingFoldersBounds, HoldForMasksWithAFolder) {
  const Texts names = {"C",        "d\\C",          "d\\keep.log", "d\\sub\\keep.log",
                       "keep.log", "work\\keep.log"};
  for (const std::string& name : names) Give(name);
  const Texts before = ListTree(Root());
  for (const char* mask : {"sub\\*.log", "sub/*.log", "..\\keep.log", "../keep.log", "..\\*", "\\*",
                           "/*", ".\\keep.log", "./*", "*\\keep.log", "sub\\..\\*", "C:*",
                           "C:", "Z:*", ":", "keep.log:stream", "*:*"}) {
    for (const char* folder : {"d", "d\\"}) {
      SCOPED_TRACE(std::string(mask) + " in " + folder);
      DeleteFolder(Below(folder).c_str(), mask);
      EXPECT_EQ(ListTree(Root()), before);
    }
  }
}

TEST_F(DeletingFoldersBounds, HoldForMasksAndFoldersThatNameNothing) {
  Give("d\\a.tmp");
  Give("work\\a.tmp");
  Give("a.tmp");
  const Texts before = ListTree(Root());
  const std::string tooLong(300, 'n');
  const std::string malformed = Below("d\\\xFF");
  for (const char* mask : {"", "*.none", "\xFF", "*\xC3", "a.tmp\\", ".", "..",
                           static_cast<const char*>(nullptr), tooLong.c_str()}) {
    SCOPED_TRACE(mask == nullptr ? "(null)" : mask);
    DeleteFolder(Below("d").c_str(), mask);
    EXPECT_EQ(ListTree(Root()), before);
  }
  for (const std::string& folder : {std::string(), std::string("\xFF"), malformed, Below("missing"),
                                    Below("d\\a.tmp"), Below(tooLong), std::string(100'000, 'n')}) {
    SCOPED_TRACE(folder.substr(0, 100));
    DeleteFolder(folder.c_str(), "*.tmp");
    DeleteFolder(folder.c_str(), "*");
    EXPECT_EQ(ListTree(Root()), before);
  }
}

// The folder, "\" and the mask together.
TEST_F(DeletingFoldersBounds, HoldForMasksBeyond259Bytes) {
  for (const int length : {259, 260}) {
    for (const char* folder : {"C:\\d", "C:\\d\\"}) {
      SCOPED_TRACE(length);
      const kv::test::ListingStandIn listing({});
      DeleteFolder(folder, std::string(static_cast<std::size_t>(length) - 5, '*').c_str());
      EXPECT_EQ(listing.Patterns().size(), length == 259 ? 1U : 0U);
    }
  }
}

}  // namespace
