// Installation folders and path resolution: data names to real paths, folders, first run.
//
// A data name is a relative path with ":" between its components ("media:fileutils.ini"); "\" and
// "/" mean the same, one leading separator is ignored, a trailing one names a folder. All text is
// UTF-8, a path is at most 259 bytes long plus its NUL, folders end in "\" unless said otherwise. A
// name whose joined path is longer, a null name and a malformed one (as utf8_to_utf16 judges it)
// resolve nowhere. Output pointers must be valid.
//
// The folders, lists and caches below are one set for the process, unguarded: all resolution
// belongs to one thread, the host's main thread.
#ifndef KVUTILS_UTILS_PATHS_PATHS_H_
#define KVUTILS_UTILS_PATHS_PATHS_H_

#include "utils/export.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

// Kept for the host, which gives its own meaning to further values.
enum SetupType : int { kSetupTypeUnknown = -1 };

// Turns data names into paths of what exists on disk.
//
// The first construction in the process discovers the folders: the current folder becomes the work
// folder, "Kelvaris_9" in the user's Documents the writable folder (created if missing), and the
// lists of "media:fileutils.ini" are read. Construct one where a question is to be asked;
// construction costs one small allocation after the first.
//
// Lists are text files of one entry a line, trimmed and cut at 255 bytes; lines that begin with "!"
// and blank lines do not count. "media:fileutils.ini" holds medium folders, theme paths and
// writable paths, each block closed by a line that begins with "}"; the end of the file closes all.
// "feature_pack:feature_pack_filelist.txt" in the work folder holds the add-on content folder
// (relative to the work folder, with a separator at its end) and then the data names that the
// add-on supplies, up to a "}" line or the end; a list that is missing or empty is looked for
// again.
//
//   KelvarisPath resolver;
//   if (const char* path = resolver.GetPath("catalogs:Planets&Moons:DwarfPlanets.bin")) Use(path);
//
// Every operation that answers with a path writes it into the object's own 260-byte buffer: the
// answer is good until the next question to the same object, or its end. Callers rely on it: copies
// of a resolver share that buffer.
class KVUTILS_API KelvarisPath {
 public:
  // Throws MException, code 0, "KelvarisPath::GetCDPath return false", when the
  // current folder is longer than 258 bytes or cannot be told; the next construction tries again.
  KelvarisPath();
  KelvarisPath(const KelvarisPath& other);
  KelvarisPath& operator=(const KelvarisPath& other);
  virtual ~KelvarisPath();

  // The path of an existing file or folder, or null. Asked in this order, the writable folder
  // before the work folder each time: the language variant (language folder, ":", name), the same
  // with the name in lower case, the plain name, the plain name in lower case. In the work folder,
  // a name that the add-on file list holds is looked for in the add-on content folder instead. What
  // is found is remembered: a path keeps being answered after its file is gone, until
  // ClearFileNamesStorage or Done. What is not found is asked for again.
  const char* GetPath(const char* name);

  // `base` (the work folder when null; ends in "\") joined with `name`, if that exists or is
  // remembered; else null.
  const char* CheckPath(const char* name, const char* base);

  // Where to write: the writable copy if there is one, else `name` joined to the writable folder or
  // to the work folder. Null only when `mustExist` is set and that place is empty, or the path too
  // long.
  const char* GetWorkPath(const char* name, bool mustExist, bool inWritable);

  // For a path below the medium folder, GetWorkPath of the rest of it (no demand, work folder);
  // any other path unchanged. Null for null and for a path over 259 bytes.
  const char* FromCDtoWorkPath(const char* path);

  // GetPath of "de441pc".
  const char* GetEphemerisPath();
  // GetPath of "media:information:"; empty when that folder is nowhere.
  std::string GetDictionaryFilesFolder();

  // The folders of the process; the pointers stay good, the texts change as the host changes them.
  const char* GetCDPath();
  const char* GetWorkFolder();
  const char* GetWritableFolder();
  const char* GetUserFolder();
  const char* GetWorkspacesFolder();
  const char* GetGuidedToursFolder();

  // Sets the writable folder; `path` ends in "\". Callers rely on it: the user folder and the
  // workspaces folder go on describing the folder found at start. A null or over-long path changes
  // nothing. An empty one makes the current folder the place to write to.
  static void SetWritableFolder(const char* path);
  // Sets and gives the first component of language variants; remembered paths stay. Null means "".
  // The text given is good until the folder is set again.
  static void SetLocaleFolder(const char* folder);
  static const char* GetLocaleFolder();
  // Forgets the remembered paths.
  static void ClearFileNamesStorage();
  // For shutdown: forgets the remembered paths and empties all lists. Callers rely on it: discovery
  // is not repeated, so the lists of "media:fileutils.ini" stay empty.
  static void Done();

  static char ms_ExePath[260];            // the host's; never read or written here
  static char ms_WorkDir[260];            // work folder: the installation's data root
  static char ms_CDPath[260];             // medium folder: the same text
  static char ms_WritablePath[260];       // writable folder
  static char ms_UserPath[260];           // the writable folder as found at start
  static char ms_WorkspacesFolder[260];   // "workspaces" in it, without a trailing "\"
  static char ms_GuidedToursFolder[260];  // the host's; empty until the host fills it
  static std::string ms_LanguageFolder;   // "en" at start
  static SetupType ms_SetupType;          // the host's
  static bool ms_IsInit;                  // discovery is complete
  static std::map<int, std::string> ms_FileNamesStorage;  // remembered paths by GetUniqueID
  static std::vector<std::string> ms_CDFolders;   // the three blocks of "media:fileutils.ini",
  static std::vector<std::string> ms_ThemePaths;  //   for the host
  static std::vector<std::string> ms_WritablePaths;
  static std::string sFeaturePackFolder;  // add-on content folder, relative to the work folder
  // The names that the add-on supplies: lower case, "\" between components.
  static std::vector<std::string> sFeaturePackFileNames;

 protected:
  // The current folder and "\"; false, writing nothing, unless it fits in `size` bytes with its
  // NUL.
  bool GetWorkDir(char* out, unsigned size);
  bool GetCDPath(char* out, unsigned size);
  // Not offered: false.
  bool GetWorkDir2(char* out, unsigned size);
  // "Kelvaris_9" in the user's Documents, created if missing, and "\"; `out` holds 260 bytes
  // whatever `size` says. True when it is a folder afterwards. A path that does not fit gives an
  // empty text.
  bool GetWritableDir(char* out, unsigned size);
  // The language variant of `name` into the 260 bytes of `out`; empty when it does not fit. True.
  bool CheckLocalFiles(char* out, const char* name);
  // The add-on's path of `name` and true when the add-on lists it, else `name` and false; `out`
  // holds 260 bytes and is empty when the text does not fit.
  bool CheckFeaturePackFile(char* out, const char* name);
  // Not offered: false.
  bool IsSearchFileInCD(const char* name);

 private:
  std::shared_ptr<char[]> m_Buffer;
};

// Creates the folder and its missing parents; does nothing when a file or folder of that name
// exists, for an empty path and for one over 259 UTF-16 units. Reports nothing. While it works it
// moves the current folder, and at the end puts it back. Callers rely on how a path is read: "\"
// alone separates. With a ":" anywhere, its first character is a drive to be made current (one that
// cannot be is ignored) and its first three characters are no names. With "\" as its first or third
// character it starts at the root of the current drive; without a drive the first character is
// dropped then, so "ab\c" makes "\b\c".
KVUTILS_API void MakeFolder(const char* path);

// Creates the folder that is to hold the file: ":" behind a drive and "/" count as "\", and what
// follows the last "\" is the file's name. A path without "\" is taken for the folder itself.
KVUTILS_API void CheckFileFolder(const char* filePath);

// Makes `path` the current folder, its drive included: 0, or -1 when the run-time library refuses.
// The text goes to the narrow call as it is, so it is read in the system's code page.
KVUTILS_API int ChangeFolder(const char* path);

// Sets the language folder for a language code: "en", "de", "fr", "ru", "es", "pt-PT" and "pt"
// (both "pt"), "it", "nl", "zh", "ja"; any other code sets "en". Remembered paths stay.
KVUTILS_API void SetLocalFolder(const char* code);

// Where an updated copy of the catalogue or media file `name` is to be written: its copy in the
// writable folder if there is one, else the place for it there, whose folder is created; the place
// of the language variant when that is what `name` resolves to. `out` holds 260 bytes. False, `out`
// untouched, when `name` resolves nowhere and when the place is longer than 259 bytes.
KVUTILS_API bool GetWorkPathForDBfiles(char* out, const char* name);
KVUTILS_API bool GetWorkPathForMediafiles(char* out, const char* name);

// True when the writable folder holds no "user.wsi". Found out once, then kept for the process.
KVUTILS_API bool IsFirstRun();

// Looks for an image: with `subFolder` (may be null) as last folder, as it is and with the first
// ".png" made
// ".bmp"; then without, both ways. True and its path in `out`, or false and `out` untouched.
// Callers rely on it: a name that is not found and holds no ".png" throws std::out_of_range,
// "invalid string position".
KVUTILS_API bool GetImageFilePath(std::string& out, const char* name, const char* subFolder);

// The name with "_new" put before its last ".": "stars.bin" gives "stars_new.bin". A name without
// "." throws std::out_of_range, "invalid string position".
KVUTILS_API std::string GetTempFileNameForDbUpdate(const char* name);

// True when `path` is an existing folder.
KVUTILS_API bool IsFolder(const char* path);

#endif  // KVUTILS_UTILS_PATHS_PATHS_H_
