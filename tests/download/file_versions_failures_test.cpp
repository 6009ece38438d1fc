// Files that cannot be found, opened or read: they are never new.
#include <string>

#include "tests/download/registry_fixture.h"
#include "tests/support/failing_system.h"
#include "tests/support/held_file.h"
#include "tests/support/process.h"
#include "utils/download/download.h"
#include "utils/files/files.h"
#include "utils/paths/paths.h"

namespace {

using kv::test::CreateFolders;
using kv::test::FromHex;
using kv::test::HeldFile;
using kv::test::ImportPatch;
using kv::test::LimitedReads;
using kv::test::RemoveFile;
using kv::test::WriteBytes;

// The registry starts with a checksum of "a.txt" that no file here has.
class FileVersionsFailures : public kv::test::RegistrySandbox {
 protected:
  FileVersionsFailures() { WriteBytes(Saved(), FromHex(kEntry)); }
  static constexpr char kEntry[] = "A7FF3607 01000000";
};

TEST(HeldFileChild, DISABLED_Holds) { kv::test::HoldFileForParent(); }

TEST_F(FileVersionsFailures, WhatNamesNoFileIsNotNew) {
  const std::string tooLong(300, 'x');
  const struct {
    const char* what;
    const char* name;
  } rows[] = {
      {"null", nullptr},
      {"empty", ""},
      {"separator", ":"},
      {"missing", "a.txt"},
      {"missing folder", "no\\a.txt"},
      {"malformed", "b.txt\x80"},
      {"malformed", "b.txt\xC3"},
      {"folder", "folder"},
      {"folder with a separator", "folder\\"},
      {"below a file", "b.txt\\c.txt"},
      {"too long", tooLong.c_str()},
  };
  WriteBytes("b.txt", "abc");
  CreateFolders("folder");
  CreateFolders("en");
  {
    CheckFileVersion versions;
    for (const auto& row : rows) {
      SCOPED_TRACE(row.what);
      EXPECT_FALSE(versions.IsNew(row.name, false));
      EXPECT_FALSE(versions.IsNew(row.name, true));
    }
  }
  EXPECT_EQ(SavedHex(), kEntry);
}

// The resolver goes on answering with a path that it has found once.
TEST_F(FileVersionsFailures, AFileThatHasVanishedIsNotNewAndKeepsItsEntry) {
  WriteBytes("a.txt", "123456789");
  {
    CheckFileVersion versions;
    EXPECT_TRUE(versions.IsNew("a.txt", false));
    RemoveFile("a.txt");
    EXPECT_FALSE(versions.IsNew("a.txt", false));
    EXPECT_FALSE(versions.IsNew("a.txt", true));
    WriteBytes("a.txt", "123456789");
    EXPECT_FALSE(versions.IsNew("a.txt", false)) << "back as it was";
  }
  EXPECT_EQ(SavedHex(), "A7FF3607 2639F4CB");
}

TEST_F(FileVersionsFailures, AFileHeldByAnotherProcessIsNotNewUntilItIsReleased) {
  WriteBytes("a.txt", "abc");
  CheckFileVersion versions;
  {
    const HeldFile held("a.txt");
    EXPECT_FALSE(versions.IsNew("a.txt", true));
    EXPECT_FALSE(versions.IsNew("a.txt", false));
  }
  versions.WriteData();
  EXPECT_EQ(SavedHex(), kEntry);
  EXPECT_TRUE(versions.IsNew("a.txt", true));
}

// Runs in a second process, which replaces the file that its parent is asking about.
TEST(FileVersionsFailuresChild, DISABLED_ReplacesTheFile) { WriteBytes("a.txt", "second"); }

TEST_F(FileVersionsFailures, AFileChangedByAnotherProcessIsNew) {
  WriteBytes("a.txt", "first");
  {
    CheckFileVersion versions;
    EXPECT_TRUE(versions.IsNew("a.txt", false));
    const auto child = kv::test::RunOwnCase("FileVersionsFailuresChild.DISABLED_ReplacesTheFile");
    EXPECT_EQ(child.exitCode, 0U) << child.out << child.err;
    EXPECT_TRUE(versions.IsNew("a.txt", false));
    EXPECT_FALSE(versions.IsNew("a.txt", false));
  }
  EXPECT_EQ(SavedHex(), "A7FF3607 69111FB6");
}

TEST_F(FileVersionsFailures, AFileOfTwoGibibytesIsNotNew) {
  for (const long long size : {0x80000000LL, 0xFFFFFFFFLL}) {
    SCOPED_TRACE(size);
    kv::test::MakeSparse("a.txt", size);
    CheckFileVersion versions;
    EXPECT_FALSE(versions.IsNew("a.txt", true));
  }
  EXPECT_EQ(SavedHex(), kEntry);
}

TEST_F(FileVersionsFailures, NothingIsNewWhenMemoryIsShort) {
  WriteBytes("a.txt", "abc");
  CheckFileVersion versions;
  {
    const ImportPatch patch(kv::test::kNewArrayOrNull, kv::test::RefuseMemory);
    EXPECT_FALSE(versions.IsNew("a.txt", true));
    versions.WriteData();
  }
  EXPECT_EQ(SavedHex(), kEntry);
  EXPECT_TRUE(versions.IsNew("a.txt", true));
}

TEST_F(FileVersionsFailures, ARefusedReadRaisesAndChangesNothing) {
  WriteBytes("a.txt", "abc");
  CheckFileVersion versions;
  {
    const ImportPatch patch("ReadFile", kv::test::RefuseToRead);
    try {
      versions.IsNew("a.txt", true);
      FAIL() << "nothing raised";
    } catch (const MException& error) {
      EXPECT_EQ(error.GetCode(), 2U);
      EXPECT_STREQ(error.GetMessageA(), "MFile::Read - reading error in file a.txt\n");
    }
  }
  versions.WriteData();
  EXPECT_EQ(SavedHex(), kEntry);
  RemoveFile("a.txt");  // which nobody has open
  WriteBytes("a.txt", "abc");
  EXPECT_TRUE(versions.IsNew("a.txt", true));
}

// As when the host has the folders discovered again.
TEST_F(FileVersionsFailures, ADataNameAloneNeedsTheFolders) {
  WriteBytes("a.txt", "abc");
  CheckFileVersion versions;
  KelvarisPath::ms_IsInit = false;
  {
    const ImportPatch patch("GetCurrentDirectoryW", kv::test::TellNoFolder);
    try {
      versions.IsNew("a.txt", false);
      FAIL() << "nothing raised";
    } catch (const MException& error) {
      EXPECT_EQ(error.GetCode(), 0U);
      EXPECT_STREQ(error.GetMessageA(), "KelvarisPath::GetCDPath return false");
    }
    EXPECT_TRUE(versions.IsNew("a.txt", true));
  }
  EXPECT_FALSE(versions.IsNew("a.txt", false));
}

TEST_F(FileVersionsFailures, AFileThatIsCutWhileItIsReadHasTheBytesThatArrived) {
  const struct {
    unsigned long arriving;
    const char* registry;
  } rows[] = {
      {0, "A7FF3607 00000000"},
      {1, "A7FF3607 43BEB7E8"},
      {3, "A7FF3607 C2412435"},
  };
  WriteBytes("a.txt", "abcd");
  CheckFileVersion versions;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.arriving);
    const LimitedReads reads(row.arriving);
    EXPECT_TRUE(versions.IsNew("a.txt", true));
    versions.WriteData();
    EXPECT_EQ(SavedHex(), row.registry);
  }
}

TEST_F(FileVersionsFailures, OneReadTakesTheWholeFile) {
  WriteBytes("a.txt", std::string(1 << 20, 'x'));
  CheckFileVersion versions;
  const LimitedReads reads(1 << 20);
  EXPECT_TRUE(versions.IsNew("a.txt", true));
  EXPECT_EQ(reads.Count(), 1);
}

}  // namespace
