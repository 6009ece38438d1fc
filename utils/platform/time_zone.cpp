#include "utils/platform/platform.h"

#include "utils/internal/icu_setup.h"
#include "utils/internal/win32.h"

#include <unicode/timezone.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <string_view>

namespace {

using kv::internal::UniqueKernelHandle;

constexpr char kMutexName[] = "kv_icu_mutex";
constexpr double kUnixEpoch = 2440587.5;  // 1970-01-01 00:00 UTC as a Julian Date
constexpr double kMillisecondsPerDay = 86400000.0;
constexpr double kDaysPerMillisecond = 1.1574074074074074e-08;
// The range of ICU's calendar, in milliseconds since 1970. Beyond it the day count of ICU's rules
// does not fit the integers that they are computed in.
constexpr double kEarliestInstant = -184303902528000000.0;
constexpr double kLatestInstant = 183882168921600000.0;
constexpr std::size_t kLongestName = std::numeric_limits<std::int32_t>::max();  // ICU's own limit

// Process-wide state, held by the mutex. Nothing destroys it when the library is unloaded, because
// ICU may be gone by then: the release call does.
std::atomic<HANDLE> zoneMutex = nullptr;
icu::TimeZone* cachedZone = nullptr;
char cachedName[64] = "";

// Holds the named mutex. The first lock of the process makes it; a mutex that another process has
// made already is waited for like one that this process has open.
class ZoneLock {
 public:
  ZoneLock() : mutex_(zoneMutex.load()) {
    if (mutex_ == nullptr) Open();
    if (!isHeld_) Wait();
  }
  ~ZoneLock() {
    if (isHeld_) ::ReleaseMutex(mutex_);
  }
  ZoneLock(const ZoneLock&) = delete;
  ZoneLock& operator=(const ZoneLock&) = delete;

 private:
  void Open() {
    UniqueKernelHandle made(::CreateMutexA(nullptr, TRUE, kMutexName));
    isHeld_ = made && ::GetLastError() != ERROR_ALREADY_EXISTS;
    if (!made) made.Reset(::CreateMutexA(nullptr, FALSE, nullptr));
    // When two threads open the mutex at once, one handle is kept. Both are handles of the same
    // mutex, so the thread that owns it can release it through the other's handle.
    HANDLE kept = nullptr;
    mutex_ = zoneMutex.compare_exchange_strong(kept, made.Get()) ? made.Release() : kept;
  }

  // A mutex that its owner abandoned is held like any other.
  void Wait() {
    const DWORD result = ::WaitForSingleObject(mutex_, INFINITE);
    isHeld_ = result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
  }

  HANDLE mutex_;
  bool isHeld_ = false;
};

// ICU's unknown zone, whose offset is 0, for a name that it does not know, and so for an empty one.
// None where memory was short.
std::unique_ptr<icu::TimeZone> MakeZone(std::string_view name) {
  const auto length = static_cast<std::int32_t>(std::min(name.size(), kLongestName));
  const icu::StringPiece piece(name.data(), length);
  const kv::internal::IcuReserve reserve;
  std::unique_ptr<icu::TimeZone> zone(
      icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(piece)));
  if (reserve.IsNeeded()) zone.reset();
  return zone;
}

void DropCachedZone() {
  delete cachedZone;
  cachedZone = nullptr;
  cachedName[0] = '\0';
}

// The zone of this name, which fits the cache; null when it cannot be made.
const icu::TimeZone* CachedZone(std::string_view name) {
  if (cachedZone == nullptr || name != cachedName) {
    DropCachedZone();
    cachedZone = MakeZone(name).release();
    if (cachedZone != nullptr) cachedName[name.copy(cachedName, sizeof cachedName - 1)] = '\0';
  }
  return cachedZone;
}

// Local time minus UTC in milliseconds; 0 for a zone that could not be made and for an instant that
// is not a number.
std::int32_t Offset(const icu::TimeZone* zone, UDate instant) {
  if (zone == nullptr || std::isnan(instant)) return 0;
  const UDate inRange = std::clamp(instant, kEarliestInstant, kLatestInstant);
  std::int32_t rawOffset = 0;
  std::int32_t daylightOffset = 0;
  UErrorCode status = U_ZERO_ERROR;
  zone->getOffset(inRange, false, rawOffset, daylightOffset, status);
  return rawOffset + daylightOffset;
}

std::int32_t OffsetOfName(std::string_view name, UDate instant) {
  kv::internal::SetUpIcu();
  const ZoneLock lock;
  if (name.size() < sizeof cachedName) return Offset(CachedZone(name), instant);
  return Offset(MakeZone(name).get(), instant);
}

// Takes no lock: at this call no other thread uses the zone.
void Release() {
  DropCachedZone();
  const UniqueKernelHandle closed(zoneMutex.exchange(nullptr));
}

}  // namespace

double getLocalUTCDeltaForTimezone(const char* zoneName, double julianDate) {
  if (zoneName == nullptr && julianDate == 0.0) {
    Release();
    return 0.0;
  }
  const UDate instant = (julianDate - kUnixEpoch) * kMillisecondsPerDay;
  return OffsetOfName(zoneName == nullptr ? "" : zoneName, instant) * kDaysPerMillisecond;
}
