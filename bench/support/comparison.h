// One operation of the library beside what else a program could call, measured in one run.
//
//   const std::string path = ...;
//   Comparison("GetUniqueID, 60 bytes")
//       .Add("library", [path] { return GetUniqueID(path.c_str()); })
//       .Add("plain", [path] { return kv::reference::UniqueId(path.c_str()); });
//
// A form is called once an iteration. Where it lies is hidden from the optimiser and memory counts
// as changed behind each call, so that a form that captures its input reads it anew: no call is
// drawn out of the loop or shared between iterations, not even that of a pure function. What is
// measured besides the form is a third of a nanosecond.
//
// The names of the forms: "library" is the exported function, "plain" the loop that defines its
// results, "limit ..." what no form can undercut; every other name is a peer.
#ifndef KVUTILS_BENCH_SUPPORT_COMPARISON_H_
#define KVUTILS_BENCH_SUPPORT_COMPARISON_H_

#include <benchmark/benchmark.h>

#include <string>
#include <type_traits>
#include <utility>

#include "bench/support/rounds.h"

namespace kv::bench {

class Comparison {
 public:
  // `operation` tells what is done to what; "/" is not used in it.
  explicit Comparison(std::string operation) : operation_(std::move(operation)) {}
  ~Comparison() { MeasureInRounds(operation_, rounds_); }
  Comparison(const Comparison&) = delete;
  Comparison& operator=(const Comparison&) = delete;

  // For operations of a hundredth of a second and more: so many rounds instead of kRounds, in each
  // of which a form is called once. Precedes Add().
  Comparison& CallOnceIn(int rounds) {
    rounds_ = rounds;
    callOnce_ = true;
    return *this;
  }

  template <typename Form>
  Comparison& Add(const std::string& name, Form form) {
    auto* registered =
        benchmark::RegisterBenchmark((operation_ + "/" + name).c_str(),
                                     [form = std::move(form)](benchmark::State& state) mutable {
                                       // Not DoNotOptimize(pointer): g++ 12 at times reads what
                                       // it gives back from a place that nothing was written to.
                                       Form* volatile hidden = &form;
                                       for (auto _ : state) {
                                         if constexpr (std::is_void_v<decltype(form())>) {
                                           (*hidden)();
                                         } else {
                                           benchmark::DoNotOptimize((*hidden)());
                                         }
                                         benchmark::ClobberMemory();
                                       }
                                     });
    registered->UseRealTime();
    if (callOnce_) registered->Iterations(1);
    return *this;
  }

 private:
  std::string operation_;
  int rounds_ = kRounds;
  bool callOnce_ = false;
};

}  // namespace kv::bench

#endif  // KVUTILS_BENCH_SUPPORT_COMPARISON_H_
