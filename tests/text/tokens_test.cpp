#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "utils/text/text.h"

namespace {

using Strings = std::vector<std::string>;

struct SplitCase {
  const char* text;
  Strings tokens;
};

const SplitCase kRunSplits[] = {
    {"", {}},
    {"a", {"a"}},
    {"a,b", {"a", "b"}},
    {"a,,b", {"a", "b"}},
    {",a", {"", "a"}},
    {",,a", {"", "a"}},
    {"a,", {"a"}},
    {"a,,", {"a"}},
    {",", {""}},
    {",,,", {""}},
    {",,a,,b,,", {"", "a", "b"}},
    {" a , b ", {" a ", " b "}},
};

TEST(GetTokens, CollapsesRunsOfOneDelimiter) {
  for (const SplitCase& row : kRunSplits) {
    SCOPED_TRACE(row.text);
    Strings out{"old"};
    EXPECT_EQ(GetTokens(out, std::string(row.text), ','), !row.tokens.empty());
    EXPECT_EQ(out, row.tokens);
  }
}

TEST(GetTokens, CollapsesRunsOfOneDelimiterInWideText) {
  for (const SplitCase& row : kRunSplits) {
    SCOPED_TRACE(row.text);
    std::vector<std::wstring> tokens;
    for (const std::string& token : row.tokens) tokens.emplace_back(token.begin(), token.end());
    const std::string text = row.text;
    std::vector<std::wstring> out{L"old"};
    EXPECT_EQ(GetTokens(out, std::wstring(text.begin(), text.end()), ','), !tokens.empty());
    EXPECT_EQ(out, tokens);
  }
}

TEST(GetTokens, WidensTheDelimiterAsASignedValue) {
  std::vector<std::wstring> out;
  EXPECT_TRUE(GetTokens(out, std::wstring(L"a\u00E9b\uFFE9c"), '\xE9'));
  EXPECT_EQ(out, (std::vector<std::wstring>{L"a\u00E9b", L"c"}));
}

TEST(GetTokens, SplitsAtHighBytesAndNul) {
  Strings out;
  EXPECT_TRUE(GetTokens(out, std::string("a\xE9\xE9z"), '\xE9'));
  EXPECT_EQ(out, (Strings{"a", "z"}));
  EXPECT_TRUE(GetTokens(out, std::string("a\0b", 3), '\0'));
  EXPECT_EQ(out, (Strings{"a", "b"}));
}

TEST(GetTokens, NeverYieldsEmptyTokensForASet) {
  const struct {
    const char* text;
    const char* delims;
    Strings tokens;
  } rows[] = {
      {"", " ", {}},
      {"   ", " ", {}},
      {" a  b ", " ", {"a", "b"}},
      {"a", " ", {"a"}},
      {"a;b,c", ",;", {"a", "b", "c"}},
      {",;a;,b;", ",;", {"a", "b"}},
      {"a b", "", {"a b"}},
      {"a b", nullptr, {"a b"}},
      {"", "", {}},
      {nullptr, " ", {}},
      {"a\xE9z", "\xE9", {"a", "z"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.text));
    Strings out{"old"};
    EXPECT_EQ(GetTokens(out, row.text, row.delims), !row.tokens.empty());
    EXPECT_EQ(out, row.tokens);
  }
}

TEST(GetSubStrings, AppendsThePiecesThatADelimiterEnds) {
  const SplitCase rows[] = {
      {"", {}},         {"x", {}},    {";", {""}},
      {"a;", {"a"}},    {";a", {""}}, {"a;;b;c", {"a", "", "b"}},
      {";;", {"", ""}},
  };
  for (const SplitCase& row : rows) {
    SCOPED_TRACE(row.text);
    Strings out;
    EXPECT_EQ(GetSubStrings(out, row.text, ';'), static_cast<int>(row.tokens.size()));
    EXPECT_EQ(out, row.tokens);
  }
}

TEST(GetSubStrings, KeepsAndCountsWhatWasThere) {
  Strings out{"old", "older"};
  EXPECT_EQ(GetSubStrings(out, "x", ';'), 2);
  EXPECT_EQ(GetSubStrings(out, "a;b;c", ';'), 4);
  EXPECT_EQ(out, (Strings{"old", "older", "a", "b"}));
}

}  // namespace
