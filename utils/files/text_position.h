#ifndef KVUTILS_UTILS_FILES_TEXT_POSITION_H_
#define KVUTILS_UTILS_FILES_TEXT_POSITION_H_

#include <cstddef>
#include <cstdio>

namespace kv::internal {

// Puts a stream opened for reading in text mode back where it stood. ftell cannot tell: in text
// mode it takes every line end for two bytes, which is wrong in a file whose lines end in "\n"
// alone. What does hold is the number of characters left, so the position is found again from the
// beginning.
class ScopedTextPosition {
 public:
  explicit ScopedTextPosition(std::FILE* file);
  ~ScopedTextPosition();
  ScopedTextPosition(const ScopedTextPosition&) = delete;
  ScopedTextPosition& operator=(const ScopedTextPosition&) = delete;

 private:
  void Restore() const;

  std::FILE* file_;
  std::size_t position_;  // characters from the beginning, line ends counted once
};

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_FILES_TEXT_POSITION_H_
