#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstring>
#include <new>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/failing_system.h"
#include "tests/support/process.h"
#include "tests/support/sandbox.h"
#include "utils/astro/astro.h"
#include "utils/files/files.h"
#include "utils/paths/paths.h"

namespace {

using kv::test::CreateFolders;
using kv::test::FileExists;
using kv::test::FolderExists;
using kv::test::ReadBytes;
using kv::test::RemoveFile;
using kv::test::Sandbox;
using kv::test::WriteBytes;

constexpr char kPlace[] = "catalogs\\Planets&Moons\\DwarfPlanets.bin";

static_assert(offsetof(DwarfPlanetRecord, elements) == 0);
static_assert(offsetof(DwarfPlanetRecord, id) == 68);
static_assert(offsetof(DwarfPlanetRecord, id) + offsetof(SSO_ID, hostField) == 68);
static_assert(offsetof(DwarfPlanetRecord, id) + offsetof(SSO_ID, objectNumber) == 72);
static_assert(sizeof(DwarfPlanetsIO) == sizeof(void*));

// The elements of test objects are 68 times the same letter.
Elements MakeElements(char letter) {
  Elements elements;
  std::memset(elements.bytes, letter, sizeof elements.bytes);
  return elements;
}

DwarfPlanetRecord MakeRecord(char letter, unsigned hostField, unsigned objectNumber) {
  return {MakeElements(letter), {hostField, objectNumber}};
}

// A record as it stands in the file, the numbers written as their four bytes.
std::string Image(char letter, const char (&hostField)[5], const char (&objectNumber)[5]) {
  return std::string(68, letter) + std::string(hostField, 4) + std::string(objectNumber, 4);
}

std::string Text(const Elements& elements) {
  return std::string(reinterpret_cast<const char*>(elements.bytes), sizeof elements.bytes);
}

std::string ElementsOf(DwarfPlanetsIO& store, unsigned objectNumber) {
  Elements elements = MakeElements('?');
  EXPECT_TRUE(store.Get(&elements, {0, objectNumber}));
  return Text(elements);
}

class DwarfPlanets : public Sandbox {
 protected:
  void GiveFile(const std::string& bytes) { WriteBytes(Work() + kPlace, bytes); }
  std::string Saved() const { return Writable() + kPlace; }
};

class DwarfPlanetsIn : public kv::test::SandboxIn {};

TEST_F(DwarfPlanets, LoadsWholeRecordsInFileOrder) {
  GiveFile(Image('a', "\x01\x00\x00\x00", "\x07\x00\x00\x00") +
           Image('b', "\x02\x00\x00\x00", "\x78\x56\x34\xF2"));
  DwarfPlanetsIO store;
  const auto& records = DwarfPlanetsIO::ms_DwarfPlanets;
  ASSERT_EQ(records.size(), 2U);
  EXPECT_EQ(Text(records[0].elements), std::string(68, 'a'));
  EXPECT_EQ(records[0].id.hostField, 1U);
  EXPECT_EQ(records[0].id.objectNumber, 7U);
  EXPECT_EQ(Text(records[1].elements), std::string(68, 'b'));
  EXPECT_EQ(records[1].id.hostField, 2U);
  EXPECT_EQ(records[1].id.objectNumber, 0xF2345678U);
  EXPECT_FALSE(DwarfPlanetsIO::ms_IsChanged);
}

TEST_F(DwarfPlanets, IgnoresAPieceOfARecordAtTheEnd) {
  const std::string two = Image('a', "\x01\x00\x00\x00", "\x07\x00\x00\x00") +
                          Image('b', "\x02\x00\x00\x00", "\x08\x00\x00\x00");
  struct Case {
    std::size_t size;
    std::size_t records;
  };
  for (const Case& row :
       {Case{0, 0}, {1, 0}, {75, 0}, {76, 1}, {77, 1}, {151, 1}, {152, 2}, {190, 2}}) {
    SCOPED_TRACE(row.size);
    GiveFile((two + std::string(38, 'c')).substr(0, row.size));
    DwarfPlanetsIO::ms_DwarfPlanets.clear();
    const DwarfPlanetsIO store;
    EXPECT_EQ(DwarfPlanetsIO::ms_DwarfPlanets.size(), row.records);
  }
}

TEST_F(DwarfPlanets, StartsEmptyWithoutAFile) {
  DwarfPlanetsIO store;
  EXPECT_TRUE(DwarfPlanetsIO::ms_DwarfPlanets.empty());
  Elements elements = MakeElements('u');
  EXPECT_FALSE(store.Get(&elements, {0, 0}));
  EXPECT_EQ(Text(elements), std::string(68, 'u'));
}

TEST_F(DwarfPlanets, StartsEmptyWhenTheFileCannotBeOpened) {
  CreateFolders(Work() + kPlace);
  const DwarfPlanetsIO store;
  EXPECT_TRUE(DwarfPlanetsIO::ms_DwarfPlanets.empty());
}

// In the place of operator new: there is memory for one record, and none for two.
void* RefuseTwoRecords(std::size_t size) {
  if (size == 2 * sizeof(DwarfPlanetRecord)) throw std::bad_alloc();
  return ::operator new(size);
}

TEST_F(DwarfPlanets, HoldsNoneWhenThereIsNoMemoryForAll) {
  GiveFile(Image('a', "\x01\x00\x00\x00", "\x07\x00\x00\x00") +
           Image('b', "\x01\x00\x00\x00", "\x08\x00\x00\x00"));
  {
    const kv::test::ImportPatch patch(kv::test::kNew, &RefuseTwoRecords);
    EXPECT_THROW(DwarfPlanetsIO(), std::bad_alloc);
  }
  EXPECT_TRUE(DwarfPlanetsIO::ms_DwarfPlanets.empty());
  const DwarfPlanetsIO store;
  EXPECT_EQ(DwarfPlanetsIO::ms_DwarfPlanets.size(), 2U);
}

TEST_F(DwarfPlanets, PrefersTheCopyInTheWritableFolder) {
  GiveFile(Image('a', "\x01\x00\x00\x00", "\x07\x00\x00\x00"));
  WriteBytes(Saved(), Image('w', "\x01\x00\x00\x00", "\x07\x00\x00\x00"));
  DwarfPlanetsIO store;
  EXPECT_EQ(ElementsOf(store, 7), std::string(68, 'w'));
}

TEST_F(DwarfPlanets, GetLeavesTheOutputUntouchedOnAMiss) {
  GiveFile(Image('a', "\x01\x00\x00\x00", "\x07\x00\x00\x00"));
  DwarfPlanetsIO store;
  Elements elements = MakeElements('u');
  EXPECT_FALSE(store.Get(&elements, {1, 8}));
  EXPECT_EQ(Text(elements), std::string(68, 'u'));
}

TEST_F(DwarfPlanets, ComparesTheObjectNumberAlone) {
  GiveFile(Image('a', "\x01\x00\x00\x00", "\x07\x00\x00\x00"));
  DwarfPlanetsIO store;
  Elements elements = MakeElements('u');
  EXPECT_TRUE(store.Get(&elements, {99, 7}));
  EXPECT_EQ(Text(elements), std::string(68, 'a'));
  EXPECT_FALSE(store.Get(&elements, {7, 1}));
}

TEST_F(DwarfPlanets, SetAppendsANewObjectAndReplacesAKnownOne) {
  DwarfPlanetsIO store;
  EXPECT_EQ(store.Set(MakeRecord('a', 1, 7)), 1);
  EXPECT_TRUE(DwarfPlanetsIO::ms_IsChanged);
  EXPECT_EQ(store.Set(MakeRecord('b', 2, 7)), 1);
  const auto& records = DwarfPlanetsIO::ms_DwarfPlanets;
  ASSERT_EQ(records.size(), 1U);
  EXPECT_EQ(Text(records[0].elements), std::string(68, 'b'));
  EXPECT_EQ(records[0].id.hostField, 2U);
  EXPECT_EQ(store.Set(MakeRecord('c', 3, 6)), 2);
  EXPECT_EQ(records[1].id.objectNumber, 6U);
  EXPECT_EQ(store.Set(MakeRecord('d', 4, 7)), 2);
  EXPECT_EQ(Text(records[0].elements), std::string(68, 'd'));
}

TEST_F(DwarfPlanets, ActsOnTheFirstOfTwoRecordsOfAnObject) {
  GiveFile(Image('a', "\x01\x00\x00\x00", "\x07\x00\x00\x00") +
           Image('b', "\x02\x00\x00\x00", "\x07\x00\x00\x00"));
  DwarfPlanetsIO store;
  EXPECT_EQ(ElementsOf(store, 7), std::string(68, 'a'));
  EXPECT_EQ(store.Set(MakeRecord('c', 3, 7)), 2);
  EXPECT_EQ(Text(DwarfPlanetsIO::ms_DwarfPlanets[0].elements), std::string(68, 'c'));
  EXPECT_EQ(Text(DwarfPlanetsIO::ms_DwarfPlanets[1].elements), std::string(68, 'b'));
}

TEST_F(DwarfPlanets, SavesNothingWithoutAChange) {
  GiveFile(Image('a', "\x01\x00\x00\x00", "\x07\x00\x00\x00"));
  { const DwarfPlanetsIO store; }
  EXPECT_FALSE(FileExists(Saved()));
}

TEST_F(DwarfPlanets, SavesAllRecordsToTheWritableFolder) {
  const std::string original = Image('a', "\x01\x00\x00\x00", "\x07\x00\x00\x00");
  GiveFile(original);
  {
    DwarfPlanetsIO store;
    store.Set(MakeRecord('b', 0x04030201, 0x0D0C0B0A));
  }
  EXPECT_EQ(ReadBytes(Saved()), original + Image('b', "\x01\x02\x03\x04", "\x0A\x0B\x0C\x0D"));
  EXPECT_EQ(ReadBytes(Work() + kPlace), original);
}

TEST_F(DwarfPlanets, TruncatesALongerFileOnSaving) {
  WriteBytes(Saved(), std::string(1000, 'z'));
  {
    DwarfPlanetsIO store;
    DwarfPlanetsIO::ms_DwarfPlanets.clear();
    store.Set(MakeRecord('b', 0x04030201, 0x0D0C0B0A));
  }
  EXPECT_EQ(ReadBytes(Saved()), Image('b', "\x01\x02\x03\x04", "\x0A\x0B\x0C\x0D"));
}

TEST_F(DwarfPlanets, SavesAtEveryDestructionOnceChanged) {
  const std::string expected = Image('b', "\x01\x02\x03\x04", "\x0A\x0B\x0C\x0D");
  {
    const DwarfPlanetsIO first;
    {
      DwarfPlanetsIO second;
      second.Set(MakeRecord('b', 0x04030201, 0x0D0C0B0A));
    }
    EXPECT_EQ(ReadBytes(Saved()), expected);
    RemoveFile(Saved());
  }
  EXPECT_EQ(ReadBytes(Saved()), expected);
  EXPECT_TRUE(DwarfPlanetsIO::ms_IsChanged);
  EXPECT_EQ(DwarfPlanetsIO::ms_DwarfPlanets.size(), 1U);
}

TEST_F(DwarfPlanets, DoesNotReloadWhileRecordsAreThere) {
  GiveFile(Image('a', "\x01\x00\x00\x00", "\x07\x00\x00\x00"));
  DwarfPlanetsIO first;
  first.Set(MakeRecord('b', 2, 7));
  DwarfPlanetsIO second;
  EXPECT_EQ(DwarfPlanetsIO::ms_DwarfPlanets.size(), 1U);
  EXPECT_EQ(ElementsOf(second, 7), std::string(68, 'b'));
}

TEST_F(DwarfPlanets, CopiesNeitherLoadNorCarryAnything) {
  DwarfPlanetsIO store;
  GiveFile(Image('a', "\x01\x00\x00\x00", "\x07\x00\x00\x00"));
  DwarfPlanetsIO copy(store);
  EXPECT_TRUE(DwarfPlanetsIO::ms_DwarfPlanets.empty());
  EXPECT_EQ(&(copy = store), &copy);
  EXPECT_TRUE(DwarfPlanetsIO::ms_DwarfPlanets.empty());
}

TEST_F(DwarfPlanets, KeepsItsRecordsWhenTheFileCannotBeCreated) {
  {
    DwarfPlanetsIO store;
    CreateFolders(Saved());
    store.Set(MakeRecord('b', 2, 7));
  }
  EXPECT_TRUE(FolderExists(Saved()));
  EXPECT_EQ(DwarfPlanetsIO::ms_DwarfPlanets.size(), 1U);
}

TEST_F(DwarfPlanets, GivesUpSavingWhenItsFolderCannotBeMade) {
  {
    DwarfPlanetsIO store;
    WriteBytes(Writable() + "catalogs", "a file in the way");
    store.Set(MakeRecord('b', 2, 7));
  }
  EXPECT_EQ(ReadBytes(Writable() + "catalogs"), "a file in the way");
}

TEST_F(DwarfPlanets, GivesUpSavingWhenItsPathIsTooLong) {
  DwarfPlanetsIO store;
  store.Set(MakeRecord('b', 2, 7));
  // The folder itself fits.
  const std::string folder = Root() + std::string(240 - Root().size(), 'x') + "\\";
  KelvarisPath::SetWritableFolder(folder.c_str());
  { const DwarfPlanetsIO other; }
  EXPECT_EQ(DwarfPlanetsIO::ms_DwarfPlanets.size(), 1U);
  EXPECT_FALSE(FolderExists(folder));
  EXPECT_FALSE(FileExists(Saved()));
}

TEST_P(DwarfPlanetsIn, LoadsAndSaves) {
  WriteBytes(Work() + kPlace, Image('a', "\x01\x00\x00\x00", "\x07\x00\x00\x00"));
  const std::string folder = Work() + "own\\";
  CreateFolders(Work() + "own");
  {
    DwarfPlanetsIO store;
    EXPECT_EQ(ElementsOf(store, 7), std::string(68, 'a'));
    store.Set(MakeRecord('b', 0x04030201, 7));
    KelvarisPath::SetWritableFolder(folder.c_str());
  }
  EXPECT_EQ(ReadBytes(folder + kPlace), Image('b', "\x01\x02\x03\x04", "\x07\x00\x00\x00"));
}
INSTANTIATE_TEST_SUITE_P(Scripts, DwarfPlanetsIn, testing::ValuesIn(kv::test::kFolderNames),
                         kv::test::FolderNameTag);

// A link to a device of the Unix host whose reads or writes fail. The system gives no handle of a
// Unix process to wait for: the link is what to wait for.
class DeviceLink {
 public:
  DeviceLink(const std::string& device, const std::string& path) : path_(path) {
    if (!FileExists("Z:\\bin\\ln")) return;
    unixPath_ = path.substr(2);
    std::replace(unixPath_.begin(), unixPath_.end(), '\\', '/');
    kv::test::RunProgram("Z:\\bin\\ln", {"-s", device, unixPath_});
    Await(true);
  }
  ~DeviceLink() { Remove(); }
  DeviceLink(const DeviceLink&) = delete;
  DeviceLink& operator=(const DeviceLink&) = delete;

  bool Exists() const { return MFile().Open(path_.c_str(), 2); }
  void Remove() {
    if (unixPath_.empty()) return;
    kv::test::RunProgram("Z:\\bin\\rm", {"-f", unixPath_});
    Await(false);
    unixPath_.clear();
  }

 private:
  void Await(bool exists) const {
    for (int i = 0; i < 1000 && Exists() != exists; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
  }

  std::string path_;
  std::string unixPath_;
};

TEST_F(DwarfPlanets, GetReaderThrowsWhenTheFileCannotBeRead) {
  CreateFolders(Work() + "catalogs\\Planets&Moons");
  DeviceLink link("/proc/self/mem", Work() + kPlace);
  ASSERT_TRUE(link.Exists()) << "needs a Unix host";
  try {
    GetReader();
    FAIL() << "no exception";
  } catch (const MException& e) {
    EXPECT_EQ(e.GetCode(), 2U);
  }
  link.Remove();
  GiveFile(Image('a', "\x01\x00\x00\x00", "\x07\x00\x00\x00"));
  EXPECT_EQ(ElementsOf(*GetReader(), 7), std::string(68, 'a'));
}

TEST_F(DwarfPlanets, NoExceptionLeavesTheDestructorWhenWritingFails) {
  DwarfPlanetsIO store;
  CreateFolders(Writable() + "catalogs\\Planets&Moons");
  const DeviceLink link("/dev/full", Saved());
  ASSERT_TRUE(link.Exists()) << "needs a Unix host";
  store.Set(MakeRecord('b', 2, 7));
  { const DwarfPlanetsIO other; }
  EXPECT_EQ(DwarfPlanetsIO::ms_DwarfPlanets.size(), 1U);
}

TEST_F(DwarfPlanets, GetReaderGivesOneInstanceToAllThreads) {
  GiveFile(Image('a', "\x01\x00\x00\x00", "\x07\x00\x00\x00"));
  std::vector<DwarfPlanetsIO*> readers(4);
  std::vector<std::thread> threads;
  for (DwarfPlanetsIO*& reader : readers) threads.emplace_back([&reader] { reader = GetReader(); });
  for (std::thread& thread : threads) thread.join();
  for (DwarfPlanetsIO* reader : readers) {
    EXPECT_NE(reader, nullptr);
    EXPECT_EQ(reader, readers[0]);
  }
  EXPECT_EQ(DwarfPlanetsIO::ms_DwarfPlanets.size(), 1U);
}

// Runs in a second process, whose work folder and Documents are those of its parent.
TEST(DwarfPlanetsChild, DISABLED_SetsARecordAndExits) {
  EXPECT_EQ(GetReader()->Set(MakeRecord('b', 0x04030201, 8)), 2);
}

TEST_F(DwarfPlanets, GetReaderSavesWhenTheProcessEnds) {
  const std::string original = Image('a', "\x01\x00\x00\x00", "\x07\x00\x00\x00");
  GiveFile(original);
  const auto child = kv::test::RunOwnCase("DwarfPlanetsChild.DISABLED_SetsARecordAndExits");
  EXPECT_EQ(child.exitCode, 0U) << child.out << child.err;
  EXPECT_EQ(ReadBytes(Saved()), original + Image('b', "\x01\x02\x03\x04", "\x08\x00\x00\x00"));
}

// A copy of the DLL is a library of its own: its records are not those of this program's.
TEST_F(DwarfPlanets, GetReaderSavesWhenTheLibraryIsUnloaded) {
  const std::string original = Image('a', "\x01\x00\x00\x00", "\x07\x00\x00\x00");
  GiveFile(original);
  const std::string path = Root() + "copy.dll";
  WriteBytes(path, ReadBytes(kv::test::ProgramFolder() + "kvutils.dll"));
  const HMODULE library = ::LoadLibraryW(kv::test::Widen(path).c_str());
  ASSERT_NE(library, nullptr);
  const auto getReader = reinterpret_cast<DwarfPlanetsIO* (*)()>(
      reinterpret_cast<void*>(::GetProcAddress(library, "_Z9GetReaderv")));
  ASSERT_NE(getReader, nullptr);
  EXPECT_EQ(getReader()->Set(MakeRecord('b', 0x04030201, 8)), 2);
  EXPECT_FALSE(FileExists(Saved()));
  EXPECT_TRUE(::FreeLibrary(library));
  EXPECT_EQ(::GetModuleHandleW(L"copy.dll"), nullptr);
  EXPECT_EQ(ReadBytes(Saved()), original + Image('b', "\x01\x02\x03\x04", "\x08\x00\x00\x00"));
  EXPECT_TRUE(DwarfPlanetsIO::ms_DwarfPlanets.empty());
}

#if defined(__GNUC__)
// In the Itanium C++ ABI the pointer of a virtual member function holds its place in the table, in
// bytes, plus 1. The two places before are the destructor's.
template <typename Member>
std::ptrdiff_t PlaceInTable(Member member) {
  std::ptrdiff_t place = 0;
  std::memcpy(&place, &member, sizeof place);
  return place;
}

TEST(DwarfPlanetsTable, HoldsDestructorGetSet) {
  EXPECT_EQ(PlaceInTable(&DwarfPlanetsIO::Get), 2 * 8 + 1);
  EXPECT_EQ(PlaceInTable(&DwarfPlanetsIO::Set), 3 * 8 + 1);
}
#endif

}  // namespace
