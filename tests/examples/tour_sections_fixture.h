// The sections of the tour's second half, called one by one in the process of the test.
#ifndef KVUTILS_TESTS_EXAMPLES_TOUR_SECTIONS_FIXTURE_H_
#define KVUTILS_TESTS_EXAMPLES_TOUR_SECTIONS_FIXTURE_H_

#include <string>

#include "examples/tour/section.h"
#include "tests/examples/tour_fixture.h"

namespace kv::test {

// What a server would send, see the sample installation.
inline constexpr char kNewMoons[] =
    "! Known moons of the giant planets, March 2025\n"
    "Jupiter\t95\nSaturn\t274\nUranus\t28\nNeptune\t16\n";

// The line of the failure, or what the section said instead.
template <typename Section>
std::string FailureOf(Section section) {
  try {
    return "no failure: " + section();
  } catch (const tour::Failure& failure) {
    return failure.what();
  }
}

// The sample installation is the work folder; the folder for temporary files is the sandbox's own.
class TourSections : public Tour {
 protected:
  TourSections() { UseTemporary(Temporary()); }

  std::string Temporary() const { return Root() + "Temp\\"; }
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_EXAMPLES_TOUR_SECTIONS_FIXTURE_H_
