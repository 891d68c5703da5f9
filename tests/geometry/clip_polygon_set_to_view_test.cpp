#include "geometry/clip_model.h"
#include "support/vector_forms.h"

TEST(ClipPolygonSetToView, WindsAndDrawsInsideAsTheSourceDoes) {
  support::for_each_form([](const char* form) {
    support::Random random(1);
    for (int i = 0; i < 240 && !testing::Test::HasFailure(); ++i) {
      const double scale = i % 3 == 0 ? 1 : i % 3 == 1 ? 0x1p1020 : 0x1p-1000;
      SCOPED_TRACE(testing::Message() << form << ", set " << i << ", times " << scale);
      const real_rect_t& view = upright_and_other_views[i % 4];
      Set in = random_ring(&random);
      if (i % 5 < 3) in.back().flag -= 2;  // one polygon that crosses itself
      for (const auto& vertex : random_ring(&random)) in.push_back(vertex);
      for (auto& [p, flag] : in) {
        if (i % 8 < 4) p = {std::round(p.x), std::round(p.y)};  // onto sides and each other
      }
      const Set out = clipped(ClipPolygonSetToView, in, view, scale);
      expect_clipped(in, out, view, [](long winding) { return winding; });
      for (const auto& [p, flag] : out) {
        EXPECT_TRUE(i % 4 != 0 || (std::fabs(p.x) <= 4 && std::fabs(p.y) <= 4)) << "outside";
      }
    }
  });
}

const Set around = {{{-1, -1}, 1}, {{30, -1}, 1}, {{-1, 30}, 3}};

TEST(ClipPolygonSetToView, GivesEachPolygonOneRingOrNone) {
  const auto clip = ClipPolygonSetToView;
  const Set inside = {{{1, 1}, 1}, {{1, 1}, 0}, {{4, 4}, 3}};
  expect_rings(clip, inside, inside, "inside, with a duplicate");
  expect_rings(clip, around, {{{0, 10}, 0}, {{0, 0}, 0}, {{10, 0}, 0}, {{10, 10}, 2}}, "around");
  expect_rings(clip, {{{-5, -5}, 1}, {{5, 5}, 1}, {{-5, 5}, 3}},
               {{{0, 0}, 1}, {{5, 5}, 1}, {{0, 5}, 2}}, "in through a corner");
  for (const double v : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
    expect_rings(clip, {{{1, 1}, 1}, {{v, 2}, 1}, {{2, 3}, 3}}, {}, "x is not finite");
    expect_rings(clip, {{{1, 1}, 1}, {{2, v}, 1}, {{2, 3}, 3}}, {}, "y is not finite");
  }
}

TEST(ClipPolygonSetToView, TakesAnyConvexView) {
  const auto to_view = [](real_rect_t view) { return clipped(ClipPolygonSetToView, around, view); };
  EXPECT_EQ(to_view({{{-2, -2}, {50, -3}, {9, 60}, {-4, 40}}}), around);
  EXPECT_EQ(to_view({{{0, 0}, {10, 0}, {2, 2}, {0, 10}}}), Set{}) << "not convex";
  EXPECT_EQ(to_view({{{0, 0}, {10, 10}, {0, 10}, {10, 0}}}), Set{}) << "crosses over";
  EXPECT_EQ(to_view({{{0, 0}, {0, HUGE_VAL}, {10, HUGE_VAL}, {10, 0}}}), Set{}) << "not finite";
}
