// Build step: the records of "DwarfPlanets.bin" as the one section of an object file, whose bytes
// the build takes out and writes to that file. Nothing of this runs anywhere.

#include "examples/tour/orbital_elements.h"

namespace tour {
namespace {

struct Row {
  std::uint32_t number;
  Standing standing;
  double epoch;
  double semiMajorAxis;
  double eccentricity;
  double inclination;
  double ascendingNode;
  double perihelionArgument;
  double meanAnomaly;
};

constexpr Row kRows[] = {
#include "dwarf_planet_rows.inc"
};
constexpr std::size_t kCount = sizeof kRows / sizeof *kRows;

}  // namespace

struct Records {
  DwarfPlanetRecord records[kCount];
};
static_assert(sizeof(Records) == kCount * 76);

namespace {

constexpr Records MakeRecords() {
  Records result = {};
  for (std::size_t i = 0; i < kCount; ++i) {
    const Row& row = kRows[i];
    result.records[i] = {Pack({.epoch = row.epoch,
                               .semiMajorAxis = row.semiMajorAxis,
                               .eccentricity = row.eccentricity,
                               .inclination = row.inclination,
                               .ascendingNode = row.ascendingNode,
                               .perihelionArgument = row.perihelionArgument,
                               .meanAnomaly = row.meanAnomaly,
                               .standing = row.standing}),
                         {kDwarfPlanetClass, row.number}};
  }
  return result;
}

constexpr bool AllCanBeUnpacked(const Records& records) {
  for (const DwarfPlanetRecord& record : records.records) {
    if (!Unpack(record.elements)) return false;
  }
  return true;
}
static_assert(AllCanBeUnpacked(MakeRecords()));

}  // namespace

// The attribute belongs to the compilers of the build, which alone see this file.
[[gnu::section("records")]] extern const Records kRecords;
constinit const Records kRecords = MakeRecords();

}  // namespace tour
