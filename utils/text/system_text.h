// Text through the system's own conversions between code pages and UTF-16.
#ifndef KVUTILS_UTILS_TEXT_SYSTEM_TEXT_H_
#define KVUTILS_UTILS_TEXT_SYSTEM_TEXT_H_

#include <vector>

namespace kv::internal {

inline constexpr unsigned kUtf8CodePage = 65001;

// A text as UTF-16, in a buffer of its own; short texts need no allocation. Bytes that the code
// page does not know, malformed UTF-8 among them, become what the system puts in their place. A NUL
// stands behind the units, whatever they are: where a text ends inside a character, a system may
// take its terminator for a part of that.
class SystemText {
 public:
  static constexpr int kWithTerminator = -1;

  // Converts `size` bytes of `text`, or the whole with its terminator.
  SystemText(unsigned codePage, const char* text, int size);
  SystemText(const SystemText&) = delete;
  SystemText& operator=(const SystemText&) = delete;

  // False when the system refused, or text is null.
  [[nodiscard]] bool IsValid() const { return isValid_; }
  [[nodiscard]] wchar_t* Get() { return long_.empty() ? short_ : long_.data(); }
  [[nodiscard]] const wchar_t* Get() const { return long_.empty() ? short_ : long_.data(); }
  [[nodiscard]] int Size() const { return size_; }  // units, a converted terminator included

 private:
  static constexpr int kShortSize = 256;

  bool isValid_ = false;
  int size_ = 0;
  wchar_t short_[kShortSize + 1];
  std::vector<wchar_t> long_;  // in use when the text does not fit in short_
};

// Converts a terminated text into `out` of `outSize` bytes, terminator included. False, with `out`
// unchanged, when it does not fit or the system refuses.
bool NarrowSystemText(unsigned codePage, const wchar_t* text, char* out, int outSize);

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_TEXT_SYSTEM_TEXT_H_
