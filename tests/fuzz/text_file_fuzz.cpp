// Text files, read in any order of questions, beside the same questions to the C library.
#include <cstring>
#include <string>
#include <vector>

#include "tests/fuzz/support/guarded_copy.h"
#include "tests/fuzz/support/plain_text_file.h"
#include "tests/fuzz/support/target.h"
#include "tests/support/files.h"
#include "utils/files/files.h"

namespace kv::fuzz {
namespace {

constexpr char kPath[] = "file.txt";

// A reader and its plain form, asked the same.
class Readers {
 public:
  explicit Readers(const PlainTextFile::Settings& settings)
      : reader_(settings.deleteBorderSpace, settings.commentChar, settings.endChar,
                settings.lineLength),
        plain_(kPath, settings) {
    Expect("whether the file is open", reader_.Open(kPath, false), true);
  }

  void Ask(Input& input) {
    switch (input.Below(8)) {
      case 0:
        return AskNumber(input);
      case 1:
        Search(input.Flag());
        break;
      case 2: {
        const bool untilEndMarker = input.Flag();
        Expect("lines", reader_.GetNumberLines(untilEndMarker),
               plain_.GetNumberLines(untilEndMarker));
        break;
      }
      case 3:
        reader_.SeekToBegin();
        plain_.SeekToBegin();
        break;
      case 4:
        Set(input.Flag(), input.Flag());
        break;
      default:
        ReadText(input.Between(0, 40));
    }
    Expect("end of file", reader_.GetEndFileStatus(), plain_.GetEndFileStatus());
  }

 private:
  void ReadText(int size) {
    const GuardedRoom<char> room(static_cast<std::size_t>(size));
    std::string expected = last_;
    const int result = reader_.Readln(room.Get(), size);
    Expect("line", result, plain_.Readln(expected, size));
    if (result == -1 || size == 0) return;
    Expect("text", room.Units().substr(0, expected.size() + 1), expected + '\0');
    last_ = expected;
  }

  void Search(bool fromStart) {
    const std::string text = PlainTextFile::Trimmed(last_);
    Expect("found", reader_.SearchString(text.c_str(), fromStart),
           plain_.SearchString(text, fromStart));
  }

  void Set(bool deleteBorderSpace, bool skipEmptyStrings) {
    reader_.SetBorderSpaceDelete(deleteBorderSpace);
    plain_.SetBorderSpaceDelete(deleteBorderSpace);
    reader_.SkipEmptyStrings(skipEmptyStrings);
    plain_.SkipEmptyStrings(skipEmptyStrings);
  }

  void AskNumber(Input& input) {
    switch (input.Below(7)) {
      case 0:
        return ReadNumbers<short>("%d", input);
      case 1:
        return ReadNumbers<unsigned short>("%u", input);
      case 2:
        return ReadNumbers<int>("%d", input);
      case 3:
        return ReadNumbers<unsigned>("%u", input);
      case 4:
        return ReadNumbers<long>("%li", input);
      case 5:
        return ReadNumbers<float>("%f", input);
      default:
        return ReadNumbers<double>("%lf", input);
    }
  }

  template <typename Number>
  void ReadNumbers(const char* format, Input& input) {
    const auto count = input.Below(8);
    const GuardedRoom<char> room(count * sizeof(Number));
    std::string expected(count * sizeof(Number), GuardedRoom<char>::kFill);
    const int result =
        reader_.Readln(reinterpret_cast<Number*>(room.Get()), static_cast<int>(count));
    Expect("numbers", result, PlainNumbers(expected, count, sizeof(Number), format));
    Expect("bytes of numbers", room.Units(), expected);
  }

  int PlainNumbers(std::string& out, std::size_t count, std::size_t size, const char* format) {
    std::string line;
    if (!plain_.Next(line)) return -1;
    const std::vector<std::string> tokens = PlainTextFile::Tokens(line);
    if (!tokens.empty() && tokens[0][0] == plain_.EndChar()) return -2;
    std::size_t stored = 0;
    for (; stored < count && stored < tokens.size(); ++stored) {
      alignas(8) char value[8] = {};
      if (std::sscanf(tokens[stored].c_str(), format, value) != 1) break;
      std::memcpy(out.data() + stored * size, value, size);
    }
    return static_cast<int>(stored);
  }

  MTextFile reader_;
  PlainTextFile plain_;
  std::string last_;
};

void Check(Input input) {
  PlainTextFile::Settings settings;
  settings.deleteBorderSpace = input.Flag();
  settings.lineLength = input.Flag() ? 4096 : input.Between(2, 40);
  settings.commentChar = input.OneOf({'!', '!', '!', '#'});
  settings.endChar = input.OneOf({'}', '}', '}', 'e'});
  std::string questions;
  for (std::size_t count = input.Below(24); count > 0; --count) {
    questions.insert(0, 1, input.Take<char>());
  }
  test::WriteBytes(kPath, input.Rest());
  Readers readers(settings);
  for (Input rest(questions); !rest.IsUsedUp();) readers.Ask(rest);
}

const Registration kTarget({.name = "text_file",
                            .check = Check,
                            .seeds = {"! a comment\n\n1 2 3\r\n 0.5 -1e5 nan 0x1F "
                                      "010\n}\nmore\n\5\6\7\5\0\2\0\1\0\3\1\x0C\0\0\1\1",
                                      "\xEF\xBB\xBF"
                                      "first\n  }\nlast\x1A behind\5\5\2\1\3\5\1\1\5\x08\0\0\0\0",
                                      "12345678901 99999 -2147483649 4294967296 1d5 .5 5. 1e "
                                      "12abc\n\0\1\0\2\0\3\0\4\0\5\0\6\x0C\0\0\1\1",
                                      "# x\r\n\r\r\n \v\f\ne d\n"},
                            .words = {"\r\n", "}\n", "! ", "\x1A", "0x1p3", "infinity", "1e-320",
                                      "e", "\v"},
                            .count = 500});

}  // namespace
}  // namespace kv::fuzz
