#include "utils/text/text.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace {

// Accented letters and, at the same place, the plain letter of each. Callers rely on this very
// list: three capitals of E and one small c are not in it; a letter that stands twice changes
// nothing.
constexpr std::wstring_view kAccented =
    L"ËĒĘĚĔĖ"
    L"èéêëēęěĕė"
    L"ÀÁÂÃÄÅĀĄĂÆ"
    L"àáâãäåāąăæ"
    L"ÌÍÎÏĪĨĬĮİ"
    L"ìíîïīĩĭį"
    L"ÙÚÛÜŪŮŰŬŨŲ"
    L"ùúûüūůűŭų"
    L"ÒÓÔÕÖØŌŐŎŒ"
    L"òóôõööøōōőŏœ"
    L"ÇĆČĈĊ"
    L"çćčĉ";
constexpr std::wstring_view kPlain =
    L"EEEEEEeeeeeeeeeAAAAAAAAAAaaaaaaaaaaIIIIIIIIIiiiiiiiiUUUUUUUUUUuuuuuuuuu"
    L"OOOOOOOOOOooooooooooooCCCCCcccc";
static_assert(kAccented.size() == kPlain.size());

constexpr wchar_t kSharpS = L'ß';

// All of them lie between these.
constexpr wchar_t kFirst = L'\u00C0';
constexpr wchar_t kLast = L'\u017F';

// The plain form of each letter from kFirst to kLast, the letter itself where there is none.
constexpr auto MakePlainForms() {
  std::array<wchar_t, kLast - kFirst + 1> forms{};
  for (std::size_t i = 0; i < forms.size(); ++i) forms[i] = static_cast<wchar_t>(kFirst + i);
  for (std::size_t i = 0; i < kAccented.size(); ++i) {
    forms[static_cast<std::size_t>(kAccented[i] - kFirst)] = kPlain[i];
  }
  return forms;
}
constexpr auto kPlainForms = MakePlainForms();

wchar_t PlainForm(wchar_t c) {
  if (c < kFirst || c > kLast) return c;
  return kPlainForms[static_cast<std::size_t>(c - kFirst)];
}

}  // namespace

bool FromDiacritic(wchar_t* out, const char* in, bool isUtf8) {
  if (out == nullptr) return true;
  for (const wchar_t c : Ascii2Unicode(in, isUtf8)) {
    if (c == kSharpS) {
      *out++ = L'S';
      *out++ = L'S';
    } else {
      *out++ = PlainForm(c);
    }
  }
  *out = L'\0';
  return true;
}

// Callers rely on the narrow form leaving the text alone.
bool FromDiacritic(char* /*text*/, int /*size*/, bool /*isUtf8*/) { return true; }
