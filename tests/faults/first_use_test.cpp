// ICU sets itself up when it is first used. That may be when memory is exhausted: each case is a
// process of its own in which nothing has used ICU before.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "tests/faults/allocations.h"
#include "tests/support/process.h"
#include "utils/extra/time_zones.h"
#include "utils/platform/platform.h"
#include "utils/text/text.h"

namespace {

using kv::test::FailurePlan;
using kv::test::FaultyAllocations;
using kv::test::Lasting;

constexpr char kFirstToFail[] = "KVUTILS_FIRST_TO_FAIL";
constexpr char kLasting[] = "KVUTILS_LASTING";
constexpr double kHour = 1.0 / 24;
constexpr double kWinter = 2459580.5;

struct Question {
  const char* name;
  void (*expectAnswer)();
  void (*ask)();  // the answer may be any
};

void AskForZones() {
  for (const char* zone : {"Europe/Berlin", "GMT+5", "Nowhere/Atlantis"}) {
    getLocalUTCDeltaForTimezone(zone, kWinter);
    kv::IsKnownZone(zone);
    kv::NextTransition(zone, kWinter);
    kv::UtcFromLocal(zone, kWinter);
  }
  kv::TimeZoneDataVersion();
}
void ExpectZoneRules() {
  EXPECT_FALSE(kv::IsKnownZone("Nowhere/Atlantis"));
  EXPECT_TRUE(kv::IsKnownZone("GMT+5"));
  const auto change = kv::NextTransition("Europe/Berlin", kWinter);
  ASSERT_TRUE(change);
  EXPECT_NEAR(change->julianDate, 2459665.5 + kHour, 1e-9);
  const auto utc = kv::UtcFromLocal("Europe/Berlin", kWinter);
  ASSERT_TRUE(utc);
  EXPECT_NEAR(utc->earlier, kWinter - kHour, 1e-9);
  EXPECT_EQ(kv::TimeZoneDataVersion().size(), 5U);
}
void ExpectZones() {
  ExpectZoneRules();
  for (int i = 0; i < 2; ++i) {
    EXPECT_NEAR(getLocalUTCDeltaForTimezone("Europe/Berlin", kWinter), kHour, 1e-12);
    EXPECT_NEAR(getLocalUTCDeltaForTimezone("GMT+5", kWinter), 5 * kHour, 1e-12);
    EXPECT_EQ(getLocalUTCDeltaForTimezone("Nowhere/Atlantis", kWinter), 0.0);
  }
}

void AskForCapitals() {
  try {
    ConvertToUpperCase(nullptr,
                       "stra\xC3\x9F"
                       "e");
  } catch (const std::bad_alloc&) {
  }
}
void ExpectCapitals() {
  char upper[16] = "";
  EXPECT_EQ(ConvertToUpperCase(upper,
                               "stra\xC3\x9F"
                               "e"),
            7);
  EXPECT_STREQ(upper, "STRASSE");
}

// In the second process: some allocations of the first use fail, and those after it do not.
void AskWhileMemoryIsShort(void (*ask)()) {
  const FaultyAllocations allocations;
  FailurePlan& plan = FaultyAllocations::Plan();
  const bool isOnce = *std::getenv(kLasting) == '1';
  plan.Start(std::atoi(std::getenv(kFirstToFail)), isOnce ? Lasting::kOnce : Lasting::kFromThenOn);
  ask();
  const bool hasFailed = plan.HasFailed();
  plan.Stop();
  ExpectZones();
  ExpectCapitals();
  if (!hasFailed) GTEST_SKIP() << "nothing failed";
}

TEST(FirstUseChild, DISABLED_OfZones) { AskWhileMemoryIsShort(AskForZones); }

TEST(FirstUseChild, DISABLED_OfCapitals) { AskWhileMemoryIsShort(AskForCapitals); }

// What is made of a reserve goes back to it.
TEST(ShortMemory, LeavesLaterZonesAlone) {
  const FaultyAllocations allocations;
  FailurePlan& plan = FaultyAllocations::Plan();
  ExpectZones();
  for (int n = 1; n <= 50; ++n) {
    for (const Lasting lasting : {Lasting::kOnce, Lasting::kFromThenOn}) {
      for (int i = 0; i < 10; ++i) {
        plan.Start(n, lasting);
        AskForZones();
        plan.Stop();
      }
      ExpectZones();
    }
  }
}

// Other questions about zones leave the zone of the last one in place: it needs no memory.
TEST(ShortMemory, FindsTheKeptZoneBehindQuestionsAboutItsRules) {
  const FaultyAllocations allocations;
  FailurePlan& plan = FaultyAllocations::Plan();
  EXPECT_NEAR(getLocalUTCDeltaForTimezone("Europe/Berlin", kWinter), kHour, 1e-12);
  kv::IsKnownZone("Asia/Tokyo");
  kv::NextTransition("America/New_York", kWinter);
  kv::UtcFromLocal("GMT+5", kWinter);
  plan.Start(1, Lasting::kFromThenOn);
  const double offset = getLocalUTCDeltaForTimezone("Europe/Berlin", kWinter);
  const bool hasFailed = plan.HasFailed();
  plan.Stop();
  EXPECT_NEAR(offset, kHour, 1e-12);
  EXPECT_FALSE(hasFailed);
}

// Runs the second process for some allocations, or for each if it is asked for, until there is none
// left to fail.
void FailInTurn(const std::string& child, bool isOnce) {
  const bool isEach = std::getenv("KVUTILS_EACH_ALLOCATION") != nullptr;
  kv::test::SetEnvironment(kLasting, isOnce ? "1" : "0");
  for (int n = 1;; n = isEach ? n + 1 : 3 * n) {
    SCOPED_TRACE(child + ": allocation " + std::to_string(n) + " fails" +
                 (isOnce ? "" : " and later ones"));
    kv::test::SetEnvironment(kFirstToFail, std::to_string(n));
    const auto result = kv::test::RunOwnCase("FirstUseChild.DISABLED_" + child);
    ASSERT_EQ(result.exitCode, 0U) << result.out;
    if (result.out.find("nothing failed") != std::string::npos) {
      EXPECT_GT(n, 1) << "no allocation was made to fail";
      return;
    }
  }
}

TEST(FirstUse, OfZonesLeavesNothingBehindWhereMemoryIsShort) {
  FailInTurn("OfZones", true);
  FailInTurn("OfZones", false);
}

TEST(FirstUse, OfCapitalsLeavesNothingBehindWhereMemoryIsShort) {
  FailInTurn("OfCapitals", true);
  FailInTurn("OfCapitals", false);
}

}  // namespace
