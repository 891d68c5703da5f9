#include <zelvan/platform/clock.h>
#include <zelvan/platform/comparison.h>
#include <zelvan/platform/drives.h>
#include <zelvan/platform/locale.h>

#include "support/system.h"

#include <chrono>

#include <gtest/gtest.h>

namespace {

using namespace zelvan::platform;
using zelvan::platform::_stricmp, zelvan::platform::_strnicmp;  // not the runtime's

// Every pair of bytes, between others that differ in case.
TEST(Comparison, IgnoresTheCaseOfAsciiLettersAndNothingElse) {
  const auto small = [](int c) { return c >= 'A' && c <= 'Z' ? c | 0x20 : c; };
  for (int x = 0; x < 256; ++x) {
    EXPECT_EQ(IsCharAlphaA(static_cast<char>(x)), small(x) >= 'a' && small(x) <= 'z');
    for (int y = 0; y < 256; ++y) {
      const char a[] = {'k', static_cast<char>(x), 'Z', 0},
                 b[] = {'K', static_cast<char>(y), 'z', 0};
      const auto expected = small(x) <=> small(y);
      ASSERT_TRUE((_stricmp(a, b) <=> 0) == expected && (_strnicmp(a, b, 2) <=> 0) == expected &&
                  _strnicmp(a, b, 1) == 0)
          << x << ' ' << y;
    }
  }
  EXPECT_EQ(_strnicmp(nullptr, nullptr, 0), 0);
}

TEST(GetLocalTime, FollowsTheTimeZone) {
  using namespace std::chrono;
  for (const int wanted : {12, -12}) {
    const int offset = support::set_time_zone(wanted);
    const std::time_t earliest = std::time(nullptr);
    LocalTime now;
    GetLocalTime(&now);
    const auto told = sys_days(year(now.year) / now.month / now.day) + hours(now.hour - offset) +
                      minutes(now.minute) + seconds(now.second);
    EXPECT_LE(earliest, system_clock::to_time_t(told));
    EXPECT_GE(std::time(nullptr), system_clock::to_time_t(told));
  }
}

// The rest of a locale's names is seen by what texts are split into.
TEST(Locale, TellsTheLanguageOfTheUserAlone) {
  support::set_environment("LC_ALL", "zA@x");
  const std::string system = support::language();
  char language[4] = "#";
  EXPECT_EQ(GetLocaleInfoA(0x401, 0x59, language, 3) + GetLocaleInfoA(0x400, 0x58, language, 3) +
                GetLocaleInfoA(0x400, 0x59, language, 2) + *language,
            '#');
  EXPECT_EQ(GetLocaleInfoA(0x400, 0x59, language, 3), 3);
  EXPECT_EQ(language, system.empty() ? "za" : system);
}

}  // namespace
