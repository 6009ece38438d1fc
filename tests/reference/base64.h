// The defining forms of btos and stob.
#ifndef KVUTILS_TESTS_REFERENCE_BASE64_H_
#define KVUTILS_TESTS_REFERENCE_BASE64_H_

namespace kv::reference {

// The 64 characters of an alphabet and the padding character, NUL for none.
struct Alphabet {
  // A tail that is cut short by a NUL holds NUL from there on.
  explicit Alphabet(const char* tail) {
    if (tail == nullptr) return;
    characters[62] = tail[0];
    characters[63] = tail[0] == '\0' ? '\0' : tail[1];
    padding = characters[63] == '\0' ? '\0' : tail[2];
  }

  char characters[65] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";
  char padding = '\0';
};

inline int Encode(char* out, const unsigned char* data, int length, const char* alphabetTail) {
  const Alphabet alphabet(alphabetTail);
  const bool isPadded = alphabet.padding != '\0';
  const int rest = length % 3;
  const int size = length / 3 * 4 + (rest == 0 ? 0 : isPadded ? 4 : rest + 1);
  if (out == nullptr) return size;
  for (; length >= 3; length -= 3, data += 3) {
    *out++ = alphabet.characters[data[0] >> 2];
    *out++ = alphabet.characters[(data[0] & 3) << 4 | data[1] >> 4];
    *out++ = alphabet.characters[(data[1] & 15) << 2 | data[2] >> 6];
    *out++ = alphabet.characters[data[2] & 63];
  }
  if (rest == 1) {
    *out++ = alphabet.characters[data[0] >> 2];
    *out++ = alphabet.characters[(data[0] & 3) << 4];
  } else if (rest == 2) {
    *out++ = alphabet.characters[data[0] >> 2];
    *out++ = alphabet.characters[(data[0] & 3) << 4 | data[1] >> 4];
    *out++ = alphabet.characters[(data[1] & 15) << 2];
  }
  for (int i = rest; isPadded && i != 0 && i < 3; ++i) *out++ = alphabet.padding;
  return size;
}

inline int Decode(unsigned char* out, const char* text, const char* alphabetTail, int maxChars) {
  const Alphabet alphabet(alphabetTail);
  int count = 0;
  int bits = 0;
  const auto emit = [&](int byte) {
    if (out != nullptr) out[count] = static_cast<unsigned char>(byte);
    ++count;
  };
  for (int i = 0; i < maxChars && text[i] != '\0'; ++i) {
    const char c = text[i];
    int value = 0;
    if (c >= 'A' && c <= 'Z') {
      value = c - 'A';
    } else if (c >= 'a' && c <= 'z') {
      value = c - 'a' + 26;
    } else if (c >= '0' && c <= '9') {
      value = c - '0' + 52;
    } else if (c == alphabet.characters[62]) {
      value = 62;
    } else if (c == alphabet.characters[63]) {
      value = 63;
    } else {
      return c == alphabet.padding ? count : -1;
    }
    switch (i % 4) {
      case 1:
        emit(bits << 2 | value >> 4);
        break;
      case 2:
        emit((bits & 15) << 4 | value >> 2);
        break;
      case 3:
        emit((bits & 3) << 6 | value);
        break;
      default:
        break;
    }
    bits = value;
  }
  return count;
}

}  // namespace kv::reference

#endif  // KVUTILS_TESTS_REFERENCE_BASE64_H_
