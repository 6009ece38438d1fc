#include "utils/platform/platform.h"

#include "utils/internal/icu_setup.h"
#include "utils/internal/icu_zone.h"
#include "utils/internal/win32.h"

#include <unicode/timezone.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace {

using kv::internal::kEarliestInstant;
using kv::internal::kLatestInstant;
using kv::internal::MakeZone;
using kv::internal::OffsetAt;
using kv::internal::UniqueKernelHandle;

constexpr char kMutexName[] = "kv_icu_mutex";

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
  return OffsetAt(*zone, inRange);
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
  const std::int32_t offset =
      OffsetOfName(zoneName == nullptr ? "" : zoneName, kv::internal::InstantOf(julianDate));
  return offset * kv::internal::kDaysPerMillisecond;
}
