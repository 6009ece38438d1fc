#include "bench/support/rounds.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <regex>
#include <string>
#include <utility>
#include <vector>

namespace kv::bench {
namespace {

std::vector<std::pair<std::string, int>>& RoundsOfOperations() {
  static std::vector<std::pair<std::string, int>> rounds;
  return rounds;
}

// The reports of many runs of Google Benchmark as that of one.
class OneReport : public benchmark::JSONReporter {
 public:
  bool ReportContext(const Context& context) override {
    return std::exchange(begun_, true) || JSONReporter::ReportContext(context);
  }
  void Finalize() override {}

  void End() {
    if (begun_) JSONReporter::Finalize();
  }

 private:
  bool begun_ = false;
};

// A pattern for the names of the operation's benchmarks.
std::string FormsOf(const std::string& operation) {
  static const std::regex kSpecial(R"([.\[\]{}()\\*+?^$|])");
  return "^" + std::regex_replace(operation, kSpecial, R"(\$&)") + "/";
}

}  // namespace

void MeasureInRounds(const std::string& operation, int rounds) {
  RoundsOfOperations().emplace_back(operation, rounds);
}

void RunRounds(int mostRounds) {
  const std::regex wanted(benchmark::GetBenchmarkFilter());
  OneReport report;
  for (const auto& [operation, rounds] : RoundsOfOperations()) {
    if (!std::regex_search(operation, wanted)) continue;
    const std::string forms = FormsOf(operation);
    for (int round = std::min(rounds, mostRounds); round > 0; --round) {
      benchmark::RunSpecifiedBenchmarks(&report, forms);
    }
  }
  report.End();
}

}  // namespace kv::bench
