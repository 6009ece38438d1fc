// What is measured of the operations, and in which order.
//
// One operation is measured after the other, each in rounds: a round measures every form of it
// once, for some hundredths of a second. The forms of a round meet the same clock of the processor
// and the same other load; their ratio is that of the round, and of all rounds the median counts
// (bench/report.py).
#ifndef KVUTILS_BENCH_SUPPORT_ROUNDS_H_
#define KVUTILS_BENCH_SUPPORT_ROUNDS_H_

#include <string>

namespace kv::bench {

inline constexpr int kRounds = 21;
inline constexpr int kFewRounds = 5;  // of operations that take long

// `operation` is what stands before the "/" in the names of its benchmarks.
void MeasureInRounds(const std::string& operation, int rounds);

// Measures the operations whose names the filter of Google Benchmark's options finds, and writes
// its JSON report of all rounds to the standard output: nothing if there is no such operation.
// At most `mostRounds` of each are run.
void RunRounds(int mostRounds);

}  // namespace kv::bench

#endif  // KVUTILS_BENCH_SUPPORT_ROUNDS_H_
