// Which file a data name resolves to, and why.
#ifndef KVUTILS_EXAMPLES_TOUR_RESOLUTION_H_
#define KVUTILS_EXAMPLES_TOUR_RESOLUTION_H_

#include <string>

namespace tour {

struct Resolution {
  std::string path;    // below its folder, such as "en\media\dwarf_names.txt"; empty when not found
  std::string reason;  // what made the resolver choose it
  bool inWritableFolder = false;
};

Resolution Resolve(const char* dataName);

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_RESOLUTION_H_
