#include "utils/text/collation_system.h"

#include "utils/internal/text_length.h"
#include "utils/text/encoding_units.h"

#include <emmintrin.h>

#include <algorithm>
#include <cstddef>

namespace {

using namespace kv::internal;

// Texts of so many bytes, terminators included, are converted on the stack. They have no more
// units than bytes.
constexpr std::size_t kShortSize = 256;

// Widens eight bytes of ASCII. False, with nothing stored, when one is not ASCII.
bool WidenAscii(const char* in, wchar_t* out) {
  const __m128i bytes = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(in));
  if (_mm_movemask_epi8(bytes) != 0) return false;
  const __m128i units = _mm_unpacklo_epi8(bytes, _mm_setzero_si128());
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out), units);
  return true;
}

// Reads a character of one unit that is well-formed, and goes behind it. False for any other.
bool ReadUnit(const char*& in, const char* end, unsigned& unit) {
  const char* behind = in;
  if (IsAscii(Unit(*in))) {
    unit = Unit(*behind++);
  } else if (ReadUtf8<2>(behind, end, unit)) {
    if (!HasTwoBytes(unit)) return false;
  } else if (!ReadUtf8<3>(behind, end, unit) || !HasThreeBytes(unit) || IsHighSurrogate(unit) ||
             IsLowSurrogate(unit)) {
    return false;
  }
  in = behind;
  return true;
}

// Converts a short text of UTF-8 with its terminator; gives the number of units, 0 when the system
// refuses. A call of the system costs more than a name, so it only gets what is left from the
// first character of several units, or malformed, on.
int ConvertShort(const char* text, std::size_t size, wchar_t* out) {
  constexpr std::ptrdiff_t kStep = 8;
  const char* in = text;
  const char* const end = text + size;
  wchar_t* place = out;
  while (in < end) {
    if (end - in >= kStep && WidenAscii(in, place)) {
      in += kStep;
      place += kStep;
      continue;
    }
    unsigned unit = 0;
    if (!ReadUnit(in, end, unit)) {
      const int rest = ::MultiByteToWideChar(kUtf8CodePage, 0, in, static_cast<int>(end - in),
                                             place, static_cast<int>(end - in));
      return rest == 0 ? 0 : static_cast<int>(place - out) + rest;
    }
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
