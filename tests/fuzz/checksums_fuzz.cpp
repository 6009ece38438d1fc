// CRC-32, in every form that the processor has, and the identifiers beside their defining forms.
#include <cstdint>
#include <string>
#include <string_view>

#include "tests/fuzz/support/guarded_copy.h"
#include "tests/fuzz/support/target.h"
#include "tests/reference/crc32.h"
#include "tests/reference/identifiers.h"
#include "utils/download/crc32_forms.h"
#include "utils/download/download.h"
#include "utils/internal/processor.h"
#include "utils/text/text.h"

namespace kv::fuzz {
namespace {

void CheckChecksum(const std::string& bytes) {
  static const crc32 checksum;
  const GuardedCopy<char> data(bytes);
  const std::uint32_t expected = bytes.empty() ? 0 : reference::Crc32(data.Get(), bytes.size());
  Expect("checksum", checksum.Get(data.Get(), static_cast<int>(bytes.size())), expected);

  using Form = std::uint32_t (*)(std::uint32_t, const unsigned char*, std::size_t);
  struct Row {
    Form form;
    bool isThere;
  };
  using internal::g_processor;
  const auto* const begin = reinterpret_cast<const unsigned char*>(data.Get());
  for (const Row& row : {Row{internal::ExtendCrc32BySlicing, true},
                         Row{internal::ExtendCrc32By128Bits, g_processor.carryless128},
                         Row{internal::ExtendCrc32By512Bits, g_processor.carryless512}}) {
    if (row.isThere) Expect("form", ~row.form(0xFFFFFFFF, begin, bytes.size()), expected);
  }
}

void CheckIdentifiers(const std::string& text) {
  const GuardedText guarded(text);
  Expect("identifier", GetUniqueID(guarded.Get()), reference::UniqueId(text.c_str()));
  std::uint32_t code = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    code = code << 8 | static_cast<unsigned char>(i < text.size() ? text[i] : 0);
  }
  Expect("code", GetFOURCC(guarded.Get()), text.size() < 4 ? -1 : static_cast<int>(code));
}

void Check(Input input) {
  const std::size_t times = input.OneOf<std::size_t>({1, 1, 1, 2, 7, 40});
  const std::string piece(input.Rest());
  std::string bytes;
  for (std::size_t i = 0; i < times; ++i) bytes += piece;
  CheckChecksum(bytes);
  CheckIdentifiers(bytes.c_str());
}

const Registration kTarget({.name = "checksums",
                            .check = Check,
                            .seeds = {
                                std::string("123456789\0", 10), "RIFF....WAVE",
                                "C:\\Kelvaris\\catalogs\\Planets&Moons\\DwarfPlanets.bin\2"}});

}  // namespace
}  // namespace kv::fuzz
