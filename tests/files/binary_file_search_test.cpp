// Searching binary files.
#include <cstring>
#include <string>
#include <vector>

#include "tests/files/binary_file_fixture.h"

namespace {

using kv::test::WriteBytes;

class BinaryFileSearch : public kv::test::Sandbox {};

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

TEST_F(BinaryFileSearch, SearchesInPiecesThatDoNotOverlap) {
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
TEST_F(BinaryFileSearch, SearchLooksOnlyAtBytesThatWereRead) {
  std::string content(65538, '.');
  content.replace(3, 3, "dle").replace(65535, 3, "nee");
  WriteBytes("s.bin", content);
  MFile file("s.bin", 2);
  EXPECT_FALSE(file.Search(reinterpret_cast<const unsigned char*>("needle"), 6, true));
}

TEST_F(BinaryFileSearch, SearchOfAClosedFileFindsNothing) {
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

TEST_F(BinaryFileSearch, SearchReadsThroughTheVirtualRead) {
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

TEST_F(BinaryFileSearch, SearchBelievesNoMoreBytesThanItAskedFor) {
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

}  // namespace
