// The DLL as the loader sees it, without its headers: state at load time, plain names, unloading.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "tests/support/files.h"
#include "tests/support/process.h"
#include "utils/paths/paths.h"

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

TEST(Loading, StateIsAsDocumentedBeforeAnyCall) {
  EXPECT_STREQ(KelvarisPath::ms_ExePath, "");
  EXPECT_STREQ(KelvarisPath::ms_WorkDir, "");
  EXPECT_STREQ(KelvarisPath::ms_CDPath, "");
  EXPECT_STREQ(KelvarisPath::ms_WritablePath, "");
  EXPECT_STREQ(KelvarisPath::ms_UserPath, "");
  EXPECT_STREQ(KelvarisPath::ms_WorkspacesFolder, "");
  EXPECT_STREQ(KelvarisPath::ms_GuidedToursFolder, "");
  EXPECT_EQ(KelvarisPath::ms_LanguageFolder, "en");
  EXPECT_EQ(static_cast<int>(KelvarisPath::ms_SetupType), -1);
  EXPECT_FALSE(KelvarisPath::ms_IsInit);
  EXPECT_TRUE(KelvarisPath::ms_FileNamesStorage.empty());
  EXPECT_TRUE(KelvarisPath::ms_CDFolders.empty());
  EXPECT_TRUE(KelvarisPath::ms_ThemePaths.empty());
  EXPECT_TRUE(KelvarisPath::ms_WritablePaths.empty());
  EXPECT_TRUE(KelvarisPath::sFeaturePackFolder.empty());
  EXPECT_TRUE(KelvarisPath::sFeaturePackFileNames.empty());
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
