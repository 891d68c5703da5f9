#include <zelvan/geometry/extent.h>

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

// All arcs of a circle between directions 15 degrees apart, the four axes among them, against
// the points of the arc in half degrees.
TEST(MaxminArc, IsTheBoxOfEveryArc) {
  real_pt_t center = {3, 0}, max, min;
  const auto at = [](int i) -> real_pt_t {
    return {3 + 10 * std::cos(i % 720 * M_PI / 360), 10 * std::sin(i % 720 * M_PI / 360)};
  };
  for (int from = 0; from < 720; from += 30) {
    for (int to = from + 30; to <= from + 720; to += 30) {
      real_pt_t a = at(from), b = at(to), high = a, low = a;
      for (int i = from; i <= to; ++i) {
        high = {std::max(high.x, at(i).x), std::max(high.y, at(i).y)};
        low = {std::min(low.x, at(i).x), std::min(low.y, at(i).y)};
      }
      utl_maxmin_arc(&center, 10, &b, &a, 1, &max, &min);
      EXPECT_NEAR(std::hypot(max.x - high.x, max.y - high.y), 0, 1e-12) << from << " to " << to;
      EXPECT_NEAR(std::hypot(min.x - low.x, min.y - low.y), 0, 1e-12) << from << " to " << to;
    }
  }
}

// The ends tell which quadrant rules, by coordinates off the circle and next to an axis.
TEST(MaxminArc, TakesTheEndsAsTheyAre) {
  const double rows[][8] = {{9, 0, 0, 7, 9, 7, 0, 0},               // due north is in quadrant 0
                            {-9, 0, 0, -7, 0, 0, -5, -5},           // due west in 1, due south in 3
                            {0, 0, 5, 0, 0, 0, 0, 0},               // an end on the centre
                            {4, 2, 4, 1, 5, 5, -5, -5},             // the start ahead of the end
                            {0, -5, 5, -1e-17, 5, -1e-17, 0, -5}};  // a hair below east
  for (const auto& [ax, ay, bx, by, max_x, max_y, min_x, min_y] : rows) {
    real_pt_t a = {ax, ay}, b = {bx, by}, center = {0, 0}, max, min;
    utl_maxmin_arc(&center, 5, &a, &b, 0, &max, &min);
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
