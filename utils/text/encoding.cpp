#include "utils/text/encoding.h"

#include "utils/text/text.h"

#include <cstdint>
#include <cstring>

static_assert(sizeof(wchar_t) == 2);

namespace kv::internal {
namespace {

constexpr std::size_t kBlock = 8;  // characters taken at a time while they are ASCII

bool IsAsciiBlock(const char* in) {
  std::uint64_t word;
  std::memcpy(&word, in, sizeof word);
  return (word & 0x8080808080808080U) == 0;
}

bool IsAsciiBlock(const wchar_t* in) {
  std::uint64_t words[2];
  std::memcpy(words, in, sizeof words);
  return ((words[0] | words[1]) & 0xFF80FF80FF80FF80U) == 0;
}

// Copies whole blocks of ASCII from in[i] on while they fit; returns the index behind them.
template <typename Out, typename In>
std::size_t PutAsciiBlocks(CountedOutput<Out>& out, const In* in, std::size_t i, std::size_t size) {
  while (size - i >= kBlock && out.HasRoomFor(kBlock) && IsAsciiBlock(in + i)) {
    out.template PutBlock<kBlock>(in + i);
    i += kBlock;
  }
  return i;
}

// The number of input units: none for a negative length or a null input.
std::size_t InputSize(const void* in, int inLen) {
  return in == nullptr || inLen < 0 ? 0 : static_cast<std::size_t>(inLen);
}

constexpr unsigned ByteAt(const char* in, std::size_t i) {
  return static_cast<unsigned char>(in[i]);
}

constexpr bool IsHighSurrogate(unsigned unit) { return (unit & 0xFC00) == 0xD800; }
constexpr bool IsLowSurrogate(unsigned unit) { return (unit & 0xFC00) == 0xDC00; }
constexpr bool IsContinuation(unsigned byte) { return (byte & 0xC0) == 0x80; }

void PutUtf8(CountedOutput<char>& out, unsigned c) {
  if (c < 0x80) {
    out.Put(static_cast<char>(c));
    return;
  }
  if (c < 0x800) {
    out.Put(static_cast<char>(0xC0 | (c >> 6)));
  } else {
    out.Put(static_cast<char>(0xE0 | (c >> 12)));
    out.Put(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
  }
  out.Put(static_cast<char>(0x80 | (c & 0x3F)));
}

// A lead byte: how many continuation bytes it takes, and its bits of the value.
struct Lead {
  unsigned continuations;
  unsigned bits;
};

// False for a byte that leads nothing.
bool ReadLead(unsigned byte, Lead& lead) {
  if (byte < 0xC0 || byte > 0xF7) return false;
  if (byte < 0xE0) {
    lead = {1, byte & 0x1F};
  } else if (byte < 0xF0) {
    lead = {2, byte & 0x0F};
  } else {
    lead = {3, byte & 0x07};
  }
  return true;
}

void PutCodePoint(CountedOutput<wchar_t>& out, unsigned value) {
  if (value < 0x10000) {
    out.Put(static_cast<wchar_t>(value));
    return;
  }
  const unsigned offset = value - 0x10000;
  out.PutPair(static_cast<wchar_t>(0xD800 | (offset >> 10)),
              static_cast<wchar_t>(0xDC00 | (offset & 0x3FF)));
}

}  // namespace

bool PutUtf16(CountedOutput<wchar_t>& out, const char* in, std::size_t size) {
  for (std::size_t i = 0;;) {
    i = PutAsciiBlocks(out, in, i, size);
    if (i == size) return true;
    const unsigned byte = ByteAt(in, i++);
    if (byte < 0x80) {
      out.Put(static_cast<wchar_t>(byte));
      continue;
    }
    Lead lead;
    if (!ReadLead(byte, lead) || size - i < lead.continuations) return false;
    unsigned value = lead.bits;
    for (unsigned n = 0; n < lead.continuations; ++n) {
      const unsigned next = ByteAt(in, i++);
      if (!IsContinuation(next)) return false;
      value = (value << 6) | (next & 0x3F);
    }
    // Callers rely on overlong forms and encoded surrogates passing as they are.
    if (value >= 0x110000) return false;
    PutCodePoint(out, value);
  }
}

}  // namespace kv::internal

using namespace kv::internal;

int isolat1_to_utf8(char* out, int& outLen, const char* in, int inLen) {
  CountedOutput<char> output(out, outLen);
  const std::size_t size = InputSize(in, inLen);
  for (std::size_t i = 0;;) {
    i = PutAsciiBlocks(output, in, i, size);
    if (i == size) return output.Finish(outLen);
    PutUtf8(output, ByteAt(in, i++));
  }
}

int utf8_to_isolat1(char* out, int& outLen, const char* in, int inLen) {
  CountedOutput<char> output(out, outLen);
  const std::size_t size = InputSize(in, inLen);
  for (std::size_t i = 0;;) {
    i = PutAsciiBlocks(output, in, i, size);
    if (i == size) return output.Finish(outLen);
    const unsigned byte = ByteAt(in, i++);
    if (byte < 0x80) {
      output.Put(static_cast<char>(byte));
      continue;
    }
    if ((byte != 0xC2 && byte != 0xC3) || i == size) return kMalformed;
    // Callers rely on a full output leaving the second byte to be read as a lead: a character above
    // 127 without room is reported as malformed input.
    const unsigned next = output.IsFull() ? 0 : ByteAt(in, i++);
    output.Put(static_cast<char>((byte << 6) | (next & 0x3F)));
  }
}

int utf16_to_utf8(char* out, int& outLen, const wchar_t* in, int inLen) {
  CountedOutput<char> output(out, outLen);
  const std::size_t size = InputSize(in, inLen);
  for (std::size_t i = 0;;) {
    i = PutAsciiBlocks(output, in, i, size);
    if (i == size) return output.Finish(outLen);
    unsigned c = in[i++];
    if (IsHighSurrogate(c)) {
      if (i == size || !IsLowSurrogate(in[i])) return kMalformed;
      // Callers rely on a pair being combined in 16 bits without the offset 0x10000, so that no
      // character takes more than three bytes.
      c = ((c << 10) | (in[i++] & 0x3FFU)) & 0xFFFF;
    }
    PutUtf8(output, c);
  }
}

int utf8_to_utf16(wchar_t* out, int& outLen, const char* in, int inLen) {
  CountedOutput<wchar_t> output(out, outLen);
  if (!PutUtf16(output, in, InputSize(in, inLen))) return kMalformed;
  return output.Finish(outLen);
}
