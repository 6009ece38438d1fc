#ifndef KVUTILS_UTILS_FILES_NUMBER_FORMAT_H_
#define KVUTILS_UTILS_FILES_NUMBER_FORMAT_H_

#include <string>
#include <string_view>

namespace kv::internal {

// A caller's printf format for one real number: literal text around at most one conversion of a, e,
// f or g with flags, width and precision. Of the format, 31 characters count.
class NumberFormat {
 public:
  explicit NumberFormat(const char* format);

  // False for a format that asks for anything else; Print is not for such a one.
  [[nodiscard]] bool IsValid() const { return isValid_; }

  // The format applied to `value`, with "." as the point whatever the process's locale.
  [[nodiscard]] std::string Print(double value) const;

 private:
  [[nodiscard]] bool Parse(std::string_view format);

  std::string before_;      // literal text, "%%" made "%"
  std::string conversion_;  // empty when the format has none
  std::string after_;
  bool isValid_;
};

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_FILES_NUMBER_FORMAT_H_
