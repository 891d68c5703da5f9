#include <zelvan/geometry/clip_polygon_set.h>

#include "support/bits.h"
#include "support/guarded_array.h"
#include "support/random.h"

#include <cmath>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::GuardedArray;
using support::Random;

using Flat = std::vector<double>;  // a polygon set: x, y and flag by turns

Flat operator+(Flat a, const Flat& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

Flat ring(const Flat& xy) {  // all edges visible
  Flat out;
  for (std::size_t i = 0; i < xy.size(); i += 2) out = out + Flat{xy[i], xy[i + 1], 1};
  out.back() += 2;
  return out;
}

// Clips onto what stands in the target before.
Flat clip(const Flat& in, real_rect_t rect, const Flat& before = {}) {
  const int n = static_cast<int>(in.size() / 3), kept = static_cast<int>(before.size() / 3);
  std::vector<real_pt_t> points(n), out_points(kept + 9 * n);
  std::vector<int> flags(n), out_flags(kept + 9 * n);
  for (int i = 0; i < n; ++i) {
    points[i] = {in[3 * i], in[3 * i + 1]}, flags[i] = static_cast<int>(in[3 * i + 2]);
  }
  drw_pset_t source = {n, points.data(), flags.data()};
  drw_pset_t target = {kept, out_points.data(), out_flags.data()};
  ClipPolygonSet(&source, &target, &rect);
  Flat out = before;
  for (int i = kept; i < target.n_points; ++i) {
    out = out + Flat{out_points[i].x, out_points[i].y, 1.0 * out_flags[i]};
  }
  return out;
}

TEST(ClipPolygonSet, CutsTheKnownShapes) {
  const double e = 1.1920928955078125e-07;
  const real_rect_t rect = {{{0, 0}, {0, 10}, {10, 10}, {10, 0}}};
  const Flat inside = {1, 1, 1, 1, 1, 0, 4, 1, 0, 4, 4, 2}, before = {7, 7, 1, 8, 8, 3};
  const struct {
    Flat in, out;
  } rows[] = {
      // over one corner
      {ring({5, 5, 15, 5, 15, 15, 5, 15}), {10, 5, 0, 10, 10, 0, 5, 10, 1, 5, 5, 3}},
      // a U that dips in
      {ring({2, 2, 8, 2, 8, 15, 6, 15, 6, 5, 4, 5, 4, 15, 2, 15}),
       {8, 10, 0, 6, 10, 1, 6, 5, 1, 4, 5, 1, 4, 10, 0, 2, 10, 1, 2, 2, 1, 8, 2, 3}},
      // an arch whose legs reach in
      {ring({2, 15, 8, 15, 8, 5, 6, 5, 6, 12, 4, 12, 4, 5, 2, 5}),
       {8, 10, 0, 6, 10, 1, 6, 5, 1, 8, 5, 3, 4, 10, 0, 2, 10, 1, 2, 5, 1, 4, 5, 3}},
      // around, an L around, two points across, and one point repeated
      {ring({-5, -5, 15, -5, 15, 15, -5, 15}), {0, 0, 0, 0, 10, 0, 10, 10, 0, 10, 0, 2}},
      {ring({-5, -5, 20, -5, 20, 20, 15, 20, 15, -1, -5, -1}), {}},
      {ring({-5, 5, 15, 5}), {0, 5, 0, 0, 5, 1, 10, 5, 0, 10, 5, 3}},
      {ring({5, 5, 5, 5, 5, 5}), {}},
      // a band, a closing vertex, wholly inside with a duplicate, and no closing vertex at the end
      {ring({-5, 4, 15, 4, 15, 6, -5, 6}) + Flat{1, 1, 2} + inside + Flat{5, 5, 1, 6, 6, 1},
       Flat{0, 4, 0, 0, 6, 1, 10, 6, 0, 10, 4, 3} + inside},
      // touching from outside leaves a sliver
      {ring({10, 5, 15, 3, 15, 7}), {10 + 5 * e, 5 - 2 * e, 0, 10, 5, 1, 10, 5, 3}},
  };
  for (const auto& row : rows) EXPECT_EQ(clip(row.in, rect, before), before + row.out);
}

// True when the polygons of a set hold the point by turns of in and out.
bool holds(const Flat& set, double x, double y) {
  bool is_inside = false;
  for (std::size_t first = 0, i = 0; i < set.size(); i += 3) {
    const bool closes = set[i + 2] >= 2;
    const double *a = &set[i], *b = &set[closes ? first : i + 3];
    if ((a[1] > y) != (b[1] > y) && x < a[0] + (y - a[1]) * (b[0] - a[0]) / (b[1] - a[1])) {
      is_inside = !is_inside;
    }
    if (closes) first = i + 3;
  }
  return is_inside;
}

// In general position: of simple polygons of up to 60 vertices, the area that they share with
// upright and turned rectangles of either sense.
TEST(ClipPolygonSet, KeepsTheAreaInside) {
  int cut = 0;
  for (unsigned seed = 1; seed <= 4000; ++seed) {
    Random random(seed);
    Flat xy, corners;
    const int n = 3 + random.below(58);
    const double cx = random.between(-8, 8), cy = random.between(-8, 8);
    for (int i = 0; i < n; ++i) {
      const double angle = 2 * M_PI * (i + 0.8 * random.unit()) / n, r = random.between(1, 12);
      xy = xy + Flat{cx + r * std::cos(angle), cy + r * std::sin(angle)};
    }
    real_rect_t rect;
    const double turn = seed % 2 == 0 ? 0.0 : random.between(0, 7);
    const double w = random.between(2, 9), h = random.between(2, 9);
    for (int i = 0; i < 4; ++i) {
      const double u = i % 3 == 0 ? w : -w, v = (i < 2) == (seed % 3 == 0) ? h : -h;
      real_pt_t& p = rect.corners[i];
      p = {u * std::cos(turn) - v * std::sin(turn), u * std::sin(turn) + v * std::cos(turn)};
      corners = corners + Flat{p.x, p.y};
    }
    const Flat star = ring(xy), out = clip(star, rect);
    for (int i = 0; i < 50; ++i) {
      const double x = random.between(-12, 12), y = random.between(-12, 12);
      const bool expected = holds(star, x, y) && holds(ring(corners), x, y);
      ASSERT_EQ(holds(out, x, y), expected) << "seed " << seed << " at " << x << ' ' << y;
    }
    cut += !out.empty() && out.size() != star.size();
  }
  EXPECT_GT(cut, 2000) << "most cases should be real cuts";
}

// A million sets of small whole numbers, with vertices on the sides and corners of the rectangle
// all the time, then others: close to the tolerances, infinities, NaN, any bits at all, and
// outlines that cross a side so often that the crossings are sorted. Every walk ends, nothing is
// written past the stated bound, and the last bit of each result is the same on every compiler.
TEST(ClipPolygonSet, EndsWithinItsBoundOnDegenerateSets) {
  constexpr int most = 150;
  GuardedArray<real_pt_t> points(most), out_points(9 * most);
  GuardedArray<int> flags(most), out_flags(9 * most);
  Random random(1);
  support::Digest digest;
  for (int set = 0; set < 1'200'000; ++set) {
    const int kind = set < 1'000'000 ? 0 : 1 + set % 3;
    const auto place = [&](int range, double from) {
      const double whole = random.below(range) + from, e = 1.1920928955078125e-07;
      if (kind == 2) return whole + (random.below(3) - 1) * (random.below(2) + 1) * e / 2;
      return kind == 3 && random.below(9) == 0 ? random.hard_double() : whole;
    };
    const bool is_long = set % 64 == 0;
    const int n = is_long ? most : 1 + random.below(12);
    int room = 0;
    for (int i = most - n, first = i; i < most; ++i) {
      points[i] = {place(6, -1), place(6, -1) * (kind == 1 ? 1.1754943508222875e-38 : 1.0)};
      if (i > first && random.below(8) == 0) points[i] = points[i - 1];
      flags[i] = random.below(is_long ? n : 5) == 0 ? 2 + random.below(2) : random.below(2);
      if (flags[i] >= 2) room += 5 * (i - first + 1) + 4, first = i + 1;
    }
    // A rectangle, upright or leaning; now and then flat or a point.
    const double x = place(2, 0), y = place(2, 0), w = place(5, 0), h = place(5, 0);
    const double lean = place(3, -1);
    real_rect_t rect = {{{x, y}, {x + lean, y + h}, {x + w + lean, y + h}, {x + w, y}}};
    drw_pset_t source = {n, &points[most - n], &flags[most - n]};
    drw_pset_t target = {0, out_points.end() - room, out_flags.end() - room};
    ClipPolygonSet(&source, &target, &rect);
    ASSERT_LE(target.n_points, room) << "set " << set;
    if (kind == 0 && set % 8 != 0) continue;
    digest.add(static_cast<unsigned>(target.n_points));
    for (int i = 0; i < target.n_points; ++i) {
      digest.add(target.points[i]), digest.add(static_cast<unsigned>(target.edge_flags[i]));
    }
  }
  EXPECT_EQ(digest.value(), 4316095304602819873u);
}

}  // namespace
