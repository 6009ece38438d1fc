// The clock of an animation.
#ifndef KVUTILS_EXAMPLES_TOUR_FRAMES_H_
#define KVUTILS_EXAMPLES_TOUR_FRAMES_H_

#include <string>

namespace tour {

// Runs a few frames of a fiftieth of a second, and tells when each began and how long its work
// took.
std::string FramesText();

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_FRAMES_H_
