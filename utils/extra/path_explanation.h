// Why the resolver answers as it does: every place where it looks for a data name, and what is
// there.
//
// Like the resolver itself, this belongs to the host's main thread. Nothing is changed by it:
// neither the remembered paths nor the lists, though the first question of a process finds out its
// folders, as the first resolver does.
#ifndef KVUTILS_UTILS_EXTRA_PATH_EXPLANATION_H_
#define KVUTILS_UTILS_EXTRA_PATH_EXPLANATION_H_

#include "utils/export.h"

#include <string>
#include <vector>

namespace kv {

enum class DataFolder { kWritable, kWork };

// One place where the resolver looks.
struct PathCandidate {
  int pass =
      0;  // 0 language variant, 1 the same in lower case, 2 the name, 3 the name in lower case
  DataFolder folder = DataFolder::kWritable;
  std::string name;      // what is looked for in the folder, a data name: "en:media:fileutils.ini"
  bool isAddOn = false;  // the add-on supplies the name, and `path` leads to its content folder
  std::string path;      // in full; empty when it is longer than 259 bytes and for an empty name
  bool isRemembered = false;  // an answer is remembered under the identifier of the path:
  std::string remembered;     //   this one; not `path` itself where identifiers collide
  bool exists = false;        // now, whatever is remembered; the rest is 0 where it does not
  bool isFolder = false;
  unsigned long long size = 0;  // of a file, in bytes
  long long modified = 0;       // the last change, in seconds since 1970-01-01 00:00 UTC
};

struct PathExplanation {
  std::vector<PathCandidate> candidates;  // in the order of the questions; all eight, though the
                                          // resolver asks no further than the winner
  int winner = -1;                        // which of them gives the answer, -1 if none does
  std::string answer;                     // of KelvarisPath::GetPath; empty for its null
};

// What KelvarisPath::GetPath would do with the name, now. No candidates for a null name and for one
// longer than 519 bytes, which resolve nowhere. Throws as the constructor of KelvarisPath does.
//
//   const kv::PathExplanation why = kv::ExplainPath("catalogs:Planets&Moons:DwarfPlanets.bin");
//   if (why.winner >= 0) Show(why.candidates[why.winner].path);
KVUTILS_API PathExplanation ExplainPath(const char* name);

// A file of the writable folder that hides one of the installation.
struct ShadowedFile {
  std::string name;           // relative to both folders, "\" between its components
  std::string writablePath;   // in full; what the resolver takes
  std::string installedPath;  // in full; in the work folder or, if it lists the name, its add-on
  bool isInstalledNewer = false;  // was changed last
  bool isDifferent = false;       // in content; also when one of the two cannot be read
};

// The files below `folder`, a data name ("catalogs:"; null or empty: all), of the writable folder
// that hide an installed file which is newer or different, in the order of the file system. Folders
// behind links, names that are malformed, and paths longer than 259 bytes, which the resolver does
// not reach, are passed over. None when writable and work folder are the same. Throws as
// ExplainPath does.
KVUTILS_API std::vector<ShadowedFile> ListShadowed(const char* folder);

}  // namespace kv

#endif  // KVUTILS_UTILS_EXTRA_PATH_EXPLANATION_H_
