#include <zelvan/geometry/clip_polygon_set_to_view.h>

#include "support/bits.h"
#include "support/guarded_array.h"
#include "support/random.h"
#include "support/vector_forms.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::GuardedArray;
using support::Random;

struct Set {
  std::vector<real_pt_t> points;
  std::vector<int> flags;

  void add(const std::vector<real_pt_t>& ring, unsigned visible = ~0u) {
    for (std::size_t i = 0; i < ring.size(); ++i) {
      points.push_back(ring[i]);
      flags.push_back(static_cast<int>(visible >> i % 32 & 1));
    }
    flags.back() += 2;
  }
};

// Clips into arrays of the stated room, which end at an unreadable page, as those of `in` do.
Set clip(const Set& in, real_rect_t rect) {
  static GuardedArray<real_pt_t> points(999), out_points(9999);
  static GuardedArray<int> flags(999), out_flags(9999);
  const int n = static_cast<int>(in.flags.size());
  const auto polygons =
      std::count_if(in.flags.begin(), in.flags.end(), [](int f) { return f > 1; });
  const auto room = 4 * n + 2 * polygons;
  drw_pset_t source = {n, points.end() - n, flags.end() - n};
  std::copy(in.points.begin(), in.points.end(), source.points);
  std::copy(in.flags.begin(), in.flags.end(), source.edge_flags);
  drw_pset_t target = {0, out_points.end() - room, out_flags.end() - room};
  ClipPolygonSetToView(&source, &target, &rect);
  return {{target.points, target.points + target.n_points},
          {target.edge_flags, target.edge_flags + target.n_points}};
}

template <class Visit>
void for_each_edge(const Set& set, Visit visit) {
  for (std::size_t i = 0, first = 0; i < set.flags.size(); ++i) {
    const bool closes = set.flags[i] > 1;
    visit(set.points[i], set.points[closes ? first : i + 1], set.flags[i] % 2 != 0);
    if (closes) first = i + 1;
  }
}

int winding(const Set& set, real_pt_t p) {
  int sum = 0;
  for_each_edge(set, [&](real_pt_t a, real_pt_t b, bool) {
    if ((a.y > p.y) == (b.y > p.y)) return;
    const double left = (b.x - a.x) * (p.y - a.y) - (p.x - a.x) * (b.y - a.y);
    sum += b.y > p.y ? left > 0 : -(left < 0);
  });
  return sum;
}

// Judges a result without any notion of how it was made.
struct Judge {
  explicit Judge(const real_rect_t& view, double turned) : c(view.corners), rounding(turned) {}
  // How far inside of side k a point is.
  double depth(int k, real_pt_t p) const {
    const real_pt_t a = c[k], b = c[(k + 1) % 4], d = c[(k + 2) % 4];
    const double along_x = b.x - a.x, along_y = b.y - a.y;
    const double sense = along_x * (d.y - a.y) - along_y * (d.x - a.x) > 0 ? 1 : -1;
    const double area = along_x * (p.y - a.y) - along_y * (p.x - a.x);
    return sense * area / std::hypot(along_x, along_y);
  }
  double depth(real_pt_t p) const {
    return std::min({depth(0, p), depth(1, p), depth(2, p), depth(3, p)});
  }
  // Of a visible edge, what is inside and not along the border.
  double length_inside(real_pt_t a, real_pt_t b) const {
    double from = 0, to = 1;
    for (int k = 0; k < 4; ++k) {
      const double at_a = depth(k, a), at_b = depth(k, b);
      if (at_a < 1e-12 && at_b < 1e-12) return 0;
      if (at_a < 0) from = std::max(from, at_a / (at_a - at_b));
      if (at_b < 0) to = std::min(to, at_a / (at_a - at_b));
    }
    return std::max(to - from, 0.0) * std::hypot(b.x - a.x, b.y - a.y);
  }
  double visible_length(const Set& set) const {
    double sum = 0;
    for_each_edge(set, [&](real_pt_t a, real_pt_t b, bool visible) {
      sum += visible ? length_inside(a, b) : 0;
    });
    return sum;
  }

  // The windings about some places, so that both fill rules agree; the visible edges; and each
  // vertex. Gives the number of places that are covered.
  int expect_right(const Set& in, const Set& out, const std::vector<real_pt_t>& places) const {
    int covered = 0;
    for (const real_pt_t& p : places) {
      const int expected = depth(p) > 0 ? winding(in, p) : 0;
      EXPECT_EQ(winding(out, p), expected) << p.x << ' ' << p.y;
      covered += expected != 0;
    }
    double length = 0;
    for_each_edge(out, [&](real_pt_t a, real_pt_t b, bool visible) {
      const bool is_own = std::any_of(in.points.begin(), in.points.end(), [&](real_pt_t p) {
        return support::bits(p) == support::bits(a);
      });
      EXPECT_TRUE(std::fabs(depth(a)) <= rounding || (is_own && depth(a) > 0)) << a.x << ' ' << a.y;
      const double inside = length_inside(a, b), whole = std::hypot(b.x - a.x, b.y - a.y);
      EXPECT_TRUE(!visible || inside > 0 || whole < 1e-12) << "visible along the border";
      length += visible ? whole : 0;
    });
    EXPECT_NEAR(length, visible_length(in), 1e-11);
    return covered;
  }
  const real_pt_t* c;
  double rounding;  // of the border; none of an upright view
};

TEST(ClipPolygonSetToView, WalksAllSmallPolygons) {
  const real_rect_t upright = {{{1, 0.5}, {2.5, 0.5}, {2.5, 2}, {1, 2}}};
  const real_rect_t turned = {{{1, 0}, {0, 1}, {2, 3}, {3, 2}}};
  const std::vector<real_pt_t> places = {{1.13, 0.61}, {1.77, 0.58}, {2.39, 0.67}, {1.21, 1.31},
                                         {1.69, 1.37}, {2.41, 1.29}, {1.17, 1.83}, {1.73, 1.91},
                                         {2.37, 1.87}, {0.71, 1.03}, {1.37, 2.61}, {2.83, 2.12}};
  long polygons = 0, covered = 0;
  for (int n = 2; n <= 5; ++n) {
    // All rings by their lowest vertex, begun at each vertex in turn.
    for (int code = 0; code < 1 << 4 * n; ++code) {
      const auto digit = [&](int i) { return code >> 4 * (i % n) & 15; };
      bool is_lowest = true;
      for (int i = 1; i < n; ++i) is_lowest = is_lowest && digit(0) <= digit(i);
      if (!is_lowest) continue;
      std::vector<real_pt_t> points;
      for (int i = 0; i < n; ++i) {
        const int at = digit(i + static_cast<int>(polygons));
        points.push_back({1.0 * (at % 4), 1.0 * (at / 4)});
      }
      Set in;
      in.add(points, static_cast<unsigned>(polygons * 2654435761u >> 16));
      covered += Judge(upright, 0).expect_right(in, clip(in, upright), places);
      covered += Judge(turned, 1e-12).expect_right(in, clip(in, turned), places);
      ++polygons;
      ASSERT_FALSE(HasFailure()) << "the polygon " << std::hex << code << " of " << n;
    }
  }
  EXPECT_EQ(polygons, 263976);
  EXPECT_GT(covered, polygons);
}

TEST(ClipPolygonSetToView, KeepsWindingsAndVisibleLength) {
  int covered = 0;
  for (unsigned seed = 1; seed <= 6000; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    Random random(seed);
    const bool on_grid = seed % 3 == 0, is_turned = seed % 4 > 1;
    const double turn = is_turned ? random.between(0, 7) : 0;
    const double w = on_grid ? 1 + random.below(9) : random.between(1, 9), h = 1 + random.below(8);
    real_rect_t view;
    for (int i = 0; i < 4; ++i) {
      const double u = i % 3 == 0 ? w : -w, v = (i < 2) == (seed % 5 < 3) ? h : -h;
      view.corners[i] = {u * std::cos(turn) - v * std::sin(turn),
                         u * std::sin(turn) + v * std::cos(turn)};
    }
    Set in;
    for (int rings = 1 + random.below(3); rings > 0; --rings) {
      std::vector<real_pt_t> ring(2 + random.below(random.below(4) == 0 ? 60 : 9));
      const double size = random.below(3) == 0 ? 3 : 12;
      for (real_pt_t& p : ring) {
        p = {random.between(-size, size), random.between(-size, size)};
        if (on_grid) p = {std::round(p.x), std::round(p.y)};
      }
      in.add(ring, random.below(4) == 0 ? ~0u : random.below(1 << 30));
    }
    std::vector<real_pt_t> places;
    for (int i = 0; i < 40; ++i) places.push_back({random.between(-9, 9), random.between(-9, 9)});
    covered += Judge(view, is_turned ? 1e-12 : 0).expect_right(in, clip(in, view), places);
    if (HasFailure()) return;
  }
  EXPECT_GT(covered, 25000);
}

}  // namespace
