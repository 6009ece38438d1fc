#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <string_view>

#include "tests/reference/identifiers.h"
#include "tests/support/guarded_pages.h"
#include "utils/internal/name_hash.h"
#include "utils/text/text.h"

namespace {

using kv::internal::ExtendNameHash;

std::int32_t ByteByByte(std::int32_t hash, const std::string& text) {
  for (const char byte : text) hash = kv::reference::NextHash(hash, byte);
  return hash;
}

std::int32_t AtOnce(std::int32_t hash, const std::string& text) {
  return ExtendNameHash(hash, text.data(), text.size());
}

std::string RandomText(std::mt19937& random, std::size_t size) {
  std::string text(size, '\0');
  for (char& byte : text) byte = static_cast<char>(random());
  return text;
}

// The sign bit is copied as the register is shifted: these are not registers of CRC-32.
TEST(NameHash, GivesTheKnownRegisters) {
  constexpr std::int32_t kSignAlone = INT32_MIN;
  EXPECT_EQ(AtOnce(0, ""), 0);
  EXPECT_EQ(AtOnce(0x1234567, ""), 0x1234567);
  EXPECT_EQ(AtOnce(0, "a"), 0x3AB551CE);
  EXPECT_EQ(AtOnce(kSignAlone, std::string(1, '\0')), static_cast<std::int32_t>(0xFF800000));
  EXPECT_EQ(AtOnce(kSignAlone, std::string(4, '\0')), 0x12477CDF);
  EXPECT_EQ(AtOnce(kSignAlone, std::string(8, '\0')), static_cast<std::int32_t>(0x905D9071));
  EXPECT_EQ(AtOnce(kSignAlone, std::string(16, '\0')), 0x714616E8);
}

// The step is linear, so its values on a basis of all registers and blocks fix it on all of them:
// zero, and each single bit of the register and of the block.
TEST(NameHash, IsTheLoopOverBytesOnABasis) {
  for (std::size_t size = 1; size <= 32; ++size) {
    SCOPED_TRACE(size);
    for (int registerBit = -1; registerBit < 32; ++registerBit) {
      const auto hash = static_cast<std::int32_t>(
          registerBit < 0 ? 0U : 1U << static_cast<unsigned>(registerBit));
      for (std::size_t bit = 0; bit <= size * 8; ++bit) {
        std::string block(size, '\0');
        if (bit > 0) block[(bit - 1) / 8] = static_cast<char>(1U << ((bit - 1) % 8));
        ASSERT_EQ(AtOnce(hash, block), ByteByByte(hash, block)) << registerBit << ' ' << bit;
      }
    }
  }
}

TEST(NameHash, IsTheLoopOverBytesForRandomTexts) {
  std::mt19937 random(314159);
  const std::string noise = RandomText(random, 1 << 16);
  for (int i = 0; i < 2'000'000; ++i) {
    const std::size_t size = random() % 100;
    const std::string text = noise.substr(random() % (noise.size() - size), size);
    const auto hash = static_cast<std::int32_t>(random());
    ASSERT_EQ(AtOnce(hash, text), ByteByByte(hash, text)) << hash << testing::PrintToString(text);
  }
}

TEST(NameHash, IsTheLoopOverBytesForEveryLengthAtEveryAlignment) {
  std::mt19937 random(271828);
  for (std::size_t size = 0; size <= 300; ++size) {
    SCOPED_TRACE(size);
    const std::string text = RandomText(random, size);
    const auto hash = static_cast<std::int32_t>(random());
    const std::int32_t expected = ByteByByte(hash, text);
    for (std::size_t offset = 0; offset < 64; ++offset) {
      alignas(64) char room[64 + 300] = {};
      text.copy(room + offset, size);
      ASSERT_EQ(ExtendNameHash(hash, room + offset, size), expected) << offset;
    }
  }
}

TEST(NameHash, GoesOnFromEveryPlaceOfAText) {
  std::mt19937 random(161803);
  for (std::size_t size = 0; size <= 300; ++size) {
    SCOPED_TRACE(size);
    const std::string text = RandomText(random, size);
    const std::int32_t expected = ByteByByte(0, text);
    for (std::size_t place = 0; place <= size; ++place) {
      const std::int32_t before = AtOnce(0, text.substr(0, place));
      ASSERT_EQ(AtOnce(before, text.substr(place)), expected) << place;
    }
  }
}

TEST(GetUniqueId, IsTheLoopOverBytesForRandomTexts) {
  std::mt19937 random(141421);
  std::string noise = RandomText(random, 1 << 16);
  for (char& byte : noise) byte = byte == '\0' ? '\xFF' : byte;
  for (int i = 0; i < 1'000'000; ++i) {
    const std::size_t size = 1 + random() % 100;
    const std::string text = noise.substr(random() % (noise.size() - size), size);
    ASSERT_EQ(GetUniqueID(text.c_str()), kv::reference::UniqueId(text.c_str()))
        << testing::PrintToString(text);
  }
}

TEST(GetUniqueId, ReadsNoPageBesideTheText) {
  const kv::test::GuardedPages pages(4096);
  std::mt19937 random(173205);
  for (std::size_t size = 0; size < 100; ++size) {
    SCOPED_TRACE(size);
    const std::string text(size, static_cast<char>('a' + random() % 26));
    const std::string_view withTerminator(text.c_str(), size + 1);
    const int expected = kv::reference::UniqueId(text.c_str());
    EXPECT_EQ(GetUniqueID(pages.PutFirst(withTerminator)), expected);
    EXPECT_EQ(GetUniqueID(pages.PutLast(withTerminator)), expected);
  }
}

}  // namespace
