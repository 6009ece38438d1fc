#include <gtest/gtest.h>

#include <string>

#include "tests/support/guarded_buffer.h"
#include "utils/text/text.h"

namespace {

using kv::test::GuardedBuffer;

struct UnescapeCase {
  const char* in;
  std::string out;
};

TEST(Unescape, DecodesTwoDigitFormsToBytesAndTerminates) {
  const UnescapeCase rows[] = {
      {"", ""},
      {"plain", "plain"},
      {"%41", "A"},
      {"a%2fb%2F", "a/b/"},
      {"%e9%FF\xE9", "\xE9\xFF\xE9"},
      {"%00z", std::string("\0z", 2)},
      {"%25u0041", "%u0041"},
      {"u0041+", "u0041+"},
  };
  for (const UnescapeCase& row : rows) {
    SCOPED_TRACE(row.in);
    const int count = static_cast<int>(row.out.size());
    EXPECT_EQ(unescape(nullptr, row.in), count);
    GuardedBuffer<char> buffer(row.out.size() + 1);
    EXPECT_EQ(unescape(buffer.Get(), row.in), count);
    buffer.ExpectHolds({row.out.c_str(), row.out.size() + 1});
  }
}

TEST(Unescape, MakesUtf8OfFourDigitFormsAndAnswersOneMore) {
  const UnescapeCase rows[] = {
      {"a%u00e9", "a\xC3\xA9"},
      {"%u00E9", "\xC3\xA9"},
      {"%u20AC", "\xE2\x82\xAC"},
      {"%u0041%42c", "ABc"},
      {"%u0041%e9", "A\xC3\xA9"},
      {"%u0000", std::string(1, '\0')},
      // A byte above 127 is a signed value: 0xE9 is U+FFE9.
      {"%u0041\xE9", "A\xEF\xBF\xA9"},
      {"%u0041\x80\xFF", "A\xEF\xBE\x80\xEF\xBF\xBF"},
      // A pair is one 16-bit character.
      {"%ud83d%uDE00", "\xEF\x98\x80"},
      {"%uDC00", "\xED\xB0\x80"},
  };
  for (const UnescapeCase& row : rows) {
    SCOPED_TRACE(row.in);
    const int size = static_cast<int>(row.out.size());
    EXPECT_EQ(unescape(nullptr, row.in), size);
    GuardedBuffer<char> buffer(row.out.size() + 1);
    EXPECT_EQ(unescape(buffer.Get(), row.in), size + 1);
    buffer.ExpectHolds(row.out);
  }
}

TEST(Unescape, RefusesMalformedEscapes) {
  for (const char* in : {"%",    "%4",      "a%",     "a%4",    "%g1",    "%1g",      "%u",
                         "%u1",  "%u12",    "%u123",  "%u123g", "%U0041", "%%41",     "abc%zz",
                         "%41%", "%u0041%", "%ug123", "%-1",    "% 1",    "%\xE9\xE9"}) {
    SCOPED_TRACE(in);
    GuardedBuffer<char> buffer(32);
    EXPECT_EQ(unescape(nullptr, in), -1);
    EXPECT_EQ(unescape(buffer.Get(), in), -1);
    buffer.ExpectHolds({});
  }
}

TEST(Unescape, RefusesAnUnpairedHighSurrogate) {
  for (const char* in : {"%uD83D", "a%uD83Db", "%uD83D%uD83D", "%uDBFF%41"}) {
    SCOPED_TRACE(in);
    GuardedBuffer<char> buffer(32);
    EXPECT_EQ(unescape(nullptr, in), -1);
    EXPECT_EQ(unescape(buffer.Get(), in), -1);
    buffer.ExpectHolds({});
  }
}

TEST(Unescape, RefusesNull) {
  char out[4] = "abc";
  EXPECT_EQ(unescape(out, nullptr), -1);
  EXPECT_EQ(unescape(nullptr, nullptr), -1);
  EXPECT_STREQ(out, "abc");
}

}  // namespace
