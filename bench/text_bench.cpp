// Converting paths and texts, and reading rows of numbers, each beside the alternative that a host
// would otherwise use. Text is made with a fixed seed.
#include <benchmark/benchmark.h>
#include <windows.h>

#include <cstdio>
#include <random>
#include <string>

#include "utils/text/text.h"

namespace {

// A path of this many bytes, ASCII or with a Cyrillic letter in every fourth place.
std::string Path(std::size_t bytes, bool ascii) {
  std::mt19937 random(20240229);
  std::string path = "C:\\";
  while (path.size() < bytes) {
    if (!ascii && path.size() % 4 == 0 && path.size() + 2 <= bytes) {
      path += "\xD0\xB6";
    } else {
      path += random() % 8 == 0 ? '\\' : static_cast<char>('a' + random() % 26);
    }
  }
  return path;
}

void LibraryToWide(benchmark::State& state) {
  const std::string path = Path(static_cast<std::size_t>(state.range(0)), state.range(1) != 0);
  for (auto _ : state) benchmark::DoNotOptimize(Ascii2Unicode(path.c_str(), true));
}

void SystemToWide(benchmark::State& state) {
  const std::string path = Path(static_cast<std::size_t>(state.range(0)), state.range(1) != 0);
  const int bytes = static_cast<int>(path.size());
  for (auto _ : state) {
    std::wstring wide(
        static_cast<std::size_t>(::MultiByteToWideChar(CP_UTF8, 0, path.data(), bytes, nullptr, 0)),
        L'\0');
    ::MultiByteToWideChar(CP_UTF8, 0, path.data(), bytes, wide.data(),
                          static_cast<int>(wide.size()));
    benchmark::DoNotOptimize(wide);
  }
}

// Bytes, and whether all of them are ASCII.
void Sizes(benchmark::internal::Benchmark* benchmark) {
  for (const int bytes : {60, 200, 1 << 20}) {
    benchmark->Args({bytes, 1});
    benchmark->Args({bytes, 0});
  }
}
BENCHMARK(LibraryToWide)->Apply(Sizes);
BENCHMARK(SystemToWide)->Apply(Sizes);

void LibraryIdentifier(benchmark::State& state) {
  const std::string path = Path(static_cast<std::size_t>(state.range(0)), true);
  for (auto _ : state) benchmark::DoNotOptimize(GetUniqueID(path.c_str()));
}
BENCHMARK(LibraryIdentifier)->Arg(60)->Arg(200);

}  // namespace

BENCHMARK_MAIN();
