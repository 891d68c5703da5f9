#include <zelvan/pick/detail/ring_grid.h>

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

namespace {

TEST(RingGrid, ListsTheRingsNearThePointAndFewOthers) {
  std::vector<zelvan::PreparedRing> squares(400);
  for (int i = 0; i < 400; ++i) {
    const double x = i % 20;
    const double y = i / 20;
    squares[i].box = {x, y, x + 0.9, y + 0.9};
  }
  zelvan::RingGrid fine, coarse;
  ASSERT_TRUE(fine.fill(squares.data(), 400, 10'000) && coarse.fill(squares.data(), 400, 401));
  for (int i = 0; i < 400; ++i) {
    const auto near_by = fine.around(i % 20 + 0.5, i / 20 + 0.5);
    EXPECT_LE(near_by.size(), 4u) << "a cell is smaller than a square";
    EXPECT_TRUE(std::binary_search(near_by.begin(), near_by.end(), i)) << i;
    EXPECT_EQ(coarse.around(i, 0).size(), 400u) << "there is room for one cell alone";
  }
}

}  // namespace
