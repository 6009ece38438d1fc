// The defining forms of the counted converters and of Ascii2Unicode: one unit at a time.
#ifndef KVUTILS_TESTS_REFERENCE_ENCODING_H_
#define KVUTILS_TESTS_REFERENCE_ENCODING_H_

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>

namespace kv::reference {

// Counts every unit, stores those that fit.
template <typename Unit>
class Counted {
 public:
  Counted(Unit* out, int capacity) : out_(out), capacity_(out == nullptr ? 0 : capacity) {}

  [[nodiscard]] bool IsFull() const { return count_ >= capacity_; }

  void Put(int unit) {
    if (count_ < capacity_) out_[count_] = static_cast<Unit>(unit);
    ++count_;
  }

  void PutPair(int first, int second) {
    if (capacity_ - count_ >= 2) {
      out_[count_] = static_cast<Unit>(first);
      out_[count_ + 1] = static_cast<Unit>(second);
    }
    count_ += 2;
  }

  int Finish(int& outLen) const {
    if (count_ <= std::max(capacity_, 0)) return count_;
    outLen = count_;
    return -1;
  }

 private:
  Unit* out_;
  int capacity_;
  int count_ = 0;
};

inline int Byte(char c) { return static_cast<unsigned char>(c); }

inline int Isolat1ToUtf8(char* out, int& outLen, const char* in, int inLen) {
  Counted<char> output(out, outLen);
  for (int i = 0; i < inLen; ++i) {
    const int byte = Byte(in[i]);
    if (byte < 0x80) {
      output.Put(byte);
    } else {
      output.Put(0xC0 | (byte >> 6));
      output.Put(0x80 | (byte & 0x3F));
    }
  }
  return output.Finish(outLen);
}

inline int Utf8ToIsolat1(char* out, int& outLen, const char* in, int inLen) {
  Counted<char> output(out, outLen);
  for (int i = 0; i < inLen; ++i) {
    const int lead = Byte(in[i]);
    if (lead < 0x80) {
      output.Put(lead);
      continue;
    }
    if ((lead != 0xC2 && lead != 0xC3) || i + 1 == inLen) return -2;
    const int next = Byte(in[i + 1]);
    if (!output.IsFull()) ++i;
    output.Put((lead << 6) | (next & 0x3F));
  }
  return output.Finish(outLen);
}

inline int Utf16ToUtf8(char* out, int& outLen, const wchar_t* in, int inLen) {
  Counted<char> output(out, outLen);
  for (int i = 0; i < inLen; ++i) {
    int c = in[i];
    if ((c & 0xFC00) == 0xD800) {
      if (++i == inLen || (in[i] & 0xFC00) != 0xDC00) return -2;
      c = ((c << 10) | (in[i] & 0x3FF)) & 0xFFFF;
    }
    if (c < 0x80) {
      output.Put(c);
    } else if (c < 0x800) {
      output.Put(0xC0 | (c >> 6));
      output.Put(0x80 | (c & 0x3F));
    } else {
      output.Put(0xE0 | (c >> 12));
      output.Put(0x80 | ((c >> 6) & 0x3F));
      output.Put(0x80 | (c & 0x3F));
    }
  }
  return output.Finish(outLen);
}

inline int Utf8ToUtf16(wchar_t* out, int& outLen, const char* in, int inLen) {
  Counted<wchar_t> output(out, outLen);
  for (int i = 0; i < inLen; ++i) {
    int value = Byte(in[i]);
    if (value < 0x80) {
      output.Put(value);
      continue;
    }
    if (value < 0xC0 || value > 0xF7) return -2;
    int more = value < 0xE0 ? 1 : value < 0xF0 ? 2 : 3;
    value &= 0x3F >> more;
    for (; more > 0; --more) {
      if (++i == inLen || (Byte(in[i]) & 0xC0) != 0x80) return -2;
      value = (value << 6) | (in[i] & 0x3F);
    }
    if (value >= 0x110000) return -2;
    if (value < 0x10000) {
      output.Put(value);
    } else {
      output.PutPair(0xD800 | ((value - 0x10000) >> 10), 0xDC00 | ((value - 0x10000) & 0x3FF));
    }
  }
  return output.Finish(outLen);
}

// Measures and converts; malformed UTF-8 ends in front of the fault.
inline std::wstring Ascii2Unicode(const char* text, bool isUtf8) {
  const int length = static_cast<int>(std::strlen(text));
  std::unique_ptr<char[]> converted;
  if (!isUtf8) {
    int size = 0;
    Isolat1ToUtf8(nullptr, size, text, length);
    converted.reset(new char[static_cast<std::size_t>(size) + 1]);
    Isolat1ToUtf8(converted.get(), size, text, length);
    converted[static_cast<std::size_t>(size)] = '\0';
  }
  const char* const utf8 = isUtf8 ? text : converted.get();
  int size = 0;
  const bool isMalformed = Utf8ToUtf16(nullptr, size, utf8, length) == -2;
  if (isMalformed) size = length;
  const auto units = static_cast<std::size_t>(size) + 1;
  const std::unique_ptr<wchar_t[]> wide(new wchar_t[units]);
  if (isMalformed) std::fill_n(wide.get(), units, L'\0');
  Utf8ToUtf16(wide.get(), size, utf8, length);
  wide[units - 1] = L'\0';
  return wide.get();
}

}  // namespace kv::reference

#endif  // KVUTILS_TESTS_REFERENCE_ENCODING_H_
