// The dwarf planets of the library's record store, with their names.
#ifndef KVUTILS_EXAMPLES_TOUR_DWARF_PLANETS_H_
#define KVUTILS_EXAMPLES_TOUR_DWARF_PLANETS_H_

#include "examples/tour/installation.h"
#include "examples/tour/orbital_elements.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tour {

struct DwarfPlanet {
  ObjectName name;
  OrbitalElements elements;
};

struct DwarfPlanets {
  // The named objects of which the store holds a usable record, in the order of their names by the
  // rules of the current code page.
  std::vector<DwarfPlanet> planets;
  std::size_t namedObjects = 0;  // these and those without such a record
};
DwarfPlanets LoadDwarfPlanets();

// What is missing, on one line and with the file that it is missing in; empty when each named
// object, and there are some, has its record.
std::string MissingText(const DwarfPlanets& loaded);

// Another one each day, all in turn. `planets` is not empty.
const DwarfPlanet& PickOfTheNight(const std::vector<DwarfPlanet>& planets, double julianDate);

// Counts the pick in the object's record; the store saves its records when the program ends.
void NotePick(const DwarfPlanet& planet, std::uint32_t dateNumber);

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_DWARF_PLANETS_H_
