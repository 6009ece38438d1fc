#include "tests/fuzz/support/worker.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <exception>
#include <stdexcept>
#include <vector>

#include "tests/fuzz/support/coverage.h"
#include "tests/fuzz/support/mutation.h"
#include "tests/support/files.h"

namespace kv::fuzz {
namespace {

class Worker {
 public:
  Worker(const Target& target, const Run& run, Progress& progress)
      : target_(target),
        run_(run),
        progress_(progress),
        mutator_(target.words, target.maxSize, run.seed) {}

  bool GiveAll() {
    if (!run_.inputFile.empty()) return Give(test::ReadBytes(run_.inputFile));
    if (!GiveKnown()) return false;
    const int count = run_.count == 0 ? target_.count : run_.count;
    while (progress_.inputCount < static_cast<std::uint64_t>(count)) {
      const std::string input = mutator_.Make(corpus_);
      if (!Give(input)) return false;
      if (isNew_) Keep(input);
    }
    return true;
  }

 private:
  bool GiveKnown() {
    Add("");
    for (const std::string& seed : target_.seeds) {
      if (!Give(seed)) return false;
      Add(seed);
    }
    if (run_.corpusFolder.empty()) return true;
    test::CreateFolders(run_.corpusFolder);
    for (const std::string& name : test::ListTree(run_.corpusFolder)) {
      const std::string input = test::ReadBytes(run_.corpusFolder + "\\" + name);
      if (!Give(input)) return false;
      if (isNew_) Add(input);
    }
    return true;
  }

  bool Give(const std::string& input) {
    progress_.inputSize = std::min(input.size(), Progress::kMaxInput);
    std::memcpy(progress_.input, input.data(), progress_.inputSize);
    progress_.inputCount = progress_.inputCount + 1;
    ::KvcoverageStart();
    try {
      target_.check(Input(input));
    } catch (const std::exception& exception) {
      std::snprintf(progress_.finding, Progress::kMaxText, "%s", exception.what());
    }
    isNew_ = ::KvcoverageStop();
    progress_.ways = ::KvcoverageCount();
    return progress_.finding[0] == '\0';
  }

  void Keep(const std::string& input) {
    Add(input);
    if (run_.corpusFolder.empty()) return;
    test::WriteBytes(run_.corpusFolder + "\\" + FileName(input), input);
  }

  void Add(const std::string& input) {
    corpus_.push_back(input);
    progress_.corpusSize = corpus_.size();
  }

  const Target& target_;
  const Run& run_;
  Progress& progress_;
  Mutator mutator_;
  std::vector<std::string> corpus_;
  bool isNew_ = false;  // whether the last input took a new way
};

}  // namespace

SharedProgress::SharedProgress(unsigned long watcher) {
  const std::wstring name = L"kvutils_fuzz_" + std::to_wstring(watcher);
  mapping_ = ::CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                  sizeof(Progress), name.c_str());
  progress_ = static_cast<Progress*>(::MapViewOfFile(mapping_, FILE_MAP_ALL_ACCESS, 0, 0, 0));
  if (progress_ == nullptr) throw std::runtime_error("no shared memory");
}

SharedProgress::~SharedProgress() {
  ::UnmapViewOfFile(progress_);
  ::CloseHandle(mapping_);
}

bool GiveInputs(const Target& target, const Run& run, Progress& progress) {
  return Worker(target, run, progress).GiveAll();
}

int Work(const Target& target, const Run& run, unsigned long watcher) {
  const SharedProgress progress(watcher);
  return GiveInputs(target, run, *progress) ? 0 : 1;
}

// By FNV-1a with 64 bits.
std::string FileName(std::string_view bytes) {
  std::uint64_t hash = 0xCBF2'9CE4'8422'2325;
  for (const char byte : bytes) {
    hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100'0000'01B3;
  }
  char name[17];
  std::snprintf(name, sizeof name, "%016llx", hash);
  return name;
}

}  // namespace kv::fuzz
