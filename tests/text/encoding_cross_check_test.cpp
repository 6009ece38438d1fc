// The counted converters give what their defining forms give, for texts of every kind in every
// room.
#include <gtest/gtest.h>

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

constexpr std::size_t kLongest = 80;

// Every length up to kLongest, and those around a longer one.
std::vector<std::size_t> Lengths(std::size_t longer) {
  std::vector<std::size_t> lengths;
  for (std::size_t length = 0; length <= kLongest; ++length) lengths.push_back(length);
  for (std::size_t length = longer - 2; length <= longer + 2; ++length) lengths.push_back(length);
  return lengths;
}

// The text in every room from none to two units more than it needs, whether it is well-formed or
// not.
template <typename Out, typename In>
void ExpectSameInEveryRoom(EncodingComparison<Out, In>& comparison,
                           const std::basic_string<In>& text) {
  const std::size_t needed = comparison.Needed(text);
  for (std::size_t room = 0; room <= needed + 2; ++room) {
    comparison.ExpectSame(text, room, room % 2 == 0);
  }
}

template <typename Out, typename In>
void CompareKinds(EncodingComparison<Out, In> comparison, const std::vector<TextKind<In>>& kinds) {
  RandomTexts<In> texts;
  for (const TextKind<In>& kind : kinds) {
    SCOPED_TRACE(kind.name);
    for (const std::size_t length : Lengths(256)) {
      if (testing::Test::HasFailure()) return;
      for (int i = 0; i < 3; ++i) ExpectSameInEveryRoom(comparison, texts.Text(kind, length));
    }
  }
  SCOPED_TRACE("any units");
  for (const std::size_t length : Lengths(128)) {
    if (testing::Test::HasFailure()) return;
    ExpectSameInEveryRoom(comparison, texts.AnyUnits(length));
  }
}

constexpr std::size_t kRoomForLongest = 300;

TEST(EncodingCrossCheck, Isolat1ToUtf8) {
  CompareKinds<char, char>({isolat1_to_utf8, kv::reference::Isolat1ToUtf8, kRoomForLongest},
                           kv::test::Isolat1Kinds());
}

TEST(EncodingCrossCheck, Utf8ToIsolat1) {
  CompareKinds<char, char>({utf8_to_isolat1, kv::reference::Utf8ToIsolat1, kRoomForLongest},
                           kv::test::Isolat1Kinds());
}

TEST(EncodingCrossCheck, Utf16ToUtf8) {
  CompareKinds<char, wchar_t>({utf16_to_utf8, kv::reference::Utf16ToUtf8, kRoomForLongest},
                              kv::test::Utf16Kinds());
}

TEST(EncodingCrossCheck, Utf8ToUtf16) {
  CompareKinds<wchar_t, char>({utf8_to_utf16, kv::reference::Utf8ToUtf16, kRoomForLongest},
                              kv::test::Utf8Kinds());
}

}  // namespace
