// An output buffer between guard units, so that a write outside it shows.
#ifndef KVUTILS_TESTS_TEXT_GUARDED_BUFFER_H_
#define KVUTILS_TESTS_TEXT_GUARDED_BUFFER_H_

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace kv::test {

template <typename Unit>
class GuardedBuffer {
 public:
  using View = std::basic_string_view<Unit>;

  static constexpr Unit kGuard = static_cast<Unit>(0x5A);

  explicit GuardedBuffer(std::size_t capacity) : units_(capacity + 2 * kMargin, kGuard) {}
  // A buffer that holds `text` and a terminator at its beginning.
  GuardedBuffer(std::size_t capacity, View text) : GuardedBuffer(capacity) {
    std::copy(text.begin(), text.end(), Get());
    Get()[text.size()] = Unit{};
  }

  Unit* Get() { return units_.data() + kMargin; }

  // The text up to its terminator.
  [[nodiscard]] std::basic_string<Unit> Text() { return Get(); }

  // Expects exactly `content` at the beginning and untouched units around it. A view of a literal
  // with its own size may hold NUL.
  void ExpectHolds(View content) const {
    const View all(units_);
    EXPECT_EQ(all.substr(kMargin, content.size()), content);
    EXPECT_EQ(all.substr(0, kMargin).find_first_not_of(kGuard), View::npos) << "written in front";
    EXPECT_EQ(all.substr(kMargin + content.size()).find_first_not_of(kGuard), View::npos)
        << "written behind";
  }

 private:
  static constexpr std::size_t kMargin = 16;

  std::basic_string<Unit> units_;
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_TEXT_GUARDED_BUFFER_H_
