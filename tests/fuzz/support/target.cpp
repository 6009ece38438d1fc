#include "tests/fuzz/support/target.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace kv::fuzz {
namespace {

std::vector<Target>& Registered() {
  static std::vector<Target> targets;
  return targets;
}

template <typename Unit>
std::string ShowUnits(std::basic_string_view<Unit> text, const char* escape) {
  std::string shown = "\"";
  for (const Unit unit : text) {
    const auto code = static_cast<unsigned>(static_cast<std::make_unsigned_t<Unit>>(unit));
    if (code >= ' ' && code < 0x7F && code != '"' && code != '\\') {
      shown += static_cast<char>(code);
    } else {
      char escaped[16];
      std::snprintf(escaped, sizeof escaped, escape, code);
      shown += escaped;
    }
  }
  return shown + "\"";
}

}  // namespace

Registration::Registration(Target target) {
  std::vector<Target>& targets = Registered();
  const auto place = std::upper_bound(
      targets.begin(), targets.end(), target,
      [](const Target& a, const Target& b) { return std::strcmp(a.name, b.name) < 0; });
  targets.insert(place, std::move(target));
}

const std::vector<Target>& Targets() { return Registered(); }

std::string Show(std::string_view text) { return ShowUnits(text, "\\x%02X"); }
std::string Show(std::wstring_view text) { return ShowUnits(text, "\\u%04X"); }

}  // namespace kv::fuzz
