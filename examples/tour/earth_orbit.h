// Where the Earth stands.
#ifndef KVUTILS_EXAMPLES_TOUR_EARTH_ORBIT_H_
#define KVUTILS_EXAMPLES_TOUR_EARTH_ORBIT_H_

#include "examples/tour/vector.h"

namespace tour {

// Heliocentric position of the Earth in AU, mean ecliptic and equinox of J2000, by the theory
// VSOP87B of P. Bretagnon and G. Francou (Astronomy and Astrophysics 202, 1988, 309), cut to its
// largest terms. Between 1800 and 2100 the cut series keeps within 4" of the JPL ephemerides,
// as seen from the Sun.
Vector EarthPosition(double julianDate);

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_EARTH_ORBIT_H_
