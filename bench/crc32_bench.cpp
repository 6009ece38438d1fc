// Checksums of data in memory.
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "bench/support/comparison.h"
#include "bench/support/main.h"
#include "bench/support/memory.h"
#include "bench/support/opaque.h"
#include "tests/reference/crc32.h"
#include "utils/download/crc32_forms.h"
#include "utils/download/download.h"
#include "utils/internal/processor.h"

// zlib's, whose header has a function of the name of the class.
extern "C" unsigned long crc32_z(unsigned long checksum, const unsigned char* data,
                                 unsigned long long size);

namespace {

using Bytes = std::vector<unsigned char>;
using Checksum = unsigned (*)(const Bytes&);

const crc32 kLibrary;
const kv::bench::Opaque kPlain(kv::reference::Crc32);

unsigned Library(const Bytes& bytes) {
  return kLibrary.Get(bytes.data(), static_cast<int>(bytes.size()));
}

unsigned Plain(const Bytes& bytes) { return kPlain(bytes.data(), bytes.size()); }

unsigned Zlib(const Bytes& bytes) {
  return static_cast<unsigned>(::crc32_z(0, bytes.data(), bytes.size()));
}

template <auto kForm>
unsigned Internal(const Bytes& bytes) {
  return ~kForm(0xFFFFFFFF, bytes.data(), bytes.size());
}

struct Form {
  std::string name;
  Checksum checksum;
};

std::vector<Form> Forms() {
  std::vector<Form> forms = {{"library", Library},
                             {"plain", Plain},
                             {"zlib", Zlib},
                             {"slicing", Internal<kv::internal::ExtendCrc32BySlicing>}};
  if (kv::internal::g_processor.carryless128)
    forms.push_back({"128 bits", Internal<kv::internal::ExtendCrc32By128Bits>});
  if (kv::internal::g_processor.carryless512)
    forms.push_back({"512 bits", Internal<kv::internal::ExtendCrc32By512Bits>});
  return forms;
}

Bytes Noise(std::size_t size) {
  std::mt19937 random(20240301);
  Bytes bytes(size);
  for (unsigned char& byte : bytes) byte = static_cast<unsigned char>(random() >> 24);
  return bytes;
}

std::string Amount(std::size_t size) {
  if (size % (1 << 20) == 0) return std::to_string(size >> 20) + " MiB";
  if (size % (1 << 10) == 0) return std::to_string(size >> 10) + " KiB";
  return std::to_string(size) + " bytes";
}

}  // namespace

void kv::bench::CheckAgreement() {
  const auto compare = [](std::size_t size) {
    const Bytes bytes = Noise(size);
    for (const Form& form : Forms())
      Require(form.checksum(bytes) == Plain(bytes), form.name.c_str());
  };
  for (std::size_t size = 0; size < 2000; ++size) compare(size);
  for (const std::size_t size : {32U << 10, 1U << 20, 9U << 20}) compare(size + 77);
}

void kv::bench::RegisterComparisons() {
  for (const std::size_t size :
       {1U, 4U, 8U, 16U, 31U, 64U, 127U, 256U, 4U << 10, 1U << 20, 64U << 20}) {
    const auto bytes = std::make_shared<const Bytes>(Noise(size));
    Comparison comparison("crc32::Get, " + Amount(size));
    if (size > 16U << 20) comparison.CallOnceIn(kFewRounds);
    for (const Form& form : Forms())
      comparison.Add(form.name, [bytes, form] { return form.checksum(*bytes); });
    comparison.Add("limit: reading the memory", [bytes] { return ReadAll(*bytes); });
  }
}
