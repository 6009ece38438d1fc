// Which file a data name resolves to, and why.
#ifndef KVUTILS_EXAMPLES_TOUR_RESOLUTION_H_
#define KVUTILS_EXAMPLES_TOUR_RESOLUTION_H_

#include <string>

namespace tour {

struct Resolution {
  std::string file;    // the whole path; empty when not found
  std::string path;    // below its folder, such as "en\media\dwarf_names.txt"
  std::string reason;  // what made the resolver choose it
  bool inWritableFolder = false;
};

Resolution Resolve(const char* dataName);

// What to do about a file that is damaged: "; remove it to use the installed one" when it lies in
// the writable folder, where it goes first, and nothing elsewhere.
std::string RemedyFor(const Resolution& resolution);

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_RESOLUTION_H_
