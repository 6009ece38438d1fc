// A text file as MTextFile reads it, out of the C library's functions alone: the pieces that fgets
// gives, one after the other.
#ifndef KVUTILS_TESTS_FUZZ_SUPPORT_PLAIN_TEXT_FILE_H_
#define KVUTILS_TESTS_FUZZ_SUPPORT_PLAIN_TEXT_FILE_H_

#include <cctype>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/files.h"

namespace kv::fuzz {

class PlainTextFile {
 public:
  struct Settings {
    bool deleteBorderSpace = true;
    bool skipEmptyStrings = true;
    char commentChar = '!';
    char endChar = '}';
    int lineLength = 4096;
  };

  PlainTextFile(const std::string& path, const Settings& settings) : settings_(settings) {
    const bool hasMark = test::ReadBytes(path).starts_with("\xEF\xBB\xBF");
    std::FILE* const file = ::_wfopen(test::Widen(path).c_str(), L"rt");
    if (hasMark) std::fseek(file, 3, SEEK_SET);
    std::vector<char> line(static_cast<std::size_t>(settings.lineLength));
    while (std::fgets(line.data(), settings.lineLength, file) != nullptr) {
      pieces_.push_back({line.data(), std::feof(file) != 0});
    }
    std::fclose(file);
  }

  void SkipEmptyStrings(bool skip) { settings_.skipEmptyStrings = skip; }
  void SetBorderSpaceDelete(bool isDeleted) { settings_.deleteBorderSpace = isDeleted; }
  void SeekToBegin() {
    next_ = 0;
    hasMetEnd_ = false;
  }
  [[nodiscard]] bool GetEndFileStatus() const { return hasMetEnd_; }

  // The next significant line into `line`; false at the end.
  bool Next(std::string& line) {
    do {
      if (next_ == pieces_.size()) {
        hasMetEnd_ = true;
        return false;
      }
      line = pieces_[next_].text;
      hasMetEnd_ = pieces_[next_].isLast;
      ++next_;
    } while (IsComment(line));
    return true;
  }

  // As the member of the same name; what is stored goes into `dst`.
  int Readln(std::string& dst, int size) {
    std::string line;
    if (!Next(line)) return -1;
    if (settings_.deleteBorderSpace) line = Trimmed(line);
    dst = line.substr(0, static_cast<std::size_t>(size < 1 ? 0 : size - 1));
    if (FirstOf(line) == settings_.endChar) return -2;
    return static_cast<int>(dst.size());
  }

  bool SearchString(const std::string& text, bool fromStart) {
    if (fromStart) SeekToBegin();
    std::string line;
    while (Next(line)) {
      if (Trimmed(line) == text) return true;
    }
    return false;
  }

  int GetNumberLines(bool untilEndMarker) {
    const std::size_t place = next_;
    std::string line;
    int count = 0;
    int result = 0;
    while ((result = Readln(line, 19)) > 0) ++count;
    next_ = place;
    hasMetEnd_ = false;
    return untilEndMarker && result != -2 ? -count : count;
  }

  static std::string Trimmed(const std::string& line) {
    constexpr std::string_view kBorder = " \t\n\r";
    const std::size_t first = line.find_first_not_of(kBorder);
    if (first == std::string::npos) return "";
    return line.substr(first, line.find_last_not_of(kBorder) - first + 1);
  }

  static std::vector<std::string> Tokens(const std::string& line) {
    constexpr std::string_view kDelimiters = " \t\n";
    std::vector<std::string> tokens;
    for (std::size_t begin = line.find_first_not_of(kDelimiters); begin != std::string::npos;) {
      const std::size_t end = line.find_first_of(kDelimiters, begin);
      tokens.push_back(line.substr(begin, end - begin));
      begin = line.find_first_not_of(kDelimiters, end);
    }
    return tokens;
  }

  [[nodiscard]] char EndChar() const { return settings_.endChar; }

 private:
  struct Piece {
    std::string text;
    bool isLast;  // whether reading it met the end of the file
  };

  // The terminator for an empty text.
  static char FirstOf(const std::string& text) { return text.c_str()[0]; }

  [[nodiscard]] bool IsComment(const std::string& line) const {
    const char* first = line.c_str();
    while (std::isspace(static_cast<unsigned char>(*first)) != 0) ++first;
    if (*first == '\0' && settings_.skipEmptyStrings) return true;
    return *first == settings_.commentChar;
  }

  Settings settings_;
  std::vector<Piece> pieces_;
  std::size_t next_ = 0;
  bool hasMetEnd_ = false;
};

}  // namespace kv::fuzz

#endif  // KVUTILS_TESTS_FUZZ_SUPPORT_PLAIN_TEXT_FILE_H_
