#include <zelvan/platform/clock.h>
#include <zelvan/platform/locale.h>
#include <zelvan/platform/sockets.h>

#include "support/system.h"

#include <chrono>
#include <ctime>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

namespace {

namespace platform = zelvan::platform;
using namespace std::chrono;

TEST(GetLocalTime, FollowsTheTimeZone) {
  for (const char* zone : {"HERE-12", "HERE12"}) {
    if (support::is_posix) support::set_environment("TZ", zone);  // Windows has its own
    std::time_t second;
    platform::LocalTime now;
    do {
      second = std::time(nullptr);
      platform::GetLocalTime(&now);
    } while (second != std::time(nullptr));
    const std::tm parts = *std::localtime(&second);
    const std::vector found = {now.year, now.month, now.day, now.hour, now.minute, now.second};
    EXPECT_EQ(found, (std::vector{parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday,
                                  parts.tm_hour, parts.tm_min, parts.tm_sec}))
        << zone;
  }
}

TEST(Sleep, IsNeverTooShort) {
  for (const int time : {0, 1, 3, 999}) {
    const auto end = steady_clock::now() + milliseconds(time);
    platform::Sleep(static_cast<std::uint64_t>(time));
    EXPECT_GE(steady_clock::now(), end) << time << " ms";
  }
}

TEST(GetLocaleInfo, NamesTheLanguageInTwoSmallLetters) {
  if (!support::is_posix) GTEST_SKIP() << "the system names it";
  const auto language = [](int size, unsigned locale, unsigned type) {
    char text[4] = "---";
    const int length = platform::GetLocaleInfoA(locale, type, text, size);
    return std::to_string(length) + text;
  };
  const std::tuple<const char*, const char*, const char*, const char*> rows[] = {
      {"ja_JP.UTF-8", "de", "fr", "3ja"},  // LC_ALL rules
      {"", "AZ@x", "fr", "3az"},           // then LC_CTYPE; one that is empty counts as unset
      {nullptr, nullptr, "Zz", "3zz"},     // then LANG
      {"C", "de", "de", "0---"},           // has no language
      {"POSIX", "de", "de", "0---"},       // nor has this
      {"d1", "de", "de", "0---"},          // nor what does not begin with two letters
      {"1d", "de", "de", "0---"},          // nor this
      {nullptr, "", nullptr, "0---"}};     // nothing is set
  for (const auto& [all, characters, last, answer] : rows) {
    support::set_environment("LC_ALL", all);
    support::set_environment("LC_CTYPE", characters);
    support::set_environment("LANG", last);
    EXPECT_EQ(language(3, 0x400, 0x59), answer) << (all != nullptr ? all : "null");
  }
  support::set_environment("LANG", "de");
  EXPECT_EQ(language(2, 0x400, 0x59), "0---") << "it doesn't fit";
  EXPECT_EQ(language(3, 0x401, 0x59), "0---") << "another locale";
  EXPECT_EQ(language(3, 0x400, 0x5A), "0---") << "another question";
}

TEST(Sockets, MeetNobodyWhereNobodyIs) {
  EXPECT_EQ(platform::WSAStartup(), 0);
  platform::SocketAddress address{};
  for (const bool is_bound : {true, false}) {  // the first would meet itself
    const int end = platform::socket();
    EXPECT_TRUE(!is_bound || platform::bind(end, {}) == 0);
    EXPECT_TRUE(!is_bound || platform::getsockname(end, &address) == 0);
    EXPECT_EQ(platform::connect(end, {{127, 0, 0, 1}, address.port}), -1);
    platform::closesocket(end);
    EXPECT_EQ(platform::select(end), -1);
    EXPECT_EQ(platform::getsockname(end, &address), -1);
  }
  const int door = platform::socket(), caller = platform::socket();
  EXPECT_EQ(platform::bind(door, {{127, 0, 0, 2}, 0}), 0);
  EXPECT_EQ(platform::getsockname(door, &address), 0);
  EXPECT_EQ(platform::listen(door, 1), 0);
  EXPECT_EQ(platform::select(door), 0) << "nobody is waiting";
  EXPECT_EQ(platform::bind(caller, {{127, 0, 0, 1}, address.port}), 0);
  EXPECT_EQ(platform::connect(caller, address), 0) << "an equal port is not an equal end";
  platform::closesocket(caller);
  platform::closesocket(door);
}

TEST(Sockets, HaveNamesAndAddresses) {
  platform::SocketAddress address{};
  EXPECT_EQ(platform::gethostbyname(std::string(300, 'x').c_str(), &address), 0);
  char whole[300], cut[] = "~~~~";
  EXPECT_EQ(platform::gethostname(whole, 300), 0);
  EXPECT_EQ(platform::gethostname(cut, 2), 0);
  EXPECT_EQ(std::string(cut, 3), std::string(whole, 1) + '\0' + '~') << "cut to size";
  EXPECT_EQ(platform::htons(platform::ntohs(0x102)), 0x102);
}

}  // namespace
