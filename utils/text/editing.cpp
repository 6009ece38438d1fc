#include "utils/text/text.h"

#include "utils/internal/characters.h"

#include <cctype>
#include <cstring>
#include <string_view>

namespace {

using kv::internal::IsSpace;

bool IsBorderSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

std::string_view WithoutBorderSpace(std::string_view text) {
  while (!text.empty() && IsBorderSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBorderSpace(text.back())) text.remove_suffix(1);
  return text;
}

// Closes up the characters of s that `isRemoved` does not name.
template <typename Predicate>
void RemoveIf(char* s, Predicate isRemoved) {
  if (s == nullptr) return;
  char* end = s;
  for (; *s != '\0'; ++s) {
    if (!isRemoved(*s)) *end++ = *s;
  }
  *end = '\0';
}

// Maps the 7-bit characters of s with toupper or tolower. Bytes above 127 stay as they are in every
// locale: they are parts of UTF-8 sequences.
void MapAscii(char* s, int (*map)(int)) {
  if (s == nullptr) return;
  for (; *s != '\0'; ++s) {
    const auto byte = static_cast<unsigned char>(*s);
    if (byte < 0x80) *s = static_cast<char>(map(byte));
  }
}

}  // namespace

void DeleteBorderSpace(char* s) {
  if (s == nullptr) return;
  const std::string_view kept = WithoutBorderSpace(s);
  if (kept.data() != s) std::memmove(s, kept.data(), kept.size());
  s[kept.size()] = '\0';
}

void DeleteBorderSpaces(std::string& s) {
  const std::string_view kept = WithoutBorderSpace(s);
  const std::size_t first = static_cast<std::size_t>(kept.data() - s.data());
  s.erase(first + kept.size());
  s.erase(0, first);
}

bool IsEmptyString(const std::string& s) { return WithoutBorderSpace(s).empty(); }

void ClearStringRight(char* s) {
  if (s == nullptr) return;
  std::size_t length = std::strlen(s);
  while (length > 0 && IsSpace(s[length - 1])) --length;
  s[length] = '\0';
}

void ClearString(char* s) { RemoveIf(s, IsSpace); }

void ClearString(std::string* s) {
  if (s != nullptr) std::erase_if(*s, IsSpace);
}

void ClearString(char* s, const char* set) {
  if (set == nullptr) return;
  RemoveIf(s, [set](char c) { return std::strchr(set, c) != nullptr; });
}

void ReplaceChar(char* s, char from, char to) {
  const char set[] = {from, '\0'};
  ReplaceChars(s, set, to);
}

void ReplaceChars(char* s, const char* set, char to) {
  if (s == nullptr || set == nullptr) return;
  for (s += std::strcspn(s, set); *s != '\0'; s += std::strcspn(s, set)) *s++ = to;
}

void UpperString(char* s) { MapAscii(s, std::toupper); }

void LowerString(char* s) { MapAscii(s, std::tolower); }
