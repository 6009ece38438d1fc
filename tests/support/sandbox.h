// The world of one test case: a folder of its own that removes itself, with the work folder (the
// current folder while the case runs) and the Documents folder inside it. Functions of the library
// delete and create folders below Documents, so a case does not start unless the system's answer
// for Documents is this one.
//
// The library finds its folders once per process: CTest runs each case in a process of its own.
#ifndef KVUTILS_TESTS_SUPPORT_SANDBOX_H_
#define KVUTILS_TESTS_SUPPORT_SANDBOX_H_

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/files.h"

namespace kv::test {

class Sandbox : public ::testing::Test {
 protected:
  // `folderName` is the last component of the work folder, "work" unless a case wants another
  // script.
  explicit Sandbox(const std::string& folderName = "work");
  ~Sandbox() override;

  // Folders of the case; all end in "\".
  const std::string& Root() const { return root_; }
  const std::string& Work() const { return work_; }
  const std::string& Documents() const { return documents_; }
  // The library's writable folder; it exists only after the first KelvarisPath.
  std::string Writable() const { return documents_ + "Kelvaris_9\\"; }

 private:
  std::string oldFolder_;
  std::string root_;
  std::string work_;
  std::string documents_;
};

// Last components of folders in scripts that a narrow code page cannot hold; the last lies beyond
// the Basic Multilingual Plane.
extern const std::vector<std::string> kFolderNames;

// A sandbox whose work folder bears the parameter's name:
//   INSTANTIATE_TEST_SUITE_P(Scripts, SandboxIn, testing::ValuesIn(kFolderNames), FolderNameTag);
class SandboxIn : public Sandbox, public ::testing::WithParamInterface<std::string> {
 protected:
  SandboxIn() : Sandbox(GetParam()) {}
};
std::string FolderNameTag(const ::testing::TestParamInfo<std::string>& info);

}  // namespace kv::test

#endif  // KVUTILS_TESTS_SUPPORT_SANDBOX_H_
