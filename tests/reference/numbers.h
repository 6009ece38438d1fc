// The defining form of MTextFile's reading: the line as text, and as numbers by sscanf.
#ifndef KVUTILS_TESTS_REFERENCE_NUMBERS_H_
#define KVUTILS_TESTS_REFERENCE_NUMBERS_H_

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace kv::reference {

// A stream and its line. Comments begin with "!", sections end with "}", blank lines are skipped.
class LineReader {
 public:
  explicit LineReader(std::FILE* stream, int lineLength = 4096)
      : stream_(stream), line_(static_cast<std::size_t>(lineLength) + 1) {}

  // At most size - 1 bytes of the next significant line, line feed included; their number.
  int Text(char* dst, int size) {
    if (!Next()) return -1;
    const int length = std::min(size - 1, static_cast<int>(std::strlen(line_.data())));
    std::memcpy(dst, line_.data(), static_cast<std::size_t>(length));
    dst[length] = '\0';
    return line_[0] == '}' ? -2 : length;
  }

  // At most `count` numbers of the next significant line, each of which `scan` makes of a token.
  template <typename Value, typename Scan>
  int Row(Value* values, int count, const char* format, Scan scan) {
    if (!Next()) return -1;
    const std::vector<std::string> tokens = Tokens();
    if (!tokens.empty() && tokens[0][0] == '}') return -2;
    int stored = 0;
    for (; stored < count && stored < static_cast<int>(tokens.size()); ++stored) {
      alignas(8) char value[8] = {};
      if (scan(tokens[static_cast<std::size_t>(stored)].c_str(), format, value) != 1) break;
      std::memcpy(values + stored, value, sizeof(Value));
    }
    return stored;
  }

  // The tokens of the current line, which spaces, tabs and line feeds part.
  [[nodiscard]] std::vector<std::string> Tokens() const {
    static constexpr char kDelimiters[] = " \t\n";
    std::vector<std::string> tokens;
    const char* text = line_.data();
    for (text += std::strspn(text, kDelimiters); *text != '\0';
         text += std::strspn(text, kDelimiters)) {
      const std::size_t length = std::strcspn(text, kDelimiters);
      tokens.emplace_back(text, length);
      text += length;
    }
    return tokens;
  }

 private:
  bool Next() {
    do {
      const int size = static_cast<int>(line_.size()) - 1;
      if (std::fgets(line_.data(), size, stream_) == nullptr) return false;
    } while (IsComment());
    return true;
  }

  [[nodiscard]] bool IsComment() const {
    const char* first = line_.data();
    while (std::isspace(static_cast<unsigned char>(*first)) != 0) ++first;
    return *first == '\0' || *first == '!';
  }

  std::FILE* stream_;
  std::vector<char> line_;
};

}  // namespace kv::reference

#endif  // KVUTILS_TESTS_REFERENCE_NUMBERS_H_
