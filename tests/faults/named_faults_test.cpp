// Faults of the system itself: each case first makes sure that the fault is there.
#include <gtest/gtest.h>
#include <windows.h>

#include <shlobj.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/faults/host_mode.h"
#include "tests/faults/operations.h"
#include "tests/support/held_file.h"
#include "tests/support/import_patch.h"
#include "tests/support/sandbox.h"
#include "utils/download/download.h"
#include "utils/files/files.h"
#include "utils/paths/paths.h"

namespace {

using kv::test::ContentOf;
using kv::test::CreateFolders;
using kv::test::FileExists;
using kv::test::HostMode;
using kv::test::ImportPatch;
using kv::test::Widen;
using kv::test::WriteBytes;

constexpr unsigned kRead = 2;
constexpr unsigned kWrite = 4;
constexpr unsigned kCreateAnew = 5;
constexpr char kNeedsUser[] = "the tests must run as an ordinary user";

// The error of opening the path; 0 when it opens.
DWORD ErrorOfOpening(const std::string& path, DWORD access, DWORD disposition) {
  const HANDLE file =
      ::CreateFileW(Widen(path).c_str(), access, 0, nullptr, disposition, 0, nullptr);
  const DWORD error = ::GetLastError();
  if (file == INVALID_HANDLE_VALUE) return error;
  ::CloseHandle(file);
  return 0;
}

// What every function that opens a file answers for one that it must not open.
void ExpectNoFile(const std::string& path) {
  MFile file;
  EXPECT_FALSE(file.Open(path.c_str(), kRead));
  EXPECT_FALSE(file.Open(path.c_str(), kWrite));
  EXPECT_EQ(MFile::GetLength(path.c_str()), -1);
  EXPECT_EQ(MFile::GetTime(path.c_str(), 2), 0);
  EXPECT_THROW(MFile(path.c_str(), kRead), MException);
  EXPECT_EQ(mm_fopen(path.c_str(), "rb"), nullptr);
  MTextFile text;
  EXPECT_FALSE(text.Open(path.c_str(), false));
  EXPECT_FALSE(text.Open(path.c_str(), true));
  std::string loaded = "+";
  EXPECT_FALSE(loadUTF8StringFromFile(loaded, path.c_str()));
  EXPECT_EQ(loaded, "+");
  EXPECT_FALSE(UniteFiles(path.c_str(), "own.txt"));
  EXPECT_FALSE(UniteFiles("own.txt", path.c_str()));
  EXPECT_EQ(FileCompare(path.c_str(), "own.txt"), 1);
  EXPECT_EQ(FileCompare("own.txt", path.c_str()), -1);
  EXPECT_FALSE(CheckFileVersion().IsNew(path.c_str(), true));
  EXPECT_EQ(ContentOf("own.txt"), "own");
}

void ExpectUsable() {
  EXPECT_TRUE(MFile().Open("own.txt", kRead));
  EXPECT_TRUE(MTextFile().Open("own.txt", false));
}

bool IsReadOnlyFolder(const std::string& folder) {
  return (::GetFileAttributesW(Widen(folder).c_str()) & FILE_ATTRIBUTE_READONLY) != 0;
}

class NamedFaults : public kv::test::Sandbox {
 protected:
  NamedFaults() { WriteBytes("own.txt", "own"); }
  ~NamedFaults() override {
    EXPECT_EQ(kv::test::CurrentFolder() + "\\", Work());
    EXPECT_TRUE(kv::test::IsFree("own.txt"));
    ExpectUsable();
  }
};

TEST_F(NamedFaults, AFileWithoutRightsIsNoFile) {
  const std::string path = Work() + "locked.txt";
  WriteBytes(path, "secret");
  {
    const auto isRefused = [&] {
      return ErrorOfOpening(path, GENERIC_READ, OPEN_EXISTING) == ERROR_ACCESS_DENIED;
    };
    const HostMode mode(path, "000", isRefused);
    ASSERT_TRUE(mode.IsInForce()) << kNeedsUser;
    EXPECT_TRUE(MFile::IsExist(path.c_str()));
  }
  // A file that may not be read is read-only too, and being opened for writing it loses that.
  {
    const auto isRefused = [&] {
      return ErrorOfOpening(path, GENERIC_READ, OPEN_EXISTING) == ERROR_ACCESS_DENIED;
    };
    const HostMode mode(path, "200", isRefused);
    ASSERT_TRUE(mode.IsInForce()) << kNeedsUser;
    EXPECT_FALSE(MFile().Open(path.c_str(), kRead));
    EXPECT_EQ(mm_fopen(path.c_str(), "rb"), nullptr);
    EXPECT_EQ(FileCompare(path.c_str(), "own.txt"), 1);
    EXPECT_FALSE(CheckFileVersion().IsNew(path.c_str(), true));
  }
  EXPECT_EQ(ContentOf(path), "secret");
}

TEST_F(NamedFaults, AFolderThatCannotBeWrittenKeepsItsFiles) {
  const std::string folder = Work() + "fixed";
  WriteBytes(folder + "\\a_new.txt", "a");
  const std::string made = folder + "\\made.txt";
  const HostMode mode(folder, "555", [&] { return IsReadOnlyFolder(folder); });
  ASSERT_TRUE(mode.IsInForce());
  ASSERT_EQ(ErrorOfOpening(made, GENERIC_WRITE, CREATE_ALWAYS), DWORD{ERROR_ACCESS_DENIED})
      << kNeedsUser;
  EXPECT_FALSE(MFile().Open(made.c_str(), kCreateAnew));
  EXPECT_THROW(MFile::FileCopy("own.txt", made.c_str()), MException);
  EXPECT_FALSE(MTextFile().Open(made.c_str(), true));
  MakeFolder((folder + "\\sub").c_str());
  CopyFilesFromList({"own.txt"}, {made});
  RenameUpdatedFiles(folder.c_str());
  EXPECT_EQ(kv::test::ListTree(folder), (std::vector<std::string>{"a_new.txt"}));
}

// The system says of a file in such a folder that it has been deleted.
TEST_F(NamedFaults, AFileThatOnlySeemsDeletedStaysAndIsFound) {
  const std::string folder = Work() + "fixed";
  const std::string path = folder + "\\a.txt";
  WriteBytes(path, "a");
  const HostMode mode(folder, "555", [&] { return IsReadOnlyFolder(folder); });
  ASSERT_TRUE(mode.IsInForce());
  ASSERT_TRUE(::DeleteFileW(Widen(path).c_str())) << "the system tells the truth here";
  ASSERT_TRUE(FileExists(path)) << kNeedsUser;
  EXPECT_TRUE(MFile::DeleteFileA(path.c_str()));
  DeleteFolder(folder.c_str(), "*.txt");
  EXPECT_TRUE(MFile::IsExist(path.c_str()));
  EXPECT_EQ(MFile::GetLength(path.c_str()), 1);
}

TEST_F(NamedFaults, AFolderThatCannotBeEnteredHoldsNothing) {
  const std::string folder = Work() + "closed";
  const std::string path = folder + "\\a.txt";
  WriteBytes(path, "a");
  const HostMode mode(folder, "000", [&] {
    return ::GetFileAttributesW(Widen(path).c_str()) == INVALID_FILE_ATTRIBUTES &&
           ::GetLastError() == ERROR_ACCESS_DENIED;
  });
  ASSERT_TRUE(mode.IsInForce()) << kNeedsUser;
  ExpectNoFile(path);
  EXPECT_FALSE(MFile::IsExist(path.c_str()));
  EXPECT_FALSE(MFile::DeleteFileA(path.c_str()));
  FindFiles found(folder.c_str(), "*.*");
  found.Run(true);
  EXPECT_EQ(found.GetNumberFiles(), 0U);
  EXPECT_NE(ChangeFolder(folder.c_str()), 0);
  MakeFolder((folder + "\\sub").c_str());
}

TEST_F(NamedFaults, PathsThroughAFileAndOnDrivesThatAreNotThereNameNothing) {
  const struct {
    std::string path;
    DWORD error;
  } rows[] = {{"own.txt\\x.bin", ERROR_PATH_NOT_FOUND}, {"Q:\\x.bin", ERROR_PATH_NOT_FOUND}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.path);
    ASSERT_NE(ErrorOfOpening(row.path, GENERIC_READ, OPEN_EXISTING), 0U);
    ASSERT_NE(ErrorOfOpening(row.path, GENERIC_WRITE, CREATE_ALWAYS), 0U);
    ExpectNoFile(row.path);
    EXPECT_FALSE(MFile::IsExist(row.path.c_str()));
    MakeFolder((row.path + "\\sub").c_str());
    CheckFileFolder(row.path.c_str());
  }
  EXPECT_EQ(ContentOf("own.txt"), "own");
}

TEST_F(NamedFaults, ALinkToItselfNamesNothing) {
  std::string host = Work().substr(2) + "loop";
  std::replace(host.begin(), host.end(), '\\', '/');
  kv::test::RunProgram("Z:\\bin\\ln", {"-s", "loop", host});
  DWORD error = ERROR_FILE_NOT_FOUND;
  for (int i = 0; i < 300 && error == ERROR_FILE_NOT_FOUND; ++i, ::Sleep(10)) {
    error = ErrorOfOpening("loop", GENERIC_READ, OPEN_EXISTING);
  }
  ASSERT_EQ(error, DWORD{ERROR_CANT_RESOLVE_FILENAME});
  ExpectNoFile("loop");
  kv::test::RunProgram("Z:\\bin\\rm", {"-f", host});
  for (int i = 0; i < 300 && error != ERROR_FILE_NOT_FOUND; ++i, ::Sleep(10)) {
    error = ErrorOfOpening("loop", GENERIC_READ, OPEN_EXISTING);
  }
}

// While it lives, a file vanishes once the library has seen that it is there.
class Vanishing {
 private:
  static DWORD WINAPI TellAndDelete(const wchar_t* path) {
    const DWORD attributes = ::GetFileAttributesW(path);
    ::DeleteFileW(path);
    return attributes;
  }
  ImportPatch patch_{"GetFileAttributesW", &TellAndDelete};
};

TEST_F(NamedFaults, AFileThatVanishesOnceItIsFoundIsMissing) {
  const KelvarisPath resolver;
  const auto place = [this] { WriteBytes(Work() + "media\\a.txt", "abc"); };
  place();
  std::optional<Vanishing> vanishing(std::in_place);
  ASSERT_NE(KelvarisPath().GetPath("media:a.txt"), nullptr);
  ASSERT_FALSE(FileExists("media\\a.txt")) << "it has not vanished";
  EXPECT_EQ(GetKvFileContent("media:a.txt"), nullptr);
  EXPECT_FALSE(CheckFileVersion().IsNew("media:a.txt", false));
  std::vector<std::string> column;
  EXPECT_FALSE(ReadTabSeparatedColumn(column, "media:a.txt", 0));
  vanishing.reset();
  place();
  EXPECT_EQ(std::string(std::unique_ptr<char[]>(GetKvFileContent("media:a.txt")).get()), "abc");
}

// What the shell tells of Documents, whatever it says of it.
std::string DocumentsOfTheShell(const std::string& folder) {
  kv::test::SetEnvironment("KVUTILS_DOCUMENTS", folder);
  wchar_t path[MAX_PATH] = L"";
  ::SHGetFolderPathW(nullptr, CSIDL_PERSONAL, nullptr, SHGFP_TYPE_CURRENT, path);
  return kv::test::Narrow(path);
}

TEST_F(NamedFaults, DocumentsWithoutRoomForAFolderLeaveItsPathAlone) {
  WriteBytes("media\\a.txt", "abc");
  WriteBytes(Root() + "file", "f");
  const std::string fixed = Root() + "fixed";
  CreateFolders(fixed);
  const HostMode mode(fixed, "555", [&] { return IsReadOnlyFolder(fixed); });
  ASSERT_TRUE(mode.IsInForce());
  for (const std::string& folder :
       {Root() + "missing", Root() + "file", std::string("Q:\\documents"), fixed}) {
    SCOPED_TRACE(folder);
    const std::string writable = DocumentsOfTheShell(folder) + "\\Kelvaris_9";
    ASSERT_EQ(writable, folder + "\\Kelvaris_9");
    ASSERT_FALSE(::CreateDirectoryW(Widen(writable).c_str(), nullptr)) << kNeedsUser;
    kv::test::ForgetEverything();
    KelvarisPath resolver;
    EXPECT_EQ(KelvarisPath::ms_WritablePath, writable + "\\");
    EXPECT_EQ(resolver.GetPath("media:a.txt"), Work() + "media\\a.txt");
    EXPECT_EQ(resolver.GetWorkPath("x:y", false, true), writable + "\\x\\y");
    CheckFileVersion().AddFile("a", 1);
    deleteUserFolderContent();
    EXPECT_FALSE(MFile::IsExist(writable.c_str()));
    EXPECT_EQ(kv::test::ListTree(fixed), std::vector<std::string>());
  }
  EXPECT_EQ(ContentOf(Root() + "file"), "f");
}

TEST_F(NamedFaults, DocumentsBehindTooLongAPathAreNowhere) {
  WriteBytes("media\\a.txt", "abc");
  std::string folder = Root();
  while (folder.size() < 250) folder += folder.size() % 100 == 0 ? '\\' : 'd';
  CreateFolders(folder);
  ASSERT_EQ(DocumentsOfTheShell(folder), folder);
  KelvarisPath resolver;
  EXPECT_STREQ(KelvarisPath::ms_WritablePath, "");
  EXPECT_STREQ(KelvarisPath::ms_WorkspacesFolder, "");
  // A name joined to no folder is looked for from the current one on.
  EXPECT_STREQ(resolver.GetPath("media:a.txt"), "media\\a.txt");
  EXPECT_STREQ(resolver.GetWorkPath("x:y", false, true), "x\\y");
  deleteUserFolderContent();
  EXPECT_EQ(ContentOf("media\\a.txt"), "abc");
}

HANDLE WINAPI HaveNoHandle(const wchar_t*, DWORD, DWORD, SECURITY_ATTRIBUTES*, DWORD, DWORD,
                           HANDLE) {
  ::SetLastError(ERROR_TOO_MANY_OPEN_FILES);
  return INVALID_HANDLE_VALUE;
}
std::FILE* HaveNoStream(const wchar_t*, const wchar_t*) {
  errno = EMFILE;
  return nullptr;
}

TEST_F(NamedFaults, WithoutHandlesNoFileOpens) {
  WriteBytes("a.txt", "abc");
  {
    const ImportPatch create("CreateFileW", &HaveNoHandle);
    const ImportPatch open("_wfopen", &HaveNoStream);
    MFile file;
    EXPECT_FALSE(file.Open("a.txt", kRead));
    EXPECT_FALSE(MTextFile().Open("a.txt", true));
    EXPECT_EQ(mm_fopen("a.txt", "rb"), nullptr);
    EXPECT_FALSE(UniteFiles("a.txt", "own.txt"));
    EXPECT_EQ(FileCompare("a.txt", "own.txt"), 1);
    EXPECT_THROW(MFile::FileCopy("a.txt", "b.txt"), MException);
  }
  EXPECT_EQ(ContentOf("a.txt"), "abc");
  EXPECT_TRUE(MFile().Open("a.txt", kRead));
}

}  // namespace
