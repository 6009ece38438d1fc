// The pages that the tour prints, in the order in which it prints them. UTF-8, at most 92 columns;
// a line that holds a folder of the user is as long as that folder makes it.
#ifndef KVUTILS_EXAMPLES_TOUR_REPORT_H_
#define KVUTILS_EXAMPLES_TOUR_REPORT_H_

#include "examples/tour/calendar.h"
#include "examples/tour/dwarf_planets.h"
#include "examples/tour/installation.h"

#include <string>

namespace tour {

struct Setting {
  std::string language;
  int codePage = 0;
  Observer observer;
  CivilTime utc;
};

void PrintHeading(const Setting& setting);
// Where each data name leads.
void PrintResolutions();
// Where each object stands at the instant, and which objects have no record.
void PrintPlaces(const DwarfPlanets& loaded, double julianDate);
// `picked` is as the store held it before this run; `obstacle` is what keeps the store from saving
// its records, empty when nothing does.
void PrintPick(const DwarfPlanet& picked, const std::string& obstacle);

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_REPORT_H_
