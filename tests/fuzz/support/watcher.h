// The process that starts a worker, looks after it and tells what it found.
#ifndef KVUTILS_TESTS_FUZZ_SUPPORT_WATCHER_H_
#define KVUTILS_TESTS_FUZZ_SUPPORT_WATCHER_H_

#include <string>
#include <vector>

#include "tests/fuzz/support/target.h"
#include "tests/fuzz/support/worker.h"

namespace kv::fuzz {

// Runs this program with `arguments` as the worker, in a folder of its own with a Documents folder
// beside it. False with a finding, which is printed and kept.
bool Watch(const Target& target, const Run& run, const std::vector<std::string>& arguments);

}  // namespace kv::fuzz

#endif  // KVUTILS_TESTS_FUZZ_SUPPORT_WATCHER_H_
