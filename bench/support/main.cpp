#include "bench/support/main.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>

void kv::bench::Require(bool agreed, const char* what) {
  if (agreed) return;
  std::fprintf(stderr, "the forms disagree: %s\n", what);
  std::exit(1);
}

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  kv::bench::CheckAgreement();
  kv::bench::RegisterComparisons();
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
