#include "tra/float_models.h"

#include <thread>

// All 2^32 patterns in both directions, by two threads.
TEST(ConvertFlpt, GivesTheValueOfEverySingle) {
  std::thread upper(support::walk<support::Single>, 1ull << 31, 1ull << 32, 1);
  support::walk<support::Single>(0, 1ull << 31, 1);
  upper.join();
}
