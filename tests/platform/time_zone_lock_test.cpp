#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <chrono>
#include <future>
#include <limits>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/process.h"
#include "utils/platform/platform.h"

namespace {

using namespace std::chrono_literals;

constexpr char kMutexName[] = "kv_icu_mutex";
constexpr double kSummer = 2459762.5;  // 2 July 2022, 00:00 UTC
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kTwoHours = 0.08333333333333333;
constexpr auto kBlockedFor = 300ms;
constexpr auto kPatience = 20s;

double AskBerlin() { return getLocalUTCDeltaForTimezone("Europe/Berlin", kSummer); }
void ReleaseLibrary() { getLocalUTCDeltaForTimezone(nullptr, 0.0); }

// Starts and ends with the library's mutex closed.
class TimeZoneLock : public ::testing::Test {
 protected:
  TimeZoneLock() { ReleaseLibrary(); }
  ~TimeZoneLock() override { ReleaseLibrary(); }
};

class Handle {
 public:
  explicit Handle(HANDLE handle) : handle_(handle) {}
  ~Handle() {
    if (handle_ != nullptr) ::CloseHandle(handle_);
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  HANDLE Get() const { return handle_; }

 private:
  HANDLE handle_;
};

bool MutexExists() { return Handle(::OpenMutexA(SYNCHRONIZE, FALSE, kMutexName)).Get() != nullptr; }

// Whether a thread of its own can take the mutex at once; it gives it back.
bool MutexIsFree() {
  return std::async(std::launch::async,
                    [] {
                      const Handle mutex(::CreateMutexA(nullptr, FALSE, kMutexName));
                      const bool isFree = ::WaitForSingleObject(mutex.Get(), 0) == WAIT_OBJECT_0;
                      if (isFree) ::ReleaseMutex(mutex.Get());
                      return isFree;
                    })
      .get();
}

TEST_F(TimeZoneLock, KeepsTheMutexOpenAndFreeBetweenCalls) {
  EXPECT_FALSE(MutexExists());
  for (const char* zone : {"Europe/Berlin", "Europe/Berlin", "Asia/Tokyo", "Nowhere/Atlantis"}) {
    SCOPED_TRACE(zone);
    getLocalUTCDeltaForTimezone(zone, kSummer);
    EXPECT_TRUE(MutexExists());
    EXPECT_TRUE(MutexIsFree());
  }
}

TEST_F(TimeZoneLock, ReleaseClosesEveryHandle) {
  for (int i = 0; i < 10; ++i) AskBerlin();
  ReleaseLibrary();
  EXPECT_FALSE(MutexExists());
  EXPECT_EQ(AskBerlin(), kTwoHours);
  EXPECT_TRUE(MutexExists());
  ReleaseLibrary();
  EXPECT_FALSE(MutexExists());
}

TEST_F(TimeZoneLock, IsTakenForEveryNameAndDate) {
  const std::string longName(100, 'x');
  const struct {
    const char* zone;
    double julianDate;
  } rows[] = {
      {"", kSummer},           {nullptr, kSummer},          {nullptr, kNaN},
      {"Europe/Berlin", kNaN}, {longName.c_str(), kSummer},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.zone));
    ReleaseLibrary();
    EXPECT_FALSE(MutexExists());
    EXPECT_EQ(getLocalUTCDeltaForTimezone(row.zone, row.julianDate), 0.0);
    EXPECT_TRUE(MutexExists());
    EXPECT_TRUE(MutexIsFree());
  }
}

// Holds the mutex of the given name in the calling thread while it lives.
class HeldMutex {
 public:
  HeldMutex() : mutex_(::CreateMutexA(nullptr, FALSE, kMutexName)) {
    EXPECT_EQ(::WaitForSingleObject(mutex_.Get(), 10000), WAIT_OBJECT_0);
  }
  ~HeldMutex() { ::ReleaseMutex(mutex_.Get()); }
  HeldMutex(const HeldMutex&) = delete;
  HeldMutex& operator=(const HeldMutex&) = delete;

 private:
  Handle mutex_;
};

void CheckThatACallWaits() {
  std::future<double> answer;
  {
    const HeldMutex held;
    answer = std::async(std::launch::async, AskBerlin);
    EXPECT_EQ(answer.wait_for(kBlockedFor), std::future_status::timeout);
  }
  ASSERT_EQ(answer.wait_for(kPatience), std::future_status::ready);
  EXPECT_EQ(answer.get(), kTwoHours);
  EXPECT_TRUE(MutexIsFree());
}

TEST_F(TimeZoneLock, WaitsForAnotherOwner) {
  AskBerlin();
  CheckThatACallWaits();
}

TEST_F(TimeZoneLock, WaitsForAnotherOwnerAtTheFirstCall) { CheckThatACallWaits(); }

TEST_F(TimeZoneLock, TakesOverFromADeadThread) {
  AskBerlin();
  const Handle mutex(::CreateMutexA(nullptr, FALSE, kMutexName));
  std::thread([&mutex] { ::WaitForSingleObject(mutex.Get(), INFINITE); }).join();
  EXPECT_EQ(AskBerlin(), kTwoHours);
  EXPECT_TRUE(MutexIsFree());
}

// Runs in a second process: takes the mutex and dies with it.
TEST(TimeZoneLockChild, DISABLED_AbandonsTheMutex) {
  ::WaitForSingleObject(::CreateMutexA(nullptr, FALSE, kMutexName), INFINITE);
  ::TerminateProcess(::GetCurrentProcess(), 7);
}

TEST_F(TimeZoneLock, TakesOverFromADeadProcess) {
  AskBerlin();
  EXPECT_EQ(kv::test::RunOwnCase("TimeZoneLockChild.DISABLED_AbandonsTheMutex").exitCode, 7U);
  auto answer = std::async(std::launch::async, AskBerlin);
  ASSERT_EQ(answer.wait_for(kPatience), std::future_status::ready);
  EXPECT_EQ(answer.get(), kTwoHours);
  EXPECT_TRUE(MutexIsFree());
}

constexpr char kTakenEvent[] = "kvutils_test_mutex_taken";
constexpr char kGiveBackEvent[] = "kvutils_test_mutex_give_back";

// Runs in a second process: holds the mutex until it is told to give it back.
TEST(TimeZoneLockChild, DISABLED_HoldsTheMutex) {
  const Handle taken(::CreateEventA(nullptr, TRUE, FALSE, kTakenEvent));
  const Handle giveBack(::CreateEventA(nullptr, TRUE, FALSE, kGiveBackEvent));
  const HeldMutex held;
  ::SetEvent(taken.Get());
  EXPECT_EQ(::WaitForSingleObject(giveBack.Get(), 20000), WAIT_OBJECT_0);
}

TEST_F(TimeZoneLock, WaitsForAnotherProcess) {
  const Handle taken(::CreateEventA(nullptr, TRUE, FALSE, kTakenEvent));
  const Handle giveBack(::CreateEventA(nullptr, TRUE, FALSE, kGiveBackEvent));
  auto child = std::async(std::launch::async, kv::test::RunOwnCase,
                          "TimeZoneLockChild.DISABLED_HoldsTheMutex");
  ASSERT_EQ(::WaitForSingleObject(taken.Get(), 20000), WAIT_OBJECT_0);
  auto answer = std::async(std::launch::async, AskBerlin);
  EXPECT_EQ(answer.wait_for(kBlockedFor), std::future_status::timeout);
  ::SetEvent(giveBack.Get());
  ASSERT_EQ(answer.wait_for(kPatience), std::future_status::ready);
  EXPECT_EQ(answer.get(), kTwoHours);
  EXPECT_EQ(child.get().exitCode, 0U);
}

void CheckSeveralThreadsAtOnce() {
  struct Zone {
    const char* name;
    double days;
  };
  const Zone zones[] = {{"Europe/Berlin", 0.08333333333333333},
                        {"GMT+5", 0.20833333333333334},
                        {"Asia/Kathmandu", 0.23958333333333334},
                        {"Nowhere/Atlantis", 0.0}};
  std::atomic<int> wrong = 0;
  std::vector<std::thread> threads;
  for (std::size_t first = 0; first < 4; ++first) {
    threads.emplace_back([&zones, &wrong, first] {
      for (std::size_t i = 0; i < 500; ++i) {
        const Zone& zone = zones[(first + i / 3) % 4];
        if (getLocalUTCDeltaForTimezone(zone.name, kSummer) != zone.days) ++wrong;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
}

TEST_F(TimeZoneLock, ServesSeveralThreadsAtOnce) {
  CheckSeveralThreadsAtOnce();
  EXPECT_TRUE(MutexIsFree());
  ReleaseLibrary();
  EXPECT_FALSE(MutexExists());
}

TEST_F(TimeZoneLock, ServesThreadsWhenTheNameIsTakenByAnotherKindOfObject) {
  const Handle event(::CreateEventA(nullptr, TRUE, FALSE, kMutexName));
  EXPECT_EQ(AskBerlin(), kTwoHours);
  ReleaseLibrary();
  CheckSeveralThreadsAtOnce();
}

// Runs in a second process, which ends without the release call.
TEST(TimeZoneLockChild, DISABLED_EndsWithoutRelease) { EXPECT_EQ(AskBerlin(), kTwoHours); }

TEST_F(TimeZoneLock, AProcessMayEndWithoutRelease) {
  const auto child = kv::test::RunOwnCase("TimeZoneLockChild.DISABLED_EndsWithoutRelease");
  EXPECT_EQ(child.exitCode, 0U) << child.out << child.err;
}

}  // namespace
