#include <zelvan/geometry/distance.h>
#include <zelvan/geometry/extent.h>
#include <zelvan/geometry/trig.h>

#include <cmath>

#include <gtest/gtest.h>

namespace {

TEST(ConicType, TellsTheKindsApart) {
  const double at = 1e-05, over = std::nextafter(at, 1);
  const double kinds[][5] = {{1, 0, 1, 0, 0},   {1, at, 1, 0, 0},       // circles
                             {1, 0, 2, 0, 0},   {1, over, 1, 0, 0},     // ellipses
                             {1, 0, -1, 0, 0},  {1, 3, 1, 0, 0},        // hyperbolas
                             {1, 2, 1, 1, 1},   {.001, 0, .001, 0, 0},  // parabolas
                             {0, 1, 0, 0, 0},   {at, at, at, 9, 9},     // lines
                             {NAN, 0, 1, 0, 0}, {INFINITY, INFINITY, 1, 0, 0}};
  for (int i = 0; i < 12; ++i) {
    const auto& [a, b, c, d, e] = kinds[i];
    utl_conic_t conic = {a, b, c, d, e, -1, {}, {}, 0};
    EXPECT_EQ(utl_conic_type(&conic), "CEHPL?"[i / 2]) << i;
  }
}

// From level, upright and slanted segments; from a box, beside a side the estimate of the way to it
// and beyond a corner less; from an arc true within its range and an estimate beyond.
TEST(Distances, AreTrueOrEstimates) {
  const double segments[][7] = {{5, 5, 0, 0, 10, 0, 4.8},
                                {20, 0, 0, 0, 10, 0, 9.6},
                                {3, -1, 0, 9, 0, 1, 3.676},
                                {9, 9, 0, 8, 8, 0, 6.79}};
  for (const auto& [x, y, ax, ay, bx, by, distance] : segments) {
    real_pt_t p = {x, y}, a = {ax, ay}, b = {bx, by};
    EXPECT_NEAR(utl_point_line(&p, &a, &b), distance, 1e-12);
    EXPECT_EQ(utl_point_line(&p, &a, &b), utl_point_line(&p, &b, &a));
  }
  real_pt_t box[] = {{0, 0}, {10, 10}, {-5, 5}, {5, 15}}, inside = {2.5, 7.5}, beside = {7, 3};
  EXPECT_EQ(utl_point_box(&inside, box), 0);
  EXPECT_NEAR(utl_point_box(&beside, box), 2.716, 1e-12);
  real_pt_t origin = {0, 0}, east = {1, 0}, north = {0, 1}, within = {3, 4};
  EXPECT_EQ(utl_point_circarc(&within, &origin, 1, &east, &north, 0), 4);
  EXPECT_EQ(utl_point_circarc(&within, &origin, 1, &north, &east, 0), 0.96 * 3 + 0.398 * 3);
}

// Where an arc about the origin crosses an axis it reaches a radius of 5 there, and else its ends,
// which tell the quadrant that rules, by coordinates off the circle and next to an axis.
TEST(Extents, ReachTheCircleOrTheEnds) {
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

// The turn between two vectors is the shorter one; at half a turn, by the ten digits of pi that
// decide, it stays.
TEST(Angles, StayAtHalfATurn) {
  const double half = 3.141592654, whole = 6.283185308, over = std::nextafter(half, 4);
  const double rows[][3] = {{M_PI - half, 0.0, half},  // y of the first and of the second vector
                            {M_PI - over, 0.0, over - whole},
                            {half - M_PI, -0.0, -half},
                            {over - M_PI, -0.0, whole - over}};
  for (const auto& [y1, y2, turn] : rows) EXPECT_EQ(utl_angle2d(1, y1, -1, y2), turn) << y1;
}

}  // namespace
