// A file in the hands of another program.
#ifndef KVUTILS_TESTS_PATHS_HELD_FILE_H_
#define KVUTILS_TESTS_PATHS_HELD_FILE_H_

#include <string>

#include "tests/support/process.h"

namespace kv::test {

// While it lives, a second process keeps the file open: others may read it, but neither write,
// rename, replace nor delete it.
class HeldFile {
 public:
  explicit HeldFile(const std::string& path);  // in 7-bit characters

 private:
  BackgroundProcess process_;
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_PATHS_HELD_FILE_H_
