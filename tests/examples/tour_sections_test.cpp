// The sections of the tour that write files: what they say, what is on the disk before and after,
// and how they fail.

#include "examples/tour/archive.h"
#include "examples/tour/downloads.h"
#include "examples/tour/short_path.h"
#include "examples/tour/updates.h"
#include "examples/tour/workshop.h"
#include "tests/examples/tour_sections_fixture.h"
#include "utils/paths/paths.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using kv::test::CreateFolders;
using kv::test::FailureOf;
using kv::test::FileExists;
using kv::test::FolderExists;
using kv::test::kNewMoons;
using kv::test::ListTree;
using kv::test::ReadBytes;
using kv::test::RemoveFile;
using kv::test::UseTemporary;
using kv::test::WriteBytes;
using TourDownload = kv::test::TourSections;
using TourUpdate = kv::test::TourSections;
using TourArchive = kv::test::TourSections;
using Entries = std::vector<std::string>;

constexpr char kOldMoons[] =
    "! Known moons of the giant planets, March 2024\n"
    "Jupiter\t95\nSaturn\t146\nUranus\t28\nNeptune\t16\n";
// The checksums are those of Python's zlib.crc32 for the same bytes.
TEST_F(TourDownload, IsNewThenKnownThenNewAgain) {
  const tour::Workshop workshop;
  EXPECT_EQ(tour::DownloadText(workshop),
            "  download:Moons.txt has arrived              90 bytes   CRC-32 019A6CC9   new\n"
            "  download:Moons.txt is asked about again     90 bytes   CRC-32 019A6CC9   known\n"
            "  download:Moons.txt has got one line more    97 bytes   CRC-32 864D60A8   new\n"
            "  The registry download:files_crc_sum.dat has 8 bytes: 6B F3 25 37, the identifier of "
            "the\n"
            "  name, and C9 6C 9A 01, the checksum of what had arrived; lowest bytes first.\n");
  EXPECT_EQ(ListTree(workshop.Folder()),
            (Entries{"download\\", "download\\Moons.txt", "download\\files_crc_sum.dat"}));
  EXPECT_EQ(ReadBytes(workshop.Folder() + "download\\Moons.txt"),
            kNewMoons + std::string("Mars\t2\n"));
  EXPECT_EQ(ReadBytes(workshop.Folder() + "download\\files_crc_sum.dat"),
            "\x6B\xF3\x25\x37\xA8\x60\x4D\x86");
  EXPECT_EQ(ReadBytes(Work() + "server\\Moons.txt"), kNewMoons);
}

TEST_F(TourDownload, FailsWhereTheRegistryCannotBeWritten) {
  const tour::Workshop workshop;
  const std::string registry = workshop.Folder() + "download\\files_crc_sum.dat";
  CreateFolders(registry);
  EXPECT_EQ(FailureOf([&] { return tour::DownloadText(workshop); }),
            "the registry of downloads cannot be written: " + registry);
}

TEST_F(TourDownload, FailsWithoutItsFile) {
  RemoveFile(Work() + "server\\Moons.txt");
  const tour::Workshop workshop;
  EXPECT_EQ(FailureOf([&] { return tour::DownloadText(workshop); }),
            "server:Moons.txt is not found");
  EXPECT_EQ(FailureOf([&] { return tour::UpdateText(workshop); }), "server:Moons.txt is not found");
}

TEST_F(TourUpdate, TakesThePlaceOfTheFile) {
  const tour::Workshop workshop;
  EXPECT_EQ(tour::UpdateText(workshop),
            "  before   Moons.txt       Jupiter 95, Saturn 146, Uranus 28, Neptune 16\n"
            "           Moons_new.txt   Jupiter 95, Saturn 274, Uranus 28, Neptune 16\n"
            "  after    Moons.txt       Jupiter 95, Saturn 274, Uranus 28, Neptune 16\n");
  const std::string file = "catalogs\\Planets&Moons\\Moons.txt";
  EXPECT_EQ(ListTree(workshop.Folder()),
            (Entries{"catalogs\\", "catalogs\\Planets&Moons\\", file}));
  EXPECT_EQ(ReadBytes(workshop.Folder() + file), kNewMoons);
  EXPECT_EQ(ReadBytes(Work() + file), kOldMoons);
}

// The folder's own name holds the mark of an update, so that the file would move to another folder.
TEST_F(TourUpdate, FailsWhereItCannotBeInstalled) {
  UseTemporary(Root() + "Temp_new\\");
  const tour::Workshop workshop;
  EXPECT_EQ(FailureOf([&] { return tour::UpdateText(workshop); }),
            "the update " + workshop.Folder() +
                "catalogs\\Planets&Moons\\Moons_new.txt cannot be installed");
}

constexpr char kUnpackedText[] =
    "  unzip.exe has unpacked 3 files from server:constellations.zip:\n"
    "  de\\media\\constellations.txt   134 bytes   <your folder>\\de\\media\\constellations.txt\n"
    "  fr\\media\\constellations.txt   128 bytes   <your folder>\\fr\\media\\constellations.txt\n"
    "  ja\\media\\constellations.txt   159 bytes   <your folder>\\ja\\media\\constellations.txt\n";

std::string UnpackIn(const tour::Workshop& workshop) {
  return tour::ArchiveText(workshop, tour::PlainPath(workshop.Folder()));
}

TEST_F(TourArchive, IsUnpackedFileByFile) {
  const tour::Workshop workshop;
  EXPECT_EQ(UnpackIn(workshop), kUnpackedText);
  EXPECT_EQ(
      ListTree(workshop.Folder()),
      (Entries{"download\\", "download\\constellations.zip", "unpacked\\", "unpacked\\de\\",
               "unpacked\\de\\media\\", "unpacked\\de\\media\\constellations.txt", "unpacked\\fr\\",
               "unpacked\\fr\\media\\", "unpacked\\fr\\media\\constellations.txt", "unpacked\\ja\\",
               "unpacked\\ja\\media\\", "unpacked\\ja\\media\\constellations.txt"}));
  EXPECT_EQ(ReadBytes(workshop.Folder() + "unpacked\\de\\media\\constellations.txt"),
            "! constellation, its name in German\nUrsa Major\tGroßer Bär\nBoötes\tBärenhüter\n"
            "Leo Minor\tKleiner Löwe\nLepus\tHase\nEridanus\tEridanus\n");
}

TEST_F(TourArchive, IsUnpackedThroughShortNames) {
  for (const char* name : {"with two blanks", "Каталог", "天文データ", "🌍пуск"}) {
    SCOPED_TRACE(name);
    UseTemporary(Root() + name + "\\");
    const tour::Workshop workshop;
    EXPECT_EQ(UnpackIn(workshop), kUnpackedText);
    EXPECT_TRUE(FileExists(workshop.Folder() + "unpacked\\ja\\media\\constellations.txt"));
  }
}

TEST_F(TourArchive, IsLeftPackedWhereNoPathSuits) {
  UseTemporary(Root() + "with two blanks\\");
  const tour::Workshop workshop;
  EXPECT_EQ(tour::ArchiveText(workshop, ""),
            "  Left packed: unzip.exe is given its paths without quotes, and there is no plain one "
            "to " +
                workshop.Folder() + "\n");
  EXPECT_FALSE(FolderExists(workshop.Folder() + "unpacked"));
}

TEST_F(TourArchive, FailsWithoutItsProgram) {
  RemoveFile(Work() + "unzip.exe");
  const tour::Workshop workshop;
  EXPECT_EQ(FailureOf([&] { return UnpackIn(workshop); }),
            "unzip.exe cannot be started: it is not in this folder, nor on the search path");
}

TEST_F(TourArchive, FailsWhenItIsDamaged) {
  const std::string archive = Work() + "server\\constellations.zip";
  const std::string whole = ReadBytes(archive);
  for (const std::string& damaged :
       {std::string(), std::string("no archive"), whole.substr(0, whole.size() / 2)}) {
    SCOPED_TRACE(damaged.size());
    WriteBytes(archive, damaged);
    const tour::Workshop workshop;
    EXPECT_EQ(FailureOf([&] { return UnpackIn(workshop); }),
              "unzip.exe has unpacked nothing from server:constellations.zip");
  }
  RemoveFile(archive);
  KelvarisPath::ClearFileNamesStorage();
  const tour::Workshop workshop;
  EXPECT_EQ(FailureOf([&] { return UnpackIn(workshop); }),
            "server:constellations.zip is not found");
}

TEST_F(TourArchive, FailsWhenOneOfItsFilesIsDamaged) {
  const std::string archive = Work() + "server\\constellations.zip";
  const std::string name = "fr/media/constellations.txt";
  std::string bytes = ReadBytes(archive);
  const std::size_t header = bytes.find("PK\3\4", bytes.find(name) - 30);
  ASSERT_EQ(bytes.find(name), header + 30);
  // The packed bytes stand behind the name and the extra field, whose size is at 28.
  const auto extra = static_cast<unsigned char>(bytes[header + 28]);
  bytes.replace(header + 30 + name.size() + extra, 8, 8, '\xFF');
  WriteBytes(archive, bytes);
  const tour::Workshop workshop;
  EXPECT_EQ(FailureOf([&] { return UnpackIn(workshop); }),
            "unzip.exe has made no text of fr\\media\\constellations.txt in "
            "server:constellations.zip");
}

TEST_F(TourArchive, HasNoPlainPathToWhatIsNotThere) {
  EXPECT_EQ(tour::PlainPath("C:\\plain\\folder\\"), "C:\\plain\\folder\\");
  EXPECT_EQ(tour::PlainPath(Root() + "no such folder\\"), "");
  EXPECT_EQ(tour::PlainPath(Root() + "Каталог\\"), "");
}

}  // namespace
