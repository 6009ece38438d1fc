// An archive that is unpacked.
#ifndef KVUTILS_EXAMPLES_TOUR_ARCHIVE_H_
#define KVUTILS_EXAMPLES_TOUR_ARCHIVE_H_

#include "examples/tour/workshop.h"

#include <string>

namespace tour {

// The files that came out of the archive, their sizes, and where in the user's folder they belong.
// `plainFolder` is the workshop's folder by a path that suits the program, see PlainPath; when it
// is empty the archive is left packed, and that is said. Throws Failure.
std::string ArchiveText(const Workshop& workshop, const std::string& plainFolder);

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_ARCHIVE_H_
