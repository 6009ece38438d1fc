// What exists of the paths that one call of the resolver looks for.
#ifndef KVUTILS_UTILS_PATHS_PATH_SEARCH_H_
#define KVUTILS_UTILS_PATHS_PATH_SEARCH_H_

#include "utils/internal/path_text.h"

#include <cstddef>
#include <string>

namespace kv::internal {

// A question to the file system costs a hundred times what all else in a call costs, so no path is
// asked for twice: what is absent is kept until the call ends, and no longer. The lower-case passes
// of a name without capitals, an empty language folder and a writable folder that is the work
// folder all come to the same paths again.
class PathSearch {
 public:
  PathSearch() = default;
  PathSearch(const PathSearch&) = delete;
  PathSearch& operator=(const PathSearch&) = delete;

  // The answer remembered under the identifier of the path, else the path itself, remembered from
  // then on, when it exists; null when it does not, and when path or answer are over-long. What is
  // remembered is looked up each time, because a path found meanwhile may share the identifier.
  const std::string* Find(const PathText& path);

  // Whether the path exists, whatever is remembered of it.
  bool Exists(const PathText& path);

 private:
  struct Miss {
    std::size_t size;
    char text[kPathSize];
  };
  // A call asks for nine paths at most, two folders in four passes and the add-on's list, and for
  // none behind the last.
  static constexpr std::size_t kMostMisses = 8;

  [[nodiscard]] bool IsMiss(const PathText& path) const;

  Miss misses_[kMostMisses];
  std::size_t missCount_ = 0;
};

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_PATHS_PATH_SEARCH_H_
