// The natural order of names beside its defining form, and as an order.
#include <climits>
#include <cstdio>
#include <string>

#include "tests/fuzz/support/guarded_copy.h"
#include "tests/fuzz/support/target.h"
#include "tests/reference/natural_order.h"
#include "utils/text/text.h"

namespace kv::fuzz {
namespace {

int Compare(const GuardedText& a, const GuardedText& b) {
  const int result = CompareStringWithNumber(a.Get(), b.Get());
  Expect("order", result, reference::CompareNatural(a.Get(), b.Get()));
  return result;
}

int Sign(int number) { return (number > 0 ? 1 : 0) - (number < 0 ? 1 : 0); }

// The number that a name without its parentheses begins with; a number beyond int is the nearest.
bool ReadNumber(const std::string& name, long long& number) {
  std::string text;
  for (const char c : name) {
    if (c != '(' && c != ')') text += c;
  }
  int count = 0;
  char digits[2] = "";
  if (std::sscanf(text.c_str(), "%lld%n%1[0-9]", &number, &count, digits) < 1) return false;
  if (number > INT_MAX) number = INT_MAX;
  if (number < INT_MIN) number = INT_MIN;
  return true;
}

void CheckSort(const std::string& a, const std::string& b) {
  long long numberOfA = 0;
  long long numberOfB = 0;
  int expected = 0;
  if (ReadNumber(a, numberOfA) && ReadNumber(b, numberOfB)) {
    expected = numberOfA > numberOfB ? 1 : numberOfA < numberOfB ? -1 : 0;
  }
  const GuardedText guardedA(a);
  const GuardedText guardedB(b);
  Expect("order by number", SortAsterNameWithNumber(guardedA.Get(), guardedB.Get()), expected);
}

void Check(Input input) {
  const std::string textOfA = input.Text();
  const std::string textOfB = input.Text();
  const GuardedText a(textOfA);
  const GuardedText b(textOfB);
  const int result = Compare(a, b);
  const int reversed = Compare(b, a);
  if (result != INT_MIN && reversed != INT_MIN) Expect("reversed", reversed, -result);
  Expect("against itself", Sign(Compare(a, a)), 0);
  CheckSort(textOfA, textOfB);
}

const Registration kTarget(
    {.name = "natural_order",
     .check = Check,
     .seeds = {std::string("M 31\0m 4", 8), std::string("Item9\0Item10", 12),
               std::string("x2y\0x02y", 8), std::string("(10) Hygiea\0(9) Metis", 21),
               std::string("NGC 99999999999\0ngc 99999999998", 31),
               std::string("C/2020 F3 (NEOWISE)\0C/1995 O1 (Hale-Bopp)", 41)},
     .words = {"2147483647", "2147483648", "4294967296", "(", ")", "007"}});

}  // namespace
}  // namespace kv::fuzz
