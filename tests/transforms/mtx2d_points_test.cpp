#include <zelvan/transforms/matrix_functions.h>
#include <zelvan/transforms/mtx2d.h>

#include "support/bits.h"
#include "support/guarded_array.h"
#include "support/random.h"

#include <climits>
#include <cmath>
#include <ios>

#include <gtest/gtest.h>

namespace {

using support::bits;
using support::GuardedArray;
using support::Random;

constexpr int types[] = {0, 1, 2, 3, 4, -1};

// Each row is a place where another rounding rule, width or clamp would answer differently.
TEST(Mapping, RoundsHalvesAwayFromZeroAndClampsNothing) {
  const struct {
    double in;
    int rounded, times_eight;
    short low;
  } rows[] = {
      {0.5, 1, 8, 1},
      {-0.5, -1, -8, -1},
      {2.5, 3, 24, 3},
      {-2.5, -3, -24, -3},
      {0.49, 0, 0, 0},
      {-0.49, 0, 0, 0},
      {-0.0, 0, 0, 0},
      {3.4, 3, 24, 3},
      {0x1.fffffffffffffp-2, 1, 8, 1},  // just below 0.5: the addition rounds up
      {-0x1.fffffffffffffp-2, -1, -8, -1},
      {32768.0, 32768, 262144, -32768},
      {40000.0, 40000, 320000, -25536},
      {65536.0, 65536, 524288, 0},
      {-32769.0, -32769, -262152, 32767},
      {300000000.0, 300000000, -1894967296, -23808},
      {2147483647.0, INT_MAX, -8, -1},
      {0x1.fffffffdfffffp+30, INT_MAX, -8, -1},  // just below 2147483647.5
      {2147483647.5, INT_MIN, 0, 0},
      {-2147483648.0, INT_MIN, 0, 0},
      {-2147483648.4, INT_MIN, 0, 0},
      {-2147483648.5, INT_MIN, 0, 0},
      {3e9, INT_MIN, 0, 0},
      {-3e9, INT_MIN, 0, 0},
      {INFINITY, INT_MIN, 0, 0},
      {std::nan(""), INT_MIN, 0, 0},
  };
  Mtx2D identity;
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << std::hexfloat << row.in);
    // Enough points for the widest vector, and one for the odd end.
    std::vector<real_pt_t> in(17, real_pt_t{row.in, row.in});
    std::vector<int_pt_t> ints(17), fixed(17);
    std::vector<short_pt_t> shorts(17);
    int_pt_t one;
    identity.XfmPt(&in[0], &one);
    identity.XfmPts(17, in.data(), ints.data());
    identity.XfmFPts(17, in.data(), fixed.data());
    identity.XfmSPts(17, in.data(), shorts.data());
    EXPECT_EQ(bits(one), bits(int_pt_t{row.rounded, row.rounded}));
    for (int i : {0, 1, 16}) {
      EXPECT_EQ(bits(ints[i]), bits(int_pt_t{row.rounded, row.rounded}));
      EXPECT_EQ(bits(fixed[i]), bits(int_pt_t{row.times_eight, row.times_eight}));
      EXPECT_EQ(bits(shorts[i]), bits(short_pt_t{row.low, row.low}));
    }
  }
}

// Each product and sum rounded by itself: what volatile forces upon any compiler.
real_pt_t mapped_step_by_step(const Mtx2D& m, real_pt_t p) {
  const auto sum = [](double a, double b) {
    volatile double r = a + b;
    return r;
  };
  const auto product = [](double a, double b) {
    volatile double r = a * b;
    return r;
  };
  if (m.type == 0) return {sum(product(m.m11, p.x), m.tx), sum(product(m.m22, p.y), m.ty)};
  if (m.type == 1) return {sum(product(m.m21, p.y), m.tx), sum(product(m.m12, p.x), m.ty)};
  return {sum(sum(product(m.m11, p.x), product(m.m21, p.y)), m.tx),
          sum(sum(product(m.m12, p.x), product(m.m22, p.y)), m.ty)};
}

// One point gives the same bits on every road, for every type, at every array length; and no
// array operation touches a byte beyond its count.
TEST(Mapping, GivesTheSameBitsThroughEveryOperation) {
  support::Digest digest;
  for (unsigned seed = 1; seed <= 120; ++seed) {
    Random random(seed);
    Mtx2D m = random.matrix(types[seed % std::size(types)]);
    SCOPED_TRACE(testing::Message() << "seed " << seed << ", type " << m.type);
    for (int n = 0; n <= 70; ++n) {
      GuardedArray<real_pt_t> in(random.hard_points(n));
      GuardedArray<real_pt_t> reals(n);
      GuardedArray<int_pt_t> ints(n), fixed(n);
      GuardedArray<short_pt_t> shorts(n);
      m.RealXfmPts(n, in.data(), reals.data());
      m.XfmPts(n, in.data(), ints.data());
      m.XfmFPts(n, in.data(), fixed.data());
      m.XfmSPts(n, in.data(), shorts.data());
      for (int i = 0; i < n; ++i) {
        const real_pt_t expected = mapped_step_by_step(m, in[i]);
        real_pt_t one, by_value, flat;
        int_pt_t rounded;
        m.RealXfmPt(&in[i], &one);
        m.XfmPt(in[i].x, in[i].y, &by_value.x, &by_value.y);
        til_xfm_pnt(in[i].x, in[i].y, &flat.x, &flat.y, &m);
        m.XfmPt(&in[i], &rounded);
        real_rect_t rect = {{in[i], in[i], in[i], in[i]}};
        m.XfmRect(&rect, &rect);
        ASSERT_EQ(bits(one), bits(expected)) << "point " << i << " of " << n;
        ASSERT_EQ(bits(by_value), bits(expected));
        ASSERT_EQ(bits(flat), bits(expected));
        ASSERT_EQ(bits(reals[i]), bits(expected)) << "point " << i << " of " << n;
        for (const real_pt_t& corner : rect.corners) ASSERT_EQ(bits(corner), bits(expected));
        ASSERT_EQ(bits(ints[i]), bits(rounded)) << "point " << i << " of " << n;
        ASSERT_EQ(static_cast<unsigned>(fixed[i].x), static_cast<unsigned>(rounded.x) * 8);
        ASSERT_EQ(static_cast<unsigned>(fixed[i].y), static_cast<unsigned>(rounded.y) * 8);
        ASSERT_EQ(shorts[i].x, static_cast<short>(rounded.x));
        ASSERT_EQ(shorts[i].y, static_cast<short>(rounded.y));
        digest.add(expected);
        digest.add(rounded);
      }
    }
  }
  // The same on every compiler and at every optimisation level; taken from gcc at -O0.
  EXPECT_EQ(digest.value(), 18024698098985579598u);
}

TEST(Mapping, WritesNothingForCountsOfZeroAndLess) {
  Mtx2D m;
  for (int n : {0, -1, INT_MIN}) {
    m.RealXfmPts(n, nullptr, nullptr);
    m.XfmPts(n, nullptr, nullptr);
    m.XfmFPts(n, nullptr, nullptr);
    m.XfmSPts(n, nullptr, nullptr);
  }
}

TEST(Mapping, TakesIntegersAsTheyAre) {
  Mtx2D m;
  m.Scale(2.0, -1.0);
  int_pt_t in = {INT_MAX, INT_MIN};
  real_pt_t out;
  m.InvXfmPt(&in, &out);
  EXPECT_EQ(bits(out), bits(real_pt_t{4294967294.0, 2147483648.0}));
}

TEST(XfmRect, GivesTheBoxInItsFixedOrder) {
  real_rect_t box = {{{0, 0}, {0, 1}, {2, 1}, {2, 0}}};
  Mtx2D turn, half;
  turn.Rotate(90.0, Mtx2DRotateLast);
  half.Translate(0.5, -0.5);
  real_rect_t real;
  XfmRect(&box, &real, &turn);
  const real_pt_t expected[] = {{-1, 0}, {-1, 2}, {0, 2}, {0, 0}};
  int_rect_t rounded, ints = {{{0, 0}, {7, 1}, {2, -1}, {2, 0}}};
  half.XfmRect(&box, &rounded);
  const int_pt_t expected_rounded[] = {{1, -1}, {1, 1}, {3, 1}, {3, -1}};
  real_rect_t of_ints;
  half.XfmRect(&ints, &of_ints);
  const real_pt_t expected_of_ints[] = {{0.5, -1.5}, {0.5, 0.5}, {7.5, 0.5}, {7.5, -1.5}};
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(bits(real.corners[i]), bits(expected[i])) << i;
    EXPECT_EQ(bits(rounded.corners[i]), bits(expected_rounded[i])) << i;
    EXPECT_EQ(bits(of_ints.corners[i]), bits(expected_of_ints[i])) << i;
  }
}

}  // namespace
