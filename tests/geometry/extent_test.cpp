#include <zelvan/geometry/extent.h>

#include "support/printers.h"

#include <gtest/gtest.h>

struct Box {
  real_pt_t max, min;
};

static void expect_box(const Box& box, const Box& wanted, const char* why) {
  EXPECT_EQ(box.max, wanted.max) << why;
  EXPECT_EQ(box.min, wanted.min) << why;
}

TEST(MaxminArc, IsTheBoxOfTheArcEitherWay) {
  // The arc runs counter-clockwise around the origin, with radius 5.
  const auto expect = [](real_pt_t from, real_pt_t to, const Box& wanted, const char* why) {
    real_pt_t center = {0, 0};
    Box box;
    utl_maxmin_arc(&center, 5, &from, &to, 0, &box.max, &box.min);
    expect_box(box, wanted, why);
    utl_maxmin_arc(&center, 5, &to, &from, 1, &to, &from);  // results may overwrite the ends
    expect_box({to, from}, wanted, why);
  };
  expect({4, 1}, {3, 2}, {{4, 2}, {3, 1}}, "within a quadrant");
  expect({3, 2}, {4, 1}, {{5, 5}, {-5, -5}}, "nearly all around");
  expect({4, 3}, {4, 3}, {{5, 5}, {-5, -5}}, "all around");
  expect({4, 3}, {-3, 4}, {{4, 5}, {-3, 3}}, "over due north");
  expect({4, 3}, {-4, -3}, {{4, 5}, {-5, -3}}, "over due north and west");
  expect({-3, 4}, {3, -4}, {{3, 4}, {-5, -5}}, "over due west and south");
  expect({-4, -3}, {4, 3}, {{5, 3}, {-4, -5}}, "over due south and east");
  expect({3, -4}, {4, 3}, {{5, 3}, {3, -4}}, "over due east");
  expect({0, 0}, {4, 3}, {{0, 0}, {0, 0}}, "one end is the centre");
  expect({4, 3}, {0, 0}, {{0, 0}, {0, 0}}, "the other end is");
  expect({NAN, 1}, {4, 3}, {{NAN, NAN}, {NAN, NAN}}, "one end is no number");
  expect({4, 3}, {NAN, 1}, {{NAN, NAN}, {NAN, NAN}}, "the other end is no number");
  expect({9, 0}, {0, 7}, {{9, 7}, {0, 0}}, "off the circle, from due east to due north");
}

TEST(MaxminCircle, ReachesARadiusAround) {
  real_pt_t center = {1, 2};
  Box box;
  utl_maxmin_circle(&center, 5, &box.max, &box.min);
  expect_box(box, {{6, 7}, {-4, -3}}, "a circle");
}

TEST(MaxminConic, HoldsTheEndsAndTheSamples) {
  utl_conic_t parabola = {.5, 0, 0, 0, -1, 0, {-39, 760.5}, {39, 760.5}, 0};  // y = x^2 / 2
  Box box;
  utl_maxmin_conic(&parabola, &box.max, &box.min);
  expect_box(box, {{39, 760.5}, {-39, 0.5}}, "40 samples, one at each odd x");
}

TEST(MaxminCubic, HoldsTheTurningPointsFrom0To1) {
  const double small = 0x1p-10;  // turning points of small curves count as well
  double inside[] = {64 * small, -96 * small, 21 * small, 0, 0, 4, -4, 0};
  double outside[] = {0, 1, 1, 0, 0, 1, -4, 0};
  Box box;
  utl_maxmin_cubic(inside, &box.max, &box.min);
  expect_box(box, {{1.25 * small, 0}, {-12.25 * small, -1}}, "x turns at 1/8 and 7/8, y at 1/2");
  utl_maxmin_cubic(outside, &box.max, &box.min);
  expect_box(box, {{2, 0}, {0, -3}}, "x turns at -1/2, y at 2");
}

TEST(MaxminRotrect, IsTheBoxOfTheTurnedBox) {
  real_pt_t center = {1, 2};
  double box[] = {1, 2, 6, 12};  // of 5 by 10, turned by sine 0.8 and cosine 0.6
  utl_maxmin_rotrect(&center, box, std::atan2(4, 3));
  const double wanted[] = {1 - 8, 2, 1 + 3, 2 + 4 + 6};
  for (int i = 0; i < 4; ++i) EXPECT_NEAR(box[i], wanted[i], 1e-12) << "number " << i;
}
