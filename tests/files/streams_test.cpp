#include <gtest/gtest.h>
#include <share.h>
#include <windows.h>

#include <climits>
#include <cstdio>
#include <memory>
#include <string>

#include "tests/support/held_file.h"
#include "tests/support/import_patch.h"
#include "tests/support/sandbox.h"
#include "utils/files/files.h"

namespace {

using kv::test::CreateFolders;
using kv::test::FileExists;
using kv::test::ImportPatch;
using kv::test::ReadBytes;
using kv::test::WriteBytes;

struct Closer {
  void operator()(std::FILE* stream) const { std::fclose(stream); }
};
using Stream = std::unique_ptr<std::FILE, Closer>;

std::string ReadAll(std::FILE* stream) {
  char bytes[100];
  return std::string(bytes, std::fread(bytes, 1, sizeof bytes, stream));
}

class Streams : public kv::test::Sandbox {};
class StreamsIn : public kv::test::SandboxIn {};

// What reaches the run-time library, which is not asked.
std::string g_opened;

std::FILE* RecordOpen(const wchar_t* path, const wchar_t* mode) {
  g_opened = kv::test::Narrow(path) + "|" + kv::test::Narrow(mode);
  return nullptr;
}

std::FILE* RecordShareOpen(const wchar_t* path, const wchar_t* mode, int shareFlag) {
  RecordOpen(path, mode);
  g_opened += "|" + std::to_string(shareFlag);
  return nullptr;
}

constexpr const char* kKnownModes[] = {
    "r",
    "w",
    "a",
    "r+",
    "w+",
    "a+",
    "rb",
    "rt",
    "rc",
    "rn",
    "rN",
    "rS",
    "rR",
    "rT",
    "rD",
    "r+b",
    "rb+",
    "w+bcSTDN",
    "aNDTRnt+",
    " r b ",
    "r, ccs=UTF-8",
    "rt+, ccs=UTF-16LE",
    "r,ccs=UNICODE",
    "w , ccs = utf-8 ",
    "a+t,ccs=Unicode",
    "r, ccs=utf-16le",
};

constexpr const char* kUnknownModes[] = {
    "",
    " ",
    "x",
    "b",
    "+r",
    "R",
    "W",
    "rw",
    "rr",
    "r++",
    "rbt",
    "rbb",
    "rcn",
    "rSR",
    "rTT",
    "rDD",
    "rNN",
    "wx",
    "wbx",
    "rq",
    "r1",
    "r\t",
    "r\n",
    "r,",
    "r,b",
    "r, ccs",
    "r, ccs=",
    "r, ccs= ",
    "r, ccs=utf8",
    "r, ccs=UTF-16",
    "r, ccs=UTX-8",
    "r, ccs=UTF-8b",
    "r, ccs=UTF\r8",  // as far from "-" as a capital letter from a small one
    "r, ccs=UTF-",
    "r, ccs:UTF-8",
    "r, CCS=UTF-8",
    "r; ccs=UTF-8",
    "r, ccs=UTF-8, ccs=UTF-8",
    ", ccs=UTF-8",
    "rü",
    "r\x80",
    "\xC3",
    "r\xC0\x80",
};

TEST_F(Streams, KnownModesArePassedOnUnchanged) {
  const ImportPatch patch("_wfopen", RecordOpen);
  const ImportPatch sharePatch("_wfsopen", RecordShareOpen);
  for (const char* mode : kKnownModes) {
    SCOPED_TRACE(mode);
    g_opened.clear();
    EXPECT_EQ(mm_fopen("a.txt", mode), nullptr);
    EXPECT_EQ(g_opened, std::string("a.txt|") + mode);
    EXPECT_EQ(mm_fsopen("a.txt", mode, _SH_DENYWR), nullptr);
    EXPECT_EQ(g_opened, std::string("a.txt|") + mode + "|32");
  }
}

TEST_F(Streams, UnknownModesDoNotReachTheRunTimeLibrary) {
  const ImportPatch patch("_wfopen", RecordOpen);
  const ImportPatch sharePatch("_wfsopen", RecordShareOpen);
  g_opened = "nothing";
  for (const char* mode : kUnknownModes) {
    SCOPED_TRACE(testing::PrintToString(mode));
    EXPECT_EQ(mm_fopen("a.txt", mode), nullptr);
    EXPECT_EQ(mm_fsopen("a.txt", mode, _SH_DENYNO), nullptr);
    EXPECT_EQ(g_opened, "nothing");
  }
  EXPECT_EQ(mm_fopen("a.txt", nullptr), nullptr);
  EXPECT_EQ(mm_fsopen("a.txt", nullptr, _SH_DENYNO), nullptr);
  EXPECT_EQ(g_opened, "nothing");
}

TEST_F(Streams, KnownShareFlagsArePassedOnUnchanged) {
  const ImportPatch patch("_wfsopen", RecordShareOpen);
  const struct {
    int flag;
    const char* opened;
  } rows[] = {
      {_SH_COMPAT, "a.txt|r|0"},  {_SH_DENYRW, "a.txt|r|16"}, {_SH_DENYWR, "a.txt|r|32"},
      {_SH_DENYRD, "a.txt|r|48"}, {_SH_DENYNO, "a.txt|r|64"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(mm_fsopen("a.txt", "r", row.flag), nullptr);
    EXPECT_EQ(g_opened, row.opened);
  }
}

TEST_F(Streams, UnknownShareFlagsDoNotReachTheRunTimeLibrary) {
  const ImportPatch patch("_wfsopen", RecordShareOpen);
  g_opened = "nothing";
  for (const int flag : {1, 15, 0x11, 0x50, 0x60, 0x70, 0x80, 0x140, -1, -64, INT_MAX, INT_MIN}) {
    SCOPED_TRACE(flag);
    EXPECT_EQ(mm_fsopen("a.txt", "r", flag), nullptr);
    EXPECT_EQ(g_opened, "nothing");
  }
}

TEST_F(Streams, PathsThatNameNoFileDoNotReachTheRunTimeLibrary) {
  const ImportPatch patch("_wfopen", RecordOpen);
  const ImportPatch sharePatch("_wfsopen", RecordShareOpen);
  g_opened = "nothing";
  const char* const paths[] = {nullptr, "", "a\x80", "\xC3", "a\xC0\x80.txt", "\xF4\x90\x80\x80"};
  for (const char* path : paths) {
    SCOPED_TRACE(testing::PrintToString(path));
    EXPECT_EQ(mm_fopen(path, "w"), nullptr);
    EXPECT_EQ(mm_fsopen(path, "w", _SH_DENYNO), nullptr);
    EXPECT_EQ(g_opened, "nothing");
  }
}

// Each mode is tried on a file that holds "old" and on one that is missing: what is read first,
// and what the file holds after "new" was written.
TEST_F(Streams, ModesDoWhatTheyAreKnownFor) {
  const struct {
    const char* mode;
    bool opensMissing;
    const char* read;
    const char* held;
  } rows[] = {
      {"rb", false, "old", "old"},   {"r+b", false, "old", "oldnew"},
      {"wb", true, "", "new"},       {"w+b", true, "", "new"},
      {"ab", true, "", "oldnew"},    {"a+b", true, "old", "oldnew"},
      {"rbSN", false, "old", "old"},
  };
  for (const auto& row : rows) {
    for (const bool shares : {false, true}) {
      SCOPED_TRACE(row.mode);
      const auto open = [&](const char* path) {
        return Stream(shares ? mm_fsopen(path, row.mode, _SH_DENYNO) : mm_fopen(path, row.mode));
      };
      WriteBytes("a.txt", "old");
      {
        const Stream stream = open("a.txt");
        ASSERT_NE(stream, nullptr);
        EXPECT_EQ(ReadAll(stream.get()), row.read);
        std::fseek(stream.get(), 0, SEEK_END);
        std::fwrite("new", 1, 3, stream.get());
      }
      EXPECT_EQ(ReadBytes("a.txt"), row.held);
      EXPECT_EQ(open("missing.txt") != nullptr, row.opensMissing);
      EXPECT_EQ(FileExists("missing.txt"), row.opensMissing);
      if (row.opensMissing) kv::test::RemoveFile("missing.txt");
    }
  }
}

TEST_F(Streams, TextModeTranslatesLineEnds) {
  WriteBytes("a.txt", "a\r\nb");
  EXPECT_EQ(ReadAll(Stream(mm_fopen("a.txt", "rb")).get()), "a\r\nb");
  EXPECT_EQ(ReadAll(Stream(mm_fopen("a.txt", "rt")).get()), "a\nb");
  std::fputs("c\n", Stream(mm_fopen("b.txt", "wt")).get());
  EXPECT_EQ(ReadBytes("b.txt"), "c\r\n");
  std::fputs("c\n", Stream(mm_fopen("b.txt", "wb")).get());
  EXPECT_EQ(ReadBytes("b.txt"), "c\n");
}

TEST_F(Streams, AnUnknownModeLeavesTheFileAlone) {
  for (const char* mode : {"wx", "wbx", "ww", "W", "w, ccs=latin"}) {
    SCOPED_TRACE(mode);
    WriteBytes("a.txt", "old");
    EXPECT_EQ(mm_fopen("a.txt", mode), nullptr);
    EXPECT_EQ(mm_fsopen("a.txt", mode, _SH_DENYNO), nullptr);
    EXPECT_EQ(ReadBytes("a.txt"), "old");
  }
}

TEST_F(Streams, OpenNoFolderAndNothingBelowAFile) {
  CreateFolders("folder");
  WriteBytes("a.txt", "old");
  for (const char* path : {"folder", "folder\\", ".", "no\\a.txt", "a.txt\\b", "a?.txt"}) {
    SCOPED_TRACE(path);
    for (const char* mode : {"r", "w", "a+"}) {
      EXPECT_EQ(mm_fopen(path, mode), nullptr);
      EXPECT_EQ(mm_fsopen(path, mode, _SH_DENYNO), nullptr);
    }
  }
}

TEST_F(Streams, PathsMayHaveAnyLength) {
  const std::string folder = std::string(100, 'a') + "\\" + std::string(100, 'b');
  const std::string path = folder + "\\" + std::string(100, 'c');
  CreateFolders(folder);
  std::fputs("abc", Stream(mm_fopen(path.c_str(), "wb")).get());
  EXPECT_EQ(ReadBytes(path), "abc");
  EXPECT_EQ(ReadAll(Stream(mm_fsopen(path.c_str(), "rb", _SH_DENYWR)).get()), "abc");
  EXPECT_EQ(mm_fopen(std::string(40'000, 'x').c_str(), "wb"), nullptr);
}

TEST_P(StreamsIn, AreOpenedAndMade) {
  const std::string path = Work() + GetParam() + ".txt";
  std::fputs("abc", Stream(mm_fopen(path.c_str(), "wb")).get());
  EXPECT_EQ(ReadBytes(path), "abc");
  EXPECT_EQ(ReadAll(Stream(mm_fsopen((GetParam() + ".txt").c_str(), "rb", _SH_DENYNO)).get()),
            "abc");
}
INSTANTIATE_TEST_SUITE_P(Scripts, StreamsIn, testing::ValuesIn(kv::test::kFolderNames),
                         kv::test::FolderNameTag);

bool CanBeOpened(DWORD access) {
  const HANDLE file =
      ::CreateFileW(L"a.txt", access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  return file != INVALID_HANDLE_VALUE && ::CloseHandle(file) != 0;
}

TEST_F(Streams, ShareFlagsExcludeOthers) {
  const struct {
    int flag;
    bool othersRead;
    bool othersWrite;
  } rows[] = {
      {_SH_DENYRW, false, false},
      {_SH_DENYWR, true, false},
      {_SH_DENYRD, false, true},
      {_SH_DENYNO, true, true},
  };
  WriteBytes("a.txt", "old");
  for (const auto& row : rows) {
    for (const char* mode : {"rb", "r+b", "wb", "ab"}) {
      SCOPED_TRACE(std::to_string(row.flag) + " " + mode);
      {
        const Stream stream(mm_fsopen("a.txt", mode, row.flag));
        ASSERT_NE(stream, nullptr);
        EXPECT_EQ(CanBeOpened(GENERIC_READ), row.othersRead);
        EXPECT_EQ(CanBeOpened(GENERIC_WRITE), row.othersWrite);
      }
      EXPECT_TRUE(kv::test::IsFree("a.txt"));
    }
  }
  const Stream stream(mm_fopen("a.txt", "r+b"));
  EXPECT_TRUE(CanBeOpened(GENERIC_READ) && CanBeOpened(GENERIC_WRITE)) << "mm_fopen shares";
}

TEST(HeldFileChild, DISABLED_Holds) { kv::test::HoldFileForParent(); }

TEST_F(Streams, DoNotOpenWhatAnotherProcessHolds) {
  WriteBytes("a.txt", "old");
  {
    const kv::test::HeldFile held("a.txt");
    for (const char* mode : {"r", "w", "a", "r+"}) {
      SCOPED_TRACE(mode);
      EXPECT_EQ(mm_fopen("a.txt", mode), nullptr);
      EXPECT_EQ(mm_fsopen("a.txt", mode, _SH_DENYNO), nullptr);
    }
  }
  EXPECT_EQ(ReadBytes("a.txt"), "old");
  EXPECT_NE(Stream(mm_fopen("a.txt", "r")), nullptr);
}

}  // namespace
