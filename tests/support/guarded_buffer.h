// An output buffer between guard units, so that a write outside it shows.
#ifndef KVUTILS_TESTS_SUPPORT_GUARDED_BUFFER_H_
#define KVUTILS_TESTS_SUPPORT_GUARDED_BUFFER_H_

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

  // Whether nothing was written in front of the buffer or behind it.
  [[nodiscard]] bool GuardsHold() const {
    const View all(units_);
    return IsGuard(all.substr(0, kMargin)) && IsGuard(all.substr(all.size() - kMargin));
  }
  // Whether nothing was written at all.
  [[nodiscard]] bool IsUntouched() const { return IsGuard(units_); }

  // Expects exactly `content` at the beginning and untouched units around it. A view of a literal
  // with its own size may hold NUL.
  void ExpectHolds(View content) const {
    const View all(units_);
    EXPECT_EQ(all.substr(kMargin, content.size()), content);
    EXPECT_TRUE(IsGuard(all.substr(0, kMargin))) << "written in front";
    EXPECT_TRUE(IsGuard(all.substr(kMargin + content.size()))) << "written behind";
  }

 private:
  static constexpr std::size_t kMargin = 16;

  static bool IsGuard(View units) { return units.find_first_not_of(kGuard) == View::npos; }

  std::basic_string<Unit> units_;
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_SUPPORT_GUARDED_BUFFER_H_
