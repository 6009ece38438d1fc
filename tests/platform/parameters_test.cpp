#include <gtest/gtest.h>

#include <climits>
#include <future>
#include <string>
#include <vector>

#include "utils/platform/platform.h"

namespace {

constexpr int kUntouched = 0x5EA1ED;

// The value of a parameter, or kUntouched with the result false.
int Get(IntParametersSender& parameters, const char* name) {
  int value = kUntouched;
  const bool isFound = parameters.GetParamByName(&value, name);
  EXPECT_EQ(isFound, value != kUntouched);
  return value;
}

TEST(Parameters, KeepTheLastValueOfEachName) {
  struct Case {
    const char* name;
    int value;
  };
  IntParametersSender parameters;
  for (const Case& row : {Case{"x", 5},
                          {"x", 7},
                          {"X", 1},
                          {"x", -7},
                          {"xy", 2},
                          {"", 3},
                          {"x ", 4},
                          {"a.name with blanks:and\\signs", 0},
                          {"каталог", INT_MIN},
                          {"\xFF\x80", INT_MAX},
                          {"x", -1}}) {
    SCOPED_TRACE(row.name);
    parameters.SetParamByName(row.value, row.name);
    EXPECT_EQ(Get(parameters, row.name), row.value);
  }
  EXPECT_EQ(Get(parameters, "x"), -1);
  EXPECT_EQ(Get(parameters, "X"), 1);
  EXPECT_EQ(Get(parameters, "xy"), 2);
  EXPECT_EQ(Get(parameters, ""), 3);
  EXPECT_EQ(Get(parameters, "x "), 4);
  EXPECT_EQ(Get(parameters, "каталог"), INT_MIN);
  EXPECT_EQ(Get(parameters, "\xFF\x80"), INT_MAX);
}

TEST(Parameters, LeaveTheOutputUntouchedForUnknownNames) {
  IntParametersSender parameters;
  EXPECT_EQ(Get(parameters, "name"), kUntouched);
  EXPECT_EQ(Get(parameters, ""), kUntouched);
  parameters.SetParamByName(1, "name");
  for (const char* name : {"", "nam", "names", "Name", "name ", "\xFF"}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(Get(parameters, name), kUntouched);
  }
}

TEST(Parameters, TakeNullForAnEmptyName) {
  IntParametersSender parameters;
  EXPECT_EQ(Get(parameters, nullptr), kUntouched);
  parameters.SetParamByName(1, nullptr);
  EXPECT_EQ(Get(parameters, ""), 1);
  parameters.SetParamByName(2, "");
  EXPECT_EQ(Get(parameters, nullptr), 2);
}

TEST(Parameters, GiveFalseWithoutAnOutput) {
  IntParametersSender parameters;
  parameters.SetParamByName(1, "name");
  EXPECT_FALSE(parameters.GetParamByName(nullptr, "name"));
  EXPECT_FALSE(parameters.GetParamByName(nullptr, "other"));
  EXPECT_FALSE(parameters.GetParamByName(nullptr, nullptr));
  EXPECT_EQ(Get(parameters, "name"), 1);
}

TEST(Parameters, KeepNamesOfAnyLengthAndNumber) {
  IntParametersSender parameters;
  const std::string longName(100'000, 'n');
  for (int i = 0; i < 100; ++i)
    parameters.SetParamByName(i, (longName + std::to_string(i)).c_str());
  for (int i = 0; i < 100; ++i) {
    EXPECT_EQ(Get(parameters, (longName + std::to_string(i)).c_str()), i);
  }
  EXPECT_EQ(Get(parameters, longName.c_str()), kUntouched);
}

TEST(Parameters, CopyTheName) {
  IntParametersSender parameters;
  char name[] = "name";
  parameters.SetParamByName(1, name);
  name[0] = 'f';
  EXPECT_EQ(Get(parameters, "name"), 1);
  EXPECT_EQ(Get(parameters, "fame"), kUntouched);
}

TEST(Parameters, AreCopiedAsValues) {
  IntParametersSender first;
  first.SetParamByName(1, "name");
  IntParametersSender second(first);
  IntParametersSender third;
  third.SetParamByName(3, "other");
  third = first;
  first.SetParamByName(2, "name");
  EXPECT_EQ(Get(first, "name"), 2);
  EXPECT_EQ(Get(second, "name"), 1);
  EXPECT_EQ(Get(third, "name"), 1);
  EXPECT_EQ(Get(third, "other"), kUntouched);
}

TEST(Parameters, OfTheProcessAreOneSet) {
  IntParametersSender& parameters = GetParametersSender();
  EXPECT_EQ(Get(parameters, "name"), kUntouched);
  parameters.SetParamByName(1, "name");
  EXPECT_EQ(&GetParametersSender(), &parameters);
  EXPECT_EQ(Get(GetParametersSender(), "name"), 1);

  IntParametersSender own;
  EXPECT_EQ(Get(own, "name"), kUntouched);
}

TEST(Parameters, OfTheProcessAreMadeOnceByAnyThread) {
  std::promise<void> begin;
  const std::shared_future<void> begun(begin.get_future());
  std::vector<std::future<IntParametersSender*>> threads;
  for (int i = 0; i < 8; ++i) {
    threads.push_back(std::async(std::launch::async, [begun] {
      begun.wait();
      return &GetParametersSender();
    }));
  }
  begin.set_value();
  for (auto& thread : threads) EXPECT_EQ(thread.get(), &GetParametersSender());
}

}  // namespace
