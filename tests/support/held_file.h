// A file that a second process holds open and shares with nobody.
#ifndef KVUTILS_TESTS_SUPPORT_HELD_FILE_H_
#define KVUTILS_TESTS_SUPPORT_HELD_FILE_H_

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdlib>
#include <string>

#include "tests/support/files.h"
#include "tests/support/process.h"

namespace kv::test {

// Holds the file for its life. The test program has one case for the second process:
//
//   TEST(HeldFileChild, DISABLED_Holds) { kv::test::HoldFileForParent(); }
class HeldFile {
 public:
  explicit HeldFile(const std::string& path)
      : holder_((SetEnvironment("KVUTILS_HELD_FILE", path),
                 BackgroundProcess::OwnCase("HeldFileChild.DISABLED_Holds"))) {}
  ~HeldFile() { EXPECT_EQ(holder_.Finish().exitCode, 0U); }
  HeldFile(const HeldFile&) = delete;
  HeldFile& operator=(const HeldFile&) = delete;

 private:
  BackgroundProcess holder_;
};

inline HANDLE OpenUnshared(const std::string& path) {
  return ::CreateFileW(Widen(path).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

inline void HoldFileForParent() {
  const char* path = std::getenv("KVUTILS_HELD_FILE");
  ASSERT_NE(path, nullptr);
  const HANDLE file = OpenUnshared(path);
  ASSERT_NE(file, INVALID_HANDLE_VALUE);
  SayReady();
  AwaitRelease();
  ::CloseHandle(file);
}

// Whether nobody has the file open.
inline bool IsFree(const std::string& path) {
  const HANDLE file = OpenUnshared(path);
  return file != INVALID_HANDLE_VALUE && ::CloseHandle(file) != 0;
}

}  // namespace kv::test

#endif  // KVUTILS_TESTS_SUPPORT_HELD_FILE_H_
