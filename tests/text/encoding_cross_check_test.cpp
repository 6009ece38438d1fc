// The converters take runs of ASCII several characters at a time. Random texts, ASCII with other
// bytes strewn in, must give what the rules give when they are followed one unit at a time.
#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <string>

#include "tests/text/guarded_buffer.h"
#include "utils/text/text.h"

namespace {

using kv::test::GuardedBuffer;

constexpr int kTexts = 4000;
constexpr std::size_t kLongest = 48;

// A whole conversion in its plain form: nothing when the input is malformed.
template <typename Out, typename In>
using Reference = std::optional<std::basic_string<Out>> (*)(const std::basic_string<In>&);

std::optional<std::string> PlainLatin1ToUtf8(const std::string& in) {
  std::string out;
  for (const char c : in) {
    const int byte = static_cast<unsigned char>(c);
    if (byte < 128) {
      out += c;
    } else {
      out += static_cast<char>(192 + byte / 64);
      out += static_cast<char>(128 + byte % 64);
    }
  }
  return out;
}

std::optional<std::string> PlainUtf16ToUtf8(const std::wstring& in) {
  std::string out;
  for (std::size_t i = 0; i < in.size(); ++i) {
    int c = in[i];
    if (c >= 0xD800 && c < 0xDC00) {
      if (++i == in.size() || in[i] < 0xDC00 || in[i] > 0xDFFF) return std::nullopt;
      c = (c % 64) * 1024 + in[i] % 1024;
    }
    if (c < 128) {
      out += static_cast<char>(c);
    } else if (c < 2048) {
      out += static_cast<char>(192 + c / 64);
      out += static_cast<char>(128 + c % 64);
    } else {
      out += static_cast<char>(224 + c / 4096);
      out += static_cast<char>(128 + c / 64 % 64);
      out += static_cast<char>(128 + c % 64);
    }
  }
  return out;
}

std::optional<std::wstring> PlainUtf8ToUtf16(const std::string& in) {
  std::wstring out;
  for (std::size_t i = 0; i < in.size(); ++i) {
    int value = static_cast<unsigned char>(in[i]);
    int more = 0;
    if (value >= 128) {
      if (value < 192 || value >= 248) return std::nullopt;
      more = value < 224 ? 1 : value < 240 ? 2 : 3;
      value %= more == 1 ? 32 : more == 2 ? 16 : 8;
    }
    for (; more > 0; --more) {
      if (++i == in.size()) return std::nullopt;
      const int next = static_cast<unsigned char>(in[i]);
      if (next < 128 || next >= 192) return std::nullopt;
      value = value * 64 + next % 64;
    }
    if (value >= 0x110000) return std::nullopt;
    if (value < 0x10000) {
      out += static_cast<wchar_t>(value);
    } else {
      out += static_cast<wchar_t>(0xD800 + (value - 0x10000) / 1024);
      out += static_cast<wchar_t>(0xDC00 + (value - 0x10000) % 1024);
    }
  }
  return out;
}

// Texts of up to kLongest units, runs of ASCII between fragments.
template <typename Unit>
class RandomTexts {
 public:
  explicit RandomTexts(std::vector<std::basic_string<Unit>> fragments)
      : fragments_(std::move(fragments)) {}

  std::basic_string<Unit> Next() {
    std::basic_string<Unit> text;
    const std::size_t length = Below(kLongest + 1);
    while (text.size() < length) {
      for (std::size_t run = Below(20); run > 0; --run) text += static_cast<Unit>(Below(128));
      if (Below(3) != 0) text += fragments_[Below(fragments_.size())];
    }
    text.resize(length);
    return text;
  }
  std::size_t Below(std::size_t limit) { return random_() % limit; }

 private:
  std::mt19937 random_{20240229};
  std::vector<std::basic_string<Unit>> fragments_;
};

template <typename Out, typename In>
void CheckAgainst(Reference<Out, In> reference, int (*convert)(Out*, int&, const In*, int),
                  RandomTexts<In> texts) {
  int wellFormed = 0;
  for (int i = 0; i < kTexts && !testing::Test::HasFailure(); ++i) {
    const std::basic_string<In> in = texts.Next();
    SCOPED_TRACE(testing::PrintToString(in));
    const auto expected = reference(in);
    const std::size_t capacity = texts.Below(3 * kLongest);
    GuardedBuffer<Out> buffer(capacity);
    int outLen = static_cast<int>(capacity);
    const int result = convert(buffer.Get(), outLen, in.data(), static_cast<int>(in.size()));
    if (!expected) {
      EXPECT_EQ(result, -2);
    } else if (expected->size() <= capacity) {
      EXPECT_EQ(result, static_cast<int>(expected->size()));
      buffer.ExpectHolds(*expected);
      ++wellFormed;
    } else {
      EXPECT_EQ(result, -1);
      EXPECT_EQ(outLen, static_cast<int>(expected->size()));
    }
  }
  EXPECT_GT(wellFormed, kTexts / 4);
}

TEST(EncodingCrossCheck, Isolat1ToUtf8) {
  CheckAgainst<char, char>(PlainLatin1ToUtf8, isolat1_to_utf8,
                           RandomTexts<char>({"\xE9", "\x80\xFF", "\xC3"}));
}

TEST(EncodingCrossCheck, Utf16ToUtf8) {
  CheckAgainst<char, wchar_t>(
      PlainUtf16ToUtf8, utf16_to_utf8,
      RandomTexts<wchar_t>({L"\xE9", L"\x7FF\x800", L"\x3042", L"\xD83D\xDE00", L"\xDC00"}));
}

TEST(EncodingCrossCheck, Utf8ToUtf16) {
  CheckAgainst<wchar_t, char>(PlainUtf8ToUtf16, utf8_to_utf16,
                              RandomTexts<char>({"\xC3\xA9", "\xE3\x81\x82", "\xF0\x9F\x98\x80",
                                                 "\xC0\x80", "\xF0\x80\x80\x80"}));
}

TEST(EncodingCrossCheck, Utf8ToUtf16WithFaults) {
  RandomTexts<char> texts({"\xC3\xA9", "\xE3\x81\x82", "\x80", "\xC3", "\xE3\x81", "\xF8", "\xF5"});
  for (int i = 0; i < kTexts && !HasFailure(); ++i) {
    const std::string in = texts.Next();
    SCOPED_TRACE(testing::PrintToString(in));
    GuardedBuffer<wchar_t> buffer(kLongest);
    int outLen = kLongest;
    const int result = utf8_to_utf16(buffer.Get(), outLen, in.data(), static_cast<int>(in.size()));
    const auto expected = PlainUtf8ToUtf16(in);
    EXPECT_EQ(result, expected ? static_cast<int>(expected->size()) : -2);
    if (expected) buffer.ExpectHolds(*expected);
  }
}

}  // namespace
