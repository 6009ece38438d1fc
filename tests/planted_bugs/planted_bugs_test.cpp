// Each kind of bug that the sanitized build is made for is found, said, and ends the process.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/planted_bugs/held_block.h"
#include "tests/support/process.h"

namespace {

using kv::test::ProcessResult;

constexpr unsigned long kMemory = 81;
constexpr unsigned long kUndefinedBehaviour = 82;

// What is found is wanted, and no finding of the run; nor is what Wine says of it.
ProcessResult RunBug(const std::string& bug) {
  kv::test::SetEnvironment("KVUTILS_FINDINGS", "");
  kv::test::SetEnvironment("WINEDEBUG", "-all");
  return kv::test::RunProgram(kv::test::ProgramFolder() + "planted_bugs.exe", {bug});
}

TEST(PlantedBugs, AProgramWithoutABugRunsToItsEnd) {
  const ProcessResult result = RunBug("none");
  EXPECT_EQ(result.exitCode, 0U);
  EXPECT_EQ(result.err, "");
}

struct Row {
  const char* bug;
  const char* found;  // the beginning of what is said
};

class PlantedMemoryBug : public ::testing::TestWithParam<Row> {};

TEST_P(PlantedMemoryBug, IsFound) {
  const ProcessResult result = RunBug(GetParam().bug);
  EXPECT_EQ(result.exitCode, kMemory) << result.err << result.out;
  EXPECT_TRUE(result.err.starts_with(std::string("sanitizer: ") + GetParam().found)) << result.err;
}

std::string TestName(const ::testing::TestParamInfo<Row>& info) {
  std::string name;
  for (const char c : std::string(info.param.bug)) {
    if (std::isalnum(static_cast<unsigned char>(c)) != 0) name += c;
  }
  return name;
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, PlantedMemoryBug,
    testing::Values(
        Row{"stack read over", "read outside an object on the stack, 1 bytes"},
        Row{"stack read under", "read outside an object on the stack, 1 bytes"},
        Row{"stack write over", "write outside an object on the stack, 1 bytes"},
        Row{"stack write under", "write outside an object on the stack, 1 bytes"},
        Row{"global read over", "read outside a global object, 1 bytes"},
        Row{"global write over", "write outside a global object, 1 bytes"},
        Row{"heap read over", "read outside a block of the heap, 1 bytes"},
        Row{"heap read under", "read outside a block of the heap, 1 bytes"},
        Row{"heap write over", "write outside a block of the heap, 1 bytes"},
        Row{"heap write under", "write outside a block of the heap, 1 bytes"},
        Row{"empty block read", "read outside a block of the heap, 1 bytes"},
        Row{"text read over", "read outside a block of the heap, 1 bytes"},
        Row{"read after release", "read of a block of the heap that is released, 1 bytes"},
        Row{"write after release", "write of a block of the heap that is released, 1 bytes"},
        Row{"read out of scope", "read of an object on the stack that is out of scope, 1 bytes"},
        Row{"double release", "release of a block that is released"},
        Row{"inner release", "release of what is not the beginning of a block"},
        Row{"stack release", "release of what is not the beginning of a block"},
        Row{"MultiByteToWideChar", "write by MultiByteToWideChar outside a block of the heap"},
        Row{"WideCharToMultiByte", "write by WideCharToMultiByte outside a block of the heap"},
        Row{"ReadFile", "write by ReadFile outside a block of the heap, 5 bytes"},
        Row{"GetCurrentDirectoryW", "write by GetCurrentDirectoryW outside a block of the heap"},
        Row{"fgets", "write by fgets outside a block of the heap, 5 bytes"},
        Row{"memcpy", "read by memcpy outside a global object, 20 bytes"},
        Row{"std::string", "read by memcpy outside a block of the heap, 21 bytes"},
        Row{"the library", "read outside a block of the heap, 1 bytes"}),
    TestName);

class PlantedUndefinedBehaviour : public ::testing::TestWithParam<Row> {};

TEST_P(PlantedUndefinedBehaviour, IsFound) {
  const ProcessResult result = RunBug(GetParam().bug);
  EXPECT_EQ(result.exitCode, kUndefinedBehaviour) << result.err << result.out;
  EXPECT_TRUE(result.err.starts_with("sanitizer: undefined behaviour")) << result.err;
}

INSTANTIATE_TEST_SUITE_P(Kinds, PlantedUndefinedBehaviour,
                         testing::Values(Row{"signed overflow", ""}, Row{"shift", ""},
                                         Row{"division by zero", ""}, Row{"float to int", ""},
                                         Row{"null", ""}, Row{"alignment", ""}, Row{"index", ""},
                                         Row{"bool", ""}),
                         TestName);

TEST(PlantedBugs, AFindingNamesTheModuleAndThePlaceInIt) {
  const ProcessResult result = RunBug("the library");
  EXPECT_NE(result.err.find("\n  at kvutils.dll+0x"), std::string::npos) << result.err;
  EXPECT_NE(result.err.find("\n  at planted_bugs.exe+0x"), std::string::npos) << result.err;
}

TEST(PlantedBugs, AFindingNamesTheGlobalObject) {
  const ProcessResult result = RunBug("global read over");
  EXPECT_NE(result.err.find("\n  near g_text of "), std::string::npos) << result.err;
}

// In a process of their own, whose failure is looked at.
std::vector<int> g_noted;

TEST(PlantedLeak, DISABLED_LosesABlock) {
  [[maybe_unused]] const char* const volatile lost = new char[30];
}
TEST(PlantedLeak, DISABLED_KeepsABlockInTheProcess) { kv::test::HoldBlock(); }
TEST(PlantedLeak, DISABLED_NotesSomethingForTheCase) { g_noted.assign(100, 1); }
TEST(PlantedLeak, DISABLED_ReleasesAll) { const std::string text(30, 'a'); }

TEST(PlantedBugs, ALostBlockFailsItsCase) {
  const ProcessResult result = kv::test::RunOwnCase("PlantedLeak.DISABLED_LosesABlock");
  EXPECT_EQ(result.exitCode, 1U);
  EXPECT_NE(result.out.find("30 bytes are lost"), std::string::npos) << result.out;
}

TEST(PlantedBugs, ABlockKeptByStateThatIsNotNamedFailsItsCase) {
  const ProcessResult result = kv::test::RunOwnCase("PlantedLeak.DISABLED_KeepsABlockInTheProcess");
  EXPECT_EQ(result.exitCode, 1U);
  EXPECT_NE(result.out.find("40 bytes are held by \"g_held\" of "), std::string::npos)
      << result.out;
}

TEST(PlantedBugs, ACaseThatReleasesAllOrHoldsItInItsOwnSourcePasses) {
  EXPECT_EQ(kv::test::RunOwnCase("PlantedLeak.DISABLED_ReleasesAll").exitCode, 0U);
  EXPECT_EQ(kv::test::RunOwnCase("PlantedLeak.DISABLED_NotesSomethingForTheCase").exitCode, 0U);
}

}  // namespace
