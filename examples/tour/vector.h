// Rectangular coordinates in AU.
#ifndef KVUTILS_EXAMPLES_TOUR_VECTOR_H_
#define KVUTILS_EXAMPLES_TOUR_VECTOR_H_

#include <cmath>

namespace tour {

struct Vector {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
};

inline Vector operator-(const Vector& a, const Vector& b) {
  return {a.x - b.x, a.y - b.y, a.z - b.z};
}

inline double Length(const Vector& v) { return std::hypot(v.x, v.y, v.z); }

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_VECTOR_H_
