#include "utils/text/collation_system.h"

#include "utils/internal/text_length.h"

#include <emmintrin.h>

#include <algorithm>
#include <cstddef>

namespace {

using namespace kv::internal;

// Texts of so many bytes, terminators included, are converted on the stack. They have no more
// units than bytes.
constexpr std::size_t kShortSize = 256;

constexpr bool IsContinuation(unsigned byte) { return (byte & 0xC0) == 0x80; }

// Eight bytes of ASCII are widened together. False, with nothing stored, when one is not ASCII.
bool WidenAscii(const unsigned char* in, wchar_t* out) {
  const __m128i bytes = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(in));
  if (_mm_movemask_epi8(bytes) != 0) return false;
  const __m128i units = _mm_unpacklo_epi8(bytes, _mm_setzero_si128());
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out), units);
  return true;
}

// The number of bytes of a well-formed character of one unit at `in`, and its unit; 0 for any
// other. A terminator ends the text, so no byte behind it is read.
std::size_t ReadUnit(const unsigned char* in, unsigned& unit) {
  unit = in[0];
  if (unit < 0x80) return 1;
  if (unit < 0xC2 || unit >= 0xF0 || !IsContinuation(in[1])) return 0;
  if (unit < 0xE0) {
    unit = (unit & 0x1F) << 6 | (in[1] & 0x3FU);
    return 2;
  }
  if (!IsContinuation(in[2])) return 0;
  unit = (unit & 0x0F) << 12 | (in[1] & 0x3FU) << 6 | (in[2] & 0x3FU);
  const bool isOverlong = unit < 0x800;
  const bool isSurrogate = (unit & 0xF800) == 0xD800;
  return isOverlong || isSurrogate ? 0 : 3;
}

// Converts a short text of UTF-8 with its terminator; gives the number of units, 0 when the system
// refuses. A call of the system costs more than a name, so it only gets what is left from the
// first character of several units, or malformed, on.
int ConvertShort(const char* text, std::size_t size, wchar_t* out) {
  constexpr std::ptrdiff_t kStep = 8;
  const auto* in = reinterpret_cast<const unsigned char*>(text);
  const auto* const end = in + size;
  wchar_t* place = out;
  while (in < end) {
    if (end - in >= kStep && WidenAscii(in, place)) {
      in += kStep;
      place += kStep;
      continue;
    }
    unsigned unit = 0;
    const std::size_t bytes = ReadUnit(in, unit);
    if (bytes == 0) {
      const auto used = place - out;
      const int rest = ::MultiByteToWideChar(
          kUtf8CodePage, 0, reinterpret_cast<const char*>(in), static_cast<int>(end - in), place,
          static_cast<int>(static_cast<std::ptrdiff_t>(kShortSize) - used));
      return rest == 0 ? 0 : static_cast<int>(used) + rest;
    }
    in += bytes;
    *place++ = static_cast<wchar_t>(unit);
  }
  return static_cast<int>(place - out);
}

int CompareLong(const char* a, const char* b, unsigned flags) {
  return CompareConverted(SystemText(kUtf8CodePage, a, SystemText::kWithTerminator),
                          SystemText(kUtf8CodePage, b, SystemText::kWithTerminator), flags);
}

}  // namespace

int kv::internal::CompareUnits(const wchar_t* a, int sizeOfA, const wchar_t* b, int sizeOfB,
                               unsigned flags) {
  const int result =
      ::CompareStringEx(LOCALE_NAME_INVARIANT, flags, a, sizeOfA, b, sizeOfB, nullptr, nullptr, 0);
  return result == 0 ? kComparisonFailed : result - CSTR_EQUAL;
}

int kv::internal::CompareConverted(const SystemText& a, const SystemText& b, unsigned flags,
                                   int limit) {
  if (!a.IsValid() || !b.IsValid()) return kComparisonFailed;
  return CompareUnits(a.Get(), std::min(a.Size(), limit), b.Get(), std::min(b.Size(), limit),
                      flags);
}

int kv::internal::CompareBySystem(const char* a, const char* b, unsigned flags) {
  if (a == nullptr || b == nullptr) return kComparisonFailed;
  const std::size_t sizeOfA = TextLength(a) + 1;
  const std::size_t sizeOfB = TextLength(b) + 1;
  if (sizeOfA > kShortSize || sizeOfB > kShortSize) return CompareLong(a, b, flags);
  wchar_t unitsOfA[kShortSize];
  wchar_t unitsOfB[kShortSize];
  const int countOfA = ConvertShort(a, sizeOfA, unitsOfA);
  const int countOfB = ConvertShort(b, sizeOfB, unitsOfB);
  if (countOfA == 0 || countOfB == 0) return kComparisonFailed;
  return CompareUnits(unitsOfA, countOfA, unitsOfB, countOfB, flags);
}
