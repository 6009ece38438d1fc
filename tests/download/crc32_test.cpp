#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <future>
#include <numeric>
#include <string>
#include <string_view>
#include <vector>

#include "utils/download/download.h"

namespace {

static_assert(sizeof(crc32) == 256 * sizeof(unsigned), "the table is all that an object holds");

std::string Repeated(char byte, std::size_t count) { return std::string(count, byte); }

std::string Ascending(std::size_t count) {
  std::string bytes(count, '\0');
  std::iota(bytes.begin(), bytes.end(), '\0');
  return bytes;
}

std::string Descending(std::size_t count) {
  std::string bytes = Ascending(count);
  std::reverse(bytes.begin(), bytes.end());
  return bytes;
}

// Bytes without a pattern, the same in every run.
std::string Noise(std::size_t count) {
  std::uint32_t state = 12345;
  std::string bytes(count, '\0');
  for (char& byte : bytes) {
    state = state * 1664525 + 1013904223;
    byte = static_cast<char>(state >> 24);
  }
  return bytes;
}

unsigned Checksum(std::string_view bytes) {
  return crc32().Get(bytes.data(), static_cast<int>(bytes.size()));
}

// The definition, bit by bit: the message as a polynomial over two elements, the low bit of each
// byte first, its first 32 bits inverted, times x^32, divided by the polynomial 0x04C11DB7; the
// remainder is inverted and its bits are reversed.
std::uint32_t RemainderOfDivision(std::string_view message) {
  constexpr std::uint32_t kPolynomial = 0x04C11DB7;
  const std::size_t bits = message.size() * 8;
  std::uint32_t remainder = 0;
  for (std::size_t i = 0; i < bits + 32; ++i) {
    const auto byte = i < bits ? static_cast<unsigned char>(message[i / 8]) : 0U;
    const bool isInverted = i < 32;
    const bool bit = (((byte >> (i % 8)) & 1) != 0) != isInverted;
    const bool carry = (remainder & 0x80000000) != 0;
    remainder = (remainder << 1) | (bit ? 1U : 0U);
    if (carry) remainder ^= kPolynomial;
  }
  std::uint32_t reversed = 0;
  for (int i = 0; i < 32; ++i) reversed |= ((remainder >> i) & 1) << (31 - i);
  return ~reversed;
}

// Values of zlib's crc32; the four of 32 bytes and that of nine stand in many descriptions of the
// algorithm.
const struct {
  std::string bytes;
  unsigned checksum;
} kKnownAnswers[] = {
    {"", 0},
    {"123456789", 0xCBF43926},
    {"a", 0xE8B7BE43},
    {"abc", 0x352441C2},
    {"The quick brown fox jumps over the lazy dog", 0x414FA339},
    {Repeated('\0', 1), 0xD202EF8D},
    {Repeated('\xFF', 1), 0xFF000000},
    {Repeated('\0', 32), 0x190A55AD},
    {Repeated('\xFF', 32), 0xFF6CAB0B},
    {Ascending(32), 0x91267E8A},
    {Descending(32), 0x9AB0EF72},
};

TEST(Crc32, GivesTheKnownAnswers) {
  for (const auto& row : kKnownAnswers) {
    SCOPED_TRACE(testing::PrintToString(row.bytes));
    EXPECT_EQ(Checksum(row.bytes), row.checksum);
    EXPECT_EQ(RemainderOfDivision(row.bytes), row.checksum) << "the yardstick of this file";
  }
}

TEST(Crc32, IsTheRemainderOfTheDivisionForEveryByte) {
  for (int byte = 0; byte < 256; ++byte) {
    SCOPED_TRACE(byte);
    for (const std::size_t count : {1U, 2U, 5U}) {
      const std::string bytes = Repeated(static_cast<char>(byte), count);
      EXPECT_EQ(Checksum(bytes), RemainderOfDivision(bytes));
    }
  }
}

TEST(Crc32, IsTheRemainderOfTheDivisionForEveryLength) {
  const std::string noise = Noise(600);
  for (std::size_t length = 0; length <= noise.size(); ++length) {
    SCOPED_TRACE(length);
    const std::string_view bytes = std::string_view(noise).substr(0, length);
    EXPECT_EQ(Checksum(bytes), RemainderOfDivision(bytes));
  }
}

TEST(Crc32, IsTheRemainderOfTheDivisionForLongData) {
  const std::string noise = Noise((1 << 20) + 1);
  for (const std::size_t length :
       {1023U, 1024U, 1025U, 4095U, 4097U, 65535U, 65536U, 65537U, (1U << 20) + 1}) {
    SCOPED_TRACE(length);
    const std::string_view bytes = std::string_view(noise).substr(0, length);
    EXPECT_EQ(Checksum(bytes), RemainderOfDivision(bytes));
  }
}

// The bytes around the data differ from one round to the other.
TEST(Crc32, ReadsTheDataAloneAtEveryAlignment) {
  constexpr std::size_t kRoom = 64;
  const std::string noise = Noise(200);
  for (std::size_t offset = 0; offset < kRoom; ++offset) {
    SCOPED_TRACE(offset);
    for (const std::size_t length : {1U, 3U, 4U, 7U, 8U, 15U, 16U, 17U, 31U, 33U, 63U, 65U, 200U}) {
      SCOPED_TRACE(length);
      const std::string_view bytes = std::string_view(noise).substr(0, length);
      const std::uint32_t expected = RemainderOfDivision(bytes);
      for (const char around : {'\0', '\xFF'}) {
        alignas(64) char room[kRoom + 200 + kRoom];
        std::fill(std::begin(room), std::end(room), around);
        std::copy(bytes.begin(), bytes.end(), room + offset);
        EXPECT_EQ(crc32().Get(room + offset, static_cast<int>(length)), expected);
      }
    }
  }
}

// The byte number i is i * i + i / 65536, of which 8 bits count. The value is Python's:
//   zlib.crc32(bytes((i * i + (i >> 16)) & 255 for i in range(100_000_000)))
TEST(Crc32, TakesAHundredMillionBytes) {
  std::string bytes(100'000'000, '\0');
  for (std::uint64_t i = 0; i < bytes.size(); ++i) {
    bytes[i] = static_cast<char>((i * i + (i >> 16)) & 255);
  }
  EXPECT_EQ(Checksum(bytes), 0x75E73EA3U);
}

TEST(Crc32, IsZeroWithoutData) {
  const crc32 calculator;
  EXPECT_EQ(calculator.Get("abc", 0), 0U);
  EXPECT_EQ(calculator.Get("abc", -1), 0U);
  EXPECT_EQ(calculator.Get("abc", -2147483647 - 1), 0U);
  EXPECT_EQ(calculator.Get(nullptr, 0), 0U);
  EXPECT_EQ(calculator.Get(nullptr, 3), 0U);
}

TEST(Crc32, KeepsNothingBetweenCalls) {
  const crc32 calculator;
  EXPECT_EQ(calculator.Get("abc", 3), 0x352441C2U);
  EXPECT_EQ(calculator.Get("123456789", 9), 0xCBF43926U);
  EXPECT_EQ(calculator.Get("abc", 3), 0x352441C2U);
  const crc32 copy = calculator;
  EXPECT_EQ(copy.Get("abc", 3), 0x352441C2U);
}

TEST(Crc32, ServesThreadsAtTheSameTime) {
  const crc32 calculator;
  const std::string noise = Noise(200'000);
  const auto work = [&calculator, &noise] {
    std::vector<unsigned> checksums;
    for (int length = 199'990; length < 200'000; ++length) {
      checksums.push_back(calculator.Get(noise.data(), length));
    }
    return checksums;
  };
  std::vector<std::future<std::vector<unsigned>>> others;
  for (int i = 0; i < 4; ++i) others.push_back(std::async(std::launch::async, work));
  const std::vector<unsigned> own = work();
  EXPECT_EQ(own.front(), RemainderOfDivision(std::string_view(noise).substr(0, 199'990)));
  for (auto& other : others) EXPECT_EQ(other.get(), own);
}

}  // namespace
