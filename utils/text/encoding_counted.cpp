#include "utils/text/counted_output.h"
#include "utils/text/encoding_converters.h"
#include "utils/text/encoding_units.h"

namespace kv::internal {
namespace {

template <typename Output>
inline void PutUtf8(Output& out, unsigned unit) {
  if (IsAscii(unit)) {
    out.Put(static_cast<char>(unit));
    return;
  }
  if (HasTwoBytes(unit)) {
    out.Put(LeadOfTwo(unit));
  } else {
    out.Put(LeadOfThree(unit));
    out.Put(MiddleOfThree(unit));
  }
  out.Put(LastByte(unit));
}

template <typename Output>
inline void PutUtf16(Output& out, unsigned value) {
  if (value < 0x10000) {
    out.Put(static_cast<wchar_t>(value));
  } else {
    out.PutPair(HighSurrogate(value), LowSurrogate(value));
  }
}

// Each puts the characters from `in` to `end`. False at the first that is malformed.

template <typename Output>
bool PutIsolat1ToUtf8(Output& out, const char* in, const char* end) {
  for (; in != end; ++in) PutUtf8(out, Unit(*in));
  return true;
}

template <typename Output>
bool PutUtf8ToIsolat1(Output& out, const char* in, const char* end) {
  while (in != end) {
    const unsigned byte = Unit(*in++);
    if (IsAscii(byte)) {
      out.Put(static_cast<char>(byte));
      continue;
    }
    if (!IsIsolat1Lead(byte) || in == end) return false;
    // Callers rely on a full output leaving the second byte to be read as a lead: a character above
    // 127 without room is reported as malformed input.
    const unsigned next = out.IsFull() ? 0 : Unit(*in++);
    out.Put(static_cast<char>(Append(byte, next)));
  }
  return true;
}

template <typename Output>
bool PutUtf16ToUtf8(Output& out, const wchar_t* in, const wchar_t* end) {
  while (in != end) {
    unsigned unit = *in++;
    if (IsHighSurrogate(unit)) {
      if (in == end || !IsLowSurrogate(*in)) return false;
      unit = CombineIn16Bits(unit, *in++);
    }
    PutUtf8(out, unit);
  }
  return true;
}

template <typename Output>
bool PutUtf8ToUtf16(Output& out, const char* in, const char* end) {
  for (;;) {
    for (; in != end && IsAscii(Unit(*in)); ++in) out.Put(static_cast<wchar_t>(*in));
    if (in == end) return true;
    unsigned value = Unit(*in);
    const bool isWellFormed = value < 0xE0   ? ReadUtf8<2>(in, end, value)
                              : value < 0xF0 ? ReadUtf8<3>(in, end, value)
                                             : ReadUtf8<4>(in, end, value);
    if (!isWellFormed) return false;
    PutUtf16(out, value);
  }
}

// Of `put` one form stores what fits, the other one only counts.
template <auto put, auto measure, typename Out, typename In>
inline int Count(Out* out, int& outLen, const In* in, int inLen) {
  const In* const end = in + UnitsOf(in, inLen);
  if (out == nullptr) {
    UnitCounter counter;
    return measure(counter, in, end) ? counter.Finish(outLen) : kMalformed;
  }
  CountedOutput<Out> output(out, outLen);
  return put(output, in, end) ? output.Finish(outLen) : kMalformed;
}

}  // namespace

int CountIsolat1ToUtf8(char* out, int& outLen, const char* in, int inLen) {
  return Count<PutIsolat1ToUtf8<CountedOutput<char>>, PutIsolat1ToUtf8<UnitCounter>>(out, outLen,
                                                                                     in, inLen);
}

int CountUtf8ToIsolat1(char* out, int& outLen, const char* in, int inLen) {
  return Count<PutUtf8ToIsolat1<CountedOutput<char>>, PutUtf8ToIsolat1<UnitCounter>>(out, outLen,
                                                                                     in, inLen);
}

int CountUtf16ToUtf8(char* out, int& outLen, const wchar_t* in, int inLen) {
  return Count<PutUtf16ToUtf8<CountedOutput<char>>, PutUtf16ToUtf8<UnitCounter>>(out, outLen, in,
                                                                                 inLen);
}

int CountUtf8ToUtf16(wchar_t* out, int& outLen, const char* in, int inLen) {
  return Count<PutUtf8ToUtf16<CountedOutput<wchar_t>>, PutUtf8ToUtf16<UnitCounter>>(out, outLen, in,
                                                                                    inLen);
}

}  // namespace kv::internal
