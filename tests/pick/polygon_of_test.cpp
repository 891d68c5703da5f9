#include <zelvan/pick/polygon_of.h>

#include "support/printers.h"

#include <vector>

#include <gtest/gtest.h>

namespace {

// A triangle, a polygon of one vertex, a line there and back, and two vertices of no polygon.
real_pt_t points[] = {{0, 0}, {4, 0}, {0, 4}, {9, 9}, {5, 5}, {8, 5}, {1, 1}, {2, 2}};
int edge_flags[] = {1, 0, 3, 2, 1, 3, 1, 7};
const drw_pset_t set = {8, points, edge_flags};

template <class Region>
std::vector<DblPt> points_of(const Region& region) {
  return {region.start(), region.end()};
}

TEST(CountPolygons, CountsClosingFlags) {
  EXPECT_EQ(zelvan::count_polygons(set), 3);
  EXPECT_EQ(zelvan::count_polygons({-1, nullptr, nullptr}), 0);
}

TEST(PolygonOf, HoldsTheVerticesOfThePolygon) {
  EXPECT_EQ(points_of(zelvan::polygon_of(set, 0)), (std::vector<DblPt>{{0, 0}, {4, 0}, {0, 4}}));
  for (const int k : {-1, 1, 2, 3}) {
    EXPECT_EQ(zelvan::polygon_of(set, k).start(), nullptr) << "polygon " << k;
  }
}

TEST(PolylineOf, RepeatsTheFirstVertexToCloseTheChain) {
  using Points = std::vector<DblPt>;
  EXPECT_EQ(points_of(zelvan::polyline_of(set, 0)), (Points{{0, 0}, {4, 0}, {0, 4}, {0, 0}}));
  EXPECT_EQ(points_of(zelvan::polyline_of(set, 1)), (Points{{9, 9}, {9, 9}}));
  EXPECT_EQ(points_of(zelvan::polyline_of(set, 2)), (Points{{5, 5}, {8, 5}, {5, 5}}));
  EXPECT_EQ(zelvan::polyline_of(set, 3).start(), nullptr) << "nothing closes it";
}

}  // namespace
