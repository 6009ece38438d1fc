#include "utils/text/text.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstdint>
#include <cstring>
#include <string_view>

// A group of three bytes is 24 bits, which two lookups of twelve bits turn into two characters
// each. Back, four lookups give the six bits of each character at their places in the group; a
// character outside the alphabet is negative, and so is whatever it is joined with. What fills no
// group goes one character at a time. The tables of these lookups stand ready for the two alphabets
// of RFC 4648; for another one they would cost more than most texts, and each character is looked
// up by itself.
namespace {

// The characters of an alphabet in order of their values. All alphabets share the first 62.
using Characters = std::array<char, 64>;
constexpr int kCommonCount = 62;

constexpr Characters MakeCharacters(std::string_view text) {
  Characters characters{};
  std::copy(text.begin(), text.end(), characters.begin());
  return characters;
}
constexpr Characters kUrlSafeCharacters =
    MakeCharacters("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_");

// One value for each character.
template <typename Value>
using ByCharacter = std::array<Value, 256>;

constexpr std::size_t IndexOf(char c) { return static_cast<unsigned char>(c); }

constexpr signed char kNoValue = -1;

constexpr ByCharacter<signed char> MakeCommonValues() {
  ByCharacter<signed char> values{};
  values.fill(kNoValue);
  for (signed char i = 0; i < kCommonCount; ++i) {
    values[IndexOf(kUrlSafeCharacters[static_cast<std::size_t>(i)])] = i;
  }
  return values;
}
constexpr ByCharacter<signed char> kCommonValues = MakeCommonValues();

// Two characters, the first in the low byte.
using Pair = std::uint16_t;

constexpr char FirstOf(Pair pair) { return static_cast<char>(pair & 0xFF); }

void Store(char* out, Pair pair) { std::memcpy(out, &pair, sizeof pair); }

// What sets one alphabet apart.
struct Tail {
  char char62;
  char char63;
  char padding;  // NUL for none
};

// Reads a caller's tail of three characters; what stands behind a NUL in it counts as NUL.
constexpr Tail ReadTail(const char* text) {
  if (text == nullptr) return {'-', '_', '\0'};
  const char char62 = text[0];
  if (char62 == '\0') return {'\0', '\0', '\0'};
  const char char63 = text[1];
  if (char63 == '\0') return {char62, '\0', '\0'};
  return {char62, char63, text[2]};
}

// Any alphabet, one character at a time.
class Alphabet {
 public:
  constexpr explicit Alphabet(Tail tail) {
    characters_[62] = tail.char62;
    characters_[63] = tail.char63;
  }

  // The characters of twelve bits.
  [[nodiscard]] constexpr Pair PairOf(std::uint64_t bits) const {
    return static_cast<Pair>(IndexOf(characters_[bits / 64]) | IndexOf(characters_[bits % 64])
                                                                   << 8);
  }
  // A character that stands for several values has the least of them; NUL, the terminator, none.
  [[nodiscard]] constexpr int ValueOf(char c) const {
    const signed char common = kCommonValues[IndexOf(c)];
    if (common != kNoValue) return common;
    if (c == '\0') return kNoValue;
    if (c == characters_[62]) return 62;
    if (c == characters_[63]) return 63;
    return kNoValue;
  }
  // The 24 bits of four characters, negative when one has no value.
  [[nodiscard]] int GroupOf(char a, char b, char c, char d) const {
    return ValueOf(a) << 18 | ValueOf(b) << 12 | ValueOf(c) << 6 | ValueOf(d);
  }

 private:
  Characters characters_ = kUrlSafeCharacters;
};

// The same three functions by tables.
class Tables {
 public:
  constexpr explicit Tables(const Alphabet& alphabet) {
    for (unsigned i = 0; i < pairs_.size(); ++i) pairs_[i] = alphabet.PairOf(i);
    for (unsigned i = 0; i < 256; ++i) {
      const int value = alphabet.ValueOf(static_cast<char>(i));
      first_[i] = value << 18;
      second_[i] = value << 12;
      third_[i] = value << 6;
      fourth_[i] = value;
    }
  }

  [[nodiscard]] Pair PairOf(std::uint64_t bits) const { return pairs_[bits]; }
  [[nodiscard]] int ValueOf(char c) const { return fourth_[IndexOf(c)]; }
  [[nodiscard]] int GroupOf(char a, char b, char c, char d) const {
    return first_[IndexOf(a)] | second_[IndexOf(b)] | third_[IndexOf(c)] | fourth_[IndexOf(d)];
  }

 private:
  std::array<Pair, 4096> pairs_{};
  // The values at the places of a group.
  ByCharacter<int> first_{};
  ByCharacter<int> second_{};
  ByCharacter<int> third_{};
  ByCharacter<int> fourth_{};
};
constexpr Tables kUrlSafeTables{Alphabet(ReadTail("-_"))};
constexpr Tables kStandardTables{Alphabet(ReadTail("+/"))};

// Null for an alphabet without tables.
const Tables* TablesOf(Tail tail) {
  if (tail.char62 == '-' && tail.char63 == '_') return &kUrlSafeTables;
  if (tail.char62 == '+' && tail.char63 == '/') return &kStandardTables;
  return nullptr;
}

std::int64_t EncodedSize(std::int64_t length, bool isPadded) {
  const std::int64_t rest = length % 3;
  std::int64_t size = length / 3 * 4;
  if (rest != 0) size += isPadded ? 4 : rest + 1;
  return size;
}

// The eight bytes as one number, the first the highest; compilers make one load of it.
inline std::uint64_t BigEndian(const unsigned char* data) {
  return std::uint64_t{data[0]} << 56 | std::uint64_t{data[1]} << 48 |
         std::uint64_t{data[2]} << 40 | std::uint64_t{data[3]} << 32 |
         std::uint64_t{data[4]} << 24 | std::uint64_t{data[5]} << 16 | std::uint64_t{data[6]} << 8 |
         std::uint64_t{data[7]};
}

template <typename AnyAlphabet>
void Encode(char* out, const unsigned char* data, int length, char padding,
            const AnyAlphabet& alphabet) {
  // One load gives two groups, and two bytes that are not looked at.
  for (; length >= 8; length -= 6, data += 6, out += 8) {
    const std::uint64_t bits = BigEndian(data);
    Store(out, alphabet.PairOf(bits >> 52));
    Store(out + 2, alphabet.PairOf(bits >> 40 & 0xFFF));
    Store(out + 4, alphabet.PairOf(bits >> 28 & 0xFFF));
    Store(out + 6, alphabet.PairOf(bits >> 16 & 0xFFF));
  }
  for (; length >= 3; length -= 3, data += 3, out += 4) {
    Store(out, alphabet.PairOf(data[0] << 4 | data[1] >> 4));
    Store(out + 2, alphabet.PairOf((data[1] & 0xF) << 8 | data[2]));
  }
  if (length == 0) return;
  const unsigned second = length == 2 ? data[1] : 0U;
  Store(out, alphabet.PairOf(data[0] << 4 | second >> 4));
  out += 2;
  if (length == 2) *out++ = FirstOf(alphabet.PairOf((second & 0xF) << 8));
  if (padding != '\0') std::fill_n(out, 3 - length, padding);
}

template <typename AnyAlphabet>
int Decode(unsigned char* out, const char* text, int maxChars, char padding,
           const AnyAlphabet& alphabet) {
  int i = 0;
  int count = 0;
  for (; maxChars - i >= 4; i += 4, count += 3) {
    // Nothing behind the terminator is read.
    const char* group = text + i;
    if (group[0] == '\0' || group[1] == '\0' || group[2] == '\0') break;
    const int bits = alphabet.GroupOf(group[0], group[1], group[2], group[3]);
    if (bits < 0) break;
    if (out == nullptr) continue;
    out[count] = static_cast<unsigned char>(bits >> 16);
    out[count + 1] = static_cast<unsigned char>(bits >> 8);
    out[count + 2] = static_cast<unsigned char>(bits);
  }
  unsigned bits = 0;  // the characters so far; the older ones move out at the top
  for (; i < maxChars && text[i] != '\0'; ++i) {
    const int value = alphabet.ValueOf(text[i]);
    if (value == kNoValue) return text[i] == padding ? count : -1;
    bits = (bits << 6) | static_cast<unsigned>(value);
    const int place = i % 4;
    if (place == 0) continue;
    if (out != nullptr) out[count] = static_cast<unsigned char>(bits >> (6 - 2 * place));
    ++count;
  }
  return count;
}

}  // namespace

int btos(char* out, const unsigned char* data, int length, const char* alphabetTail) {
  const Tail tail = ReadTail(alphabetTail);
  if (data == nullptr || length < 0) length = 0;
  const std::int64_t size = EncodedSize(length, tail.padding != '\0');
  if (size > INT_MAX) return -1;
  if (out == nullptr) return static_cast<int>(size);
  if (const Tables* tables = TablesOf(tail)) {
    Encode(out, data, length, tail.padding, *tables);
  } else {
    Encode(out, data, length, tail.padding, Alphabet(tail));
  }
  return static_cast<int>(size);
}

int stob(unsigned char* out, const char* text, const char* alphabetTail, int maxChars) {
  if (text == nullptr) return 0;
  const Tail tail = ReadTail(alphabetTail);
  if (const Tables* tables = TablesOf(tail)) {
    return Decode(out, text, maxChars, tail.padding, *tables);
  }
  return Decode(out, text, maxChars, tail.padding, Alphabet(tail));
}
