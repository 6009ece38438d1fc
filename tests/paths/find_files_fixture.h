// What the tests of the search share: a folder of their own, and what was found in it.
#ifndef KVUTILS_TESTS_PATHS_FIND_FILES_FIXTURE_H_
#define KVUTILS_TESTS_PATHS_FIND_FILES_FIXTURE_H_

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/support/sandbox.h"
#include "utils/paths/paths.h"

namespace kv::test {

class FindingFiles : public Sandbox {
 protected:
  using Texts = std::vector<std::string>;

  FindingFiles() : folder_(Root() + "u\\") { CreateFolders(Root() + "u"); }

  void Give(const std::string& name) { WriteBytes(folder_ + name, "content"); }
  const std::string& Folder() const { return folder_; }

  static Texts SourcesInOrder(FindFiles& found) {
    Texts paths;
    for (unsigned int i = 0; i < found.GetNumberFiles(); ++i) {
      paths.emplace_back(found.GetSourceFile(i));
    }
    return paths;
  }

  // What was found below `folder`, relative to it, sorted.
  static Texts Found(FindFiles& found, const std::string& folder) {
    Texts names;
    for (const std::string& path : SourcesInOrder(found)) {
      EXPECT_EQ(path.substr(0, folder.size()), folder);
      names.push_back(path.substr(folder.size()));
    }
    std::sort(names.begin(), names.end());
    return names;
  }

  // What one search of the folder finds.
  Texts FoundBy(const char* mask, bool recursive) const {
    FindFiles found(folder_.c_str(), mask);
    found.Run(recursive);
    return Found(found, folder_);
  }

 private:
  std::string folder_;
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_PATHS_FIND_FILES_FIXTURE_H_
