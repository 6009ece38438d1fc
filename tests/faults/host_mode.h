// Rights of a file or folder as the Unix host keeps them; they bind ordinary users alone.
#ifndef KVUTILS_TESTS_FAULTS_HOST_MODE_H_
#define KVUTILS_TESTS_FAULTS_HOST_MODE_H_

#include <windows.h>

#include <algorithm>
#include <string>

#include "tests/support/files.h"
#include "tests/support/process.h"

namespace kv::test {

// For its life the file or folder, an absolute path on drive Z, has the mode, such as "555".
class HostMode {
 public:
  // takesHold() tells whether the mode is in force: the system gives no handle of a Unix process to
  // wait for.
  template <typename Condition>
  HostMode(const std::string& path, const char* mode, Condition takesHold)
      : hostPath_(path.substr(2)) {
    std::replace(hostPath_.begin(), hostPath_.end(), '\\', '/');
    Set(mode);
    for (int i = 0; i < 300 && !isInForce_; ++i) {
      isInForce_ = takesHold();
      if (!isInForce_) ::Sleep(10);
    }
  }
  ~HostMode() {
    Set("755");
    for (int i = 0; i < 300 && !IsWritable(); ++i) ::Sleep(10);
  }
  HostMode(const HostMode&) = delete;
  HostMode& operator=(const HostMode&) = delete;

  // False where the tests run as root, whom no mode binds.
  [[nodiscard]] bool IsInForce() const { return isInForce_; }

 private:
  void Set(const char* mode) const { RunProgram("Z:\\bin\\chmod", {mode, hostPath_}); }
  [[nodiscard]] bool IsWritable() const {
    const HANDLE handle = ::CreateFileW(Widen("Z:" + hostPath_).c_str(), GENERIC_WRITE, 0, nullptr,
                                        OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    return handle != INVALID_HANDLE_VALUE && ::CloseHandle(handle) != 0;
  }

  std::string hostPath_;
  bool isInForce_ = false;
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_FAULTS_HOST_MODE_H_
