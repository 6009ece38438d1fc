#include "utils/platform/platform.h"

#include "utils/internal/text_view.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace {

// Process-wide and unguarded: set by the host's main thread.
unsigned int workspaceVersion = 0x08010000;
bool isRetinaDisplay = false;
bool isNightVision = false;

constexpr std::string_view kDictionaryLanguages[] = {"de", "en", "fr", "ru"};

constexpr std::string_view kPanelEndingWithoutDictionary = "_wd.ldf";

}  // namespace

unsigned int GetWorkspaceVersion() { return workspaceVersion; }

void SetWorkspaceVersion(unsigned int version) { workspaceVersion = version; }

unsigned int IsRetinaDisplay() { return isRetinaDisplay ? 1 : 0; }

void SetRetinaDisplay(bool isRetina) { isRetinaDisplay = isRetina; }

void SetNightVision(int on) { isNightVision = on != 0; }

int GetNightVision() { return isNightVision ? 1 : 0; }

int isDictionaryEnable() {
  const auto* const end = std::end(kDictionaryLanguages);
  return std::find(std::begin(kDictionaryLanguages), end, GetSystemLocale()) != end ? 1 : 0;
}

std::string GetPanelLdfFileNameWD(const char* name) {
  const std::string_view panel = kv::internal::ViewOf(name);
  if (isDictionaryEnable() != 0) return std::string(panel);
  // Callers rely on the cut at the first ".": "panel.small.ldf" gives "panel_wd.ldf".
  return std::string(panel.substr(0, panel.find('.'))).append(kPanelEndingWithoutDictionary);
}

// Callers rely on each of these answers, the one about the tablet among them.
const char* GetVersionString() { return "9.0.0"; }

int GetBuildNumber() { return -1; }

int IsiPad() { return 1; }

void* GetNullIrrlichDevice() { return nullptr; }

void* createOSSpecificThreadObject() { return nullptr; }

void releaseOSSpecificThreadObject() {}
