// Base-64 texts.
#include <climits>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "bench/support/comparison.h"
#include "bench/support/main.h"
#include "tests/reference/base64.h"
#include "utils/text/text.h"

namespace {

constexpr const char* kTails[] = {nullptr, "+/=", "!?*"};

using Bytes = std::vector<unsigned char>;
using Encode = int (*)(char*, const unsigned char*, int, const char*);
using Decode = int (*)(unsigned char*, const char*, const char*, int);

Bytes RandomBytes(std::size_t size) {
  std::mt19937 random(20240304);
  Bytes bytes(size);
  for (unsigned char& byte : bytes) byte = static_cast<unsigned char>(random());
  return bytes;
}

std::string Encoded(const Bytes& bytes, const char* tail, Encode encode) {
  const int length = static_cast<int>(bytes.size());
  std::string text(static_cast<std::size_t>(encode(nullptr, bytes.data(), length, tail)), ' ');
  encode(text.data(), bytes.data(), length, tail);
  return text;
}

Bytes Decoded(const std::string& text, std::size_t size, const char* tail, Decode decode) {
  Bytes bytes(size);
  const int count = decode(bytes.data(), text.c_str(), tail, INT_MAX);
  kv::bench::Require(count == static_cast<int>(size), "count");
  return bytes;
}

void CompareEncoding(const std::string& what, const Bytes& bytes, const char* tail) {
  const auto form = [&](Encode encode) {
    return [encode, bytes, tail, text = Encoded(bytes, tail, encode)]() mutable {
      return encode(text.data(), bytes.data(), static_cast<int>(bytes.size()), tail);
    };
  };
  kv::bench::Comparison("btos, " + what)
      .Add("library", form(btos))
      .Add("plain", form(kv::reference::Encode))
      .Add("limit memcpy", [bytes, copy = bytes]() mutable {
        std::memcpy(copy.data(), bytes.data(), bytes.size());
      });
}

void CompareDecoding(const std::string& what, const Bytes& bytes, const char* tail) {
  const auto form = [&](Decode decode) {
    return
        [decode, out = bytes, tail, text = Encoded(bytes, tail, kv::reference::Encode)]() mutable {
          return decode(out.data(), text.c_str(), tail, INT_MAX);
        };
  };
  kv::bench::Comparison("stob, " + what)
      .Add("library", form(stob))
      .Add("plain", form(kv::reference::Decode))
      .Add("limit memcpy", [bytes, copy = bytes]() mutable {
        std::memcpy(copy.data(), bytes.data(), bytes.size());
      });
}

}  // namespace

void kv::bench::CheckAgreement() {
  for (std::size_t size = 0; size < 300; ++size) {
    const Bytes bytes = RandomBytes(size);
    for (const char* tail : kTails) {
      const std::string text = Encoded(bytes, tail, reference::Encode);
      Require(Encoded(bytes, tail, btos) == text, "btos");
      Require(Decoded(text, size, tail, stob) == bytes, "stob");
      Require(Decoded(text, size, tail, reference::Decode) == bytes, "the plain decoder");
    }
  }
}

void kv::bench::RegisterComparisons() {
  const struct {
    std::size_t size;
    const char* name;
  } sizes[] = {
      {3, "3 bytes"}, {16, "16 bytes"}, {24, "24 bytes"}, {1024, "1 KiB"}, {1U << 20, "1 MiB"}};
  for (const auto& [size, name] : sizes) {
    const Bytes bytes = RandomBytes(size);
    const std::string what = name;
    CompareEncoding(what, bytes, nullptr);
    CompareDecoding(what, bytes, nullptr);
    CompareEncoding(what + " padded", bytes, "+/=");
    CompareDecoding(what + " padded", bytes, "+/=");
    CompareEncoding(what + " in an alphabet of its own", bytes, "!?*");
    CompareDecoding(what + " in an alphabet of its own", bytes, "!?*");
  }
}
