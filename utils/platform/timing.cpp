#include "utils/platform/platform.h"

#include "utils/internal/win32.h"

namespace {

// The clock's origin, a reading of the performance counter, and the seconds that one count takes.
// An origin of 0 is a clock that has not been started. Constant-initialised, so that they are there
// before the first reading, which is the initialisation of AnimationInterval::m_CurrentTime.
constinit long long clockOrigin = 0;
constinit double secondsPerCount = 0.0;

void StartClock(long long reading) {
  LARGE_INTEGER frequency;
  ::QueryPerformanceFrequency(&frequency);
  clockOrigin = reading;
  secondsPerCount = 1.0 / static_cast<double>(frequency.QuadPart);
}

// The argument of ::Sleep for a time of so many milliseconds, cut to whole ones. What is negative
// or no number does not sleep; the longest sleep is one less than INFINITE, which would never end.
DWORD SleepArgument(double milliseconds) {
  constexpr DWORD longest = INFINITE - 1;
  if (!(milliseconds > 0.0)) return 0;
  return milliseconds < longest ? static_cast<DWORD>(milliseconds) : longest;
}

}  // namespace

// Starts the clock when the library is loaded, before any other thread can call in.
double AnimationInterval::m_CurrentTime = getPreciseTime();

double getPreciseTime() {
  LARGE_INTEGER reading;
  ::QueryPerformanceCounter(&reading);
  if (clockOrigin == 0) StartClock(reading.QuadPart);
  return static_cast<double>(reading.QuadPart - clockOrigin) * secondsPerCount;
}

WaitTime::WaitTime(double seconds) : duration(seconds), start(getPreciseTime()) {}

void WaitTime::Start(double seconds) { *this = WaitTime(seconds); }

bool WaitTime::IsTimeOver() const { return getPreciseTime() - start >= duration; }

AnimationInterval::AnimationInterval() : m_Begin(0), m_End(0) {}

void AnimationInterval::updateTime() { m_CurrentTime = getPreciseTime(); }

double AnimationInterval::getCurrentTime() { return m_CurrentTime; }

// Callers rely on less than 1000 microseconds being a bare yield of the time slice.
void usleep(double microseconds) { ::Sleep(SleepArgument(microseconds / 1000.0)); }
