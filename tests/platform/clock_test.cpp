#include <zelvan/platform/clock.h>

#include <chrono>
#include <csignal>
#include <cstdlib>

#include <gtest/gtest.h>
#include <sys/time.h>

namespace {

using namespace zelvan::platform;

// A timer interrupts the pause every 3 ms; the handler asks for no restart.
TEST(Sleep, IsNotCutShortBySignals) {
  struct sigaction action {};
  action.sa_handler = [](int) {};
  sigaction(SIGALRM, &action, nullptr);
  const itimerval every_3_ms{{0, 3000}, {0, 3000}};
  const itimerval never{};
  setitimer(ITIMER_REAL, &every_3_ms, nullptr);
  const auto begin = std::chrono::steady_clock::now();
  Sleep(1030);  // over a second, so that both parts of the time count
  const auto slept = std::chrono::steady_clock::now() - begin;
  setitimer(ITIMER_REAL, &never, nullptr);
  EXPECT_GE(slept, std::chrono::milliseconds(1030));
  EXPECT_LT(slept, std::chrono::seconds(3));
}

TEST(GetLocalTime, FollowsTheTimeZoneOfTheEnvironment) {
  LocalTime east;
  LocalTime west;
  setenv("TZ", "EAST-12", 1);
  GetLocalTime(&east);
  setenv("TZ", "WEST12", 1);
  GetLocalTime(&west);
  unsetenv("TZ");
  EXPECT_NE(east.day, west.day);  // a whole day lies between them
  // A minute may pass between the calls.
  EXPECT_EQ((east.hour * 60 + east.minute - west.hour * 60 - west.minute) % 1440 / 2, 0);
  const int year = static_cast<int>(time(nullptr) / 31'556'952) + 1970;
  EXPECT_LE(std::abs(west.year - year), 1);
  EXPECT_TRUE(west.month >= 1 && west.month <= 12) << west.month;
}

}  // namespace
