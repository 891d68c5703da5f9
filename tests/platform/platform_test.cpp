#include <zelvan/platform/clock.h>
#include <zelvan/platform/comparison.h>
#include <zelvan/platform/drives.h>
#include <zelvan/platform/locale.h>

#include "support/system.h"

#include <algorithm>
#include <cctype>
#include <ctime>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using namespace zelvan::platform;
using zelvan::platform::_stricmp, zelvan::platform::_strnicmp;  // not the runtime's

int sign(int v) { return (v > 0) - (v < 0); }
char small(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; }

// Every pair of bytes, behind a common start that differs in case.
TEST(Comparison, IgnoresTheCaseOfAsciiLettersAndNothingElse) {
  for (int x = 0; x < 256; ++x) {
    EXPECT_EQ(IsCharAlphaA(static_cast<char>(x)), x < 128 && std::isalpha(x));
    for (int y = 0; y < 256; ++y) {
      const char a[] = {'k', static_cast<char>(x), 'Z', 0},
                 b[] = {'K', static_cast<char>(y), 'z', 0};
      std::string small_a = a, small_b = b;
      for (std::string* text : {&small_a, &small_b})
        std::transform(text->begin(), text->end(), text->begin(), small);
      ASSERT_EQ(sign(_stricmp(a, b)), sign(small_a.compare(small_b))) << x << ' ' << y;
      for (const int n : {0, 1, 2, 3}) {
        ASSERT_EQ(sign(_strnicmp(a, b, n)),
                  sign(small_a.substr(0, n).compare(small_b.substr(0, n))));
      }
    }
  }
  EXPECT_EQ(_strnicmp(nullptr, nullptr, 0), 0);
}

TEST(GetLocalTime, FollowsTheTimeZone) {
  for (const int wanted : {12, -12}) {
    const int hours = support::set_time_zone(wanted);
    LocalTime now;
    time_t moment;
    do {
      moment = std::time(nullptr);
      GetLocalTime(&now);
    } while (moment != std::time(nullptr));
    moment += 3600 * hours;
    char text[2][40];
    std::strftime(text[0], 40, "%Y-%m-%d %H:%M:%S", std::gmtime(&moment));
    std::snprintf(text[1], 40, "%d-%02d-%02d %02d:%02d:%02d", now.year, now.month, now.day,
                  now.hour, now.minute, now.second);
    EXPECT_STREQ(text[1], text[0]);
  }
}

TEST(Locale, IsThatOfTheEnvironmentOrTheSystem) {
  const std::string system = support::language();
  const char* const rows[][4] = {// LC_ALL, LC_CTYPE, LANG and the language
                                 {"ja_JP.UTF-8", "de", "fr", "ja"},
                                 {nullptr, "DE@euro", "fr", "de"},
                                 {"", "", "zA.x", "za"},
                                 {"C", "de", "fr", ""},
                                 {nullptr, nullptr, nullptr, ""},
                                 {"a", "", "", ""},
                                 {"a1", "", "", ""},
                                 {"[a", "", "", ""},
                                 {"fra", "", "", ""},
                                 {"fr[", "", "", "fr"}};
  for (const auto& row : rows) {
    support::set_environment("LC_ALL", row[0]);
    support::set_environment("LC_CTYPE", row[1]);
    support::set_environment("LANG", row[2]);
    char language[4] = "#";
    EXPECT_EQ(GetLocaleInfoA(0x401, 0x59, language, 3) + GetLocaleInfoA(0x400, 0x58, language, 3) +
                  GetLocaleInfoA(0x400, 0x59, language, 2),
              0);
    EXPECT_STREQ(language, "#");
    const std::string expected = system.empty() ? row[3] : system;
    EXPECT_EQ(GetLocaleInfoA(0x400, 0x59, language, 3), expected.empty() ? 0 : 3);
    EXPECT_EQ(language, expected.empty() ? "#" : expected);
  }
}

}  // namespace
