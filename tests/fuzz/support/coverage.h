// Which ways through the library an input takes. Code compiled with -fsanitize-coverage=trace-pc
// tells of each branch that it takes; of other code nothing is known.
//
// A way is a pair of neighbouring branches and, roughly, how often an input takes it: once, twice,
// three times, from four on by powers of two. Of those that one input takes, an input that finds a
// new one is worth keeping: what is made of it may find the next.
#ifndef KVUTILS_TESTS_FUZZ_SUPPORT_COVERAGE_H_
#define KVUTILS_TESTS_FUZZ_SUPPORT_COVERAGE_H_

#ifdef KVCOVERAGE_BUILD
#define KVCOVERAGE_API __declspec(dllexport)
#else
#define KVCOVERAGE_API __declspec(dllimport)
#endif

extern "C" {

// Begins to note the ways of one input; for one thread.
KVCOVERAGE_API void KvcoverageStart();

// Ends it. Whether one of the ways was taken by none of the inputs before.
KVCOVERAGE_API bool KvcoverageStop();

// The pairs of branches that have been taken by any input.
KVCOVERAGE_API int KvcoverageCount();
}

#endif  // KVUTILS_TESTS_FUZZ_SUPPORT_COVERAGE_H_
