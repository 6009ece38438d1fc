// A small host of kvutils.dll: tells where the dwarf planets stand tonight, and shows on the way
// how the subsystems of the library meet. It expects the sample installation as current folder.

#include <cstdio>
#include <string>
#include <vector>

#include "examples/tour/arguments.h"
#include "examples/tour/console.h"
#include "examples/tour/dwarf_planets.h"
#include "examples/tour/observer_time.h"
#include "examples/tour/report.h"
#include "utils/files/files.h"
#include "utils/paths/paths.h"
#include "utils/platform/platform.h"
#include "utils/text/text.h"

namespace tour {
namespace {

constexpr int kSuccess = 0;
constexpr int kFailure = 1;
constexpr int kUsageError = 2;

int Complain(const std::string& complaint, int exitCode) {
  std::fprintf(stderr, "tour: %s\n", complaint.c_str());
  return exitCode;
}

// What an application chooses once at its start, after the resolver knows the folders.
Setting Choose(const Arguments& arguments) {
  SetLocalFolder(arguments.language.c_str());
  SetSystemLocale(arguments.language.c_str());
  Setting setting;
  setting.language = arguments.language;
  setting.codePage = SetCodePage(arguments.language.c_str());
  setting.observer = ReadObserver();
  if (arguments.zone) setting.observer.zone = *arguments.zone;
  setting.utc = arguments.time ? *arguments.time : Now();
  return setting;
}

int Tour(const Arguments& arguments) {
  KelvarisPath folders;  // the first one in the process finds the folders
  const Setting setting = Choose(arguments);
  if (!IsKnownZone(setting.observer.zone)) {
    return Complain("\"" + setting.observer.zone + "\" is not a time zone like Europe/Berlin",
                    arguments.zone ? kUsageError : kFailure);
  }
  const std::vector<DwarfPlanet> planets = LoadDwarfPlanets();
  if (planets.empty()) {
    return Complain(std::string("no dwarf planets: ") + folders.GetWorkFolder() +
                        " is not the sample installation",
                    kFailure);
  }
  const double julianDate = JulianDate(setting.utc);
  const DwarfPlanet& picked = PickOfTheNight(planets, julianDate);
  PrintHeading(setting);
  PrintResolutions();
  PrintPlaces(planets, julianDate);
  PrintPick(picked);
  NotePick(picked, DateNumber(setting.utc));
  return kSuccess;
}

// What an application does last. The store of dwarf planets saves itself later still, when the
// library is unloaded.
void Finish() {
  KelvarisPath::Done();
  getLocalUTCDeltaForTimezone(nullptr, 0.0);
}

int Main(int argc, const char* const* argv) {
  Arguments arguments;
  std::string complaint;
  if (!ParseArguments(argc, argv, arguments, complaint)) {
    return Complain(complaint + "; --help explains", kUsageError);
  }
  if (arguments.help) {
    std::fputs(kHelp, stdout);
    return kSuccess;
  }
  try {
    const int exitCode = Tour(arguments);
    Finish();
    return exitCode;
  } catch (const MException&) {
    return kFailure;  // the exception has shown its message when it was made
  }
}

}  // namespace
}  // namespace tour

int main(int argc, char** argv) {
  tour::PrepareConsole();
  return tour::Main(argc, argv);
}
