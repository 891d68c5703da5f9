#include <zelvan/geometry/extent.h>

#include "support/random.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <gtest/gtest.h>

namespace {

using Box = std::array<double, 4>;  // max x, max y, min x, min y
constexpr Box nothing = {-1e300, -1e300, 1e300, 1e300};

void widen(Box* box, const real_pt_t& p) {
  auto& [max_x, max_y, min_x, min_y] = *box;
  *box = {std::max(max_x, p.x), std::max(max_y, p.y), std::min(min_x, p.x), std::min(min_y, p.y)};
}

// True when `box` lies within `other`, at most `gap` from each side.
bool fills(const Box& box, const Box& other, double gap = 0, double rounding = 1e-12) {
  for (int i = 0; i < 4; ++i) {
    const double inward = i < 2 ? other[i] - box[i] : box[i] - other[i];
    if (!(inward >= -rounding && inward <= gap + rounding)) return false;
  }
  return true;
}

template <class Function, class... Arguments>
Box box_of(Function function, Arguments... arguments) {
  real_pt_t max, min;
  function(arguments..., &max, &min);
  return {max.x, max.y, min.x, min.y};
}

Box arc(real_pt_t center, float radius, real_pt_t a, real_pt_t b, short clockwise) {
  return box_of(utl_maxmin_arc, &center, radius, &a, &b, clockwise);
}

// All arcs of a circle between directions 15 degrees apart, the four axes among them, against
// the points of the arc in half degrees.
TEST(MaxminArc, IsTheBoxOfEveryArc) {
  const auto at = [](int i) -> real_pt_t {
    return {3 + 10 * std::cos(i % 720 * M_PI / 360), 10 * std::sin(i % 720 * M_PI / 360)};
  };
  for (int from = 0; from < 720; from += 30) {
    for (int to = from + 30; to <= from + 720; to += 30) {
      Box points = nothing;
      for (int i = from; i <= to; ++i) widen(&points, at(i));
      const Box got = arc({3, 0}, 10, at(from), at(to), 0);
      EXPECT_TRUE(fills(got, points)) << from / 2 << " to " << to / 2 << " degrees";
      EXPECT_EQ(got, arc({3, 0}, 10, at(to), at(from), 1));
    }
  }
}

// The ends tell which quadrant rules, by coordinates off the circle and next to an axis.
TEST(MaxminArc, TakesTheEndsAsTheyAre) {
  const double hair = -1e-17;
  const struct {
    real_pt_t a, b;
    Box expected;
  } rows[] = {
      {{9, 0}, {0, 7}, {9, 7, 0, 0}},        // due east and due north are in quadrant 0
      {{0, 7}, {-9, 0}, {0, 5, -9, 0}},      // due west is in quadrant 1
      {{-9, 0}, {0, -7}, {0, 0, -5, -5}},    // due south is in quadrant 3
      {{0, 0}, {5, 0}, {0, 0, 0, 0}},        // an end on the centre
      {{5, hair}, {0, 5}, {5, 5, 0, hair}},  // a hair below east, in each place
      {{0, 5}, {5, hair}, {5, 5, -5, -5}},    {{0, -5}, {5, hair}, {5, hair, 0, -5}},
      {{5, hair}, {5, hair}, {5, 5, -5, -5}}, {{5, hair}, {0, -5}, {5, 5, -5, -5}},
      {{4, 2}, {4, 1}, {5, 5, -5, -5}},  // the start ahead of the end
  };
  for (const auto& row : rows) EXPECT_EQ(arc({0, 0}, 5, row.a, row.b, 0), row.expected);
  EXPECT_TRUE(std::isnan(arc({0, 0}, 5, {std::nan(""), 0}, {5, 0}, 0)[0]));
  EXPECT_EQ(arc({0, 0}, 0.1f, {1, 0}, {1, 0}, 0)[0], static_cast<double>(0.1f));
}

// A cubic's box is that of 100 000 of its points and never smaller, where a and b are zero, too.
TEST(MaxminCubic, IsTheBoxOfThePoints) {
  for (unsigned seed = 1; seed <= 32; ++seed) {
    support::Random random(seed);
    double c[8];
    for (double& v : c) v = random.between(-9, 9);
    if (seed & 1) c[0] = 0;
    if (seed & 2) c[1] = c[4] = 0;
    Box points = nothing;
    for (int i = 0; i <= 100000; ++i) {
      widen(&points, {utl_evaluate_cubic(c, i / 1e5), utl_evaluate_cubic(c + 4, i / 1e5)});
    }
    EXPECT_TRUE(fills(points, box_of(utl_maxmin_cubic, c), 1e-8)) << "seed " << seed;
  }
  double t_cubed[] = {1, -1, 0, 0, 0, 0, 0, 7};
  EXPECT_TRUE(fills(box_of(utl_maxmin_cubic, t_cubed), {0, 7, -4 / 27.0, 7}));
}

// A conic's sampled box lies within that of 100 000 of its points, and short of it by little.
TEST(MaxminConic, LiesWithinTheTrueBox) {
  for (unsigned seed = 1; seed <= 30; ++seed) {
    support::Random random(seed);
    const double m = random.between(1, 3), n = random.between(1, 3), length = random.between(1, 6);
    const double turn = 7 * random.unit(), c = std::cos(turn), s = std::sin(turn);
    const int kind = static_cast<int>(seed % 3);  // an ellipse, a hyperbola, a parabola
    const auto at = [&](double t) -> real_pt_t {
      const double open = kind == 1 ? n * std::hypot(1, t / m) : t * t / (m * m);
      const double u = kind == 0 ? m * std::cos(t) : t, v = kind == 0 ? n * std::sin(t) : open;
      return {u * c - v * s, v * c + u * s};
    };
    const double p = (kind == 1 ? -1 : 1) / (m * m), q = kind == 2 ? 0 : 1 / (n * n);
    const double e = kind == 2 ? -1 : 0, f = kind == 2 ? 0 : -1, cross = 2 * c * s * (p - q);
    const double xx = p * c * c + q * s * s, yy = p * s * s + q * c * c;
    utl_conic_t conic = {xx, cross, yy, -s * e, c * e, f, at(-1), at(length - 1), 0};
    Box points = nothing;
    for (int i = 0; i <= 100000; ++i) widen(&points, at(length * i / 1e5 - 1));
    EXPECT_TRUE(fills(box_of(utl_maxmin_conic, &conic), points, 0.0066, 1e-9)) << "seed " << seed;
  }
  for (const double a : {0.0, std::nan("")}) {  // a line and an unknown conic
    utl_conic_t conic = {a, 0, a, 1, 1, 0, {4, 1}, {2, 3}, 0};
    EXPECT_EQ(box_of(utl_maxmin_conic, &conic), (Box{4, 3, 2, 1}));
  }
}

TEST(MaxminRotrect, TurnsAndSortsTheBox) {
  real_pt_t center = {1, 1};
  double swapped[] = {4, 1, 2, 3}, quarter[] = {1, 1, 3, 2};
  utl_maxmin_rotrect(&center, swapped, 0.0);
  EXPECT_TRUE(fills({4, 3, 2, 1}, {swapped[2], swapped[3], swapped[0], swapped[1]}));
  utl_maxmin_rotrect(&center, quarter, M_PI / 2);
  EXPECT_TRUE(fills({1, 3, 0, 1}, {quarter[2], quarter[3], quarter[0], quarter[1]}));
  EXPECT_EQ(box_of(utl_maxmin_circle, &center, 3.0), (Box{4, 4, -2, -2}));
}

}  // namespace
