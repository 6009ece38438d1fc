#include "examples/tour/calendar.h"

#include "examples/tour/format_text.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>

namespace tour {
namespace {

constexpr double kUnixEpoch = 2440587.5;  // 1970-01-01 00:00 as a Julian Date
constexpr double kSecondsPerDay = 86400.0;

CivilTime FromUnixSeconds(long long seconds) {
  using std::chrono::floor;
  const std::chrono::sys_seconds time{std::chrono::seconds(seconds)};
  const auto day = floor<std::chrono::days>(time);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss clock(time - day);
  return {.year = static_cast<int>(date.year()),
          .month = static_cast<unsigned>(date.month()),
          .day = static_cast<unsigned>(date.day()),
          .hour = static_cast<unsigned>(clock.hours().count()),
          .minute = static_cast<unsigned>(clock.minutes().count()),
          .second = static_cast<unsigned>(clock.seconds().count())};
}

std::chrono::sys_days Day(const CivilTime& time) {
  return std::chrono::year(time.year) / std::chrono::month(time.month) / std::chrono::day(time.day);
}

// Takes fields of fixed width off the front of a text.
class FieldReader {
 public:
  explicit FieldReader(std::string_view text) : rest_(text) {}

  bool AtEnd() const { return rest_.empty(); }

  bool Accept(char expected) {
    if (rest_.empty() || rest_.front() != expected) return false;
    rest_.remove_prefix(1);
    return true;
  }

  bool Digits(std::size_t count, unsigned& value) {
    if (rest_.size() < count) return false;
    const char* const end = rest_.data() + count;
    const auto [stop, error] = std::from_chars(rest_.data(), end, value);
    if (error != std::errc() || stop != end) return false;
    rest_.remove_prefix(count);
    return true;
  }

 private:
  std::string_view rest_;
};

bool ReadDate(FieldReader& fields, CivilTime& time) {
  unsigned year = 0;
  if (!fields.Digits(4, year) || !fields.Accept('-')) return false;
  time.year = static_cast<int>(year);
  return fields.Digits(2, time.month) && fields.Accept('-') && fields.Digits(2, time.day);
}

bool ReadClock(FieldReader& fields, CivilTime& time) {
  if (!fields.Digits(2, time.hour) || !fields.Accept(':') || !fields.Digits(2, time.minute)) {
    return false;
  }
  return !fields.Accept(':') || fields.Digits(2, time.second);
}

bool IsAnswered(const CivilTime& time) {
  const std::chrono::year_month_day date{
      std::chrono::year(time.year), std::chrono::month(time.month), std::chrono::day(time.day)};
  return date.ok() && time.year >= kFirstYear && time.year <= kLastYear && time.hour < 24 &&
         time.minute < 60 && time.second < 60;
}

}  // namespace

std::optional<CivilTime> ParseCivilTime(std::string_view text) {
  FieldReader fields(text);
  CivilTime time;
  if (!ReadDate(fields, time)) return std::nullopt;
  if (fields.Accept('T') && !ReadClock(fields, time)) return std::nullopt;
  fields.Accept('Z');
  if (!fields.AtEnd() || !IsAnswered(time)) return std::nullopt;
  return time;
}

CivilTime Now() {
  const auto now = std::chrono::system_clock::now();
  return FromUnixSeconds(std::chrono::floor<std::chrono::seconds>(now).time_since_epoch().count());
}

double JulianDate(const CivilTime& time) {
  const double days = static_cast<double>(Day(time).time_since_epoch().count());
  const unsigned seconds = (time.hour * 60 + time.minute) * 60 + time.second;
  return kUnixEpoch + days + seconds / kSecondsPerDay;
}

CivilTime CivilTimeOf(double julianDate) {
  // Not a number is greater than nothing.
  const double bounded =
      julianDate > kFirstJulianDate ? std::min(julianDate, kLastJulianDate) : kFirstJulianDate;
  return FromUnixSeconds(std::llround((bounded - kUnixEpoch) * kSecondsPerDay));
}

std::string DateText(const CivilTime& time) { return DateText(DateNumber(time)); }

std::string DateTimeText(const CivilTime& time) {
  return DateText(time) + FormatText(" %02u:%02u:%02u", time.hour, time.minute, time.second);
}

std::uint32_t DateNumber(const CivilTime& time) {
  return static_cast<std::uint32_t>(time.year) * 10000 + time.month * 100 + time.day;
}

std::string DateText(std::uint32_t dateNumber) {
  return FormatText("%04u-%02u-%02u", dateNumber / 10000, dateNumber / 100 % 100, dateNumber % 100);
}

}  // namespace tour
