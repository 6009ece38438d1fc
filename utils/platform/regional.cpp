#include "utils/platform/platform.h"

#include "utils/internal/win32.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <optional>
#include <string_view>

namespace {

constexpr int kUnset = -1;
constexpr int k24Hours = 1;

constexpr std::string_view kDefaultLanguage = "en";
constexpr std::string_view kSupportedLanguages[] = {"en", "de", "fr", "ru", "es", "it", "nl", "ja"};

// Process-wide and unguarded: set once at start by the host's main thread.
int clockSetting = kUnset;
char languageCode[32] = "";  // empty until it is set or detected

// Stores as much of the code as fits. The code may lie in the buffer itself.
void StoreLanguage(std::string_view code) {
  const std::size_t length = std::min(code.size(), sizeof languageCode - 1);
  std::memmove(languageCode, code.data(), length);
  languageCode[length] = '\0';
}

// The user's language if it is a supported one: the text before the first "-" of the locale name.
std::optional<std::string_view> DetectLanguage() {
  wchar_t locale[LOCALE_NAME_MAX_LENGTH];
  if (::GetUserDefaultLocaleName(locale, LOCALE_NAME_MAX_LENGTH) == 0) return std::nullopt;
  char utf8[256];
  if (::WideCharToMultiByte(CP_UTF8, 0, locale, -1, utf8, sizeof utf8, nullptr, nullptr) == 0) {
    return std::nullopt;
  }
  const std::string_view name(utf8);
  const auto* supported = std::find(std::begin(kSupportedLanguages), std::end(kSupportedLanguages),
                                    name.substr(0, name.find('-')));
  if (supported == std::end(kSupportedLanguages)) return std::nullopt;
  return *supported;
}

}  // namespace

bool is24HoursSystemTimeFormat() {
  // With LOCALE_RETURN_NUMBER the "text" is a 32-bit number: 0 for the 12-hour clock.
  DWORD indicator = 0;
  const int size = ::GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_ITIME | LOCALE_RETURN_NUMBER,
                                    reinterpret_cast<char*>(&indicator), sizeof indicator);
  return size != 0 && indicator != 0;
}

void set24HoursKvTimeFormat(int value) { clockSetting = value; }

int get24HoursKvTimeFormat() {
  // Callers rely on the 24-hour default, whatever the regional setting says.
  if (clockSetting == kUnset) clockSetting = k24Hours;
  return clockSetting;
}

void SetSystemLocale(const char* code) { StoreLanguage(code == nullptr ? "" : code); }

const char* GetSystemLocale() {
  if (languageCode[0] == '\0') StoreLanguage(DetectLanguage().value_or(kDefaultLanguage));
  return languageCode;
}
