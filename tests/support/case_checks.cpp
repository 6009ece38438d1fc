#include "tests/support/case_checks.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "tests/support/files.h"
#include "tests/support/kept_blocks.h"
#include "tests/support/process.h"

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

// A run that is meant for a user of a certain locale is one.
void RequireUser() {
  const std::string expected = Environment("KVUTILS_USER_LOCALE");
  wchar_t locale[LOCALE_NAME_MAX_LENGTH] = L"";
  ::GetUserDefaultLocaleName(locale, LOCALE_NAME_MAX_LENGTH);
  if (expected.empty() || Narrow(locale) == expected) return;
  std::fprintf(stderr, "the user's locale is %s and not %s\n", Narrow(locale).c_str(),
               expected.c_str());
  std::exit(99);
}

class CaseChecks : public ::testing::EmptyTestEventListener {
  void OnTestProgramStart(const ::testing::UnitTest&) override { RequireUser(); }
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
