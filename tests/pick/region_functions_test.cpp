#include <zelvan/pick/region_functions.h>

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

static real_pt_t points[] = {{9, 9}, {1, 1}, {5, 2}, {2, 5}};
static int edge_flags[] = {3, 1, 1, 3};
static const drw_pset_t set = {4, points, edge_flags};

// Points at which the kinds of regions differ, with a tolerance of 1/8.
static const real_pt_t places[] = {{1.75, 2.5}, {4.5, 4.5}, {0.875, 1}, {3, 0.875}};

TEST(RegionFunctions, MakeMapAndAskEachKind) {
  EXPECT_EQ(zelvan_count_polygons(&set), 2);
  using Hits = std::vector<unsigned char>;  // one for each place
  const auto expect = [](const char* kind, CPickRegion* region, const Hits& expected) {
    ASSERT_NE(region, nullptr) << kind;
    const Mtx2D shift(0, 0, Mtx2DOrientNone, 1, 1, 8, 0);
    CPickRegion* const image = zelvan_map_region(region, &shift);
    for (int i = 0; i < 4; ++i) {
      const auto& [x, y] = places[i];
      EXPECT_EQ(zelvan_hit_region(image, x + 8, y, 0.125), expected[i]) << kind << ", place " << i;
    }
    Hits hits(4);
    const auto count = std::count(expected.begin(), expected.end(), 1);
    EXPECT_EQ(zelvan_hit_region_with_points(region, 4, places, 0.125, nullptr), count) << kind;
    EXPECT_EQ(zelvan_hit_region_with_points(region, 4, places, 0.125, hits.data()), count) << kind;
    EXPECT_EQ(hits, expected) << kind;
    zelvan_delete_region(image);
    zelvan_delete_region(region);
  };
  expect("rect", zelvan_new_rect_region(5, 1, 2, 4), {0, 0, 0, 1});
  expect("polyline", zelvan_new_polyline_region(3, &points[1]), {0, 1, 1, 1});
  expect("polygon", zelvan_new_polygon_region(3, &points[1]), {1, 0, 0, 0});
  expect("polygon of a set", zelvan_new_region_of_polygon(&set, 1), {1, 0, 0, 0});
}

TEST(RegionFunctions, MakeNothingOfTooFewPoints) {
  EXPECT_EQ(zelvan_new_polyline_region(1, nullptr), nullptr) << "one point is no polyline";
  EXPECT_EQ(zelvan_new_polygon_region(2, nullptr), nullptr) << "two vertices enclose nothing";
  EXPECT_EQ(zelvan_new_region_of_polygon(&set, 0), nullptr) << "a single vertex";
  zelvan_delete_region(nullptr);
}
