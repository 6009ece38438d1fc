#include "tests/support/zip.h"

#include <cstdint>
#include <string_view>

namespace kv::test {
namespace {

constexpr std::uint32_t Crc32(std::string_view bytes) {
  std::uint32_t crc = 0xFFFFFFFF;
  for (const char byte : bytes) {
    crc ^= static_cast<unsigned char>(byte);
    for (int bit = 0; bit < 8; ++bit) crc = (crc >> 1) ^ ((crc & 1) != 0 ? 0xEDB88320 : 0);
  }
  return ~crc;
}

static_assert(Crc32("123456789") == 0xCBF43926);

// Numbers as an archive holds them, lowest byte first.
std::string Two(std::size_t value) {
  return {static_cast<char>(value & 0xFF), static_cast<char>((value >> 8) & 0xFF)};
}
std::string Four(std::size_t value) { return Two(value & 0xFFFF) + Two(value >> 16); }

constexpr std::size_t kVersion = 20;  // folders need version 2.0
constexpr std::size_t kNamesAreUtf8 = 0x0800;
constexpr std::size_t kStored = 0;
constexpr std::size_t kTime = 12 << 11;                           // 12:00:00
constexpr std::size_t kDate = ((2020 - 1980) << 9) | 1 << 5 | 1;  // 2020-01-01
constexpr std::size_t kUnixTime = 1'577'880'000;                  // 2020-01-01 12:00:00 UTC

// The part of an entry's header that the local and the central form share.
std::string CommonHeader(const ZipEntry& entry, std::size_t extraFieldSize) {
  return Two(kVersion) + Two(kNamesAreUtf8) + Two(kStored) + Two(kTime) + Two(kDate) +
         Four(Crc32(entry.content)) + Four(entry.content.size()) + Four(entry.content.size()) +
         Two(entry.name.size()) + Two(extraFieldSize);
}

// "UT", five bytes: the time of the last change is there, and is this.
std::string ExtraField(const ZipEntry& entry) {
  return entry.hasExtraField ? "UT" + Two(5) + '\1' + Four(kUnixTime) : "";
}

}  // namespace

std::string ZipArchive(const std::vector<ZipEntry>& entries) {
  std::string archive;
  std::string directory;
  for (const ZipEntry& entry : entries) {
    const std::string extraField = ExtraField(entry);
    const std::string header = CommonHeader(entry, extraField.size());
    const std::size_t offset = archive.size();
    archive += "PK\3\4" + header + entry.name + extraField + entry.content;
    directory += "PK\1\2" + Two(kVersion) + header + Two(0) + Two(0) + Two(0) + Four(0) +
                 Four(offset) + entry.name + extraField;
  }
  const std::size_t offset = archive.size();
  return archive + directory + "PK\5\6" + Two(0) + Two(0) + Two(entries.size()) +
         Two(entries.size()) + Four(directory.size()) + Four(offset) + Two(0);
}

}  // namespace kv::test
