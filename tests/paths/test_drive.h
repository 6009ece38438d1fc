// A drive of the test's own, whose root is a folder of its sandbox: for functions that go to the
// root of a drive. Each case takes another letter, because the drives of the Wine prefix are shared
// by all cases that run at the same time.
#ifndef KVUTILS_TESTS_PATHS_TEST_DRIVE_H_
#define KVUTILS_TESTS_PATHS_TEST_DRIVE_H_

#include <optional>
#include <string>

#include "tests/paths/folder_link.h"
#include "tests/support/process.h"

namespace kv::test {

class TestDrive {
 public:
  // `folder` is an absolute path on drive Z, the root of the Unix host.
  TestDrive(char letter, const std::string& folder) : root_(std::string(1, letter) + ":\\") {
    const std::string prefix = Environment("WINEPREFIX");
    if (prefix.empty()) return;
    const char lowerCase = static_cast<char>(letter - 'A' + 'a');
    link_.emplace(root_, prefix + "/dosdevices/" + lowerCase + ":", folder);
  }

  // False on a system that offers no such drive.
  bool Exists() const { return FolderExists(root_); }
  const std::string& Root() const { return root_; }  // "T:\"

 private:
  std::string root_;
  std::optional<FolderLink> link_;
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_PATHS_TEST_DRIVE_H_
