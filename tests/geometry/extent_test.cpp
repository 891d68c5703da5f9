#include <zelvan/geometry/extent.h>

#include <gtest/gtest.h>

// Where an arc about the origin crosses an axis it reaches a radius of 5 there, and else its ends,
// which tell the quadrant that rules, by coordinates off the circle and next to an axis.
TEST(MaxminArc, ReachesTheCircleOrItsEnds) {
  const double rows[][8] = {{4, 3, -3, 4, 4, 5, -3, 3},             // over north
                            {4, 3, 4, -3, 4, 5, -5, -5},            // three axes
                            {-3, -4, 4, 3, 5, 3, -3, -5},           // over south and east
                            {9, 0, 0, 7, 9, 7, 0, 0},               // due north is in quadrant 0
                            {-9, 0, 0, -7, 0, 0, -5, -5},           // due west in 1, due south in 3
                            {0, 0, 5, 0, 0, 0, 0, 0},               // an end on the centre
                            {4, 2, 4, 1, 5, 5, -5, -5},             // the start ahead of the end
                            {0, -5, 5, -1e-17, 5, -1e-17, 0, -5}};  // a hair below east
  for (const auto& [ax, ay, bx, by, max_x, max_y, min_x, min_y] : rows) {
    real_pt_t a = {ax, ay}, b = {bx, by}, center = {0, 0}, max, min;
    utl_maxmin_arc(&center, 5, &b, &a, 1, &max, &min);
    EXPECT_TRUE(max.x == max_x && max.y == max_y && min.x == min_x && min.y == min_y) << ax;
  }
}

TEST(MaxminCubic, FindsTheTurningPoints) {
  real_pt_t max, min;
  double cubics[] = {1, -1, 0, 0, 0, 3, -3, 1};  // t^3 - t^2 and 3 t^2 - 3 t + 1
  utl_maxmin_cubic(cubics, &max, &min);
  EXPECT_TRUE(max.x == 0 && max.y == 1 && min.y == 0.25) << max.x << ' ' << max.y;
  EXPECT_NEAR(min.x, -4 / 27.0, 1e-15);
}
