// Flat functions beside the operations that they stand for.
#include <zelvan/zelvan.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

namespace {

struct Room {
  real_pt_t points[100];
  int_pt_t pixels[100];
  int flags[100], begins[20];
};

TEST(FlatForms, MapAndClipToTheSameBits) {
  Room in = {}, a = {}, b = {};
  for (int i = 0; i < 20; ++i) {
    in.pixels[i] = {i * 37 % 100, i * 53 % 100};
    in.points[i] = {in.pixels[i].x / 7.0, in.pixels[i].y / 7.0};
    in.flags[i] = i % 5 == 4 ? drw_edge_close_visible : drw_edge_visible;
  }
  const Mtx2D m(1.0, 2.0, Mtx2DOrientRot90, 3.0, 4.0, 0.1, 0.2);
  real_rect_t view = {{{3, 2}, {3, 12}, {11, 12}, {11, 2}}};
  drw_pset_t set = {20, in.points, in.flags}, a_set = {0, a.points, a.flags};
  drw_pset_t b_set = {0, b.points, b.flags};
  drw_dpset_t pixels = {20, in.pixels, in.flags}, a_pixels = {0, a.pixels, a.flags};
  drw_dpset_t b_pixels = {0, b.pixels, b.flags};
  const auto expect_same = [&](const char* name, int count, int expected) {
    EXPECT_EQ(count, expected) << name;
    EXPECT_EQ(std::memcmp(&a, &b, sizeof a), 0) << name;
  };
  zelvan_map_points(20, in.points, a.points, &m);
  zelvan_map_points_to_device(20, in.points, a.pixels, &m);
  m.RealXfmPts(20, in.points, b.points);
  m.XfmPts(20, in.points, b.pixels);
  expect_same("zelvan_map_points", 0, 0);
  zelvan_map_points_from_device(20, in.pixels, a.points, &m);
  for (int i = 0; i < 20; ++i) m.InvXfmPt(&in.pixels[i], &b.points[i]);
  expect_same("zelvan_map_points_from_device", 0, 0);
  std::memset(a.points, 0, sizeof a.points);
  zelvan_map_polygons_from_device(&pixels, &a_set, &m);
  std::memcpy(b.flags, in.flags, sizeof b.flags);
  expect_same("zelvan_map_polygons_from_device", a_set.n_points, 20);
  zelvan_map_polygons(&set, &a_set, &m);
  m.RealXfmPolygons(set, &b_set);
  expect_same("zelvan_map_polygons", a_set.n_points, b_set.n_points);
  zelvan_map_polygons_to_device(&set, &a_pixels, &m);
  m.XfmPolygons(set, &b_pixels);
  expect_same("zelvan_map_polygons_to_device", a_pixels.n_points, b_pixels.n_points);
  zelvan_clip_polygon_set(&set, &a_set, &view);
  ClipPolygonSet(&set, &b_set, &view);
  expect_same("zelvan_clip_polygon_set", a_set.n_points, b_set.n_points);
  zelvan_clip_polygon_set_to_view(&set, &a_set, &view);
  ClipPolygonSetToView(&set, &b_set, &view);
  expect_same("zelvan_clip_polygon_set_to_view", a_set.n_points, b_set.n_points);
  EXPECT_GT(b_set.n_points, 20 + 8) << "both left something of the drawing";
  expect_same("zelvan_clip_polyline_to_view",
              zelvan_clip_polyline_to_view(in.points, 20, &view, a.points, a.begins, a.flags),
              ClipPolylineToView(in.points, 20, &view, b.points, b.begins, b.flags));
}

// Asks both at 400 points of a grid: one by one, and the flat form all at once.
void expect_same_hits(const CPickRegion* flat, const CPickRegion& region) {
  std::vector<real_pt_t> points;
  std::vector<unsigned char> hits(400), expected;
  for (int i = 0; i < 400; ++i) {
    points.push_back({i % 20 / 2.0 - 2, i / 20 / 2.0 - 2});
    expected.push_back(region.isInside(points[i].x, points[i].y, 0.5));
    EXPECT_EQ(zelvan_hit_region(flat, points[i].x, points[i].y, 0.5), expected[i]) << i;
  }
  for (unsigned char* const written : {static_cast<unsigned char*>(nullptr), hits.data()}) {
    EXPECT_EQ(zelvan_hit_region_with_points(flat, 400, points.data(), 0.5, written),
              std::count(expected.begin(), expected.end(), 1));
  }
  EXPECT_EQ(hits, expected);
}

TEST(FlatForms, HitTheSameRegions) {
  real_pt_t points[] = {{9, 9}, {0, 0}, {4, 1}, {1, 4}};
  int flags[] = {drw_edge_close_visible, 1, 1, drw_edge_close_visible};
  DblPt corners[] = {{0, 0}, {4, 1}, {1, 4}};
  const drw_pset_t set = {4, points, flags};
  const auto expect_same = [](const char* name, CPickRegion* flat, const CPickRegion& region) {
    SCOPED_TRACE(name);
    ASSERT_NE(flat, nullptr);
    const Mtx2D turn(0, 0, Mtx2DOrientRot90, 1, 2, 4, 0);
    CPickRegion* const flat_image = zelvan_map_region(flat, &turn);
    const std::unique_ptr<CPickRegion> image(region.xfm(turn));
    expect_same_hits(flat, region);
    expect_same_hits(flat_image, *image);
    zelvan_delete_region(flat_image);
    zelvan_delete_region(flat);
  };
  const CPolygon polygon(3, corners);
  expect_same("rect", zelvan_new_rect_region(4, 0, 1, 3), CPickRect(4, 0, 1, 3));
  expect_same("polyline", zelvan_new_polyline_region(3, &points[1]), CPickPolyline(3, corners));
  expect_same("polygon", zelvan_new_polygon_region(3, &points[1]), polygon);
  expect_same("polygon of a set", zelvan_new_region_of_polygon(&set, 1), polygon);
  EXPECT_EQ(zelvan_count_polygons(&set), 2);
}

TEST(FlatForms, FillColorMapsAlike) {
  int rgb[] = {1, 2, 3, 4, 5, 6};
  ColorMap map(2, 31, rgb);
  ColorMap* const flat = zelvan_new_color_map(2, 31, rgb);
  EXPECT_TRUE(map.Identical(flat));
  EXPECT_EQ(flat->max_value, 31u);
  for (const int index : {-1, 0, 1, 2}) {
    EXPECT_EQ(zelvan_set_color(flat, index, "HSV 240 1 1"), map.SetIndex(index, "HSV 240 1 1"));
    EXPECT_TRUE(map.Identical(flat)) << "entry " << index << " by a text";
    EXPECT_EQ(zelvan_set_named_color(flat, index, "navy"), map.SetIndex(index, "Name navy"));
    EXPECT_TRUE(map.Identical(flat)) << "entry " << index << " by a name";
  }
  EXPECT_EQ(zelvan_set_named_color(flat, 0, "no colour"), 0);
  zelvan_delete_color_map(flat);
}

TEST(FlatForms, ReadLineTypes) {
  CLineTypeDefList* const list = zelvan_new_line_types();
  EXPECT_EQ(zelvan_count_fragments(list, 4), 4);
  EXPECT_EQ(zelvan_get_pattern_length(list, 4), 7.5);
  const double fragments[] = {-1, 80, 30, 20, 30, -1};
  for (int i = -1; i <= 4; ++i) {
    EXPECT_EQ(zelvan_get_fragment(list, 4, i), fragments[i + 1]) << "fragment " << i;
  }
  EXPECT_EQ(zelvan_count_fragments(list, 14), -1) << "no such line type";
  zelvan_delete_line_types(list);
}

}  // namespace
