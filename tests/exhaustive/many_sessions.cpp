#include "support/system.h"

#include <cstdlib>
#include <thread>

#include <gtest/gtest.h>

// Ten programs, each of which opens one session after the other.
TEST(ManySessions, OpenInManyProcessesAtOnce) {
  const std::string line =
      '"' + support::own_path() + "\" --gtest_filter=-ManySessions.* --gtest_repeat=10";
  std::thread shells[10];
  for (std::thread& shell : shells) {
    shell = std::thread([&] { EXPECT_EQ(std::system(line.c_str()), 0); });
  }
  for (std::thread& shell : shells) shell.join();
}
