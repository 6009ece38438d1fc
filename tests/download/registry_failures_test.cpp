// The registry file when it cannot be found, opened, read or written.
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/download/registry_fixture.h"
#include "tests/support/failing_system.h"
#include "tests/support/held_file.h"
#include "utils/download/download.h"
#include "utils/files/files.h"
#include "utils/paths/paths.h"

namespace {

using kv::test::CreateFolders;
using kv::test::FileExists;
using kv::test::FolderExists;
using kv::test::FromHex;
using kv::test::HeldFile;
using kv::test::HexOfFile;
using kv::test::ImportPatch;
using kv::test::IsFree;
using kv::test::kNoFile;
using kv::test::LimitedReads;
using kv::test::ReadBytes;
using kv::test::WriteBytes;

class RegistryFailures : public kv::test::RegistrySandbox {};

template <typename Action>
std::string Raised(Action action, unsigned code = 2) {
  try {
    action();
  } catch (const MException& error) {
    EXPECT_EQ(error.GetCode(), code);
    return error.GetMessageA();
  }
  return "nothing raised";
}

TEST_F(RegistryFailures, ANameThatNamesNoFileGivesAnEmptyRegistry) {
  const std::string tooLong(300, 'x');
  const struct {
    const char* what;
    const char* name;
  } rows[] = {
      {"null", nullptr},
      {"empty", ""},
      {"separator", ":"},
      {"malformed", "a\x80"},
      {"a folder", "folder"},
      {"a folder", "folder:"},
      {"too long", tooLong.c_str()},
  };
  CreateFolders(Work() + "folder");
  CreateFolders(Work() + "en");
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    WriteBytes(Root() + "a.bin", "abc");
    const std::string path = Root() + "a.bin";
    CheckFileVersion versions(row.name);
    EXPECT_TRUE(versions.IsNew(path.c_str(), true));
    EXPECT_FALSE(versions.IsNew(path.c_str(), true));
    EXPECT_NO_THROW(versions.WriteData());
    versions.DeleteData();
    EXPECT_NO_THROW(versions.WriteData());
  }
  EXPECT_TRUE(FolderExists(Writable()));
  EXPECT_EQ(kv::test::ListTree(Work().substr(0, Work().size() - 1)),
            (std::vector<std::string>{"en\\", "folder\\"}));
}

TEST_F(RegistryFailures, ReadingNothingBeyond259BytesItWritesNothing) {
  // The writable folder fits, the registry below it does not.
  const std::string folder = Root() + std::string(250 - Root().size(), 'x') + "\\";
  {
    CheckFileVersion versions;
    versions.AddFile("a.txt", 1);
    KelvarisPath::SetWritableFolder(folder.c_str());
  }
  EXPECT_FALSE(FolderExists(folder));
  EXPECT_FALSE(FileExists(Saved()));
}

TEST_F(RegistryFailures, AFileOfTwoGibibytesGivesAnEmptyRegistry) {
  CreateFolders(Work() + "download");
  kv::test::MakeSparse(Installed(), 0x80000000LL);
  { const CheckFileVersion versions; }
  EXPECT_FALSE(FileExists(Saved()));
}

TEST_F(RegistryFailures, ShortMemoryGivesAnEmptyRegistry) {
  WriteBytes(Installed(), FromHex("A7FF3607 01000000"));
  {
    const ImportPatch patch(kv::test::kNewArrayOrNull, kv::test::RefuseMemory);
    const CheckFileVersion versions;
  }
  EXPECT_EQ(SavedHex(), kNoFile);
}

TEST_F(RegistryFailures, AFileHeldByAnotherProcessIsNeitherReadNorWrittenNorDeleted) {
  WriteBytes(Saved(), FromHex("887A693F 02000000"));
  std::optional<CheckFileVersion> versions;
  {
    const HeldFile held(Saved());
    versions.emplace();
    EXPECT_NO_THROW(versions->WriteData()) << "without entries";
    EXPECT_TRUE(FileExists(Saved()));
    versions->AddFile("a.txt", 1);
    EXPECT_NO_THROW(versions->WriteData());
  }
  EXPECT_EQ(SavedHex(), "887A693F 02000000");
  versions->WriteData();
  EXPECT_EQ(SavedHex(), "A7FF3607 01000000") << "the entry of the held file was never read";
}

TEST_F(RegistryFailures, AReadOnlyFileIsWrittenButNotDeleted) {
  WriteBytes(Saved(), FromHex("887A693F 02000000"));
  kv::test::SetReadOnly(Saved(), true);
  CheckFileVersion versions;
  versions.DeleteData();
  EXPECT_NO_THROW(versions.WriteData());
  EXPECT_EQ(SavedHex(), "887A693F 02000000");
  EXPECT_TRUE(kv::test::IsReadOnly(Saved()));
  versions.AddFile("a.txt", 1);
  versions.WriteData();
  EXPECT_EQ(SavedHex(), "A7FF3607 01000000");
  versions.DeleteData();
  versions.WriteData();
  EXPECT_EQ(SavedHex(), kNoFile) << "the attribute went with the writing";
}

HANDLE WINAPI RefuseToOpen(LPCWSTR, DWORD, DWORD, LPSECURITY_ATTRIBUTES, DWORD, DWORD, HANDLE) {
  ::SetLastError(ERROR_DISK_FULL);
  return INVALID_HANDLE_VALUE;
}

TEST_F(RegistryFailures, TheFolderOfAFileThatCannotBeOpenedIsMade) {
  CheckFileVersion versions;
  versions.AddFile("a.txt", 1);
  {
    const ImportPatch patch("CreateFileW", RefuseToOpen);
    EXPECT_NO_THROW(versions.WriteData());
  }
  EXPECT_TRUE(FolderExists(Writable() + "download"));
  EXPECT_FALSE(FileExists(Saved()));
}

TEST_F(RegistryFailures, AFolderInTheWayStays) {
  {
    CheckFileVersion versions;
    CreateFolders(Saved());
    EXPECT_NO_THROW(versions.WriteData());
    versions.AddFile("a.txt", 1);
    EXPECT_NO_THROW(versions.WriteData());
  }
  EXPECT_TRUE(FolderExists(Saved()));
}

TEST_F(RegistryFailures, AFileInTheWayOfTheFolderStays) {
  {
    CheckFileVersion versions;
    WriteBytes(Writable() + "download", "a file in the way");
    versions.AddFile("a.txt", 1);
    EXPECT_NO_THROW(versions.WriteData());
  }
  EXPECT_EQ(ReadBytes(Writable() + "download"), "a file in the way");
}

TEST_F(RegistryFailures, ARefusedReadRaisesInTheConstructor) {
  WriteBytes(Installed(), FromHex("A7FF3607 01000000"));
  const ImportPatch patch("ReadFile", kv::test::RefuseToRead);
  EXPECT_EQ(Raised([] { const CheckFileVersion versions; }),
            "MFile::Read - reading error in file " + Installed() + "\n");
  EXPECT_TRUE(IsFree(Installed()));
  EXPECT_FALSE(FileExists(Saved()));
}

TEST_F(RegistryFailures, ARefusedWriteRaisesWhenAskedForAndIsSilentAtTheEnd) {
  const std::string other = Writable() + "other.dat";
  {
    CheckFileVersion versions;
    versions.AddFile("a.txt", 1);
    const ImportPatch patch("WriteFile", kv::test::RefuseToWrite);
    EXPECT_EQ(Raised([&] { versions.WriteData(); }),
              "MFile::Write - writing error in file " + Saved() + "\n");
    EXPECT_TRUE(IsFree(Saved()));
    EXPECT_EQ(SavedHex(), "") << "created, then refused";
    {
      CheckFileVersion silent("other.dat");
      silent.AddFile("a.txt", 1);
    }
    EXPECT_TRUE(IsFree(other));
    EXPECT_EQ(HexOfFile(other), "");
  }
  EXPECT_EQ(SavedHex(), "A7FF3607 01000000") << "the entries outlive the failure";
}

TEST_F(RegistryFailures, FoldersThatCannotBeToldRaiseButAtTheEnd) {
  constexpr char kText[] = "KelvarisPath::GetCDPath return false";
  {
    const ImportPatch patch("GetCurrentDirectoryW", kv::test::TellNoFolder);
    EXPECT_EQ(Raised([] { const CheckFileVersion versions; }, 0), kText);
  }
  std::optional<CheckFileVersion> versions(std::in_place);
  versions->AddFile("a.txt", 1);
  KelvarisPath::ms_IsInit = false;  // as when the host has the folders discovered again
  {
    const ImportPatch patch("GetCurrentDirectoryW", kv::test::TellNoFolder);
    EXPECT_EQ(Raised([&] { versions->WriteData(); }, 0), kText);
    versions.reset();
  }
  EXPECT_EQ(SavedHex(), kNoFile);
}

TEST_F(RegistryFailures, ShortMemoryIsSilentAtTheEnd) {
  std::optional<CheckFileVersion> versions(std::in_place);
  versions->AddFile("a.txt", 1);
  {
    const ImportPatch patch(kv::test::kNew, kv::test::ThrowForMemory);
    EXPECT_THROW(versions->WriteData(), std::bad_alloc);
    versions.reset();
  }
  EXPECT_EQ(SavedHex(), kNoFile);
}

TEST_F(RegistryFailures, AFileThatIsCutWhileItIsReadHasTheBytesThatArrived) {
  const struct {
    unsigned long arriving;
    const char* written;
  } rows[] = {
      {0, kNoFile},
      {1, "01000000 00000000"},
      {8, "01000000 A1A2A3A4"},
      {13, "01000000 A1A2A3A4 02030405 B1000000"},
      {16, "01000000 A1A2A3A4 02030405 B1B2B3B4"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.arriving);
    WriteBytes(Saved(), FromHex("01000000 A1A2A3A4 02030405 B1B2B3B4 06070809 C1C2C3C4"));
    {
      const LimitedReads reads(row.arriving);
      const CheckFileVersion versions;
    }
    EXPECT_EQ(SavedHex(), row.written);
  }
}

TEST_F(RegistryFailures, OneReadTakesTheWholeFile) {
  WriteBytes(Saved(), std::string(8 * 100'000, 'x'));
  const LimitedReads reads(8 * 100'000);
  { const CheckFileVersion versions; }
  EXPECT_EQ(reads.Count(), 1);
  EXPECT_EQ(ReadBytes(Saved()), "xxxxxxxx");
}

}  // namespace
