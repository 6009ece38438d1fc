// Paths as bounded text: every fixed path buffer is filled here.
#ifndef KVUTILS_UTILS_INTERNAL_PATH_TEXT_H_
#define KVUTILS_UTILS_INTERNAL_PATH_TEXT_H_

#include <cstddef>
#include <cstring>
#include <string_view>

namespace kv::internal {

inline constexpr std::size_t kPathSize = 260;  // a path buffer, terminator included

constexpr bool IsSeparator(char c) { return c == ':' || c == '\\' || c == '/'; }

// `text` without its first character when that is a separator.
constexpr std::string_view WithoutLeadingSeparator(std::string_view text) {
  if (!text.empty() && IsSeparator(text.front())) text.remove_prefix(1);
  return text;
}

// So many NULs at least stand behind a bounded text: a block of that size which begins in the text
// can be read and written whole.
inline constexpr std::size_t kTextBlock = 16;

// Text of at most Capacity - 1 bytes, always terminated. What does not fit makes it over-long for
// good, and an over-long text reads as empty.
template <std::size_t Capacity>
class BoundedText {
 public:
  static constexpr std::size_t kMaxSize = Capacity - 1;

  BoundedText() { Terminate(); }
  explicit BoundedText(std::string_view text) { Append(text); }

  BoundedText& Append(std::string_view text) {
    if (overlong_ || text.size() >= Capacity - size_) {
      overlong_ = true;
      size_ = 0;
    } else {
      text.copy(text_ + size_, text.size());
      size_ += text.size();
    }
    Terminate();
    return *this;
  }

  [[nodiscard]] bool IsOverlong() const { return overlong_; }
  [[nodiscard]] const char* Get() const { return text_; }
  [[nodiscard]] char* GetFrom(std::size_t position) { return text_ + position; }
  [[nodiscard]] std::size_t Size() const { return size_; }
  [[nodiscard]] std::string_view View() const { return {text_, size_}; }

 private:
  void Terminate() { std::memset(text_ + size_, '\0', kTextBlock); }

  char text_[kMaxSize + kTextBlock];
  std::size_t size_ = 0;
  bool overlong_ = false;
};

using PathText = BoundedText<kPathSize>;

// Copies `text`, which may lie in `out` itself, with a terminator into a path buffer; false,
// writing nothing, when it does not fit.
inline bool CopyPath(char* out, std::string_view text) {
  if (text.size() >= kPathSize) return false;
  std::memmove(out, text.data(), text.size());
  out[text.size()] = '\0';
  return true;
}

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_INTERNAL_PATH_TEXT_H_
