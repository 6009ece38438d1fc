// What the tests of the resolver and the folder utilities share: a sandbox whose work folder is
// read by the first resolver of the process, and answers that compare with text, null included.
#ifndef KVUTILS_TESTS_PATHS_RESOLVER_FIXTURE_H_
#define KVUTILS_TESTS_PATHS_RESOLVER_FIXTURE_H_

#include <gtest/gtest.h>

#include <string>

#include "tests/support/guarded_buffer.h"
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

// A path buffer between guard bytes.
class PathBuffer : public GuardedBuffer<char> {
 public:
  PathBuffer() : GuardedBuffer(260) {}
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_PATHS_RESOLVER_FIXTURE_H_
