#include "tests/faults/operations.h"

#include <windows.h>

#include <new>
#include <stdexcept>

#include "tests/support/files.h"
#include "utils/astro/astro.h"
#include "utils/files/files.h"
#include "utils/paths/paths.h"
#include "utils/platform/platform.h"

namespace kv::test {

std::string OutcomeOf(const Operation& operation) {
  try {
    return operation.run();
  } catch (const MException& error) {
    std::string message = error.GetMessageA();
    if (message.ends_with('\n')) message.pop_back();
    return "MException " + std::to_string(error.GetCode()) + ": " + message;
  } catch (const std::bad_alloc&) {
    return "bad_alloc";
  } catch (const std::exception& error) {
    return error.what();
  }
}

void ForgetEverything() {
  KelvarisPath::Done();
  KelvarisPath::sFeaturePackFolder.clear();
  KelvarisPath::SetLocaleFolder("en");
  for (char* folder :
       {KelvarisPath::ms_WorkDir, KelvarisPath::ms_CDPath, KelvarisPath::ms_WritablePath,
        KelvarisPath::ms_UserPath, KelvarisPath::ms_WorkspacesFolder}) {
    folder[0] = '\0';
  }
  KelvarisPath::ms_IsInit = false;
  DwarfPlanetsIO::ms_DwarfPlanets.clear();
  DwarfPlanetsIO::ms_IsChanged = false;
  SetSystemLocale("");
  getLocalUTCDeltaForTimezone(nullptr, 0.0);
}

std::string DocumentsFolder() {
  wchar_t path[MAX_PATH] = L"";
  ::GetEnvironmentVariableW(L"KVUTILS_DOCUMENTS", path, MAX_PATH);
  return Narrow(path);
}

std::string ContentOf(const std::string& path) {
  return FileExists(path) ? ReadBytes(path) : "none";
}

}  // namespace kv::test
