#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <string>

#include "utils/astro/astro.h"

namespace {

struct DateCase {
  const char* packed;
  short year;
  short month;
  double day;
};

template <std::size_t size>
void CheckDates(const DateCase (&cases)[size]) {
  for (const DateCase& row : cases) {
    SCOPED_TRACE(row.packed);
    short year = 99;
    short month = 99;
    double day = 99.0;
    EXPECT_TRUE(UnpackDate(&year, &month, &day, row.packed));
    EXPECT_EQ(year, row.year);
    EXPECT_EQ(month, row.month);
    EXPECT_EQ(day, row.day);
  }
}

void CheckRefused(const char* packed) {
  SCOPED_TRACE(packed);
  short year = 99;
  short month = 98;
  double day = 97.0;
  EXPECT_FALSE(UnpackDate(&year, &month, &day, packed));
  EXPECT_EQ(year, 99);
  EXPECT_EQ(month, 98);
  EXPECT_EQ(day, 97.0);
}

TEST(PackedDate, UnpacksCenturyYearMonthAndDay) {
  const DateCase cases[] = {
      {"K194R", 2019, 4, 27.0},  {"J9611", 1996, 1, 1.0},   {"I0111", 1801, 1, 1.0},
      {"I0014", 1800, 1, 4.0},   {"K00CV", 2000, 12, 31.0}, {"J99A1", 1999, 10, 1.0},
      {"K99BU", 2099, 11, 30.0},
  };
  CheckDates(cases);
}

TEST(PackedDate, TakesMonthZeroAsItStands) {
  const DateCase cases[] = {{"I0101", 1801, 0, 1.0}, {"K1900", 2019, 0, 0.0}};
  CheckDates(cases);
}

TEST(PackedDate, ChecksNeitherMonthNorDay) {
  const DateCase cases[] = {
      {"K19aR", 2019, 42, 27.0},          {"K194z", 2019, 4, 67.0}, {"K19ZZ", 2019, 35, 35.0},
      {"K19 !", 2019, -23, -22.0},        {"K19:@", 2019, 3, 9.0},  {"K19//", 2019, -8, -8.0},
      {"K19\xFF\x80", 2019, -56, -183.0},
  };
  CheckDates(cases);
}

TEST(PackedDate, ReadsTheYearAsScanfDoes) {
  const DateCase cases[] = {
      {"K 54R", 2005, 4, 27.0}, {"K\t54R", 2005, 4, 27.0}, {"K+54R", 2005, 4, 27.0},
      {"K-54R", 1995, 4, 27.0}, {"K5x4R", 2005, 4, 27.0},  {"K5-4R", 2005, 4, 27.0},
      {"K054R", 2005, 4, 27.0}, {"J-14R", 1899, 4, 27.0},
  };
  CheckDates(cases);
}

TEST(PackedDate, AddsTheFraction) {
  const DateCase cases[] = {
      {"K194R25", 2019, 4, 27.25},
      {"K194R5", 2019, 4, 27.5},
      {"K194R2", 2019, 4, 27.2},
      {"K194R99", 2019, 4, 27.99},
      {"K194R125", 2019, 4, 27.125},
      {"K194R101", 2019, 4, 27.101},
      {"K194R0", 2019, 4, 27.0},
      {"K194R+25", 2019, 4, 27.25},
      {"K194R \n\t\v\f\r25", 2019, 4, 27.25},
      {"K194R25 trailing", 2019, 4, 27.25},
      {"K194R25.9", 2019, 4, 27.25},
      {"K194Rx25", 2019, 4, 27.0},
      {"K194R+", 2019, 4, 27.0},
      {"K194R- 5", 2019, 4, 27.0},
      {"K194R+-5", 2019, 4, 27.0},
      {"K194R ", 2019, 4, 27.0},
      {"K194R\xA0"
       "5",
       2019, 4, 27.0},
  };
  CheckDates(cases);
}

TEST(PackedDate, LosesLeadingZerosOfTheFraction) {
  const DateCase cases[] = {{"K194R05", 2019, 4, 27.5}, {"K194R0025", 2019, 4, 27.25}};
  CheckDates(cases);
}

TEST(PackedDate, TakesPowersOfTenAsAWholeDay) {
  const DateCase cases[] = {
      {"K194R1", 2019, 4, 28.0},
      {"K194R01", 2019, 4, 28.0},
      {"K194R10", 2019, 4, 28.0},
      {"K194R1000000000", 2019, 4, 28.0},
  };
  CheckDates(cases);
}

TEST(PackedDate, AddsANegativeFractionUnscaled) {
  const DateCase cases[] = {{"K194R-3", 2019, 4, 24.0}, {"K194R-25", 2019, 4, 2.0}};
  CheckDates(cases);
}

TEST(PackedDate, TakesAFractionBeyondIntAsTheNearestInt) {
  const DateCase cases[] = {
      {"K1941"
       "1000000001",
       2019, 4, 1.1000000001},
      {"K1941"
       "2147483647",
       2019, 4, 1.2147483647},
      {"K1941"
       "2147483648",
       2019, 4, 1.2147483647},
      {"K1941"
       "99999999999999999999999999999999999999",
       2019, 4, 1.2147483647},
      {"K1941"
       "-2147483647",
       2019, 4, -2147483646.0},
      {"K1941"
       "-2147483648",
       2019, 4, -2147483647.0},
      {"K1941"
       "-99999999999999999999999999999999999999",
       2019, 4, -2147483647.0},
  };
  CheckDates(cases);
}

TEST(PackedDate, RejectsUnknownCenturyLetter) {
  for (const char* packed :
       {"L0101", "H0101", "k194R", "j9611", "0194R", " K194R", "\xCBK194R", ""}) {
    CheckRefused(packed);
  }
}

TEST(PackedDate, RejectsUnreadableYearDigits) {
  for (const char* packed :
       {"KxxAB", "K  4R", "K+ 4R", "K-x4R", "K--4R", "K", "Kx", "K+", "K ", "K.54R", "KA94R"}) {
    CheckRefused(packed);
  }
}

TEST(PackedDate, CountsMissingCharactersAsTheTerminator) {
  const DateCase cases[] = {
      {"K194", 2019, 4, -55.0},
      {"K19", 2019, -55, -55.0},
      {"K1", 2001, -55, -55.0},
  };
  CheckDates(cases);
}

// A page that ends where the next one must not be touched.
class GuardedPage {
 public:
  GuardedPage() {
    base_ = static_cast<char*>(
        ::VirtualAlloc(nullptr, 2 * kPageSize, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
    DWORD oldProtection = 0;
    ::VirtualProtect(base_ + kPageSize, kPageSize, PAGE_NOACCESS, &oldProtection);
  }
  ~GuardedPage() { ::VirtualFree(base_, 0, MEM_RELEASE); }
  GuardedPage(const GuardedPage&) = delete;
  GuardedPage& operator=(const GuardedPage&) = delete;

  // Puts the text with its terminator at the very end of the page.
  const char* Put(const std::string& text) {
    char* place = base_ + kPageSize - text.size() - 1;
    std::memcpy(place, text.c_str(), text.size() + 1);
    return place;
  }

 private:
  static constexpr std::size_t kPageSize = 4096;
  char* base_;
};

TEST(PackedDate, NeverReadsBehindTheTerminator) {
  GuardedPage page;
  const std::string packed = "K194R25";
  for (std::size_t length = 0; length <= packed.size(); ++length) {
    SCOPED_TRACE(length);
    short year = 99;
    short month = 99;
    double day = 99.0;
    EXPECT_EQ(UnpackDate(&year, &month, &day, page.Put(packed.substr(0, length))), length >= 2);
  }
}

}  // namespace
