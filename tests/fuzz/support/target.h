// A target: what is done with an input, and how it is told whether the library answers rightly.
//
//   void CheckTokens(Input input) {
//     const std::string text = input.Text();
//     ...
//     Expect("GetTokens", tokens, plainTokens);
//   }
//   const Registration kTokens({.name = "tokens", .check = CheckTokens, .seeds = {"a,b"}});
#ifndef KVUTILS_TESTS_FUZZ_SUPPORT_TARGET_H_
#define KVUTILS_TESTS_FUZZ_SUPPORT_TARGET_H_

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "tests/fuzz/support/input.h"

namespace kv::fuzz {

struct Target {
  const char* name;
  // Uses the library; throws Finding where it is wrong. Each call begins anew: what one input does
  // to the state of the process must not change the result of the next.
  void (*check)(Input input);
  // Real inputs, from which others are made.
  std::vector<std::string> seeds;
  // What means something to the target, put into inputs as it is.
  std::vector<std::string> words = {};
  std::size_t maxSize = 512;
  // The inputs of a short run.
  int count = 20'000;
  // A run without a finding is a fault: for targets that have a bug on purpose.
  bool isPlanted = false;
};

class Registration {
 public:
  explicit Registration(Target target);
};

// All targets by name.
const std::vector<Target>& Targets();

// What is wrong.
class Finding : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Values as a finding shows them.
std::string Show(std::string_view text);
std::string Show(std::wstring_view text);
inline std::string Show(const char* text) { return Show(std::string_view(text)); }
inline std::string Show(bool value) { return value ? "true" : "false"; }
template <typename Number>
std::enable_if_t<std::is_arithmetic_v<Number>, std::string> Show(Number value) {
  return std::to_string(value);
}
template <typename Value>
std::string Show(const std::vector<Value>& values) {
  std::string text = "{";
  for (const Value& value : values) text += (text.size() == 1 ? "" : ", ") + Show(value);
  return text + "}";
}

template <typename Actual, typename Expected>
void Expect(const char* what, const Actual& actual, const Expected& expected) {
  if (actual == expected) return;
  throw Finding(std::string(what) + " is " + Show(actual) + " and should be " + Show(expected));
}

inline void ExpectThat(const char* fact, bool isSo) {
  if (!isSo) throw Finding(std::string("not so: ") + fact);
}

}  // namespace kv::fuzz

#endif  // KVUTILS_TESTS_FUZZ_SUPPORT_TARGET_H_
