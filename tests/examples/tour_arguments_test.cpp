// The command line of the tour.

#include "tests/examples/tour_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using kv::test::Contains;
using kv::test::FolderExists;
using kv::test::ProcessResult;
using TourArguments = kv::test::Tour;

std::string Repeated(const std::string& text, int count) {
  std::string result;
  for (int i = 0; i < count; ++i) result += text;
  return result;
}

TEST_F(TourArguments, HelpIsPrintedWithoutTouchingAnyFolder) {
  const ProcessResult result = Run({"--help"});
  EXPECT_EQ(result.exitCode, 0U);
  EXPECT_EQ(result.out.rfind("usage: tour", 0), 0U);
  EXPECT_EQ(result.err, "");
  EXPECT_FALSE(FolderExists(Writable()));
}

TEST_F(TourArguments, HelpFitsNinetyTwoColumns) {
  const std::string help = Run({"-h"}).out;
  std::size_t start = 0;
  for (std::size_t end; (end = help.find('\n', start)) != std::string::npos; start = end + 1) {
    EXPECT_LE(end - start, 92U) << help.substr(start, end - start);
  }
  EXPECT_GT(start, 500U);
  EXPECT_EQ(start, help.size());
}

TEST_F(TourArguments, WrongArgumentsGetOneLineAndExitCodeTwo) {
  const struct {
    std::vector<std::string> arguments;
    const char* complaint;
  } kRows[] = {
      {{"2024-02-30"}, "\"2024-02-30\" is not a date like"},
      {{"2023-02-29"}, "\"2023-02-29\" is not a date like"},
      {{"2024-13-01"}, "\"2024-13-01\" is not a date like"},
      {{"2024-00-10"}, "\"2024-00-10\" is not a date like"},
      {{"2024-1-1"}, "\"2024-1-1\" is not a date like"},
      {{"1799-12-31"}, "\"1799-12-31\" is not a date like"},
      {{"2200-01-01"}, "\"2200-01-01\" is not a date like"},
      {{"2024-01-01T24:00"}, "\"2024-01-01T24:00\" is not a date like"},
      {{"2024-01-01T12:60"}, "\"2024-01-01T12:60\" is not a date like"},
      {{"2024-01-01T12"}, "\"2024-01-01T12\" is not a date like"},
      {{"2024-01-01T12:00:00x"}, "\"2024-01-01T12:00:00x\" is not a date like"},
      {{""}, "\"\" is not a date like"},
      {{"2024--1-01"}, "\"2024--1-01\" is not a date like"},
      {{"2024-+1-01"}, "\"2024-+1-01\" is not a date like"},
      {{"*"}, "\"*\" is not a date like"},
      // What would break the line, or the terminal.
      {{"\n"}, "\"?\" is not a date like"},
      {{"a\r\nb\tc\x1B[31m\x7F"}, "\"a??b?c?[31m?\" is not a date like"},
      {{"\u009B"}, "\"?\" is not a date like"},
      {{std::string(5000, '9')},
       "\"9999999999999999999999999999999999999999...\" is not a date like"},
      // What is not ASCII.
      {{"ü"}, "\"ü\" is not a date like"},
      {{"日食 𝄞"}, "\"日食 𝄞\" is not a date like"},
      {{Repeated("ü", 5000)}, "\"üüüüüüüüüüüüüüüüüüüüüüüüüüüüüüüüüüüüüüüü...\" is not a date like"},
      {{"--date"}, "--date needs a value"},
      {{"--date", "tomorrow"}, "\"tomorrow\" is not a date like"},
      {{"2024-01-01", "2024-01-02"}, "the date is given twice"},
      {{"--date", "2024-01-01", "2024-01-01"}, "the date is given twice"},
      {{"--date", "--zone"}, "--date needs a value"},
      {{"--zone"}, "--zone needs a value"},
      {{"--zone", "Middle/Earth"}, "\"Middle/Earth\" is not a time zone like Europe/Berlin"},
      {{"--zone", ""}, "\"\" is not a time zone like Europe/Berlin"},
      {{"--zone", "\n"}, "\"?\" is not a time zone like Europe/Berlin"},
      {{"--zone", "ü"}, "\"ü\" is not a time zone like Europe/Berlin"},
      {{"--zone", std::string(5000, 'Z')},
       "\"ZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZ...\" is not a time zone like Europe/Berlin"},
      {{"--zone", "--help"}, "--zone needs a value"},
      {{"--zone", "UTC", "--zone", "UTC"}, "--zone is given twice"},
      {{"--language", "xx"}, "\"xx\" is not a language of the library"},
      {{"--language", "DE"}, "\"DE\" is not a language of the library"},
      {{"--language", ""}, "\"\" is not a language of the library"},
      {{"--language", "de\n"}, "\"de?\" is not a language of the library"},
      {{"--language"}, "--language needs a value"},
      {{"--language", "--"}, "--language needs a value"},
      {{"--language", "de", "--language", "de"}, "--language is given twice"},
      {{"--colour"}, "unknown option \"--colour\""},
      {{"--\x07ü"}, "unknown option \"--?ü\""},
      {{"-"}, "unknown option \"-\""},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.complaint);
    const ProcessResult result = Run(row.arguments);
    EXPECT_EQ(result.exitCode, 2U);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err.rfind(std::string("tour: ") + row.complaint, 0), 0U) << result.err;
    EXPECT_TRUE(result.err.ends_with("; --help explains\n")) << result.err;
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
    EXPECT_FALSE(FolderExists(Writable()));
  }
}

TEST_F(TourArguments, NameOneOfTwoHalves) {
  const struct {
    std::vector<std::string> arguments;
    const char* complaint;
  } kRows[] = {
      {{"--only"}, "--only needs a value"},
      {{"--only", "--help"}, "--only needs a value"},
      {{"--only", ""}, "\"\" is neither places nor services"},
      {{"--only", "Places"}, "\"Places\" is neither places nor services"},
      {{"--only", "all\n"}, "\"all?\" is neither places nor services"},
      {{"--only", "places", "--only", "services"}, "--only is given twice"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.complaint);
    const ProcessResult result =
        kv::test::RunProgram(kv::test::ProgramFolder() + "tour.exe", row.arguments, Work());
    EXPECT_EQ(result.exitCode, 2U);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, std::string("tour: ") + row.complaint + "; --help explains\n");
    EXPECT_FALSE(FolderExists(Writable()));
  }
}

TEST_F(TourArguments, AcceptsEachFormOfADate) {
  const struct {
    std::vector<std::string> arguments;
    const char* time;
  } kRows[] = {
      {{"2024-02-29"}, "Time          2024-02-29 00:00:00 UTC"},
      {{"--date", "2024-02-29"}, "Time          2024-02-29 00:00:00 UTC"},
      {{"2024-02-29T23:59"}, "Time          2024-02-29 23:59:00 UTC"},
      {{"2024-02-29T23:59:58"}, "Time          2024-02-29 23:59:58 UTC"},
      {{"2024-02-29T23:59:58Z"}, "Time          2024-02-29 23:59:58 UTC"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.time);
    const ProcessResult result = Run(row.arguments);
    EXPECT_EQ(result.exitCode, 0U) << result.err;
    EXPECT_TRUE(Contains(result.out, row.time)) << result.out;
  }
}

}  // namespace
