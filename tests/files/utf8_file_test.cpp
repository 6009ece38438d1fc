// loadUTF8StringFromFile: a file as UTF-8 text.
#include <cstdio>
#include <string>

#include "tests/files/binary_file_fixture.h"
#include "tests/support/failing_system.h"
#include "tests/support/held_file.h"

namespace {

using namespace std::string_literals;
using kv::test::CreateFolders;
using kv::test::ImportPatch;
using kv::test::IsFree;
using kv::test::WriteBytes;

class Utf8File : public kv::test::Sandbox {};
class Utf8FileIn : public kv::test::SandboxIn {};

TEST_F(Utf8File, IsAppended) {
  const std::string rows[] = {
      "a",
      "one line\n",
      "a\r\nb\x1A tail",
      "\xEF\xBB\xBFwith a byte-order mark",
      "\xEF\xBB\xBF",
      "Каталог 天文データ 🌍",
      "\x01\x7F",
      "\xC0\x80",          // an overlong NUL holds no zero byte
      "\xC1\xBF",          // an overlong form
      "\xE0\x80\x80",      // another
      "\xF0\x80\x80\x80",  // another
      "\xED\xA0\x80",      // a high surrogate
      "\xED\xBF\xBF",      // a low one
      "\xF4\x8F\xBF\xBF",  // the last character
      std::string(4096, 'x'),
      std::string(3'000'000, 'x') + "é",
  };
  for (const std::string& text : rows) {
    SCOPED_TRACE(text.substr(0, 40));
    WriteBytes("a.txt", text);
    std::string out;
    EXPECT_TRUE(loadUTF8StringFromFile(out, "a.txt"));
    EXPECT_TRUE(out == text);
    out = "before ";
    EXPECT_TRUE(loadUTF8StringFromFile(out, "a.txt"));
    EXPECT_TRUE(out == "before " + text);
    EXPECT_TRUE(IsFree("a.txt"));
  }
}

TEST_F(Utf8File, IsThereTwiceWhenLoadedTwice) {
  WriteBytes("a.txt", "one line\n");
  std::string out;
  EXPECT_TRUE(loadUTF8StringFromFile(out, "a.txt"));
  EXPECT_TRUE(loadUTF8StringFromFile(out, "a.txt"));
  EXPECT_EQ(out, "one line\none line\n");
}

TEST_F(Utf8File, IsRefusedWhenItIsNoUtf8Text) {
  const std::string rows[] = {
      ""s,
      "A\0B"s,
      "\0"s,
      "A\0"s,
      "\0A"s,
      std::string(100'000, 'x') + '\0',
      "\x80"s,
      "A\x80"s,
      "\xBF"s,
      "\xC3"s,
      "A\xC3"s,
      "\xC3\x28"s,
      "\xE2\x82"s,
      "\xE2\x28\xA1"s,
      "\xF0\x9F\x98"s,
      "\xF0\x9F"s,
      "\xF4\x90\x80\x80"s,
      "\xF7\xBF\xBF\xBF"s,
      "\xF8\x88\x80\x80\x80"s,
      "\xFF"s,
      "\xFF\xFE"
      "A\x01"s,
      "Каталог\x80"s,
      std::string(100'000, 'x') + "\x80",
      "caf\xE9 in Latin-1"s,
  };
  for (const std::string& bytes : rows) {
    SCOPED_TRACE(testing::PrintToString(bytes.substr(0, 40)));
    WriteBytes("a.txt", bytes);
    std::string out = "before";
    EXPECT_FALSE(loadUTF8StringFromFile(out, "a.txt"));
    EXPECT_EQ(out, "before");
    EXPECT_TRUE(IsFree("a.txt"));
  }
}

TEST_F(Utf8File, IsNamedByAPath) {
  const std::string tooLong(40'000, 'x');
  const char* const paths[] = {
      nullptr,         "",       "missing.txt",   "folder",       "folder\\",
      "no\\a.txt",     "a\x80",  "\xC3",          "media:a.txt",  "a.txt\\b",
      "a\xC0\x80.txt", "A?.txt", tooLong.c_str(), "writable.txt",
  };
  WriteBytes("media\\a.txt", "text");
  WriteBytes("a.txt", "text");
  WriteBytes(Writable() + "writable.txt", "text");
  CreateFolders("folder");
  for (const char* path : paths) {
    SCOPED_TRACE(testing::PrintToString(path).substr(0, 40));
    std::string out = "before";
    EXPECT_FALSE(loadUTF8StringFromFile(out, path));
    EXPECT_EQ(out, "before");
  }
}

TEST_F(Utf8File, MayHaveAPathOfAnyLength) {
  const std::string path =
      std::string(100, 'a') + "\\" + std::string(100, 'b') + "\\" + std::string(100, 'c');
  WriteBytes(path, "text");
  std::string out;
  EXPECT_TRUE(loadUTF8StringFromFile(out, path.c_str()));
  EXPECT_EQ(out, "text");
}

TEST_P(Utf8FileIn, IsReadUnderAnyName) {
  WriteBytes(Work() + GetParam() + ".txt", GetParam());
  std::string out;
  EXPECT_TRUE(loadUTF8StringFromFile(out, (GetParam() + ".txt").c_str()));
  EXPECT_EQ(out, GetParam());
}
INSTANTIATE_TEST_SUITE_P(Scripts, Utf8FileIn, testing::ValuesIn(kv::test::kFolderNames),
                         kv::test::FolderNameTag);

TEST_F(Utf8File, IsRefusedWhileAnotherProcessHoldsIt) {
  WriteBytes("a.txt", "text");
  std::string out;
  {
    const kv::test::HeldFile held("a.txt");
    EXPECT_FALSE(loadUTF8StringFromFile(out, "a.txt"));
  }
  EXPECT_EQ(out, "");
  EXPECT_TRUE(loadUTF8StringFromFile(out, "a.txt"));
}

int g_reads = 0;

std::size_t ReadOneLess(void* buffer, std::size_t size, std::size_t count, std::FILE* stream) {
  ++g_reads;
  return std::fread(buffer, size, size == 1 ? count - 1 : count, stream) - (size == 1 ? 0 : 1);
}

std::size_t CountRead(void* buffer, std::size_t size, std::size_t count, std::FILE* stream) {
  ++g_reads;
  return std::fread(buffer, size, count, stream);
}

// These would be refused for their zero bytes, too.
TEST_F(Utf8File, IsNotReadFromTwoGibibytesOn) {
  const ImportPatch patch("fread", CountRead);
  for (const long long size : {0x80000000LL, 0xFFFFFFFFLL, 0x100000005LL}) {
    SCOPED_TRACE(size);
    kv::test::MakeSparse("a.txt", size);
    std::string out = "before";
    EXPECT_FALSE(loadUTF8StringFromFile(out, "a.txt"));
    EXPECT_EQ(out, "before");
    EXPECT_EQ(g_reads, 0);
  }
}

int RefuseToSeek(std::FILE*, long, int) { return -1; }

int RefuseToGoBack(std::FILE* stream, long distance, int origin) {
  return origin == SEEK_SET ? -1 : std::fseek(stream, distance, origin);
}

TEST_F(Utf8File, IsNotReadFromAnotherPlaceThanItsBeginning) {
  WriteBytes("a.txt", "text");
  const ImportPatch patch("fread", CountRead);
  for (const auto refuse : {RefuseToSeek, RefuseToGoBack}) {
    const ImportPatch seekPatch("fseek", refuse);
    std::string out = "before";
    EXPECT_FALSE(loadUTF8StringFromFile(out, "a.txt"));
    EXPECT_EQ(out, "before");
    EXPECT_EQ(g_reads, 0);
  }
  EXPECT_TRUE(IsFree("a.txt"));
}

TEST_F(Utf8File, IsRefusedWhenItCannotBeReadWhole) {
  WriteBytes("a.txt", "text");
  std::string out = "before";
  {
    const ImportPatch patch("fread", ReadOneLess);
    EXPECT_FALSE(loadUTF8StringFromFile(out, "a.txt"));
    EXPECT_EQ(g_reads, 1);
  }
  {
    const ImportPatch patch(kv::test::kNewArrayOrNull, kv::test::RefuseMemory);
    EXPECT_FALSE(loadUTF8StringFromFile(out, "a.txt"));
  }
  EXPECT_EQ(out, "before");
  EXPECT_TRUE(IsFree("a.txt"));
}

TEST_F(Utf8File, IsReadInOnePiece) {
  WriteBytes("a.txt", std::string(5'000'000, 'x'));
  const ImportPatch patch("fread", CountRead);
  std::string out;
  EXPECT_TRUE(loadUTF8StringFromFile(out, "a.txt"));
  EXPECT_EQ(g_reads, 1);
}

}  // namespace
