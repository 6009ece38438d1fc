// windows.h makes GetMessage a macro; a host may include it on either side of the library's header.
#include <windows.h>

#include <gtest/gtest.h>

#include "utils/files/files.h"

#ifndef GetMessage
#error "windows.h no longer defines GetMessage, so this file proves nothing"
#endif

namespace {

TEST(ExceptionHeader, CompilesAndLinksWhenItComesAfterWindowsHeader) {
  testing::internal::CaptureStdout();
  const MException error(3, "message");
  testing::internal::GetCapturedStdout();
  EXPECT_STREQ(error.GetMessage(), "message");
  EXPECT_EQ(error.GetCode(), 3u);
}

}  // namespace
