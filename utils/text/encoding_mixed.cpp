// Between the blocks of ASCII (encoding_ascii.h) characters are taken in runs of one length, as
// most languages have them: each length has a short loop of its own, whose branches the processor
// predicts. A single ASCII character between others, a space mostly, is taken with their runs. Runs
// are not taken in vectors, which only texts of megabytes would show: names and paths are short.
//
// This is done where the output has room for whatever the input can give, so that no store asks. A
// smaller room is ample for a part of the input, which leaves it ample for a part of the rest, and
// so on; what is left in the end is counted.
#include "utils/text/encoding_converters.h"

#include "utils/text/counted_output.h"
#include "utils/text/encoding_ascii.h"
#include "utils/text/encoding_units.h"

#include <algorithm>
#include <cstddef>

namespace kv::internal {
namespace {

// Each stores a character and goes behind it.
void StoreTwoBytes(char*& out, unsigned unit) {
  *out++ = LeadOfTwo(unit);
  *out++ = LastByte(unit);
}
void StoreThreeBytes(char*& out, unsigned unit) {
  *out++ = LeadOfThree(unit);
  *out++ = MiddleOfThree(unit);
  *out++ = LastByte(unit);
}
void StoreUtf8(char*& out, unsigned unit) {
  if (HasThreeBytes(unit)) {
    StoreThreeBytes(out, unit);
  } else if (HasTwoBytes(unit)) {
    StoreTwoBytes(out, unit);
  } else {
    *out++ = static_cast<char>(unit);
  }
}
void StoreUtf16(wchar_t*& out, unsigned value) {
  if (value < 0x10000) {
    *out++ = static_cast<wchar_t>(value);
  } else {
    *out++ = HighSurrogate(value);
    *out++ = LowSurrogate(value);
  }
}

// Passes blocks of ASCII and, by `passRuns`, what stands between them, as far as that goes.
template <typename Out, typename In, typename PassRuns>
void PassText(Place<Out, In>& place, PassRuns passRuns) {
  for (;;) {
    const In* before = place.in;
    PassAscii(place);
    for (bool isBetween = true; isBetween;) {
      passRuns(place);
      isBetween = place.Left() >= 2 && IsAscii(Unit(place.in[0])) && !IsAscii(Unit(place.in[1]));
      if (isBetween) {
        *place.out = static_cast<Out>(*place.in);
        place.Advance(1);
      }
    }
    if (place.in == before) return;
  }
}

// UTF-16 to UTF-8, three units for one.
void PassUtf16ToUtf8(Place<char, wchar_t>& place) {
  PassText(place, [](Place<char, wchar_t>& run) {
    for (; run.Left() != 0 && HasTwoBytes(*run.in); ++run.in) StoreTwoBytes(run.out, *run.in);
    for (; run.Left() != 0 && HasThreeBytes(*run.in) && !IsHighSurrogate(*run.in); ++run.in) {
      StoreThreeBytes(run.out, *run.in);
    }
    for (; run.Left() >= 2 && IsHighSurrogate(run.in[0]) && IsLowSurrogate(run.in[1]);
         run.in += 2) {
      StoreUtf8(run.out, CombineIn16Bits(run.in[0], run.in[1]));
    }
  });
  PassAsciiEnd(place);
}

template <std::size_t length>
void PassRun(Place<wchar_t, char>& place) {
  unsigned value = 0;
  while (ReadUtf8<length>(place.in, place.end, value)) StoreUtf16(place.out, value);
}

// UTF-8 to UTF-16, one unit for one.
void PassUtf8ToUtf16(Place<wchar_t, char>& place) {
  PassText(place, [](Place<wchar_t, char>& run) {
    PassRun<2>(run);
    PassRun<3>(run);
    PassRun<4>(run);
  });
  PassAsciiEnd(place);
}

constexpr std::size_t kLeastPart = 2 * kAsciiBlock;  // of less, counting takes no longer

// `pass` goes as far as the room is ample, at one unit of input giving up to `worst` of output,
// which is again and again a part of what is left; `count` does the rest.
template <std::size_t worst, auto pass, auto count, typename Out, typename In>
int ConvertMixed(Out* out, int& outLen, const In* in, int inLen) {
  const Out* const outEnd = out + outLen;
  const In* const inEnd = in + inLen;
  Place<Out, In> place{out, in, in};
  for (const In* before = nullptr; place.in != before;) {
    const std::size_t part = std::min(static_cast<std::size_t>(inEnd - place.in),
                                      static_cast<std::size_t>(outEnd - place.out) / worst);
    if (part < kLeastPart) break;
    before = place.in;
    place.end = place.in + part;
    pass(place);
  }
  const auto stored = static_cast<int>(place.out - out);
  int rest = outLen - stored;
  const int result = count(place.out, rest, place.in, static_cast<int>(inEnd - place.in));
  if (result == kTooSmall) {
    outLen = IntSize(static_cast<std::size_t>(stored) + static_cast<std::size_t>(rest));
  }
  return result < 0 ? result : stored + result;
}

}  // namespace

int MixedUtf16ToUtf8(char* out, int& outLen, const wchar_t* in, int inLen) {
  return ConvertMixed<3, PassUtf16ToUtf8, CountUtf16ToUtf8>(out, outLen, in, inLen);
}

int MixedUtf8ToUtf16(wchar_t* out, int& outLen, const char* in, int inLen) {
  return ConvertMixed<1, PassUtf8ToUtf16, CountUtf8ToUtf16>(out, outLen, in, inLen);
}

}  // namespace kv::internal
