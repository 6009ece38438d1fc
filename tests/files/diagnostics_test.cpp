#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <type_traits>

#include "utils/files/files.h"

namespace {

static_assert(std::is_copy_constructible_v<MException>);
static_assert(sizeof(MException) == sizeof(void*) + sizeof(std::string) + sizeof(void*));

TEST(DiagnosticSink, ReadsNeitherFormatNorArguments) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  PrintDebugString("%s %d %n\n");
  PrintDebugString(nullptr);
  WriteLogFile("text\n");
  WriteLogFile(nullptr);
  CloseLogFile();
  CloseLogFile();
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(MemoryDepletionHandler, AnswersMinusOneForEverySize) {
  testing::internal::CaptureStdout();
  EXPECT_EQ(Handle_program_memory_depletion(0), -1);
  EXPECT_EQ(Handle_program_memory_depletion(1), -1);
  EXPECT_EQ(Handle_program_memory_depletion(0xFFFFFFFFFFFFFFFF), -1);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(Exception, PrintsItsMessageOnceWhenMade) {
  testing::internal::CaptureStdout();
  const MException error(2, "MFile::Read - reading error in file %s\n", "a.bin");
  const MException copy = error;
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "MFile::Read - reading error in file a.bin\n");
  EXPECT_STREQ(error.GetMessage(), "MFile::Read - reading error in file a.bin\n");
  EXPECT_EQ(error.GetCode(), 2u);
  EXPECT_STREQ(copy.GetMessage(), error.GetMessage());
  EXPECT_NE(copy.GetMessage(), error.GetMessage()) << "a copy owns its text";
  EXPECT_EQ(copy.GetCode(), 2u);
}

TEST(Exception, AddsNoLineEnd) {
  testing::internal::CaptureStdout();
  const MException error(0, "KelvarisPath::GetCDPath return false");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "KelvarisPath::GetCDPath return false");
  EXPECT_EQ(error.GetCode(), 0u);
}

TEST(Exception, PrintsPercentSignsOfItsMessageAsTheyAre) {
  testing::internal::CaptureStdout();
  const MException error(2, "%s", "100%s%n");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "100%s%n");
  EXPECT_STREQ(error.GetMessage(), "100%s%n");
}

TEST(Exception, CutsItsMessageAt1023Bytes) {
  const struct {
    std::size_t length;
    std::size_t kept;
  } rows[] = {{1022, 1022}, {1023, 1023}, {1024, 1023}, {10230, 1023}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.length);
    testing::internal::CaptureStdout();
    const MException error(2, "%s", std::string(row.length, 'x').c_str());
    EXPECT_EQ(testing::internal::GetCapturedStdout(), std::string(row.kept, 'x'));
    EXPECT_EQ(error.GetMessage(), std::string(row.kept, 'x'));
  }
}

// The slots of the virtual table: two entries of the destructor, GetMessage, GetCode.
TEST(Exception, KeepsTheOrderOfItsVirtualOperations) {
  testing::internal::CaptureStdout();
  MException error(7, "text");
  testing::internal::GetCapturedStdout();
  void** table = nullptr;
  std::memcpy(&table, static_cast<const void*>(&error), sizeof table);
  const auto getMessage = reinterpret_cast<const char* (*)(const MException*)>(table[2]);
  const auto getCode = reinterpret_cast<unsigned (*)(const MException*)>(table[3]);
  EXPECT_STREQ(getMessage(&error), "text");
  EXPECT_EQ(getCode(&error), 7u);
}

TEST(Exception, ThrownInTheLibraryIsCaughtByTheHost) {
  testing::internal::CaptureStdout();
  try {
    const MFile file("no such folder\\a.bin", 2);
    ADD_FAILURE() << "opened a missing file";
  } catch (const MException& error) {
    EXPECT_STREQ(error.GetMessage(), "MFile::Load - file open failure\n");
    EXPECT_EQ(error.GetCode(), 2u);
  }
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "MFile::Load - file open failure\n");
}

}  // namespace
