#include <zelvan/geometry/distance.h>

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

// Of level, upright and slanted segments, in either order of the ends; of boxes an upright one and
// one turned by 45 degrees: 0.0 within, beside a side the estimate of the way to it, beyond a
// corner less.
TEST(Distance, GivesTheKnownEstimates) {
  const double segments[][7] = {{5, 5, 0, 0, 10, 0, 4.8},
                                {20, 0, 0, 0, 10, 0, 9.6},
                                {3, -1, 0, 9, 0, 1, 3.676},
                                {9, 9, 0, 8, 8, 0, 6.79}};
  for (const auto& [x, y, ax, ay, bx, by, distance] : segments) {
    real_pt_t p = {x, y}, a = {ax, ay}, b = {bx, by};
    EXPECT_NEAR(utl_point_line(&p, &a, &b), distance, 1e-12);
    EXPECT_EQ(utl_point_line(&p, &a, &b), utl_point_line(&p, &b, &a));
  }
  real_pt_t upright[] = {{0, 0}, {10, 0}, {0, 10}, {10, 10}};
  real_pt_t turned[] = {{0, 0}, {10, 10}, {-5, 5}, {5, 15}};
  const struct {
    real_pt_t *box, p;
    double distance;
  } rows[] = {{upright, {5, 5}, 0},       {upright, {10, 3}, 0},   {upright, {15, 5}, 4.8},
              {upright, {11, 11}, 1.358}, {turned, {2.5, 7.5}, 0}, {turned, {7, 3}, 2.716}};
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
}
