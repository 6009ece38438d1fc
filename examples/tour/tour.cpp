// A small host of kvutils.dll: tells where the dwarf planets stand tonight, shows on the way how
// the subsystems of the library meet, and then what they do besides. It expects the sample
// installation as current folder.

#include "examples/tour/arguments.h"
#include "examples/tour/console.h"
#include "examples/tour/dwarf_planets.h"
#include "examples/tour/format_text.h"
#include "examples/tour/observer_time.h"
#include "examples/tour/report.h"
#include "examples/tour/resolution.h"
#include "examples/tour/saving.h"
#include "examples/tour/services.h"
#include "utils/files/files.h"
#include "utils/paths/paths.h"
#include "utils/platform/platform.h"
#include "utils/text/text.h"

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

namespace tour {
namespace {

constexpr int kSuccess = 0;
constexpr int kFailure = 1;
constexpr int kUsageError = 2;

int Fail(const std::string& complaint, int exitCode) {
  Complain(complaint);
  return exitCode;
}

std::string NoZoneText(const std::string& zone) {
  return Quoted(zone) + " is not a time zone like Europe/Berlin";
}

// What an application chooses once at its start, after the resolver knows the folders.
Setting Choose(const Arguments& arguments) {
  Setting setting;
  setting.language = arguments.language.value_or("en");
  SetLocalFolder(setting.language.c_str());
  SetSystemLocale(setting.language.c_str());
  setting.codePage = SetCodePage(setting.language.c_str());
  setting.observer = arguments.zone ? Observer{.place = "given by --zone", .zone = *arguments.zone}
                                    : ReadObserver();
  setting.utc = arguments.time ? *arguments.time : Now();
  return setting;
}

// Where the dwarf planets stand, and the pick of the night, which is noted in the store.
void PrintPlacesHalf(const DwarfPlanets& loaded, const Setting& setting) {
  const double julianDate = JulianDate(setting.utc);
  const DwarfPlanet& picked = PickOfTheNight(loaded.planets, julianDate);
  const std::string obstacle = SavingObstacle();
  PrintResolutions();
  PrintPlaces(loaded, julianDate);
  PrintPick(picked, obstacle);
  if (obstacle.empty()) NotePick(picked, DateNumber(setting.utc));
}

int Tour(const Arguments& arguments) {
  KelvarisPath folders;  // the first one in the process finds the folders
  const Setting setting = Choose(arguments);
  if (!IsKnownZone(setting.observer.zone)) {
    return Fail(Resolve(kObserverName).file + ": " + NoZoneText(setting.observer.zone), kFailure);
  }
  if (!arguments.Shows(kPlacesHalf)) {
    PrintHeading(setting);
    return PrintServices() ? kSuccess : kFailure;
  }
  const DwarfPlanets loaded = LoadDwarfPlanets();
  if (loaded.planets.empty()) return Fail("no dwarf planets: " + MissingText(loaded), kFailure);
  PrintHeading(setting);
  PrintPlacesHalf(loaded, setting);
  return !arguments.Shows(kServicesHalf) || PrintServices() ? kSuccess : kFailure;
}

int FollowArguments(const std::vector<std::string>& texts) {
  Arguments arguments;
  std::string complaint;
  if (ParseArguments(texts, arguments, complaint) && arguments.zone &&
      !IsKnownZone(*arguments.zone)) {
    complaint = NoZoneText(*arguments.zone);
  }
  if (!complaint.empty()) return Fail(complaint + "; --help explains", kUsageError);
  if (!arguments.help) return Tour(arguments);
  std::fputs(kHelp, stdout);
  return kSuccess;
}

int FollowArgumentsGuarded(const std::vector<std::string>& texts) {
  try {
    return FollowArguments(texts);
  } catch (const MException&) {
    return Fail("stopped by the error above", kFailure);  // it was printed when it was thrown
  } catch (const std::exception& error) {
    return Fail(std::string("stopped: ") + error.what(), kFailure);
  }
}

// What an application does last. The store of dwarf planets saves itself later still, when the
// library is unloaded.
void Finish() {
  KelvarisPath::Done();
  getLocalUTCDeltaForTimezone(nullptr, 0.0);
}

int Main() {
  PrepareConsole();
  const int exitCode = FollowArgumentsGuarded(CommandLineArguments());
  Finish();
  if (FlushOutput()) return exitCode;
  return Fail("the output could not be written", kFailure);
}

}  // namespace
}  // namespace tour

int main() { return tour::Main(); }
