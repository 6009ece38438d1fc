#include "utils/internal/text_length.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "tests/support/guarded_pages.h"

namespace {

using kv::internal::IsKnownShort;
using kv::internal::TextLength;
using kv::test::GuardedPages;

constexpr std::size_t kLongest = 200;
constexpr std::size_t kAlignments = 64;

// A text of `length` at `place`, with neither NUL nor anything else of note around it.
void ExpectLength(char* place, std::size_t length) {
  std::memset(place, 'a', length);
  place[length] = '\0';
  EXPECT_EQ(TextLength(place), length);
  place[length] = 'a';
}

TEST(TextLength, FindsTheEndAtEveryAlignment) {
  alignas(kAlignments) char buffer[kAlignments + kLongest + 1];
  std::memset(buffer, 'a', sizeof buffer);
  for (std::size_t alignment = 0; alignment < kAlignments; ++alignment) {
    SCOPED_TRACE(alignment);
    for (std::size_t length = 0; length <= kLongest; ++length) {
      ExpectLength(buffer + alignment, length);
    }
  }
}

TEST(TextLength, LooksAtNothingInFrontOfTheText) {
  alignas(kAlignments) char buffer[kAlignments + kLongest + 1];
  for (std::size_t alignment = 0; alignment < kAlignments; ++alignment) {
    SCOPED_TRACE(alignment);
    for (std::size_t length = 0; length <= kLongest; ++length) {
      std::memset(buffer, '\0', sizeof buffer);
      std::memset(buffer + alignment, 0x80, length);
      EXPECT_EQ(TextLength(buffer + alignment), length);
    }
  }
}

TEST(TextLength, TakesEveryByteButNulForText) {
  char text[256];
  for (int byte = 1; byte < 256; ++byte) text[byte - 1] = static_cast<char>(byte);
  text[255] = '\0';
  EXPECT_EQ(TextLength(text), 255U);
}

TEST(TextLength, StaysInThePagesOfTheText) {
  const GuardedPages pages(1);
  std::fill(pages.Begin(), pages.End(), 'a');
  for (std::size_t length = 0; length <= kLongest; ++length) {
    SCOPED_TRACE(length);
    ExpectLength(pages.End() - length - 1, length);
    ExpectLength(pages.Begin(), length);
  }
}

// Seven bytes and the NUL are a short text. One that begins in the last seven bytes of its page is
// not known to be one.
TEST(KnownShort, IsATextOfLessThanEightBytesThatIsAllInItsPage) {
  constexpr char kBytes[] = {'\x01', 'a', '\x7F', '\x80', '\x81', '\xFF'};
  const GuardedPages pages(1);
  for (const char byte : kBytes) {
    for (std::size_t length = 0; length <= 16; ++length) {
      SCOPED_TRACE(testing::Message() << length << " times " << testing::PrintToString(byte));
      std::fill(pages.Begin(), pages.End(), byte);
      pages.Begin()[length] = '\0';
      EXPECT_EQ(IsKnownShort(pages.Begin()), length < 8);
      pages.End()[-1] = '\0';
      EXPECT_EQ(IsKnownShort(pages.End() - length - 1), length == 7);
    }
  }
}

}  // namespace
