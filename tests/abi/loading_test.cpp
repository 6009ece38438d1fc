// The DLL as the loader sees it, without its headers: plain names, what is not there, loading
// twice.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "tests/support/files.h"
#include "tests/support/process.h"

namespace {

HMODULE Library() { return ::GetModuleHandleW(L"kvutils.dll"); }

TEST(Loading, PlainNamesAreFoundWithoutDecoration) {
  for (const char* name :
       {"PrintDebugString", "getLocalUTCDeltaForTimezone", "is24HoursSystemTimeFormat",
        "set24HoursKvTimeFormat", "get24HoursKvTimeFormat", "SetSystemLocale", "GetSystemLocale"}) {
    SCOPED_TRACE(name);
    EXPECT_NE(::GetProcAddress(Library(), name), nullptr);
  }
}

TEST(Loading, NothingOfIcuIsExported) {
  for (const char* name :
       {"u_init_72", "ucal_open_72", "_ZN6icu_728TimeZone14createTimeZoneERKNS_13UnicodeStringE",
        "icudt72_dat", "_ZTI10MException"}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(::GetProcAddress(Library(), name), nullptr);
  }
}

// Loads the DLL by hand beside the one this program is linked to.
TEST(Loading, AModuleMayLoadAndFreeTheLibraryOnceMore) {
  const std::wstring path = kv::test::Widen(kv::test::ProgramFolder() + "kvutils.dll");
  const HMODULE library = ::LoadLibraryW(path.c_str());
  ASSERT_EQ(library, Library());
  EXPECT_TRUE(::FreeLibrary(library));
  EXPECT_NE(::GetProcAddress(Library(), "PrintDebugString"), nullptr);
}

}  // namespace
