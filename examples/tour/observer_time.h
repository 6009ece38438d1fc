// The observer's clock.
#ifndef KVUTILS_EXAMPLES_TOUR_OBSERVER_TIME_H_
#define KVUTILS_EXAMPLES_TOUR_OBSERVER_TIME_H_

#include <string>

namespace tour {

// Whether the library's time zone data know the zone. The library answers an offset of 0 for a name
// that it does not know, as it does for UTC.
bool IsKnownZone(const std::string& zone);

// "2026-11-21 19:30:00 Europe/Berlin (UTC+01:00)".
std::string LocalTimeText(const std::string& zone, double julianDate);

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_OBSERVER_TIME_H_
