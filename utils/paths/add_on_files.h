// The files that the add-on content folder supplies, in one call of the resolver.
#ifndef KVUTILS_UTILS_PATHS_ADD_ON_FILES_H_
#define KVUTILS_UTILS_PATHS_ADD_ON_FILES_H_

#include "utils/internal/path_text.h"
#include "utils/paths/data_name.h"
#include "utils/paths/path_search.h"

#include <optional>

namespace kv::internal {

class AddOnFiles {
 public:
  explicit AddOnFiles(PathSearch& search) : search_(search) {}

  // Where the add-on has the file, relative to the work folder, over-long when that does not fit;
  // nothing when it does not list the name. While no names are listed, the first question looks for
  // the list.
  std::optional<PathText> Place(const Candidate& name);

 private:
  void LoadList();

  PathSearch& search_;
  bool isListSought_ = false;
};

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_PATHS_ADD_ON_FILES_H_
