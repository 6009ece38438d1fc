// Where the Earth stands.
#ifndef KVUTILS_EXAMPLES_TOUR_EARTH_ORBIT_H_
#define KVUTILS_EXAMPLES_TOUR_EARTH_ORBIT_H_

#include "examples/tour/vector.h"

namespace tour {

// Heliocentric position of the Earth in AU, mean ecliptic and equinox of J2000, by the theory
// VSOP87B of P. Bretagnon and G. Francou (Astronomy and Astrophysics 202, 1988, 309), cut to its
// largest terms. From 1800 to 2199 the cut series keeps within 3.3", as seen from the Sun, of the
// routine epv00 of the IAU's SOFA collection, which follows the JPL ephemeris DE405 (compared every
// week; epv00 itself is made for 1900 to 2100, and the differences are no larger outside).
Vector EarthPosition(double julianDate);

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_EARTH_ORBIT_H_
