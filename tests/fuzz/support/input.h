// The bytes of one input as the arguments of a target: texts are taken from the beginning, where
// the bytes read as they stand, numbers from the end. What is taken from an input that is used up
// is empty or 0, so any bytes are an input.
#ifndef KVUTILS_TESTS_FUZZ_SUPPORT_INPUT_H_
#define KVUTILS_TESTS_FUZZ_SUPPORT_INPUT_H_

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>

namespace kv::fuzz {

class Input {
 public:
  explicit Input(std::string_view bytes) : bytes_(bytes) {}

  // All bytes that a number has.
  template <typename Number>
  Number Take() {
    static_assert(std::is_arithmetic_v<Number> && !std::is_same_v<Number, bool>);
    Number number{};
    const std::size_t size = std::min(sizeof(Number), bytes_.size());
    bytes_.copy(reinterpret_cast<char*>(&number), size, bytes_.size() - size);
    bytes_.remove_suffix(size);
    return number;
  }

  // A number below `bound`, which is not 0.
  std::size_t Below(std::size_t bound) {
    return (bound <= 256 ? Take<unsigned char>() : Take<unsigned>()) % bound;
  }
  // A number from `first` to `last`.
  int Between(int first, int last) {
    return first + static_cast<int>(Below(static_cast<std::size_t>(last - first) + 1));
  }
  bool Flag() { return Below(2) == 1; }

  template <typename Value>
  Value OneOf(std::initializer_list<Value> values) {
    return *(values.begin() + Below(values.size()));
  }

  // What stands before the next `end`, which is taken as well.
  std::string_view Until(char end) {
    const std::size_t size = std::min(bytes_.find(end), bytes_.size());
    const std::string_view text = bytes_.substr(0, size);
    bytes_.remove_prefix(std::min(size + 1, bytes_.size()));
    return text;
  }
  // A text of the library, which cannot hold NUL.
  std::string Text() { return std::string(Until('\0')); }

  // All that is left.
  std::string_view Rest() {
    const std::string_view rest = bytes_;
    bytes_ = {};
    return rest;
  }
  [[nodiscard]] bool IsUsedUp() const { return bytes_.empty(); }

 private:
  std::string_view bytes_;
};

}  // namespace kv::fuzz

#endif  // KVUTILS_TESTS_FUZZ_SUPPORT_INPUT_H_
