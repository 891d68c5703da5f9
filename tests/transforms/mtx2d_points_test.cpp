#include <zelvan/transforms/matrix_functions.h>

#include "support/bits.h"
#include "support/guarded_array.h"
#include "support/random.h"
#include "support/vector_forms.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::bits;
using support::GuardedArray;

// Places where another rounding rule or a clamp would answer differently, such as the numbers
// just below a half, where the addition rounds up.
TEST(Mapping, RoundsHalvesAwayFromZeroAndClampsNothing) {
  const double below_half = 0x1.fffffffffffffp-2, last_that_fits = 0x1.fffffffdfffffp+30;
  const double nan = std::nan(""), lowest = -2147483648.0;
  const std::pair<int, std::vector<double>> rows[] = {
      {0, {0.49, -0.49, -0.0}},
      {1, {0.5, below_half}},
      {-1, {-0.5, -below_half}},
      {3, {2.5}},
      {-3, {-2.5}},
      {INT_MAX, {2147483647.0, last_that_fits}},
      {INT_MIN, {2147483647.5, lowest, lowest - 0.4, lowest - 0.5, 3e9, -3e9, INFINITY, nan}}};
  support::for_each_form([&](const char* form) {
    for (const auto& [rounded, values] : rows) {
      for (const double in : values) {
        real_pt_t points[] = {{in, in}, {in, in}, {in, in}};  // a pair and the odd one
        int_pt_t out[3];
        Mtx2D().XfmPts(3, points, out);
        for (const auto [x, y] : out) EXPECT_TRUE(x == rounded && y == rounded) << form << in;
      }
    }
  });
}

// One point, and rectangles of points, give the same bits on every road, for every type, in every
// vector form, at every array length; and no array operation touches a byte beyond its count. The
// digest is the same with every compiler at every optimisation level; it was taken from gcc at -O0.
TEST(Mapping, GivesTheSameBitsThroughEveryOperation) {
  support::Digest digest;
  for (unsigned seed = 1; seed <= 60; ++seed) {
    support::Random random(seed);
    Mtx2D m = random.matrix(seed % 6);
    SCOPED_TRACE(testing::Message() << "seed " << seed << ", type " << m.type);
    GuardedArray<real_pt_t> in(random.hard_points(70)), expected(70);
    GuardedArray<int_pt_t> rounded(70);
    for (int i = 0; i < 70; ++i) {
      real_pt_t p = in[i], by_value, flat, widened;
      m.RealXfmPt(&p, &expected[i]), m.XfmPt(&p, &rounded[i]);
      m.XfmPt(p.x, p.y, &by_value.x, &by_value.y);
      til_xfm_pnt(p.x, p.y, &flat.x, &flat.y, &m);
      real_rect_t rect = {{p, p, p, p}};
      m.XfmRect(&rect, &rect);
      for (const real_pt_t& q : {by_value, flat, rect.corners[0], rect.corners[2]}) {
        ASSERT_EQ(bits(q), bits(expected[i]));
      }
      m.InvXfmPt(&rounded[i], &widened);
      digest.add(expected[i]), digest.add(rounded[i]), digest.add(widened);
      if (i < 3) continue;
      int_rect_t ints = {{rounded[i], rounded[i - 1], rounded[i - 2], rounded[i - 3]}}, int_box;
      real_rect_t of_ints, reals = {{p, in[i - 1], in[i - 2], in[i - 3]}};
      m.XfmRect(&ints, &of_ints), m.XfmRect(&reals, &int_box), XfmRect(&reals, &reals, &m);
      for (int corner = 0; corner < 4; ++corner) {
        digest.add(of_ints.corners[corner]), digest.add(reals.corners[corner]);
        digest.add(int_box.corners[corner]);
      }
    }
    support::for_each_form([&](const char* form) {
      for (int n = -1; n <= 70; ++n) {
        SCOPED_TRACE(testing::Message() << form << ", n " << n);
        const int first = 70 - std::max(n, 0);  // flush against the unreadable page
        GuardedArray<real_pt_t> reals(70 - first);
        GuardedArray<int_pt_t> ints(70 - first), fixed(70 - first);
        GuardedArray<short_pt_t> shorts(70 - first);
        m.RealXfmPts(n, &in[first], reals.data());
        m.XfmPts(n, &in[first], ints.data());
        m.XfmFPts(n, &in[first], fixed.data());
        m.XfmSPts(n, &in[first], shorts.data());
        for (int i = 0; i < n; ++i) {
          const auto [x, y] = rounded[first + i];
          ASSERT_EQ(bits(reals[i]), bits(expected[first + i])) << i;
          ASSERT_EQ(bits(ints[i]), bits(int_pt_t{x, y})) << i;
          ASSERT_EQ(bits(fixed[i]), bits(int_pt_t{int(x * 8u), int(y * 8u)})) << i;
          ASSERT_EQ(bits(shorts[i]), bits(short_pt_t{short(x), short(y)})) << i;
        }
      }
    });
  }
  EXPECT_EQ(digest.value(), 5225444891849883556u);
}

TEST(XfmRect, GivesTheBoxInItsFixedOrder) {
  real_rect_t box = {{{0, 0}, {0, 1}, {2, 1}, {2, 0}}};
  Mtx2D turn;
  turn.Rotate(90.0, Mtx2DRotateLast);
  turn.XfmRect(&box, &box);
  const real_pt_t expected[] = {{-1, 0}, {-1, 2}, {0, 2}, {0, 0}};
  for (int i = 0; i < 4; ++i) EXPECT_EQ(bits(box.corners[i]), bits(expected[i])) << i;
}

}  // namespace
