#include <zelvan/transforms/mtx2d.h>

#include "support/bits.h"
#include "support/guarded_array.h"
#include "support/random.h"

#include <cstring>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::bits;
using support::GuardedArray;

// The rule in other words: a run of equal points is its first point with its last flag, and a
// path there and back counts one less. What is behind the runs is untouched: bytes of 0xA5.
template <class Point>
void expect_cleaned(const std::vector<Point>& mapped, const std::vector<int>& flags, int n_out,
                    GuardedArray<Point>& points, GuardedArray<int>* out_flags) {
  const auto same = [](const Point& a, const Point& b) { return a.x == b.x && a.y == b.y; };
  Point untouched;
  std::memset(&untouched, 0xA5, sizeof untouched);
  std::vector<Point> expected(mapped.size(), untouched);
  std::vector<int> expected_flags(mapped.size(), static_cast<int>(0xA5A5A5A5));
  int runs = 0;
  for (std::size_t i = 0; i < mapped.size(); ++i) {
    if (i == 0 || !same(mapped[i], mapped[i - 1])) expected[runs++] = mapped[i];
    expected_flags[runs - 1] = flags[i];
  }
  ASSERT_EQ(n_out, runs == 3 && same(expected[2], expected[0]) ? 2 : runs);
  for (std::size_t i = 0; i < mapped.size(); ++i) {
    ASSERT_EQ(bits(points[i]), bits(expected[i])) << i;
    ASSERT_TRUE(out_flags == nullptr || (*out_flags)[i] == expected_flags[i]) << i;
  }
}

// All three operations, against the array operations and the rule. An empty path has the count -1.
void expect_cleaned(Mtx2D& m, const std::vector<real_pt_t>& path) {
  const std::size_t size = path.size();
  const int n = path.empty() ? -1 : static_cast<int>(size);
  std::vector<int> flags(size);
  for (std::size_t i = 0; i < size; ++i) flags[i] = i % 4;
  GuardedArray<real_pt_t> in(path), reals(size);
  GuardedArray<int_pt_t> ints(size), plain(size);
  GuardedArray<int> in_flags(flags), real_flags(size), int_flags(size);
  drw_pset_t source = {n, in.data(), in_flags.data()};
  drw_pset_t real_set = {-7, reals.data(), real_flags.data()};
  drw_dpset_t int_set = {-7, ints.data(), int_flags.data()};
  int plain_count = -7;
  m.RealXfmPolyPtSet(&source, &real_set), m.XfmPolySetPts(&source, &int_set);
  m.XfmPolyPts(n, &plain_count, in.data(), plain.data());
  std::vector<real_pt_t> mapped(size);
  std::vector<int_pt_t> rounded(size);
  m.RealXfmPts(n, in.data(), mapped.data()), m.XfmPts(n, in.data(), rounded.data());
  expect_cleaned(mapped, flags, real_set.n_points, reals, &real_flags);
  expect_cleaned(rounded, flags, int_set.n_points, ints, &int_flags);
  expect_cleaned<int_pt_t>(rounded, flags, plain_count, plain, nullptr);
}

// Every path of six vertices over four points, two of which round to the same, through the eight
// orientations; then paths of every length to 300 over hard values, where NaN equals nothing and
// -0.0 equals 0.0, through a matrix of each type.
TEST(PolygonMapping, DropsRepeatsAndKeepsTheLastFlag) {
  const real_pt_t corners[] = {{0.1, 0.2}, {5, 0}, {5, 5}, {0.2, 0.1}};
  for (int code = 0; code < 4096; ++code) {
    std::vector<real_pt_t> path;
    for (int i = 0; i < 6; ++i) path.push_back(corners[code >> (2 * i) & 3]);
    Mtx2D m(0, 0, static_cast<Mtx2DOrient>(code % 8), 1, 1, 0, 0);
    ASSERT_NO_FATAL_FAILURE(expect_cleaned(m, path)) << code;
  }
  for (int seed = 0; seed <= 300; ++seed) {
    support::Random random(seed);
    std::vector<real_pt_t> choice = random.hard_points(5), path;
    for (int i = 0; i < seed; ++i) path.push_back(choice[random.below(5)]);
    Mtx2D m = random.matrix(seed % 4);
    ASSERT_NO_FATAL_FAILURE(expect_cleaned(m, path)) << "seed " << seed;
  }
}

}  // namespace
