// The host example of the README: that it does what it says, and that the README shows this very
// text.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "tests/support/process.h"
#include "tests/support/sandbox.h"

namespace {

using kv::test::ProcessResult;
using kv::test::ProgramFolder;
using kv::test::ReadBytes;
using kv::test::RunProgram;
using kv::test::WriteBytes;
using HostExample = kv::test::Sandbox;

// A file of the source tree, whose Unix path is seen through drive Z.
std::string ReadSource(const std::string& path) {
  std::string windowsPath = "Z:" + std::string(KVUTILS_SOURCE_DIR) + "/" + path;
  std::replace(windowsPath.begin(), windowsPath.end(), '/', '\\');
  return ReadBytes(windowsPath);
}

std::string WithoutReturns(std::string text) {
  text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
  return text;
}

TEST_F(HostExample, PrintsTheTextThatItsDataNameLeadsTo) {
  WriteBytes(Work() + "media\\welcome.txt",
             "! a comment\n  first line\t\n\nzweite Zeile: größer\n");
  const ProcessResult result = RunProgram(ProgramFolder() + "host.exe", {}, Work());
  EXPECT_EQ(result.exitCode, 0U);
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(WithoutReturns(result.out),
            Work() + "media\\welcome.txt\n  first line\n  zweite Zeile: größer\n");
}

TEST_F(HostExample, PrefersTheVariantForTheLanguage) {
  WriteBytes(Work() + "media\\welcome.txt", "plain\n");
  WriteBytes(Work() + "en\\media\\welcome.txt", "English\n");
  const ProcessResult result = RunProgram(ProgramFolder() + "host.exe", {}, Work());
  EXPECT_EQ(WithoutReturns(result.out), Work() + "en\\media\\welcome.txt\n  English\n");
}

TEST_F(HostExample, SaysWhatIsMissing) {
  const ProcessResult result = RunProgram(ProgramFolder() + "host.exe", {}, Work());
  EXPECT_EQ(result.exitCode, 1U);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(WithoutReturns(result.err), "no media:welcome.txt in " + Work() + "\n");
}

TEST_F(HostExample, IsQuotedByTheReadmeWordForWord) {
  const std::string readme = ReadSource("README.md");
  const std::string opening = "<!-- examples/host/main.cpp -->\n```cpp\n";
  const std::size_t start = readme.find(opening);
  ASSERT_NE(start, std::string::npos);
  const std::size_t code = start + opening.size();
  EXPECT_EQ(readme.substr(code, readme.find("```", code) - code),
            ReadSource("examples/host/main.cpp"));
}

}  // namespace
