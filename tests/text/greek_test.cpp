#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "tests/support/guarded_buffer.h"
#include "utils/text/text.h"

namespace {

using kv::test::GuardedBuffer;

TEST(Greek2Ascii, KnowsTheAlphabet) {
  const char* letters[] = {"alf", "bet", "gam", "del", "eps", "zet", "eta", "the",
                           "iot", "kap", "lam", "mu",  "nu",  "xi",  "omi", "pi",
                           "rho", "sig", "tau", "ups", "phi", "chi", "psi", "ome"};
  int number = 0;
  for (const char* letter : letters) {
    SCOPED_TRACE(letter);
    GuardedBuffer<char> out(4);
    EXPECT_TRUE(Greek2Ascii(out.Get(), std::to_string(number).c_str()));
    out.ExpectHolds(std::string(letter) + '\0');
    ++number;
  }
}

TEST(Greek2Ascii, GivesAnEmptyTextBehindTheLastLetter) {
  GuardedBuffer<char> out(4);
  EXPECT_TRUE(Greek2Ascii(out.Get(), "24"));
  out.ExpectHolds(std::string(1, '\0'));
}

TEST(Greek2Ascii, ReadsTheNumberAsAtoiDoes) {
  const struct {
    const char* number;
    const char* letter;
  } rows[] = {
      {"00", "alf"}, {"023", "ome"}, {"0000011", "mu"}, {" \t7", "the"},
      {"+1", "bet"}, {"-0", "alf"},  {"3 Cen", "del"},  {"2.9", "gam"},
      {"", "alf"},   {"x", "alf"},   {"#5", "alf"},     {"1e9", "bet"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.number);
    char out[4] = "";
    EXPECT_TRUE(Greek2Ascii(out, row.number));
    EXPECT_STREQ(out, row.letter);
  }
}

TEST(Greek2Ascii, RefusesOtherNumbers) {
  // The last three are numbers whose triple is small in 32 bits.
  for (const char* number : {"25", "26", "72", "73", "100", "999", "-1", "-24", "2147483647",
                             "-2147483648", "1431655766", "1431655770", "-1431655765"}) {
    SCOPED_TRACE(number);
    GuardedBuffer<char> out(4);
    EXPECT_FALSE(Greek2Ascii(out.Get(), number));
    out.ExpectHolds("");
  }
  char out[4] = "xyz";
  EXPECT_FALSE(Greek2Ascii(out, nullptr));
  EXPECT_FALSE(Greek2Ascii(nullptr, "1"));
  EXPECT_STREQ(out, "xyz");
}

// What a number beyond 32 bits reads as is the run-time library's.
TEST(Greek2Ascii, SharesTheOverflowOfAtoi) {
  const char* letters[] = {"alf", "bet", "gam", "del", "eps", "zet"};
  for (const char* huge : {"4294967296", "4294967301", "-4294967291", "8589934597", "4294967295",
                           "9999999999", "99999999999999999999"}) {
    SCOPED_TRACE(huge);
    const int number = std::atoi(huge);
    const bool isLetter = number >= 0 && number <= 5;
    char out[4] = "xyz";
    EXPECT_EQ(Greek2Ascii(out, huge), isLetter);
    EXPECT_STREQ(out, isLetter ? letters[number] : "xyz");
  }
}

TEST(ConvertStringWithGreek, ReplacesMarkers) {
  const struct {
    const char* text;
    const char* converted;
  } rows[] = {
      {"", ""},
      {"Vega", "Vega"},
      {"#", "#"},
      {"##1", "##1"},
      {"Alpha ###00 Cen", "Alpha alfCen"},
      {"###000 Cen", "alf Cen"},
      {"###011###023", "muome"},
      {"###024x", "x"},
      {"a###5  b###06 c",
       "azetb"
       "eta"
       "c"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(ConvertStringWithGreek(row.text), row.converted);
  }
}

TEST(ConvertStringWithGreek, TakesThreeCharactersWithEachMarker) {
  const struct {
    const char* text;
    const char* converted;
  } rows[] = {
      {"###1abcd", "betcd"},         // one digit and what follows it
      {"###", "alf"},                // nothing is left: no number reads as 0
      {"###7", "the"},               // one character is left
      {"x###12", "xnu"},             // two
      {"###xyzw", "alfw"},           // no number
      {"####01x", "alfx"},           // the number begins with "#"
      {"######01", "alf01"},         // the second marker is consumed by the first
      {"###1###02x", "bet#02x"},     // and here its beginning is
      {"###00\xC3\xA9", "alf\xA9"},  // a byte of a character may go
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(ConvertStringWithGreek(row.text), row.converted);
  }
}

// Digits behind the marker's three characters belong to the number, and stay in the text.
TEST(ConvertStringWithGreek, ReadsTheWholeNumber) {
  const struct {
    const char* text;
    const char* converted;
  } rows[] = {{"###0005x", "zet5x"}, {"###0123", "3"}, {"###0000000011y", "mu0000011y"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(ConvertStringWithGreek(row.text), row.converted);
  }
}

TEST(ConvertStringWithGreek, AppendsNothingForOtherNumbers) {
  const struct {
    const char* text;
    const char* converted;
  } rows[] = {
      {"a###025b", "ab"}, {"###999", ""}, {"###-1 x", "x"}, {"###1234", "4"}, {"###24 y", "y"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(ConvertStringWithGreek(row.text), row.converted);
  }
}

TEST(ConvertStringWithGreek, TakesNullAndTextsOfAnyLength) {
  EXPECT_EQ(ConvertStringWithGreek(nullptr), "");
  std::string text;
  std::string converted;
  for (int i = 0; i < 20000; ++i) {
    text += "star ###010,";
    converted += "star lam,";
  }
  EXPECT_EQ(ConvertStringWithGreek(text.c_str()), converted);
}

}  // namespace
