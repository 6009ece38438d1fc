// The folder of the tour's own: always new, the library's writable one while it lives, and gone
// afterwards.

#include "examples/tour/workshop.h"
#include "tests/examples/tour_sections_fixture.h"
#include "utils/paths/paths.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

namespace {

using kv::test::FailureOf;
using kv::test::FolderExists;
using kv::test::kNewMoons;
using kv::test::ListTree;
using kv::test::ReadBytes;
using kv::test::SetReadOnly;
using kv::test::UseTemporary;
using kv::test::Widen;
using kv::test::WriteBytes;
using TourWorkshop = kv::test::TourSections;
using Entries = std::vector<std::string>;

TEST_F(TourWorkshop, IsTheWritableFolderWhileItLivesAndLeavesNothing) {
  KelvarisPath folders;
  const Entries before = ListTree(Root());
  {
    const tour::Workshop workshop;
    EXPECT_EQ(workshop.Folder(), Temporary() + "kvutils-tour-1\\");
    EXPECT_EQ(folders.GetWritableFolder(), workshop.Folder());
    WriteBytes(workshop.Folder() + "a\\b.txt", "b");
    SetReadOnly(workshop.Folder() + "a\\b.txt", true);
    EXPECT_EQ(folders.GetPath("a:b.txt"), workshop.Folder() + "a\\b.txt");
  }
  EXPECT_EQ(folders.GetWritableFolder(), Writable());
  EXPECT_EQ(folders.GetPath("a:b.txt"), nullptr);
  EXPECT_EQ(ListTree(Root()), before);
}

TEST_F(TourWorkshop, IsAlwaysANewFolder) {
  WriteBytes(Temporary() + "kvutils-tour-1\\mine.txt", "mine");
  WriteBytes(Temporary() + "kvutils-tour-2", "a file");
  const Entries before = ListTree(Root());
  {
    const tour::Workshop workshop;
    EXPECT_EQ(workshop.Folder(), Temporary() + "kvutils-tour-3\\");
  }
  EXPECT_EQ(ReadBytes(Temporary() + "kvutils-tour-1\\mine.txt"), "mine");
  kv::test::RemoveTree(Writable());  // which the first resolver makes
  EXPECT_EQ(ListTree(Root()), before);
}

TEST_F(TourWorkshop, SaysWhenSomethingOfItStays) {
  tour::Workshop workshop;
  const std::string held = workshop.Folder() + "held.txt";
  const HANDLE file = ::CreateFileW(Widen(held).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(file, INVALID_HANDLE_VALUE);
  EXPECT_FALSE(workshop.Remove());
  EXPECT_STREQ(KelvarisPath().GetWritableFolder(), Writable().c_str());
  ::CloseHandle(file);
  EXPECT_TRUE(workshop.Remove());
  EXPECT_FALSE(FolderExists(workshop.Folder()));
}

TEST_F(TourWorkshop, NeedsAFolderForTemporaryFiles) {
  const auto make = [] { return tour::Workshop().Folder(); };
  KelvarisPath folders;
  const std::string missing = Root() + "nowhere\\";
  kv::test::SetEnvironment("TMP", missing);
  EXPECT_EQ(FailureOf(make).rfind("no folder can be made in the one for temporary files (TMP)", 0),
            0U);
  EXPECT_FALSE(FolderExists(missing));

  std::string longest = Temporary();
  longest.resize(180 - sizeof "kvutils-tour-1\\", 'x');
  UseTemporary(longest + "\\");
  EXPECT_EQ(make(), longest + "\\kvutils-tour-1\\");
  UseTemporary(longest + "x\\");
  EXPECT_EQ(FailureOf(make), "the path of the folder for temporary files (TMP) is too long: " +
                                 longest + "x\\kvutils-tour-1\\");
  EXPECT_EQ(ListTree(longest + "x"), Entries{});
  EXPECT_EQ(folders.GetWritableFolder(), Writable());
}

TEST_F(TourWorkshop, BringsWhatIsThere) {
  const tour::Workshop workshop;
  EXPECT_EQ(workshop.Bring("server:Moons.txt", "a\\b\\c.txt"), workshop.Folder() + "a\\b\\c.txt");
  EXPECT_EQ(ReadBytes(workshop.Folder() + "a\\b\\c.txt"), kNewMoons);
  EXPECT_EQ(FailureOf([&] { return workshop.Bring("server:Sun.txt", "d.txt"); }),
            "server:Sun.txt is not found");
  EXPECT_EQ(FailureOf([&] { return workshop.Bring("server:Moons.txt", "a\\b"); }),
            Work() + "server\\Moons.txt cannot be copied to " + workshop.Folder() + "a\\b");
}

}  // namespace
