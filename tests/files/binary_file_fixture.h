// What the tests of the binary file share: a view of its protected members, whole reads, raised
// errors.
#ifndef KVUTILS_TESTS_FILES_BINARY_FILE_FIXTURE_H_
#define KVUTILS_TESTS_FILES_BINARY_FILE_FIXTURE_H_

#include <gtest/gtest.h>

#include <string>

#include "tests/support/sandbox.h"
#include "utils/files/files.h"

namespace kv::test {

// Shows what the contract of a derived class can see.
class OpenedFile : public MFile {
 public:
  using MFile::GetAccessMode;
  using MFile::GetFlagAndAttributes;
  using MFile::GetMethodMove;
  using MFile::GetOpenMode;
  using MFile::GetShareMode;
  using MFile::Load;
  using MFile::MFile;
  using MFile::Unload;
  unsigned State() const { return m_State; }
  int OpenCount() const { return m_OpenCount; }
  const std::wstring& Path() const { return m_Path; }
};

inline std::string ReadAll(MFile& file) {
  std::string bytes(1000, '\0');
  bytes.resize(file.Read(bytes.data(), static_cast<unsigned>(bytes.size())));
  return bytes;
}

// Runs an action that raises with `code` and returns what it prints and carries.
template <typename Action>
std::string Raised(Action action, unsigned code = 2) {
  testing::internal::CaptureStdout();
  std::string text = "nothing raised";
  try {
    action();
  } catch (const MException& error) {
    EXPECT_EQ(error.GetCode(), code);
    text = error.GetMessage();
  }
  const std::string printed = testing::internal::GetCapturedStdout();
  EXPECT_EQ(printed, text == "nothing raised" ? "" : text) << "printed once, when raised";
  return text;
}

}  // namespace kv::test

#endif  // KVUTILS_TESTS_FILES_BINARY_FILE_FIXTURE_H_
