#include "utils/extra/time_zones.h"

#include "utils/internal/icu_setup.h"
#include "utils/internal/icu_zone.h"

#include <unicode/basictz.h>
#include <unicode/tztrans.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

namespace kv {
namespace {

// The rules know a zone of the unknown one's name as well.
bool IsUnknown(const icu::TimeZone& zone) {
  icu::UnicodeString name;
  icu::UnicodeString unknown;
  return zone.getID(name) == icu::TimeZone::getUnknown().getID(unknown);
}

// What `ask` answers of the zone; an empty answer for a zone that is not known, and where memory is
// short. What ICU takes of the reserve is released before the reserve is.
template <typename Ask>
std::invoke_result_t<Ask, const icu::BasicTimeZone&> AskZone(const char* name, const Ask& ask) {
  if (name == nullptr) return {};
  internal::SetUpIcu();
  const internal::IcuReserve reserve;
  const auto zone = internal::MakeZone(name);
  if (zone == nullptr || IsUnknown(*zone)) return {};
  // All of ICU's zones are basic ones.
  const auto answer = ask(static_cast<const icu::BasicTimeZone&>(*zone));
  if (reserve.IsNeeded()) return {};
  return answer;
}

// To a millisecond; nothing beyond the range of the calendar and for what is not a number.
std::optional<UDate> RoundedInstant(double julianDate) {
  const UDate instant = std::round(internal::InstantOf(julianDate));
  const bool isInRange =
      instant >= internal::kEarliestInstant && instant <= internal::kLatestInstant;
  if (!isInRange) return std::nullopt;
  return instant;
}

// The first Julian Date that is not before the instant: the offset from an instant on is that of
// its Julian Date as well.
double JulianDateOf(UDate instant) {
  const double nearest = instant / internal::kMillisecondsPerDay + internal::kUnixEpoch;
  if (internal::InstantOf(nearest) >= instant) return nearest;
  return std::nextafter(nearest, std::numeric_limits<double>::infinity());
}

// A millisecond before, or where a floating-point number counts no milliseconds, the last one
// before.
UDate InstantBefore(UDate instant) {
  return std::min(instant - 1, std::nextafter(instant, internal::kEarliestInstant));
}

// A change of the offset, all in milliseconds.
struct Change {
  UDate instant;
  std::int32_t before;
  std::int32_t after;
};

// ICU's transitions are also those between standard and summer time with the same offset. Its
// offsets around a transition are asked for by the instant: at some transitions ICU tells others
// than it answers, and likewise for a local time, where summer time is behind standard time.
std::optional<Change> FirstChangeBehind(const icu::BasicTimeZone& zone, UDate instant) {
  icu::TimeZoneTransition found;
  while (zone.getNextTransition(instant, false, found) && found.getTime() > instant) {
    instant = found.getTime();
    if (instant > internal::kLatestInstant) break;
    const Change change = {instant, internal::OffsetAt(zone, InstantBefore(instant)),
                           internal::OffsetAt(zone, instant)};
    if (change.before != change.after) return change;
  }
  return std::nullopt;
}

std::optional<ZoneTransition> TransitionBehind(const icu::BasicTimeZone& zone, UDate instant) {
  const std::optional<Change> change = FirstChangeBehind(zone, instant);
  if (!change) return std::nullopt;
  return ZoneTransition{JulianDateOf(change->instant),
                        change->before * internal::kDaysPerMillisecond,
                        change->after * internal::kDaysPerMillisecond};
}

// The instants of a local time at which the clock shows it, or, when it never does, of the change
// that skips it.
class LocalTime {
 public:
  LocalTime(const icu::BasicTimeZone& zone, UDate local) : local_(local) {
    const UDate first = std::max(local - kReach, internal::kEarliestInstant);
    std::int32_t offset = internal::OffsetAt(zone, first);
    std::optional<Change> change = FirstChangeBehind(zone, first);
    for (; change && change->instant <= local + kReach;
         change = FirstChangeBehind(zone, change->instant)) {
      Pass(*change);
      offset = change->after;
    }
    if (since_ <= local - offset) Show(local - offset);
  }

  [[nodiscard]] UtcOfLocalTime Answer() const {
    LocalTimeKind kind = LocalTimeKind::kSkipped;
    if (isShown_) kind = earlier_ == later_ ? LocalTimeKind::kUnique : LocalTimeKind::kRepeated;
    return {kind, JulianDateOf(earlier_), JulianDateOf(later_)};
  }

 private:
  // No offset from UTC is greater: changes farther away mean nothing to the local time.
  static constexpr UDate kReach = 26 * 3600000.0;

  // A span with one offset ends.
  void Pass(const Change& change) {
    const UDate byBefore = local_ - change.before;
    const UDate byAfter = local_ - change.after;
    const bool isBehind = byBefore >= change.instant;
    if (byBefore >= since_ && !isBehind) Show(byBefore);
    if (isBehind && byAfter < change.instant && !isShown_) {
      earlier_ = byAfter;
      later_ = byBefore;
    }
    since_ = change.instant;
  }

  void Show(UDate instant) {
    if (!isShown_) earlier_ = instant;
    later_ = instant;
    isShown_ = true;
  }

  UDate local_;
  UDate since_ = -std::numeric_limits<UDate>::infinity();  // of the present offset
  UDate earlier_ = 0;
  UDate later_ = 0;
  bool isShown_ = false;
};

}  // namespace

std::string TimeZoneDataVersion() {
  internal::SetUpIcu();
  UErrorCode status = U_ZERO_ERROR;
  return icu::TimeZone::getTZDataVersion(status);
}

bool IsKnownZone(const char* name) {
  return AskZone(name, [](const icu::BasicTimeZone&) { return true; });
}

std::optional<ZoneTransition> NextTransition(const char* name, double julianDate) {
  const std::optional<UDate> instant = RoundedInstant(julianDate);
  if (!instant) return std::nullopt;
  return AskZone(name, [&](const auto& zone) { return TransitionBehind(zone, *instant); });
}

std::optional<UtcOfLocalTime> UtcFromLocal(const char* name, double julianDate) {
  const std::optional<UDate> local = RoundedInstant(julianDate);
  if (!local) return std::nullopt;
  return AskZone(
      name, [&](const auto& zone) { return std::make_optional(LocalTime(zone, *local).Answer()); });
}

}  // namespace kv
