// Data names as bounded text: candidates, language variants, joining.
#ifndef KVUTILS_UTILS_PATHS_DATA_NAME_H_
#define KVUTILS_UTILS_PATHS_DATA_NAME_H_

#include <string_view>

#include "utils/internal/path_text.h"

namespace kv::internal {

// A data name on its way to a path: a name as long as a path, with room for a language folder
// before it. One that does not fit resolves nowhere.
using CandidateText = BoundedText<2 * kPathSize>;

// Appends a data name to a folder: without its leading separator, every separator made "\".
void AppendDataName(PathText& path, std::string_view name);

// `name` inside the language folder.
CandidateText LanguageVariant(std::string_view languageFolder, std::string_view name);

// Makes the ASCII letters of the name lower case; true when that changed it.
bool MakeLowerCase(CandidateText& name);

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_PATHS_DATA_NAME_H_
