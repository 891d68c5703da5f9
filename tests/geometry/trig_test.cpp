#include <zelvan/geometry/trig.h>
#include <zelvan/geometry/units.h>

#include <climits>
#include <cmath>

#include <gtest/gtest.h>

// The turn between two vectors is the shorter one; at half a turn, by the ten digits of pi that
// decide, it stays. Any number of degrees is a direction.
TEST(Trig, MeasuresAndTurns) {
  real_pt_t center = {10, 20}, east = {12, 20};
  utl_rotate_point(&center, &east, 1, 0);
  EXPECT_TRUE(east.x == 10 && east.y == 22) << "due north";
  const double half = 3.141592654, whole = 6.283185308, over = std::nextafter(half, 4);
  const double rows[][3] = {{M_PI - half, 0.0, half},  // y of the first and of the second vector
                            {M_PI - over, 0.0, over - whole},
                            {half - M_PI, -0.0, -half},
                            {over - M_PI, -0.0, whole - over}};
  for (const auto& [y1, y2, turn] : rows) EXPECT_EQ(utl_angle2d(1, y1, -1, y2), turn) << y1;
  EXPECT_EQ(utl_angle2d(0, -1, -1, 0), M_PI + M_PI / 2 - whole);
  for (int degrees = 0; degrees < 360; ++degrees) {
    double sine, cosine;
    drw_get_trig(degrees + (degrees % 2 == 0 ? 720 : INT_MIN + 128), &sine, &cosine);
    EXPECT_EQ(sine, std::sin(degrees * half / 180.0)) << degrees;
    EXPECT_EQ(cosine, std::cos(degrees * half / 180.0)) << degrees;
  }
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
