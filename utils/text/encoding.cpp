#include "utils/text/encoding_ascii.h"
#include "utils/text/encoding_converters.h"
#include "utils/text/text.h"

#include <cstddef>
#include <cstring>

static_assert(sizeof(wchar_t) == 2);

namespace {

using namespace kv::internal;

constexpr int kBlock = kAsciiBlock;

// Whether there is any text and any room for it.
bool HasUnit(const void* out, int outLen, const void* in, int inLen) {
  return inLen > 0 && outLen > 0 && in != nullptr && out != nullptr;
}

// Whether there is a block at least of both.
bool HasBlock(const void* out, int outLen, const void* in, int inLen) {
  return inLen >= kBlock && outLen >= kBlock && in != nullptr && out != nullptr;
}

// Most texts are ASCII from the beginning to the end, and fit. Others are converted again from the
// beginning.
template <typename Out, typename In>
bool ConvertAscii(Out* out, int outLen, const In* in, int inLen) {
  if (outLen < inLen) return false;
  Place<Out, In> place{out, in, in + inLen};
  return PassAsciiBlocks(place) && PassAsciiEnd(place);
}

// Between Latin-1 and UTF-8 such a text is copied, into its own place as well.
bool CopyAscii(char* out, int outLen, const char* in, int inLen) {
  if (outLen < inLen) return false;
  const auto size = static_cast<std::size_t>(inLen);
  for (std::size_t i = 0; i + kAsciiBlock < size; i += kAsciiBlock) {
    if (!AsciiBlock(in + i).IsWhole()) return false;
  }
  if (!AsciiBlock(in + size - kAsciiBlock).IsWhole()) return false;
  std::memmove(out, in, size);
  return true;
}

}  // namespace

int isolat1_to_utf8(char* out, int& outLen, const char* in, int inLen) {
  if (HasBlock(out, outLen, in, inLen) && CopyAscii(out, outLen, in, inLen)) return inLen;
  return CountIsolat1ToUtf8(out, outLen, in, inLen);
}

int utf8_to_isolat1(char* out, int& outLen, const char* in, int inLen) {
  if (HasBlock(out, outLen, in, inLen) && CopyAscii(out, outLen, in, inLen)) return inLen;
  return CountUtf8ToIsolat1(out, outLen, in, inLen);
}

int utf16_to_utf8(char* out, int& outLen, const wchar_t* in, int inLen) {
  if (!HasUnit(out, outLen, in, inLen)) return CountUtf16ToUtf8(out, outLen, in, inLen);
  if (inLen < kBlock && outLen >= kMostBytesOfUnit * inLen) return ShortUtf16ToUtf8(out, in, inLen);
  if (inLen >= kBlock && ConvertAscii(out, outLen, in, inLen)) return inLen;
  return MixedUtf16ToUtf8(out, outLen, in, inLen);
}

int utf8_to_utf16(wchar_t* out, int& outLen, const char* in, int inLen) {
  if (!HasUnit(out, outLen, in, inLen)) return CountUtf8ToUtf16(out, outLen, in, inLen);
  if (inLen < kBlock && outLen >= inLen) return ShortUtf8ToUtf16(out, in, inLen);
  if (inLen >= kBlock && ConvertAscii(out, outLen, in, inLen)) return inLen;
  return MixedUtf8ToUtf16(out, outLen, in, inLen);
}
