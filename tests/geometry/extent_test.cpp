#include <zelvan/geometry/extent.h>

#include <cmath>

#include <gtest/gtest.h>

struct Box {
  real_pt_t max, min;
};

static void expect_box(const Box& box, const Box& wanted, const char* why) {
  EXPECT_NEAR(box.max.x, wanted.max.x, 1e-4) << why;
  EXPECT_NEAR(box.max.y, wanted.max.y, 1e-4) << why;
  EXPECT_NEAR(box.min.x, wanted.min.x, 1e-4) << why;
  EXPECT_NEAR(box.min.y, wanted.min.y, 1e-4) << why;
}

TEST(MaxminArc, IsTheBoxOfTheArcEitherWay) {
  const struct {
    real_pt_t from, to;  // counter-clockwise around the origin, with radius 5
    Box wanted;
    const char* why;
  } rows[] = {
      {{4, 1}, {3, 2}, {{4, 2}, {3, 1}}, "within a quadrant"},
      {{3, 2}, {4, 1}, {{5, 5}, {-5, -5}}, "nearly all around"},
      {{4, 3}, {4, 3}, {{5, 5}, {-5, -5}}, "all around"},
      {{4, 3}, {-3, 4}, {{4, 5}, {-3, 3}}, "over due north"},
      {{4, 3}, {-4, -3}, {{4, 5}, {-5, -3}}, "over due north and west"},
      {{-3, 4}, {3, -4}, {{3, 4}, {-5, -5}}, "over due west and south"},
      {{-4, -3}, {4, 3}, {{5, 3}, {-4, -5}}, "over due south and east"},
      {{3, -4}, {4, 3}, {{5, 3}, {3, -4}}, "over due east"},
      {{0, 0}, {4, 3}, {{0, 0}, {0, 0}}, "one end is the centre"},
      {{4, 3}, {0, 0}, {{0, 0}, {0, 0}}, "the other is"},
      {{9, 0}, {0, 7}, {{9, 7}, {0, 0}}, "off the circle, from due east to due north"},
  };
  for (auto [from, to, wanted, why] : rows) {
    real_pt_t center = {0, 0};
    Box box;
    utl_maxmin_arc(&center, 5, &from, &to, 0, &box.max, &box.min);
    expect_box(box, wanted, why);
    utl_maxmin_arc(&center, 5, &to, &from, 1, &to, &from);  // the ends may be overwritten
    expect_box({to, from}, wanted, why);
  }
}

TEST(MaxminCubic, HoldsTheTurningPoints) {
  double x_and_y[] = {64, -96, 21, 0, 0, 4, -4, 0};
  Box box;
  utl_maxmin_cubic(x_and_y, &box.max, &box.min);
  expect_box(box, {{1.25, 0}, {-12.25, -1}}, "turning at 1/8 and 7/8, and at 1/2");
}

TEST(MaxminRotrect, IsTheBoxOfTheTurnedBox) {
  real_pt_t center = {1, 1};
  double box[] = {1, 1, 4, 2};  // turned to 0, 1 to 1, 4
  utl_maxmin_rotrect(&center, box, M_PI / 2);
  expect_box({{box[2], box[3]}, {box[0], box[1]}}, {{1, 4}, {0, 1}}, "a quarter turn");
}
