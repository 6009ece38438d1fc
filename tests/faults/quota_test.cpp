// Writes that reach the quota of the user; run-with-quota sets one of 8,192 bytes.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "tests/support/held_file.h"
#include "tests/support/sandbox.h"
#include "utils/download/download.h"
#include "utils/files/files.h"

namespace {

class Quota : public kv::test::Sandbox {};

TEST_F(Quota, DISABLED_CutsWhatIsSaved) {
  constexpr unsigned kQuota = 8192;
  const std::string bytes(4 * kQuota, 'x');
  {
    MFile file("a.bin", 5);
    EXPECT_THROW(while (file.Write(bytes.data(), kQuota) == kQuota){}, MException)
        << "the quota is not in force";
    EXPECT_EQ(file.GetLength(), static_cast<int>(kQuota));
  }
  EXPECT_TRUE(kv::test::IsFree("a.bin"));
  const std::string saved = Writable() + "download\\files_crc_sum.dat";
  {
    CheckFileVersion versions;
    for (int i = 0; i < 2000; ++i) versions.AddFile(std::to_string(i).c_str(), 1);
    versions.WriteData();  // one write, which is cut short and counts as done
    EXPECT_EQ(kv::test::ReadBytes(saved).size(), kQuota);
    { const CheckFileVersion torn; }
    EXPECT_EQ(kv::test::ReadBytes(saved).size(), kQuota) << "whole entries, which load";
    versions.DeleteData();
    versions.AddFile("a", 1);
    versions.WriteData();
  }
  EXPECT_EQ(kv::test::ReadBytes(saved).size(), 8U) << "usable afterwards";
  EXPECT_TRUE(kv::test::IsFree(saved));
}

}  // namespace
