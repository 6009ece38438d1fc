#ifndef KVUTILS_UTILS_PLATFORM_PLATFORM_H_
#define KVUTILS_UTILS_PLATFORM_PLATFORM_H_

// Time zones and regional settings.
//
// All text is UTF-8 and zero-terminated. Julian Dates are in UTC and in days; time-zone offsets are
// in days. No function reports an error and none throws. Every state is process-wide and owned by
// the library. getLocalUTCDeltaForTimezone may be called from several threads and processes at
// once; everything else is unsynchronised and meant for the host's main thread.

#include "utils/export.h"

extern "C" {

// Local time minus UTC, in days, daylight saving included, for the zone `zoneName` (an IANA
// identifier such as "Europe/Berlin", or a fixed offset such as "GMT+5") at the instant
// `julianDate`.
//   getLocalUTCDeltaForTimezone("Europe/Berlin", 2459580.5) is 1/24 (1 January 2022), and 2/24 at
//   2459762.5 (2 July 2022).
// The rules are the IANA time zone database as ICU carries it.
//
// 0.0 is the answer for a name that ICU does not know, an empty one and a null one with a date
// other than 0.0 among them, for a date that is not a number, and when the zone cannot be made.
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

#endif  // KVUTILS_UTILS_PLATFORM_PLATFORM_H_
