#include "examples/tour/report.h"

#include "examples/tour/console.h"
#include "examples/tour/format_text.h"
#include "examples/tour/observer_time.h"
#include "examples/tour/resolution.h"
#include "examples/tour/sky_text.h"
#include "examples/tour/two_body.h"
#include "utils/paths/paths.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace tour {
namespace {

// Terrestrial time, in which orbits are reckoned, is ahead of UTC by 32.184 s and the 37 leap
// seconds since 2017. Taken for all years: a minute more or less shifts Ceres by about 1", the
// objects beyond Neptune by less.
constexpr double kTerrestrialMinusUtc = 69.184 / 86400.0;

// Whether the instant is so far from the epoch of the elements that the pull of the planets shows.
// Jupiter, next to the belt of asteroids, makes itself felt there sooner than any planet does
// beyond Neptune.
bool IsOld(const OrbitalElements& elements, double julianDate) {
  constexpr double kOrbitOfSaturn = 10.0;  // AU, the next whole number
  const double years = elements.semiMajorAxis < kOrbitOfSaturn ? 1.0 : 5.0;
  return std::abs(julianDate - elements.epoch) > years * 365.25;
}

void PrintSetting(const char* label, const std::string& value) {
  std::printf("  %s%s\n", Padded(label, 14).c_str(), value.c_str());
}

void PrintColumnHeads(const char* number, const char* name, const char* recognised,
                      const char* rightAscension, const char* declination, const char* earth,
                      const char* sun, const char* epoch) {
  std::printf("%8s  %-10s %-4s %-10s    %s  %9s  %9s   %s\n", number, name, recognised,
              rightAscension, Padded(declination, 9).c_str(), earth, sun, epoch);
}

void PrintPlace(const DwarfPlanet& planet, double julianDate) {
  const OrbitalElements& elements = planet.elements;
  const Place place = GeocentricPlace(elements, julianDate + kTerrestrialMinusUtc);
  std::printf("  %6u  %s %-4s %s    %s  %9.5f  %9.5f   %s%s\n", planet.name.number,
              Padded(planet.name.name, 10).c_str(),
              elements.standing == Standing::kRecognised ? "yes" : "-",
              RightAscensionText(place.rightAscension).c_str(),
              DeclinationText(place.declination).c_str(), place.earthDistance, place.sunDistance,
              DateText(CivilTimeOf(elements.epoch)).c_str(),
              IsOld(elements, julianDate) ? " *" : "");
}

std::string DiscoveryText(unsigned number) {
  for (const Discovery& discovery : ReadDiscoveries()) {
    if (discovery.number == number) {
      return "Discovered in " + discovery.year + " by " + discovery.discoverers + ".";
    }
  }
  return {};
}

}  // namespace

void PrintHeading(const Setting& setting) {
  KelvarisPath resolver;
  const double julianDate = JulianDate(setting.utc);
  std::printf("A tour of kvutils\n\n");
  PrintSetting("Installation", resolver.GetWorkFolder());
  PrintSetting("Your folder", resolver.GetWritableFolder());
  PrintSetting("Language",
               FormatText("%s, language folder \"%s\", code page %d", setting.language.c_str(),
                          KelvarisPath::GetLocaleFolder(), setting.codePage));
  PrintSetting("Observer", setting.observer.place);
  PrintSetting("Time", DateTimeText(setting.utc) + " UTC");
  PrintSetting("Local time", LocalTimeText(setting.observer.zone, julianDate));
}

void PrintResolutions() {
  PrintTitle("Where each data name leads");
  for (const char* name : {kListsName, kObserverName, kNamesName, kDiscoveriesName, kRecordsName}) {
    const Resolution resolution = Resolve(name);
    const std::string path =
        resolution.inWritableFolder ? "<your folder>\\" + resolution.path : resolution.path;
    std::printf("  %s\n      %s %s\n", name, Padded(path, 54).c_str(), resolution.reason.c_str());
  }
  std::printf("  %s lists %zu medium folders, %zu theme folders, %zu writable folders.\n",
              kListsName, KelvarisPath::ms_CDFolders.size(), KelvarisPath::ms_ThemePaths.size(),
              KelvarisPath::ms_WritablePaths.size());
}

void PrintPlaces(const DwarfPlanets& loaded, double julianDate) {
  const std::vector<DwarfPlanet>& planets = loaded.planets;
  PrintTitle("Where they stand, seen from the centre of the Earth (astrometric, J2000)");
  PrintColumnHeads("Number", "Name", "IAU", "Right asc.", "Declin.", "To Earth", "To Sun",
                   "Elements");
  PrintColumnHeads("", "", "", " h  m  s", "  °  ′  ″", "AU", "AU", "of");
  for (const DwarfPlanet& planet : planets) PrintPlace(planet, julianDate);
  const std::string missing = MissingText(loaded);
  if (!missing.empty()) std::printf("  %s\n", missing.c_str());
  std::puts("");
  std::puts(
      "  IAU: \"yes\" is a dwarf planet named by the International Astronomical Union, \"-\" one");
  std::puts("  that planetary scientists count as such.");
  std::puts(
      "  Plain two-body motion about the Sun: light time is allowed for, the pull of the planets");
  std::puts("  is not. Within months of the date of its elements a place holds to seconds of arc.");
  const bool anyOld = std::any_of(planets.begin(), planets.end(), [&](const DwarfPlanet& planet) {
    return IsOld(planet.elements, julianDate);
  });
  if (anyOld) {
    std::puts(
        "  * more than a year (beyond Saturn: five years) from the date of its elements: off by");
    std::puts(
        "  minutes of arc, and by degrees within a lifetime (Ceres in 1801: some 20 degrees).");
  }
}

void PrintPick(const DwarfPlanet& picked, const std::string& obstacle) {
  PrintTitle("Pick of the night");
  const ObjectName& name = picked.name;
  std::printf("  %s%s%s\n", name.name.c_str(), name.description.empty() ? "" : ": ",
              name.description.c_str());
  const std::string discovery = DiscoveryText(name.number);
  if (!discovery.empty()) std::printf("  %s\n", discovery.c_str());
  if (picked.elements.timesPicked == 0) {
    std::puts("  It has not been picked before.");
  } else {
    std::printf("  Picks before: %u, the last for %s.\n", picked.elements.timesPicked,
                DateText(picked.elements.lastPicked).c_str());
  }
  if (obstacle.empty()) {
    std::puts(
        "  This pick is noted in its record. The store saves its records to your folder when the");
    std::puts("  program ends, and the next run reads them there.");
  } else {
    std::printf("  This pick will be forgotten: %s.\n", obstacle.c_str());
  }
}

}  // namespace tour
