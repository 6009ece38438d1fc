// The shell's file operations, noted and not done: what the library asks of the shell, to the byte.
#ifndef KVUTILS_TESTS_PATHS_SHELL_STAND_IN_H_
#define KVUTILS_TESTS_PATHS_SHELL_STAND_IN_H_

#include <windows.h>

#include <shellapi.h>

#include <string>
#include <vector>

#include "tests/support/import_patch.h"

namespace kv::test {

// One request. Lists of paths are given with the NUL of each path, without the one that ends the
// list; a null list is empty.
template <typename Char>
struct ShellRequest {
  HWND owner;
  UINT operation;
  std::basic_string<Char> from;
  std::basic_string<Char> to;
  FILEOP_FLAGS flags;
};

// While it lives, the library's requests in the W or A form are noted and answered with `result`.
template <typename Char, typename Operation>
class ShellStandIn {
 public:
  explicit ShellStandIn(const char* function, int result = 0) : patch_(function, &Note) {
    requests_.clear();
    result_ = result;
  }

  const std::vector<ShellRequest<Char>>& Requests() const { return requests_; }

 private:
  static std::basic_string<Char> ListAt(const Char* paths) {
    std::basic_string<Char> list;
    while (paths != nullptr && *paths != 0) {
      const std::basic_string<Char> path = paths;
      list += path + Char(0);
      paths += path.size() + 1;
    }
    return list;
  }
  static int WINAPI Note(Operation* operation) {
    requests_.push_back({operation->hwnd, operation->wFunc, ListAt(operation->pFrom),
                         ListAt(operation->pTo), operation->fFlags});
    return result_;
  }

  static inline std::vector<ShellRequest<Char>> requests_;
  static inline int result_ = 0;

  ImportPatch patch_;
};

class WideShellStandIn : public ShellStandIn<wchar_t, SHFILEOPSTRUCTW> {
 public:
  explicit WideShellStandIn(int result = 0) : ShellStandIn("SHFileOperationW", result) {}
};
class NarrowShellStandIn : public ShellStandIn<char, SHFILEOPSTRUCTA> {
 public:
  explicit NarrowShellStandIn(int result = 0) : ShellStandIn("SHFileOperationA", result) {}
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_PATHS_SHELL_STAND_IN_H_
