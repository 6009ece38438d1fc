// Small numbers out of texts and of each other beside their definitions.
#include <cctype>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>

#include "tests/fuzz/support/guarded_copy.h"
#include "tests/fuzz/support/target.h"
#include "utils/text/text.h"

namespace kv::fuzz {
namespace {

// The text as "%lg" reads it.
std::string Working(const std::string& text) {
  const auto isSpace = [](char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; };
  std::size_t i = 0;
  while (i < text.size() && isSpace(text[i])) ++i;
  if (i == text.size()) return "";
  std::string working;
  if (text[i] == '+' || text[i] == '-') working += text[i++];
  working += '.';
  for (; i < text.size(); ++i) {
    if (isSpace(text[i])) continue;
    if (text[i] == '+' || text[i] == '-') working += 'e';
    working += text[i];
  }
  return working;
}

void CheckDouble(const std::string& text) {
  const GuardedText guarded(text);
  double value = 17.0;
  double expected = 17.0;
  const bool isNumber = std::sscanf(Working(text).c_str(), "%lg", &expected) == 1;
  Expect("whether a number", GetDoubleValue(&value, guarded.Get()), isNumber);
  // Both take the nearest number but where a text has very many digits or is out of range.
  if (std::isfinite(expected) && std::fabs(expected) > 1e-300) {
    ExpectThat("the numbers are equal but for the last bit",
               value == expected || std::nextafter(value, expected) == expected);
  } else {
    ExpectThat("the numbers are both tiny or both not finite",
               std::isfinite(value) == std::isfinite(expected));
  }
}

// The digits that are taken before one that is none of the radix.
void CheckRadix(int number, int radix) {
  int value = number;
  const bool isTaken = FromCustomRadixToDec(&value, radix);
  if (number <= 0) {
    Expect("value of no digits", value, 0);
    Expect("whether taken", isTaken, number == 0);
    return;
  }
  const std::string digits = std::to_string(number);
  std::uint32_t sum = 0;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    if (digits[i] - '0' >= radix) {
      Expect("whether taken", isTaken, false);
      Expect("digits left", value, std::stoi(digits.substr(i)));
      return;
    }
    sum = sum * static_cast<std::uint32_t>(radix) + static_cast<std::uint32_t>(digits[i] - '0');
  }
  Expect("whether taken", isTaken, true);
  Expect("value", value, static_cast<int>(sum));
}

void CheckNearest(double x) {
  const int nearest = GetNearestInt(x);
  if (std::isnan(x)) return Expect("nearest of none", nearest, 0);
  const double rounded = x >= 0 ? std::floor(x + 0.5) : -std::ceil(-0.5 - x);
  const int expected = rounded >= INT_MAX   ? INT_MAX
                       : rounded <= INT_MIN ? INT_MIN
                                            : static_cast<int>(rounded);
  Expect("nearest", nearest, expected);
}

void Check(Input input) {
  const double x = input.Take<double>();
  CheckNearest(x);
  CheckNearest(std::fmod(x, 1e10));
  CheckRadix(input.Take<int>(), input.Flag() ? input.Between(-1, 12) : input.Take<int>());
  const std::string text(input.Text());
  CheckDouble(text);
  for (const char c : text) {
    const char hex[] = {c, '\0'};
    const bool isDigit = std::isxdigit(static_cast<unsigned char>(c)) != 0;
    Expect("hexadecimal digit", valhex(c), isDigit ? std::stoul(hex, nullptr, 16) : 0UL);
  }
}

const Registration kTarget(
    {.name = "numbers",
     .check = Check,
     .seeds = {std::string(" 12345-3\0\1\x8\0\0\0\1\x9\x3\0\0\0\0\0\0\0\x4\x40", 26),
               std::string("-11606-4\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\xE0\xBF", 26), "+5", "1+308",
               "99999999999999999999-400"},
     .words = {"-3", "+308", "-324", "e", "nan", "inf", "0x", "p4"}});

}  // namespace
}  // namespace kv::fuzz
