// The motion of an object about the Sun when nothing else pulls at it.
#ifndef KVUTILS_EXAMPLES_TOUR_TWO_BODY_H_
#define KVUTILS_EXAMPLES_TOUR_TWO_BODY_H_

#include "examples/tour/orbital_elements.h"
#include "examples/tour/vector.h"

namespace tour {

// Solves Kepler's equation E - e sin E = M for any M (radians) and e in [0, 1). The result lies in
// [-pi, pi] as M reduced to that range does.
double EccentricAnomaly(double meanAnomaly, double eccentricity);

// Heliocentric position in AU, mean ecliptic and equinox of J2000.
Vector HeliocentricPosition(const OrbitalElements& elements, double julianDate);

// Where an object is seen from the centre of the Earth: astrometric place, mean equator and equinox
// of J2000. Light time is allowed for, aberration and deflection of light are not.
struct Place {
  double rightAscension;  // radians, in [0, 2 pi)
  double declination;     // radians
  double earthDistance;   // AU, to where the object stood when the light left it
  double sunDistance;     // AU, likewise
};
Place GeocentricPlace(const OrbitalElements& elements, double julianDate);

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_TWO_BODY_H_
