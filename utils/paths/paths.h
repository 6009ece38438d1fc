// Installation folders and path resolution: data names to real paths, folders, first run, the
// search for files and the installation of updated ones, copying and removal of folders.
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

struct HWND__;  // a window, as windows.h declares its handle

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
  // ClearFileNamesStorage or Done. What is not found is asked for again by the next call; one call
  // asks the system once about each different path.
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
// exists, for an empty path, for one over 259 UTF-16 units and, if the path has a "\" or ":", while
// the current folder cannot be told. Reports nothing. While it works it moves the current folder,
// and at the end puts it back. Callers rely on how a path is read: "\" alone separates. With a ":"
// anywhere, its first character is a drive to be made current (one that cannot be is ignored) and
// its first three characters are no names. With "\" as its first or third character it starts at
// the root of the current drive; without a drive the first character is dropped then, so "ab\c"
// makes "\b\c".
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

// Lists the files of a folder that match a mask, and maps each to the same place under another
// folder.
//
// The mask names an extension: the text behind its first ".", or all of it. A file matches when the
// text behind the first "." of its name is the same but for case; a name without "." matches the
// empty extension, which is the mask "*.". "*.*" accepts every entry; the subfolders are then
// listed too, unless the search descends into them.
//   "*.bin" finds a.BIN, but not c.bin.bak.
//
// Names come from the system through utf16_to_utf8. Callers rely on the end of the process
// (0xC0000409) when the path of a found file reaches 260 bytes, or the name of a subfolder to be
// searched does: a list that lacks files would pass for the whole. A folder that cannot be listed
// holds no files. Passed over are malformed names, names that would lead elsewhere in UTF-8, and
// links to a folder that is being searched. An object belongs to one thread at a time.
class KVUTILS_API FindFiles {
 public:
  // A folder gets a "\" at its end unless it has one, so that an empty or null source is the root
  // of the current drive, and "C:" that of drive C. The target folder is empty when it is null or
  // not given. A null mask is the empty one.
  FindFiles(const char* source, const char* mask);
  FindFiles(const char* source, const char* target, const char* mask);
  FindFiles(const FindFiles& other);
  FindFiles& operator=(const FindFiles& other);
  ~FindFiles();

  // Searches the source folder and, if asked, its subfolders, each when it is met, and appends what
  // it finds in the order of the file system; nothing when memory is short (std::bad_alloc).
  // Callers rely on it: a second run appends the same files again.
  void Run(bool recursive);

  [[nodiscard]] unsigned int GetNumberFiles() const;
  // The full path of a file, until the next Run or the end of the object. An index that is not
  // below GetNumberFiles throws std::out_of_range, "invalid vector subscript", here and below.
  const char* GetSourceFile(unsigned int index);
  // The target folder followed by the path of the file below the source folder, until the next
  // call.
  const char* GetTargetFile(unsigned int index);

 private:
  std::string m_Mask;
  std::string m_SourceFolder;
  std::string m_TargetFolder;
  std::string m_TargetFile;
  std::vector<std::string> m_Files;
  bool m_IsAcceptAll;
  bool m_IsRecursive;
};

// Moves every file and subfolder of the folder whose full path holds "_new" to the path without the
// first "_new", over a file that is there: stars_new.bin becomes stars.bin. What cannot be moved
// stays, and the others go on. Callers rely on it: the "_new" counts in the names of the folders
// too, and on the end of the process for an over-long path, as in FindFiles. A null or empty folder
// names nothing.
KVUTILS_API void RenameUpdatedFiles(const char* folder);

// The functions below go through the system's shell where a tree is concerned, and through its file
// calls for single files. Unless said otherwise they report nothing; a path that is null, empty,
// malformed or longer than 259 bytes is left alone.

// Deletes a folder, with or without a trailing "\", and all that is in it for good, without asking.
// The shell may show its progress and its errors; it takes "*" and "?" in the last name for a
// pattern and follows links as it sees fit. The root of a drive, share, volume or device is left
// alone, and so is a path whose full form is longer than 259 units.
KVUTILS_API void DeleteFolder(const char* folder);

// Deletes the files of the folder that match the mask as the system matches names, read-only ones
// included; what cannot be deleted, subfolders and the folder itself stay. A mask with "\", "/" or
// ":" matches nothing.
KVUTILS_API void DeleteFolder(const char* folder, const char* mask);

// Asks the shell to copy `folder` onto itself, with `owner` as the window of its messages. Callers
// rely on it: `from` is not read. Texts are in the system's ANSI code page and at most 510 bytes
// long. The shell may show an error and wait for the user.
KVUTILS_API void CopyFolder(const char* from, const char* folder, HWND__* owner);

// Copies all that is in the folder `source` into `target`, replacing what is there, without any
// question or message. True when the shell reports success. Callers rely on the end of the process
// (0xC0000417) when `source` and "\*", or `target`, is longer than 259 units. False for an empty
// text and one that holds a NUL.
KVUTILS_API bool CopyDirTo(const std::wstring& source, const std::wstring& target);

// Copies each file of `sources` to the path at the same place of `targets`, as far as both lists
// go, replacing what is there. No folders are made; what cannot be copied is passed over. Paths may
// be as long as the system allows.
KVUTILS_API void CopyFilesFromList(const std::vector<std::string>& sources,
                                   const std::vector<std::string>& targets);

// Copies each of the files from the one folder, which has no trailing "\", to the other, replacing
// what is there. Folders that are missing are made on both sides, as CheckFileFolder makes them.
KVUTILS_API void CopyFilesFromList(const std::vector<std::string>& names, const char* sourceFolder,
                                   const char* targetFolder);

// Deletes the writable folder with all that is in it, and forgets the remembered paths. An empty
// writable folder names nothing, and nothing is deleted.
KVUTILS_API void deleteUserFolderContent();

// What one descriptor of KvFoldersRemover asks for.
struct KvRemoveFolderDesc {
  bool base;                       // in the writable folder itself
  bool languages;                  // in each language folder below it
  std::string folder;              // relative to these; ".\" is the folder itself
  bool deleteListed;               // delete the files below, or all files but them
  std::vector<std::string> files;  // names; none means the whole folder
};

// Removes parts of the writable folder as short texts describe them: root, folder and, for a
// choice of files, a mode and names.
//   "all;catalogs\asteroids"                      the folder, in the root and in each language
//   "base;.\;delete;home_params.ini,settings.ini"  two files of the writable folder
//   "base;media\find;not_delete;stars.kwd"         all files of the folder but one
//
// Roots: "base" the writable folder, "languages" each folder below it that
// "media:supported_languages.ini" names, one a line, "all" both. Modes: "delete", "not_delete".
// Fields are separated by ";", names by ","; empty ones do not count. Case matters in roots and
// modes, not in names. Fields behind the fourth are ignored.
//
// Callers rely on what follows. An unknown root or mode keeps the flags of the descriptor before;
// ahead of the first they are false, false and true: an unknown root there deletes nothing, an
// unknown mode the files listed. "languages;.\" removes the language folders whole, but "base;.\"
// and a choice of files take ".\" as it stands. "not_delete" with several names deletes each file
// that differs from any of them, so all files unless the names are the same. Subfolders stay when
// files are chosen. A file whose path reaches 260 bytes, in a folder of which files are chosen,
// ends the process, as in FindFiles.
//
// A root without a folder names the writable or language folder itself. A descriptor of three
// fields, one of none and a null one delete nothing. Nothing outside the writable folder is
// touched, wherever ".." or a link may point: such a path, one over 259 bytes, a language that
// means the writable folder itself, and every path while the writable folder is empty, is passed
// over. Links inside a folder that is removed are the shell's matter, as in DeleteFolder. Whatever
// cannot be deleted stays; nothing is reported but what the shell shows.
class KVUTILS_API KvFoldersRemover {
 public:
  // Reads the language folders, then `count` descriptors; none when it is below 1 or `descriptors`
  // is null. The texts are not kept.
  KvFoldersRemover(const char* const* descriptors, int count);
  KvFoldersRemover(const KvFoldersRemover& other);
  KvFoldersRemover& operator=(const KvFoldersRemover& other);
  ~KvFoldersRemover();

  // Applies the descriptors in their order.
  void Run();

 private:
  void ReadLanguages(const char* roleName);
  void DeleteFolder(const KvRemoveFolderDesc& desc);
  void DeleteFiles(const KvRemoveFolderDesc& desc);
  void DeleteFilesInFolder(const char* folderPath, bool deleteListed,
                           const std::vector<std::string>& names);

  const char* m_Keywords[3];  // "all", "base", "languages"
  std::vector<KvRemoveFolderDesc> m_Descriptors;
  std::vector<std::string> m_LanguageFolders;
};

// Removes what was downloaded: catalogues of asteroids, comets and spacecraft, the download folder,
// and the search indexes but the one of the stars.
KVUTILS_API void deleteDownloads();

// Resets the user's data after a failure: downloaded and edited catalogues, workspaces, settings,
// media and all language folders.
KVUTILS_API void deleteDataAfterError();

#endif  // KVUTILS_UTILS_PATHS_PATHS_H_
