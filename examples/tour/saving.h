// Whether the store of dwarf planets can save its records.
#ifndef KVUTILS_EXAMPLES_TOUR_SAVING_H_
#define KVUTILS_EXAMPLES_TOUR_SAVING_H_

#include <string>

namespace tour {

// What stands in the way of the file that the store writes when the library is unloaded: on one
// line, without a full stop. Empty when nothing does; the folders of the file are there then.
std::string SavingObstacle();

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_SAVING_H_
