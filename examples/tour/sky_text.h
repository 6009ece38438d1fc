// Places in the sky as people read them.
#ifndef KVUTILS_EXAMPLES_TOUR_SKY_TEXT_H_
#define KVUTILS_EXAMPLES_TOUR_SKY_TEXT_H_

#include <string>

namespace tour {

std::string RightAscensionText(double radians);  // "01 48 57.9", hours, minutes, seconds
std::string DeclinationText(double radians);     // "-00 01 17", degrees, minutes, seconds

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_SKY_TEXT_H_
