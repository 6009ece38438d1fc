// Opening files by data name: a remembered answer beside the plain map look-up that it consists of,
// and a question to the file system beside the system's own.
#include <benchmark/benchmark.h>
#include <windows.h>

#include <map>
#include <string>

#include "utils/files/files.h"
#include "utils/paths/paths.h"

namespace {

constexpr char kName[] = "media:names.txt";

// Finds the folders, with the list of the language variant as a file that exists.
void MakeVariant() {
  const KelvarisPath resolver;
  const std::string path = std::string(KelvarisPath::ms_WritablePath) + "en\\media\\names.txt";
  CheckFileFolder(path.c_str());
  const MFile file(path.c_str(), 5);
}

void RememberedPath(benchmark::State& state) {
  MakeVariant();
  for (auto _ : state) {
    KelvarisPath resolver;
    benchmark::DoNotOptimize(resolver.GetPath(kName));
  }
}
BENCHMARK(RememberedPath);

void PlainMapOfPaths(benchmark::State& state) {
  const std::map<std::string, std::string> paths = {{kName, "C:\\writable\\en\\media\\names.txt"}};
  for (auto _ : state) {
    std::string answer = paths.find(kName)->second;
    benchmark::DoNotOptimize(answer);
  }
}
BENCHMARK(PlainMapOfPaths);

void ForgottenPath(benchmark::State& state) {
  MakeVariant();
  for (auto _ : state) {
    KelvarisPath::ClearFileNamesStorage();
    KelvarisPath resolver;
    benchmark::DoNotOptimize(resolver.GetPath(kName));
  }
}
BENCHMARK(ForgottenPath);

void SystemQuestion(benchmark::State& state) {
  MakeVariant();
  const std::string path = std::string(KelvarisPath::ms_WritablePath) + "en\\media\\names.txt";
  for (auto _ : state) benchmark::DoNotOptimize(::GetFileAttributesA(path.c_str()));
}
BENCHMARK(SystemQuestion);

}  // namespace

BENCHMARK_MAIN();
