#include <zelvan/pick/polygon_of.h>

#include "support/printers.h"

#include <climits>
#include <vector>

#include <gtest/gtest.h>

using Points = std::vector<DblPt>;

TEST(PolygonOf, CopiesPolygonsByTheirClosingFlags) {
  real_pt_t points[] = {{0, 0}, {4, 0}, {0, 4}, {9, 9}, {5, 5}, {8, 5}, {1, 1}, {2, 2}};
  int edge_flags[] = {1, 0, 3, 2, 1, 3, 1, 7};
  const drw_pset_t set = {8, points, edge_flags};
  const auto points_of = [](const auto& region) { return Points(region.start(), region.end()); };
  EXPECT_EQ(zelvan::count_polygons(set), 3) << "nothing closes the last two vertices";
  EXPECT_EQ(points_of(zelvan::polygon_of(set, 0)), (Points{{0, 0}, {4, 0}, {0, 4}}));
  EXPECT_EQ(zelvan::polygon_of(set, 2).start(), nullptr) << "two vertices enclose nothing";
  EXPECT_EQ(points_of(zelvan::polyline_of(set, 0)), (Points{{0, 0}, {4, 0}, {0, 4}, {0, 0}}));
  for (const int k : {3, -1, INT_MIN}) {
    EXPECT_EQ(zelvan::polygon_of(set, k).start(), nullptr) << "no polygon " << k;
    EXPECT_EQ(zelvan::polyline_of(set, k).start(), nullptr) << "no polygon " << k;
  }
}
