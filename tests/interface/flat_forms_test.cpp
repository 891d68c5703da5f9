// Flat functions beside the operations that they stand for.
#include <zelvan/zelvan.h>

#include <cstring>

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
