// The command line of the tour.
#ifndef KVUTILS_EXAMPLES_TOUR_ARGUMENTS_H_
#define KVUTILS_EXAMPLES_TOUR_ARGUMENTS_H_

#include <optional>
#include <string>

#include "examples/tour/calendar.h"

namespace tour {

struct Arguments {
  std::optional<CivilTime> time;  // UTC; the present when not given
  std::optional<std::string> zone;
  std::string language = "en";
  bool help = false;
};

// True, or false with one line in `complaint`.
bool ParseArguments(int argc, const char* const* argv, Arguments& arguments,
                    std::string& complaint);

extern const char kHelp[];

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_ARGUMENTS_H_
