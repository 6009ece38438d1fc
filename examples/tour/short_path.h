// Paths for a program that is given them unquoted, in the system's code page.
#ifndef KVUTILS_EXAMPLES_TOUR_SHORT_PATH_H_
#define KVUTILS_EXAMPLES_TOUR_SHORT_PATH_H_

#include <string>

namespace tour {

// The path of an existing folder in plain ASCII without blanks: as it is, or with the short names
// (8.3) that the system keeps beside long ones. Empty when there is no such path.
std::string PlainPath(const std::string& path);

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_SHORT_PATH_H_
