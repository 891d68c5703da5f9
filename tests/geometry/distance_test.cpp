#include <zelvan/geometry/distance.h>

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

// True within the arc's range, the nearer end's estimate outside it; both ways round.
TEST(PointCircarc, IsTrueWithinTheArcAndAnEstimateBeyond) {
  real_pt_t origin = {0, 0}, east = {1, 0}, north = {0, 1}, within = {3, 4}, beyond = {-2, 0.5};
  const double estimate = utl_point_point(&beyond, &north);
  EXPECT_EQ(utl_point_circarc(&within, &origin, 1, &east, &north, 0), 4);
  EXPECT_EQ(utl_point_circarc(&beyond, &origin, 1, &east, &north, 0), estimate);
  EXPECT_EQ(utl_point_circarc(&beyond, &origin, 1, &north, &east, -1), estimate);
  EXPECT_EQ(utl_point_circarc(&within, &origin, 1, &north, &east, 0), 0.96 * 3 + 0.398 * 3);
}
