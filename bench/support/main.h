// The main function of the benchmarks, in support/main.cpp, and what each of them gives it.
#ifndef KVUTILS_BENCH_SUPPORT_MAIN_H_
#define KVUTILS_BENCH_SUPPORT_MAIN_H_

namespace kv::bench {

// Calls all forms of every operation on random inputs with a fixed seed and compares their results
// by Require. Runs before anything is measured.
void CheckAgreement();

// Registers the comparisons.
void RegisterComparisons();

// Ends the program with a message when the forms disagree.
void Require(bool agreed, const char* what);

}  // namespace kv::bench

#endif  // KVUTILS_BENCH_SUPPORT_MAIN_H_
