#include <zelvan/osh/system_services.h>

#include <cstdlib>
#include <ctime>

#include <gtest/gtest.h>
#include <support/guarded_array.h>

TEST(QsortCompareStrings, ComparesBytesWithoutSign) {
  const char* const ascending[] = {"", "B", "a", "aa", "b", "\x80"};
  for (const auto& first : ascending) {
    for (const auto& second : ascending) {
      EXPECT_EQ(osh_qsort_compare_strings(&first, &second), (&first > &second) - (&first < &second))
          << first << " and " << second;
    }
  }
}

TEST(GetTimeStamp, IsTheLocalTimeInTwoDigitsEach) {
  support::GuardedArray<char> stamp(14);
  char expected[14];
  std::time_t second;
  do {
    second = std::time(nullptr);
    EXPECT_EQ(osh_get_time_stamp(stamp.data()), 13);
  } while (second != std::time(nullptr));
  std::strftime(expected, sizeof expected, "%y%m%d.%H%M%S", std::localtime(&second));
  EXPECT_STREQ(stamp.data(), expected);
}

TEST(Gethostname, WritesLocalhostCutToTheSize) {
  char name[] = "#####";
  EXPECT_EQ(osh_gethostname(name, 3), 0);
  EXPECT_STREQ(name, "loc##") << "no terminator";
}

TEST(Setenv, SplitsAtTheFirstEqualsSign) {
  const auto expect = [](const char* name, const char* value, int result, const char* after,
                         const char* why) {
    EXPECT_EQ(osh_setenv(const_cast<char*>(name), const_cast<char*>(value)), result) << why;
    EXPECT_STREQ(std::getenv("ZELVAN"), after) << why;
  };
  expect("ZELVAN", "a=b", 0, "a=b", "an equals sign in the value");
  expect(nullptr, "x", -1, "a=b", "no name");
  expect("=ZELVAN", "x", -1, "a=b", "a name that begins with an equals sign");
  expect("ZELVAN=c", "d", 0, "c=d", "a name that ends at an equals sign");
  expect("ZELVAN", nullptr, 0, "", "no value counts as empty");
}
