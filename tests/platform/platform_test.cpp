#include <zelvan/platform/clock.h>
#include <zelvan/platform/comparison.h>
#include <zelvan/platform/drives.h>
#include <zelvan/platform/locale.h>

#include "support/guarded_array.h"
#include "support/system.h"

#include <chrono>
#include <ctime>
#include <string>

#include <gtest/gtest.h>

namespace {

using namespace zelvan::platform;
using zelvan::platform::_stricmp, zelvan::platform::_strnicmp;  // not the runtime's

int sign(int v) { return (v > 0) - (v < 0); }

std::string small_letters(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c | 0x20);
  }
  return text;
}

// Every pair of bytes, behind a common start that differs in case, against a comparison of
// folded copies. No byte behind a count or a terminator is read.
TEST(Comparison, IgnoresTheCaseOfAsciiLettersAndNothingElse) {
  support::GuardedArray<char> a(3), b(4);
  for (int x = 0; x < 256; ++x) {
    EXPECT_EQ(IsCharAlphaA(static_cast<char>(x)), x < 128 && std::isalpha(x));
    for (int y = 0; y < 256; ++y) {
      const std::string texts[] = {{'k', static_cast<char>(x), 'Z'},
                                   {'K', static_cast<char>(y), 'z', 0}};
      std::copy(texts[0].begin(), texts[0].end(), a.begin());
      std::copy(texts[1].begin(), texts[1].end(), b.begin());
      const int expected =
          sign(small_letters(texts[0].c_str()).compare(small_letters(texts[1].c_str())));
      ASSERT_EQ(sign(_strnicmp(a.data(), b.data(), 3)), expected) << x << ' ' << y;
      ASSERT_EQ(sign(_stricmp(texts[1].c_str(), texts[0].c_str())), -expected) << x << ' ' << y;
      ASSERT_EQ(_strnicmp(a.data(), b.data(), 1), 0);
    }
  }
  EXPECT_EQ(_strnicmp(nullptr, nullptr, 0) + _strnicmp("ab", "Abc", 2), 0);
  EXPECT_EQ(sign(_strnicmp("ab", "Abc", 3)) + sign(_stricmp("abC", "aB")), 0);
}

TEST(GetLocalTime, FollowsTheTimeZone) {
  for (const int wanted : {-12, 12}) {
    const int hours_east = support::set_time_zone(wanted);
    LocalTime now;
    time_t before = std::time(nullptr);
    GetLocalTime(&now);
    if (std::time(nullptr) != before) GetLocalTime(&now), before = std::time(nullptr);
    before += hours_east * 3600;
    const tm* expected = std::gmtime(&before);
    EXPECT_EQ((std::vector{now.year, now.month, now.day, now.hour, now.minute, now.second}),
              (std::vector{expected->tm_year + 1900, expected->tm_mon + 1, expected->tm_mday,
                           expected->tm_hour, expected->tm_min, expected->tm_sec}));
  }
}

TEST(Locale, IsThatOfTheEnvironmentOrTheSystem) {
  const std::string system = support::language();
  const char* const rows[][4] = {// LC_ALL, LC_CTYPE, LANG and the language
                                 {"ja_JP.UTF-8", "de", "fr", "ja"},
                                 {nullptr, "DE@euro", "fr", "de"},
                                 {"", "", "zA.x", "za"},
                                 {"C", "de", "fr", ""},
                                 {"POSIX", nullptr, nullptr, ""},
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
    for (const int size : {2, 3}) {
      char language[4] = "#";
      const std::string expected = system.empty() ? row[3] : system;
      const bool is_there = !expected.empty() && size == 3;
      EXPECT_EQ(GetLocaleInfoA(0x400, 0x59, language, size), is_there ? 3 : 0);
      EXPECT_EQ(language, is_there ? expected : "#");
    }
    EXPECT_EQ(GetLocaleInfoA(0x401, 0x59, nullptr, 3) + GetLocaleInfoA(0x400, 0x58, nullptr, 3), 0);
  }
}

}  // namespace
