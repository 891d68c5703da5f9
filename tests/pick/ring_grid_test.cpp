#include <zelvan/pick/detail/ring_grid.h>

#include <gtest/gtest.h>

// Of 8 rings 4 are on a diagonal, and 3 are the whole plane: 4 + 3 * 16 entries in 4 by 4 cells.
TEST(RingGrid, ListsFewRingsNearAPointAndFitsIntoItsRoom) {
  zelvan::PreparedRing rings[8];
  for (int i = 0; i < 4; ++i) rings[i].box = {1.0 * i, 1.0 * i, i + 0.5, i + 0.5};
  for (int i = 4; i < 7; ++i) rings[i].box = zelvan::whole_plane;
  zelvan::RingGrid grid;
  ASSERT_TRUE(grid.fill(rings, 8, 16 + 4 + 3 * 16));
  EXPECT_EQ(grid.around(1.25, 1.25).size(), 1 + 3u) << "on the diagonal";
  ASSERT_TRUE(grid.fill(rings, 8, 16 + 4 + 3 * 16 - 1));
  EXPECT_EQ(grid.around(0.25, 0.25).size(), 2 + 3u) << "only 2 by 2 cells fit";
}
