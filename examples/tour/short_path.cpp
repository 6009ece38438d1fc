#include "examples/tour/short_path.h"

#include "utils/text/text.h"

#include <windows.h>

#include <algorithm>
#include <iterator>

namespace tour {
namespace {

template <typename Text>
bool IsPlain(const Text& text) {
  return std::all_of(text.begin(), text.end(), [](auto c) { return c > ' ' && c < '\x7F'; });
}

}  // namespace

std::string PlainPath(const std::string& path) {
  if (IsPlain(path)) return path;
  wchar_t shortPath[MAX_PATH] = L"";
  const DWORD length = ::GetShortPathNameW(Ascii2Unicode(path.c_str(), true).c_str(), shortPath,
                                           static_cast<DWORD>(std::size(shortPath)));
  const std::wstring units(shortPath, length < std::size(shortPath) ? length : 0);
  if (!IsPlain(units)) return {};
  std::string plain;
  for (const wchar_t unit : units) plain += static_cast<char>(unit);
  return plain;
}

}  // namespace tour
