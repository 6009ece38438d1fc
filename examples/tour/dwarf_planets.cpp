#include "examples/tour/dwarf_planets.h"

#include "examples/tour/format_text.h"
#include "examples/tour/resolution.h"
#include "utils/paths/paths.h"
#include "utils/text/text.h"

#include <algorithm>
#include <cmath>

namespace tour {
namespace {

SSO_ID Identifier(unsigned number) { return {kDwarfPlanetClass, number}; }

std::string MissingNamesText() {
  const Resolution names = Resolve(kNamesName);
  if (!names.file.empty()) return names.file + " names no object" + RemedyFor(names);
  KelvarisPath folders;
  return std::string(folders.GetWorkFolder()) + " is not the sample installation: it has no " +
         kNamesName;
}

}  // namespace

DwarfPlanets LoadDwarfPlanets() {
  DwarfPlanets loaded;
  std::vector<DwarfPlanet>& planets = loaded.planets;
  for (const ObjectName& name : ReadObjectNames()) {
    ++loaded.namedObjects;
    Elements block;
    if (!GetReader()->Get(&block, Identifier(name.number))) continue;
    if (const auto elements = Unpack(block)) planets.push_back({name, *elements});
  }
  std::stable_sort(planets.begin(), planets.end(), [](const auto& a, const auto& b) {
    return CompareStrings(a.name.name.c_str(), b.name.name.c_str(), false) == -1;
  });
  return loaded;
}

std::string MissingText(const DwarfPlanets& loaded) {
  if (loaded.namedObjects == 0) return MissingNamesText();
  const std::size_t missing = loaded.namedObjects - loaded.planets.size();
  if (missing == 0) return {};
  const std::string objects = FormatText("%zu of %zu named objects have no usable record in ",
                                         missing, loaded.namedObjects);
  const Resolution records = Resolve(kRecordsName);
  if (records.file.empty()) return objects + kRecordsName + ", which is not found";
  return objects + records.file + RemedyFor(records);
}

const DwarfPlanet& PickOfTheNight(const std::vector<DwarfPlanet>& planets, double julianDate) {
  const auto day = static_cast<std::size_t>(std::floor(julianDate + 0.5));
  return planets[day % planets.size()];
}

void NotePick(const DwarfPlanet& planet, std::uint32_t dateNumber) {
  OrbitalElements elements = planet.elements;
  ++elements.timesPicked;
  elements.lastPicked = dateNumber;
  GetReader()->Set({Pack(elements), Identifier(planet.name.number)});
}

}  // namespace tour
