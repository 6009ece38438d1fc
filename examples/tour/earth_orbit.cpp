#include "examples/tour/earth_orbit.h"

#include <cmath>
#include <span>

namespace tour {
namespace {

// One term: amplitude * cos(phase + frequency * t), t in thousands of Julian years since J2000.
// Amplitudes are in units of 1e-8 rad (longitude, latitude) or 1e-8 AU (distance).
struct Term {
  double amplitude;
  double phase;
  double frequency;
};
using Series = std::span<const Term>;  // the terms of one power of t

constexpr Term kLongitude0[] = {
    {175347046, 0, 0},
    {3341656, 4.6692568, 6283.07585},
    {34894, 4.62610, 12566.15170},
    {3497, 2.7441, 5753.3849},
    {3418, 2.8289, 3.5231},
    {3136, 3.6277, 77713.7715},
    {2676, 4.4181, 7860.4194},
    {2343, 6.1352, 3930.2097},
    {1324, 0.7425, 11506.7698},
    {1273, 2.0371, 529.6910},
    {1199, 1.1096, 1577.3435},
    {990, 5.233, 5884.927},
    {902, 2.045, 26.298},
    {857, 3.508, 398.149},
    {780, 1.179, 5223.694},
    {753, 2.533, 5507.553},
    {505, 4.583, 18849.228},
    {492, 4.205, 775.523},
    {357, 2.920, 0.067},
    {317, 5.849, 11790.629},
    {284, 1.899, 796.298},
    {271, 0.315, 10977.079},
    {243, 0.345, 5486.778},
};
constexpr Term kLongitude1[] = {
    {628307584999, 0, 0}, {206059, 2.678235, 6283.07585}, {4303, 2.6351, 12566.1517},
    {425, 1.590, 3.523},  {119, 5.796, 26.298},           {109, 2.966, 1577.344},
};
constexpr Term kLongitude2[] = {
    {8722, 1.0725, 6283.0758}, {991, 3.1416, 0}, {295, 0.437, 12566.152}};

constexpr Term kLatitude0[] = {
    {280, 3.199, 84334.662}, {102, 5.422, 5507.553}, {80, 3.88, 5223.69}};
constexpr Term kLatitude1[] = {
    {227778, 3.413766, 6283.07585}, {3806, 3.3706, 12566.1517}, {3620, 0, 0}};
constexpr Term kLatitude2[] = {{9721, 5.1519, 6283.07585}};

constexpr Term kDistance0[] = {
    {100013989, 0, 0},          {1670700, 3.0984635, 6283.07585}, {13956, 3.05525, 12566.15170},
    {3084, 5.1985, 77713.7715}, {1628, 1.1739, 5753.3849},        {1576, 2.8469, 7860.4194},
    {925, 5.453, 11506.770},    {542, 4.564, 3930.210},           {472, 3.661, 5884.927},
    {346, 0.964, 5507.553},     {329, 5.900, 5223.694},           {307, 0.299, 5573.143},
    {243, 4.273, 11790.629},
};
constexpr Term kDistance1[] = {
    {103019, 1.107490, 6283.07585}, {1721, 1.0644, 12566.1517}, {702, 3.142, 0}};
constexpr Term kDistance2[] = {{4359, 5.7846, 6283.0758}};

constexpr Series kLongitude[] = {kLongitude0, kLongitude1, kLongitude2};
constexpr Series kLatitude[] = {kLatitude0, kLatitude1, kLatitude2};
constexpr Series kDistance[] = {kDistance0, kDistance1, kDistance2};

double Sum(std::span<const Series> powers, double t) {
  double total = 0.0;
  double power = 1.0;
  for (const Series& series : powers) {
    double sum = 0.0;
    for (const Term& term : series) {
      sum += term.amplitude * std::cos(term.phase + term.frequency * t);
    }
    total += sum * power;
    power *= t;
  }
  return total * 1e-8;
}

}  // namespace

Vector EarthPosition(double julianDate) {
  const double t = (julianDate - 2451545.0) / 365250.0;
  const double longitude = Sum(kLongitude, t);
  const double latitude = Sum(kLatitude, t);
  const double distance = Sum(kDistance, t);
  return {distance * std::cos(latitude) * std::cos(longitude),
          distance * std::cos(latitude) * std::sin(longitude), distance * std::sin(latitude)};
}

}  // namespace tour
