// The converters take runs of ASCII several characters at a time. Random texts, ASCII with other
// bytes strewn in, must give what the rules give when they are followed one unit at a time.
#include <gtest/gtest.h>

#include <cstddef>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/guarded_buffer.h"
#include "utils/text/text.h"

namespace {

using kv::test::GuardedBuffer;

constexpr int kTexts = 4000;
constexpr std::size_t kLongest = 48;

// A conversion in its plain form: appends every unit up to the end or the first fault, and is false
// for a fault. The room counts for utf8_to_isolat1 alone.
template <typename Out, typename In>
using Reference = bool (*)(const std::basic_string<In>& in, std::size_t room,
                           std::basic_string<Out>& out);

bool PlainLatin1ToUtf8(const std::string& in, std::size_t /*room*/, std::string& out) {
  for (const char c : in) {
    const int byte = static_cast<unsigned char>(c);
    if (byte < 128) {
      out += c;
    } else {
      out += static_cast<char>(192 + byte / 64);
      out += static_cast<char>(128 + byte % 64);
    }
  }
  return true;
}

bool PlainUtf8ToLatin1(const std::string& in, std::size_t room, std::string& out) {
  for (std::size_t i = 0; i < in.size(); ++i) {
    const int lead = static_cast<unsigned char>(in[i]);
    if (lead < 128) {
      out += in[i];
      continue;
    }
    if ((lead != 194 && lead != 195) || i + 1 == in.size()) return false;
    const int next = static_cast<unsigned char>(in[i + 1]);
    // Without room the next byte is read as a lead.
    if (out.size() < room) ++i;
    out += static_cast<char>((lead - 192) * 64 + next % 64);
  }
  return true;
}

bool PlainUtf16ToUtf8(const std::wstring& in, std::size_t /*room*/, std::string& out) {
  for (std::size_t i = 0; i < in.size(); ++i) {
    int c = in[i];
    if (c >= 0xD800 && c < 0xDC00) {
      if (++i == in.size() || in[i] < 0xDC00 || in[i] > 0xDFFF) return false;
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
  return true;
}

bool PlainUtf8ToUtf16(const std::string& in, std::size_t /*room*/, std::wstring& out) {
  for (std::size_t i = 0; i < in.size(); ++i) {
    int value = static_cast<unsigned char>(in[i]);
    int more = 0;
    if (value >= 128) {
      if (value < 192 || value >= 248) return false;
      more = value < 224 ? 1 : value < 240 ? 2 : 3;
      value %= more == 1 ? 32 : more == 2 ? 16 : 8;
    }
    for (; more > 0; --more) {
      if (++i == in.size()) return false;
      const int next = static_cast<unsigned char>(in[i]);
      if (next < 128 || next >= 192) return false;
      value = value * 64 + next % 64;
    }
    if (value >= 0x110000) return false;
    if (value < 0x10000) {
      out += static_cast<wchar_t>(value);
    } else {
      out += static_cast<wchar_t>(0xD800 + (value - 0x10000) / 1024);
      out += static_cast<wchar_t>(0xDC00 + (value - 0x10000) % 1024);
    }
  }
  return true;
}

// What is stored of the output: as much as fits, of a surrogate pair both units or none.
std::string Stored(const std::string& out, std::size_t room) { return out.substr(0, room); }

std::wstring Stored(const std::wstring& out, std::size_t room) {
  std::wstring stored = out.substr(0, room);
  const bool isCut = stored.size() < out.size();
  if (isCut && !stored.empty() && stored.back() >= 0xD800 && stored.back() < 0xDC00) {
    stored.pop_back();
  }
  return stored;
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

// How often each kind of result came up.
struct Tally {
  int whole = 0;
  int tooSmall = 0;
  int malformed = 0;
};

template <typename Out, typename In>
Tally CheckAgainst(Reference<Out, In> reference, int (*convert)(Out*, int&, const In*, int),
                   RandomTexts<In> texts) {
  Tally tally;
  for (int i = 0; i < kTexts && !testing::Test::HasFailure(); ++i) {
    const std::basic_string<In> in = texts.Next();
    SCOPED_TRACE(testing::PrintToString(in));
    const std::size_t room = texts.Below(3 * kLongest);
    std::basic_string<Out> expected;
    const bool isWellFormed = reference(in, room, expected);
    const int needed = static_cast<int>(expected.size());
    const bool isTooSmall = isWellFormed && expected.size() > room;

    GuardedBuffer<Out> buffer(room);
    int outLen = static_cast<int>(room);
    const int result = convert(buffer.Get(), outLen, in.data(), static_cast<int>(in.size()));
    buffer.ExpectHolds(Stored(expected, room));
    EXPECT_EQ(result, !isWellFormed ? -2 : isTooSmall ? -1 : needed);
    EXPECT_EQ(outLen, isTooSmall ? needed : static_cast<int>(room));
    ++(!isWellFormed ? tally.malformed : isTooSmall ? tally.tooSmall : tally.whole);
  }
  return tally;
}

TEST(EncodingCrossCheck, Isolat1ToUtf8) {
  const Tally tally = CheckAgainst<char, char>(PlainLatin1ToUtf8, isolat1_to_utf8,
                                               RandomTexts<char>({"\xE9", "\x80\xFF", "\xC3"}));
  EXPECT_GT(tally.whole, kTexts / 10);
  EXPECT_GT(tally.tooSmall, kTexts / 10);
}

TEST(EncodingCrossCheck, Utf8ToIsolat1) {
  const Tally tally =
      CheckAgainst<char, char>(PlainUtf8ToLatin1, utf8_to_isolat1,
                               RandomTexts<char>({"\xC3\xA9", "\xC2\x80", "\xC3z", "\xC3\xC2"}));
  EXPECT_GT(tally.whole, kTexts / 10);
  EXPECT_GT(tally.tooSmall, kTexts / 100);
  EXPECT_GT(tally.malformed, kTexts / 10);
}

TEST(EncodingCrossCheck, Utf16ToUtf8) {
  const Tally tally = CheckAgainst<char, wchar_t>(
      PlainUtf16ToUtf8, utf16_to_utf8,
      RandomTexts<wchar_t>({L"\xE9", L"\x7FF\x800", L"\x3042", L"\xD83D\xDE00", L"\xDC00"}));
  EXPECT_GT(tally.whole, kTexts / 10);
  EXPECT_GT(tally.tooSmall, kTexts / 10);
  EXPECT_GT(tally.malformed, kTexts / 100);
}

TEST(EncodingCrossCheck, Utf8ToUtf16) {
  const Tally tally =
      CheckAgainst<wchar_t, char>(PlainUtf8ToUtf16, utf8_to_utf16,
                                  RandomTexts<char>({"\xC3\xA9", "\xE3\x81\x82", "\xF0\x9F\x98\x80",
                                                     "\xC0\x80", "\xF0\x80\x80\x80"}));
  EXPECT_GT(tally.whole, kTexts / 10);
  EXPECT_GT(tally.tooSmall, kTexts / 100);
  EXPECT_GT(tally.malformed, kTexts / 100);
}

TEST(EncodingCrossCheck, Utf8ToUtf16WithFaults) {
  const Tally tally = CheckAgainst<wchar_t, char>(
      PlainUtf8ToUtf16, utf8_to_utf16,
      RandomTexts<char>({"\xC3\xA9", "\xE3\x81\x82", "\x80", "\xC3", "\xE3\x81", "\xF8", "\xF5"}));
  EXPECT_GT(tally.whole, kTexts / 100);
  EXPECT_GT(tally.malformed, kTexts / 10);
}

}  // namespace
