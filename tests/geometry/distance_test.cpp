#include <zelvan/geometry/distance.h>

#include "support/random.h"

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

namespace {

double estimate(double dx, double dy) {
  dx = std::fabs(dx), dy = std::fabs(dy);
  return 0.96 * std::max(dx, dy) + 0.398 * std::min(dx, dy);
}

// The nearest point found by projection, for ends in either order, ends that coincide, and
// upright and level segments.
TEST(PointLine, EstimatesToTheNearestPoint) {
  for (unsigned seed = 1; seed <= 20000; ++seed) {
    support::Random random(seed);
    real_pt_t p, a, b;
    for (double* v : {&p.x, &p.y, &a.x, &a.y, &b.x, &b.y}) {
      *v = seed % 2 == 0 ? random.below(5) : random.between(-9, 9);
    }
    const double dx = b.x - a.x, dy = b.y - a.y, length = dx * dx + dy * dy;
    const double along = length == 0 ? 0 : ((p.x - a.x) * dx + (p.y - a.y) * dy) / length;
    const double t = std::clamp(along, 0.0, 1.0), got = utl_point_line(&p, &a, &b);
    ASSERT_NEAR(got, estimate(p.x - a.x - t * dx, p.y - a.y - t * dy), 1e-9) << "seed " << seed;
    ASSERT_EQ(got, utl_point_line(&p, &b, &a)) << "seed " << seed;
    ASSERT_EQ(utl_point_point(&a, &b), estimate(dx, dy)) << "seed " << seed;
  }
}

// An upright box and one turned by 45 degrees: 0.0 within, beside a side the estimate of the way
// to it, beyond a corner less.
TEST(PointBox, MeasuresFromTheSides) {
  real_pt_t upright[] = {{0, 0}, {10, 0}, {0, 10}, {10, 10}};
  real_pt_t turned[] = {{0, 0}, {10, 10}, {-5, 5}, {5, 15}};
  const struct {
    real_pt_t *box, p;
    double distance;
  } rows[] = {{upright, {5, 5}, 0},        {upright, {10, 3}, 0},    {upright, {15, 5}, 4.8},
              {upright, {-3, 5}, 2.88},    {upright, {4, -1}, 0.96}, {upright, {11, 11}, 1.358},
              {turned, {2.5, 7.5}, 0},     {turned, {7, 3}, 2.716},  {turned, {-3, 13}, 4.074},
              {turned, {-3.5, 1.5}, 1.358}};
  for (auto row : rows) EXPECT_NEAR(utl_point_box(&row.p, row.box), row.distance, 1e-12) << row.p.x;
}

// All arcs between directions 15 degrees apart, both ways round, and a point in every direction
// between: true within the arc's range, the nearer end's estimate outside it.
TEST(PointCircarc, IsTrueWithinTheArcAndAnEstimateBeyond) {
  real_pt_t center = {4, 5};
  const auto at = [&](double step, double r) -> real_pt_t {
    return {center.x + r * std::cos(step * M_PI / 12), center.y + r * std::sin(step * M_PI / 12)};
  };
  for (int i = 0; i < 24 * 24 * 24; ++i) {
    const int from = i % 24, to = i / 24 % 24;
    const double point = i / (24 * 24) + 0.5;
    real_pt_t a = at(from, 2), b = at(to, 2), p = at(point, 5);
    const bool within = std::fmod(point - from + 24, 24) < (to - from + 24) % 24;
    const double expected = within ? 3 : std::min(utl_point_point(&p, &a), utl_point_point(&p, &b));
    ASSERT_NEAR(utl_point_circarc(&p, &center, 2, &a, &b, 0), expected, 1e-12) << i;
    ASSERT_NEAR(utl_point_circarc(&p, &center, 2, &b, &a, -1), expected, 1e-12) << i;
  }
  EXPECT_EQ(utl_point_circle(&center, &center, 7), 7.0);
}

// The distance to a sample is 0.0, and half a step beside it it is not.
TEST(PointConarc, MeasuresToTheSamples) {
  const double nan = std::nan(""), s = std::sin(0.05), c = std::cos(0.05), h = M_PI / 72;
  const struct {
    utl_conic_t conic;
    real_pt_t p;
    double distance;
  } rows[] = {
      {{1, 0, 1, 0, 0, -1, {1, 0}, {1, 0}, 0}, {std::cos(142 * h), std::sin(142 * h)}, 0},
      {{1, 0, 1, 0, 0, -1, {1, 0}, {1, 0}, 0}, {1, 0.04}, 0.0384},
      {{1, 0, 1, 0, 0, -1, {c, -s}, {c, s}, 0}, {1, 0}, 0},            // 3 samples at least
      {{1, 0, 0, 0, -1, 0, {-39, 1521}, {39, 1521}, 0}, {-5, 25}, 0},  // step 2
      {{1, 0, 0, 0, -1, 0, {-39, 1521}, {39, 1521}, 0}, {0, 1}, 0.96},
      {{0, 0, 0, 9, 9, 9, {0, 0}, {10, 0}, 0}, {5, 5}, 4.8},         // a line: to the segment
      {{nan, 0, 1, 0, 0, 0, {5, 5}, {5, 5}, 0}, {5, 5}, 6.022e+23},  // unknown
      {{1, 0, 1, 0, 0, nan, {5, 5}, {5, 5}, 0}, {5, 5}, 6.022e+23},  // no sample compares
      {{1, 0, 1e6, 0, 0, -1, {0, 1}, {-1, 0}, 0}, {3, 0}, 1.92},     // flat: at parameter 0.0
  };
  for (auto row : rows) EXPECT_NEAR(utl_point_conarc(&row.p, &row.conic), row.distance, 1e-9);
}

}  // namespace
