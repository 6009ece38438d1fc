// The dwarf planets of the library's record store, with their names.
#ifndef KVUTILS_EXAMPLES_TOUR_DWARF_PLANETS_H_
#define KVUTILS_EXAMPLES_TOUR_DWARF_PLANETS_H_

#include <cstdint>
#include <vector>

#include "examples/tour/installation.h"
#include "examples/tour/orbital_elements.h"

namespace tour {

struct DwarfPlanet {
  ObjectName name;
  OrbitalElements elements;
};

// The named objects whose elements the store holds, in the order of their names by the rules of the
// current code page.
std::vector<DwarfPlanet> LoadDwarfPlanets();

// Another one each day, all in turn. `planets` is not empty.
const DwarfPlanet& PickOfTheNight(const std::vector<DwarfPlanet>& planets, double julianDate);

// Counts the pick in the object's record; the store saves its records when the program ends.
void NotePick(const DwarfPlanet& planet, std::uint32_t dateNumber);

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_DWARF_PLANETS_H_
