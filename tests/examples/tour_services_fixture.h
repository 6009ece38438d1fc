// The whole tour, on a copy of the sample installation, with a folder for temporary files of its
// own and an empty clipboard.
#ifndef KVUTILS_TESTS_EXAMPLES_TOUR_SERVICES_FIXTURE_H_
#define KVUTILS_TESTS_EXAMPLES_TOUR_SERVICES_FIXTURE_H_

#include <string>
#include <vector>

#include "tests/examples/tour_fixture.h"
#include "tests/platform/clipboard_fixture.h"

namespace kv::test {

class TourServices : public Clipboard {
 protected:
  TourServices() {
    LayOutInstallation(Work());
    UseTemporary(Temporary());
  }

  std::string Temporary() const { return Root() + "Temp\\"; }

  static ProcessResult RunTourProgram(const std::vector<std::string>& arguments,
                                      const std::string& folder) {
    return RunProgram(ProgramFolder() + "tour.exe", arguments, folder);
  }
  ProcessResult RunWhole(const std::vector<std::string>& arguments) const {
    return RunTourProgram(arguments, Work());
  }
  ProcessResult RunServices() const { return RunWhole({"--only", "services"}); }
};

}  // namespace kv::test

#endif  // KVUTILS_TESTS_EXAMPLES_TOUR_SERVICES_FIXTURE_H_
