// Packed dates beside their definition by sscanf, and angles there and back again.
#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "tests/fuzz/support/guarded_copy.h"
#include "tests/fuzz/support/target.h"
#include "utils/astro/astro.h"

namespace kv::fuzz {
namespace {

constexpr double kPi = 3.141592653589793;

int CodeValue(char c) { return c >= '0' && c <= '9' ? c - '0' : static_cast<signed char>(c) - 55; }

struct Date {
  bool isRead = false;
  short year = -1;
  short month = -1;
  double day = -1;
};

// What "%d" reads; a number beyond int counts as the nearest one.
bool ReadInt(const std::string& text, int& value) {
  long long wide = 0;
  if (std::sscanf(text.c_str(), "%lld", &wide) != 1) return false;
  value = static_cast<int>(std::clamp<long long>(wide, INT_MIN, INT_MAX));
  return true;
}

Date Unpacked(std::string text) {
  static const std::string kCenturies = "IJK";
  Date date;
  const std::size_t century = kCenturies.find(text.empty() ? '?' : text[0]);
  int years = 0;
  if (century == std::string::npos || !ReadInt(text.substr(1, 2), years)) return date;
  const std::string fraction = text.size() > 5 ? text.substr(5) : "";
  text.resize(5);
  date.isRead = true;
  date.year = static_cast<short>(1800 + 100 * static_cast<int>(century) + years);
  date.month = static_cast<short>(CodeValue(text[3]));
  date.day = CodeValue(text[4]);
  int k = 0;
  if (!ReadInt(fraction, k)) return date;
  std::int64_t power = 1;
  while (power < k) power *= 10;
  date.day += static_cast<double>(k) / static_cast<double>(power);
  return date;
}

void CheckDate(const std::string& text) {
  const GuardedText guarded(text);
  const Date expected = Unpacked(text);
  Date date;
  Expect("whether a date", UnpackDate(&date.year, &date.month, &date.day, guarded.Get()),
         expected.isRead);
  Expect("year", date.year, expected.year);
  Expect("month", date.month, expected.month);
  Expect("day", date.day, expected.day);
}

using Splitter = void (*)(int*, int*, double*, double, bool);

void CheckSplitting(const char* name, Splitter split, double halfTurn, double radians,
                    bool roundToSecond) {
  int whole = 0;
  int minutes = 0;
  double seconds = 0;
  split(&whole, &minutes, &seconds, radians, roundToSecond);
  const double total = radians / kPi * halfTurn * 3600.0;
  if (std::isnan(total)) {
    ExpectThat("nothing gives 0, 0 and nothing", whole == 0 && minutes == 0 && std::isnan(seconds));
    return;
  }
  ExpectThat(name, minutes >= 0 && minutes < 60 && seconds >= 0 && seconds < 60);
  if (std::fabs(total) >= 1e12) return;
  if (std::abs(static_cast<long long>(whole)) == INT_MAX) return;
  const double parts = (std::fabs(static_cast<double>(whole)) * 60 + minutes) * 60 + seconds;
  ExpectThat("the parts are the angle",
             std::fabs(parts - std::fabs(total)) <=
                 (roundToSecond ? 0.5 : 1e-6) + 1e-3 * (std::fabs(total) >= 1e10));
  ExpectThat("the sign is that of the angle", whole == 0 || (whole < 0) == (total < 0));
  if (roundToSecond) Expect("whole seconds", seconds, std::floor(seconds));
}

void CheckJoining(int whole, int minutes, double seconds) {
  const auto wrapped = [&](int leading) {
    const auto number = static_cast<std::uint32_t>(leading);
    return static_cast<std::int32_t>((number * 60 + static_cast<std::uint32_t>(minutes)) * 60);
  };
  const auto isSame = [](double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); };
  double radians = 0;
  RA2Rad(&radians, whole, minutes, seconds);
  ExpectThat("hours as defined", isSame(radians, (wrapped(whole) + seconds) * kPi / 12.0 / 3600.0));
  Dec2Rad(&radians, whole, minutes, seconds);
  const int magnitude = whole == INT_MIN ? whole : std::abs(whole);
  const double value = (wrapped(magnitude) + seconds) * kPi / 180.0 / 3600.0;
  ExpectThat("degrees as defined", isSame(radians, whole < 0 ? value * -1.0 : value));
}

void Check(Input input) {
  const bool roundToSecond = input.Flag();
  double radians = input.Take<double>();
  if (input.Flag()) radians = std::fmod(radians, 100.0);
  CheckSplitting("hours in bounds", Rad2RA, 12.0, radians, roundToSecond);
  CheckSplitting("degrees in bounds", Rad2Dec, 180.0, radians, roundToSecond);
  CheckJoining(input.Take<int>(), input.Take<int>(), radians);
  CheckJoining(input.Between(-200, 200), input.Between(-60, 60), radians);
  CheckDate(input.Text());
}

const Registration kTarget(
    {.name = "dates",
     .check = Check,
     .seeds = {std::string("K194R25\0........\0\x18\x2D\x44\x54\xFB\x21\x09\x40\0", 26), "J9611",
               "I01VV", "K 5 A-3", "K-1+99999999999",
               std::string("K19AV05\0........\1\x9A\x99\x99\x99\x99\x99\xB9\x3F\1", 26)},
     .words = {"K", "J96", "I", "2147483648", "1000000000"}});

}  // namespace
}  // namespace kv::fuzz
