// Random lines of number-like tokens for the readers of text files.
#ifndef KVUTILS_TESTS_FILES_NUMBER_TOKENS_H_
#define KVUTILS_TESTS_FILES_NUMBER_TOKENS_H_

#include <random>
#include <string>

namespace kv::test {

class NumberTokens {
 public:
  explicit NumberTokens(unsigned seed) : random_(seed) {}

  // Up to eight tokens between delimiters, and a line end. Some lines are blank, comments or ends
  // of a section.
  std::string Line() {
    static constexpr const char* kDelimiters[] = {" ", " ", "\t", "  ", " \t "};
    std::string line = Choose(6) == 0 ? Any(kDelimiters) : "";
    if (Choose(50) == 0) line += Choose(2) == 0 ? "}" : "!";
    for (unsigned tokens = Choose(9); tokens > 0; --tokens) {
      line += Token();
      if (tokens > 1 || Choose(4) == 0) line += Any(kDelimiters);
    }
    return line + (Choose(3) == 0 ? "\r\n" : "\n");
  }

  std::string Token() {
    switch (Choose(16)) {
      case 0:
        return Any(kSigns) + std::string(Choose(3), '0') + Digits(1 + Choose(24));
      case 1:
        return Any(kSigns) + NearALimit();
      case 2:
        return Any(kSigns) + (Choose(2) == 0 ? "0x" : "0X") + HexDigits(Choose(18));
      case 3:
        return Any(kSigns) + "0" + Digits(Choose(13));
      case 4:
        return Any(kOdd);
      case 5:
        return Decimal() + Any(kOdd);
      case 6:
        return Any(kSkipped) + (Choose(2) == 0 ? Decimal() : Digits(Choose(3)));
      case 7:
        return Changed(Choose(2) == 0 ? Decimal() : Digits(1 + Choose(12)));
      case 8:
      case 9:
      case 10:
      case 11:
        return (Choose(2) == 0 ? "-" : "") + Digits(1 + Choose(10));
      default:
        return Decimal();
    }
  }

  unsigned Choose(unsigned count) { return random_() % count; }

 private:
  static constexpr const char* kSigns[] = {"", "", "-", "+"};
  // Skipped by sscanf at the beginning of a token, without parting tokens.
  static constexpr const char* kSkipped[] = {"\r", "\v", "\f", "\r\v\f"};
  static constexpr const char* kOdd[] = {
      "inf",
      "-inf",
      "INF",
      "infinity",
      "+Infinity",
      "infx",
      "in",
      "nan",
      "-nan",
      "NaN",
      "nan(1)",
      "nan()",
      "NAN(a_1)",
      "iNf",
      "infinit",
      "nan(",
      ".",
      "-.",
      "+.",
      "-",
      "+",
      "--1",
      "+-1",
      "-+1",
      "1e",
      "1e+",
      "1E-",
      "1.e5",
      ".5",
      "5.",
      "-.5e1",
      "1d5",
      ".e1",
      "e5",
      "1..2",
      "1.2.3",
      "1,5",
      "0x",
      "0x.8",
      "0x1p",
      "0x1p3",
      "0xg",
      "08",
      "00",
      "-0",
      "+0",
      "0.0",
      "-0.0",
      "1_000",
      "5%",
      "1e400",
      "-1e400",
      "1e-400",
      "1e4932",
      "1e99999999999",
      "0e99999999999",
      "\r",
      "\v",
      "\xA0",
      "\xD9\xA3",
      "5e-324",
      "2e-324",
      "1.7976931348623159e308",
      "3.4028236e38",
      "1e-46",
      "12abc",
      "0b1",
      "1f",
  };

  template <std::size_t size>
  std::string Any(const char* const (&choices)[size]) {
    return choices[Choose(size)];
  }

  std::string Digits(unsigned count) {
    std::string digits(count, '0');
    for (char& digit : digits) digit = static_cast<char>('0' + Choose(10));
    return digits;
  }

  std::string HexDigits(unsigned count) {
    std::string digits(count, '0');
    for (char& digit : digits) digit = "0123456789abcdefABCDEF"[Choose(22)];
    return digits;
  }

  // Near the greatest values of 16, 31, 32, 63 and 64 bits.
  std::string NearALimit() {
    static constexpr const char* kLimits[] = {
        "3276", "6553", "214748364", "429496729", "922337203685477580", "1844674407370955161"};
    return Any(kLimits) + Digits(1);
  }

  std::string Decimal() {
    std::string decimal = Any(kSigns) + Digits(Choose(Choose(8) == 0 ? 25 : 7));
    if (Choose(4) > 0) decimal += "." + Digits(Choose(Choose(8) == 0 ? 30 : 9));
    if (Choose(5) == 0) decimal += (Choose(2) == 0 ? "e" : "E") + Any(kSigns) + Digits(Choose(4));
    return decimal;
  }

  // One byte becomes another that neither ends the line nor the text.
  std::string Changed(std::string token) {
    static constexpr char kBytes[] = "0019.-+eExXpPdDaAfFiInN,%\r\v\f\x7F\x80\xA0\xFF";
    if (token.empty()) return token;
    token[Choose(static_cast<unsigned>(token.size()))] = kBytes[Choose(sizeof kBytes - 1)];
    return token;
  }

  std::mt19937 random_;
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_FILES_NUMBER_TOKENS_H_
