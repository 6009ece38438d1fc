// Data names as bounded text: candidates, joining, the form in which add-ons list them.
#ifndef KVUTILS_UTILS_PATHS_DATA_NAME_H_
#define KVUTILS_UTILS_PATHS_DATA_NAME_H_

#include "utils/internal/path_text.h"
#include "utils/internal/text_length.h"

#include <string_view>

namespace kv::internal {

// A data name as text: a name as long as a path, with room for a language folder before it. One
// that does not fit resolves nowhere.
using NameText = BoundedText<2 * kPathSize>;

inline std::string_view NameView(const char* name) { return {name, TextLength(name)}; }

// A data name, or its variant in a language folder: the folder, ":" and the name without its
// leading separator. It refers to the texts that it is made of, and is put together where it is
// needed, in one step with what stands around it.
class Candidate {
 public:
  explicit Candidate(std::string_view name) : name_(name) {}
  Candidate(std::string_view languageFolder, std::string_view name)
      : isVariant_(true), languageFolder_(languageFolder), name_(WithoutLeadingSeparator(name)) {}

  [[nodiscard]] bool IsEmpty() const { return !isVariant_ && name_.empty(); }
  [[nodiscard]] NameText Text() const;
  // `folder` and the candidate as one path: the candidate without its leading separator, every
  // separator of it made "\". Over-long when they do not fit.
  [[nodiscard]] PathText In(const char* folder) const;

 private:
  bool isVariant_ = false;
  std::string_view languageFolder_;
  std::string_view name_;
};

// The name with its ASCII letters made lower case.
NameText LowerCase(std::string_view name);

// The form in which the add-on's names are listed and compared: lower case, "\" between components.
NameText ListedForm(std::string_view name);

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_PATHS_DATA_NAME_H_
