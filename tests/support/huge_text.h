// A text whose length is at the limit of the interface's counts. Its memory is one block seen many
// times in a row.
#ifndef KVUTILS_TESTS_SUPPORT_HUGE_TEXT_H_
#define KVUTILS_TESTS_SUPPORT_HUGE_TEXT_H_

#include <gtest/gtest.h>
#include <windows.h>

#include <cstddef>
#include <cstring>
#include <vector>

namespace kv::test {

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

}  // namespace kv::test

#endif  // KVUTILS_TESTS_SUPPORT_HUGE_TEXT_H_
