// Reading text files line by line: significant lines, text, numbers, searching, counting.
#include <clocale>
#include <cmath>
#include <cstring>
#include <string>
#include <vector>

#include "tests/support/sandbox.h"
#include "utils/files/files.h"

namespace {

using kv::test::WriteBytes;

class TextFileReading : public kv::test::Sandbox {
 protected:
  // A text file with this content, open for reading.
  MTextFile Opened(const std::string& content, bool deleteBorderSpace = false, char comment = '!',
                   char end = '}', int lineLength = 4096) {
    WriteBytes("a.txt", content);
    MTextFile file(deleteBorderSpace, comment, end, lineLength);
    EXPECT_TRUE(file.Open("a.txt", false));
    return file;
  }
};

// Result and text of each read until the file ends.
std::vector<std::string> AllLines(MTextFile& file, int size = 100) {
  std::vector<std::string> lines;
  std::string line(static_cast<std::size_t>(size) + 1, '#');
  for (int result = 0; (result = file.Readln(line.data(), size)) != -1;) {
    lines.push_back(std::to_string(result) + ":" + line.c_str());
    EXPECT_EQ(line.back(), '#') << "written past the size";
  }
  return lines;
}

using Lines = std::vector<std::string>;

TEST_F(TextFileReading, GivesSignificantLines) {
  const struct {
    const char* fact;
    std::string content;
    bool trim;
    bool skipEmpty;
    Lines lines;
  } rows[] = {
      {"comments and blank lines are skipped",
       "! c\n\n  ! c\n \t\n1 2 3\n",
       false,
       true,
       {"6:1 2 3\n"}},
      {"blank lines are significant when asked",
       "! c\n\n1 2 3\n",
       false,
       false,
       {"1:\n", "6:1 2 3\n"}},
      {"trimmed blank lines are empty", "! c\n \t\nx\n", true, false, {"0:", "1:x"}},
      {"border space stays", "  a b \n", false, true, {"7:  a b \n"}},
      {"border space goes", " \t a b \t \n", true, true, {"3:a b"}},
      {"no line end at the end", "last", false, true, {"4:last"}},
      {"line ends in both forms", "a\r\nb\n", false, true, {"2:a\n", "2:b\n"}},
      {"an end line", "} x\na\n", false, true, {"-2:} x\n", "2:a\n"}},
      {"an indented end line is text", "  }\n", false, true, {"4:  }\n"}},
      {"an indented end line ends when trimmed", "  }\n", true, true, {"-2:}"}},
      {"a vertical tab and a form feed are white space to comments",
       "\v\f! c\nx\n",
       true,
       true,
       {"1:x"}},
      {"an empty file", "", false, true, {}},
      {"comments only", "! a\n! b", false, true, {}},
      {"bytes above 127 are no white space", "\xA0\n\xFF!\n", true, true, {"1:\xA0", "2:\xFF!"}},
      {"Ctrl-Z ends the text",
       "a\n\x1A"
       "b\n",
       false,
       true,
       {"2:a\n"}},
      {"Ctrl-Z behind a byte-order mark", "\xEF\xBB\xBF\x1Ax\n", false, true, {}},
      {"a lone carriage return stays", "a\rb\n", false, true, {"4:a\rb\n"}},
      {"one carriage return belongs to the line end", "a\r\r\n", false, true, {"3:a\r\n"}},
      {"a NUL ends the line for its reader",
       std::string("a\0b\nc\n", 6),
       false,
       true,
       {"1:a", "2:c\n"}},
      {"a line that begins with NUL is blank", std::string("\0a\nc\n", 5), false, true, {"2:c\n"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.fact);
    MTextFile file = Opened(row.content, row.trim);
    file.SkipEmptyStrings(row.skipEmpty);
    EXPECT_EQ(AllLines(file), row.lines);
  }
}

TEST_F(TextFileReading, TellsWhiteSpaceAlikeInEveryLocale) {
  ASSERT_NE(std::setlocale(LC_ALL, "German_Germany.1252"), nullptr);
  MTextFile file = Opened("\xA0\n\xA0! c\n", true);
  EXPECT_EQ(AllLines(file), (Lines{"1:\xA0", "4:\xA0! c"}));
}

TEST_F(TextFileReading, LeavesTheBufferAloneAtTheEndOfTheFile) {
  MTextFile file = Opened("! c\n");
  char line[6] = "#####";
  EXPECT_EQ(file.Readln(line, sizeof line), -1);
  EXPECT_STREQ(line, "#####");
}

TEST_F(TextFileReading, TakesItsCharactersFromTheConstructor) {
  MTextFile file = Opened("# c\n! no comment\n;end\n} no end\n", true, '#', ';');
  EXPECT_EQ(AllLines(file), (Lines{"12:! no comment", "-2:;end", "8:} no end"}));
}

TEST_F(TextFileReading, CutsLinesToTheCallersSize) {
  MTextFile file = Opened("abcdefgh\nabc\n}abcdef\n", true);
  char line[6] = "#####";
  EXPECT_EQ(file.Readln(line, 5), 4);
  EXPECT_STREQ(line, "abcd");
  EXPECT_EQ(file.Readln(line, 4), 3);
  EXPECT_STREQ(line, "abc");
  EXPECT_EQ(file.Readln(line, 1), -2) << "the end is seen whatever is stored";
  EXPECT_STREQ(line, "");
}

TEST_F(TextFileReading, StoresNothingWithoutRoom) {
  MTextFile file = Opened("abc\ndef\n}\nghi\n", true);
  char line[4] = "###";
  EXPECT_EQ(file.Readln(static_cast<char*>(nullptr), 10), 0);
  EXPECT_EQ(file.Readln(line, -5), 0);
  EXPECT_EQ(file.Readln(line, 0), -2);
  EXPECT_STREQ(line, "###");
  EXPECT_EQ(file.Readln(line, 4), 3) << "each call takes one line";
  EXPECT_STREQ(line, "ghi");
}

TEST_F(TextFileReading, ReadsLongLinesInPieces) {
  MTextFile file = Opened("abcdefghij\nx\n", false, '!', '}', 5);
  EXPECT_EQ(AllLines(file), (Lines{"4:abcd", "4:efgh", "3:ij\n", "2:x\n"}));
}

TEST_F(TextFileReading, TakesALineOf4095CharactersAtOnce) {
  MTextFile file = Opened(std::string(4095, 'a') + "\n" + std::string(4096, 'b'));
  std::string line(5000, '\0');
  EXPECT_EQ(file.Readln(line.data(), 5000), 4095);
  EXPECT_EQ(file.Readln(line.data(), 5000), 4095) << "the line end follows as a blank line";
  EXPECT_EQ(file.Readln(line.data(), 5000), 1);
  EXPECT_EQ(file.Readln(line.data(), 5000), -1);
}

TEST_F(TextFileReading, ALineLengthWithoutRoomReadsNothing) {
  for (const int lineLength : {1, 0, -1, -2147483647 - 1}) {
    SCOPED_TRACE(lineLength);
    MTextFile file = Opened("abc\n", false, '!', '}', lineLength);
    EXPECT_EQ(AllLines(file), Lines{});
  }
}

TEST_F(TextFileReading, ReadsARowOfIntegers) {
  const struct {
    const char* fact;
    std::string content;
    int count;
    int result;
    std::vector<int> values;  // with -7 where nothing is stored
  } rows[] = {
      {"after a comment and a blank line", "! c\n\n1 2 3\n", 5, 3, {1, 2, 3, -7, -7}},
      {"tabs and runs of blanks", " \t1\t\t2  3 \n", 5, 3, {1, 2, 3, -7, -7}},
      {"surplus tokens are dropped", "1 2 3 4\n", 2, 2, {1, 2, -7, -7, -7}},
      {"a token that is no number ends the row", "1 x 3\n", 5, 1, {1, -7, -7, -7, -7}},
      {"no number at all", "x\n", 5, 0, {-7, -7, -7, -7, -7}},
      {"the beginning of a token counts", "12abc 3.9 4\n", 5, 3, {12, 3, 4, -7, -7}},
      {"signs", "-5 +6 -0\n", 5, 3, {-5, 6, 0, -7, -7}},
      {"leading zeros are decimal", "010 0x1F\n", 5, 2, {10, 0, -7, -7, -7}},
      {"the limits", "2147483647 -2147483648\n", 5, 2, {2147483647, -2147483647 - 1, -7, -7, -7}},
      {"no line end", "1 2", 5, 2, {1, 2, -7, -7, -7}},
      {"carriage returns", "1 2\r\n", 5, 2, {1, 2, -7, -7, -7}},
      {"an end line", "} 1 2\n", 5, -2, {-7, -7, -7, -7, -7}},
      {"an indented end line", "  }\n", 5, -2, {-7, -7, -7, -7, -7}},
      {"a count of nothing", "1 2\n", 0, 0, {-7, -7, -7, -7, -7}},
      {"a negative count", "1 2\n", -3, 0, {-7, -7, -7, -7, -7}},
      {"the end of the file", "! c\n", 5, -1, {-7, -7, -7, -7, -7}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.fact);
    MTextFile file = Opened(row.content);
    std::vector<int> values(5, -7);
    EXPECT_EQ(file.Readln(values.data(), row.count), row.result);
    EXPECT_EQ(values, row.values);
  }
}

TEST_F(TextFileReading, ConsumesTheLineEitherWay) {
  MTextFile file = Opened("1 2 3\nx y\n4\n");
  int value = 0;
  EXPECT_EQ(file.Readln(&value, 1), 1);
  EXPECT_EQ(file.Readln(&value, 1), 0);
  EXPECT_EQ(file.Readln(&value, 1), 1);
  EXPECT_EQ(value, 4);
}

TEST_F(TextFileReading, ASignificantBlankLineHoldsNoNumbers) {
  MTextFile file = Opened("\n7\n");
  file.SkipEmptyStrings(false);
  int value = -7;
  EXPECT_EQ(file.Readln(&value, 1), 0);
  EXPECT_EQ(value, -7);
  EXPECT_EQ(file.Readln(&value, 1), 1);
  EXPECT_EQ(value, 7);
}

template <typename Value>
std::vector<Value> Row(MTextFile file, Value unset) {
  std::vector<Value> values(4, unset);
  const int stored = file.Readln(values.data(), 3);
  EXPECT_EQ(values[3], unset) << "stored past the count";
  values.resize(static_cast<std::size_t>(std::max(stored, 0)));
  return values;
}

TEST_F(TextFileReading, StoresTheLowBytesOfEachType) {
  EXPECT_EQ(Row<short>(Opened("65537 -1 32768\n"), 7), (std::vector<short>{1, -1, -32768}));
  EXPECT_EQ(Row<unsigned short>(Opened("65537 -1 65535\n"), 7),
            (std::vector<unsigned short>{1, 65535, 65535}));
  EXPECT_EQ(Row<int>(Opened("-1 2 3\n"), 7), (std::vector<int>{-1, 2, 3}));
  EXPECT_EQ(Row<unsigned>(Opened("4294967295 -1 0\n"), 7),
            (std::vector<unsigned>{4294967295, 4294967295, 0}));
  EXPECT_EQ(Row<long>(Opened("0x1F 010 -12\n"), 7), (std::vector<long>{31, 8, -12}));
  EXPECT_EQ(Row<long>(Opened("0 -010 09\n"), 7), (std::vector<long>{0, -8, 0}));
  EXPECT_EQ(Row<float>(Opened("0.5 -2 1e3\n"), 7), (std::vector<float>{0.5F, -2.0F, 1000.0F}));
  EXPECT_EQ(Row<double>(Opened("0.1 -.5 6.02e23\n"), 7), (std::vector<double>{0.1, -0.5, 6.02e23}));
}

TEST_F(TextFileReading, RoundsDecimalsCorrectly) {
  // Each is nearest to the double whose bits are given; a reader that rounds twice misses the
  // first.
  const struct {
    const char* text;
    double value;
  } rows[] = {
      {"-12899199.520548", -0x1.89a6ff0a85447p+23},
      {"0.1", 0x1.999999999999ap-4},
      {"2.2250738585072011e-308", 0x0.fffffffffffffp-1022},
      {"9007199254740993", 0x1.0000000000000p+53},
      {"5e-324", 0x0.0000000000001p-1022},
      {"1.7976931348623157e308", 0x1.fffffffffffffp+1023},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    for (const char* end : {"\n", "", "\t\r\n", " x"}) {
      EXPECT_EQ(Row<double>(Opened(std::string(row.text) + end), 7),
                (std::vector<double>{row.value}));
    }
  }
}

TEST_F(TextFileReading, LeavesOddNumbersToTheScanFormats) {
  const std::vector<double> odd = Row<double>(Opened("+1.5 2.5x 0x10\n"), 7);
  EXPECT_EQ(odd, (std::vector<double>{1.5, 2.5, 16.0}));
  const std::vector<double> infinite = Row<double>(Opened("inf nan\n"), 7);
  ASSERT_EQ(infinite.size(), 2u);
  EXPECT_TRUE(std::isinf(infinite[0]));
  EXPECT_TRUE(std::isnan(infinite[1]));
}

TEST_F(TextFileReading, ReadsPointsWhateverTheHostsLocale) {
  ASSERT_NE(std::setlocale(LC_ALL, "German_Germany.1252"), nullptr);
  ASSERT_STREQ(std::localeconv()->decimal_point, ",");
  EXPECT_EQ(Row<double>(Opened("0.5 +1.25 2,5\n"), 7), (std::vector<double>{0.5, 1.25, 2.0}));
  EXPECT_EQ(Row<float>(Opened("0.5 +1.25 3.5x\n"), 7), (std::vector<float>{0.5F, 1.25F, 3.5F}));
  EXPECT_STREQ(std::localeconv()->decimal_point, ",") << "the host's locale is put back";
}

TEST_F(TextFileReading, FindsALineByItsText) {
  const std::string content = "! [b]\n[a]\n\n  [b]  \nafter b\n[B]\n";
  MTextFile file = Opened(content);
  char line[20];
  EXPECT_TRUE(file.SearchString("[b]", false)) << "trimmed although border space is kept";
  EXPECT_EQ(file.Readln(line, sizeof line), 8);
  EXPECT_STREQ(line, "after b\n");
  EXPECT_FALSE(file.SearchString("[a]", false)) << "not behind the position";
  EXPECT_EQ(file.Readln(line, sizeof line), -1) << "the position is the end";
  EXPECT_TRUE(file.SearchString("[a]", true));
  EXPECT_FALSE(file.SearchString("[b", true));
  EXPECT_FALSE(file.SearchString("! [b]", true)) << "comments are not looked at";
  EXPECT_FALSE(file.SearchString("", true));
  EXPECT_FALSE(file.SearchString(nullptr, true));
  file.SkipEmptyStrings(false);
  EXPECT_TRUE(file.SearchString("", true)) << "a significant blank line equals the empty text";
}

TEST_F(TextFileReading, CountsLinesUntilTheEndMarker) {
  const struct {
    const char* fact;
    std::string content;
    bool skipEmpty;
    int untilMarker;
    int plain;
  } rows[] = {
      {"three and a marker", "a\nb\nc\n}\nd\n", true, 3, 3},
      {"three and no marker", "a\nb\nc\n", true, -3, 3},
      {"comments do not count", "a\n! c\n\nb\n}\n", true, 2, 2},
      {"none and a marker", "}\n", true, 0, 0},
      {"an empty file", "", true, 0, 0},
      {"long lines count once", std::string(60, 'x') + "\nb\n}\n", true, 2, 2},
      {"a blank line is a line feed, which counts", "a\n\nb\n}\n", false, 3, 3},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.fact);
    MTextFile file = Opened(row.content);
    file.SkipEmptyStrings(row.skipEmpty);
    EXPECT_EQ(file.GetNumberLines(true), row.untilMarker);
    EXPECT_EQ(file.GetNumberLines(false), row.plain);
  }
}

TEST_F(TextFileReading, AnEmptyLineStopsTheCount) {
  MTextFile file = Opened("a\n \nb\n}\n", true);
  file.SkipEmptyStrings(false);
  EXPECT_EQ(file.GetNumberLines(true), -1);
  EXPECT_EQ(file.GetNumberLines(false), 1);
}

TEST_F(TextFileReading, CountingKeepsThePosition) {
  const std::string big(100000, 'x');
  for (const std::string& lineEnd : {std::string("\n"), std::string("\r\n")}) {
    for (const std::string& mark : {std::string(), std::string("\xEF\xBB\xBF")}) {
      SCOPED_TRACE(lineEnd + mark);
      std::string content = mark;
      for (const char* line : {"one", "two", "! comment", "three", "}", "four"}) {
        content += line + lineEnd;
      }
      MTextFile file = Opened(content + big + lineEnd, true);
      char line[20];
      EXPECT_EQ(file.GetNumberLines(true), 3);
      EXPECT_EQ(file.Readln(line, sizeof line), 3);
      EXPECT_STREQ(line, "one");
      EXPECT_EQ(file.GetNumberLines(true), 2);
      EXPECT_EQ(file.Readln(line, sizeof line), 3);
      EXPECT_STREQ(line, "two");
      EXPECT_EQ(file.Readln(line, sizeof line), 5);
      EXPECT_EQ(file.GetNumberLines(true), 0);
      EXPECT_EQ(file.Readln(line, sizeof line), -2);
      EXPECT_EQ(file.GetNumberLines(true), -26) << "one line and 25 pieces of a long one";
      EXPECT_EQ(file.Readln(line, sizeof line), 4);
      EXPECT_STREQ(line, "four");
    }
  }
}

// A text ends at a Ctrl-Z, wherever the stream's own buffer ends.
TEST_F(TextFileReading, CountingKeepsThePositionBeforeACtrlZ) {
  const std::string lines(4998, 'x');
  MTextFile file = Opened("ab\n" + lines + "\x1A" + std::string(4000, 'y') + "\nz\n", true);
  char line[20];
  EXPECT_EQ(file.Readln(line, sizeof line), 2);
  EXPECT_EQ(file.GetNumberLines(true), -2) << "4998 characters in pieces of 4095";
  EXPECT_EQ(file.Readln(line, sizeof line), 19);
  EXPECT_EQ(file.GetNumberLines(true), -1);
  EXPECT_EQ(file.Readln(line, sizeof line), 19);
  EXPECT_EQ(file.Readln(line, sizeof line), -1);
}

TEST_F(TextFileReading, CountingLeavesAFileThatIsWrittenAlone) {
  MTextFile file;
  ASSERT_TRUE(file.Open("b.txt", true));
  file.Writeln("one");
  EXPECT_EQ(file.GetNumberLines(true), 0);
  file.Writeln("two");
  file.Close();
  EXPECT_EQ(kv::test::ReadBytes("b.txt"), "one\r\ntwo\r\n");
}

}  // namespace
