// The formats of written numbers, and the modes in which streams are opened.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

#include "tests/fuzz/support/guarded_copy.h"
#include "tests/fuzz/support/target.h"
#include "tests/support/files.h"
#include "utils/files/files.h"

namespace kv::fuzz {
namespace {

constexpr char kPath[] = "written.txt";

bool TakeDigits(std::string_view& text) {
  std::size_t count = 0;
  while (count < text.size() && text[count] >= '0' && text[count] <= '9') ++count;
  text.remove_prefix(count);
  return count <= 4;
}

// Whether a format holds no conversion but one of a real number.
bool IsFormat(std::string_view format) {
  for (int conversions = 0;;) {
    const std::size_t mark = format.find('%');
    if (mark == std::string_view::npos) return true;
    format.remove_prefix(mark + 1);
    if (format.starts_with('%')) {
      format.remove_prefix(1);
      continue;
    }
    format.remove_prefix(std::min(format.find_first_not_of("-+ #0"), format.size()));
    if (!TakeDigits(format)) return false;
    if (format.starts_with('.')) {
      format.remove_prefix(1);
      if (!TakeDigits(format)) return false;
    }
    if (format.starts_with('l')) format.remove_prefix(1);
    if (format.empty() || std::strchr("aAeEfFgG", format[0]) == nullptr) return false;
    format.remove_prefix(1);
    if (++conversions > 1) return false;
  }
}

void CheckFormat(Input input) {
  const double value = input.Flag() ? input.Take<short>() / 8.0 : input.Take<double>();
  const std::string format = input.Text();
  const GuardedText guarded(format);
  const double values[] = {value, 0.5};
  const std::string counted = format.substr(0, 31);
  MTextFile file;
  file.Open(kPath, true);
  const bool isWritten = file.Writeln(values, 2, guarded.Get());
  file.Close();
  const bool isFormat = IsFormat(counted);
  Expect("whether written", isWritten, isFormat);
  std::string expected;
  char text[20000];
  for (const double number : values) {
    if (!isFormat) break;
    std::snprintf(text, sizeof text, counted.c_str(), number);
    expected += text;
  }
  if (isFormat) expected += '\n';
  std::string lines;
  for (const char c : expected) lines += c == '\n' ? "\r\n" : std::string(1, c);
  Expect("row", test::ReadBytes(kPath), isFormat ? lines : "");
}

// Whether a mode is one of those that are documented.
bool IsMode(std::string mode) {
  const std::size_t comma = mode.find(',');
  std::string encoding;
  if (comma != std::string::npos) {
    encoding = mode.substr(comma + 1);
    mode.resize(comma);
    std::size_t i = 0;
    for (const char c : std::string("ccs=")) {
      while (i < encoding.size() && encoding[i] == ' ') ++i;
      // The name itself holds no spaces.
      if (i >= encoding.size() || encoding[i] != c) return false;
      ++i;
      if (c == 'c' && i < encoding.size() && encoding[i] == ' ') return false;
    }
    encoding.erase(0, i);
    encoding.erase(0, std::min(encoding.find_first_not_of(' '), encoding.size()));
    encoding.erase(encoding.find_last_not_of(' ') + 1);
    for (char& c : encoding) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
    if (encoding != "UTF-8" && encoding != "UTF-16LE" && encoding != "UNICODE") return false;
  }
  std::erase(mode, ' ');
  if (mode.empty() || std::strchr("rwa", mode[0]) == nullptr) return false;
  for (const char* const set : {"+", "bt", "cn", "SR", "D", "N", "T"}) {
    const auto count = std::count_if(mode.begin() + 1, mode.end(),
                                     [set](char c) { return std::strchr(set, c) != nullptr; });
    if (count > 1) return false;
  }
  return mode.find_first_not_of("+btcnSRDNT", 1) == std::string::npos;
}

// Whether a stream was open.
bool Closed(std::FILE* stream) { return stream != nullptr && std::fclose(stream) == 0; }

void CheckMode(Input input) {
  const bool isShared = input.Flag();
  const int shareFlag = input.OneOf({0, 0x10, 0x20, 0x30, 0x40, 1, -1});
  const std::string mode = input.Text();
  const GuardedText guarded(mode);
  test::WriteBytes(kPath, "content");
  const bool isOpen = Closed(isShared ? ::mm_fsopen(kPath, guarded.Get(), shareFlag)
                                      : ::mm_fopen(kPath, guarded.Get()));
  const bool isFlag = !isShared || (shareFlag >= 0 && shareFlag % 0x10 == 0);
  if (!IsMode(mode) || !isFlag) {
    Expect("whether open", isOpen, false);
    return Expect("file", test::ReadBytes(kPath), std::string("content"));
  }
  test::WriteBytes(kPath, "content");
  const std::wstring wideMode = test::Widen(mode);
  const std::wstring path = test::Widen(kPath);
  Expect("whether open", isOpen,
         Closed(isShared ? ::_wfsopen(path.c_str(), wideMode.c_str(), shareFlag)
                         : ::_wfopen(path.c_str(), wideMode.c_str())));
}

const Registration kFormats({.name = "number_formats",
                             .check = CheckFormat,
                             .seeds = {std::string("%-12.4f|\0.\1", 11),
                                       std::string("%+.17e %%\0..\1", 14), "%g %g", "%s", "%n",
                                       "%9999.9999f", "%La"},
                             .words = {"%", "%%", "l", "L", "*", ".", "#", "%n", "%s", "a"},
                             .maxSize = 60,
                             .count = 500});

const Registration kModes({.name = "open_modes",
                           .check = CheckMode,
                           .seeds = {"rb", "w+t, ccs=UTF-8", "a + bcN", "rtSD, ccs = unicode ",
                                     std::string("r\0\1\2\1", 5)},
                           .words = {"ccs=", ", ", "UTF-16LE", "x", "+"},
                           .maxSize = 40,
                           .count = 500});

}  // namespace
}  // namespace kv::fuzz
