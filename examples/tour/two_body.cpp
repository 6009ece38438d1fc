#include "examples/tour/two_body.h"

#include "examples/tour/earth_orbit.h"

#include <cmath>
#include <numbers>

namespace tour {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kRadiansPerDegree = kPi / 180.0;
constexpr double kGaussianConstant = 0.01720209895;     // sqrt(AU^3) per day
constexpr double kLightDaysPerAu = 499.004784 / 86400;  // light takes 499.004784 s for 1 AU
constexpr double kObliquity = 84381.448 / 3600 * kRadiansPerDegree;  // of the ecliptic of J2000

// From the ecliptic to the equator of J2000.
Vector Equatorial(const Vector& v) {
  const double sine = std::sin(kObliquity);
  const double cosine = std::cos(kObliquity);
  return {v.x, v.y * cosine - v.z * sine, v.y * sine + v.z * cosine};
}

double MeanAnomaly(const OrbitalElements& elements, double julianDate) {
  const double axis = elements.semiMajorAxis;
  const double motion = kGaussianConstant / (axis * std::sqrt(axis));  // radians per day
  return elements.meanAnomaly * kRadiansPerDegree + motion * (julianDate - elements.epoch);
}

}  // namespace

double EccentricAnomaly(double meanAnomaly, double eccentricity) {
  const double target = std::remainder(meanAnomaly, 2.0 * kPi);
  // The root differs from the mean anomaly by at most the eccentricity: Newton's steps stay inside
  // that bracket, and a step that would leave it halves it.
  double low = target - eccentricity;
  double high = target + eccentricity;
  double anomaly = target + std::copysign(0.85 * eccentricity, target);
  for (int step = 0; step < 64 && high - low > 1e-15; ++step) {
    const double excess = anomaly - eccentricity * std::sin(anomaly) - target;
    (excess > 0.0 ? high : low) = anomaly;
    const double next = anomaly - excess / (1.0 - eccentricity * std::cos(anomaly));
    if (std::abs(next - anomaly) < 1e-15) return next;
    anomaly = next > low && next < high ? next : 0.5 * (low + high);
  }
  return anomaly;
}

Vector HeliocentricPosition(const OrbitalElements& elements, double julianDate) {
  const double e = elements.eccentricity;
  const double anomaly = EccentricAnomaly(MeanAnomaly(elements, julianDate), e);
  // In the plane of the orbit, towards the perihelion and a right angle ahead of it.
  const double ahead = elements.semiMajorAxis * (std::cos(anomaly) - e);
  const double across = elements.semiMajorAxis * std::sqrt(1.0 - e * e) * std::sin(anomaly);

  const double sinPeri = std::sin(elements.perihelionArgument * kRadiansPerDegree);
  const double cosPeri = std::cos(elements.perihelionArgument * kRadiansPerDegree);
  const double fromNode = ahead * cosPeri - across * sinPeri;
  const double offNode = ahead * sinPeri + across * cosPeri;

  const double sinNode = std::sin(elements.ascendingNode * kRadiansPerDegree);
  const double cosNode = std::cos(elements.ascendingNode * kRadiansPerDegree);
  const double level = offNode * std::cos(elements.inclination * kRadiansPerDegree);
  return {fromNode * cosNode - level * sinNode, fromNode * sinNode + level * cosNode,
          offNode * std::sin(elements.inclination * kRadiansPerDegree)};
}

Place GeocentricPlace(const OrbitalElements& elements, double julianDate) {
  const Vector earth = EarthPosition(julianDate);
  Vector position = HeliocentricPosition(elements, julianDate);
  // The object moves so little while its light travels that three rounds settle the light time.
  for (int round = 0; round < 3; ++round) {
    const double lightTime = Length(position - earth) * kLightDaysPerAu;
    position = HeliocentricPosition(elements, julianDate - lightTime);
  }
  const Vector direction = Equatorial(position - earth);
  const double distance = Length(direction);
  const double rightAscension = std::atan2(direction.y, direction.x);
  return {.rightAscension = rightAscension < 0.0 ? rightAscension + 2.0 * kPi : rightAscension,
          .declination = std::atan2(direction.z, std::hypot(direction.x, direction.y)),
          .earthDistance = distance,
          .sunDistance = Length(position)};
}

}  // namespace tour
