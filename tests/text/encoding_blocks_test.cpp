// The counted converters take ASCII in blocks and other characters one at a time. What stands at
// the borders of the blocks, and how many of them there are, does not show.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "tests/reference/encoding.h"
#include "tests/text/encoding_comparison.h"
#include "tests/text/encoding_texts.h"
#include "utils/text/text.h"

namespace {

using kv::test::EncodingComparison;
using kv::test::RandomTexts;
using kv::test::TextKind;
using namespace std::string_literals;

// Rooms in which the text is converted at once, in parts and one character at a time.
template <typename Out, typename In>
void ExpectSameInSomeRooms(EncodingComparison<Out, In>& comparison,
                           const std::basic_string<In>& text) {
  const std::size_t needed = comparison.Needed(text);
  for (const std::size_t room : {3 * text.size(), needed, needed - std::min<std::size_t>(needed, 1),
                                 text.size(), text.size() / 2}) {
    comparison.ExpectSame(text, room, true);
    comparison.ExpectSame(text, room, false);
  }
}

// The sequence at every offset of ASCII texts of every length.
template <typename Out, typename In>
void CompareOffsets(EncodingComparison<Out, In> comparison,
                    const std::vector<std::basic_string<In>>& sequences) {
  constexpr std::size_t kLongest = 70;
  for (const auto& sequence : sequences) {
    SCOPED_TRACE(testing::PrintToString(sequence));
    for (std::size_t length = 0; length <= kLongest; ++length) {
      if (testing::Test::HasFailure()) return;
      for (std::size_t offset = 0; offset <= length; ++offset) {
        std::basic_string<In> text(length, static_cast<In>('a'));
        ExpectSameInSomeRooms(comparison, text.insert(offset, sequence));
      }
    }
  }
}

constexpr std::size_t kRoomForOffsets = 80;

TEST(EncodingBlocks, HoldASequenceAtEveryOffsetOfLatin1) {
  const std::vector<std::string> sequences = {"\xE9", "\xC3\xA9", "\xC3\xA9\xC2\x80", "\xC3"};
  CompareOffsets<char, char>({isolat1_to_utf8, kv::reference::Isolat1ToUtf8, kRoomForOffsets},
                             sequences);
  CompareOffsets<char, char>({utf8_to_isolat1, kv::reference::Utf8ToIsolat1, kRoomForOffsets},
                             sequences);
}

TEST(EncodingBlocks, HoldASequenceAtEveryOffsetOfUtf16) {
  CompareOffsets<char, wchar_t>(
      {utf16_to_utf8, kv::reference::Utf16ToUtf8, kRoomForOffsets},
      {L"\x80", L"\xE9\xE9", L"\x3042", L"\xD83D\xDE00", L"\xD800\xDC41", L"\xD83D", L"\xDE00"});
}

TEST(EncodingBlocks, HoldASequenceAtEveryOffsetOfUtf8) {
  CompareOffsets<wchar_t, char>(
      {utf8_to_utf16, kv::reference::Utf8ToUtf16, kRoomForOffsets},
      {"\xC3\xA9", "\xC3\xA9 \xC3\xA9", "\xE3\x81\x82", "\xF0\x9F\x98\x80", "\xC0\x80", "\xC3",
       "\xE3\x81", "\xF0\x9F\x98", "\x80", "\xF4\x90\x80\x80"});
}

template <typename Out, typename In>
void CompareBigTexts(EncodingComparison<Out, In> comparison,
                     const std::vector<TextKind<In>>& kinds) {
  RandomTexts<In> texts(7);
  for (const TextKind<In>& kind : kinds) {
    SCOPED_TRACE(kind.name);
    for (const std::size_t size : {1000U, 4095U, 100000U}) {
      ExpectSameInSomeRooms(comparison, texts.Text(kind, size));
    }
  }
}

constexpr std::size_t kRoomForBig = 100000;

TEST(EncodingBlocks, AreAsManyAsTheTextHas) {
  CompareBigTexts<char, char>({isolat1_to_utf8, kv::reference::Isolat1ToUtf8, kRoomForBig},
                              kv::test::Isolat1Kinds());
  CompareBigTexts<char, char>({utf8_to_isolat1, kv::reference::Utf8ToIsolat1, kRoomForBig},
                              kv::test::Isolat1Kinds());
  CompareBigTexts<char, wchar_t>({utf16_to_utf8, kv::reference::Utf16ToUtf8, kRoomForBig},
                                 kv::test::Utf16Kinds());
  CompareBigTexts<wchar_t, char>({utf8_to_utf16, kv::reference::Utf8ToUtf16, kRoomForBig},
                                 kv::test::Utf8Kinds());
}

// The result of a converter whose output begins in front of its input in the same memory.
std::string ConvertedInPlace(int (*convert)(char*, int&, const char*, int), const std::string& text,
                             std::size_t distance) {
  std::string memory = std::string(distance, '\0') + text;
  int outLen = static_cast<int>(memory.size());
  const int size =
      convert(memory.data(), outLen, memory.data() + distance, static_cast<int>(text.size()));
  return memory.substr(0, static_cast<std::size_t>(size));
}

TEST(EncodingBlocks, AreNotReadAgainInATextThatShrinksInItsPlace) {
  for (std::size_t size = 0; size < 100; ++size) {
    for (std::size_t offset = 0; offset <= size; ++offset) {
      std::string latin1(size, 'a');
      for (std::size_t i = 0; i < size; ++i) latin1[i] = static_cast<char>('a' + i % 26);
      std::string utf8 = latin1;
      utf8.insert(offset, "\xC3\xA9");
      latin1.insert(offset, "\xE9");
      for (const std::size_t distance : {0U, 1U, 3U, 16U}) {
        ASSERT_EQ(ConvertedInPlace(utf8_to_isolat1, utf8, distance), latin1) << distance;
      }
      for (const std::size_t distance : {1U, 3U, 16U}) {
        ASSERT_EQ(ConvertedInPlace(isolat1_to_utf8, latin1, distance), utf8) << distance;
      }
    }
  }
}

}  // namespace
