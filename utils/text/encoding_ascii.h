// Runs of ASCII, sixteen characters at a time.
//
// An ASCII character is one unit of the same value in Latin-1, UTF-8 and UTF-16, so that a block of
// sixteen is converted by widening, narrowing or copying its units. A block that is ASCII at its
// beginning alone is stored up to there, and behind that with what the output holds already:
// nothing but converted characters changes, and no branch depends on where in the block the next
// accent stands, which no processor could predict.
#ifndef KVUTILS_UTILS_TEXT_ENCODING_ASCII_H_
#define KVUTILS_UTILS_TEXT_ENCODING_ASCII_H_

#include <emmintrin.h>

#include <array>
#include <bit>
#include <cstddef>

namespace kv::internal {

inline constexpr std::size_t kAsciiBlock = 16;

inline __m128i Load(const void* bytes) {
  return _mm_loadu_si128(static_cast<const __m128i*>(bytes));
}
inline void Store(void* bytes, __m128i value) {
  _mm_storeu_si128(static_cast<__m128i*>(bytes), value);
}

// As many ones as a block has bytes, and as many zeros: the sixteen bytes that begin n in front of
// the zeros select the first n of a vector.
inline constexpr std::size_t kOnes = kAsciiBlock * sizeof(wchar_t);
inline constexpr auto kSelections = [] {
  std::array<unsigned char, 2 * kOnes> bytes{};
  for (std::size_t i = 0; i < kOnes; ++i) bytes[i] = 0xFF;
  return bytes;
}();

// Stores sixteen bytes, the ones from `first` on of a block of which the first `count` are wanted;
// in the place of the others the output keeps what it holds.
inline void StoreWanted(void* out, __m128i value, std::size_t first, std::size_t count) {
  const __m128i wanted = Load(kSelections.data() + kOnes + first - count);
  Store(out, _mm_or_si128(_mm_and_si128(wanted, value), _mm_andnot_si128(wanted, Load(out))));
}

// Sixteen characters as bytes, those of one byte or of 16-bit units that are ASCII.
class AsciiBlock {
 public:
  explicit AsciiBlock(const char* in)
      : bytes_(Load(in)), others_(static_cast<unsigned>(_mm_movemask_epi8(bytes_))) {}

  explicit AsciiBlock(const wchar_t* in) {
    const __m128i first = Load(in);
    const __m128i second = Load(in + kAsciiBlock / 2);
    bytes_ = _mm_packus_epi16(first, second);
    const __m128i signs = _mm_packs_epi16(Signed(first), Signed(second));
    others_ = static_cast<unsigned>(_mm_movemask_epi8(signs));
  }

  // Whether all sixteen are ASCII; if not, how many are in front of the first that is not.
  [[nodiscard]] bool IsWhole() const { return others_ == 0; }
  [[nodiscard]] std::size_t Beginning() const {
    return static_cast<std::size_t>(std::countr_zero(others_));
  }

  void StoreWhole(char* out) const { Store(out, bytes_); }
  void StoreWhole(wchar_t* out) const {
    Store(out, FirstUnits());
    Store(out + kAsciiBlock / 2, SecondUnits());
  }

  void StoreBeginning(char* out) const { StoreWanted(out, bytes_, 0, Beginning()); }
  void StoreBeginning(wchar_t* out) const {
    const std::size_t count = Beginning() * sizeof(wchar_t);
    StoreWanted(out, FirstUnits(), 0, count);
    StoreWanted(out + kAsciiBlock / 2, SecondUnits(), kAsciiBlock, count);
  }

 private:
  // 16-bit units with the highest bit set in those, and only those, that are 0x80 or more.
  static __m128i Signed(__m128i units) { return _mm_adds_epu16(units, _mm_set1_epi16(0x7F80)); }

  [[nodiscard]] __m128i FirstUnits() const {
    return _mm_unpacklo_epi8(bytes_, _mm_setzero_si128());
  }
  [[nodiscard]] __m128i SecondUnits() const {
    return _mm_unpackhi_epi8(bytes_, _mm_setzero_si128());
  }

  __m128i bytes_;
  unsigned others_;  // a bit for each that is not ASCII
};

// A place in the input and the place in the output where its units go. The output has room for as
// many units as the input has left, or more.
template <typename Out, typename In>
struct Place {
  Out* out;
  const In* in;
  const In* end;

  [[nodiscard]] std::size_t Left() const { return static_cast<std::size_t>(end - in); }
  void Advance(std::size_t units) {
    out += units;
    in += units;
  }
};

// Passes blocks of ASCII, two at a time, which saves half of the branches. True when less than a
// block is left, false before a block that holds another character.
template <typename Out, typename In>
inline bool PassAsciiBlocks(Place<Out, In>& place) {
  for (; place.Left() >= 2 * kAsciiBlock; place.Advance(2 * kAsciiBlock)) {
    const AsciiBlock first(place.in);
    const AsciiBlock second(place.in + kAsciiBlock);
    if (!first.IsWhole() || !second.IsWhole()) break;
    first.StoreWhole(place.out);
    second.StoreWhole(place.out + kAsciiBlock);
  }
  for (; place.Left() >= kAsciiBlock; place.Advance(kAsciiBlock)) {
    const AsciiBlock block(place.in);
    if (!block.IsWhole()) return false;
    block.StoreWhole(place.out);
  }
  return true;
}

// Passes blocks of ASCII and the ASCII characters at the beginning of the block behind them.
template <typename Out, typename In>
inline void PassAscii(Place<Out, In>& place) {
  if (PassAsciiBlocks(place)) return;
  const AsciiBlock block(place.in);
  block.StoreBeginning(place.out);
  place.Advance(block.Beginning());
}

// Passes what is left when that is less than a block and the last sixteen characters are ASCII.
// Those of them that are converted already are stored once more in their places. True when nothing
// is left.
template <typename Out, typename In>
inline bool PassAsciiEnd(Place<Out, In>& place) {
  const std::size_t left = place.Left();
  if (left == 0) return true;
  const AsciiBlock last(place.end - kAsciiBlock);
  if (!last.IsWhole()) return false;
  place.Advance(left);
  last.StoreWhole(place.out - kAsciiBlock);
  return true;
}

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_TEXT_ENCODING_ASCII_H_
