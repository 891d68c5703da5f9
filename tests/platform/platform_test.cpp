#include <zelvan/platform/clock.h>
#include <zelvan/platform/sockets.h>

#include "support/system.h"

#include <chrono>
#include <ctime>
#include <string>

#include <gtest/gtest.h>

namespace {

namespace platform = zelvan::platform;
using namespace std::chrono;

// The system of POSIX takes the zone from the environment.
TEST(GetLocalTime, FollowsTheTimeZone) {
  for (const char* zone : {"HERE-12", "HERE12"}) {
    if (support::is_posix) support::set_environment("TZ", zone);
    std::time_t second;
    platform::LocalTime now;
    do {
      second = std::time(nullptr);
      platform::GetLocalTime(&now);
    } while (second != std::time(nullptr));
    const std::tm there = *std::localtime(&second);
    EXPECT_TRUE(now.year == there.tm_year + 1900 && now.month == there.tm_mon + 1 &&
                now.day == there.tm_mday && now.hour == there.tm_hour &&
                now.minute == there.tm_min && now.second == there.tm_sec);
  }
}

TEST(Sleep, IsNeverTooShort) {
  for (const int time : {0, 1, 2, 3, 5, 8, 13, 21, 999}) {
    const auto end = steady_clock::now() + milliseconds(time);
    platform::Sleep(static_cast<std::uint64_t>(time));
    EXPECT_GE(steady_clock::now(), end);
  }
}

TEST(Sockets, MeetNobodyWhereNobodyIs) {
  EXPECT_EQ(platform::WSAStartup(), 0);
  platform::SocketAddress address{};
  const int ends[] = {platform::socket(), platform::socket()};
  EXPECT_EQ(platform::bind(ends[0], address) + platform::getsockname(ends[0], &address), 0);
  for (const int end : ends) {  // the first meets itself
    EXPECT_EQ(platform::connect(end, {{127, 0, 0, 1}, address.port}), -1);
    platform::closesocket(end);
    EXPECT_EQ(platform::select(end), -1);
    EXPECT_EQ(platform::getsockname(end, &address), -1);
  }
  const int others[] = {platform::socket(), platform::socket()};  // meet on one port
  EXPECT_EQ(platform::bind(others[0], {{127, 0, 0, 2}, 0}), 0);
  EXPECT_EQ(platform::getsockname(others[0], &address), 0);
  EXPECT_EQ(platform::listen(others[0], 1) + platform::select(others[0]), 0);
  EXPECT_EQ(platform::bind(others[1], {{127, 0, 0, 1}, address.port}), 0);
  EXPECT_EQ(platform::connect(others[1], address), 0);
  for (const int end : others) platform::closesocket(end);
}

TEST(Sockets, HaveNamesAndAddresses) {
  EXPECT_EQ(platform::WSAStartup(), 0);
  platform::SocketAddress address{};
  EXPECT_EQ(platform::gethostbyname("localhost", &address), 1);
  EXPECT_EQ(address.host[0] + address.host[3], 128);
  EXPECT_EQ(platform::gethostbyname(std::string(300, 'x').c_str(), &address), 0);
  char whole[300], cut[] = "~~~~";
  EXPECT_EQ(platform::gethostname(whole, 300) + platform::gethostname(cut, 2), 0);
  EXPECT_EQ(std::string(cut, 3), std::string(whole, 1) + '\0' + '~');
  EXPECT_EQ(platform::htons(0x102), platform::ntohs(0x102));
  EXPECT_EQ(platform::htons(0x102), 0x201);
}

}  // namespace
