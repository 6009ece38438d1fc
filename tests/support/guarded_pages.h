// An input between pages without access, so that a read outside it ends the process.
#ifndef KVUTILS_TESTS_SUPPORT_GUARDED_PAGES_H_
#define KVUTILS_TESTS_SUPPORT_GUARDED_PAGES_H_

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <string_view>

namespace kv::test {

class GuardedPages {
 public:
  // Room for `capacity` bytes or more: whole pages, with one that cannot be read on either side.
  explicit GuardedPages(std::size_t capacity)
      : size_((capacity + kPage - 1) / kPage * kPage),
        base_(static_cast<char*>(
            ::VirtualAlloc(nullptr, size_ + 2 * kPage, MEM_RESERVE, PAGE_NOACCESS))) {
    if (base_ == nullptr || ::VirtualAlloc(Begin(), size_, MEM_COMMIT, PAGE_READWRITE) == nullptr) {
      throw std::runtime_error("no memory for guarded pages");
    }
  }
  GuardedPages(const GuardedPages&) = delete;
  GuardedPages& operator=(const GuardedPages&) = delete;
  ~GuardedPages() { ::VirtualFree(base_, 0, MEM_RELEASE); }

  // Nothing can be read before Begin() and from End() on.
  [[nodiscard]] char* Begin() const { return base_ + kPage; }
  [[nodiscard]] char* End() const { return Begin() + size_; }

  // A copy of `bytes` behind the page in front, or before the one that follows.
  char* PutFirst(std::string_view bytes) const {
    std::copy(bytes.begin(), bytes.end(), Begin());
    return Begin();
  }
  char* PutLast(std::string_view bytes) const {
    return std::copy_backward(bytes.begin(), bytes.end(), End());
  }

 private:
  static constexpr std::size_t kPage = 4096;

  std::size_t size_;
  char* base_;
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_SUPPORT_GUARDED_PAGES_H_
