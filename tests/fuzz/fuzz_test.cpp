// The fuzzer finds what is planted, and says and keeps what it found.
#include <gtest/gtest.h>

#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include "tests/fuzz/support/input.h"
#include "tests/fuzz/support/mutation.h"
#include "tests/fuzz/support/target.h"
#include "tests/support/files.h"
#include "tests/support/process.h"
#include "tests/support/sandbox.h"

namespace {

using kv::fuzz::Input;
using kv::fuzz::Mutator;
using kv::test::ProcessResult;

class Fuzzer : public kv::test::Sandbox {
 protected:
  // What the sanitizer finds here is wanted, and none of the run.
  static ProcessResult RunFuzz(const std::vector<std::string>& arguments) {
    kv::test::SetEnvironment("KVUTILS_FINDINGS", "");
    return kv::test::RunProgram(kv::test::ProgramFolder() + "fuzz.exe", arguments);
  }

  // The only file in the current folder.
  std::string KeptFile() {
    const std::vector<std::string> files = kv::test::ListTree(Work());
    EXPECT_EQ(files.size(), 1U);
    return files.empty() ? "" : files.front();
  }
};

struct Row {
  const char* target;
  const char* finding;
};

class PlantedBug : public Fuzzer, public ::testing::WithParamInterface<Row> {};

TEST_P(PlantedBug, IsFoundByKeepingWhatGetsFurther) {
  const ProcessResult result = RunFuzz({GetParam().target, "200000", "--patience", "3"});
  EXPECT_EQ(result.exitCode, 1U) << result.out << result.err;
  EXPECT_EQ(
      result.out.find(std::string("FOUND in ") + GetParam().target + ": " + GetParam().finding), 0U)
      << result.out;
  const std::string file = KeptFile();
  EXPECT_NE(result.out.find("again: ./kv fuzz " + std::string(GetParam().target)),
            std::string::npos);
  EXPECT_NE(result.out.find(file), std::string::npos);
  EXPECT_EQ(kv::test::ReadBytes(Work() + file).substr(0, 4), "K194");
}

TEST_P(PlantedBug, IsFoundAgainByTheInputThatWasKept) {
  kv::test::WriteBytes(Work() + "input", "K194R");
  const ProcessResult result = RunFuzz({GetParam().target, "--input", Work() + "input",
                                        "--patience", "3", "--findings", Root() + "kept"});
  EXPECT_EQ(result.exitCode, 1U) << result.out << result.err;
  EXPECT_NE(result.out.find("\n  by these 5 bytes:\n    4B 31 39 34 52\n"), std::string::npos)
      << result.out;
}

INSTANTIATE_TEST_SUITE_P(Kinds, PlantedBug,
                         testing::Values(Row{"planted_overflow", "the process ends with code 0x"},
                                         Row{"planted_violation",
                                             "the answer is true and should be false"},
                                         Row{"planted_hang", "the input takes longer than 3 s"}),
                         [](const auto& row) { return std::string(row.param.target).substr(8); });

TEST_F(Fuzzer, AnInputThatMeetsNoBugPasses) {
  kv::test::WriteBytes(Work() + "input", "K193R");
  const ProcessResult result = RunFuzz({"planted_violation", "--input", Work() + "input"});
  EXPECT_EQ(result.exitCode, 0U) << result.out << result.err;
  EXPECT_NE(result.out.find("1 inputs"), std::string::npos) << result.out;
}

TEST_F(Fuzzer, KeepsInputsThatTakeNewWaysAndBeginsWithThem) {
  const std::string corpus = Root() + "corpus";
  EXPECT_EQ(RunFuzz({"planted_violation", "300", "--corpus", corpus}).exitCode, 0U);
  const std::size_t kept = kv::test::ListTree(corpus).size();
  EXPECT_GT(kept, 0U);
  kv::test::WriteBytes(corpus + "\\further", "K194");
  EXPECT_EQ(RunFuzz({"planted_violation", "1", "--corpus", corpus}).exitCode, 1U);
}

TEST_F(Fuzzer, RefusesWhatItDoesNotKnow) {
  EXPECT_EQ(RunFuzz({"nothing"}).err, "fuzz: there is no target nothing\n");
  EXPECT_EQ(RunFuzz({"planted_hang", "--size", "3"}).err, "fuzz: there is no option --size\n");
  EXPECT_EQ(RunFuzz({"planted_hang", "--input"}).err, "fuzz: --input lacks its value\n");
  EXPECT_EQ(RunFuzz({}).exitCode, 2U);
}

TEST_F(Fuzzer, ListsNoTargetWithAPlantedBug) {
  const ProcessResult result = RunFuzz({"--list"});
  EXPECT_NE(result.out.find("converters"), std::string::npos);
  EXPECT_EQ(result.out.find("planted"), std::string::npos);
}

TEST(FuzzInput, TakesTextsFromTheBeginningAndNumbersFromTheEnd) {
  Input input(std::string_view("ab\0c\0xyz\1\7", 10));
  EXPECT_EQ(input.Below(4), 3U);
  EXPECT_EQ(input.Text(), "ab");
  EXPECT_TRUE(input.Flag());
  EXPECT_EQ(input.Text(), "c");
  EXPECT_EQ(input.Take<short>(), 0x7A79);
  EXPECT_EQ(input.Rest(), "x");
  EXPECT_TRUE(input.IsUsedUp());
  EXPECT_EQ(input.Take<int>(), 0);
  EXPECT_EQ(input.Text(), "");
}

TEST(FuzzMutation, IsTheSameForOneSeedAndOfNoMoreThanItsSize) {
  const std::vector<std::string> inputs = {"", "a,b", "abcdefghijklmnopqrstuvwxyz"};
  Mutator first({"word"}, 20, 1);
  Mutator same({"word"}, 20, 1);
  Mutator other({"word"}, 20, 2);
  std::set<std::string> made;
  int differences = 0;
  for (int i = 0; i < 1000; ++i) {
    const std::string input = first.Make(inputs);
    EXPECT_EQ(same.Make(inputs), input);
    if (other.Make(inputs) != input) ++differences;
    EXPECT_LE(input.size(), 20U);
    made.insert(input);
  }
  EXPECT_GT(made.size(), 700U);
  EXPECT_GT(differences, 900);
}

TEST(FuzzMutation, PutsInWordsOfTheTarget) {
  Mutator mutator({"SOME_WORD"}, 100, 1);
  int count = 0;
  for (int i = 0; i < 1000; ++i) {
    if (mutator.Make({"seed"}).find("SOME_WORD") != std::string::npos) ++count;
  }
  EXPECT_GT(count, 2);
}

TEST(FuzzShow, WritesWhatIsNotPlainAsCodes) {
  EXPECT_EQ(kv::fuzz::Show("a\"\n\xFF"), R"("a\x22\x0A\xFF")");
  EXPECT_EQ(kv::fuzz::Show(std::wstring_view(L"a\x3B1")), R"("a\u03B1")");
  EXPECT_EQ(kv::fuzz::Show(std::vector<int>{1, 2}), "{1, 2}");
}

}  // namespace
