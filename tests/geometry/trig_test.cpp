#include <zelvan/geometry/trig.h>

#include "support/printers.h"

#include <gtest/gtest.h>

TEST(RotatePoint, TurnsCounterClockwiseAboutTheCenter) {
  real_pt_t center = {3, 4}, point = {5, 5};
  utl_rotate_point(&center, &point, 1, 0);  // the sine and cosine of a quarter
  EXPECT_EQ(point, (real_pt_t{2, 6}));
}

TEST(Angle2d, IsTheShorterTurn) {
  const double pi = 3.141592654;
  EXPECT_NEAR(utl_angle2d(-1, 1, -1, -1), M_PI / 2, 1e-8) << "over due west";
  EXPECT_NEAR(utl_angle2d(-1, -1, -1, 1), -M_PI / 2, 1e-8) << "and back";
  EXPECT_EQ(utl_angle2d(1, M_PI - pi, -1, 0), pi) << "half a turn by the ten digits stays";
}

TEST(GetTrig, TakesWholeDegreesOfAnySize) {
  for (const int degrees : {30, 390, -330, 1110, -1050}) {
    double sine, cosine;
    drw_get_trig(degrees, &sine, &cosine);
    EXPECT_NEAR(std::atan2(sine, cosine), M_PI / 6, 1e-9) << degrees;
  }
}
