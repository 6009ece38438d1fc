// What the tests of the resolver and the folder utilities share: a sandbox whose work folder is
// read by the first resolver of the process, and answers that compare with text, null included.
#ifndef KVUTILS_TESTS_PATHS_RESOLVER_FIXTURE_H_
#define KVUTILS_TESTS_PATHS_RESOLVER_FIXTURE_H_

#include <gtest/gtest.h>

#include <string>

#include "tests/support/sandbox.h"
#include "utils/paths/paths.h"

namespace kv::test {

// An answer of the resolver as text; "(null)" for none.
inline std::string Answer(const char* path) { return path == nullptr ? "(null)" : path; }
inline constexpr char kNone[] = "(null)";

// Names the cases of a parameterised test by the `what` of their rows.
struct WhatTag {
  template <typename Row>
  std::string operator()(const ::testing::TestParamInfo<Row>& row) const {
    return row.param.what;
  }
};

// Opens the protected steps.
class OpenResolver : public KelvarisPath {
 public:
  using KelvarisPath::CheckFeaturePackFile;
  using KelvarisPath::CheckLocalFiles;
  using KelvarisPath::GetCDPath;
  using KelvarisPath::GetWorkDir;
  using KelvarisPath::GetWorkDir2;
  using KelvarisPath::GetWritableDir;
  using KelvarisPath::IsSearchFileInCD;
};

// A 260-byte buffer between guard bytes, all of it filled with '#'.
class GuardedBuffer {
 public:
  GuardedBuffer() { bytes_.assign(kGuard + kSize + kGuard, '#'); }
  char* Get() { return bytes_.data() + kGuard; }
  std::string Text() const { return bytes_.c_str() + kGuard; }
  bool IsUntouched() const { return bytes_ == std::string(kGuard + kSize + kGuard, '#'); }
  bool GuardsHold() const {
    return bytes_.substr(0, kGuard) == std::string(kGuard, '#') &&
           bytes_.substr(kGuard + kSize) == std::string(kGuard, '#');
  }

 private:
  static constexpr std::size_t kGuard = 64;
  static constexpr std::size_t kSize = 260;
  std::string bytes_;
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_PATHS_RESOLVER_FIXTURE_H_
