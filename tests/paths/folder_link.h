// A symbolic link to a folder. The Unix host makes it: Wine's CreateSymbolicLinkW makes none.
#ifndef KVUTILS_TESTS_PATHS_FOLDER_LINK_H_
#define KVUTILS_TESTS_PATHS_FOLDER_LINK_H_

#include <algorithm>
#include <chrono>
#include <string>
#include <thread>
#include <utility>

#include "tests/support/files.h"
#include "tests/support/process.h"

namespace kv::test {

// The link goes with the object, before the folder that holds it.
class FolderLink {
 public:
  // Absolute paths on drive Z, the root of the Unix host. Nothing stands in the place of the link.
  FolderLink(const std::string& link, const std::string& folder)
      : FolderLink(link, HostPath(link), folder) {}
  // A link that the host and the system find under different paths.
  FolderLink(std::string link, std::string hostLink, const std::string& folder)
      : link_(std::move(link)), hostLink_(std::move(hostLink)) {
    if (!FileExists("Z:\\bin\\ln")) return;
    RunProgram("Z:\\bin\\ln", {"-sfn", HostPath(folder), hostLink_});
    Await(true);
  }
  ~FolderLink() {
    if (!Exists()) return;
    RunProgram("Z:\\bin\\rm", {"-f", hostLink_});
    Await(false);
  }
  FolderLink(const FolderLink&) = delete;
  FolderLink& operator=(const FolderLink&) = delete;

  // False on a system without such links.
  bool Exists() const { return FolderExists(link_); }

 private:
  static std::string HostPath(std::string path) {
    path.erase(0, 2);
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
  }

  // The system gives no handle of a Unix process to wait for.
  void Await(bool exists) const {
    for (int i = 0; i < 1000 && Exists() != exists; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
  }

  std::string link_;
  std::string hostLink_;
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_PATHS_FOLDER_LINK_H_
