#include "support/float_models.h"

#include <thread>

// All 2^32 patterns in both directions, by two threads.
TEST(ConvertFlpt, GivesTheValueOfEverySingle) {
  std::thread upper(support::walk, 24, 1ull << 31, 1ull << 31, 1);
  support::walk(24, 0, 1ull << 31, 1);
  upper.join();
}
