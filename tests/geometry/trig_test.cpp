#include <zelvan/geometry/trig.h>

#include <cmath>

#include <gtest/gtest.h>

TEST(RotatePoint, TurnsAboutTheCentre) {
  real_pt_t center = {1, 2}, p = {1 + 5, 2 + 10};
  utl_rotate_point(&center, &p, 0.8, 0.6);
  EXPECT_NEAR(p.x, 1 + 3 - 8, 1e-12) << "(6, 12) about (1, 2), by sine 0.8 and cosine 0.6";
  EXPECT_NEAR(p.y, 2 + 4 + 6, 1e-12) << "(6, 12) about (1, 2), by sine 0.8 and cosine 0.6";
}

TEST(Angle2d, IsTheShorterTurn) {
  EXPECT_NEAR(utl_angle2d(-1, 1, -1, -1), M_PI / 2, 1e-8) << "over due west";
  EXPECT_NEAR(utl_angle2d(-1, -1, -1, 1), -M_PI / 2, 1e-8) << "and back";
}

TEST(GetTrig, TakesWholeDegreesOfAnySize) {
  double sine, cosine;
  for (const int degrees : {30, 390, -330, 1110, -1050}) {
    drw_get_trig(degrees, &sine, &cosine);
    EXPECT_NEAR(std::atan2(sine, cosine), M_PI / 6, 1e-9) << degrees;
  }
  drw_get_trig(-720, &sine, &cosine);
  EXPECT_EQ(sine, 0.0) << "whole turns are exact";
}
