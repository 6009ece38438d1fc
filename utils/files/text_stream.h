// The stream behind a text file and its copies.
#ifndef KVUTILS_UTILS_FILES_TEXT_STREAM_H_
#define KVUTILS_UTILS_FILES_TEXT_STREAM_H_

#include <cstddef>
#include <cstdio>
#include <utility>

#include "utils/files/files.h"

// Shared by all copies of one text file; closed once, by whichever comes first.
struct MTextFile::Stream {
 public:
  Stream(std::FILE* file, bool forReading) : file_(file), forReading_(forReading) {}
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;
  ~Stream() { Close(); }

  [[nodiscard]] std::FILE* Get() const { return file_; }
  [[nodiscard]] bool IsForReading() const { return forReading_; }
  void Close() {
    if (std::FILE* file = std::exchange(file_, nullptr)) std::fclose(file);
  }

 private:
  std::FILE* file_;
  bool forReading_;
};

struct MTextFile::Access {
  // The standard stream of the file; null when it is closed.
  static std::FILE* StreamOf(const MTextFile& file) {
    return file.m_Stream == nullptr ? nullptr : file.m_Stream->Get();
  }

  // Reads on to the next line that is no comment; false at the end of the file.
  static bool ReadSignificantLine(MTextFile& file) {
    do {
      if (file.fgets(file.m_Line.get(), file.m_LineLength) == nullptr) return false;
    } while (file.IsComment());
    return true;
  }

  // Prints each value, widened to Printed, with the format, and the end of the line.
  template <typename Printed, typename Value>
  static bool WriteRow(MTextFile& file, const Value* values, int count, const char* format);
};

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

#endif  // KVUTILS_UTILS_FILES_TEXT_STREAM_H_
