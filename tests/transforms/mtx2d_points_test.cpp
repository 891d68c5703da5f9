#include <zelvan/transforms/matrix_functions.h>
#include <zelvan/transforms/mtx2d.h>

#include "support/bits.h"
#include "support/guarded_array.h"
#include "support/random.h"
#include "support/vector_forms.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <ios>
#include <vector>

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
  support::for_each_form([&](const char* form) {
    for (const auto& row : rows) {
      SCOPED_TRACE(testing::Message() << form << ' ' << std::hexfloat << row.in);
      real_pt_t in[3];  // a pair and the odd one
      int_pt_t ints[3], fixed[3];
      short_pt_t shorts[3];
      std::fill_n(in, 3, real_pt_t{row.in, row.in});
      identity.XfmPts(3, in, ints);
      identity.XfmFPts(3, in, fixed);
      identity.XfmSPts(3, in, shorts);
      for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(bits(ints[i]), bits(int_pt_t{row.rounded, row.rounded}));
        EXPECT_EQ(bits(fixed[i]), bits(int_pt_t{row.times_eight, row.times_eight}));
        EXPECT_EQ(bits(shorts[i]), bits(short_pt_t{row.low, row.low}));
      }
    }
  });
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

// One point gives the same bits on every road, for every type, in every vector form, at every
// array length; and no array operation touches a byte beyond its count.
TEST(Mapping, GivesTheSameBitsThroughEveryOperation) {
  support::Digest digest;
  for (unsigned seed = 1; seed <= 60; ++seed) {
    Random random(seed);
    Mtx2D m = random.matrix(types[seed % std::size(types)]);
    SCOPED_TRACE(testing::Message() << "seed " << seed << ", type " << m.type);
    GuardedArray<real_pt_t> in(random.hard_points(70));
    std::vector<real_pt_t> expected;
    std::vector<int_pt_t> rounded;
    for (real_pt_t& p : in) {
      expected.push_back(mapped_step_by_step(m, p));
      real_pt_t one, by_value, flat;
      m.RealXfmPt(&p, &one);
      m.XfmPt(p.x, p.y, &by_value.x, &by_value.y);
      til_xfm_pnt(p.x, p.y, &flat.x, &flat.y, &m);
      real_rect_t rect = {{p, p, p, p}};
      m.XfmRect(&rect, &rect);
      for (const real_pt_t& out : {one, by_value, flat, rect.corners[0], rect.corners[2]}) {
        ASSERT_EQ(bits(out), bits(expected.back()));
      }
      rounded.emplace_back();
      m.XfmPt(&p, &rounded.back());
      digest.add(expected.back());
      digest.add(rounded.back());
    }
    support::for_each_form([&](const char* form) {
      for (int n = 0; n <= 70; ++n) {
        SCOPED_TRACE(testing::Message() << form << ", n " << n);
        GuardedArray<real_pt_t> reals(n);
        GuardedArray<int_pt_t> ints(n), fixed(n);
        GuardedArray<short_pt_t> shorts(n);
        real_pt_t* const last = in.end() - n;  // flush against the unreadable page
        m.RealXfmPts(n, last, reals.data());
        m.XfmPts(n, last, ints.data());
        m.XfmFPts(n, last, fixed.data());
        m.XfmSPts(n, last, shorts.data());
        for (int i = 0; i < n; ++i) {
          const int_pt_t r = rounded[70 - n + i];
          ASSERT_EQ(bits(reals[i]), bits(expected[70 - n + i])) << i;
          ASSERT_EQ(bits(ints[i]), bits(r)) << i;
          ASSERT_EQ(static_cast<unsigned>(fixed[i].x), static_cast<unsigned>(r.x) * 8) << i;
          ASSERT_EQ(static_cast<unsigned>(fixed[i].y), static_cast<unsigned>(r.y) * 8) << i;
          ASSERT_EQ(shorts[i].x, static_cast<short>(r.x)) << i;
          ASSERT_EQ(shorts[i].y, static_cast<short>(r.y)) << i;
        }
      }
    });
  }
  // The same with every compiler at every optimisation level; taken from gcc at -O0.
  EXPECT_EQ(digest.value(), 14592149053609031088u);
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
