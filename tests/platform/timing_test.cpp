#include <gtest/gtest.h>
#include <windows.h>

#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>
#include <new>
#include <thread>
#include <vector>

#include "tests/support/import_patch.h"
#include "utils/platform/platform.h"

namespace {

using kv::test::ImportPatch;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

static_assert(sizeof(WaitTime) == 16 && offsetof(WaitTime, duration) == 0 &&
              offsetof(WaitTime, start) == 8);
static_assert(sizeof(AnimationInterval) == 16 && offsetof(AnimationInterval, m_Begin) == 0 &&
              offsetof(AnimationInterval, m_End) == 8);

long long Counter() {
  LARGE_INTEGER reading;
  ::QueryPerformanceCounter(&reading);
  return reading.QuadPart;
}

double SecondsBetween(long long first, long long second) {
  LARGE_INTEGER frequency;
  ::QueryPerformanceFrequency(&frequency);
  return static_cast<double>(second - first) / static_cast<double>(frequency.QuadPart);
}

// Read when this program starts, which is after the library was loaded.
const long long counterAtStart = Counter();

constexpr double kRounding = 1e-6;  // seconds

// ---- The running clock -------------------------------------------------------------------------

TEST(Clock, StartsAtZeroWhenTheLibraryIsLoaded) {
  EXPECT_EQ(AnimationInterval::getCurrentTime(), 0.0);
  EXPECT_EQ(AnimationInterval::m_CurrentTime, 0.0);
  EXPECT_FALSE(std::signbit(AnimationInterval::m_CurrentTime));
}

TEST(Clock, CountsFromTheLoadingAndNotFromTheFirstCall) {
  ::Sleep(50);
  const double sinceStart = SecondsBetween(counterAtStart, Counter());
  EXPECT_GE(getPreciseTime(), sinceStart);
}

TEST(Clock, NeverDecreases) {
  double last = 0.0;
  for (int i = 0; i < 200000; ++i) {
    const double time = getPreciseTime();
    ASSERT_GE(time, last) << "at call " << i;
    last = time;
  }
  EXPECT_GT(last, 0.0);
}

TEST(Clock, CountsSeconds) {
  const long long before = Counter();
  const double first = getPreciseTime();
  const long long inside = Counter();
  ::Sleep(100);
  const long long stillInside = Counter();
  const double second = getPreciseTime();
  const long long after = Counter();
  EXPECT_GE(second - first, SecondsBetween(inside, stillInside) - kRounding);
  EXPECT_LE(second - first, SecondsBetween(before, after) + kRounding);
}

TEST(Clock, ServesSeveralThreadsAtOnce) {
  const double before = getPreciseTime();
  std::vector<double> lasts(4);
  std::vector<std::thread> threads;
  for (double& last : lasts) {
    threads.emplace_back([&last] {
      for (int i = 0; i < 10000; ++i) last = getPreciseTime();
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (const double last : lasts) {
    EXPECT_GE(last, before);
    EXPECT_LE(last, getPreciseTime());
  }
}

// ---- The clock with a counter of the case's own ------------------------------------------------

long long fakeReading = 0;
int counterReadings = 0;
int frequencyReadings = 0;

BOOL WINAPI GiveFakeReading(LARGE_INTEGER* reading) {
  ++counterReadings;
  reading->QuadPart = fakeReading;
  return TRUE;
}

BOOL WINAPI CountFrequencyReading(LARGE_INTEGER* frequency) {
  ++frequencyReadings;
  return ::QueryPerformanceFrequency(frequency);
}

// The library reads whatever `SetClock` says, in counts of which the system has ten million a
// second.
class FakeClock : public ::testing::Test {
 protected:
  FakeClock() {
    LARGE_INTEGER frequency;
    ::QueryPerformanceFrequency(&frequency);
    EXPECT_EQ(frequency.QuadPart, 10'000'000);
    fakeReading = 0;
    origin_ = -std::llround(getPreciseTime() * 1e7);
    SetClock(0);
    counterReadings = 0;
  }

  // So many counts after the clock's origin.
  void SetClock(long long counts) { fakeReading = origin_ + counts; }

 private:
  ImportPatch counter_{"QueryPerformanceCounter", &GiveFakeReading};
  ImportPatch frequency_{"QueryPerformanceFrequency", &CountFrequencyReading};
  long long origin_ = 0;
};

TEST_F(FakeClock, TurnsCountsIntoSeconds) {
  const struct {
    long long counts;
    double seconds;
  } rows[] = {
      {0, 0.0},
      {1, 1e-7},
      {10'000'000, 1.0},
      {36'000'000'000, 3600.0},
      {25'000'000, 2.5},
      {-10'000'000, -1.0},
      {864'000'000'000'000, 86'400'000.0},  // a thousand days
      {13, 1.2999999999999998e-06},         // times the factor; a division gives 1.3e-06
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.counts);
    SetClock(row.counts);
    EXPECT_EQ(getPreciseTime(), row.seconds);
  }
}

TEST_F(FakeClock, ReadsTheCounterOnceAndTheFrequencyNoMore) {
  getPreciseTime();
  EXPECT_EQ(counterReadings, 1);
  const WaitTime wait(1.0);
  EXPECT_EQ(counterReadings, 2);
  EXPECT_FALSE(wait.IsTimeOver());
  EXPECT_EQ(counterReadings, 3);
  AnimationInterval::updateTime();
  EXPECT_EQ(counterReadings, 4);
  AnimationInterval::getCurrentTime();
  EXPECT_EQ(counterReadings, 4);
  EXPECT_EQ(frequencyReadings, 0);
}

TEST_F(FakeClock, WaitIsOverWhenItsDurationHasPassed) {
  const struct {
    double duration;
    long long counts;
    bool isOver;
  } rows[] = {
      {0.5, 0, false},        {0.5, 4'999'999, false},
      {0.5, 5'000'000, true}, {0.5, 5'000'001, true},
      {0.0, 0, true},         {-0.0, 0, true},
      {-1.0, 0, true},        {-kInfinity, 0, true},
      {1e-7, 0, false},       {1e-7, 1, true},
      {60.0, 1, false},       {60.0, 600'000'000, true},
      {kInfinity, 0, false},  {kInfinity, 864'000'000'000'000, false},
      {kNaN, 0, false},       {kNaN, 864'000'000'000'000, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.duration << " after " << row.counts << " counts");
    SetClock(0);
    const WaitTime made(row.duration);
    WaitTime started(77.0);
    started.Start(row.duration);
    SetClock(row.counts);
    EXPECT_EQ(made.IsTimeOver(), row.isOver);
    EXPECT_EQ(started.IsTimeOver(), row.isOver);
  }
}

TEST_F(FakeClock, WaitCountsFromItsLastStart) {
  SetClock(10'000'000);
  WaitTime wait(3.0);
  EXPECT_DOUBLE_EQ(wait.duration, 3.0);
  EXPECT_DOUBLE_EQ(wait.start, 1.0);
  SetClock(50'000'000);
  EXPECT_TRUE(wait.IsTimeOver());
  wait.Start(2.0);
  EXPECT_DOUBLE_EQ(wait.duration, 2.0);
  EXPECT_DOUBLE_EQ(wait.start, 5.0);
  EXPECT_FALSE(wait.IsTimeOver());
  SetClock(69'000'000);
  EXPECT_FALSE(wait.IsTimeOver());
  SetClock(71'000'000);
  EXPECT_TRUE(wait.IsTimeOver());
}

TEST_F(FakeClock, WaitWithoutADurationReadsTheClockToo) {
  SetClock(20'000'000);
  EXPECT_EQ(WaitTime().start, 2.0);
  EXPECT_EQ(WaitTime().duration, -1.0);
}

TEST_F(FakeClock, CopiesOfAWaitShareItsTimes) {
  SetClock(20'000'000);
  const WaitTime wait(4.0);
  SetClock(50'000'000);
  const WaitTime copy = wait;
  WaitTime assigned;
  assigned = wait;
  for (const WaitTime& other : {copy, assigned}) {
    EXPECT_DOUBLE_EQ(other.duration, 4.0);
    EXPECT_DOUBLE_EQ(other.start, 2.0);
    EXPECT_FALSE(other.IsTimeOver());
  }
}

TEST_F(FakeClock, AnimationTimeStandsBetweenUpdates) {
  SetClock(30'000'000);
  AnimationInterval::updateTime();
  SetClock(70'000'000);
  EXPECT_DOUBLE_EQ(AnimationInterval::getCurrentTime(), 3.0);
  EXPECT_DOUBLE_EQ(AnimationInterval::getCurrentTime(), 3.0);
  EXPECT_DOUBLE_EQ(AnimationInterval::m_CurrentTime, 3.0);
  AnimationInterval::updateTime();
  EXPECT_DOUBLE_EQ(AnimationInterval::getCurrentTime(), 7.0);
}

// ---- Waits and animations on the real clock ----------------------------------------------------

TEST(Wait, IsOverAtOnceWithoutADuration) {
  const WaitTime wait;
  EXPECT_EQ(wait.duration, -1.0);
  EXPECT_TRUE(wait.IsTimeOver());
}

TEST(Wait, EndsInTime) {
  const long long before = Counter();
  const WaitTime wait(0.5);
  while (!wait.IsTimeOver()) ::Sleep(10);
  EXPECT_GE(SecondsBetween(before, Counter()), 0.5 - kRounding);
  EXPECT_TRUE(wait.IsTimeOver());
}

TEST(Wait, OfAnHourIsNotOver) {
  const WaitTime wait(3600.0);
  EXPECT_FALSE(wait.IsTimeOver());
}

TEST(Animation, BeginsWithBothFieldsZero) {
  alignas(AnimationInterval) std::byte memory[sizeof(AnimationInterval)];
  std::memset(memory, 0x5A, sizeof memory);
  const auto* const interval = new (memory) AnimationInterval;
  EXPECT_EQ(interval->m_Begin, 0);
  EXPECT_EQ(interval->m_End, 0);
}

TEST(Animation, CopiesBothFields) {
  AnimationInterval interval;
  interval.m_Begin = 0x123456789ABCDEF0;
  interval.m_End = -2;
  const AnimationInterval copy = interval;
  AnimationInterval assigned;
  assigned = interval;
  for (const AnimationInterval& other : {copy, assigned}) {
    EXPECT_EQ(other.m_Begin, 0x123456789ABCDEF0);
    EXPECT_EQ(other.m_End, -2);
  }
}

// ---- Sleeping ----------------------------------------------------------------------------------

std::vector<DWORD> sleeps;

void WINAPI NoteSleep(DWORD milliseconds) { sleeps.push_back(milliseconds); }

TEST(Sleep, IsCutToWholeMilliseconds) {
  const struct {
    double microseconds;
    DWORD milliseconds;
  } rows[] = {
      {0.0, 0},
      {-0.0, 0},
      {1.0, 0},
      {999.0, 0},
      {999.999, 0},
      {1000.0, 1},
      {1999.999, 1},
      {2000.0, 2},
      {2500.0, 2},
      {1e6, 1000},
      {2147483648000.0, 2147483648},
      {4294967293000.0, 4294967293},
      {4294967293999.0, 4294967293},
      {4294967294000.0, 4294967294},
      // Longer than the longest sleep.
      {4294967294999.0, 4294967294},
      {4294967295000.0, 4294967294},
      {4294967296000.0, 4294967294},
      {4294967297000.0, 4294967294},
      {1e300, 4294967294},
      {kInfinity, 4294967294},
      // No time at all.
      {-1.0, 0},
      {-1000.0, 0},
      {-2500.0, 0},
      {-4294967296000.0, 0},
      {-1e300, 0},
      {-kInfinity, 0},
      {kNaN, 0},
      {5e-324, 0},
  };
  const ImportPatch patch("Sleep", &NoteSleep);
  for (const auto& row : rows) {
    SCOPED_TRACE(row.microseconds);
    sleeps.clear();
    usleep(row.microseconds);
    EXPECT_EQ(sleeps, std::vector<DWORD>{row.milliseconds});
  }
}

TEST(Sleep, TakesItsTime) {
  const long long before = Counter();
  usleep(200'000.0);
  // The system may wake a sleeper up to a tick of its own clock early.
  EXPECT_GE(SecondsBetween(before, Counter()), 0.18);
}

}  // namespace
