// A data file that is replaced by its update.
#ifndef KVUTILS_EXAMPLES_TOUR_UPDATES_H_
#define KVUTILS_EXAMPLES_TOUR_UPDATES_H_

#include "examples/tour/workshop.h"

#include <string>

namespace tour {

// The files of the folder, with what they say, before and after the update is installed. Throws
// Failure.
std::string UpdateText(const Workshop& workshop);

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_UPDATES_H_
