// Percent escapes and the parts of URLs beside readers of one character after the other.
#include <algorithm>
#include <cctype>
#include <optional>
#include <string>
#include <string_view>

#include "tests/fuzz/support/guarded_copy.h"
#include "tests/fuzz/support/target.h"
#include "tests/reference/encoding.h"
#include "utils/text/text.h"

namespace kv::fuzz {
namespace {

bool IsHex(char c) { return std::isxdigit(static_cast<unsigned char>(c)) != 0; }
bool IsUpperHex(char c) { return IsHex(c) && std::islower(static_cast<unsigned char>(c)) == 0; }
int Hex(std::string_view digits) { return std::stoi(std::string(digits), nullptr, 16); }

std::string Decoded(std::string_view text) {
  std::string decoded;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%' && i + 2 < text.size() && IsUpperHex(text[i + 1]) &&
        IsUpperHex(text[i + 2])) {
      decoded += static_cast<char>(Hex(text.substr(i + 1, 2)));
      i += 2;
    } else {
      decoded += text[i];
    }
  }
  return decoded;
}

void CheckDecoding(const std::string& bytes) {
  const GuardedCopy<char> in(bytes);
  const GuardedRoom<char> out(bytes.size() + 1);
  if (bytes.size() < 2) return;
  const std::string expected = Decoded(bytes);
  decodeURL(out.Get(), in.Get(), static_cast<int>(bytes.size()));
  Expect("decoded", out.Units().substr(0, expected.size() + 1), expected + '\0');
  decodeURL(in.Get(), in.Get(), static_cast<int>(bytes.size()) - 1);
  const std::string shorter = Decoded(bytes.substr(0, bytes.size() - 1));
  Expect("decoded in place", in.Units().substr(0, shorter.size() + 1), shorter + '\0');
  const GuardedText text(bytes.c_str());
  decodeURL(text.Get(), text.Get(), 0);
  const std::string whole = Decoded(bytes.c_str());
  Expect("text decoded", text.Units().substr(0, whole.size() + 1), whole + '\0');
}

// The units of a text whose escapes are well formed.
std::optional<std::wstring> Units(std::string_view text, bool& isWide) {
  std::wstring units;
  isWide = false;
  const auto areHex = [&](std::size_t begin, std::size_t count) {
    if (begin + count > text.size()) return false;
    for (std::size_t i = begin; i < begin + count; ++i) {
      if (!IsHex(text[i])) return false;
    }
    return true;
  };
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '%') {
      units += static_cast<wchar_t>(static_cast<signed char>(text[i]));
    } else if (areHex(i + 1, 2)) {
      units += static_cast<wchar_t>(Hex(text.substr(i + 1, 2)));
      i += 2;
    } else if (i + 1 < text.size() && text[i + 1] == 'u' && areHex(i + 2, 4)) {
      units += static_cast<wchar_t>(Hex(text.substr(i + 2, 4)));
      i += 5;
      isWide = true;
    } else {
      return std::nullopt;
    }
  }
  return units;
}

void CheckUnescape(const std::string& text) {
  const GuardedText in(text);
  bool isWide = false;
  const std::optional<std::wstring> units = Units(text, isWide);
  std::string expected;
  int size = -1;
  if (units && !isWide) {
    for (const wchar_t unit : *units) expected += static_cast<char>(unit);
    size = static_cast<int>(expected.size());
  } else if (units) {
    expected.resize(3 * units->size());
    int room = static_cast<int>(expected.size());
    size = reference::Utf16ToUtf8(expected.data(), room, units->data(),
                                  static_cast<int>(units->size()));
    if (size < 0) size = -1;
  }
  Expect("size of unescaped", unescape(nullptr, in.Get()), size);
  if (size < 0) return;
  expected.resize(static_cast<std::size_t>(size));
  const GuardedRoom<char> out(expected.size() + 1);
  Expect("result of unescape", unescape(out.Get(), in.Get()), size + (isWide ? 1 : 0));
  Expect("unescaped", out.Units(), expected + (isWide ? GuardedRoom<char>::kFill : '\0'));
}

constexpr char kUntouched[] = "(untouched)";

struct Parts {
  std::string scheme = kUntouched;
  std::string host = kUntouched;
  std::string port = kUntouched;
  std::string path = kUntouched;

  [[nodiscard]] std::string All() const { return scheme + '\n' + host + '\n' + port + '\n' + path; }
};

Parts Split(std::string rest) {
  Parts parts;
  if (const std::size_t mark = rest.find("://"); mark != std::string::npos) {
    parts.scheme = rest.substr(0, mark);
    rest = rest.substr(mark + 3);
  }
  const std::size_t slash = rest.find('/');
  const std::size_t colon = rest.find(':');
  const std::size_t end = std::min(slash, rest.size());
  if (colon < end) parts.port = rest.substr(colon + 1, end - colon - 1);
  parts.host = rest.substr(0, std::min(colon, end));
  if (slash != std::string::npos) parts.path = rest.substr(slash);
  return parts;
}

void CheckParts(const std::string& url) {
  const GuardedText in(url);
  const Parts expected = Split(url);
  Parts parts;
  extractURLParts(in.Get(), &parts.scheme, &parts.host, &parts.port, &parts.path);
  Expect("parts", parts.All(), expected.All());
  // Each alone is what it is among all.
  Parts alone;
  extractURLParts(in.Get(), &alone.scheme, nullptr, nullptr, nullptr);
  extractURLParts(in.Get(), nullptr, &alone.host, nullptr, nullptr);
  extractURLParts(in.Get(), nullptr, nullptr, &alone.port, nullptr);
  extractURLParts(in.Get(), nullptr, nullptr, nullptr, &alone.path);
  Expect("parts one by one", alone.All(), expected.All());
}

void Check(Input input) {
  const std::string bytes(input.Rest());
  const std::string text = bytes.c_str();
  CheckDecoding(bytes);
  CheckUnescape(text);
  CheckParts(text);
  const GuardedText scheme(text);
  SetAppExternalURLScheme(scheme.Get());
  Expect("scheme", std::string(GetAppExternalURLScheme()), text.substr(0, 64));
}

const Registration kTarget({.name = "urls",
                            .check = Check,
                            .seeds = {"https://example.org:8080/p%2Fq/%41%6d?x=1+2",
                                      "a%u00e9%20%uD83D%uDE00", "host/path:80", "://", "%u%2"},
                            .words = {"%2F", "%2f", "%u00e9", "%uD83D", "%uDE00", "://", "%41"}});

}  // namespace
}  // namespace kv::fuzz
