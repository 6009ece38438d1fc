// A drive of the test's own, whose root is a folder of its sandbox: for functions that go to the
// root of a drive. Each case takes another letter, because the drives of the Wine prefix are shared
// by all cases that run at the same time.
#ifndef KVUTILS_TESTS_PATHS_TEST_DRIVE_H_
#define KVUTILS_TESTS_PATHS_TEST_DRIVE_H_

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>

#include "tests/support/files.h"
#include "tests/support/process.h"

namespace kv::test {

class TestDrive {
 public:
  // `folder` is an absolute path on drive Z, the root of the Unix host.
  TestDrive(char letter, std::string folder) : root_(std::string(1, letter) + ":\\") {
    const char* prefix = std::getenv("WINEPREFIX");
    if (prefix == nullptr || !FileExists("Z:\\bin\\ln")) return;
    link_ = std::string(prefix) + "/dosdevices/" + static_cast<char>(letter - 'A' + 'a') + ":";
    folder.erase(0, 2);
    std::replace(folder.begin(), folder.end(), '\\', '/');
    // The system gives no handle of a Unix process to wait for.
    RunProgram("Z:\\bin\\ln", {"-sfn", folder, link_});
    for (int i = 0; i < 1000 && !FolderExists(root_); ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
  }
  ~TestDrive() {
    if (!link_.empty()) RunProgram("Z:\\bin\\rm", {"-f", link_});
  }
  TestDrive(const TestDrive&) = delete;
  TestDrive& operator=(const TestDrive&) = delete;

  // False on a system that offers no such drive.
  bool Exists() const { return FolderExists(root_); }
  const std::string& Root() const { return root_; }  // "T:\"

 private:
  std::string root_;
  std::string link_;
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_PATHS_TEST_DRIVE_H_
