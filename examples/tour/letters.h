// Names with Greek letters and accents.
#ifndef KVUTILS_EXAMPLES_TOUR_LETTERS_H_
#define KVUTILS_EXAMPLES_TOUR_LETTERS_H_

#include <string>

namespace tour {

// The stars and the accented names of the installation, as they stand there and made plain. Throws
// Failure.
std::string LettersText();

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_LETTERS_H_
