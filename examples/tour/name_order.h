// Names with numbers in them, in the orders of the library.
#ifndef KVUTILS_EXAMPLES_TOUR_NAME_ORDER_H_
#define KVUTILS_EXAMPLES_TOUR_NAME_ORDER_H_

#include <string>

namespace tour {

// The deep-sky objects and the minor planets of the installation, each list beside the order of
// strcmp. Throws Failure.
std::string NameOrderText();

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_NAME_ORDER_H_
