// A downloaded file, checked by its CRC-32.
#ifndef KVUTILS_EXAMPLES_TOUR_DOWNLOADS_H_
#define KVUTILS_EXAMPLES_TOUR_DOWNLOADS_H_

#include "examples/tour/workshop.h"

#include <string>

namespace tour {

// The file as new, as known, and as new again after a change, with the bytes of the registry.
// Throws Failure.
std::string DownloadText(const Workshop& workshop);

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_DOWNLOADS_H_
