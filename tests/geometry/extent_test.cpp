#include <zelvan/geometry/extent.h>

#include "support/random.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <gtest/gtest.h>

namespace {

using Box = std::array<double, 4>;  // how far it reaches: max x, max y, -min x, -min y

Box box_of_points(int count, auto point_at) {
  Box box = {-1e300, -1e300, -1e300, -1e300};
  for (int i = 0; i <= count; ++i) {
    const auto [x, y] = point_at(i);
    box = {std::max(box[0], x), std::max(box[1], y), std::max(box[2], -x), std::max(box[3], -y)};
  }
  return box;
}

// True when `box` holds `points`, at most `gap` away from each side.
bool holds(const Box& box, const Box& points, double gap = 1e-12) {
  const auto fits = [&](double a, double b) { return a - b >= -1e-12 && a - b <= gap; };
  return std::equal(box.begin(), box.end(), points.begin(), fits);
}

template <class Function, class... Arguments>
Box box_of(Function function, Arguments... arguments) {
  real_pt_t max, min;
  function(arguments..., &max, &min);
  return {max.x, max.y, -min.x, -min.y};
}

Box arc(real_pt_t center, float radius, real_pt_t a, real_pt_t b, short clockwise) {
  return box_of(utl_maxmin_arc, &center, radius, &a, &b, clockwise);
}

// All arcs of a circle between directions 15 degrees apart, the four axes among them, against
// the points of the arc in half degrees.
TEST(MaxminArc, IsTheBoxOfEveryArc) {
  const auto at = [](int i) -> real_pt_t {
    return {3 + 10 * std::cos(i % 720 * M_PI / 360), 10 * std::sin(i % 720 * M_PI / 360)};
  };
  for (int from = 0; from < 720; from += 30) {
    for (int to = from + 30; to <= from + 720; to += 30) {
      const Box points = box_of_points(to - from, [&](int i) { return at(from + i); });
      const Box got = arc({3, 0}, 10, at(from), at(to), 0);
      EXPECT_TRUE(holds(got, points)) << from / 2 << " to " << to / 2 << " degrees";
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
      {{5, 0}, {0, 0}, {0, 0, 0, 0}},         // or the other
      {{4, 2}, {4, 1}, {5, 5, 5, 5}},         // the start ahead of the end
      {{5, hair}, {0, 5}, {5, 5, 0, 1e-17}},  // a hair below east, in each place
      {{0, 5}, {5, hair}, {5, 5, 5, 5}},     {{0, -5}, {5, hair}, {5, hair, 0, 5}},
      {{5, hair}, {5, hair}, {5, 5, 5, 5}},  {{5, hair}, {0, -5}, {5, 5, 5, 5}},
  };
  for (const auto& row : rows) EXPECT_EQ(arc({0, 0}, 5, row.a, row.b, 0), row.expected);
  EXPECT_TRUE(std::isnan(arc({0, 0}, 5, {std::nan(""), 0}, {5, 0}, 0)[0]));
  EXPECT_EQ(arc({0, 0}, 0.1f, {1, 0}, {1, 0}, 0)[0], static_cast<double>(0.1f));
}

// A cubic's box is that of 100 000 of its points and never smaller, where a and b are zero, too.
TEST(MaxminCubic, IsTheBoxOfThePoints) {
  for (unsigned seed = 1; seed <= 32; ++seed) {
    support::Random random(seed);
    double c[8];
    for (double& v : c) v = random.between(-9, 9);
    if (seed & 1) c[0] = 0;
    if (seed & 2) c[1] = c[4] = 0;
    const Box points = box_of_points(100000, [&](int i) -> real_pt_t {
      return {utl_evaluate_cubic(c, i / 1e5), utl_evaluate_cubic(c + 4, i / 1e5)};
    });
    EXPECT_TRUE(holds(box_of(utl_maxmin_cubic, c), points, 1e-8)) << "seed " << seed;
  }
}

TEST(Maxmin, GivesTheKnownBoxes) {
  real_pt_t center = {1, 1};
  double box[] = {4, 1, 2, 3};
  utl_maxmin_rotrect(&center, box, 0.0);
  EXPECT_TRUE(holds({box[2], box[3], -box[0], -box[1]}, {4, 3, -2, -1}));
  utl_maxmin_rotrect(&center, box, M_PI / 2);
  EXPECT_TRUE(holds({box[2], box[3], -box[0], -box[1]}, {1, 4, 1, -2}));
  EXPECT_EQ(box_of(utl_maxmin_circle, &center, 3.0), (Box{4, 4, 2, 2}));
  for (const double a : {0.0, std::nan("")}) {  // a line and an unknown conic: of the ends
    utl_conic_t conic = {a, 0, a, 1, 1, 0, {4, 1}, {2, 3}, 0};
    EXPECT_EQ(box_of(utl_maxmin_conic, &conic), (Box{4, 3, -2, -1}));
  }
}

}  // namespace
