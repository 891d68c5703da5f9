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
  expect_rings(clip, {{{5, 5}, 0}, {{5, 5}, 1}, {{15, 5}, 1}, {{15, 5}, 0}, {{5, 9}, 3}},
               {{{10, 5}, 0}, {{10, 7}, 1}, {{5, 9}, 1}, {{5, 5}, 2}}, "duplicates that cross");
  expect_rings(clip, {{{-1, -40}, 1}, {{60, 11}, 1}, {{60, 100}, 1}, {{-1, 40}, 3}},
               {{{0, 0}, 0}, {{0, 10}, 0}, {{10, 10}, 0}, {{10, 0}, 2}}, "around the view");
  expect_rings(clip, {{{-1, -1}, 1}, {{30, -1}, 1}, {{-1, 30}, 3}}, {}, "no edge right of a side");
}

TEST(ClipPolygonSet, LeavesOutThePolygonThatTheHeapRefuses) {
  const Set triangle = {{{1, 1}, 1}, {{4, 1}, 1}, {{4, 4}, 3}};
  const auto clip = [](drw_pset_t* source, drw_pset_t* target, real_rect_t* rect) {
    heap::refuse(1, true);
    ClipPolygonSet(source, target, rect);
    EXPECT_TRUE(heap::grant_all()) << "small enough to need no heap";
  };
  // Of n vertices every so many is a tooth that juts out of the view; the last one comes twice.
  const auto expect_triangle = [&](int n, int for_a_tooth, const char* what_needs_heap) {
    Set set = triangle;
    for (int i = 0; i < n; ++i) set.push_back({{i / 75.0, i % for_a_tooth == 0 ? 15.0 : 5.0}, 1});
    set.push_back({set.back().point, 3});
    expect_rings(clip, set, triangle, what_needs_heap);
  };
  expect_triangle(400, 2, "the crossings");
  expect_triangle(500, 500, "the edge flags of a copy without repeats");
  expect_triangle(600, 600, "the vertices of a copy without repeats");
}

// Of polygons whose first edge crosses the border.
TEST(ClipPolygonSet, CoversAndDrawsInsideWhatThePolygonDoes) {
  support::for_each_form([](const char* form) {
    support::Random random(1);
    for (int i = 0; i < 600 && !testing::Test::HasFailure(); ++i) {
      SCOPED_TRACE(testing::Message() << form << ", polygon " << i);
      const real_rect_t& view = upright_and_other_views[i % 4];
      Set in = random_ring(&random);
      for (auto& vertex : in) vertex.flag |= drw_edge_visible;
      const Set border = border_of(view);
      if (winding(border, in[0].point) == winding(border, in[1].point)) continue;
      expect_clipped(in, clipped(ClipPolygonSet, in, view), view, std::labs);
    }
  });
}
