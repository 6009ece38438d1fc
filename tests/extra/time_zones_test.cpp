#include "utils/extra/time_zones.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <atomic>
#include <cfloat>
#include <chrono>
#include <cmath>
#include <future>
#include <limits>
#include <ostream>
#include <regex>
#include <string>
#include <thread>
#include <vector>

#include "utils/platform/platform.h"

namespace kv {

std::ostream& operator<<(std::ostream& out, LocalTimeKind kind) {
  switch (kind) {
    case LocalTimeKind::kUnique:
      return out << "unique";
    case LocalTimeKind::kSkipped:
      return out << "skipped";
    case LocalTimeKind::kRepeated:
      return out << "repeated";
  }
  return out << "of no kind";
}

}  // namespace kv

namespace {

using namespace std::chrono_literals;
using kv::IsKnownZone;
using kv::LocalTimeKind;
using kv::NextTransition;
using kv::UtcFromLocal;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr auto kPatience = 20s;

// A date and time of the calendar, UTC or local, as a Julian Date.
double Date(int year, unsigned month, unsigned day, int hours = 0, int minutes = 0) {
  const std::chrono::sys_days days =
      std::chrono::year(year) / std::chrono::month(month) / std::chrono::day(day);
  return static_cast<double>(days.time_since_epoch().count()) + 2440587.5 +
         (hours * 60 + minutes) / 1440.0;
}

// Julian Dates are compared to the millisecond.
long long Milliseconds(double julianDate) {
  return std::llround((julianDate - 2440587.5) * 86400000.0);
}
constexpr double Days(int hours, int minutes = 0) { return (hours * 60 + minutes) / 1440.0; }

struct TransitionCase {
  const char* zone;
  double from;
  double julianDate;
  double before;
  double after;
};

TEST(NextTransition, TellsTheFirstChangeBehindTheDate) {
  const TransitionCase cases[] = {
      {"Europe/Berlin", Date(2024, 1, 1), Date(2024, 3, 31, 1), Days(1), Days(2)},
      {"Europe/Berlin", Date(2024, 3, 31, 0, 59), Date(2024, 3, 31, 1), Days(1), Days(2)},
      {"Europe/Berlin", Date(2024, 3, 31, 1, 1), Date(2024, 10, 27, 1), Days(2), Days(1)},
      {"Europe/Berlin", Date(2999, 12, 31), Date(3000, 3, 30, 1), Days(1), Days(2)},
      {"America/New_York", Date(2024, 1, 1), Date(2024, 3, 10, 7), Days(-5), Days(-4)},
      {"Australia/Lord_Howe", Date(2024, 1, 1), Date(2024, 4, 6, 15), Days(11), Days(10, 30)},
      {"Australia/Lord_Howe", Date(2024, 7, 1), Date(2024, 10, 5, 15, 30), Days(10, 30), Days(11)},
      {"Asia/Kathmandu", Date(1980, 1, 1), Date(1985, 12, 31, 18, 30), Days(5, 30), Days(5, 45)},
      {"Pacific/Apia", Date(2011, 10, 1), Date(2011, 12, 30, 10), Days(-10), Days(14)},
  };
  for (const TransitionCase& row : cases) {
    SCOPED_TRACE(std::string(row.zone) + " from " + std::to_string(row.from));
    const auto change = NextTransition(row.zone, row.from);
    ASSERT_TRUE(change);
    EXPECT_EQ(Milliseconds(change->julianDate), Milliseconds(row.julianDate));
    EXPECT_NEAR(change->before, row.before, 1e-12);
    EXPECT_NEAR(change->after, row.after, 1e-12);
  }
}

TEST(NextTransition, BeginsWithTheEndOfLocalMeanTime) {
  for (const double date : {0.0, -1e6, -2.1e9, Date(1893, 3, 31, 22, 59)}) {
    SCOPED_TRACE(date);
    const auto change = NextTransition("Europe/Berlin", date);
    ASSERT_TRUE(change);
    // 1893-04-01 00:00 by the clock of Berlin, 53 minutes and 28 seconds before UTC.
    EXPECT_EQ(Milliseconds(change->julianDate), Milliseconds(Date(1893, 3, 31, 23, 6)) + 32000);
    EXPECT_EQ(change->before, 0.03712962962962963);
    EXPECT_EQ(change->after, 0.041666666666666664);
  }
}

TEST(NextTransition, IsNothingWhereNoneFollows) {
  for (const char* zone : {"UTC", "GMT+5", "GMT", "Etc/GMT-14"}) {
    SCOPED_TRACE(zone);
    for (const double date : {-1e9, 0.0, 2451545.0, 1e9}) EXPECT_FALSE(NextTransition(zone, date));
  }
  EXPECT_FALSE(NextTransition("Asia/Kathmandu", Date(1986, 1, 1)));
  EXPECT_FALSE(NextTransition("Asia/Tokyo", Date(2024, 1, 1)));
}

// The calendar ends in a December; the rules of the last year are those of any.
TEST(NextTransition, EndsWithTheCalendar) {
  const double end = 2130706431.5;
  const auto change = NextTransition("Europe/Berlin", end - 3000);
  ASSERT_TRUE(change);
  EXPECT_GT(change->julianDate, end - 3000);
  EXPECT_LT(change->julianDate, end - 3000 + 366);
  double last = end - 3000;
  int count = 0;
  for (auto next = NextTransition("Europe/Berlin", last); next && count < 100;
       next = NextTransition("Europe/Berlin", last)) {
    EXPECT_GT(next->julianDate, last);
    last = next->julianDate;
    ++count;
  }
  EXPECT_LT(last, end);
  EXPECT_GE(count, 15);
  EXPECT_LE(count, 17);
}

struct LocalCase {
  const char* zone;
  double local;
  LocalTimeKind kind;
  double earlier;
  double later;
};

TEST(UtcFromLocal, TellsSkippedAndRepeatedTimesApart) {
  const LocalCase cases[] = {
      {"Europe/Berlin", Date(2024, 3, 31, 1, 59), LocalTimeKind::kUnique, Date(2024, 3, 31, 0, 59),
       Date(2024, 3, 31, 0, 59)},
      {"Europe/Berlin", Date(2024, 3, 31, 2), LocalTimeKind::kSkipped, Date(2024, 3, 31),
       Date(2024, 3, 31, 1)},
      {"Europe/Berlin", Date(2024, 3, 31, 2, 30), LocalTimeKind::kSkipped, Date(2024, 3, 31, 0, 30),
       Date(2024, 3, 31, 1, 30)},
      {"Europe/Berlin", Date(2024, 3, 31, 3), LocalTimeKind::kUnique, Date(2024, 3, 31, 1),
       Date(2024, 3, 31, 1)},
      {"Europe/Berlin", Date(2024, 10, 27, 1, 59), LocalTimeKind::kUnique,
       Date(2024, 10, 26, 23, 59), Date(2024, 10, 26, 23, 59)},
      {"Europe/Berlin", Date(2024, 10, 27, 2, 30), LocalTimeKind::kRepeated,
       Date(2024, 10, 27, 0, 30), Date(2024, 10, 27, 1, 30)},
      {"Europe/Berlin", Date(2024, 10, 27, 3), LocalTimeKind::kUnique, Date(2024, 10, 27, 2),
       Date(2024, 10, 27, 2)},
      // Half an hour.
      {"Australia/Lord_Howe", Date(2024, 4, 7, 1, 29), LocalTimeKind::kUnique,
       Date(2024, 4, 6, 14, 29), Date(2024, 4, 6, 14, 29)},
      {"Australia/Lord_Howe", Date(2024, 4, 7, 1, 45), LocalTimeKind::kRepeated,
       Date(2024, 4, 6, 14, 45), Date(2024, 4, 6, 15, 15)},
      {"Australia/Lord_Howe", Date(2024, 10, 6, 2, 15), LocalTimeKind::kSkipped,
       Date(2024, 10, 5, 15, 15), Date(2024, 10, 5, 15, 45)},
      {"Australia/Lord_Howe", Date(2024, 10, 6, 2, 30), LocalTimeKind::kUnique,
       Date(2024, 10, 5, 15, 30), Date(2024, 10, 5, 15, 30)},
      {"Asia/Kathmandu", Date(1986, 1, 1, 0, 7), LocalTimeKind::kSkipped,
       Date(1985, 12, 31, 18, 22), Date(1985, 12, 31, 18, 37)},
      {"Asia/Kathmandu", Date(2024, 1, 1, 5, 45), LocalTimeKind::kUnique, Date(2024, 1, 1),
       Date(2024, 1, 1)},
      // A day that Samoa's calendar has not.
      {"Pacific/Apia", Date(2011, 12, 29, 23, 59), LocalTimeKind::kUnique,
       Date(2011, 12, 30, 9, 59), Date(2011, 12, 30, 9, 59)},
      {"Pacific/Apia", Date(2011, 12, 30, 12), LocalTimeKind::kSkipped, Date(2011, 12, 29, 22),
       Date(2011, 12, 30, 22)},
      {"Pacific/Apia", Date(2011, 12, 31), LocalTimeKind::kUnique, Date(2011, 12, 30, 10),
       Date(2011, 12, 30, 10)},
      {"UTC", Date(2024, 3, 31, 2, 30), LocalTimeKind::kUnique, Date(2024, 3, 31, 2, 30),
       Date(2024, 3, 31, 2, 30)},
      {"GMT+5", Date(2024, 3, 31, 2, 30), LocalTimeKind::kUnique, Date(2024, 3, 30, 21, 30),
       Date(2024, 3, 30, 21, 30)},
  };
  for (const LocalCase& row : cases) {
    SCOPED_TRACE(std::string(row.zone) + " at " + std::to_string(row.local));
    const auto utc = UtcFromLocal(row.zone, row.local);
    ASSERT_TRUE(utc);
    EXPECT_EQ(utc->kind, row.kind);
    EXPECT_EQ(Milliseconds(utc->earlier), Milliseconds(row.earlier));
    EXPECT_EQ(Milliseconds(utc->later), Milliseconds(row.later));
  }
}

TEST(TimeZones, AreKnownByTheirRules) {
  for (const char* zone : {"UTC", "Europe/Berlin", "Asia/Kathmandu", "GMT", "GMT+5", "GMT-03:30",
                           "Etc/GMT+5", "Etc/UTC", "EST5EDT", "Asia/Calcutta"}) {
    EXPECT_TRUE(IsKnownZone(zone)) << zone;
  }
  for (const char* zone :
       {"", "Nowhere/Atlantis", "europe berlin", "Europe/Berli", "Europe/Berlin ",
        "Europe/B\xC3\xA9rlin", "\xFF\xC3", "GMT+99", "Europe", "Etc/Unknown"}) {
    EXPECT_FALSE(IsKnownZone(zone)) << zone;
    EXPECT_FALSE(NextTransition(zone, 2451545.0)) << zone;
    EXPECT_FALSE(UtcFromLocal(zone, 2451545.0)) << zone;
  }
  EXPECT_FALSE(IsKnownZone(nullptr));
  EXPECT_FALSE(NextTransition(nullptr, 2451545.0));
  EXPECT_FALSE(UtcFromLocal(nullptr, 2451545.0));
}

TEST(TimeZones, HaveNamesOfAnyLength) {
  for (const std::size_t length : {62U, 63U, 64U, 65U, 255U, 1000U, 100000U}) {
    SCOPED_TRACE(length);
    const std::string name(length, 'x');
    EXPECT_FALSE(IsKnownZone(name.c_str()));
    EXPECT_FALSE(NextTransition(name.c_str(), 2451545.0));
    EXPECT_FALSE(UtcFromLocal(name.c_str(), 2451545.0));
  }
}

TEST(TimeZones, TellNothingBeyondTheCalendar) {
  for (const double date : {2.14e9, 1e10, 1e300, DBL_MAX, kInfinity, kNaN}) {
    for (const char* zone : {"Europe/Berlin", "UTC", "GMT+5", "Nowhere/Atlantis"}) {
      SCOPED_TRACE(std::string(zone) + " at " + std::to_string(date));
      EXPECT_FALSE(NextTransition(zone, date));
      EXPECT_FALSE(NextTransition(zone, -date));
      EXPECT_FALSE(UtcFromLocal(zone, date));
      EXPECT_FALSE(UtcFromLocal(zone, -date));
    }
  }
  EXPECT_TRUE(UtcFromLocal("Europe/Berlin", 2.13e9));
  EXPECT_TRUE(UtcFromLocal("Europe/Berlin", -2.13e9));
}

TEST(TimeZones, HaveRulesOfAVersion) {
  const std::string version = kv::TimeZoneDataVersion();
  EXPECT_TRUE(std::regex_match(version, std::regex("20[0-9][0-9][a-z]+"))) << version;
  EXPECT_EQ(kv::TimeZoneDataVersion(), version);
}

// Local times around a change mean what the two offsets say.
void CheckLocalTimesAround(const char* zone, const kv::ZoneTransition& change) {
  const long long instant = Milliseconds(change.julianDate);
  const auto before = std::llround(change.before * 86400000.0);
  const auto after = std::llround(change.after * 86400000.0);
  const long long first = instant + std::min(before, after);
  const long long end = instant + std::max(before, after);
  const LocalTimeKind kind = before < after ? LocalTimeKind::kSkipped : LocalTimeKind::kRepeated;
  const struct {
    long long local;
    LocalTimeKind kind;
    long long earlier;
    long long later;
  } rows[] = {
      {first - 1000, LocalTimeKind::kUnique, first - 1000 - before, first - 1000 - before},
      {first, kind, first - std::max(before, after), first - std::min(before, after)},
      {end - 1000, kind, end - 1000 - std::max(before, after),
       end - 1000 - std::min(before, after)},
      {end, LocalTimeKind::kUnique, end - after, end - after},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.local);
    const auto utc = UtcFromLocal(zone, static_cast<double>(row.local) / 86400000.0 + 2440587.5);
    ASSERT_TRUE(utc);
    EXPECT_EQ(utc->kind, row.kind);
    EXPECT_EQ(Milliseconds(utc->earlier), row.earlier);
    EXPECT_EQ(Milliseconds(utc->later), row.later);
  }
}

// From 1900 to 2050. The function that tells an offset at an instant says the same on both sides of
// each change, and the same from one change to the next.
void CheckChanges(const char* zone, int expectedCount) {
  int count = 0;
  double last = Date(1900, 1, 1);
  double offset = getLocalUTCDeltaForTimezone(zone, last);
  for (auto change = NextTransition(zone, last); change && change->julianDate < Date(2050, 1, 1);
       change = NextTransition(zone, last)) {
    SCOPED_TRACE(std::string(zone) + " at " + std::to_string(change->julianDate));
    ASSERT_GT(change->julianDate, last);
    EXPECT_EQ(change->before, offset);
    EXPECT_NE(change->after, change->before);
    EXPECT_EQ(getLocalUTCDeltaForTimezone(zone, std::nextafter(change->julianDate, 0.0)), offset);
    offset = getLocalUTCDeltaForTimezone(zone, change->julianDate);
    EXPECT_EQ(change->after, offset);
    CheckLocalTimesAround(zone, *change);
    last = change->julianDate;
    ++count;
  }
  EXPECT_GE(count, expectedCount) << zone;
  EXPECT_EQ(getLocalUTCDeltaForTimezone(zone, Date(2050, 1, 1)), offset) << zone;
}

TEST(TimeZones, ChangeAsTheirOffsetsDo) {
  const struct {
    const char* zone;
    int count;  // the least
  } rows[] = {
      {"Europe/Berlin", 150},
      {"Europe/London", 200},
      {"Europe/Dublin", 200},
      {"America/New_York", 250},
      {"America/Sao_Paulo", 80},
      {"Australia/Lord_Howe", 100},
      {"Africa/Casablanca", 60},
      {"Antarctica/Troll", 80},
      {"Asia/Tehran", 60},
      {"Pacific/Chatham", 140},
      {"Pacific/Apia", 20},
      {"Asia/Kathmandu", 2},
      {"America/Argentina/San_Luis", 50},
  };
  for (const auto& row : rows) CheckChanges(row.zone, row.count);
}

// Whether the functions of this header answer while another thread holds the mutex of the plain
// one.
TEST(TimeZones, WaitForNoMutex) {
  const HANDLE mutex = ::CreateMutexA(nullptr, FALSE, "kv_icu_mutex");
  ASSERT_EQ(::WaitForSingleObject(mutex, 20000), WAIT_OBJECT_0);
  auto answer = std::async(std::launch::async, [] {
    return IsKnownZone("Europe/Berlin") && NextTransition("Asia/Tokyo", 0.0).has_value() &&
           UtcFromLocal("GMT+5", 2451545.0).has_value() && !kv::TimeZoneDataVersion().empty();
  });
  const std::future_status status = answer.wait_for(kPatience);
  ::ReleaseMutex(mutex);
  ::CloseHandle(mutex);
  EXPECT_EQ(status, std::future_status::ready);
  EXPECT_TRUE(answer.get());
}

TEST(TimeZones, AnswerSeveralThreadsAtOnce) {
  const char* const zones[] = {"Europe/Berlin", "GMT+5", "Asia/Kathmandu", "Nowhere/Atlantis"};
  const double instants[] = {2460400.5416666665, 0.0, 2446431.2708333335, 0.0};
  std::atomic<int> wrong = 0;
  std::vector<std::thread> threads;
  for (std::size_t first = 0; first < 4; ++first) {
    threads.emplace_back([&, first] {
      for (std::size_t i = 0; i < 200; ++i) {
        const std::size_t row = (first + i / 3) % 4;
        const double from = row == 2 ? Date(1980, 1, 1) : Date(2024, 1, 1);
        const auto change = NextTransition(zones[row], from);
        const long long told = change ? Milliseconds(change->julianDate) : Milliseconds(0.0);
        if (told != Milliseconds(instants[row])) ++wrong;
        if (IsKnownZone(zones[row]) != (row != 3)) ++wrong;
        if (i % 10 == 0 && getLocalUTCDeltaForTimezone("GMT+5", from) != Days(5)) ++wrong;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
}

}  // namespace
