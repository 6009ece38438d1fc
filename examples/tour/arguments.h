// The command line of the tour.
#ifndef KVUTILS_EXAMPLES_TOUR_ARGUMENTS_H_
#define KVUTILS_EXAMPLES_TOUR_ARGUMENTS_H_

#include "examples/tour/calendar.h"

#include <optional>
#include <string>
#include <vector>

namespace tour {

struct Arguments {
  std::optional<CivilTime> time;  // UTC; the present when not given
  std::optional<std::string> zone;
  std::optional<std::string> language;  // "en" when not given
  bool help = false;
};

// True, or false with one line in `complaint`.
bool ParseArguments(const std::vector<std::string>& texts, Arguments& arguments,
                    std::string& complaint);

extern const char kHelp[];

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_ARGUMENTS_H_
