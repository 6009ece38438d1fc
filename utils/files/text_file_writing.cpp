#include "utils/files/files.h"

#include "utils/files/number_format.h"
#include "utils/files/text_stream.h"

#include <clocale>
#include <cstring>
#include <mutex>
#include <string>

namespace {

using kv::internal::NumberFormat;

// While alive, the process prints numbers with ".". This run-time library has no locale of a
// thread, so other threads of the host may see "C" for that moment; the lock keeps two of these
// from restoring each other's. Where "." holds already, nothing changes.
class ScopedCNumericLocale {
 public:
  ScopedCNumericLocale() {
    if (std::strcmp(std::localeconv()->decimal_point, ".") == 0) return;
    lock_ = std::unique_lock(mutex_);
    previous_ = std::setlocale(LC_NUMERIC, nullptr);
    std::setlocale(LC_NUMERIC, "C");
  }
  ~ScopedCNumericLocale() {
    if (lock_.owns_lock()) std::setlocale(LC_NUMERIC, previous_.c_str());
  }
  ScopedCNumericLocale(const ScopedCNumericLocale&) = delete;
  ScopedCNumericLocale& operator=(const ScopedCNumericLocale&) = delete;

 private:
  static std::mutex mutex_;
  std::unique_lock<std::mutex> lock_;
  std::string previous_;
};
std::mutex ScopedCNumericLocale::mutex_;

// Prints each value by `print(value)` and the end of the line. A full disk may show only in the
// stream's own error mark.
template <typename Value, typename Print>
bool WriteRow(std::FILE* stream, const Value* values, int count, Print print) {
  if (stream == nullptr || (values == nullptr && count > 0)) return false;
  const auto isWritten = [stream](int result) { return result >= 0 && std::ferror(stream) == 0; };
  for (int i = 0; i < count; ++i) {
    if (!isWritten(print(values[i]))) return false;
  }
  return isWritten(std::fputc('\n', stream));
}

template <typename Integer>
bool WriteIntegers(std::FILE* stream, const Integer* values, int count) {
  return WriteRow(stream, values, count, [stream](Integer value) {
    return std::fprintf(stream, "%d ", static_cast<int>(value));
  });
}

template <typename Real>
bool WriteReals(std::FILE* stream, const Real* values, int count, const char* format) {
  const NumberFormat numberFormat(format);
  if (!numberFormat.IsValid()) return false;
  return WriteRow(stream, values, count, [&](Real value) {
    return std::fputs(numberFormat.Print(static_cast<double>(value)).c_str(), stream);
  });
}

}  // namespace

void MTextFile::Write(const char* format, ...) {
  if (format == nullptr) return;
  const ScopedCNumericLocale numericLocale;
  va_list arguments;
  va_start(arguments, format);
  vfprintf(format, arguments);
  va_end(arguments);
  if (std::FILE* file = Internals::StreamOf(*this)) std::fflush(file);
}

bool MTextFile::Writeln(const char* text) {
  fprintf("%s\n", text == nullptr ? "" : text);
  return true;
}

bool MTextFile::Writeln(const short* values, int count) {
  return WriteIntegers(Internals::StreamOf(*this), values, count);
}

bool MTextFile::Writeln(const unsigned short* values, int count) {
  return WriteIntegers(Internals::StreamOf(*this), values, count);
}

bool MTextFile::Writeln(const int* values, int count) {
  return WriteIntegers(Internals::StreamOf(*this), values, count);
}

bool MTextFile::Writeln(const unsigned int* values, int count) {
  return WriteIntegers(Internals::StreamOf(*this), values, count);
}

bool MTextFile::Writeln(const float* values, int count, const char* format) {
  return WriteReals(Internals::StreamOf(*this), values, count, format == nullptr ? "%g " : format);
}

bool MTextFile::Writeln(const double* values, int count, const char* format) {
  return WriteReals(Internals::StreamOf(*this), values, count, format == nullptr ? "%lg " : format);
}
