#include "geometry/clip_model.h"
#include "support/heap.h"
#include "support/vector_forms.h"

TEST(ClipPolygonSet, CutsPolygonsIntoRings) {
  const auto clip = zelvan_clip_polygon_set;  // calls ClipPolygonSet
  const Set arch = {{{2, 15}, 1}, {{8, 15}, 1}, {{8, 5}, 0}, {{6, 5}, 1},
                    {{6, 12}, 1}, {{4, 12}, 1}, {{4, 5}, 1}, {{2, 5}, 3}};
  const Set legs = {{{8, 10}, 0}, {{6, 10}, 1}, {{6, 5}, 1}, {{8, 5}, 2},
                    {{4, 10}, 0}, {{2, 10}, 1}, {{2, 5}, 1}, {{4, 5}, 3}};
  expect_rings(clip, arch, legs, "the legs of an arch, one of them invisible below");
  const Set notched = {{{7, 10}, 0}, {{10, 10}, 0}, {{10, 0}, 0}, {{0, 0}, 0},
                       {{0, 10}, 0}, {{3, 10}, 1},  {{5, 6}, 3}};
  expect_rings(clip, {{{37, 70}, 1}, {{5, 6}, 1}, {{-27, 70}, 1}, {{5, -200}, 3}}, notched,
               "all of the view but a notch");
  expect_rings(clip, {{{5, 5}, 0}, {{5, 5}, 1}, {{15, 5}, 1}, {{15, 5}, 0}, {{5, 9}, 3}},
               {{{10, 5}, 0}, {{10, 7}, 1}, {{5, 9}, 1}, {{5, 5}, 2}}, "duplicates that cross");
  expect_rings(clip, {{{-1, -40}, 1}, {{60, 11}, 1}, {{60, 100}, 1}, {{-1, 40}, 3}},
               {{{0, 0}, 0}, {{0, 10}, 0}, {{10, 10}, 0}, {{10, 0}, 2}}, "around the view");
  expect_rings(clip, {{{-1, 3}, 1}, {{3, -1}, 1}, {{-9, -9}, 3}},
               {{{0, 2}, 0}, {{0, 0}, 0}, {{2, 0}, 3}}, "an edge that crosses two sides");
  expect_rings(clip, {{{5, -9}, 1}, {{19, 5}, 1}, {{-9, -20}, 3}}, {}, "beside a corner");
  expect_rings(clip, {{{-1, -1}, 1}, {{30, -1}, 1}, {{-1, 30}, 3}}, {}, "no edge right of a side");
}

TEST(ClipPolygonSet, LeavesOutThePolygonThatTheHeapRefuses) {
  const Set triangle = {{{1, 1}, 1}, {{4, 1}, 1}, {{4, 4}, 3}};
  // The second polygon needs room for its crossings, their order and a copy without repeats: every
  // second vertex juts out of the view, and the last comes twice.
  Set set = triangle;
  for (int i = 0; i < 1200; ++i) set.push_back({{i / 150.0, i % 2 == 0 ? 15.0 : 5.0}, 1});
  set.push_back({set.back().point, 3});
  support::SetArrays<real_pt_t> source(set), target(9 * set.size());
  drw_pset_t from = {static_cast<int>(set.size()), source.points.data(), source.flags.data()};
  drw_pset_t to;
  real_rect_t view = {{{0, 0}, {0, 10}, {10, 10}, {10, 0}}};
  const auto clip = [&] {
    to = {0, target.points.data(), target.flags.data()};
    ClipPolygonSet(&from, &to, &view);
  };
  const auto check = [&] { EXPECT_EQ(target.first(to.n_points), triangle); };
  EXPECT_GE(heap::refuse_each(clip, check), 8) << "crossings, order, points, flags; two ways each";
}

// Checks polygons whose first two vertices are on different sides of the view's border.
TEST(ClipPolygonSet, CoversAndDrawsInsideWhatThePolygonDoes) {
  support::for_each_form([](const char* form) {
    support::Random random(1);
    for (int i = 0; i < 600 && !testing::Test::HasFailure(); ++i) {
      SCOPED_TRACE(testing::Message() << form << ", polygon " << i);
      const real_rect_t& view = upright_and_other_views[i % 5];
      Set in = random_ring(&random);
      for (auto& vertex : in) vertex.flag |= drw_edge_visible;
      const Set border = border_of(view);
      if (winding(border, in[0].point) == winding(border, in[1].point)) continue;
      expect_clipped(in, clipped(ClipPolygonSet, in, view), view, std::labs);
    }
  });
}
