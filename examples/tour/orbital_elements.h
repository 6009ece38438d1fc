// What this host keeps in the 68 bytes of an `Elements` block, which the library copies unseen.
//
// Bytes, little-endian, without padding:
//    0   layout      16-bit, kLayout
//    2   standing    16-bit, Standing
//    4   timesPicked 32-bit, how often the tour has picked the object of the night
//    8   lastPicked  32-bit, the date of the last pick as year * 10000 + month * 100 + day, 0 never
//   12   seven 64-bit floating-point numbers: epoch, semi-major axis, eccentricity, inclination,
//        longitude of the ascending node, argument of perihelion, mean anomaly
#ifndef KVUTILS_EXAMPLES_TOUR_ORBITAL_ELEMENTS_H_
#define KVUTILS_EXAMPLES_TOUR_ORBITAL_ELEMENTS_H_

#include "examples/tour/calendar.h"
#include "utils/astro/astro.h"

#include <bit>
#include <cstdint>
#include <optional>

namespace tour {

// The class of every object in the store; the library keeps it in SSO_ID::hostField.
inline constexpr std::uint32_t kDwarfPlanetClass = 1;

// Whether the International Astronomical Union has named the object a dwarf planet, or planetary
// scientists alone count it as one.
enum class Standing : std::uint16_t { kRecognised = 1, kAccepted = 2 };

// Osculating heliocentric elements, mean ecliptic and equinox of J2000. Angles are in degrees, as
// they are published.
struct OrbitalElements {
  double epoch = 0.0;          // Julian Date, TDB
  double semiMajorAxis = 0.0;  // AU
  double eccentricity = 0.0;   // in [0, 1)
  double inclination = 0.0;
  double ascendingNode = 0.0;
  double perihelionArgument = 0.0;
  double meanAnomaly = 0.0;
  Standing standing = Standing::kRecognised;
  std::uint32_t timesPicked = 0;
  std::uint32_t lastPicked = 0;
};

namespace layout {

inline constexpr std::uint16_t kLayout = 1;

// A 64-bit number in halves, so that the block needs no more than 4-byte alignment.
struct Number {
  std::uint32_t low;
  std::uint32_t high;
};

struct Image {
  std::uint16_t layout;
  std::uint16_t standing;
  std::uint32_t timesPicked;
  std::uint32_t lastPicked;
  Number numbers[7];
};

static_assert(std::endian::native == std::endian::little);
static_assert(sizeof(Image) == 68 && alignof(Image) == 4);
static_assert(sizeof(Image) == sizeof(Elements) && alignof(Image) == alignof(Elements));
static_assert(sizeof(DwarfPlanetRecord) == 76);

constexpr Number Halves(double value) { return std::bit_cast<Number>(value); }
constexpr double Whole(Number halves) { return std::bit_cast<double>(halves); }

}  // namespace layout

constexpr Elements Pack(const OrbitalElements& elements) {
  using layout::Halves;
  const layout::Image image = {
      layout::kLayout,
      static_cast<std::uint16_t>(elements.standing),
      elements.timesPicked,
      elements.lastPicked,
      {Halves(elements.epoch), Halves(elements.semiMajorAxis), Halves(elements.eccentricity),
       Halves(elements.inclination), Halves(elements.ascendingNode),
       Halves(elements.perihelionArgument), Halves(elements.meanAnomaly)}};
  return std::bit_cast<Elements>(image);
}

// Whether the elements are numbers with which the tour can reckon: an ellipse outside the Sun and
// short of the nearest stars. Not a number lies between no two bounds.
constexpr bool AreSound(const OrbitalElements& elements) {
  const auto isBetween = [](double value, double low, double high) {
    return value >= low && value <= high;
  };
  const auto isAngle = [&](double degrees) { return isBetween(degrees, -360.0, 360.0); };
  return isBetween(elements.epoch, kFirstJulianDate, kLastJulianDate) &&
         isBetween(elements.semiMajorAxis, 0.005, 100000.0) && elements.eccentricity >= 0.0 &&
         elements.eccentricity < 1.0 && isAngle(elements.inclination) &&
         isAngle(elements.ascendingNode) && isAngle(elements.perihelionArgument) &&
         isAngle(elements.meanAnomaly);
}

// Nothing for a block of another layout and for one that is damaged.
constexpr std::optional<OrbitalElements> Unpack(const Elements& block) {
  using layout::Whole;
  const auto image = std::bit_cast<layout::Image>(block);
  const OrbitalElements elements = {.epoch = Whole(image.numbers[0]),
                                    .semiMajorAxis = Whole(image.numbers[1]),
                                    .eccentricity = Whole(image.numbers[2]),
                                    .inclination = Whole(image.numbers[3]),
                                    .ascendingNode = Whole(image.numbers[4]),
                                    .perihelionArgument = Whole(image.numbers[5]),
                                    .meanAnomaly = Whole(image.numbers[6]),
                                    .standing = static_cast<Standing>(image.standing),
                                    .timesPicked = image.timesPicked,
                                    .lastPicked = image.lastPicked};
  if (image.layout != layout::kLayout || !AreSound(elements)) return std::nullopt;
  return elements;
}

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_ORBITAL_ELEMENTS_H_
