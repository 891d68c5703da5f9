#include <zelvan/geometry/extent.h>

#include <algorithm>
#include <array>
#include <cmath>

#include <gtest/gtest.h>

namespace {

using Box = std::array<double, 4>;  // how far it reaches: max x, max y, -min x, -min y

// That of points from 0 to `count`.
Box box_of_points(int count, auto point_at) {
  Box box = {-1e300, -1e300, -1e300, -1e300};
  for (int i = 0; i <= count; ++i) {
    const auto [x, y] = point_at(i);
    box = {std::max(box[0], x), std::max(box[1], y), std::max(box[2], -x), std::max(box[3], -y)};
  }
  return box;
}

void expect_near(const Box& a, const Box& b, double gap) {
  for (int i = 0; i < 4; ++i) EXPECT_NEAR(a[i], b[i], gap) << i;
}

Box arc(real_pt_t center, float radius, real_pt_t a, real_pt_t b, short clockwise) {
  real_pt_t max, min;
  utl_maxmin_arc(&center, radius, &a, &b, clockwise, &max, &min);
  return {max.x, max.y, -min.x, -min.y};
}

// All arcs of a circle between directions 15 degrees apart, the four axes among them, against
// the points of the arc in half degrees.
TEST(MaxminArc, IsTheBoxOfEveryArc) {
  const auto at = [](int i) -> real_pt_t {
    return {3 + 10 * std::cos(i % 720 * M_PI / 360), 10 * std::sin(i % 720 * M_PI / 360)};
  };
  for (int from = 0; from < 720; from += 30) {
    for (int to = from + 30; to <= from + 720; to += 30) {
      SCOPED_TRACE(testing::Message() << from / 2 << " to " << to / 2 << " degrees");
      const Box got = arc({3, 0}, 10, at(from), at(to), 0);
      expect_near(got, box_of_points(to - from, [&](int i) { return at(from + i); }), 1e-12);
      EXPECT_EQ(got, arc({3, 0}, 10, at(to), at(from), 1));
    }
  }
}

// The ends tell which quadrant rules, by coordinates off the circle and next to an axis.
TEST(MaxminArc, TakesTheEndsAsTheyAre) {
  const double hair = -1e-17;
  const struct {
    real_pt_t a, b;
    Box expected;
  } rows[] = {
      {{9, 0}, {0, 7}, {9, 7, 0, 0}},         // due east and due north are in quadrant 0
      {{0, 7}, {-9, 0}, {0, 5, 9, 0}},        // due west is in quadrant 1
      {{-9, 0}, {0, -7}, {0, 0, 5, 5}},       // due south is in quadrant 3
      {{0, 0}, {5, 0}, {0, 0, 0, 0}},         // an end on the centre
      {{4, 2}, {4, 1}, {5, 5, 5, 5}},         // the start ahead of the end
      {{0, -5}, {5, hair}, {5, hair, 0, 5}},  // a hair below east
  };
  for (const auto& row : rows) EXPECT_EQ(arc({0, 0}, 5, row.a, row.b, 0), row.expected);
}

TEST(Maxmin, GivesTheKnownBoxes) {
  real_pt_t center = {1, 1}, max, min;
  double cubics[] = {1, -1, 0, 0, 0, 3, -3, 1}, box[] = {4, 1, 2, 3};
  utl_maxmin_cubic(cubics, &max, &min);  // t^3 - t^2 and 3 t^2 - 3 t + 1
  expect_near({max.x, max.y, -min.x, -min.y}, {0, 1, 4 / 27.0, -0.25}, 1e-15);
  utl_maxmin_rotrect(&center, box, M_PI / 2);
  expect_near({box[2], box[3], -box[0], -box[1]}, {1, 4, 1, -2}, 1e-15);
}

}  // namespace
