// What the rules of a time zone tell besides the offset at an instant.
//
// A zone is named as for getLocalUTCDeltaForTimezone: "Europe/Berlin", "UTC", "GMT+5". Dates are
// Julian Dates, taken to the nearest millisecond; offsets are local time minus UTC in days. A date
// that is told is never before the instant it stands for, so that the offset from an instant on is
// also the one at that date. Safe from any thread, and never waiting for the mutex of that function
// or changing the zone that it keeps. Where memory is short, the answer is that for an unknown
// zone.
#ifndef KVUTILS_UTILS_EXTRA_TIME_ZONES_H_
#define KVUTILS_UTILS_EXTRA_TIME_ZONES_H_

#include "utils/export.h"

#include <optional>
#include <string>

namespace kv {

// The version of the rules, "2026f".
KVUTILS_API std::string TimeZoneDataVersion();

// Whether the rules know the zone. Where they do not, getLocalUTCDeltaForTimezone answers 0.0, as
// it does for "UTC", which they know. False for null.
KVUTILS_API bool IsKnownZone(const char* name);

// A change of a zone's offset.
struct ZoneTransition {
  double julianDate;  // UTC; of the first instant with the offset `after`
  double before;
  double after;
};

// The first change of the offset behind the instant, a date in UTC. Nothing when there is none (a
// zone's rules may have ended, or never change), for a date that is not a number or beyond the
// range of ICU's calendar (5.8 million years from now), and for a zone that is not known.
//
//   for (auto change = NextTransition("Europe/Berlin", 2460310.5); change;  // 2024-01-01
//        change = NextTransition("Europe/Berlin", change->julianDate)) ...
KVUTILS_API std::optional<ZoneTransition> NextTransition(const char* name, double julianDate);

enum class LocalTimeKind {
  kUnique,    // the clock shows it once
  kSkipped,   // never: it is put forward over it
  kRepeated,  // twice: it is put back over it
};

// The instants, in UTC, that a local date and time can mean.
struct UtcOfLocalTime {
  LocalTimeKind kind;
  double earlier;  // by the larger of the two offsets around the change
  double later;    // by the smaller; the same instant for kUnique
};

// The instants that a local time means. For a skipped one: `later` by the offset before the change,
// as by a clock that has not been put forward, `earlier` by the offset behind it. Nothing for a
// date that is not a number or beyond the range of ICU's calendar, and for a zone that is not
// known.
KVUTILS_API std::optional<UtcOfLocalTime> UtcFromLocal(const char* name, double julianDate);

}  // namespace kv

#endif  // KVUTILS_UTILS_EXTRA_TIME_ZONES_H_
