// A file that a second process holds open.
#ifndef KVUTILS_TESTS_SUPPORT_HELD_FILE_H_
#define KVUTILS_TESTS_SUPPORT_HELD_FILE_H_

#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "tests/support/files.h"
#include "tests/support/process.h"

namespace kv::test {

// What others may do with a held file: nothing, or read it, but neither write, rename, replace nor
// delete it.
enum class Sharing : char { kNone = 'n', kRead = 'r' };

// Holds the file for its life. The test program has one case for the second process:
//
//   TEST(HeldFileChild, DISABLED_Holds) { kv::test::HoldFileForParent(); }
class HeldFile {
 public:
  explicit HeldFile(const std::string& path, Sharing sharing = Sharing::kNone)
      : holder_((SetEnvironment("KVUTILS_HELD_FILE", static_cast<char>(sharing) + path),
                 BackgroundProcess::OwnCase("HeldFileChild.DISABLED_Holds"))) {}
  ~HeldFile() { EXPECT_EQ(holder_.Finish().exitCode, 0U); }
  HeldFile(const HeldFile&) = delete;
  HeldFile& operator=(const HeldFile&) = delete;

 private:
  BackgroundProcess holder_;
};

inline HANDLE OpenShared(const std::string& path, Sharing sharing) {
  const bool isShared = sharing == Sharing::kRead;
  return ::CreateFileW(Widen(path).c_str(), isShared ? GENERIC_READ : GENERIC_READ | GENERIC_WRITE,
                       isShared ? FILE_SHARE_READ : 0, nullptr, OPEN_EXISTING,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

inline void HoldFileForParent() {
  const std::string held = Environment("KVUTILS_HELD_FILE");
  ASSERT_NE(held, "");
  const HANDLE file = OpenShared(held.substr(1), static_cast<Sharing>(held[0]));
  ASSERT_NE(file, INVALID_HANDLE_VALUE);
  SayReady();
  AwaitRelease();
  ::CloseHandle(file);
}

// Whether nobody has the file open.
inline bool IsFree(const std::string& path) {
  const HANDLE file = OpenShared(path, Sharing::kNone);
  return file != INVALID_HANDLE_VALUE && ::CloseHandle(file) != 0;
}

}  // namespace kv::test

#endif  // KVUTILS_TESTS_SUPPORT_HELD_FILE_H_
