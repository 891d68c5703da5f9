#include <zelvan/transforms/matrix_functions.h>

#include <array>
#include <climits>
#include <cmath>

#include <gtest/gtest.h>

namespace {

// The eight orientations as they are made and as they are read, in quarter turns: with the turn
// before the mirror, with the mirror first, by the bits that record it, and without a sign.
TEST(Mtx2D, MakesAndReadsOrientations) {
  const std::array<double, 10> rows[] = {
      {2, 0, 0, 2, 80, 160, 0, 0, 0, 0},    {0, 2, -2, 0, 140, 180, 1, 1, 1, 1},
      {-2, 0, 0, -2, 120, 240, 2, 2, 2, 2}, {0, -2, 2, 0, 60, 220, 3, 3, -1, 1},
      {2, 0, 0, -2, 80, 240, 0, 0, 2, 0},   {-2, 0, 0, 2, 120, 160, 2, 2, 2, 2},
      {0, 2, 2, 0, 60, 180, 3, 1, -1, 1},   {0, -2, -2, 0, 140, 220, 1, 3, -1, 1}};
  for (int i = 0; i < 8; ++i) {
    Mtx2D m(10, 20, static_cast<Mtx2DOrient>(i), 2, 2, 100, 200);
    unsigned short mirrored;
    int turn_first, mirror_first, mirror;
    double angle;
    m.GetOrientationAndXMirror(&mirrored, &turn_first), m.GetOrientation(&angle, &mirror);
    m.GetXMirrorAndOrientation(&mirrored, &mirror_first);
    EXPECT_EQ(rows[i], (std::array{m.m11, m.m12, m.m21, m.m22, m.tx, m.ty, 1.0 * turn_first,
                                   1.0 * mirror_first, angle / M_PI_2, m.GetRotation() / M_PI_2}));
    EXPECT_EQ(mirrored, i > 3);
  }
}

// Places where another rounding rule or a clamp would answer differently, such as the number just
// below a half, where the addition rounds up.
TEST(Mtx2D, RoundsHalvesAwayFromZeroAndClampsNothing) {
  const double reals[] = {0.49, 0x1.fffffffffffffp-2, 2.5, 0x7FFFFFFF, 0x1p+31, 3e9, NAN};
  const int rounded[] = {0, 1, 3, INT_MAX, INT_MIN, INT_MIN, INT_MIN};
  for (int i = 0; i < 7; ++i) {
    real_pt_t points[] = {{reals[i], -reals[i]}, {reals[i], -reals[i]}, {reals[i], -reals[i]}};
    int_pt_t out[3];  // a pair and the odd one
    Mtx2D().XfmPts(3, points, out);
    for (const auto [x, y] : out) EXPECT_TRUE(x == rounded[i] && y == int(0u - rounded[i])) << i;
  }
}

}  // namespace
