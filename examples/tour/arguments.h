// The command line of the tour.
#ifndef KVUTILS_EXAMPLES_TOUR_ARGUMENTS_H_
#define KVUTILS_EXAMPLES_TOUR_ARGUMENTS_H_

#include "examples/tour/calendar.h"

#include <optional>
#include <string>
#include <vector>

namespace tour {

inline constexpr char kPlacesHalf[] = "places";
inline constexpr char kServicesHalf[] = "services";

struct Arguments {
  std::optional<CivilTime> time;  // UTC; the present when not given
  std::optional<std::string> zone;
  std::optional<std::string> language;  // "en" when not given
  std::optional<std::string> only;      // one of the two halves below; both when not given
  bool help = false;

  bool Shows(const char* half) const { return !only || *only == half; }
};

// True, or false with one line in `complaint`.
bool ParseArguments(const std::vector<std::string>& texts, Arguments& arguments,
                    std::string& complaint);

extern const char kHelp[];

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_ARGUMENTS_H_
