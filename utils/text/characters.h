#ifndef KVUTILS_UTILS_TEXT_CHARACTERS_H_
#define KVUTILS_UTILS_TEXT_CHARACTERS_H_

#include <cctype>

namespace kv::internal {

// The classification of isspace for 7-bit characters. Bytes above 127 are parts of UTF-8 sequences
// and no white space, even where the locale of the process knows some as such.
inline bool IsSpace(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < 0x80 && std::isspace(byte) != 0;
}

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_TEXT_CHARACTERS_H_
