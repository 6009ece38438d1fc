// Classes of 7-bit characters, the same in every locale. Bytes above 127 are parts of UTF-8
// sequences and belong to none.
#ifndef KVUTILS_UTILS_INTERNAL_CHARACTERS_H_
#define KVUTILS_UTILS_INTERNAL_CHARACTERS_H_

namespace kv::internal {

constexpr bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

constexpr bool IsUpperHexDigit(char c) { return IsDigit(c) || (c >= 'A' && c <= 'F'); }

constexpr bool IsHexDigit(char c) { return IsUpperHexDigit(c) || (c >= 'a' && c <= 'f'); }

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_INTERNAL_CHARACTERS_H_
