// Time zones as ICU makes them, and Julian Dates as it counts time. Behind SetUpIcu().
#ifndef KVUTILS_UTILS_INTERNAL_ICU_ZONE_H_
#define KVUTILS_UTILS_INTERNAL_ICU_ZONE_H_

#include <unicode/timezone.h>

#include <cstdint>
#include <memory>
#include <string_view>

namespace kv::internal {

constexpr double kUnixEpoch = 2440587.5;  // 1970-01-01 00:00 UTC as a Julian Date
constexpr double kMillisecondsPerDay = 86400000.0;
constexpr double kDaysPerMillisecond = 1.1574074074074074e-08;
// The range of ICU's calendar, in milliseconds since 1970. Beyond it the day count of ICU's rules
// does not fit the integers that they are computed in.
constexpr UDate kEarliestInstant = -184303902528000000.0;
constexpr UDate kLatestInstant = 183882168921600000.0;

// In milliseconds since 1970, not rounded.
constexpr UDate InstantOf(double julianDate) {
  return (julianDate - kUnixEpoch) * kMillisecondsPerDay;
}

// ICU's unknown zone, whose offset is 0, for a name that it does not know, and so for an empty one.
// None where memory was short.
std::unique_ptr<icu::TimeZone> MakeZone(std::string_view name);

// Local time minus UTC in milliseconds, at an instant in the range of the calendar.
std::int32_t OffsetAt(const icu::TimeZone& zone, UDate instant);

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_INTERNAL_ICU_ZONE_H_
