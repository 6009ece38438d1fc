#include "utils/download/crc32_forms.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>

#include "tests/reference/crc32.h"
#include "tests/support/guarded_pages.h"
#include "utils/download/crc32_folding.h"
#include "utils/download/download.h"
#include "utils/internal/processor.h"

namespace {

std::uint32_t ExtendByGet(std::uint32_t, const unsigned char* data, std::size_t size) {
  return ~crc32().Get(data, static_cast<int>(size));
}

struct Form {
  const char* name;
  std::uint32_t (*extend)(std::uint32_t value, const unsigned char* data, std::size_t size);
  bool kv::internal::Processor::*needs = nullptr;  // what not every processor offers
};

const Form kForms[] = {
    {"Slicing", kv::internal::ExtendCrc32BySlicing},
    {"With128Bits", kv::internal::ExtendCrc32By128Bits, &kv::internal::Processor::carryless128},
    {"With512Bits", kv::internal::ExtendCrc32By512Bits, &kv::internal::Processor::carryless512},
    {"Get", ExtendByGet},
};

class Crc32Form : public testing::TestWithParam<Form> {
 protected:
  void SetUp() override {
    const auto needs = GetParam().needs;
    if (needs != nullptr && !(kv::internal::g_processor.*needs))
      GTEST_SKIP() << "this processor lacks the instructions";
  }

  static std::uint32_t Extend(std::uint32_t value, const char* data, std::size_t size) {
    return GetParam().extend(value, reinterpret_cast<const unsigned char*>(data), size);
  }
  static std::uint32_t Checksum(const char* data, std::size_t size) {
    return ~Extend(0xFFFFFFFF, data, size);
  }
  static std::uint32_t Checksum(const std::string& bytes) {
    return Checksum(bytes.data(), bytes.size());
  }
};

std::string Noise(std::size_t size, unsigned seed) {
  std::mt19937 random(seed);
  std::string noise(size, '\0');
  for (char& byte : noise) byte = static_cast<char>(random() >> 24);
  return noise;
}

constexpr std::size_t kLongest = 4096;

// The values are Python's: zlib.crc32(bytes((i * i + (i >> 8)) & 255 for i in range(size))).
TEST_P(Crc32Form, GivesTheKnownAnswers) {
  const struct {
    std::size_t size;
    std::uint32_t checksum;
  } rows[] = {
      {16, 0xB5CCDD34},   {31, 0x80C74060},   {64, 0x29DB5F86},
      {100, 0x23BAA30D},  {255, 0x768CA2D5},  {256, 0x53CA75E2},
      {1000, 0x932BF7A0}, {4096, 0x43F7585D}, {65536, 0x6530897E},
  };
  EXPECT_EQ(Checksum(""), 0U);
  EXPECT_EQ(Checksum("123456789"), 0xCBF43926);
  EXPECT_EQ(Checksum("The quick brown fox jumps over the lazy dog"), 0x414FA339U);
  for (const auto& row : rows) {
    SCOPED_TRACE(row.size);
    std::string bytes(row.size, '\0');
    for (std::size_t i = 0; i < row.size; ++i) bytes[i] = static_cast<char>(i * i + (i >> 8));
    EXPECT_EQ(Checksum(bytes), row.checksum);
  }
}

TEST_P(Crc32Form, IsTheLoopOverBytesForEveryLengthAtEveryAlignment) {
  alignas(64) static char room[64 + kLongest];
  Noise(sizeof room, 1).copy(room, sizeof room);
  for (std::size_t offset = 0; offset < 64; ++offset) {
    SCOPED_TRACE(offset);
    kv::reference::Crc32Register expected;
    for (std::size_t size = 0; size <= kLongest; ++size) {
      ASSERT_EQ(Checksum(room + offset, size), expected.Checksum()) << size;
      if (size < kLongest) expected.Take(room[offset + size]);
    }
  }
}

TEST_P(Crc32Form, ReadsNothingBesideTheData) {
  const kv::test::GuardedPages pages(kLongest);
  const std::string noise = Noise(kLongest, 2);
  for (std::size_t size = 0; size <= kLongest; ++size) {
    SCOPED_TRACE(size);
    const std::string_view bytes = std::string_view(noise).substr(0, size);
    const std::uint32_t expected = kv::reference::Crc32(bytes.data(), size);
    ASSERT_EQ(Checksum(pages.PutFirst(bytes), size), expected);
    ASSERT_EQ(Checksum(pages.PutLast(bytes), size), expected);
  }
}

TEST_P(Crc32Form, IsTheLoopOverBytesForLongData) {
  const std::string noise = Noise(1 << 22, 3);
  std::mt19937 random(4);
  for (int i = 0; i < 60; ++i) {
    const std::size_t size = random() % (1U << 20);
    const char* const data = noise.data() + random() % (noise.size() - size);
    SCOPED_TRACE(testing::Message() << data - noise.data() << ' ' << size);
    ASSERT_EQ(Checksum(data, size), kv::reference::Crc32(data, size));
  }
}

// Where a form begins to treat its data otherwise, by their size: at some tens of thousands of
// bytes, and at 8 MiB.
TEST_P(Crc32Form, IsTheLoopOverBytesForLengthsOnBothSidesOfALimit) {
  const struct {
    std::size_t first;
    std::size_t last;
    std::size_t step;
  } rows[] = {{18'000, 24'000, 1}, {(8U << 20) - 600, (8U << 20) + 1200, 150}};
  const std::string noise = Noise(9 << 20, 7);
  for (const auto& row : rows) {
    kv::reference::Crc32Register expected;
    std::size_t taken = 0;
    for (std::size_t size = row.first; size <= row.last; size += row.step) {
      for (; taken < size; ++taken) expected.Take(noise[taken]);
      ASSERT_EQ(Checksum(noise.data(), size), expected.Checksum()) << size;
    }
  }
}

std::string NameOf(const testing::TestParamInfo<Form>& info) { return info.param.name; }

INSTANTIATE_TEST_SUITE_P(Each, Crc32Form, testing::ValuesIn(kForms), NameOf);

// Get always begins anew.
class Crc32Continuation : public Crc32Form {};

TEST_P(Crc32Continuation, GoesOnFromEveryRegister) {
  std::mt19937 random(5);
  const std::string noise = Noise(1 << 16, 6);
  for (int i = 0; i < 20'000; ++i) {
    const std::size_t size = random() % 1000;
    const std::size_t place = random() % (size + 1);
    const char* const data = noise.data() + random() % (noise.size() - size);
    const std::uint32_t value = random();
    SCOPED_TRACE(testing::Message() << value << ' ' << data - noise.data() << ' ' << size);
    kv::reference::Crc32Register expected(value);
    for (std::size_t j = 0; j < size; ++j) expected.Take(data[j]);
    ASSERT_EQ(~Extend(value, data, size), expected.Checksum());
    const std::uint32_t before = Extend(value, data, place);
    ASSERT_EQ(~Extend(before, data + place, size - place), expected.Checksum()) << place;
  }
}

INSTANTIATE_TEST_SUITE_P(Each, Crc32Continuation, testing::ValuesIn(kForms, kForms + 3), NameOf);

// Remainders of the division of powers of x by 0x104C11DB7, their bits reversed. Those of 96, 160,
// 480 and 544 are the constants of "Fast CRC Computation for Generic Polynomials Using PCLMULQDQ
// Instruction" (Gopal and others, 2009), which stand there one place further up.
TEST(Crc32Folding, KnowsThePowersOfX) {
  using kv::internal::PowerOfX;
  EXPECT_EQ(PowerOfX(0), 0x80000000U);
  EXPECT_EQ(PowerOfX(1), 0x40000000U);
  EXPECT_EQ(PowerOfX(31), 0x00000001U);
  EXPECT_EQ(PowerOfX(32), 0xEDB88320U);
  EXPECT_EQ(PowerOfX(96), 0x6655004FU);
  EXPECT_EQ(PowerOfX(127), 0x9BA54C6FU);
  EXPECT_EQ(PowerOfX(160), 0xBA8CCBE8U);
  EXPECT_EQ(PowerOfX(191), 0x65673B46U);
  EXPECT_EQ(PowerOfX(480), 0xE3720ACBU);
  EXPECT_EQ(PowerOfX(544), 0xAA2215EAU);
  EXPECT_EQ(PowerOfX(2047), 0x03F9F863U);
  EXPECT_EQ(PowerOfX(2111), 0x7CC8E1E7U);
}

// y^145 + y^183 + y^211 + y^300 is 1, y being x^-512: the distances in lines that the form with 512
// bits adds a line to. Both sides are multiplied by x^(512 * 300), so that no exponent is negative.
TEST(Crc32Folding, MovesALineOntoFourOthersWithTheSameRemainder) {
  constexpr std::size_t kLine = 512;
  std::uint32_t sum = 0;
  for (const std::size_t lines : {145U, 183U, 211U, 300U})
    sum ^= kv::internal::PowerOfX((300 - lines) * kLine);
  EXPECT_EQ(sum, kv::internal::PowerOfX(300 * kLine));
}

}  // namespace
