#include "examples/tour/dwarf_planets.h"

#include <algorithm>
#include <cmath>

#include "utils/text/text.h"

namespace tour {
namespace {

SSO_ID Identifier(unsigned number) { return {kDwarfPlanetClass, number}; }

}  // namespace

std::vector<DwarfPlanet> LoadDwarfPlanets() {
  std::vector<DwarfPlanet> planets;
  for (const ObjectName& name : ReadObjectNames()) {
    Elements block;
    if (!GetReader()->Get(&block, Identifier(name.number))) continue;
    if (const auto elements = Unpack(block)) planets.push_back({name, *elements});
  }
  std::stable_sort(planets.begin(), planets.end(), [](const auto& a, const auto& b) {
    return CompareStrings(a.name.name.c_str(), b.name.name.c_str(), false) == -1;
  });
  return planets;
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
