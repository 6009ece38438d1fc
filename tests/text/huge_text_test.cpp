// Texts whose length is at the limit of the interface's counts. Their memory is one block seen many
// times in a row.
#include <gtest/gtest.h>
#include <windows.h>

#include <climits>
#include <cstring>
#include <vector>

#include "utils/text/text.h"

namespace {

// `size` times the letter 'a' and a NUL.
class HugeText {
 public:
  explicit HugeText(std::size_t size) {
    block_ =
        ::CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, kBlock, nullptr);
    const std::size_t blocks = size / kBlock;
    char* place = FindRoom((blocks + 2) * kBlock);
    for (std::size_t i = 0; i < blocks; ++i) Map(place + i * kBlock, kBlock);
    std::memset(place, 'a', kBlock);
    const std::size_t rest = size % kBlock;
    tail_ =
        ::VirtualAlloc(place + blocks * kBlock, rest + 1, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
    if (tail_ == nullptr) return;
    std::memset(tail_, 'a', rest);
    text_ = place;
  }
  ~HugeText() {
    for (void* view : views_) ::UnmapViewOfFile(view);
    if (tail_ != nullptr) ::VirtualFree(tail_, 0, MEM_RELEASE);
    ::CloseHandle(block_);
  }
  HugeText(const HugeText&) = delete;
  HugeText& operator=(const HugeText&) = delete;

  char* Get() { return text_; }  // null when the system gives no room

 private:
  static constexpr std::size_t kBlock = std::size_t{64} << 20;

  static char* FindRoom(std::size_t size) {
    void* room = ::VirtualAlloc(nullptr, size, MEM_RESERVE, PAGE_NOACCESS);
    if (room != nullptr) ::VirtualFree(room, 0, MEM_RELEASE);
    return static_cast<char*>(room);
  }

  void Map(char* place, std::size_t size) {
    views_.push_back(::MapViewOfFileEx(block_, FILE_MAP_ALL_ACCESS, 0, 0, size, place));
    ASSERT_EQ(views_.back(), place);
  }

  HANDLE block_ = nullptr;
  std::vector<void*> views_;
  void* tail_ = nullptr;
  char* text_ = nullptr;
};

constexpr std::size_t kLargestInt = INT_MAX;

TEST(HugeText, UnescapeCountsUpToTheLargestInt) {
  HugeText longest(kLargestInt);
  ASSERT_NE(longest.Get(), nullptr);
  EXPECT_EQ(unescape(nullptr, longest.Get()), INT_MAX);
}

TEST(HugeText, UnescapeRefusesMore) {
  HugeText tooLong(kLargestInt + 1);
  ASSERT_NE(tooLong.Get(), nullptr);
  char out[2] = "x";
  EXPECT_EQ(unescape(out, tooLong.Get()), -1);
  EXPECT_STREQ(out, "x");
}

TEST(HugeText, ParseString2CountsNoMoreThanTheLargestInt) {
  HugeText text(kLargestInt + 10);
  ASSERT_NE(text.Get(), nullptr);
  EXPECT_EQ(ParseString2(text.Get(), text.Get()), INT_MAX);
  EXPECT_EQ(text.Get()[kLargestInt + 9], 'a');
}

}  // namespace
