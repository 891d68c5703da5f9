#include <zelvan/geometry/extent.h>

#include <algorithm>
#include <cmath>
#include <string>

#include <gtest/gtest.h>

struct Box {
  real_pt_t max, min;
};

static void expect_box(const Box& box, const Box& wanted, const std::string& why) {
  EXPECT_NEAR(box.max.x, wanted.max.x, 1e-4) << why;
  EXPECT_NEAR(box.max.y, wanted.max.y, 1e-4) << why;
  EXPECT_NEAR(box.min.x, wanted.min.x, 1e-4) << why;
  EXPECT_NEAR(box.min.y, wanted.min.y, 1e-4) << why;
}

static void expect_arc(real_pt_t from, real_pt_t to, const Box& wanted, const std::string& why) {
  real_pt_t center = {0, 0};
  Box box;
  utl_maxmin_arc(&center, 5, &from, &to, 0, &box.max, &box.min);
  expect_box(box, wanted, why);
  utl_maxmin_arc(&center, 5, &to, &from, 1, &to, &from);  // the ends may be overwritten
  expect_box({to, from}, wanted, why + ", clockwise");
}

TEST(MaxminArc, IsTheBoxOfTheArc) {
  const real_pt_t ends[] = {{4, 3}, {-3, 4}, {-4, -3}, {3, -4}};
  const real_pt_t axes[] = {{0, 5}, {-5, 0}, {0, -5}, {5, 0}};
  for (const int from : {0, 1, 2, 3}) {
    Box wanted = {ends[from], ends[from]};
    for (int to = from + 1; to <= from + 4; ++to) {
      for (const auto [x, y] : {axes[(to - 1) % 4], ends[to % 4]}) {
        wanted.max = {std::max(wanted.max.x, x), std::max(wanted.max.y, y)};
        wanted.min = {std::min(wanted.min.x, x), std::min(wanted.min.y, y)};
      }
      const std::string why = "quadrant " + std::to_string(from) + " to " + std::to_string(to % 4);
      expect_arc(ends[from], ends[to % 4], wanted, why);
    }
  }
}

TEST(MaxminArc, TakesTheEndsAsTheyAre) {
  expect_arc({4, 1}, {3, 2}, {{4, 2}, {3, 1}}, "within a quadrant");
  expect_arc({9, 0}, {0, 7}, {{9, 7}, {0, 0}}, "off the circle, to due north, in quadrant 0");
  expect_arc({-9, 0}, {0, -7}, {{0, 0}, {-5, -5}}, "due west, in quadrant 1, to due south, in 3");
  expect_arc({0, -5}, {5, -1e-17}, {{5, 0}, {0, -5}}, "to a hair below due east");
  expect_arc({4, 1}, {0, 0}, {{0, 0}, {0, 0}}, "an end on the center");
}

TEST(MaxminConic, IsTheBoxOf40Samples) {
  utl_conic_t parabola = {.5, 0, 0, 0, -1, 0, {-39, 760.5}, {39, 760.5}, 0};  // y = x^2 / 2
  Box box;
  utl_maxmin_conic(&parabola, &box.max, &box.min);
  expect_box(box, {{39, 760.5}, {-39, .5}}, "one at each odd x");
}

TEST(MaxminCubic, HoldsTheTurningPoints) {
  double x_and_y[] = {64, -96, 21, 0, 0, 4, -4, 0};
  Box box;
  utl_maxmin_cubic(x_and_y, &box.max, &box.min);
  expect_box(box, {{1.25, 0}, {-12.25, -1}}, "turning at 1/8 and 7/8, and at 1/2");
  EXPECT_EQ(utl_evaluate_cubic(x_and_y, 10), 54610) << "the highest power first";
}

TEST(Maxmin, OfACircleAndOfATurnedBox) {
  real_pt_t center = {1, 4};
  Box circle;
  utl_maxmin_circle(&center, 5, &circle.max, &circle.min);
  expect_box(circle, {{6, 9}, {-4, -1}}, "circle");
  double box[] = {5, 6, 1, 4};  // from the center 0 to 4 in x and 0 to 2 in y
  utl_maxmin_rotrect(&center, box, M_PI / 2);
  expect_box({{box[2], box[3]}, {box[0], box[1]}}, {{1, 8}, {-1, 4}}, "a quarter turn");
}
