// What the tests of the registry of downloads share: its file as text, and where it stands.
#ifndef KVUTILS_TESTS_DOWNLOAD_REGISTRY_FIXTURE_H_
#define KVUTILS_TESTS_DOWNLOAD_REGISTRY_FIXTURE_H_

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "tests/support/sandbox.h"

namespace kv::test {

// "01000000 43BEB7E8" as bytes; spaces do not count.
inline std::string FromHex(std::string_view text) {
  const auto valueOf = [](char c) { return c <= '9' ? c - '0' : c - 'A' + 10; };
  std::string digits;
  for (const char c : text) {
    if (c != ' ') digits += c;
  }
  std::string bytes;
  for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
    bytes += static_cast<char>(valueOf(digits[i]) * 16 + valueOf(digits[i + 1]));
  }
  return bytes;
}

// Bytes as text, a space behind each fourth.
inline std::string ToHex(std::string_view bytes) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (i != 0 && i % 4 == 0) text += ' ';
    const auto byte = static_cast<unsigned char>(bytes[i]);
    text += kDigits[byte / 16];
    text += kDigits[byte % 16];
  }
  return text;
}

inline constexpr char kNoFile[] = "(no file)";

inline std::string HexOfFile(const std::string& path) {
  return FileExists(path) ? ToHex(ReadBytes(path)) : kNoFile;
}

// Below an installation, and below the writable folder.
inline constexpr char kRegistryPlace[] = "download\\files_crc_sum.dat";

class RegistrySandbox : public Sandbox {
 protected:
  std::string Installed() const { return Work() + kRegistryPlace; }
  std::string Saved() const { return Writable() + kRegistryPlace; }
  // The registry in the writable folder, an identifier and a checksum in turn.
  std::string SavedHex() const { return HexOfFile(Saved()); }
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_DOWNLOAD_REGISTRY_FIXTURE_H_
