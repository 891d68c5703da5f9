#include <zelvan/transforms/mtx2d.h>

#include <algorithm>
#include <array>
#include <cmath>

#include <gtest/gtest.h>

namespace {

constexpr double short_pi = 3.141592654;

Mtx2D linear(double m11, double m12, double m21, double m22) {
  Mtx2D m;
  m.m11 = m11, m.m12 = m12, m.m21 = m21, m.m22 = m22;
  return m;
}

Mtx2D turned(double degrees, int mirror = 0) {
  Mtx2D m;
  m.Rotate(degrees, 2), m.mirror = mirror;
  return m;
}

Mtx2D oriented(int orient, double sx = 1, double sy = 1) {
  return {7, 8, static_cast<Mtx2DOrient>(orient), sx, sy, 9, 10};
}

// The eight orientations and matrices at the edge of each reading, under uniform scales, which
// no reading shows. The orientation is in degrees here.
TEST(Mtx2DDecompose, ReadsTurnsAndMirrors) {
  const double nan = std::nan(""), pi = M_PI, longer = short_pi / pi;
  const struct {
    Mtx2D m;
    std::array<int, 3> codes;      // mirrored; quadrants with the turn first, with the mirror first
    std::array<double, 3> angles;  // degrees; orientation, in degrees; rotation
  } rows[] = {
      {oriented(0), {0, 0, 0}, {0, 0, 0}},
      {oriented(1), {0, 1, 1}, {90, 90, pi / 2}},
      {oriented(2), {0, 2, 2}, {180, 180, pi}},
      {oriented(3), {0, 3, 3}, {270, -90, pi / 2}},
      {oriented(4), {1, 0, 0}, {0, 180, 0}},
      {oriented(5), {1, 2, 2}, {180, 180, pi}},
      {oriented(6), {1, 3, 1}, {90, -90, pi / 2}},
      {oriented(7), {1, 1, 3}, {270, -90, pi / 2}},
      {oriented(2, 3, 5), {0, 2, 2}, {180, std::acos(-3 / std::sqrt(15)) * 180 / pi, pi}},
      {oriented(1, 1e-9, 4), {0, 1, 1}, {90, 90, pi / 2}},
      {turned(30), {0, 1, 1}, {30, 30 * longer, short_pi / 6}},
      {turned(-30), {0, 3, 3}, {330, -30 * longer, short_pi / 6}},
      {turned(200), {0, 3, 3}, {560 - 360 / longer, 200 * longer - 360, 2 * pi - short_pi / 0.9}},
      {turned(60, 1), {0, 1, 1}, {60, 180 - 60 * longer, short_pi / 3}},
      {turned(60, 2), {0, 1, 1}, {60, -60 * longer, short_pi / 3}},
      {turned(0, 3), {0, 0, 0}, {0, 180, 0}},
      {linear(5, 0, 0, 3), {0, 0, 0}, {0, 0, 0}},        // the quotient is above 1
      {linear(2, 0, 0, 0), {0, 0, 0}, {0, 0, 0}},        // infinite
      {linear(-2, 0, 3, 0), {0, 2, 2}, {180, 180, pi}},  // and minus infinite
      {linear(0, 0, 3, 4), {0, -1, -1}, {nan, nan, nan}},
      {linear(1, -1e-150, 0, 1), {0, 3, 3}, {360, 0, 0}},
      {linear(1, 1e-12, 0, 1), {0, 1, 1}, {0, 0, 0}},
  };
  for (const double scale : {1.0, 0.1, 1e150}) {
    for (const auto& row : rows) {
      SCOPED_TRACE(testing::Message() << "row " << &row - rows << ", scale " << scale);
      Mtx2D m = row.m;
      m.Scale(scale, scale);
      unsigned short mirrored[3];
      int turn_first, mirror_first, mirror;
      double got[3];
      m.GetOrientationAndXMirror(&mirrored[0], &turn_first);
      m.GetXMirrorAndOrientation(&mirrored[1], &mirror_first);
      m.GetXMirrorAndRotation(&mirrored[2], &got[0]);
      m.GetOrientation(&got[1], &mirror);
      got[1] *= 180 / pi, got[2] = m.GetRotation();
      EXPECT_EQ((std::array<int, 3>{mirrored[0], turn_first, mirror_first}), row.codes);
      EXPECT_TRUE(mirrored[1] == mirrored[0] && mirrored[2] == mirrored[0] && mirror == m.mirror);
      for (int i = 0; i < 3; ++i) {
        const bool both_nan = std::isnan(got[i]) && std::isnan(row.angles[i]);
        EXPECT_TRUE(both_nan || std::fabs(got[i] - row.angles[i]) < 1e-9) << i << ' ' << got[i];
      }
    }
  }
  EXPECT_EQ(linear(3, 4, 9, 9).GetScale(), 5);
  double e[6];
  oriented(0, 3, 4).GetElements(e, e + 1, e + 2, e + 3, e + 4, e + 5);
  EXPECT_TRUE(e[0] == 3 && e[1] == 0 && e[2] == 0 && e[3] == 4 && e[4] == -12 && e[5] == -22);
}

// Across each bound in steps of about the last digit: strictly between two bounds an angle is
// drawn to the quadrant, on the bound and beyond it comes back as it was computed.
TEST(Mtx2DDecompose, SnapsStrictlyBetweenItsBounds) {
  int on_a_bound = 0;
  for (const double bound : {0.1, 89.9, 90.1, 179.9, 180.1, 269.9, 270.1, 359.9}) {
    const double quadrant = 90 * std::round(bound / 90);
    const double radians = (bound < 180 ? bound : bound - 360) * short_pi / 180;
    int snapped = 0, kept = 0;
    for (int step = -3000; step <= 3000; ++step) {
      const double a = std::cos(radians) + step * 0x1p-54, b = std::sin(radians);
      double computed = std::acos(a / std::sqrt(a * a + b * b)) * 180.0 / short_pi, got;
      if (b < 0.0) computed = 360.0 - computed;
      const bool snaps = bound > quadrant ? computed < bound : computed > bound;
      unsigned short mirrored;
      linear(a, b, -b, a).GetXMirrorAndRotation(&mirrored, &got);
      ASSERT_EQ(got, snaps ? std::fmod(quadrant, 360) : computed) << bound;
      ++(snaps ? snapped : kept);
      on_a_bound += computed == bound;
    }
    EXPECT_GT(std::min(snapped, kept), 100) << "the walk should cross " << bound;
  }
  EXPECT_GT(on_a_bound, 0);
}

}  // namespace
