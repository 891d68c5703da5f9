#include "geometry/clip_model.h"
#include "support/vector_forms.h"

#include <algorithm>
#include <cmath>

TEST(ClipPolygonSetToView, WindsAndDrawsInsideAsTheSourceDoes) {
  support::for_each_form([](const char* form) {
    support::Random random(1);
    for (int i = 0; i < 240 && !testing::Test::HasFailure(); ++i) {
      const double scale = i % 3 == 0 ? 1 : i % 3 == 1 ? 0x1p1020 : 0x1p-1024;
      SCOPED_TRACE(testing::Message() << form << ", set " << i << ", times " << scale);
      const real_rect_t& view = upright_and_other_views[i % 5];
      Set in = random_ring(&random);
      if (i % 7 < 4) in.back().flag -= 2;  // not closed: forms one polygon with the next ring
      for (const auto& vertex : random_ring(&random)) in.push_back(vertex);
      for (auto& [p, flag] : in) {
        if (i % 8 < 4) p = {std::round(p.x), std::round(p.y)};  // rounds onto sides and each other
      }
      const Set out = clipped(ClipPolygonSetToView, in, view, scale);
      expect_clipped(in, out, view, [](long winding) { return winding; });
    }
  });
}

const Set around = {{{-1, -1}, 1}, {{30, -1}, 1}, {{-1, 30}, 3}};

TEST(ClipPolygonSetToView, MakesAtMostOneRingOfEachPolygon) {
  const auto clip = zelvan_clip_polygon_set_to_view;  // calls ClipPolygonSetToView
  const Set inside = {{{1, 1}, 1}, {{1, 1}, 0}, {{4, 4}, 3}};
  const Set two = {{{1, 1}, 1}, {{1, 1}, 0}, {{4, 4}, 3}, {{9, 20}, 1}, {{20, 9}, 1}, {{30, 9}, 3}};
  expect_rings(clip, two, inside, "inside, with a duplicate; and beside a corner");
  expect_rings(clip, around, {{{0, 10}, 0}, {{0, 0}, 0}, {{10, 0}, 0}, {{10, 10}, 2}}, "around");
  expect_rings(clip, {{{1, 1}, 1}, {{-HUGE_VAL, 2}, 1}, {{2, 3}, 3}}, {}, "x is not finite");
  expect_rings(clip, {{{1, 1}, 1}, {{2, std::nan("")}, 1}, {{2, 3}, 3}}, {}, "y is not finite");
}

TEST(ClipPolygonSetToView, TakesAnyConvexView) {
  const auto to_view = [](real_rect_t view) { return clipped(ClipPolygonSetToView, around, view); };
  EXPECT_EQ(to_view({{{-2, -2}, {50, -3}, {9, 60}, {-4, 40}}}), around);
  EXPECT_EQ(to_view({{{0, 0}, {10, 0}, {2, 2}, {0, 10}}}), Set{}) << "a dent at the third corner";
  EXPECT_EQ(to_view({{{8, 8}, {10, 0}, {10, 10}, {0, 10}}}), Set{}) << "a dent at the first";
  EXPECT_EQ(to_view({{{0, 0}, {10, 10}, {0, 10}, {10, 0}}}), Set{}) << "crosses over";
  EXPECT_EQ(to_view({{{0, 0}, {5, 0}, {10, 0}, {5, 9}}}), Set{}) << "three corners in line";
  EXPECT_EQ(to_view({{{0, 0}, {0, 5}, {0, 5}, {0, 0}}}), Set{}) << "no width";
  EXPECT_EQ(to_view({{{0, 0}, {5, 0}, {5, 0}, {0, 0}}}), Set{}) << "no height";
  const Set above = {{{4, 0.75e-200}, 1}, {{7, 7}, 1}, {{1, 7}, 3}};
  EXPECT_EQ(clipped(ClipPolygonSetToView, above, {{{0, 8}, {8, 8}, {8, 1e-200}, {0, 0}}}), above)
      << "halfway along, the lowest side is at 0.5e-200";
  for (int k = 0; k < 8; ++k) {
    real_rect_t view = {{{0, 0}, {0, 10}, {10, 10}, {10, 0}}};
    (k % 2 == 0 ? view.corners[k / 2].x : view.corners[k / 2].y) = HUGE_VAL;
    EXPECT_EQ(to_view(view), Set{}) << "corner " << k / 2 << " is not finite";
  }
}

#ifdef __SIZEOF_INT128__               // on machines of 64 bits
using Quad [[gnu::mode(TF)]] = float;  // 128 bits

// Returns how far p is from where the lines ab and cd meet: the larger of the distances in x and y.
static double off_crossing(real_pt_t p, real_pt_t a, real_pt_t b, real_pt_t c, real_pt_t d) {
  const Quad edge_x = Quad(b.x) - a.x, edge_y = Quad(b.y) - a.y;
  const Quad side_x = Quad(d.x) - c.x, side_y = Quad(d.y) - c.y;
  const Quad to_side = (Quad(c.x) - a.x) * side_y - (Quad(c.y) - a.y) * side_x;
  const Quad share = to_side / (edge_x * side_y - edge_y * side_x);
  return std::fmax(std::fabs(static_cast<double>(a.x + share * edge_x - p.x)),
                   std::fabs(static_cast<double>(a.y + share * edge_y - p.y)));
}

// Where the largest coordinate of a view is from 2^52 to 2^53, its unit in the last place is 1.
TEST(ClipPolygonSetToView, CutsWithinTheStatedUnits) {
  support::Random random(1);
  // An edge's ends are less than 2^doublings * size from a point in the view.
  const auto expect = [&](const char* where, real_pt_t low, double size, int doublings,
                          int most_units) {
    const real_pt_t high = {low.x + size, low.y + size};
    int n_crossings = 0;
    for (int i = 0; i < 4000; ++i) {
      // The view: a square, or a turned one with its corners on the sides of that square.
      const double turn = i % 2 == 0 ? 0 : std::round(std::ldexp(size, -random.below(12)));
      const real_rect_t view = {{{low.x + turn, low.y},
                                 {high.x, low.y + turn},
                                 {high.x - turn, high.y},
                                 {low.x, high.y - turn}}};
      const auto& c = view.corners;
      const Place inside(random.between(low.x, high.x), random.between(low.y, high.y));
      const Place way(random.between(-1, 1), random.between(-1, 1));
      const Place before = inside - way * std::ldexp(size, random.below(doublings));
      const Place after = inside + way * std::ldexp(size, random.below(doublings));
      const real_pt_t a = {std::round(before.real()), std::round(before.imag())};
      const real_pt_t b = {std::round(after.real()), std::round(after.imag())};
      for (const auto& [p, flag] : clipped(ClipPolygonSetToView, {{a, 1}, {b, 3}}, view)) {
        if (p == a || p == b || std::count(c, c + 4, p) > 0) continue;  // no crossing
        double units = HUGE_VAL;
        for (int k = 0; k < 4; ++k)
          units = std::fmin(units, off_crossing(p, a, b, c[k], c[(k + 1) % 4]));
        SCOPED_TRACE(testing::Message()
                     << where << ", clipped to " << testing::PrintToString(view)
                     << ", cuts the edge from " << testing::PrintToString(a) << " to "
                     << testing::PrintToString(b) << " at " << testing::PrintToString(p));
        ASSERT_LE(units, most_units) << "units away from where the edge meets a side";
        const bool is_on_border = p.x == low.x || p.x == high.x || p.y == low.y || p.y == high.y;
        EXPECT_TRUE(turn > 0 || is_on_border) << "off the sides, which are upright";
        ++n_crossings;
      }
    }
    EXPECT_GT(n_crossings, 4000) << where;
  };
  expect("far away", {0x1p52, -0x1p52 - 9999}, 4000, 50, 3);
  expect("about the origin", {-0x1p52, -0x1p52}, 0x1p53, 6, 64);
}
#endif
