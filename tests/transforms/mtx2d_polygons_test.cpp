#include <zelvan/transforms/mtx2d.h>

#include "support/bits.h"
#include "support/guarded_array.h"

#include <climits>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::bits;
using support::GuardedArray;

constexpr int untouched = static_cast<int>(0xA5A5A5A5);

struct Cleaned {
  std::vector<real_pt_t> points;  // as written, the one behind the count included
  std::vector<int> flags;
  int count = 0;
};

// The rule in other words: a run of equal points is its first point with its last flag, and a
// path there and back counts one less.
Cleaned clean(const std::vector<real_pt_t>& in, const std::vector<int>& flags) {
  Cleaned out;
  for (std::size_t i = 0; i < in.size(); ++i) {
    if (i == 0 || bits(in[i]) != bits(in[i - 1])) {
      out.points.push_back(in[i]);
      out.flags.push_back(flags[i]);
    }
    out.flags.back() = flags[i];
  }
  out.count = static_cast<int>(out.points.size());
  if (out.count == 3 && bits(out.points[2]) == bits(out.points[0])) out.count = 2;
  return out;
}

// Every path of up to six vertices over the four corners of a square, through a matrix of each
// type, with each vertex marked by a flag of its own. The arrays end at the input's length,
// and what the rule does not write keeps the pattern of fresh memory.
TEST(PolygonMapping, CleansEveryShortPath) {
  const real_pt_t square[] = {{0, 0}, {4, 0}, {4, 4}, {0, 4}};
  std::vector<Mtx2D> matrices(3);
  matrices[1].Rotate(90.0, Mtx2DRotateLast);
  matrices[2].SetIdentity();
  for (int n = 1; n <= 6; ++n) {
    for (int code = 0; code < 1 << (2 * n); ++code) {
      Mtx2D& m = matrices[code % 3];
      std::vector<real_pt_t> path, mapped;
      std::vector<int> flags;
      for (int i = 0; i < n; ++i) {
        path.push_back(square[code >> (2 * i) & 3]);
        mapped.emplace_back();
        m.RealXfmPt(&path.back(), &mapped.back());
        flags.push_back(100 + i);
      }
      const Cleaned expected = clean(mapped, flags);

      GuardedArray<real_pt_t> in(path), reals(n);
      GuardedArray<int> in_flags(flags), int_flags(n), real_flags(n);
      GuardedArray<int_pt_t> ints(n), plain(n);
      drw_pset_t source = {n, in.data(), in_flags.data()};
      drw_pset_t real_set = {untouched, reals.data(), real_flags.data()};
      drw_dpset_t int_set = {untouched, ints.data(), int_flags.data()};
      int plain_count = untouched;
      m.RealXfmPolyPtSet(&source, &real_set);
      m.XfmPolySetPts(&source, &int_set);
      m.XfmPolyPts(n, &plain_count, in.data(), plain.data());

      SCOPED_TRACE(testing::Message() << "n " << n << ", path " << std::oct << code);
      ASSERT_EQ(real_set.n_points, expected.count);
      ASSERT_EQ(int_set.n_points, expected.count);
      ASSERT_EQ(plain_count, expected.count);
      for (int i = 0; i < n; ++i) {
        if (i < static_cast<int>(expected.points.size())) {
          const real_pt_t& p = expected.points[i];
          ASSERT_EQ(bits(reals[i]), bits(p)) << i;
          ASSERT_EQ(bits(ints[i]), bits(int_pt_t{static_cast<int>(p.x), static_cast<int>(p.y)}));
          ASSERT_EQ(bits(plain[i]), bits(ints[i]));
          ASSERT_EQ(real_flags[i], expected.flags[i]) << i;
          ASSERT_EQ(int_flags[i], expected.flags[i]) << i;
        } else {
          ASSERT_EQ(ints[i].x, untouched) << i;
          ASSERT_EQ(plain[i].y, untouched) << i;
          ASSERT_EQ(real_flags[i], untouched) << i;
          ASSERT_EQ(int_flags[i], untouched) << i;
        }
      }
    }
  }
}

// What is a repeat depends on the form: rounded integers, or unrounded doubles in which a NaN
// equals nothing and -0.0 equals 0.0.
TEST(PolygonMapping, ComparesWhatItWrites) {
  const double nan = std::nan("");
  const struct {
    std::vector<real_pt_t> in;
    int in_ints, in_reals;
  } rows[] = {
      {{{0.1, 0.1}, {0.2, 0.2}, {5.0, 5.0}}, 2, 3},
      {{{1.4, 0.0}, {1.5, 0.0}}, 2, 2},
      {{{0.0, 1.0}, {-0.0, 1.0}}, 1, 1},
      {{{nan, 1.0}, {nan, 1.0}}, 1, 2},
      {{{nan, 1.0}, {2.0, 1.0}, {nan, 1.0}}, 2, 3},
      {{{3e9, 0.0}, {-3e9, 0.0}}, 1, 2},
  };
  for (const auto& row : rows) {
    std::vector<real_pt_t> in = row.in;
    const int n = static_cast<int>(in.size());
    std::vector<int> flags(n, 1), out_flags(n);
    std::vector<real_pt_t> reals(n);
    std::vector<int_pt_t> ints(n);
    drw_pset_t source = {n, in.data(), flags.data()};
    drw_pset_t real_set = {0, reals.data(), out_flags.data()};
    drw_dpset_t int_set = {0, ints.data(), out_flags.data()};
    Mtx2D identity;
    identity.RealXfmPolyPtSet(&source, &real_set);
    identity.XfmPolySetPts(&source, &int_set);
    EXPECT_EQ(real_set.n_points, row.in_reals) << in[0].x << ' ' << in[1].x;
    EXPECT_EQ(int_set.n_points, row.in_ints) << in[0].x << ' ' << in[1].x;
  }
}

TEST(PolygonMapping, GivesAnEmptyOutputForAnEmptyInput) {
  Mtx2D m;
  for (int n : {0, -1, INT_MIN}) {
    drw_pset_t source = {n, nullptr, nullptr}, reals = {7, nullptr, nullptr};
    drw_dpset_t ints = {7, nullptr, nullptr};
    int count = 7;
    m.RealXfmPolyPtSet(&source, &reals);
    m.XfmPolySetPts(&source, &ints);
    m.XfmPolyPts(n, &count, nullptr, nullptr);
    EXPECT_EQ(reals.n_points, 0);
    EXPECT_EQ(ints.n_points, 0);
    EXPECT_EQ(count, 0);
  }
}

}  // namespace
