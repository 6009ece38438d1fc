// The pages that the tour prints, in the order in which it prints them. UTF-8, at most 92 columns.
#ifndef KVUTILS_EXAMPLES_TOUR_REPORT_H_
#define KVUTILS_EXAMPLES_TOUR_REPORT_H_

#include <string>
#include <vector>

#include "examples/tour/calendar.h"
#include "examples/tour/dwarf_planets.h"
#include "examples/tour/installation.h"

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
// Where each object stands at the instant.
void PrintPlaces(const std::vector<DwarfPlanet>& planets, double julianDate);
// `picked` is as the store held it before this run.
void PrintPick(const DwarfPlanet& picked);

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_REPORT_H_
