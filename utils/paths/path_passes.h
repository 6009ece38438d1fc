// The order in which the resolver looks for a data name.
#ifndef KVUTILS_UTILS_PATHS_PATH_PASSES_H_
#define KVUTILS_UTILS_PATHS_PATH_PASSES_H_

#include "utils/paths/data_name.h"

#include <string_view>

namespace kv::internal {

// A `Search` has InWritableFolder(Candidate) and InWorkFolder(Candidate), which give an answer or
// null; the first answer ends the search. Each pass begins in the writable folder.

template <typename Search>
auto FindInBothFolders(Search& search, const Candidate& candidate) {
  if (const auto found = search.InWritableFolder(candidate)) return found;
  return search.InWorkFolder(candidate);
}

// The answer for a name that the writable folder does not have in the language. The name may lie
// in the add-on's folder, a public text that the search itself reads on the way.
template <typename Search>
auto FindElsewhere(Search& search, std::string_view languageFolder, std::string_view name) {
  const NameText own(name);
  const std::string_view given = own.View();
  if (const auto found = search.InWorkFolder({languageFolder, given})) return found;
  const NameText lower = LowerCase(given);
  if (const auto found = FindInBothFolders(search, {languageFolder, lower.View()})) return found;
  if (const auto found = FindInBothFolders(search, Candidate(given))) return found;
  return FindInBothFolders(search, Candidate(lower.View()));
}

template <typename Search>
auto FindInPasses(Search& search, std::string_view languageFolder, std::string_view name) {
  if (const auto found = search.InWritableFolder({languageFolder, name})) return found;
  return FindElsewhere(search, languageFolder, name);
}

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_PATHS_PATH_PASSES_H_
