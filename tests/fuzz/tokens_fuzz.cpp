// The splitting of texts beside loops over characters, and a condition that says the same.
#include <string>
#include <string_view>
#include <vector>

#include "tests/fuzz/support/guarded_copy.h"
#include "tests/fuzz/support/target.h"
#include "utils/text/text.h"

namespace kv::fuzz {
namespace {

// Ended pieces, a run of delimiters as one; what follows the last run if there is anything.
template <typename Unit>
std::vector<std::basic_string<Unit>> PlainTokens(const std::basic_string<Unit>& text, Unit delim) {
  std::vector<std::basic_string<Unit>> tokens;
  std::basic_string<Unit> token;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != delim) {
      token += text[i];
    } else if (i == 0 || text[i - 1] != delim) {
      tokens.push_back(token);
      token.clear();
    }
  }
  if (!token.empty()) tokens.push_back(token);
  return tokens;
}

std::vector<std::string> PlainTokensOfSet(const std::string& text, const std::string& delims) {
  std::vector<std::string> tokens;
  std::string token;
  for (const char c : text + '\0') {
    if (c != '\0' && delims.find(c) == std::string::npos) {
      token += c;
    } else if (!token.empty()) {
      tokens.push_back(token);
      token.clear();
    }
  }
  return tokens;
}

std::vector<std::string> PlainPieces(const std::string& text, char delim) {
  std::vector<std::string> pieces = {"before"};
  std::string piece;
  for (const char c : text) {
    if (c == delim) {
      pieces.push_back(piece);
      piece.clear();
    } else {
      piece += c;
    }
  }
  return pieces;
}

void Check(Input input) {
  const char delim = input.Flag() ? input.OneOf({',', ';', ' ', '\t'}) : input.Take<char>();
  const std::string delims = input.Text();
  const std::string text(input.Rest());

  std::vector<std::string> tokens = {"before"};
  Expect("whether there is a token", GetTokens(tokens, text, delim),
         !PlainTokens(text, delim).empty());
  Expect("tokens", tokens, PlainTokens(text, delim));

  std::wstring wide;
  for (const char c : text) wide += static_cast<wchar_t>(c);
  std::vector<std::wstring> wideTokens;
  GetTokens(wideTokens, wide, delim);
  Expect("wide tokens", wideTokens, PlainTokens(wide, static_cast<wchar_t>(delim)));

  const GuardedText guarded(text.c_str());
  const GuardedText guardedDelims(delims);
  const std::vector<std::string> expected = PlainTokensOfSet(text.c_str(), delims);
  Expect("whether there is a token", GetTokens(tokens, guarded.Get(), guardedDelims.Get()),
         !expected.empty());
  Expect("tokens of a set", tokens, expected);

  std::vector<std::string> pieces = {"before"};
  const int count = GetSubStrings(pieces, text, delim);
  Expect("pieces", pieces, PlainPieces(text, delim));
  Expect("count", count, static_cast<int>(pieces.size()));
}

const Registration kTarget({.name = "tokens",
                            .check = Check,
                            .seeds = {std::string(",;\0,,a,,b,,,\0", 12),
                                      std::string(" \t\0 1 0.07478  Ceres\t3.34\2\0", 28),
                                      std::string(";\0all;catalogs;delete;a.bin,b.bin\1\0", 34)}});

}  // namespace
}  // namespace kv::fuzz
