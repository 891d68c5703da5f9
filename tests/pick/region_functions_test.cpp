#include <zelvan/pick/region_functions.h>

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

static real_pt_t points[] = {{9, 9}, {1, 1}, {5, 2}, {2, 5}};
static int edge_flags[] = {3, 1, 1, 3};
static const drw_pset_t set = {4, points, edge_flags};

// Points at which the kinds of regions differ, with a tolerance of 1/8.
static const real_pt_t places[] = {{1.75, 2.5}, {4.5, 4.5}, {0.875, 1}, {3, 0.875}};

static const struct {
  const char* name;
  CPickRegion* (*make)();
  std::vector<unsigned char> hits;  // expected, one for each place
} kinds[] = {
    {"rect", [] { return zelvan_new_rect_region(5, 1, 2, 4); }, {0, 0, 0, 1}},
    {"polyline", [] { return zelvan_new_polyline_region(3, &points[1]); }, {0, 1, 1, 1}},
    {"polygon", [] { return zelvan_new_polygon_region(3, &points[1]); }, {1, 0, 0, 0}},
    {"polygon of a set", [] { return zelvan_new_region_of_polygon(&set, 1); }, {1, 0, 0, 0}},
};

TEST(RegionFunctions, MakeMapAndAskEachKind) {
  EXPECT_EQ(zelvan_count_polygons(&set), 2);
  const Mtx2D shift(0, 0, Mtx2DOrientNone, 1, 1, 8, 0);
  for (const auto& [name, make, expected] : kinds) {
    CPickRegion* const region = make();
    ASSERT_NE(region, nullptr) << name;
    CPickRegion* const image = zelvan_map_region(region, &shift);
    for (int i = 0; i < 4; ++i) {
      const auto& [x, y] = places[i];
      EXPECT_EQ(zelvan_hit_region(image, x + 8, y, 0.125), expected[i]) << name << ", place " << i;
    }
    std::vector<unsigned char> hits(4);
    const auto count = std::count(expected.begin(), expected.end(), 1);
    EXPECT_EQ(zelvan_hit_region_with_points(region, 4, places, 0.125, nullptr), count) << name;
    EXPECT_EQ(zelvan_hit_region_with_points(region, 4, places, 0.125, hits.data()), count) << name;
    EXPECT_EQ(hits, expected) << name;
    zelvan_delete_region(image);
    zelvan_delete_region(region);
  }
}

TEST(RegionFunctions, MakeNothingOfTooFewPoints) {
  EXPECT_EQ(zelvan_new_polyline_region(1, nullptr), nullptr) << "one point is no polyline";
  EXPECT_EQ(zelvan_new_polygon_region(2, nullptr), nullptr) << "two vertices enclose nothing";
  EXPECT_EQ(zelvan_new_region_of_polygon(&set, 0), nullptr) << "a single vertex";
  zelvan_delete_region(nullptr);
}
