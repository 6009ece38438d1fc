#include "utils/text/asteroid_names.h"

#include "utils/internal/number_scan.h"
#include "utils/text/collation_system.h"
#include "utils/text/text.h"

#include <cstring>
#include <string>

namespace {

using namespace kv::internal;

// A name without its parentheses; one that has none is not copied.
class WithoutParentheses {
 public:
  explicit WithoutParentheses(const char* name) : text_(name) {
    constexpr char kParentheses[] = "()";
    if (name == nullptr || std::strpbrk(name, kParentheses) == nullptr) return;
    copy_ = name;
    ClearString(copy_.data(), kParentheses);
    text_ = copy_.c_str();
  }
  WithoutParentheses(const WithoutParentheses&) = delete;
  WithoutParentheses& operator=(const WithoutParentheses&) = delete;

  [[nodiscard]] const char* Get() const { return text_; }

 private:
  const char* text_;
  std::string copy_;
};

}  // namespace

int kv::internal::CompareWithoutParentheses(const char* a, const char* b, unsigned flags) {
  return CompareBySystem(WithoutParentheses(a).Get(), WithoutParentheses(b).Get(), flags);
}

int SortAsterNameWithNumber(const char* a, const char* b) {
  if (a == nullptr || b == nullptr) return 0;
  const auto numberOfA = ScanDecimal(WithoutParentheses(a).Get());
  const auto numberOfB = ScanDecimal(WithoutParentheses(b).Get());
  // Callers rely on names without a number, and on names with equal numbers, counting as equal.
  if (!numberOfA || !numberOfB || *numberOfA == *numberOfB) return 0;
  return *numberOfA > *numberOfB ? 1 : -1;
}
