#include "support/float_models.h"

#include <thread>

#include <gtest/gtest.h>

// All 2^32 patterns in both directions, by two threads.
TEST(ConvertFlpt, GivesTheValueOfEverySingle) {
  bool upper_is_right = false;
  std::thread upper([&] { upper_is_right = support::walk(24, 1ull << 31, 1ull << 31, 1); });
  EXPECT_TRUE(support::walk(24, 0, 1ull << 31, 1));
  upper.join();
  EXPECT_TRUE(upper_is_right);
}
