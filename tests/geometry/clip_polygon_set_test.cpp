#include "geometry/clip_model.h"
#include "support/vector_forms.h"

TEST(ClipPolygonSet, CutsPolygonsIntoRings) {
  const auto clip = ClipPolygonSet;
  const Set arch = {{{2, 15}, 1}, {{8, 15}, 1}, {{8, 5}, 1}, {{6, 5}, 1},
                    {{6, 12}, 1}, {{4, 12}, 1}, {{4, 5}, 1}, {{2, 5}, 3}};
  const Set legs = {{{8, 10}, 0}, {{6, 10}, 1}, {{6, 5}, 1}, {{8, 5}, 3},
                    {{4, 10}, 0}, {{2, 10}, 1}, {{2, 5}, 1}, {{4, 5}, 3}};
  expect_rings(clip, arch, legs, "the legs of an arch");
  expect_rings(clip, {{{-5, 4}, 0}, {{15, 4}, 1}, {{15, 6}, 1}, {{-5, 6}, 3}},
               {{{0, 4}, 0}, {{0, 6}, 1}, {{10, 6}, 0}, {{10, 4}, 2}}, "a band, invisible below");
  expect_rings(clip, {{{5, 5}, 0}, {{5, 5}, 1}, {{15, 5}, 1}, {{15, 5}, 0}, {{5, 9}, 3}},
               {{{10, 5}, 0}, {{10, 7}, 1}, {{5, 9}, 1}, {{5, 5}, 2}}, "duplicates that cross");
  expect_rings(clip, {{{1, 1}, 1}, {{1, 1}, 0}, {{4, 1}, 0}, {{4, 4}, 2}},
               {{{1, 1}, 1}, {{1, 1}, 0}, {{4, 1}, 0}, {{4, 4}, 2}}, "inside, with a duplicate");
  expect_rings(clip, {{{-5, -5}, 1}, {{15, -5}, 1}, {{15, 15}, 1}, {{-5, 15}, 3}},
               {{{0, 0}, 0}, {{0, 10}, 0}, {{10, 10}, 0}, {{10, 0}, 2}}, "around the view");
  expect_rings(clip, {{{-1, -1}, 1}, {{30, -1}, 1}, {{-1, 30}, 3}}, {}, "no edge right of a side");
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
