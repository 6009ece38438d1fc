#include "utils/files/files.h"

#include "utils/files/text_stream.h"
#include "utils/internal/numeric_locale.h"

#include <cctype>
#include <cstring>

namespace {

using kv::internal::ScopedCNumericLocale;

// A caller's number format, cut at 31 characters and accepted only when printing a double with it
// is safe: literal text around at most one conversion of e, f, g or a.
class NumberFormat {
 public:
  explicit NumberFormat(const char* format) {
    std::strncpy(text_, format, sizeof text_ - 1);
    isSafe_ = CheckConversions();
  }

  [[nodiscard]] bool IsSafe() const { return isSafe_; }
  [[nodiscard]] const char* Get() const { return text_; }

 private:
  // Width and precision are bounded, so that no format asks for an endless row.
  static constexpr int kMostDigits = 4;

  [[nodiscard]] bool CheckConversions() const {
    int conversions = 0;
    for (const char* c = text_; *c != '\0'; ++c) {
      if (*c != '%') continue;
      ++c;
      if (*c == '%') continue;
      if (!SkipConversion(c) || ++conversions > 1) return false;
    }
    return true;
  }

  // Moves `c` from behind the "%" to the conversion character.
  static bool SkipConversion(const char*& c) {
    c += std::strspn(c, "+- #0");
    if (!SkipDigits(c)) return false;
    if (*c == '.' && !SkipDigits(++c)) return false;
    if (*c == 'l') ++c;
    return *c != '\0' && std::strchr("aAeEfFgG", *c) != nullptr;
  }

  static bool SkipDigits(const char*& c) {
    const std::size_t digits = std::strspn(c, "0123456789");
    c += digits;
    return digits <= kMostDigits;
  }

  char text_[32] = "";
  bool isSafe_;
};

}  // namespace

void MTextFile::Write(const char* format, ...) {
  const ScopedCNumericLocale numericLocale;
  va_list arguments;
  va_start(arguments, format);
  vfprintf(format, arguments);
  va_end(arguments);
  if (std::FILE* file = Access::StreamOf(*this)) std::fflush(file);
}

bool MTextFile::Writeln(const char* text) {
  fprintf("%s\n", text);
  return true;
}

template <typename Printed, typename Value>
bool MTextFile::Access::WriteRow(MTextFile& file, const Value* values, int count,
                                 const char* format) {
  std::FILE* stream = StreamOf(file);
  if (stream == nullptr) return false;
  const ScopedCNumericLocale numericLocale;
  // A full disk may show only in the stream's own error mark.
  const auto print = [&](auto... arguments) {
    return file.fprintf(arguments...) >= 0 && std::ferror(stream) == 0;
  };
  for (int i = 0; i < count; ++i) {
    if (!print(format, static_cast<Printed>(values[i]))) return false;
  }
  return print("\n");
}

bool MTextFile::Writeln(const short* values, int count) {
  return Access::WriteRow<int>(*this, values, count, "%d ");
}

bool MTextFile::Writeln(const unsigned short* values, int count) {
  return Access::WriteRow<int>(*this, values, count, "%d ");
}

bool MTextFile::Writeln(const int* values, int count) {
  return Access::WriteRow<int>(*this, values, count, "%d ");
}

bool MTextFile::Writeln(const unsigned int* values, int count) {
  return Access::WriteRow<int>(*this, values, count, "%d ");
}

bool MTextFile::Writeln(const float* values, int count, const char* format) {
  const NumberFormat numberFormat(format == nullptr ? "%g " : format);
  return numberFormat.IsSafe() &&
         Access::WriteRow<double>(*this, values, count, numberFormat.Get());
}

bool MTextFile::Writeln(const double* values, int count, const char* format) {
  const NumberFormat numberFormat(format == nullptr ? "%lg " : format);
  return numberFormat.IsSafe() &&
         Access::WriteRow<double>(*this, values, count, numberFormat.Get());
}
