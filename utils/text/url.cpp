#include "utils/text/text.h"

#include "utils/internal/characters.h"

#include <cstring>
#include <string_view>

namespace {

using kv::internal::IsUpperHexDigit;

constexpr std::size_t kSchemeSize = 64;

// The zero byte behind the scheme's own 64 bytes is never written.
char appScheme[kSchemeSize + 1];

}  // namespace

void decodeURL(char* out, const char* in, int inLen) {
  if (out == nullptr) return;
  if (in == nullptr || inLen < 0) {
    in = "";
    inLen = 0;
  }
  const std::size_t size = inLen == 0 ? std::strlen(in) : static_cast<std::size_t>(inLen);
  for (std::size_t i = 0; i < size;) {
    // Callers rely on lower-case hex digits not being decoded.
    if (size - i > 2 && in[i] == '%' && IsUpperHexDigit(in[i + 1]) && IsUpperHexDigit(in[i + 2])) {
      *out++ = static_cast<char>(valhex(in[i + 1]) * 16 + valhex(in[i + 2]));
      i += 3;
    } else {
      *out++ = in[i++];
    }
  }
  *out = '\0';
}

void extractURLParts(const char* url, std::string* scheme, std::string* host, std::string* port,
                     std::string* path) {
  if (url == nullptr) return;
  constexpr std::string_view kSchemeEnd = "://";
  const std::string whole = url;  // an output may own url
  std::string_view rest = whole;
  const auto assign = [](std::string* part, std::string_view text) {
    if (part != nullptr) *part = text;
  };

  const std::size_t schemeEnd = rest.find(kSchemeEnd);
  if (schemeEnd != std::string_view::npos) {
    assign(scheme, rest.substr(0, schemeEnd));
    rest.remove_prefix(schemeEnd + kSchemeEnd.size());
  }

  const std::size_t slash = rest.find('/');
  const std::string_view authority = rest.substr(0, slash);
  const std::size_t colon = authority.find(':');
  if (colon != std::string_view::npos) assign(port, authority.substr(colon + 1));
  assign(host, authority.substr(0, colon));
  if (slash != std::string_view::npos) assign(path, rest.substr(slash));
}

void SetAppExternalURLScheme(const char* scheme) {
  if (scheme == nullptr) scheme = "";
  const std::size_t length = ::strnlen(scheme, kSchemeSize);
  std::memmove(appScheme, scheme, length);
  std::memset(appScheme + length, 0, kSchemeSize - length);
}

const char* GetAppExternalURLScheme() { return appScheme; }
