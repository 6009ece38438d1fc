// The stream behind a text file and its copies.
#ifndef KVUTILS_UTILS_FILES_TEXT_STREAM_H_
#define KVUTILS_UTILS_FILES_TEXT_STREAM_H_

#include "utils/files/files.h"

#include <cstdio>
#include <utility>

// Shared by all copies of one text file; closed once, by whichever comes first.
class MTextFile::Stream {
 public:
  explicit Stream(bool forReading) : forReading_(forReading) {}
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;
  ~Stream() { Close(); }

  // The standard stream, null when the system refuses. Once in the life of the object.
  [[nodiscard]] std::FILE* Open(const wchar_t* path, const wchar_t* mode) {
    file_ = ::_wfopen(path, mode);
    return file_;
  }
  [[nodiscard]] std::FILE* Get() const { return file_; }
  [[nodiscard]] bool IsForReading() const { return forReading_; }
  void Close() {
    if (std::FILE* file = std::exchange(file_, nullptr)) std::fclose(file);
  }

 private:
  std::FILE* file_ = nullptr;
  bool forReading_;
};

struct MTextFile::Internals {
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
};

#endif  // KVUTILS_UTILS_FILES_TEXT_STREAM_H_
