#include "tests/paths/held_file.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdlib>

#include "tests/support/files.h"

namespace {

constexpr char kVariable[] = "KVUTILS_HELD_FILE";

TEST(HeldFileChild, DISABLED_HoldsAFile) {
  const char* path = std::getenv(kVariable);
  const HANDLE file = ::CreateFileW(kv::test::Widen(path).c_str(), GENERIC_READ, FILE_SHARE_READ,
                                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(file, INVALID_HANDLE_VALUE) << path;
  kv::test::SayReady();
  kv::test::AwaitRelease();
  ::CloseHandle(file);
}

kv::test::BackgroundProcess Hold(const std::string& path) {
  kv::test::SetEnvironment(kVariable, path);
  return kv::test::BackgroundProcess::OwnCase("HeldFileChild.DISABLED_HoldsAFile");
}

}  // namespace

namespace kv::test {

HeldFile::HeldFile(const std::string& path) : process_(Hold(path)) {}

}  // namespace kv::test
