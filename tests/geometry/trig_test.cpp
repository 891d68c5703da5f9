#include <zelvan/geometry/trig.h>
#include <zelvan/geometry/units.h>

#include <climits>
#include <cmath>

#include <gtest/gtest.h>

// Between unit vectors 15 degrees apart the turn is the shorter one.
TEST(Trig, MeasuresAndTurns) {
  for (int from = 0; from < 24; ++from) {
    for (int turn = -11; turn <= 11; ++turn) {
      double s0, c0, s1, c1;
      drw_get_trig(15 * from, &s0, &c0);
      drw_get_trig(15 * (from + turn) - 720, &s1, &c1);
      EXPECT_NEAR(utl_angle2d(c0, s0, c1, s1), turn * M_PI / 12, 1e-8);
      real_pt_t center = {10, 20}, point = {center.x + c0, center.y + s0};
      drw_get_trig(15 * turn, &s0, &c0);
      utl_rotate_point(&center, &point, s0, c0);
      EXPECT_NEAR(point.x, center.x + c1, 1e-8);
      EXPECT_NEAR(point.y, center.y + s1, 1e-8);
    }
  }
  EXPECT_EQ(utl_angle2d(0, -1, -1, 0), M_PI + M_PI / 2 - 6.283185308);
  EXPECT_EQ(utl_angle2d(1, 0, -1, 0), M_PI);
  double sine, cosine;
  drw_get_trig(INT_MIN, &sine, &cosine);  // INT_MIN is 232 more than a multiple of 360
  EXPECT_EQ(sine, std::sin(232 * 3.141592654 / 180.0));
}

TEST(Units, CountThemInTheInch) {
  const double per_inch[] = {1,      1,        25.4, 1,     1.0 / 12, 1.5782828282828283e-05,
                             0.0254, 2.54e-05, 1000, 25400, 2.54,     1000000};
  for (const int unit : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, -1, 12, INT_MIN, INT_MAX}) {
    const double factor = unit >= 0 && unit < 12 ? per_inch[unit] : 1.0;
    EXPECT_EQ(utl_inches_to_units(12.0, unit), 12.0 * factor) << unit;
    EXPECT_EQ(utl_units_to_inches(12.0, unit), 12.0 / factor) << unit;
  }
}
