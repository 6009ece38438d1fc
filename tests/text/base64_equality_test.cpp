// btos and stob beside their defining forms, on texts that end where the readable memory ends.
#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <random>
#include <string>
#include <vector>

#include "tests/reference/base64.h"
#include "tests/support/guarded_pages.h"
#include "utils/text/text.h"

namespace {

using kv::test::GuardedPages;

constexpr int kMaxLength = 300;
constexpr std::size_t kRoom = 512;
constexpr char kUnset = 0x5A;

// Alphabets with tables and without, padded and not, cut short by a NUL, with a character that
// stands for two values or is the padding too, and with bytes above 127.
constexpr const char* kTails[] = {
    nullptr, "+/=", "+/",  "-_=", "-_", "_-=", "/+=",          "-/=",  "+_=",   "!?*",
    "",      "+",   "-",   "=",   "A/", "+z=", "++=",          "==-",  "--_",   "AB=",
    "+/A",   "+/+", "-_-", "-_a", "*/", "-*",  "\xFF\x80\xFE", "\x80", " \n\t",
};

unsigned char* Bytes(char* text) { return reinterpret_cast<unsigned char*>(text); }

std::string RandomBytes(std::mt19937& random, std::size_t size) {
  std::string bytes(size, '\0');
  for (char& byte : bytes) byte = static_cast<char>(random());
  return bytes;
}

std::string Encoded(const std::string& data, const char* tail) {
  std::string bytes = data;
  const int length = static_cast<int>(bytes.size());
  std::string text(static_cast<std::size_t>(kv::reference::Encode(nullptr, nullptr, length, tail)),
                   '\0');
  kv::reference::Encode(text.data(), Bytes(bytes.data()), length, tail);
  return text;
}

TEST(Base64Equality, EncodesEveryLengthInEveryAlphabet) {
  std::mt19937 random(20240305);
  const GuardedPages source(kRoom);
  const GuardedPages target(kRoom);
  for (const char* tail : kTails) {
    for (int length = 0; length <= kMaxLength; ++length) {
      SCOPED_TRACE(testing::Message() << testing::PrintToString(tail) << " " << length);
      const std::string data = RandomBytes(random, static_cast<std::size_t>(length));
      const std::string expected = Encoded(data, tail);
      const int size = static_cast<int>(expected.size());
      const std::string unset(expected.size(), kUnset);
      EXPECT_EQ(btos(nullptr, Bytes(source.PutLast(data)), length, tail), size);
      char* out = target.PutLast(unset);
      ASSERT_EQ(btos(out, Bytes(source.PutLast(data)), length, tail), size);
      ASSERT_EQ(std::string(out, expected.size()), expected);
      out = target.PutFirst(unset);
      ASSERT_EQ(btos(out, Bytes(source.PutFirst(data)), length, tail), size);
      ASSERT_EQ(std::string(out, expected.size()), expected);
    }
  }
}

// Decodes the text at `text` into `out`, which has room for `room` bytes, and without an output.
void CheckDecoding(char* text, const char* tail, int maxChars, char* out, std::size_t room) {
  std::string expected(room, kUnset);
  const int count = kv::reference::Decode(Bytes(expected.data()), text, tail, maxChars);
  std::fill_n(out, room, kUnset);
  ASSERT_EQ(stob(Bytes(out), text, tail, maxChars), count);
  ASSERT_EQ(std::string(out, room), expected);
  ASSERT_EQ(stob(nullptr, text, tail, maxChars), count);
}

// One to three characters are replaced: by a terminator, by the end of an alphabet or the padding,
// or by anything.
void Corrupt(std::string& text, std::mt19937& random) {
  static constexpr char kOthers[] = "\0-_+/=!?*AZaz09@[`{:.\x80\xFF";
  for (unsigned changes = random() % 3 + 1; changes > 0 && !text.empty(); --changes) {
    text[random() % text.size()] =
        random() % 4 == 0 ? static_cast<char>(random()) : kOthers[random() % (sizeof kOthers - 1)];
  }
}

TEST(Base64Equality, DecodesEveryLengthInEveryAlphabet) {
  std::mt19937 random(20240306);
  const GuardedPages source(kRoom);
  const GuardedPages target(kRoom);
  const std::string end(1, '\0');
  for (const char* tail : kTails) {
    for (std::size_t length = 0; length <= kMaxLength; ++length) {
      for (int round = 0; round < 12; ++round) {
        std::string text = Encoded(RandomBytes(random, length), tail);
        if (round > 1) Corrupt(text, random);
        SCOPED_TRACE(testing::Message() << testing::PrintToString(tail) << " " << text);
        const int size = static_cast<int>(text.size());
        const std::size_t room = length + 2;  // padding may be in the alphabet
        char* out = target.End() - room;
        CheckDecoding(source.PutLast(text + end), tail, INT_MAX, out, room);
        CheckDecoding(source.PutLast(text), tail, size, out, room);
        if (size > 0) {
          const int some = static_cast<int>(random() % static_cast<unsigned>(size));
          CheckDecoding(source.PutFirst(text + end), tail, some, target.Begin(), room);
          CheckDecoding(source.PutLast(text.substr(0, static_cast<std::size_t>(some))), tail, some,
                        out, room);
        }
        if (HasFatalFailure()) return;
      }
    }
  }
}

}  // namespace
