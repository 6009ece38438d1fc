// A small host of kvutils.dll: tells where the dwarf planets stand tonight, and shows on the way
// how the subsystems of the library meet. It expects the sample installation as current folder.

#include "examples/tour/arguments.h"
#include "examples/tour/console.h"
#include "examples/tour/dwarf_planets.h"
#include "examples/tour/format_text.h"
#include "examples/tour/observer_time.h"
#include "examples/tour/report.h"
#include "examples/tour/resolution.h"
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

int Complain(const std::string& complaint, int exitCode) {
  std::fprintf(stderr, "tour: %s\n", complaint.c_str());
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

int Tour(const Arguments& arguments) {
  KelvarisPath folders;  // the first one in the process finds the folders
  const Setting setting = Choose(arguments);
  if (!IsKnownZone(setting.observer.zone)) {
    return Complain(Resolve(kObserverName).file + ": " + NoZoneText(setting.observer.zone),
                    kFailure);
  }
  const DwarfPlanets loaded = LoadDwarfPlanets();
  if (loaded.planets.empty()) {
    return Complain("no dwarf planets: " + MissingText(loaded), kFailure);
  }
  const double julianDate = JulianDate(setting.utc);
  const DwarfPlanet& picked = PickOfTheNight(loaded.planets, julianDate);
  const bool canSave = IsFolder(folders.GetWritableFolder());
  PrintHeading(setting);
  PrintResolutions();
  PrintPlaces(loaded, julianDate);
  PrintPick(picked, canSave);
  if (canSave) NotePick(picked, DateNumber(setting.utc));
  return kSuccess;
}

int FollowArguments(const std::vector<std::string>& texts) {
  Arguments arguments;
  std::string complaint;
  if (ParseArguments(texts, arguments, complaint) && arguments.zone &&
      !IsKnownZone(*arguments.zone)) {
    complaint = NoZoneText(*arguments.zone);
  }
  if (!complaint.empty()) return Complain(complaint + "; --help explains", kUsageError);
  if (!arguments.help) return Tour(arguments);
  std::fputs(kHelp, stdout);
  return kSuccess;
}

int FollowArgumentsGuarded(const std::vector<std::string>& texts) {
  try {
    return FollowArguments(texts);
  } catch (const MException&) {
    FlushOutput();  // the exception has printed its message when it was made
    return Complain("stopped by the error above", kFailure);
  } catch (const std::exception& error) {
    return Complain(std::string("stopped: ") + error.what(), kFailure);
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
  return Complain("the output could not be written", kFailure);
}

}  // namespace
}  // namespace tour

int main() { return tour::Main(); }
