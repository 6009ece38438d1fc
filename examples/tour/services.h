// The second half of the tour: what the library does for an application besides finding its data.
#ifndef KVUTILS_EXAMPLES_TOUR_SERVICES_H_
#define KVUTILS_EXAMPLES_TOUR_SERVICES_H_

namespace tour {

// Prints each section under its title; a complaint for each that cannot be shown. False when there
// was one. Nothing of what the sections write is left.
bool PrintServices();

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_SERVICES_H_
