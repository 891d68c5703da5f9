#include <zelvan/geometry/distance.h>

#include <cmath>

#include <gtest/gtest.h>

static double estimate(double longer, double shorter) { return 0.96 * longer + 0.398 * shorter; }

TEST(PointPoint, EstimatesFromBothDifferences) {
  real_pt_t p = {4, 7}, q = {1, 12};
  EXPECT_EQ(utl_point_point(&p, &q), estimate(5, 3));
}

static void expect_to_line(real_pt_t p, real_pt_t a, real_pt_t b, double wanted, const char* why) {
  EXPECT_DOUBLE_EQ(utl_point_line(&p, &a, &b), wanted) << why;
  EXPECT_DOUBLE_EQ(utl_point_line(&p, &b, &a), wanted) << why << ", ends swapped";
  for (real_pt_t* q : {&p, &a, &b}) *q = {-q->x, -q->y};
  EXPECT_DOUBLE_EQ(utl_point_line(&p, &a, &b), wanted) << why << ", after a half turn";
}

TEST(PointLine, MeasuresToTheNearestPointOfTheSegment) {
  expect_to_line({-3, 5}, {0, 0}, {10, 0}, estimate(5, 3), "left of a level segment");
  expect_to_line({3, -1}, {0, 9}, {0, 1}, estimate(3, 2), "below a vertical one");
  expect_to_line({2, 5}, {1, 2}, {5, 4}, estimate(2, 1), "above its foot (3, 3)");
  expect_to_line({6, 7}, {1, 2}, {5, 4}, estimate(3, 1), "past its high end");
}

TEST(PointBox, IsZeroInsideAndOnTheSides) {
  real_pt_t upright[] = {{0, 0}, {10, 0}, {0, 10}, {10, 10}};
  real_pt_t turned[] = {{0, 0}, {10, 10}, {-5, 5}, {5, 15}};
  const auto distance = [](real_pt_t p, real_pt_t* box) { return utl_point_box(&p, box); };
  for (const auto& p : upright) EXPECT_EQ(distance(p, upright), 0) << testing::PrintToString(p);
  EXPECT_NEAR(distance({5, -3}, upright), estimate(3, 0), 1e-12);
  EXPECT_EQ(distance({6.25, 8.75}, turned), 0);
  EXPECT_NEAR(distance({7, 3}, turned), estimate(2, 2), 1e-12) << "to the foot (5, 5)";
}

TEST(PointCircarc, IsTrueWithinTheArcAndEstimatedBeyondItsEnds) {
  real_pt_t center = {1, 2}, a = {6, 2}, b = {1, 7};
  const auto distance = [&](real_pt_t p, short clockwise) {
    return utl_point_circarc(&p, &center, 5, &a, &b, clockwise);
  };
  EXPECT_EQ(distance({7, 10}, 0), 5) << "of a quarter";
  EXPECT_EQ(distance({-5, 10}, 0), estimate(6, 3)) << "to the upper end";
  EXPECT_EQ(distance({-5, 10}, 1), 5) << "of the rest";
  EXPECT_EQ(distance({4, 6}, 1), estimate(3, 1)) << "to the upper end";
}

TEST(PointConarc, MeasuresToTheNearestSample) {
  const auto distance = [](real_pt_t p, utl_conic_t conic) { return utl_point_conarc(&p, &conic); };
  const real_pt_t p = {std::cos(M_PI / 36), std::sin(M_PI / 36)};  // at 5 degrees
  EXPECT_NEAR(distance(p, {1, 0, 1, 0, 0, -1, {1, 0}, {1, 0}, 0}), 0, 1e-12) << "a whole circle";
  const double r = std::sqrt(2);
  const utl_conic_t turned = {5, -6, 5, 0, 0, -32, {2 * r, 2 * r}, {-2 * r, -2 * r}, 0};
  EXPECT_NEAR(distance({-2, 2}, turned), estimate(2 - r, 2 - r), 0.1) << "to the vertex (-r, r)";
  const utl_conic_t hyperbola = {1, 0, -1, -2, 0, -2, {-1, -1}, {-1, 1}, 0};  // (x-1)^2 - y^2 = 3
  EXPECT_NEAR(distance({9, 0}, hyperbola), estimate(8 + std::sqrt(3), 0), 0.1) << "left branch";
  const utl_conic_t parabola = {.5, 0, 0, 0, -1, 0, {-39, 760.5}, {39, 760.5}, 0};  // y = x^2 / 2
  EXPECT_NEAR(distance({0, -9}, parabola), estimate(9.5, 1), 1e-12) << "40, one at each odd x";
  EXPECT_EQ(distance({0, 9}, {0, 1, 0, 0, 0, -1, {-3, 7}, {3, 7}, 0}), estimate(2, 0)) << "line";
  EXPECT_EQ(distance(p, {1, 2, 1, 0, 0, -2, {1, 0}, {0, 1}, 0}), 6.022e+23) << "parallel lines";
}
