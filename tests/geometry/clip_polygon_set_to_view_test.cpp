#include "geometry/clip_model.h"
#include "support/vector_forms.h"

#include <algorithm>

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
  const Set corner = {{{4, 16}, 1}, {{16, std::nextafter(4, 0)}, 1}, {{17, 17}, 3}};
  expect_rings(clip, corner, {}, "cuts off a corner that rounds to one point");
  for (const double v : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
    expect_rings(clip, {{{1, 1}, 1}, {{v, 2}, 1}, {{2, 3}, 3}}, {}, "x is not finite");
    expect_rings(clip, {{{1, 1}, 1}, {{2, v}, 1}, {{2, 3}, 3}}, {}, "y is not finite");
  }
}

TEST(ClipPolygonSetToView, TakesAnyConvexView) {
  const auto to_view = [](real_rect_t view) { return clipped(ClipPolygonSetToView, around, view); };
  EXPECT_EQ(to_view({{{-2, -2}, {50, -3}, {9, 60}, {-4, 40}}}), around);
  real_rect_t dart = {{{0, 0}, {10, 0}, {2, 2}, {0, 10}}};
  for (int k = 0; k < 4; ++k) {
    EXPECT_EQ(to_view(dart), Set{}) << "not convex at corner " << (6 - k) % 4;
    std::rotate(dart.corners, dart.corners + 1, dart.corners + 4);
  }
  EXPECT_EQ(to_view({{{0, 0}, {10, 10}, {0, 10}, {10, 0}}}), Set{}) << "crosses over";
  EXPECT_EQ(to_view({{{0, 0}, {5, 0}, {10, 0}, {5, 9}}}), Set{}) << "three corners in line";
  EXPECT_EQ(to_view({{{0, 0}, {0, 0}, {10, 0}, {5, 9}}}), Set{}) << "a corner repeated";
  EXPECT_EQ(to_view({{{0, 0}, {0, HUGE_VAL}, {10, HUGE_VAL}, {10, 0}}}), Set{}) << "not finite";
}

#ifdef __SIZEOF_INT128__
__extension__ using Wide = __int128;

// How far p is, in the coordinate that is farther off, from where the line through a and b meets
// the line from `start` along (x, y). Exact for whole numbers; a fraction of p is dropped.
static double off_crossing(real_pt_t p, real_pt_t a, real_pt_t b, real_pt_t start, int x, int y) {
  const auto difference = [](double v, double from) {
    return static_cast<Wide>(v) - static_cast<Wide>(from);
  };
  const Wide edge_x = difference(b.x, a.x), edge_y = difference(b.y, a.y);
  const Wide share = difference(a.x, start.x) * edge_y - difference(a.y, start.y) * edge_x;
  const Wide whole = x * edge_y - y * edge_x;
  const auto error = [&](Wide way, Wide side) {
    return std::fabs(static_cast<double>(way * whole - side * share) / static_cast<double>(whole));
  };
  return std::max(error(difference(p.x, start.x), x), error(difference(p.y, start.y), y));
}

// Where the largest coordinate of a view is from 2^52 to 2^53, its unit in the last place is 1.
TEST(ClipPolygonSetToView, CutsWithinTheStatedUnits) {
  const struct {
    const char* view;
    real_pt_t corner;
    int x, y;       // the first side's direction; the others follow by quarter turns
    double size;    // of a side, times its direction
    int doublings;  // of that, less than for the longest edge
    int most_units;
  } rows[] = {
      {"upright, far away", {0x1p52, -0x1p52 - 9999}, 1, 0, 4000, 50, 3},
      {"turned, far away", {0x1p52 + 9999, 0x1p52}, 3, 4, 1000, 50, 3},
      {"upright, about the origin", {-0x1p52, -0x1p52}, 1, 0, 0x1p53, 6, 64},
      {"turned, about the origin", {0x1p50, -0x1.cp52}, 3, 4, 0x1p51, 6, 64},
  };
  support::Random random(1);
  for (const auto& row : rows) {
    const auto place = [&](double right, double up) -> real_pt_t {
      return {row.corner.x + row.size * (right * row.x - up * row.y),
              row.corner.y + row.size * (right * row.y + up * row.x)};
    };
    const real_rect_t view = {{place(0, 0), place(1, 0), place(1, 1), place(0, 1)}};
    int n_crossings = 0;
    for (int i = 0; i < 4000; ++i) {
      const real_pt_t inside = place(random.unit(), random.unit());
      const double way_x = random.between(-1, 1), way_y = random.between(-1, 1);
      const auto end = [&](int sign) -> real_pt_t {
        const double length = sign * std::ldexp(row.size, random.below(row.doublings));
        return {std::round(inside.x + length * way_x), std::round(inside.y + length * way_y)};
      };
      const real_pt_t a = end(-1), b = end(1);
      const auto expect_near = [&](real_pt_t p) {
        if (p == a || p == b) return;
        const auto off = [&](int corner, int x, int y) {
          return off_crossing(p, a, b, view.corners[corner], x, y);
        };
        const double least = std::min({off(0, row.x, row.y), off(1, -row.y, row.x),
                                       off(3, row.x, row.y), off(0, -row.y, row.x)});
        EXPECT_LE(least, row.most_units)
            << row.view << ", cuts the edge from " << testing::PrintToString(a) << " to "
            << testing::PrintToString(b) << " at " << testing::PrintToString(p);
        const real_pt_t &low = view.corners[0], &high = view.corners[2];
        const bool is_on_side = p.x == low.x || p.x == high.x || p.y == low.y || p.y == high.y;
        EXPECT_TRUE(row.y != 0 || is_on_side)
            << row.view << ", off the sides: " << testing::PrintToString(p);
        ++n_crossings;
      };
      const Set out = clipped(ClipPolygonSetToView, {{a, 1}, {b, 3}}, view);
      for_each_edge(out, [&](Place from, Place to, bool is_visible) {
        if (!is_visible) return;  // by way of corners
        expect_near({from.real(), from.imag()});
        expect_near({to.real(), to.imag()});
      });
    }
    EXPECT_GT(n_crossings, 4000) << row.view;
  }
}
#endif
