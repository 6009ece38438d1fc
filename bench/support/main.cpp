#include "bench/support/main.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "bench/support/rounds.h"

namespace {

// Takes "--rounds=N" out of the arguments: the most rounds that are wanted.
int TakeRounds(int& argc, char** argv) {
  constexpr std::string_view kOption = "--rounds=";
  int rounds = kv::bench::kRounds;
  int kept = 0;
  for (int i = 0; i < argc; ++i) {
    if (std::string_view(argv[i]).starts_with(kOption)) {
      rounds = std::atoi(argv[i] + kOption.size());
    } else {
      argv[kept++] = argv[i];
    }
  }
  argc = kept;
  return rounds;
}

}  // namespace

void kv::bench::Require(bool agreed, const char* what) {
  if (agreed) return;
  std::fprintf(stderr, "the forms disagree: %s\n", what);
  std::exit(1);
}

int main(int argc, char** argv) {
  const int mostRounds = TakeRounds(argc, argv);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  kv::bench::CheckAgreement();
  kv::bench::RegisterComparisons();
  kv::bench::RunRounds(mostRounds);
  benchmark::Shutdown();
  return 0;
}
