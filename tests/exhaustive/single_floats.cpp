#include "support/float_models.h"

#include <thread>

#include <gtest/gtest.h>

// All 2^32 patterns in both directions, by two threads.
TEST(ConvertFlpt, GivesTheValueOfEverySingle) {
  bool upper_is_right = false;
  std::thread upper([&] { upper_is_right = support::converts_singles(1ull << 31, 1ull << 32); });
  EXPECT_TRUE(support::converts_singles(0, 1ull << 31));
  upper.join();
  EXPECT_TRUE(upper_is_right);
}
