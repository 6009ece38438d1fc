// GetKvFileContent: the bytes of a file that a data name resolves to.
#include <cstring>
#include <memory>
#include <new>
#include <optional>
#include <string>

#include "tests/files/binary_file_fixture.h"
#include "tests/support/failing_system.h"
#include "tests/support/held_file.h"
#include "utils/paths/paths.h"

namespace {

using kv::test::CreateFolders;
using kv::test::ImportPatch;
using kv::test::LimitedReads;
using kv::test::Raised;
using kv::test::RemoveFile;
using kv::test::WriteBytes;

// The first `size` bytes of the buffer; none when there is no buffer.
std::optional<std::string> Content(const char* name, std::size_t size) {
  const std::unique_ptr<char[]> content(GetKvFileContent(name));
  if (content == nullptr) return std::nullopt;
  return std::string(content.get(), size);
}

std::string Text(const char* name) {
  const std::unique_ptr<char[]> content(GetKvFileContent(name));
  return content == nullptr ? "(none)" : content.get();
}

class FileContent : public kv::test::Sandbox {};
class FileContentIn : public kv::test::SandboxIn {};

TEST_F(FileContent, HasAZeroByteBehindTheBytes) {
  using namespace std::string_literals;
  std::string allBytes;
  for (int byte = 0; byte < 256; ++byte) allBytes += static_cast<char>(byte);
  const std::string rows[] = {
      "",
      "abc",
      "a\0b"s,
      "\0\0"s,
      "\xEF\xBB\xBFtext",
      "\x80\xC3\xFF",
      "a\r\nb\x1A",
      allBytes,
      std::string(4095, 'x'),
      std::string(4096, 'x'),
      std::string(65'536, 'x'),
      std::string(10'000'000, 'x'),
  };
  for (const std::string& bytes : rows) {
    SCOPED_TRACE(bytes.size());
    WriteBytes("media\\a.bin", bytes);
    const auto content = Content("media:a.bin", bytes.size() + 1);
    EXPECT_TRUE(content == bytes + '\0');
    EXPECT_TRUE(kv::test::IsFree("media\\a.bin"));
  }
}

TEST_F(FileContent, IsAlwaysANewBuffer) {
  WriteBytes("a.txt", "abc");
  const std::unique_ptr<char[]> first(GetKvFileContent("a.txt"));
  const std::unique_ptr<char[]> second(GetKvFileContent("a.txt"));
  ASSERT_TRUE(first != nullptr && second != nullptr);
  first[0] = 'x';
  EXPECT_STREQ(second.get(), "abc");
}

// From the last place that is looked in to the first.
TEST_F(FileContent, IsThatOfTheFileThatTheNameResolvesTo) {
  EXPECT_EQ(Text("media:a.txt"), "(none)");
  const std::string places[] = {
      Work() + "media\\a.txt",
      Writable() + "media\\a.txt",
      Work() + "en\\media\\a.txt",
      Writable() + "en\\media\\a.txt",
  };
  for (const std::string& place : places) {
    SCOPED_TRACE(place);
    WriteBytes(place, place);
    EXPECT_EQ(Text("media:a.txt"), place);
  }
}

TEST_F(FileContent, TakesEverySpellingOfAName) {
  WriteBytes("media\\sub\\a.txt", "abc");
  for (const char* name : {"media:sub:a.txt", ":media:sub:a.txt", "media/sub/a.txt",
                           "\\media\\sub\\a.txt", "media:sub/a.txt"}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(Text(name), "abc");
  }
}

TEST_P(FileContentIn, IsReadUnderAnyName) {
  WriteBytes(Work() + "media\\" + GetParam() + ".txt", GetParam());
  EXPECT_EQ(Text(("media:" + GetParam() + ".txt").c_str()), GetParam());
  WriteBytes(Writable() + "media\\" + GetParam() + ".txt", "writable");
  EXPECT_EQ(Text(("media:" + GetParam() + ".txt").c_str()), "writable");
}
INSTANTIATE_TEST_SUITE_P(Scripts, FileContentIn, testing::ValuesIn(kv::test::kFolderNames),
                         kv::test::FolderNameTag);

TEST_F(FileContent, IsNoneForWhatNamesNoFile) {
  const std::string tooLong =
      std::string(100, 'a') + "\\" + std::string(100, 'b') + "\\" + std::string(100, 'c');
  const struct {
    const char* what;
    const char* name;
  } rows[] = {
      {"null", nullptr},
      {"empty", ""},
      {"separator", ":"},
      {"missing", "b.txt"},
      {"folder", "media"},
      {"folder with a separator", "media:"},
      {"malformed", "a\x80"},
      {"below a file", "a.txt:b.txt"},
      {"too long", tooLong.c_str()},
  };
  WriteBytes("a.txt", "abc");
  WriteBytes(tooLong, "abc");
  CreateFolders("media");
  CreateFolders("en");
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    EXPECT_EQ(GetKvFileContent(row.name), nullptr);
  }
}

// The resolver goes on answering with a path that it has found once.
TEST_F(FileContent, IsNoneForAFileThatHasVanished) {
  WriteBytes("a.txt", "abc");
  EXPECT_EQ(Text("a.txt"), "abc");
  RemoveFile("a.txt");
  EXPECT_EQ(GetKvFileContent("a.txt"), nullptr);
  CreateFolders("a.txt");
  EXPECT_EQ(GetKvFileContent("a.txt"), nullptr);
}

TEST_F(FileContent, IsNoneWhileAnotherProcessHoldsTheFile) {
  WriteBytes("a.txt", "abc");
  {
    const kv::test::HeldFile held("a.txt");
    EXPECT_EQ(GetKvFileContent("a.txt"), nullptr);
  }
  EXPECT_EQ(Text("a.txt"), "abc");
}

TEST_F(FileContent, IsNoneFromTwoGibibytesOn) {
  for (const long long size : {0x80000000LL, 0xFFFFFFFFLL}) {
    SCOPED_TRACE(size);
    kv::test::MakeSparse("a.txt", size);
    EXPECT_EQ(GetKvFileContent("a.txt"), nullptr);
  }
}

TEST_F(FileContent, IsNoneWhenMemoryIsShort) {
  WriteBytes("a.txt", "abc");
  {
    const ImportPatch patch(kv::test::kNewArrayOrNull, kv::test::RefuseMemory);
    EXPECT_EQ(GetKvFileContent("a.txt"), nullptr);
  }
  EXPECT_TRUE(kv::test::IsFree("a.txt"));
}

TEST_F(FileContent, RaisesWhenTheSystemRefusesToRead) {
  WriteBytes("a.txt", "abc");
  const ImportPatch patch("ReadFile", kv::test::RefuseToRead);
  EXPECT_EQ(Raised([] { GetKvFileContent("a.txt"); }),
            "MFile::Read - reading error in file " + Work() + "a.txt\n");
  EXPECT_TRUE(kv::test::IsFree("a.txt"));
}

TEST_F(FileContent, RaisesWhenTheFoldersCannotBeTold) {
  WriteBytes("a.txt", "abc");
  {
    const ImportPatch patch("GetCurrentDirectoryW", kv::test::TellNoFolder);
    EXPECT_EQ(Raised([] { GetKvFileContent("a.txt"); }, 0), "KelvarisPath::GetCDPath return false");
  }
  EXPECT_EQ(Text("a.txt"), "abc");
}

std::size_t g_allocated = 0;

void* NoteAllocation(std::size_t size, const std::nothrow_t&) {
  g_allocated = size;
  return ::operator new[](size, std::nothrow);
}

TEST_F(FileContent, HasRoomForTheBytesAndTheZeroByte) {
  const struct {
    const char* bytes;
    std::size_t allocated;
  } rows[] = {{"", 1}, {"a", 2}, {"0123456789ABCDEF", 17}};
  const ImportPatch patch(kv::test::kNewArrayOrNull, NoteAllocation);
  for (const auto& row : rows) {
    SCOPED_TRACE(row.bytes);
    WriteBytes("a.txt", row.bytes);
    EXPECT_EQ(Text("a.txt"), row.bytes);
    EXPECT_EQ(g_allocated, row.allocated);
  }
}

TEST_F(FileContent, OfAFileThatIsCutMeanwhileIsZeroBehindWhatArrived) {
  WriteBytes("a.txt", "abcdefgh");
  const LimitedReads reads(3);
  for (int i = 0; i < 20; ++i) {
    // Memory that this buffer is likely to get again.
    std::unique_ptr<char[]>(new char[9]).get();
    EXPECT_EQ(Content("a.txt", 9), std::string("abc\0\0\0\0\0\0", 9));
  }
}

TEST_F(FileContent, IsReadInOnePiece) {
  WriteBytes("a.txt", std::string(5'000'000, 'x'));
  const LimitedReads reads(5'000'000);
  EXPECT_EQ(Text("a.txt").size(), 5'000'000U);
  EXPECT_EQ(reads.Count(), 1);
}

}  // namespace
