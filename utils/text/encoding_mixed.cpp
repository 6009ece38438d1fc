// Between the blocks of ASCII (encoding_ascii.h) characters are taken one at a time. They are not
// taken in vectors, which only texts of megabytes would show: names and paths are short.
//
// This is done where the output has room for whatever the input can give, so that no store asks. A
// smaller room is ample for a part of the input, which leaves it ample for a part of the rest, and
// so on; what is left in the end is counted.
#include "utils/text/encoding_converters.h"

#include "utils/internal/compiler.h"
#include "utils/text/counted_output.h"
#include "utils/text/encoding_ascii.h"
#include "utils/text/encoding_units.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace kv::internal {
namespace {

// Each stores a character and goes behind it.
inline void StoreTwoBytes(char*& out, unsigned unit) {
  static_assert(std::endian::native == std::endian::little);
  const auto bytes = static_cast<std::uint16_t>(Unit(LeadOfTwo(unit)) | Unit(LastByte(unit)) << 8);
  std::memcpy(out, &bytes, sizeof bytes);  // in one store
  out += sizeof bytes;
}
inline void StoreThreeBytes(char*& out, unsigned unit) {
  *out++ = LeadOfThree(unit);
  *out++ = MiddleOfThree(unit);
  *out++ = LastByte(unit);
}
inline void StoreUtf8(char*& out, unsigned unit) {
  if (HasThreeBytes(unit)) {
    StoreThreeBytes(out, unit);
  } else if (HasTwoBytes(unit)) {
    StoreTwoBytes(out, unit);
  } else {
    *out++ = static_cast<char>(unit);
  }
}
inline void StoreUtf16(wchar_t*& out, unsigned value) {
  if (value < 0x10000) {
    *out++ = static_cast<wchar_t>(value);
  } else {
    *out++ = HighSurrogate(value);
    *out++ = LowSurrogate(value);
  }
}

// Whether a unit is a character of three bytes by itself.
constexpr bool IsWhole(unsigned unit) { return HasThreeBytes(unit) && !IsHighSurrogate(unit); }

// Passes the unit at `in` and those of its kind behind it: letters of a word have the same length.
template <bool isOfKind(unsigned unit), void store(char*& out, unsigned unit)>
KVUTILS_INLINE void PassRun(char*& out, const wchar_t*& in, const wchar_t* end) {
  unsigned unit = *in;
  do {
    store(out, unit);
    if (++in == end) return;
    unit = *in;
  } while (isOfKind(unit));
}

// Each passes the character at `in`, which is not ASCII, and may pass others behind it that are not
// either. False if it is malformed.

KVUTILS_INLINE bool PassCharacter(char*& out, const wchar_t*& in, const wchar_t* end) {
  const unsigned unit = *in;
  if (HasTwoBytes(unit)) [[likely]] {
    PassRun<HasTwoBytes, StoreTwoBytes>(out, in, end);
  } else if (IsWhole(unit)) {
    PassRun<IsWhole, StoreThreeBytes>(out, in, end);
  } else {
    if (end - in < 2 || !IsLowSurrogate(in[1])) return false;
    StoreUtf8(out, CombineIn16Bits(unit, *++in));
    ++in;
  }
  return true;
}

KVUTILS_INLINE bool PassCharacter(wchar_t*& out, const char*& in, const char* end) {
  unsigned value = Unit(*in);
  if (value < 0xE0) {
    if (!ReadUtf8<2>(in, end, value)) return false;
    *out++ = static_cast<wchar_t>(value);
  } else if (value < 0xF0) {
    if (!ReadUtf8<3>(in, end, value)) return false;
    *out++ = static_cast<wchar_t>(value);
  } else {
    if (!ReadUtf8<4>(in, end, value)) return false;
    StoreUtf16(out, value);
  }
  return true;
}

template <typename In>
inline bool AreFourAscii(const In* in) {
  return IsAscii(Unit(in[0]) | Unit(in[1]) | Unit(in[2]) | Unit(in[3]));
}

// Passes characters up to a malformed one, or to where four of ASCII begin a block that is not the
// last. Fewer of them between others, a space mostly, are taken with these, and so is a text of
// less than a block.
template <typename Out, typename In>
inline void PassCharacters(Place<Out, In>& place) {
  Out* out = place.out;
  const In* in = place.in;
  const In* const end = place.end;
  const In* const lastBlock = place.Left() >= kAsciiBlock ? end - kAsciiBlock : in;
  while (in != end) {
    if (!IsAscii(Unit(*in))) {
      if (!PassCharacter(out, in, end)) break;
    } else {
      if (in < lastBlock && AreFourAscii(in)) break;
      *out++ = static_cast<Out>(*in++);
    }
  }
  place.out = out;
  place.in = in;
}

// Passes characters up to a malformed one, those of ASCII in blocks.
template <typename Out, typename In>
inline void PassText(Place<Out, In>& place) {
  const In* before = nullptr;
  while (place.in != place.end && place.in != before) {
    before = place.in;
    if (IsAscii(Unit(*place.in))) PassAscii(place);
    PassCharacters(place);
  }
}

constexpr std::size_t kLeastPart = 2 * kAsciiBlock;  // of less, counting takes no longer

// Goes as far as the room is ample, at one unit of input giving up to `worst` of output, which is
// again and again a part of what is left; `count` does the rest.
template <std::size_t worst, auto count, typename Out, typename In>
int ConvertMixed(Out* out, int& outLen, const In* in, int inLen) {
  const Out* const outEnd = out + outLen;
  const In* const inEnd = in + inLen;
  Place<Out, In> place{out, in, in};
  const auto ampleFor = [&] {
    return std::min(static_cast<std::size_t>(inEnd - place.in),
                    static_cast<std::size_t>(outEnd - place.out) / worst);
  };
  const In* before = nullptr;
  do {
    before = place.in;
    place.end = place.in + ampleFor();
    PassText(place);
  } while (place.in != before && ampleFor() >= kLeastPart);

  const auto stored = static_cast<int>(place.out - out);
  if (place.in == inEnd) return stored;
  int rest = outLen - stored;
  const int result = count(place.out, rest, place.in, static_cast<int>(inEnd - place.in));
  if (result == kTooSmall) {
    outLen = IntSize(static_cast<std::size_t>(stored) + static_cast<std::size_t>(rest));
  }
  return result < 0 ? result : stored + result;
}

template <typename Out, typename In>
int ConvertShort(Out* out, const In* in, int inLen) {
  const Out* const begin = out;
  const In* const end = in + inLen;
  while (in != end) {
    if (IsAscii(Unit(*in))) {
      *out++ = static_cast<Out>(*in++);
    } else if (!PassCharacter(out, in, end)) {
      return kMalformed;
    }
  }
  return static_cast<int>(out - begin);
}

}  // namespace

int ShortUtf16ToUtf8(char* out, const wchar_t* in, int inLen) {
  return ConvertShort(out, in, inLen);
}

int ShortUtf8ToUtf16(wchar_t* out, const char* in, int inLen) {
  return ConvertShort(out, in, inLen);
}

int MixedUtf16ToUtf8(char* out, int& outLen, const wchar_t* in, int inLen) {
  return ConvertMixed<kMostBytesOfUnit, CountUtf16ToUtf8>(out, outLen, in, inLen);
}

int MixedUtf8ToUtf16(wchar_t* out, int& outLen, const char* in, int inLen) {
  return ConvertMixed<1, CountUtf8ToUtf16>(out, outLen, in, inLen);
}

}  // namespace kv::internal
