#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/sandbox.h"
#include "utils/files/files.h"

namespace {

using kv::test::FileExists;
using kv::test::ReadBytes;
using kv::test::WriteBytes;

constexpr unsigned kOpen = 1;
constexpr unsigned kClosed = 2;
constexpr unsigned kOpenFailed = 128;
constexpr unsigned kCloseFailed = 256;

// Shows what the contract of a derived class can see.
class OpenedFile : public MFile {
 public:
  using MFile::GetAccessMode;
  using MFile::GetFlagAndAttributes;
  using MFile::GetMethodMove;
  using MFile::GetOpenMode;
  using MFile::GetShareMode;
  using MFile::MFile;
  unsigned State() const { return m_State; }
  int OpenCount() const { return m_OpenCount; }
  const std::wstring& Path() const { return m_Path; }
};

class BinaryFile : public kv::test::Sandbox {};

std::string ReadAll(MFile& file) {
  std::string bytes(1000, '\0');
  bytes.resize(file.Read(bytes.data(), static_cast<unsigned>(bytes.size())));
  return bytes;
}

// Runs an action that raises and returns what it prints and carries.
template <typename Action>
std::string Raised(Action action) {
  testing::internal::CaptureStdout();
  std::string text = "nothing raised";
  try {
    action();
  } catch (const MException& error) {
    EXPECT_EQ(error.GetCode(), 2u);
    text = error.GetMessage();
  }
  const std::string printed = testing::internal::GetCapturedStdout();
  EXPECT_EQ(printed, text == "nothing raised" ? "" : text) << "printed once, when raised";
  return text;
}

TEST_F(BinaryFile, StartsClosed) {
  OpenedFile file;
  char byte = 'x';
  EXPECT_EQ(file.State(), kClosed);
  EXPECT_EQ(file.OpenCount(), 0);
  EXPECT_TRUE(file.Path().empty());
  EXPECT_EQ(file.Read(&byte, 1), 0u);
  EXPECT_EQ(file.Write(&byte, 1), 0u);
  EXPECT_EQ(file.GetFilePointer(), 0u);
  EXPECT_EQ(file.GetLength(), -1);
  EXPECT_EQ(file.GetTime(0), 0);
  EXPECT_EQ(file.Seek(0, 0), 0xFFFFFFFFu);
  EXPECT_EQ(byte, 'x');
}

TEST_F(BinaryFile, ChoosesAccessByTheFirstMatchingBit) {
  constexpr unsigned kGenericRead = 0x80000000;
  constexpr unsigned kGenericWrite = 0x40000000;
  const struct {
    unsigned mode;
    unsigned access;
  } rows[] = {
      {2, kGenericRead},
      {2 | 4, kGenericRead},
      {2 | 1, kGenericRead},
      {2 | 16, kGenericRead},
      {34, kGenericRead},
      {4, kGenericWrite},
      {5, kGenericWrite},
      {4 | 8 | 16, kGenericWrite},
      {8, kGenericRead | kGenericWrite},
      {16, kGenericRead | kGenericWrite},
      {8 | 16 | 1, kGenericRead | kGenericWrite},
      {16 | 64, kGenericRead | kGenericWrite},
  };
  const OpenedFile file;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.mode);
    EXPECT_EQ(file.GetAccessMode(row.mode), row.access);
  }
}

TEST_F(BinaryFile, RefusesModesWithoutAccess) {
  for (const unsigned mode : {0u, 1u, 32u, 64u, 1u | 32u | 64u, 128u}) {
    SCOPED_TRACE(mode);
    OpenedFile file;
    EXPECT_EQ(Raised([&] { file.Open("a.bin", mode); }),
              "MFile::GetAccessMode - bad parameter inAccessMode\n");
    EXPECT_EQ(Raised([&] { const MFile made("a.bin", mode); }),
              "MFile::GetAccessMode - bad parameter inAccessMode\n");
    EXPECT_FALSE(FileExists("a.bin"));
  }
}

TEST_F(BinaryFile, ChoosesSharingByTheFirstMatchingBit) {
  const struct {
    unsigned mode;
    unsigned share;
  } rows[] = {
      {2, 1}, {32, 1}, {2 | 64, 1},  {4 | 32, 1}, {16 | 32, 1}, {4, 2}, {5, 2},
      {8, 2}, {64, 2}, {16 | 64, 2}, {16, 0},     {1, 0},       {0, 0},
  };
  const OpenedFile file;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.mode);
    EXPECT_EQ(file.GetShareMode(row.mode), row.share);
  }
}

TEST_F(BinaryFile, ChoosesDispositionByTheFirstMatchingBit) {
  constexpr unsigned kCreateAlways = 2;
  constexpr unsigned kOpenExisting = 3;
  constexpr unsigned kOpenAlways = 4;
  const struct {
    unsigned mode;
    unsigned disposition;
  } rows[] = {
      {1, kCreateAlways}, {5, kCreateAlways},    {1 | 2, kCreateAlways}, {2, kOpenExisting},
      {8, kOpenExisting}, {16, kOpenExisting},   {2 | 4, kOpenExisting}, {34, kOpenExisting},
      {4, kOpenAlways},   {4 | 64, kOpenAlways}, {0, kOpenAlways},
  };
  const OpenedFile file;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.mode);
    EXPECT_EQ(file.GetOpenMode(row.mode), row.disposition);
  }
}

TEST_F(BinaryFile, ChoosesFlagsByTheFirstMatchingBit) {
  constexpr unsigned kRandomAccess = 0x10000000;
  constexpr unsigned kSequentialScan = 0x08000000;
  constexpr unsigned kNormal = 0x80;
  const struct {
    unsigned mode;
    unsigned flags;
  } rows[] = {
      {2, kRandomAccess},   {1 | 2, kRandomAccess}, {34, kRandomAccess},
      {1, kSequentialScan}, {5, kSequentialScan},   {4, kNormal},
      {8, kNormal},         {16, kNormal},          {0, kNormal},
  };
  const OpenedFile file;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.mode);
    EXPECT_EQ(file.GetFlagAndAttributes(row.mode), row.flags);
  }
}

TEST_F(BinaryFile, NamesSeekOrigins) {
  const OpenedFile file;
  EXPECT_EQ(file.GetMethodMove(0), 0u);
  EXPECT_EQ(file.GetMethodMove(1), 1u);
  EXPECT_EQ(file.GetMethodMove(2), 2u);
  EXPECT_EQ(file.GetMethodMove(3), 255u);
  EXPECT_EQ(file.GetMethodMove(0xFFFFFFFF), 255u);
}

TEST_F(BinaryFile, ConstructorOpensOrRaises) {
  WriteBytes("a.bin", "abc");
  OpenedFile file("a.bin", 2);
  EXPECT_EQ(file.State(), kOpen);
  EXPECT_EQ(file.OpenCount(), 1);
  EXPECT_EQ(file.Path(), L"a.bin");
  EXPECT_EQ(Raised([] { const MFile missing("missing.bin", 2); }),
            "MFile::Load - file open failure\n");
}

TEST_F(BinaryFile, CountsOpensOfTheSamePath) {
  WriteBytes("a.bin", "abc");
  OpenedFile file;
  EXPECT_TRUE(file.Open("a.bin", 2));
  EXPECT_EQ(ReadAll(file), "abc");
  EXPECT_TRUE(file.Open("a.bin", 2));
  EXPECT_TRUE(file.Open("a.bin", 0)) << "the mode of a counted open is not looked at";
  EXPECT_EQ(file.OpenCount(), 3);
  EXPECT_EQ(file.GetFilePointer(), 3u) << "a counted open moves nothing";
  EXPECT_TRUE(file.Close());
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(file.State(), kOpen);
  EXPECT_EQ(file.GetLength(), 3);
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(file.State(), kClosed);
  EXPECT_EQ(file.GetLength(), -1);
}

TEST_F(BinaryFile, ComparesPathsByTheirText) {
  WriteBytes("a.bin", "abc");
  OpenedFile file;
  EXPECT_TRUE(file.Open("a.bin", 2));
  const OpenedFile firstHandle(file);  // closes it at the end
  EXPECT_TRUE(file.Open(".\\a.bin", 2));
  EXPECT_EQ(file.OpenCount(), 1) << "another spelling is another open";
  EXPECT_EQ(file.Path(), L".\\a.bin");
}

TEST_F(BinaryFile, CountsClosesOfAClosedFileToo) {
  WriteBytes("a.bin", "abc");
  OpenedFile file;
  EXPECT_TRUE(file.Close());
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(file.OpenCount(), -2);
  EXPECT_EQ(file.State(), kClosed);
  EXPECT_TRUE(file.Open("a.bin", 2));
  EXPECT_EQ(file.OpenCount(), 1);
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(file.State(), kClosed);
}

TEST_F(BinaryFile, AFailedOpenLeavesItUsable) {
  WriteBytes("a.bin", "abc");
  OpenedFile file;
  EXPECT_FALSE(file.Open("missing.bin", 2));
  EXPECT_EQ(file.State(), kOpenFailed);
  EXPECT_FALSE(file.Close());
  EXPECT_EQ(file.GetLength(), -1);
  EXPECT_TRUE(file.Open("a.bin", 2));
  EXPECT_EQ(ReadAll(file), "abc");
  EXPECT_TRUE(file.Close());
}

TEST_F(BinaryFile, ABadModeLeavesAnOpenFileOpen) {
  WriteBytes("a.bin", "abc");
  WriteBytes("b.bin", "bcdef");
  OpenedFile file("a.bin", 2);
  const OpenedFile firstHandle(file);  // closes it at the end
  EXPECT_EQ(Raised([&] { file.Open("b.bin", 1); }),
            "MFile::GetAccessMode - bad parameter inAccessMode\n");
  EXPECT_EQ(file.State(), kOpen);
  EXPECT_EQ(ReadAll(file), "abc");
  EXPECT_TRUE(file.Open("b.bin", 2)) << "a later open really opens";
  EXPECT_EQ(ReadAll(file), "bcdef");
}

TEST_F(BinaryFile, AnotherPathDoesNotCloseTheOldHandle) {
  WriteBytes("a.bin", "abc");
  WriteBytes("b.bin", "b");
  OpenedFile file("a.bin", 16);
  const OpenedFile firstHandle(file);  // closes it at the end
  EXPECT_TRUE(file.Open("b.bin", 16));
  EXPECT_EQ(MFile::GetLength("a.bin"), -1) << "the exclusive handle is still held";
}

TEST_F(BinaryFile, CopiesShareTheHandleAndCountForThemselves) {
  WriteBytes("a.bin", "abcdef");
  OpenedFile file("a.bin", 2);
  OpenedFile copy(file);
  char bytes[4] = "";
  EXPECT_EQ(copy.Read(bytes, 3), 3u);
  EXPECT_EQ(file.GetFilePointer(), 3u) << "one file pointer for both";
  EXPECT_TRUE(copy.Open("a.bin", 2));
  EXPECT_EQ(copy.OpenCount(), 2);
  EXPECT_EQ(file.OpenCount(), 1);
  EXPECT_TRUE(file.Close());
  EXPECT_TRUE(copy.Close()) << "one open is still due";
  EXPECT_FALSE(copy.Close()) << "the handle is gone";
  EXPECT_EQ(copy.State(), kCloseFailed);
  EXPECT_TRUE(copy.Open("a.bin", 2)) << "the object stays usable";
  EXPECT_EQ(copy.GetLength(), 6);
}

TEST_F(BinaryFile, AssignmentCopiesAllAndClosesNothing) {
  WriteBytes("a.bin", "abc");
  WriteBytes("b.bin", "bc");
  OpenedFile first("a.bin", 16);
  const OpenedFile firstHandle(first);  // closes it at the end
  OpenedFile second("b.bin", 2);
  first = second;
  EXPECT_EQ(first.Path(), L"b.bin");
  EXPECT_EQ(first.State(), kOpen);
  EXPECT_EQ(first.OpenCount(), 1);
  EXPECT_EQ(first.GetLength(), 2);
  EXPECT_EQ(MFile::GetLength("a.bin"), -1) << "the target's own handle stays open";
}

TEST_F(BinaryFile, DestructionCountsAsOneClose) {
  WriteBytes("a.bin", "abc");
  {
    const MFile file("a.bin", 16);
    EXPECT_EQ(MFile::GetLength("a.bin"), -1);
  }
  EXPECT_EQ(MFile::GetLength("a.bin"), 3);
}

TEST_F(BinaryFile, Mode6ReadsOnly) {
  WriteBytes("a.bin", "abc");
  MFile file;
  EXPECT_FALSE(file.Open("missing.bin", 6));
  EXPECT_FALSE(FileExists("missing.bin"));
  EXPECT_TRUE(file.Open("a.bin", 6));
  EXPECT_EQ(ReadAll(file), "abc");
  EXPECT_EQ(Raised([&] { file.Write("x", 1); }), "MFile::Write - writing error in file a.bin\n");
  EXPECT_EQ(MFile::GetLength("a.bin"), 3) << "others may read";
}

TEST_F(BinaryFile, Mode4KeepsWhatItDoesNotOverwrite) {
  WriteBytes("a.bin", "abcdef");
  MFile file("a.bin", 4);
  EXPECT_EQ(file.Write("XY", 2), 2u);
  EXPECT_EQ(Raised([&] { ReadAll(file); }), "MFile::Read - reading error in file a.bin\n");
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(ReadBytes("a.bin"), "XYcdef");
}

TEST_F(BinaryFile, Mode4CreatesAMissingFile) {
  MFile file("new.bin", 4);
  EXPECT_EQ(file.Write("a\0b", 3), 3u);
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(ReadBytes("new.bin"), std::string("a\0b", 3));
}

TEST_F(BinaryFile, Mode5EmptiesTheFile) {
  WriteBytes("a.bin", "abcdef");
  MFile file("a.bin", 5);
  EXPECT_EQ(file.GetLength(), 0);
  EXPECT_EQ(file.Write("x", 1), 1u);
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(ReadBytes("a.bin"), "x");
}

TEST_F(BinaryFile, Mode16IsExclusiveAndNeverCreates) {
  WriteBytes("a.bin", "abc");
  MFile file;
  EXPECT_FALSE(file.Open("missing.bin", 16));
  EXPECT_FALSE(FileExists("missing.bin"));
  EXPECT_TRUE(file.Open("a.bin", 16));
  EXPECT_EQ(ReadAll(file), "abc");
  EXPECT_EQ(file.Write("d", 1), 1u);
  MFile other;
  EXPECT_FALSE(other.Open("a.bin", 34));
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(ReadBytes("a.bin"), "abcd");
}

TEST_F(BinaryFile, Mode8LetsOthersWriteAndNotRead) {
  WriteBytes("a.bin", "abc");
  MFile file("a.bin", 8);
  WriteBytes("a.bin", "xyz");
  EXPECT_EQ(ReadAll(file), "xyz");
  EXPECT_EQ(file.Write("!", 1), 1u);
  EXPECT_EQ(MFile::GetLength("a.bin"), -1);
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(ReadBytes("a.bin"), "xyz!");
}

TEST_F(BinaryFile, TakesTheReadOnlyAttributeFromAFileItWrites) {
  WriteBytes("a.bin", "abc");
  kv::test::SetReadOnly("a.bin", true);
  MFile reader("a.bin", 2);
  EXPECT_TRUE(reader.Close());
  EXPECT_TRUE(kv::test::IsReadOnly("a.bin")) << "reading leaves the attribute";
  MFile file;
  EXPECT_TRUE(file.Open("a.bin", 4));
  EXPECT_FALSE(kv::test::IsReadOnly("a.bin"));
  EXPECT_EQ(file.Write("X", 1), 1u);
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(ReadBytes("a.bin"), "Xbc");
}

TEST_F(BinaryFile, AFolderIsNoFile) {
  kv::test::CreateFolders("folder");
  MFile file;
  EXPECT_FALSE(file.Open("folder", 2));
  EXPECT_FALSE(file.Open("folder", 5));
  EXPECT_FALSE(MFile::DeleteFileA("folder"));
  EXPECT_EQ(MFile::GetLength("folder"), -1);
  EXPECT_TRUE(kv::test::FolderExists("folder"));
}

TEST_F(BinaryFile, AReadOnlyFolderIsNoFileEither) {
  kv::test::CreateFolders("folder");
  kv::test::SetReadOnly("folder", true);
  MFile file;
  EXPECT_FALSE(file.Open("folder", 2)) << "asked again once, not for ever";
  EXPECT_TRUE(kv::test::FolderExists("folder"));
}

TEST_F(BinaryFile, AReaderKeepsWritersOut) {
  WriteBytes("a.bin", "abc");
  const MFile reader("a.bin", 2);
  MFile writer;
  EXPECT_FALSE(writer.Open("a.bin", 4));
  EXPECT_FALSE(writer.Open("a.bin", 5));
  EXPECT_FALSE(writer.Open("a.bin", 16));
  EXPECT_EQ(ReadBytes("a.bin"), "abc");
}

// Lengths and positions are the low 32 bits of the system's.
TEST_F(BinaryFile, MeasuresLargeFilesIn32Bits) {
  kv::test::MakeSparse("large.bin", 0xC0000000);
  MFile file("large.bin", 2);
  EXPECT_EQ(file.GetLength(), -1073741824);
  EXPECT_EQ(MFile::GetLength("large.bin"), -1073741824);
  EXPECT_EQ(file.Seek(2, 0), 0xC0000000u);
  EXPECT_EQ(file.GetFilePointer(), 0xC0000000u);
  const unsigned char zero = 0;
  EXPECT_FALSE(file.Search(&zero, 1, true)) << "a negative length is not searched";
  EXPECT_EQ(file.GetFilePointer(), 0u);
  kv::test::MakeSparse("huge.bin", 0x10000000A);
  EXPECT_EQ(MFile::GetLength("huge.bin"), 10);
}

TEST_F(BinaryFile, ReadsToTheEndAndThenNothing) {
  WriteBytes("a.bin", "abcdef");
  MFile file("a.bin", 2);
  char bytes[8] = "#######";
  EXPECT_EQ(file.Read(bytes, 4), 4u);
  EXPECT_STREQ(bytes, "abcd###");
  EXPECT_EQ(file.Read(bytes, 4), 2u);
  EXPECT_STREQ(bytes, "efcd###");
  EXPECT_EQ(file.Read(bytes, 4), 0u);
  EXPECT_EQ(file.Read(bytes, 0), 0u);
  EXPECT_STREQ(bytes, "efcd###");
}

TEST_F(BinaryFile, SeeksFromEachOrigin) {
  WriteBytes("a.bin", "abcdef");
  MFile file("a.bin", 2);
  const struct {
    unsigned origin;
    int distance;
    unsigned position;
  } rows[] = {{0, 4, 4}, {1, -3, 1}, {1, 2, 3}, {2, 0, 6}, {2, -6, 0}, {0, 100, 100}, {0, 0, 0}};
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << "origin " << row.origin << " by " << row.distance);
    EXPECT_EQ(file.Seek(row.origin, row.distance), row.position);
    EXPECT_EQ(file.GetFilePointer(), row.position);
  }
  EXPECT_EQ(file.Seek(0, -1), 0xFFFFFFFFu) << "before the start is refused";
  EXPECT_EQ(file.GetFilePointer(), 0u);
}

TEST_F(BinaryFile, RefusesUnknownSeekOrigins) {
  WriteBytes("a.bin", "abc");
  MFile file("a.bin", 2);
  for (const unsigned origin : {3u, 255u, 0xFFFFFFFFu}) {
    SCOPED_TRACE(origin);
    EXPECT_EQ(Raised([&] { file.Seek(origin, 0); }),
              "MFile::Seek - bad parameter inDistanceToMove\n");
  }
  MFile closed;
  EXPECT_EQ(Raised([&] { closed.Seek(3, 0); }), "MFile::Seek - bad parameter inDistanceToMove\n");
}

TEST_F(BinaryFile, MemoryMappingIsNotOffered) {
  WriteBytes("a.bin", "abc");
  MFile file("a.bin", 2);
  long info = 42;
  EXPECT_FALSE(file.GetMMInfo(&info));
  EXPECT_EQ(info, 42);
}

struct SearchRow {
  const char* fact;
  std::string content;
  std::string pattern;
  int from;  // file pointer before the search; -1 searches from the start
  bool found;
  unsigned position;
};

std::string Filled(std::size_t size, std::size_t offset, const char* pattern) {
  std::string bytes(size, '.');
  return bytes.replace(offset, std::strlen(pattern), pattern);
}

TEST_F(BinaryFile, SearchesInPiecesThatDoNotOverlap) {
  const SearchRow rows[] = {
      {"at the start", "abcdef", "ab", -1, true, 2},
      {"at the end", "abcdef", "ef", -1, true, 6},
      {"absent", "abcdef", "xy", -1, false, 0},
      {"longer than the file", "abc", "abcd", -1, false, 0},
      {"from the pointer on", "abcabc", "abc", 1, true, 6},
      {"not behind the pointer", "abcdef", "abc", 1, false, 1},
      {"an empty file", "", "a", -1, false, 0},
      {"pointer at the end", "abc", "c", 3, false, 3},
      {"pointer past the end", "abc", "c", 10, false, 10},
      {"an empty pattern", "abc", "", -1, true, 0},
      {"across two pieces", Filled(100000, 65534, "needle"), "needle", -1, false, 0},
      {"last bytes of the first piece", Filled(100000, 65529, "needle"), "needle", -1, true, 65535},
      {"first bytes of the second piece", Filled(100000, 65535, "needle"), "needle", -1, true,
       65541},
      {"inside the second piece", Filled(100000, 90000, "needle"), "needle", -1, true, 90006},
      {"end of the second piece", Filled(100000, 99994, "needle"), "needle", -1, true, 100000},
      {"pieces counted from the pointer", Filled(100000, 65534, "needle"), "needle", 10, true,
       65540},
      {"exactly one piece", Filled(65535, 65529, "needle"), "needle", -1, true, 65535},
  };
  for (const SearchRow& row : rows) {
    SCOPED_TRACE(row.fact);
    WriteBytes("s.bin", row.content);
    MFile file("s.bin", 2);
    file.Seek(0, row.from < 0 ? 2 : row.from);
    const auto* pattern = reinterpret_cast<const unsigned char*>(row.pattern.data());
    EXPECT_EQ(file.Search(pattern, static_cast<unsigned>(row.pattern.size()), row.from < 0),
              row.found);
    EXPECT_EQ(file.GetFilePointer(), row.position);
  }
}

// The last piece is shorter than the buffer: what an earlier piece left behind it is not searched.
TEST_F(BinaryFile, SearchLooksOnlyAtBytesThatWereRead) {
  std::string content(65538, '.');
  content.replace(3, 3, "dle").replace(65535, 3, "nee");
  WriteBytes("s.bin", content);
  MFile file("s.bin", 2);
  EXPECT_FALSE(file.Search(reinterpret_cast<const unsigned char*>("needle"), 6, true));
}

TEST_F(BinaryFile, SearchOfAClosedFileFindsNothing) {
  MFile file;
  const unsigned char pattern[] = {'a'};
  EXPECT_FALSE(file.Search(pattern, 1, true));
  EXPECT_FALSE(file.Search(pattern, 1, false));
}

// Gives other bytes than the file holds and notes how it is asked.
class RewritingFile : public MFile {
 public:
  using MFile::MFile;
  unsigned Read(void* buffer, unsigned count) override {
    counts.push_back(count);
    const unsigned read = MFile::Read(buffer, count);
    std::memset(buffer, 'z', read);
    return read;
  }
  std::vector<unsigned> counts;
};

TEST_F(BinaryFile, SearchReadsThroughTheVirtualRead) {
  WriteBytes("s.bin", std::string(70000, 'a'));
  RewritingFile file("s.bin", 2);
  EXPECT_TRUE(file.Search(reinterpret_cast<const unsigned char*>("zz"), 2, true));
  EXPECT_FALSE(file.Search(reinterpret_cast<const unsigned char*>("a"), 1, true));
  EXPECT_EQ(file.counts, (std::vector<unsigned>{65535, 65535, 65535}));
}

// Answers with another number of bytes than it was asked for.
class MiscountingFile : public MFile {
 public:
  MiscountingFile(const char* path, unsigned answer) : MFile(path, 2), answer_(answer) {}
  unsigned Read(void* buffer, unsigned count) override {
    std::memset(buffer, 'z', count);
    return answer_;
  }

 private:
  unsigned answer_;
};

TEST_F(BinaryFile, SearchBelievesNoMoreBytesThanItAskedFor) {
  WriteBytes("s.bin", std::string(100, 'a'));
  const auto* pattern = reinterpret_cast<const unsigned char*>("zz");
  MiscountingFile boaster("s.bin", 0xFFFFFFFF);
  EXPECT_TRUE(boaster.Search(pattern, 2, true));
  EXPECT_FALSE(boaster.Search(reinterpret_cast<const unsigned char*>("a"), 1, true));
  MiscountingFile miser("s.bin", 1);
  EXPECT_FALSE(miser.Search(pattern, 2, true)) << "one byte is all that arrived";
  MiscountingFile empty("s.bin", 0);
  EXPECT_FALSE(empty.Search(pattern, 2, true));
}

TEST_F(BinaryFile, ReportsTimesInWholeSecondsSince1970) {
  WriteBytes("a.bin", "abc");
  kv::test::SetTimes("a.bin", 1100000000, 1200000000, 9999999);
  MFile file("a.bin", 34);
  EXPECT_EQ(file.GetTime(1), 1100000000);
  EXPECT_EQ(file.GetTime(2), 1200000000);
  EXPECT_EQ(file.GetTime(3), 1200000000);
  EXPECT_EQ(file.GetTime(-1), 1200000000);
  // Wine takes the earlier of what its host knows for the creation: it is only known to be set.
  EXPECT_GT(file.GetTime(0), 0);
  EXPECT_EQ(MFile::GetTime("a.bin", 1), 1100000000);
  EXPECT_EQ(MFile::GetTime("a.bin", 2), 1200000000);
  EXPECT_EQ(MFile::GetTime("missing.bin", 2), 0);
}

TEST_F(BinaryFile, CopiesOverTheBeginningOfTheTarget) {
  WriteBytes("source.bin", "abc");
  EXPECT_TRUE(MFile::FileCopy("source.bin", "new.bin"));
  EXPECT_EQ(ReadBytes("new.bin"), "abc");
  WriteBytes("longer.bin", "0123456789");
  EXPECT_TRUE(MFile::FileCopy("source.bin", "longer.bin"));
  EXPECT_EQ(ReadBytes("longer.bin"), "abc3456789") << "a longer target keeps its tail";
}

TEST_F(BinaryFile, DoesNotCopyAnEmptySource) {
  WriteBytes("empty.bin", "");
  EXPECT_FALSE(MFile::FileCopy("empty.bin", "target.bin"));
  EXPECT_FALSE(FileExists("target.bin"));
}

TEST_F(BinaryFile, CopiesOverAReadOnlyTarget) {
  WriteBytes("source.bin", "abc");
  WriteBytes("target.bin", "xyz1");
  kv::test::SetReadOnly("target.bin", true);
  EXPECT_TRUE(MFile::FileCopy("source.bin", "target.bin"));
  EXPECT_EQ(ReadBytes("target.bin"), "abc1");
}

TEST_F(BinaryFile, DoesNotCopyAFileOntoItself) {
  WriteBytes("source.bin", "abc");
  EXPECT_EQ(Raised([] { MFile::FileCopy("source.bin", "source.bin"); }),
            "MFile::Load - file open failure\n");
  EXPECT_EQ(ReadBytes("source.bin"), "abc");
}

TEST_F(BinaryFile, CopyRaisesWhenAFileCannotBeOpened) {
  WriteBytes("source.bin", "abc");
  kv::test::CreateFolders("folder");
  EXPECT_EQ(Raised([] { MFile::FileCopy("missing.bin", "target.bin"); }),
            "MFile::Load - file open failure\n");
  EXPECT_FALSE(FileExists("target.bin"));
  EXPECT_EQ(Raised([] { MFile::FileCopy("source.bin", "folder"); }),
            "MFile::Load - file open failure\n");
  EXPECT_EQ(Raised([] { MFile::FileCopy("source.bin", "missing folder\\t.bin"); }),
            "MFile::Load - file open failure\n");
}

TEST_F(BinaryFile, ExistenceCountsFoldersToo) {
  WriteBytes("a.bin", "abc");
  kv::test::CreateFolders("folder");
  EXPECT_TRUE(MFile::IsExist("a.bin"));
  EXPECT_TRUE(MFile::IsExist("folder"));
  EXPECT_TRUE(MFile::IsExist("folder\\"));
  EXPECT_FALSE(MFile::IsExist("missing.bin"));
  EXPECT_FALSE(MFile::IsExist("a.bin\\b"));
}

TEST_F(BinaryFile, DeletesFiles) {
  WriteBytes("a.bin", "abc");
  EXPECT_TRUE(MFile::DeleteFileA("a.bin"));
  EXPECT_FALSE(FileExists("a.bin"));
  EXPECT_FALSE(MFile::DeleteFileA("a.bin"));
}

TEST_F(BinaryFile, TellsTheLengthOfAFileInUse) {
  WriteBytes("a.bin", "abcdef");
  EXPECT_EQ(MFile::GetLength("a.bin"), 6);
  EXPECT_EQ(MFile::GetLength("missing.bin"), -1);
  const MFile reader("a.bin", 2);
  EXPECT_EQ(MFile::GetLength("a.bin"), 6) << "readers do not exclude each other";
}

// The slots of the virtual table: two entries of the destructor, Open, Close, Read, Write.
TEST_F(BinaryFile, KeepsTheOrderOfItsVirtualOperations) {
  WriteBytes("a.bin", "abc");
  MFile file;
  void** table = nullptr;
  std::memcpy(&table, static_cast<const void*>(&file), sizeof table);
  const auto open = reinterpret_cast<bool (*)(MFile*, const char*, unsigned)>(table[2]);
  const auto close = reinterpret_cast<bool (*)(MFile*)>(table[3]);
  const auto read = reinterpret_cast<unsigned (*)(MFile*, void*, unsigned)>(table[4]);
  const auto write = reinterpret_cast<unsigned (*)(MFile*, const void*, unsigned)>(table[5]);
  char bytes[4] = "";
  ASSERT_TRUE(open(&file, "a.bin", 16));
  EXPECT_EQ(read(&file, bytes, 3), 3u);
  EXPECT_STREQ(bytes, "abc");
  EXPECT_EQ(write(&file, "d", 1), 1u);
  EXPECT_TRUE(close(&file));
  EXPECT_EQ(ReadBytes("a.bin"), "abcd");
}

}  // namespace
