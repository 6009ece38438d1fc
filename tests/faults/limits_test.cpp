// Every buffer of a fixed size meets texts that are one shorter than it, as long, one longer, and
// ten times as long.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/faults/operations.h"
#include "tests/paths/resolver_fixture.h"
#include "tests/support/sandbox.h"
#include "utils/files/files.h"
#include "utils/paths/paths.h"
#include "utils/platform/platform.h"
#include "utils/text/text.h"

namespace {

using kv::test::Answer;
using kv::test::kNone;
using kv::test::OpenResolver;
using kv::test::PathBuffer;
using kv::test::WriteBytes;

std::vector<std::size_t> Around(std::size_t size) { return {size - 1, size, size + 1, 10 * size}; }

// What fits with a terminator.
std::string Cut(const std::string& text, std::size_t size) { return text.substr(0, size - 1); }

class Limits : public kv::test::Sandbox {};

TEST_F(Limits, OfPathsAreKeptByTheResolver) {
  OpenResolver resolver;
  KelvarisPath::SetLocaleFolder("l");
  KelvarisPath::SetWritableFolder("U\\");
  for (const std::size_t size : Around(260)) {
    SCOPED_TRACE(size);
    const bool fits = size < 260;
    const std::string path(size, 'n');
    const std::string name(size - 2, 'n');  // behind a folder of two bytes
    const std::string joined = "U\\" + name;
    EXPECT_EQ(Answer(resolver.GetWorkPath(name.c_str(), false, true)), fits ? joined : kNone);
    EXPECT_EQ(Answer(resolver.GetWorkPath(name.c_str(), true, true)), kNone);
    EXPECT_EQ(Answer(resolver.CheckPath(name.c_str(), "U\\")), kNone);
    EXPECT_EQ(Answer(resolver.CheckPath("a", path.c_str())), kNone);
    EXPECT_EQ(Answer(resolver.GetPath(path.c_str())), kNone);
    EXPECT_EQ(Answer(resolver.FromCDtoWorkPath(path.c_str())), fits ? path : kNone);
    EXPECT_FALSE(GetWorkPathForDBfiles(nullptr, path.c_str()));
    std::string image;
    EXPECT_FALSE(GetImageFilePath(image, (path + ".png").c_str(), path.c_str()));

    PathBuffer local;
    EXPECT_TRUE(resolver.CheckLocalFiles(local.Get(), name.c_str()));
    EXPECT_EQ(local.Text(), fits ? "l:" + name : "");
    EXPECT_TRUE(local.GuardsHold());
    PathBuffer addOn;
    EXPECT_FALSE(resolver.CheckFeaturePackFile(addOn.Get(), path.c_str()));
    EXPECT_EQ(addOn.Text(), fits ? path : "");
    EXPECT_TRUE(addOn.GuardsHold());

    KelvarisPath::SetWritableFolder(path.c_str());
    EXPECT_EQ(KelvarisPath::ms_WritablePath, fits ? path : "U\\");
    KelvarisPath::SetWritableFolder("U\\");
  }
}

// The host may write what is remembered.
TEST_F(Limits, OfPathsAreKeptByWhatIsRemembered) {
  KelvarisPath resolver;
  auto& remembered = KelvarisPath::ms_FileNamesStorage[GetUniqueID((Work() + "a").c_str())];
  for (const std::size_t size : Around(260)) {
    SCOPED_TRACE(size);
    remembered.assign(size, 'r');
    EXPECT_EQ(Answer(resolver.CheckPath("a", nullptr)), size < 260 ? remembered : kNone);
  }
}

TEST_F(Limits, OfPathsAreKeptByTheFolderFunctions) {
  WriteBytes("kept.txt", "k");
  for (const std::size_t size : Around(260)) {
    SCOPED_TRACE(size);
    std::string path = "d\\";  // of names that the file system takes
    while (path.size() < size) path += path.size() % 100 == 0 ? '\\' : 'n';
    DeleteFolder(path.c_str());
    DeleteFolder(path.c_str(), "*.*");
    DeleteFolder("none", path.c_str());
    CopyFolder("x", (std::string(256, 'x') + path).c_str(), nullptr);
    CopyFilesFromList({path}, {path + "2"});
    CopyFilesFromList({path}, "none", "none2");
    RenameUpdatedFiles(path.c_str());
    FindFiles found(path.c_str(), path.c_str(), path.c_str());
    found.Run(true);
    EXPECT_EQ(found.GetNumberFiles(), 0U);
    const std::string descriptor = "all;" + path + ";delete;" + path;
    const char* const descriptors[] = {descriptor.c_str()};
    KvFoldersRemover(descriptors, 1).Run();
    EXPECT_NE(ChangeFolder(path.c_str()), 0);
    EXPECT_FALSE(IsFolder(path.c_str()));
    MakeFolder(path.c_str());
    EXPECT_EQ(IsFolder(path.c_str()), size < 260);
    EXPECT_EQ(kv::test::CurrentFolder() + "\\", Work());
  }
  EXPECT_TRUE(kv::test::FileExists("kept.txt"));
}

// The shell knows no longer path, and takes one whose full form is longer for another.
TEST_F(Limits, OfFullPathsKeepTheShellAtHome) {
  for (std::size_t size = 240; size < 340; ++size) {
    SCOPED_TRACE(size);
    std::string path = "d\\";
    while (Work().size() + path.size() < size) path += path.size() % 100 == 0 ? '\\' : 'n';
    if (path.ends_with('\\')) path += 'n';
    WriteBytes("kept.txt", "k");
    DeleteFolder(path.c_str());
    const bool isKept = kv::test::FileExists("kept.txt");
    kv::test::CreateFolders(Work() + path);
    DeleteFolder(path.c_str());
    EXPECT_TRUE(isKept && kv::test::FileExists("kept.txt"));
    EXPECT_EQ(IsFolder(path.c_str()), Work().size() + path.size() >= 260);
    const std::wstring target = kv::test::Widen(path);
    if (target.size() < 250) CopyDirTo(target, L"copied");
    EXPECT_FALSE(kv::test::FileExists("copied\\kept.txt"));
    kv::test::RemoveTree("d");
    kv::test::RemoveTree("copied");
  }
}

// 264 units of a path need no memory of their own.
TEST_F(Limits, OfPathsDoNotBindFiles) {
  for (const std::size_t size : Around(264)) {
    SCOPED_TRACE(size);
    std::string path;
    while (path.size() + 6 < size) path += ".\\";
    path += std::string(size - path.size() - 4, 'a') + ".bin";
    ASSERT_EQ(path.size(), size);
    MFile file;
    ASSERT_TRUE(file.Open(path.c_str(), 5));
    EXPECT_EQ(file.Write("abc", 3), 3U);
    EXPECT_TRUE(file.Close());
    EXPECT_EQ(MFile::GetLength(path.c_str()), 3);
    EXPECT_TRUE(MFile::DeleteFileA(path.c_str()));
    try {
      MFile(path.c_str(), 2);
    } catch (const MException& error) {
      EXPECT_STREQ(error.GetMessageA(), "MFile::Load - file open failure\n");
    }
  }
}

TEST_F(Limits, OfLinesCutLists) {
  for (const std::size_t size : Around(256)) {
    SCOPED_TRACE(size);
    const std::string line(size, 'm');
    const std::string lines = line + "\n" + line + "\n}\n";
    WriteBytes("media\\fileutils.ini", lines);
    WriteBytes("media\\supported_languages.ini", lines);
    WriteBytes("feature_pack\\feature_pack_filelist.txt", lines);
    kv::test::ForgetEverything();
    KelvarisPath resolver;
    EXPECT_EQ(KelvarisPath::ms_CDFolders, std::vector<std::string>(2, Cut(line, 256)));
    EXPECT_EQ(Answer(resolver.GetPath("none")), kNone);
    EXPECT_EQ(KelvarisPath::sFeaturePackFolder, Cut(line, 256));
    EXPECT_EQ(KelvarisPath::sFeaturePackFileNames, std::vector<std::string>{Cut(line, 256)});
    const char* const descriptors[] = {"languages;x"};
    KvFoldersRemover(descriptors, 1).Run();
  }
}

TEST_F(Limits, OfLinesCutColumns) {
  const KelvarisPath resolver;
  for (const std::size_t size : Around(512)) {
    SCOPED_TRACE(size);
    const std::string line(size, 'c');
    WriteBytes("t.txt", line + "\n");
    std::vector<std::string> column;
    // Beyond 4,095 bytes a line goes on as another.
    EXPECT_TRUE(ReadTabSeparatedColumn(column, "t.txt", 0));
    EXPECT_EQ(column.front(), Cut(line, 512));
    EXPECT_EQ(column.size(), size > 4095 ? 2U : 1U);
  }
}

TEST_F(Limits, OfLineBuffersSplitLines) {
  for (const int size : {-2147483647, -1, 0, 1, 2, 31, 32, 33, 320}) {
    SCOPED_TRACE(size);
    WriteBytes("t.txt", std::string(32, '7') + "\n");
    MTextFile file(false, '!', '}', size);
    ASSERT_TRUE(file.Open("t.txt", false));
    char line[64] = "";
    EXPECT_EQ(file.Readln(line, sizeof line), size < 2 ? -1 : std::min(size - 1, 33));
    double value = 0;
    EXPECT_EQ(file.Readln(&value, -1), size >= 2 && size <= 32 ? 0 : -1);
  }
}

TEST(LimitsOfTexts, CutMessages) {
  for (const std::size_t size : Around(1024)) {
    const std::string text(size, 'e');
    EXPECT_EQ(MException(2, "%s", text.c_str()).GetMessageA(), Cut(text, 1024));
  }
}

TEST(LimitsOfTexts, CutLanguages) {
  for (const std::size_t size : Around(32)) {
    const std::string text(size, 'l');
    SetSystemLocale(text.c_str());
    EXPECT_EQ(GetSystemLocale(), Cut(text, 32));
    SetCodePage(text.c_str());
    SetLocalFolder(text.c_str());
  }
}

TEST(LimitsOfTexts, LeaveZonesAndSchemesWhole) {
  for (const std::size_t size : Around(64)) {
    const std::string text(size, 'z');
    EXPECT_EQ(getLocalUTCDeltaForTimezone(text.c_str(), 2459580.5), 0.0);
    SetAppExternalURLScheme(text.c_str());
    EXPECT_EQ(GetAppExternalURLScheme(), text.substr(0, 64));
  }
  EXPECT_NE(getLocalUTCDeltaForTimezone("Europe/Berlin", 2459580.5), 0.0);
}

TEST_F(Limits, OfNumberFormatsCutThem) {
  const double value = 0.5;
  for (const std::size_t size : Around(32)) {
    const std::string format = "%g" + std::string(size - 2, '-');
    {
      MTextFile file;
      ASSERT_TRUE(file.Open("n.txt", true));
      EXPECT_TRUE(file.Writeln(&value, 1, format.c_str()));
    }
    EXPECT_EQ(kv::test::ReadBytes("n.txt"), "0.5" + Cut(format, 32).substr(2) + "\r\n");
  }
}

}  // namespace
