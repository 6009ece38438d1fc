// The counted converters: each text runs over every capacity from 0 to one more than it needs, with
// guard units behind the output.
#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/guarded_buffer.h"
#include "utils/text/text.h"

namespace {

using kv::test::GuardedBuffer;
using namespace std::string_literals;

// A converter as a template parameter.
template <typename Out, typename In>
using Converter = int (*)(Out*, int&, const In*, int);

// Well-formed input and its output, in the pieces that are stored whole or not at all.
template <typename Out, typename In>
struct WellFormed {
  std::basic_string<In> in;
  std::vector<std::basic_string<Out>> pieces;
};

template <typename Out, typename In>
void CheckAtCapacity(Converter<Out, In> convert, const WellFormed<Out, In>& row, int capacity) {
  SCOPED_TRACE(testing::Message() << "capacity " << capacity);
  std::basic_string<Out> stored;
  int needed = 0;
  for (const auto& piece : row.pieces) {
    const int size = static_cast<int>(piece.size());
    if (needed + size <= capacity) stored += piece;
    needed += size;
  }
  GuardedBuffer<Out> buffer(static_cast<std::size_t>(capacity));
  int outLen = capacity;
  const int result = convert(buffer.Get(), outLen, row.in.data(), static_cast<int>(row.in.size()));
  buffer.ExpectHolds(stored);
  EXPECT_EQ(result, needed <= capacity ? needed : -1);
  EXPECT_EQ(outLen, needed <= capacity ? capacity : needed);
}

template <typename Out, typename In>
void CheckMeasuring(Converter<Out, In> convert, const WellFormed<Out, In>& row, int needed) {
  for (const int capacity : {0, 1, INT_MAX, -1, INT_MIN}) {
    SCOPED_TRACE(testing::Message() << "null output, capacity " << capacity);
    int outLen = capacity;
    const int result = convert(nullptr, outLen, row.in.data(), static_cast<int>(row.in.size()));
    EXPECT_EQ(result, needed == 0 ? 0 : -1);
    EXPECT_EQ(outLen, needed == 0 ? capacity : needed);
  }
}

template <typename Out, typename In>
void CheckWellFormed(Converter<Out, In> convert, const std::vector<WellFormed<Out, In>>& rows) {
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.in));
    int needed = 0;
    for (const auto& piece : row.pieces) needed += static_cast<int>(piece.size());
    for (int capacity = 0; capacity <= needed + 1; ++capacity) {
      CheckAtCapacity(convert, row, capacity);
    }
    CheckMeasuring(convert, row, needed);
  }
}

// Inputs that hold nothing, whatever the output.
template <typename Out, typename In>
void CheckEmptyInputs(Converter<Out, In> convert) {
  const In text[] = {'a', 'b', 0};
  constexpr int kRoom = 100;
  GuardedBuffer<Out> buffer(kRoom);
  int outLen = kRoom;
  for (const int length : {0, -1, INT_MIN}) {
    EXPECT_EQ(convert(buffer.Get(), outLen, text, length), 0);
    EXPECT_EQ(convert(buffer.Get(), outLen, nullptr, length), 0);
  }
  for (const int length : {1, 2, 16, 100}) {
    EXPECT_EQ(convert(buffer.Get(), outLen, nullptr, length), 0);
  }
  EXPECT_EQ(outLen, kRoom);
  buffer.ExpectHolds({});
}

// A capacity below 0 is no room, also with an output.
template <typename Out, typename In>
void CheckNegativeCapacity(Converter<Out, In> convert) {
  for (const int length : {1, 2, 16, 100}) {
    SCOPED_TRACE(length);
    const std::basic_string<In> text(static_cast<std::size_t>(length), static_cast<In>('a'));
    for (const int capacity : {-1, -5, INT_MIN}) {
      GuardedBuffer<Out> buffer(text.size());
      int outLen = capacity;
      EXPECT_EQ(convert(buffer.Get(), outLen, text.data(), length), -1);
      EXPECT_EQ(outLen, length);
      buffer.ExpectHolds({});
    }
  }
}

// Malformed input with what is stored of it at a capacity.
template <typename Out, typename In>
struct Malformed {
  std::basic_string<In> in;
  int capacity;
  std::basic_string<Out> stored;
};

template <typename Out, typename In>
void CheckMalformed(Converter<Out, In> convert, const std::vector<Malformed<Out, In>>& rows) {
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.in));
    SCOPED_TRACE(testing::Message() << "capacity " << row.capacity);
    GuardedBuffer<Out> buffer(static_cast<std::size_t>(row.capacity));
    int outLen = row.capacity;
    EXPECT_EQ(convert(buffer.Get(), outLen, row.in.data(), static_cast<int>(row.in.size())), -2);
    EXPECT_EQ(outLen, row.capacity);
    buffer.ExpectHolds(row.stored);
  }
}

// ASCII texts around the lengths at which a converter takes its short way.
template <typename Out, typename In>
std::vector<WellFormed<Out, In>> AsciiTexts() {
  std::vector<WellFormed<Out, In>> rows;
  for (const std::string_view text :
       {"", "a", "\x7F", "1234567", "12345678", "123456789", "C:\\Users\\me", "123456789012345",
        "1234567890123456", "12345678901234567", "The quick brown fox jumps over the dog"}) {
    WellFormed<Out, In> row{{text.begin(), text.end()}, {}};
    for (const char c : text) row.pieces.push_back({static_cast<Out>(c)});
    rows.push_back(row);
  }
  return rows;
}

TEST(Isolat1ToUtf8, MakesTwoBytesOfEachHighByte) {
  CheckWellFormed<char, char>(isolat1_to_utf8, AsciiTexts<char, char>());
  CheckWellFormed<char, char>(
      isolat1_to_utf8,
      {{"\x80", {"\xC2", "\x80"}},
       {"\xBF\xC0", {"\xC2", "\xBF", "\xC3", "\x80"}},
       {"\xE9", {"\xC3", "\xA9"}},
       {"\xFF", {"\xC3", "\xBF"}},
       {"a\xE9z", {"a", "\xC3", "\xA9", "z"}},
       {"\0a\0"s, {"\0"s, "a", "\0"s}},
       {"1234567\xE9", {"1", "2", "3", "4", "5", "6", "7", "\xC3", "\xA9"}},
       {"12345678\xE9", {"1", "2", "3", "4", "5", "6", "7", "8", "\xC3", "\xA9"}}});
}

TEST(Isolat1ToUtf8, StoresTheFirstOfTwoBytesAlone) {
  GuardedBuffer<char> buffer(1);
  int outLen = 1;
  EXPECT_EQ(isolat1_to_utf8(buffer.Get(), outLen, "\xE9", 1), -1);
  EXPECT_EQ(outLen, 2);
  buffer.ExpectHolds("\xC3");
}

TEST(Isolat1ToUtf8, TakesEmptyInputAndNoRoom) {
  CheckEmptyInputs<char, char>(isolat1_to_utf8);
  CheckNegativeCapacity<char, char>(isolat1_to_utf8);
}

TEST(Utf8ToIsolat1, MakesOneByteOfEachPair) {
  const struct {
    std::string in;
    std::string out;
  } rows[] = {
      {"", ""},
      {"abc", "abc"},
      {"\xC3\xA9", "\xE9"},
      {"\xC2\x80\xC2\xBF\xC3\x80\xC3\xBF", "\x80\xBF\xC0\xFF"},
      {"a\xC3\xA9z", "a\xE9z"},
      {"12345678\xC3\xA9"
       "12345678",
       "12345678\xE9"
       "12345678"},
      // The second byte is not checked.
      {"\xC3\x41", "\xC1"},
      {"\xC2\xFF", "\xBF"},
      {"\xC3\xC3", "\xC3"},
      {"\xC2\0"s, "\x80"},
      {"a\0b"s, "a\0b"s},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.in));
    for (const std::size_t room : {row.out.size(), row.out.size() + 1}) {
      GuardedBuffer<char> buffer(room);
      int outLen = static_cast<int>(room);
      EXPECT_EQ(
          utf8_to_isolat1(buffer.Get(), outLen, row.in.data(), static_cast<int>(row.in.size())),
          static_cast<int>(row.out.size()));
      EXPECT_EQ(outLen, static_cast<int>(room));
      buffer.ExpectHolds(row.out);
    }
  }
}

TEST(Utf8ToIsolat1, CountsAsciiThatDoesNotFit) {
  CheckWellFormed<char, char>(utf8_to_isolat1, AsciiTexts<char, char>());
  CheckNegativeCapacity<char, char>(utf8_to_isolat1);
  CheckEmptyInputs<char, char>(utf8_to_isolat1);
}

TEST(Utf8ToIsolat1, ReportsAHighCharacterWithoutRoomAsMalformed) {
  CheckMalformed<char, char>(utf8_to_isolat1, {{"\xC3\xA9", 0, ""},
                                               {"a\xC3\xA9", 1, "a"},
                                               {"a\xC3\xA9", 0, ""},
                                               {"\xC3\xA9\xC3\xA8", 1, "\xE9"},
                                               {"abc\xC2\xA0z", 2, "ab"},
                                               {"12345678\xC3\xA9", 8, "12345678"}});
}

TEST(Utf8ToIsolat1, ReadsTheByteBehindALeadWithoutRoomAsTheNextLead) {
  const struct {
    std::string in;
    int capacity;
    int needed;
    std::string stored;
  } rows[] = {
      {"\xC3\x41", 0, 2, ""},
      {"a\xC2z", 1, 3, "a"},
      {"\xC3\xC3\x41", 0, 3, ""},
      {"\xC3\xA9\xC3\x41", 1, 3, "\xE9"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.in));
    GuardedBuffer<char> buffer(static_cast<std::size_t>(row.capacity));
    int outLen = row.capacity;
    EXPECT_EQ(utf8_to_isolat1(buffer.Get(), outLen, row.in.data(), static_cast<int>(row.in.size())),
              -1);
    EXPECT_EQ(outLen, row.needed);
    buffer.ExpectHolds(row.stored);
  }
}

TEST(Utf8ToIsolat1, RefusesEveryOtherByte) {
  for (int byte = 0x80; byte <= 0xFF; ++byte) {
    if (byte == 0xC2 || byte == 0xC3) continue;
    SCOPED_TRACE(byte);
    for (const int capacity : {0, 1, 2, 10}) {
      const std::string in = "a" + std::string(1, static_cast<char>(byte)) + "\x80\x80\x80";
      CheckMalformed<char, char>(utf8_to_isolat1, {{in, capacity, capacity == 0 ? "" : "a"}});
    }
  }
  CheckMalformed<char, char>(utf8_to_isolat1, {{"\xE2\x82\xAC", 0, ""},
                                               {"\xE2\x82\xAC", 1, ""},
                                               {"\xE2\x82\xAC", 10, ""},
                                               {"\xC3", 0, ""},
                                               {"\xC3", 5, ""},
                                               {"12345678\xC2", 10, "12345678"}});
}

TEST(Utf16ToUtf8, EncodesAtMostThreeBytesACharacter) {
  CheckWellFormed<char, wchar_t>(utf16_to_utf8, AsciiTexts<char, wchar_t>());
  CheckWellFormed<char, wchar_t>(
      utf16_to_utf8, {{L"\x80", {"\xC2", "\x80"}},
                      {L"\xE9", {"\xC3", "\xA9"}},
                      {L"\x7FF", {"\xDF", "\xBF"}},
                      {L"\x800", {"\xE0", "\xA0", "\x80"}},
                      {L"\x20AC", {"\xE2", "\x82", "\xAC"}},
                      {L"\xFFFF", {"\xEF", "\xBF", "\xBF"}},
                      {L"a\x20AC"
                       L"b",
                       {"a", "\xE2", "\x82", "\xAC", "b"}},
                      {L"\0a\0"s, {"\0"s, "a", "\0"s}},
                      {L"1234567\xE9", {"1", "2", "3", "4", "5", "6", "7", "\xC3", "\xA9"}},
                      {L"\x100"
                       L"2345678\xFF01",
                       {"\xC4", "\x80", "2", "3", "4", "5", "6", "7", "8", "\xEF", "\xBC", "\x81"}},
                      // A lone low surrogate is an ordinary unit.
                      {L"\xDC00", {"\xED", "\xB0", "\x80"}},
                      {L"\xDFFF"
                       L"a",
                       {"\xED", "\xBF", "\xBF", "a"}}});
}

TEST(Utf16ToUtf8, CombinesPairsInSixteenBits) {
  CheckWellFormed<char, wchar_t>(utf16_to_utf8,
                                 {{L"\xD83D\xDE00", {"\xEF", "\x98", "\x80"}},  // U+F600
                                  {L"\xD800\xDC00", {"\0"s}},                   // U+0000
                                  {L"\xD800\xDC7F", {"\x7F"}},                  // U+007F
                                  {L"\xD800\xDC80", {"\xC2", "\x80"}},          // U+0080
                                  {L"\xD801\xDFFF", {"\xDF", "\xBF"}},          // U+07FF
                                  {L"\xD802\xDC00", {"\xE0", "\xA0", "\x80"}},  // U+0800
                                  {L"\xDBFF\xDFFF", {"\xEF", "\xBF", "\xBF"}},  // U+FFFF
                                  {L"a\xD83D\xDE00"
                                   L"b",
                                   {"a", "\xEF", "\x98", "\x80", "b"}}});
}

TEST(Utf16ToUtf8, RefusesAHighSurrogateAlone) {
  CheckMalformed<char, wchar_t>(utf16_to_utf8, {{L"\xD83D", 9, ""},
                                                {L"\xD83D", 0, ""},
                                                {L"ab\xD800", 9, "ab"},
                                                {L"ab\xD800", 1, "a"},
                                                {L"\xD83D"
                                                 L"a",
                                                 9, ""},
                                                {L"\xDBFF\xD800\xDC00", 9, ""},
                                                {L"\xE9\xDBFF\xE000", 9, "\xC3\xA9"},
                                                {L"12345678\xD800", 9, "12345678"}});
}

TEST(Utf16ToUtf8, TakesEmptyInputAndNoRoom) {
  CheckEmptyInputs<char, wchar_t>(utf16_to_utf8);
  CheckNegativeCapacity<char, wchar_t>(utf16_to_utf8);
}

TEST(Utf8ToUtf16, DecodesSequencesOfOneToFourBytes) {
  CheckWellFormed<wchar_t, char>(utf8_to_utf16, AsciiTexts<wchar_t, char>());
  CheckWellFormed<wchar_t, char>(
      utf8_to_utf16, {{"\xC2\x80", {L"\x80"}},
                      {"\xC3\xA9", {L"\xE9"}},
                      {"\xDF\xBF", {L"\x7FF"}},
                      {"\xE0\xA0\x80", {L"\x800"}},
                      {"\xE2\x82\xAC", {L"\x20AC"}},
                      {"\xEF\xBF\xBF", {L"\xFFFF"}},
                      {"\0a\0"s, {L"\0"s, L"a", L"\0"s}},
                      {"a\xC3\xA9z", {L"a", L"\xE9", L"z"}},
                      {"1234567\xC3\xA9", {L"1", L"2", L"3", L"4", L"5", L"6", L"7", L"\xE9"}},
                      {"\xC3\xA9"
                       "12345678",
                       {L"\xE9", L"1", L"2", L"3", L"4", L"5", L"6", L"7", L"8"}}});
}

TEST(Utf8ToUtf16, StoresASurrogatePairWholeOrNotAtAll) {
  CheckWellFormed<wchar_t, char>(
      utf8_to_utf16, {{"\xF0\x9F\x98\x80", {L"\xD83D\xDE00"}},
                      {"\xF0\x90\x80\x80", {L"\xD800\xDC00"}},
                      {"\xF4\x8F\xBF\xBF", {L"\xDBFF\xDFFF"}},
                      {"a\xF0\x9F\x98\x80"
                       "b",
                       {L"a", L"\xD83D\xDE00", L"b"}},
                      {"\xF0\x9F\x98\x80\xF0\x90\x80\x80", {L"\xD83D\xDE00", L"\xD800\xDC00"}}});
}

TEST(Utf8ToUtf16, AcceptsOverlongFormsAndEncodedSurrogates) {
  CheckWellFormed<wchar_t, char>(utf8_to_utf16, {{"\xC0\x80", {L"\0"s}},
                                                 {"\xC1\xBF", {L"\x7F"}},
                                                 {"\xE0\x80\x80", {L"\0"s}},
                                                 {"\xE0\x9F\xBF", {L"\x7FF"}},
                                                 {"\xF0\x80\x80\x80", {L"\0"s}},
                                                 {"\xF0\x8F\xBF\xBF", {L"\xFFFF"}},
                                                 {"\xED\xA0\x80", {L"\xD800"}},
                                                 {"\xED\xBF\xBF", {L"\xDFFF"}}});
}

TEST(Utf8ToUtf16, RefusesBytesThatLeadNothing) {
  for (int byte = 0x80; byte <= 0xFF; ++byte) {
    if (byte >= 0xC0 && byte <= 0xF7) continue;
    SCOPED_TRACE(byte);
    const std::string lead(1, static_cast<char>(byte));
    CheckMalformed<wchar_t, char>(utf8_to_utf16, {{lead, 9, L""},
                                                  {lead + "\x80\x80\x80\x80\x80", 9, L""},
                                                  {"ab" + lead + "c", 9, L"ab"},
                                                  {"ab" + lead + "c", 1, L"a"},
                                                  {"12345678" + lead, 0, L""},
                                                  {"1234567" + lead + "2345678", 20, L"1234567"}});
  }
}

TEST(Utf8ToUtf16, RefusesMissingContinuationBytes) {
  for (const std::string sequence : {"\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"}) {
    for (std::size_t length = 1; length < sequence.size(); ++length) {
      const std::string cut = sequence.substr(0, length);
      CheckMalformed<wchar_t, char>(utf8_to_utf16, {{cut, 9, L""},
                                                    {"ab" + cut, 9, L"ab"},
                                                    {"ab" + cut, 2, L"ab"},
                                                    {"ab" + cut, 0, L""},
                                                    {cut + "a12345678", 9, L""},
                                                    {cut + "\xC3\xA9\xC3\xA9", 9, L""},
                                                    {cut + "\0\0\0"s, 9, L""}});
    }
  }
}

TEST(Utf8ToUtf16, ReadsNoContinuationBehindTheEnd) {
  GuardedBuffer<wchar_t> buffer(4);
  int outLen = 4;
  EXPECT_EQ(utf8_to_utf16(buffer.Get(), outLen, "a\xC3\xA9", 2), -2);
  buffer.ExpectHolds(L"a");
}

TEST(Utf8ToUtf16, RefusesValuesBeyondUnicode) {
  CheckMalformed<wchar_t, char>(utf8_to_utf16, {{"\xF4\x90\x80\x80", 9, L""},
                                                {"\xF5\x80\x80\x80", 9, L""},
                                                {"\xF7\xBF\xBF\xBF", 9, L""},
                                                {"a\xF4\x90\x80\x80", 0, L""}});
}

TEST(Utf8ToUtf16, TakesEmptyInputAndNoRoom) {
  CheckEmptyInputs<wchar_t, char>(utf8_to_utf16);
  CheckNegativeCapacity<wchar_t, char>(utf8_to_utf16);
}

}  // namespace
