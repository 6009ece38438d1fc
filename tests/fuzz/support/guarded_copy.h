// A buffer that ends where memory ends: a read or write behind it ends the process, in every build.
#ifndef KVUTILS_TESTS_FUZZ_SUPPORT_GUARDED_COPY_H_
#define KVUTILS_TESTS_FUZZ_SUPPORT_GUARDED_COPY_H_

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/support/guarded_pages.h"

namespace kv::fuzz {

// A copy of units. Pages are taken from copies that are gone: to ask the system takes long.
template <typename Unit>
class GuardedCopy {
 public:
  using View = std::basic_string_view<Unit>;

  explicit GuardedCopy(View units) : pages_(TakePages(units.size() * sizeof(Unit))) {
    begin_ = reinterpret_cast<Unit*>(pages_->End()) - units.size();
    size_ = units.size();
    std::copy(units.begin(), units.end(), begin_);
  }
  ~GuardedCopy() { Idle().push_back(std::move(pages_)); }
  GuardedCopy(const GuardedCopy&) = delete;
  GuardedCopy& operator=(const GuardedCopy&) = delete;

  [[nodiscard]] Unit* Get() const { return begin_; }
  [[nodiscard]] View Units() const { return {begin_, size_}; }

 private:
  using Pages = std::unique_ptr<test::GuardedPages>;
  static constexpr std::size_t kUsualSize = std::size_t{64} << 10;

  static std::vector<Pages>& Idle() {
    static std::vector<Pages> idle;
    return idle;
  }

  static Pages TakePages(std::size_t size) {
    std::vector<Pages>& idle = Idle();
    if (idle.empty() ||
        static_cast<std::size_t>(idle.back()->End() - idle.back()->Begin()) < size) {
      return std::make_unique<test::GuardedPages>(std::max(size, kUsualSize));
    }
    Pages pages = std::move(idle.back());
    idle.pop_back();
    return pages;
  }

  Pages pages_;
  Unit* begin_;
  std::size_t size_;
};

// A text with its terminator at the end of memory.
class GuardedText : public GuardedCopy<char> {
 public:
  explicit GuardedText(const std::string& text) : GuardedCopy({text.c_str(), text.size() + 1}) {}

  // Up to its terminator, which may have moved.
  [[nodiscard]] std::string Text() const { return Get(); }
};

// Room for output, filled with units that tell what was written.
template <typename Unit>
class GuardedRoom : public GuardedCopy<Unit> {
 public:
  static constexpr Unit kFill = static_cast<Unit>(0x5A);

  explicit GuardedRoom(std::size_t size)
      : GuardedCopy<Unit>(std::basic_string<Unit>(size, kFill)) {}
};

}  // namespace kv::fuzz

#endif  // KVUTILS_TESTS_FUZZ_SUPPORT_GUARDED_COPY_H_
