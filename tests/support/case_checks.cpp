#include "tests/support/case_checks.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <vector>

#include "tests/support/kept_blocks.h"

namespace kv::test {
namespace {

bool g_heapsAreChecked = true;

// The system walks all blocks of each heap and looks at what it keeps between them.
void ExpectValidHeaps() {
  std::vector<HANDLE> heaps(::GetProcessHeaps(0, nullptr));
  heaps.resize(::GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data()));
  for (const HANDLE heap : heaps) {
    EXPECT_TRUE(::HeapValidate(heap, 0, nullptr)) << "a heap of the process is damaged";
  }
}

class CaseChecks : public ::testing::EmptyTestEventListener {
  void OnTestStart(const ::testing::TestInfo&) override { kept_.Start(); }
  void OnTestEnd(const ::testing::TestInfo&) override {
    kept_.ExpectNoneLost();
    if (g_heapsAreChecked) ExpectValidHeaps();
  }

  KeptBlocks kept_;
};

// GoogleTest owns the listener.
[[maybe_unused]] const bool g_isListening = [] {
  ::testing::UnitTest::GetInstance()->listeners().Append(new CaseChecks);
  return true;
}();

}  // namespace

void LeaveHeapsUnchecked() { g_heapsAreChecked = false; }

}  // namespace kv::test
