#ifndef KVUTILS_UTILS_PLATFORM_PLATFORM_H_
#define KVUTILS_UTILS_PLATFORM_PLATFORM_H_

// Time and platform services: time zones and regional settings, clocks and time-outs, the
// clipboard, named parameters and flags of the application, unpacking of archives.
//
// All text is UTF-8 and zero-terminated. Julian Dates are in UTC and in days; time-zone offsets are
// in days. Failures are results; nothing is thrown but std::bad_alloc. Every state is process-wide
// and owned by the library. getLocalUTCDeltaForTimezone may be called from several threads and
// processes at once, and getPreciseTime, WaitTime and usleep by any thread; everything else is
// unsynchronised and meant for the host's main thread.

#include "utils/export.h"

#include <functional>
#include <map>
#include <string>

// ---- Time zones and regional settings ----------------------------------------------------------

extern "C" {

// Local time minus UTC, in days, daylight saving included, for the zone `zoneName` (an IANA
// identifier such as "Europe/Berlin", or a fixed offset such as "GMT+5") at the instant
// `julianDate`.
//   getLocalUTCDeltaForTimezone("Europe/Berlin", 2459580.5) is 1/24 (1 January 2022), and 2/24 at
//   2459762.5 (2 July 2022).
// The rules are the IANA time zone database as ICU carries it.
//
// 0.0 is the answer for a name that ICU does not know, an empty one and a null one with a date
// other than 0.0 among them, for a date that is not a number, and when the zone cannot be made,
// which the next call tries anew.
// Dates beyond the range of ICU's calendar (about 5.8 million years on either side of the present)
// are answered as the end of that range.
//
// The zone of the last name is kept, so that asking again for the same zone makes no new one;
// alternating two names makes the zone anew each time. Names longer than 63 bytes are looked up at
// each call and not kept.
//
// The zone is used under the named mutex "kv_icu_mutex", which every process that opens a mutex of
// this name shares: the call waits for it without a time-out. A mutex abandoned by a dead thread or
// process is taken over. A system that refuses the named mutex leaves an unnamed one, which
// serialises this process alone.
//
// The release call: a null name with a date of exactly 0.0 deletes the kept zone, closes the mutex
// and returns 0.0; the next call starts afresh. It takes no lock, so no other thread may be inside
// this function.
KVUTILS_API double getLocalUTCDeltaForTimezone(const char* zoneName, double julianDate);

// True when the user's regional setting is a 24-hour clock, false when it is a 12-hour clock or
// cannot be read.
KVUTILS_API bool is24HoursSystemTimeFormat();

// Stores the application's own choice of clock. 0 and 1 mean 12 and 24 hours; any other value is
// kept as it is, except that -1 means "not set".
KVUTILS_API void set24HoursKvTimeFormat(int value);

// The stored choice of clock, 1 when none is set. Callers rely on the 24-hour default: the regional
// setting is never consulted here.
KVUTILS_API int get24HoursKvTimeFormat();

// Stores a copy of `code` as the language of the user interface, unchecked ("xx" is kept as "xx"),
// cut to its first 31 bytes. The empty text, or null, makes the next GetSystemLocale detect the
// platform's language again.
KVUTILS_API void SetSystemLocale(const char* code);

// The two-letter language code of the user interface: what SetSystemLocale stored last, else the
// language of the user's locale if it is one of "en", "de", "fr", "ru", "es", "it", "nl", "ja",
// else "en". Detection happens once and its answer is kept ("fr-CA" gives "fr", "pt-BR" gives
// "en"). Never null and never empty. The text belongs to the library, stays in the same place and
// changes with the next SetSystemLocale.
KVUTILS_API const char* GetSystemLocale();

}  // extern "C"

// ---- Clocks ------------------------------------------------------------------------------------

// Seconds since the library was loaded, by the system's performance counter; never less than
// before.
KVUTILS_API double getPreciseTime();

// A time-out. One made without a duration is over at once, as is every other that is negative or 0.
class KVUTILS_API WaitTime {
 public:
  // Starts a time-out of so many seconds.
  explicit WaitTime(double seconds = -1.0);
  // The same on an existing object.
  void Start(double seconds);
  // True when `duration` seconds have passed since the start; false for ever when it is not a
  // number.
  [[nodiscard]] bool IsTimeOver() const;

  double duration;  // seconds
  double start;     // clock time in seconds
};

// The clock of an animation: read once a frame, asked many times. The thread that drives the
// animation updates it; others may ask, unsynchronised.
class KVUTILS_API AnimationInterval {
 public:
  // Both fields 0.
  AnimationInterval();

  // Reads the clock.
  static void updateTime();
  // The clock time of the last update, in seconds; 0.0 before the first.
  static double getCurrentTime();

  // The host's; never read here.
  long long m_Begin;
  long long m_End;

  static double m_CurrentTime;
};

// Sleeps the given time, cut to whole milliseconds. Callers rely on it: less than 1000 microseconds
// yields the rest of the time slice and no more. So do negative values and NaN; the longest sleep
// is 4,294,967,294 milliseconds.
KVUTILS_API void usleep(double microseconds);

// ---- Clipboard ---------------------------------------------------------------------------------
//
// The clipboard is held within a call only. A clipboard that another program holds gives 0 at once,
// and so does a null text. SendTextToClipboard and SendHTMLToClipboard otherwise give what
// CloseClipboard gives, so not 0 tells that the clipboard was opened and closed, and no more:
// without memory it is left empty. UTF-8 and UTF-16 convert as utf8_to_utf16 and utf16_to_utf8
// convert them.

extern "C" {

// Puts the text on the clipboard, as CF_UNICODETEXT. A malformed text, or one of 2 GiB or more,
// leaves the clipboard as it is.
KVUTILS_API int SendTextToClipboard(const char* text);

// The text of the clipboard: returns the number of bytes that `buffer` must hold and, unless it is
// null, fills it. 0, with nothing written, when the clipboard holds no text, malformed UTF-16, or
// more than an int can count.
// Callers rely on the conversion of the whole block of memory: the text ends at its first NUL, and
// the number is at least the length of a terminated text and 2. The size of the buffer is not
// checked: between two calls another program may put a longer text there.
//   if (const int size = GetTextFromClipboard(nullptr); size > 0) {
//     std::string text(static_cast<std::size_t>(size), '\0');
//     GetTextFromClipboard(text.data());
//   }
KVUTILS_API int GetTextFromClipboard(char* buffer);

// Puts an HTML document on the clipboard, as the registered format "HTML Format": 97 bytes that
// tell where the document and its fragment begin and end, the document, four zero bytes. Offsets
// count bytes from the start of the block:
//   StartHTML      the first "<!DOCTYPE html>"
//   EndHTML        the end of the text
//   StartFragment  behind the first ">" that follows the first "<body"
//   EndFragment    the first "</body>"
// Each has eight digits; a mark that the document lacks leaves zeros, and so does an offset that
// eight digits cannot hold. `plainText`, unless null or malformed, is put beside it as
// CF_UNICODETEXT.
KVUTILS_API int SendHTMLToClipboard(const char* html, const char* plainText);

// Not offered: -1.
KVUTILS_API int GetHTMLFromClipboard();

}  // extern "C"

// ---- Parameters and flags of the application ---------------------------------------------------

// Named integers that the application's modules share. Names are compared byte by byte; a null name
// counts as empty.
class KVUTILS_API IntParametersSender {
 public:
  IntParametersSender();
  IntParametersSender(const IntParametersSender& other);
  IntParametersSender& operator=(const IntParametersSender& other);
  ~IntParametersSender();

  // Callers rely on the order of the arguments: the value stands before the name.
  void SetParamByName(int value, const char* name);
  // True and the value; false, with *value untouched, for a name that was never set, and for a null
  // `value`.
  bool GetParamByName(int* value, const char* name);

 private:
  std::map<std::string, int, std::less<>> m_Parameters;
};

// The one set of parameters of the process, made by the first call (from any thread).
KVUTILS_API IntParametersSender& GetParametersSender();

// The version of the workspace format, 0x08010000 at start; stored, never interpreted.
KVUTILS_API unsigned int GetWorkspaceVersion();
KVUTILS_API void SetWorkspaceVersion(unsigned int version);

// Whether the display is of high density: 1 or 0, 0 at start.
KVUTILS_API unsigned int IsRetinaDisplay();
KVUTILS_API void SetRetinaDisplay(bool isRetina);

// Whether night-vision colours are on: 1 or 0, 0 at start. Every value but 0 switches them on.
KVUTILS_API void SetNightVision(int on);
KVUTILS_API int GetNightVision();

// 1 when there is a word dictionary for the language of the user interface (GetSystemLocale):
// "de", "en", "fr" and "ru"; else 0.
KVUTILS_API int isDictionaryEnable();

// The file name of a panel layout: `name` where there is a word dictionary, else what stands before
// its first "." and "_wd.ldf": "panel.ldf" gives "panel_wd.ldf". Null counts as empty.
KVUTILS_API std::string GetPanelLdfFileNameWD(const char* name);

// What is the same for every host on this platform. Callers rely on each answer.
KVUTILS_API const char* GetVersionString();        // "9.0.0"
KVUTILS_API int GetBuildNumber();                  // -1: there is no build number
KVUTILS_API int IsiPad();                          // 1
KVUTILS_API void* GetNullIrrlichDevice();          // null
KVUTILS_API void* createOSSpecificThreadObject();  // null: no object is made
KVUTILS_API void releaseOSSpecificThreadObject();  // does nothing

// ---- Archives ----------------------------------------------------------------------------------

// Unpacks a ZIP archive into `destFolder`, or into the archive's own folder when that is null, by
// running "unzip.exe -q -u -d FOLDER ARCHIVE", which the system looks for in the host's folder, the
// current folder, the system's folders and the search path. Waits for its end, however long that
// takes. True when the program has run: whether it succeeded is not examined. False, without
// running anything, when it cannot be started, for a null or malformed text, for a command line
// over 32,766 UTF-16 units and, without `destFolder`, for an archive path without "\".
//
// Callers rely on how the folder is passed: `destFolder` with a "\" at its end, added if missing,
// so that an empty one is the root of the current drive; or the archive's path before its last "\".
// Its parent is created, and it itself too if it is given with its "\" or without any, even when
// the program then cannot be started; the program creates the last level. Neither path is quoted:
// callers avoid blanks.
//
// The program is Info-ZIP's or behaves like it. Info-ZIP's asks on its console before it replaces a
// file, unless the environment variable UNZIPOPT holds -o, and nobody sees the question; and it
// finds only paths that the system's narrow code page can spell.
KVUTILS_API bool UnzipFile(const char* archivePath, const char* destFolder);

#endif  // KVUTILS_UTILS_PLATFORM_PLATFORM_H_
