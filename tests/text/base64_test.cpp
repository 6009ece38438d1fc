#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <string_view>

#include "tests/support/guarded_buffer.h"
#include "utils/text/text.h"

namespace {

using kv::test::GuardedBuffer;
using namespace std::string_literals;

constexpr const char* kPadded = "+/=";

const unsigned char* Bytes(const std::string& text) {
  return reinterpret_cast<const unsigned char*>(text.data());
}

struct Base64Case {
  std::string data;
  std::string text;
};

// The first seven of each are the test vectors of RFC 4648.
const Base64Case kPlainRows[] = {
    {"", ""},
    {"f", "Zg"},
    {"fo", "Zm8"},
    {"foo", "Zm9v"},
    {"foob", "Zm9vYg"},
    {"fooba", "Zm9vYmE"},
    {"foobar", "Zm9vYmFy"},
    {"\x01\x02\x03", "AQID"},
    {"\xFF\xFE", "__4"},
    {"\0"s, "AA"},
    {"\0\0\0"s, "AAAA"},
    {"\xFF\xFF\xFF", "____"},
    {"\xFB\xEF\xBE\xFF", "----_w"},
};

const Base64Case kPaddedRows[] = {
    {"", ""},
    {"f", "Zg=="},
    {"fo", "Zm8="},
    {"foo", "Zm9v"},
    {"foob", "Zm9vYg=="},
    {"fooba", "Zm9vYmE="},
    {"foobar", "Zm9vYmFy"},
    {"\xFF\xFE", "//4="},
    {"\xFB\xEF\xBE\xFF", "++++/w=="},
};

template <std::size_t size>
void CheckEncoding(const Base64Case (&rows)[size], const char* alphabetTail) {
  for (const Base64Case& row : rows) {
    SCOPED_TRACE(row.text);
    const int length = static_cast<int>(row.data.size());
    const int textLength = static_cast<int>(row.text.size());
    EXPECT_EQ(btos(nullptr, Bytes(row.data), length, alphabetTail), textLength);
    GuardedBuffer<char> buffer(row.text.size());
    EXPECT_EQ(btos(buffer.Get(), Bytes(row.data), length, alphabetTail), textLength);
    buffer.ExpectHolds(row.text);
  }
}

// Decodes `text`, expecting `result` and the bytes `stored`.
void CheckDecoding(const std::string& text, const char* alphabetTail, int maxChars, int result,
                   const std::string& stored) {
  SCOPED_TRACE(testing::Message() << text << " in " << maxChars);
  EXPECT_EQ(stob(nullptr, text.c_str(), alphabetTail, maxChars), result);
  GuardedBuffer<char> buffer(stored.size());
  EXPECT_EQ(
      stob(reinterpret_cast<unsigned char*>(buffer.Get()), text.c_str(), alphabetTail, maxChars),
      result);
  buffer.ExpectHolds(stored);
}

template <std::size_t size>
void CheckDecoding(const Base64Case (&rows)[size], const char* alphabetTail) {
  for (const Base64Case& row : rows) {
    const int length = static_cast<int>(row.data.size());
    CheckDecoding(row.text, alphabetTail, INT_MAX, length, row.data);
    CheckDecoding(row.text, alphabetTail, static_cast<int>(row.text.size()), length, row.data);
  }
}

TEST(Btos, EncodesWithoutPadding) {
  CheckEncoding(kPlainRows, nullptr);
  const Base64Case rows[] = {{"\xFF\xFE", "//4"}, {"f", "Zg"}};
  CheckEncoding(rows, "+/");
}

TEST(Btos, EncodesWithPadding) {
  CheckEncoding(kPaddedRows, kPadded);
  const Base64Case rows[] = {{"f", "Zg**"}, {"\xFB\xEF\xBE\xFF", "!!!!?w**"}};
  CheckEncoding(rows, "!?*");
}

TEST(Btos, UsesTheWholeAlphabet) {
  std::string data;
  for (unsigned i = 0; i < 64; i += 4) {
    const unsigned bits = (i << 18) | ((i + 1) << 12) | ((i + 2) << 6) | (i + 3);
    data += {static_cast<char>(bits >> 16), static_cast<char>(bits >> 8), static_cast<char>(bits)};
  }
  const Base64Case rows[] = {
      {data, "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_"}};
  CheckEncoding(rows, nullptr);
  CheckDecoding(rows, nullptr);
}

TEST(Btos, TakesNullAndNegativeLengthsAsEmpty) {
  const unsigned char data[] = {1, 2, 3};
  GuardedBuffer<char> buffer(4);
  EXPECT_EQ(btos(buffer.Get(), data, 0, nullptr), 0);
  EXPECT_EQ(btos(buffer.Get(), data, -1, nullptr), 0);
  EXPECT_EQ(btos(buffer.Get(), data, INT_MIN, kPadded), 0);
  EXPECT_EQ(btos(buffer.Get(), nullptr, 3, kPadded), 0);
  EXPECT_EQ(btos(nullptr, nullptr, 3, kPadded), 0);
  buffer.ExpectHolds({});
}

TEST(Btos, RefusesTextsBeyondTheRangeOfInt) {
  const unsigned char data[] = {1};
  EXPECT_EQ(btos(nullptr, data, 1610612733, nullptr), 2147483644);
  EXPECT_EQ(btos(nullptr, data, 1610612734, nullptr), 2147483646);
  EXPECT_EQ(btos(nullptr, data, 1610612735, nullptr), 2147483647);
  EXPECT_EQ(btos(nullptr, data, 1610612734, kPadded), -1);
  EXPECT_EQ(btos(nullptr, data, 1610612736, nullptr), -1);
  EXPECT_EQ(btos(nullptr, data, INT_MAX, nullptr), -1);
  GuardedBuffer<char> buffer(4);
  EXPECT_EQ(btos(buffer.Get(), data, INT_MAX, nullptr), -1);
  buffer.ExpectHolds({});
}

TEST(Btos, ReadsNothingBehindATailThatIsTooShort) {
  const Base64Case emptyTail[] = {{"\xFB\xEF\xBE", "\0\0\0\0"s}, {"f", "Zg"}};
  CheckEncoding(emptyTail, "");
  const Base64Case shortTail[] = {{"\xFB\xEF\xBE", "++++"}, {"\xFF\xFF\xFF", "\0\0\0\0"s}};
  CheckEncoding(shortTail, "+");
  // What stands behind the NUL is no padding character.
  const Base64Case cutTail[] = {{"f", "Zg"}};
  CheckEncoding(cutTail, "\0/=");
  CheckEncoding(cutTail, "+\0=");
}

TEST(Stob, DecodesWithoutPadding) {
  CheckDecoding(kPlainRows, nullptr);
  CheckDecoding("AQ==", nullptr, INT_MAX, -1, "\x01");
  CheckDecoding("=", nullptr, INT_MAX, -1, "");
}

TEST(Stob, DecodesWithPadding) {
  CheckDecoding(kPaddedRows, kPadded);
  CheckDecoding("AQ==", kPadded, INT_MAX, 1, "\x01");
  CheckDecoding("AQ=x!", kPadded, INT_MAX, 1, "\x01");
  CheckDecoding("=AQ", kPadded, INT_MAX, 0, "");
  CheckDecoding("AQ", kPadded, INT_MAX, 1, "\x01");
}

TEST(Stob, RefusesOtherCharactersBehindTheBytesBeforeThem) {
  for (const char* other :
       {" ", "!", "\n", "+", "/", "=", "\x80", "\xFF", ".", ":", "@", "[", "`"}) {
    SCOPED_TRACE(other);
    CheckDecoding(other, nullptr, INT_MAX, -1, "");
    CheckDecoding("AQID"s + other + "AQID", nullptr, INT_MAX, -1, "\x01\x02\x03");
    CheckDecoding("AQI"s + other, nullptr, INT_MAX, -1, "\x01\x02");
  }
  // The common alphabet's own last characters are no part of another one.
  for (const char* other : {"-", "_"}) CheckDecoding(other, kPadded, INT_MAX, -1, "");
  // Without a padding character every other character is refused.
  CheckDecoding("AQ==", "+/", INT_MAX, -1, "\x01");
}

TEST(Stob, TakesAtMostTheGivenNumberOfCharacters) {
  const struct {
    int maxChars;
    std::string stored;
  } rows[] = {
      {0, ""},    {-1, ""},   {INT_MIN, ""}, {1, ""},      {2, "f"},      {3, "fo"},
      {4, "foo"}, {5, "foo"}, {6, "foob"},   {7, "fooba"}, {8, "foobar"}, {9, "foobar"},
  };
  for (const auto& row : rows) {
    CheckDecoding("Zm9vYmFy", nullptr, row.maxChars, static_cast<int>(row.stored.size()),
                  row.stored);
  }
  // What lies behind is not looked at.
  CheckDecoding("Zm9v!", nullptr, 4, 3, "foo");
}

TEST(Stob, DropsBitsThatFillNoByte) {
  CheckDecoding("A", nullptr, INT_MAX, 0, "");
  CheckDecoding("AR", nullptr, INT_MAX, 1, "\x01");
  CheckDecoding("Zm9vY", nullptr, INT_MAX, 3, "foo");
}

TEST(Stob, TakesNullAsEmpty) {
  GuardedBuffer<char> buffer(4);
  EXPECT_EQ(stob(reinterpret_cast<unsigned char*>(buffer.Get()), nullptr, kPadded, 4), 0);
  buffer.ExpectHolds({});
  EXPECT_EQ(stob(nullptr, "", nullptr, 4), 0);
}

TEST(Stob, GivesBackWhatBtosMade) {
  std::string data;
  for (int length = 0; length <= 300; ++length) {
    SCOPED_TRACE(length);
    for (const char* tail : {static_cast<const char*>(nullptr), kPadded}) {
      std::string text(static_cast<std::size_t>(btos(nullptr, Bytes(data), length, tail)), ' ');
      btos(text.data(), Bytes(data), length, tail);
      std::string back(data.size(), ' ');
      EXPECT_EQ(stob(reinterpret_cast<unsigned char*>(back.data()), text.c_str(), tail, INT_MAX),
                length);
      EXPECT_EQ(back, data);
    }
    data += static_cast<char>(length * 37 + 11);
  }
}

}  // namespace
