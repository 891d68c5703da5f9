#include <zelvan/transforms/matrix_functions.h>

#include "support/bits.h"
#include "support/guarded_array.h"
#include "support/random.h"
#include "support/vector_forms.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>

#include <gtest/gtest.h>

namespace {

using support::bits;
using support::GuardedArray;

// Places where another rounding rule or a clamp would answer differently, such as the number just
// below a half, where the addition rounds up.
TEST(Mapping, RoundsHalvesAwayFromZeroAndClampsNothing) {
  const double reals[] = {
      0, 0.49, 0x1.fffffffffffffp-2, 0.5, 2.5, 0x7FFFFFFF, 0x1p+31, 0x1p31 + 1, 3e9, INFINITY, NAN};
  const int rounded[] = {0, 0, 1, 1, 3, INT_MAX, INT_MIN, INT_MIN, INT_MIN, INT_MIN, INT_MIN};
  support::for_each_form([&](const char* form) {
    for (int i = 0; i < 11; ++i) {
      const double v = reals[i];
      real_pt_t points[] = {{v, -v}, {v, -v}, {v, -v}};  // a pair and the odd one
      int_pt_t out[3];
      Mtx2D().XfmPts(3, points, out);
      for (const auto [x, y] : out) {
        EXPECT_TRUE(x == rounded[i] && y == int(0u - rounded[i])) << form << ' ' << v;
      }
    }
  });
}

// A run of equal points is its first point with its last flag; a path there and back counts one
// less.
template <class Points, class Set>
void expect_cleaned(Points& all, const Set& out, const int* flags) {
  const auto same = [](const auto& a, const auto& b) { return a.x == b.x && a.y == b.y; };
  int runs = 0;
  for (std::size_t i = 0; i < all.size(); ++i) {
    ASSERT_EQ(bits(out.points[runs]), bits(all[i])) << i;
    while (i + 1 < all.size() && same(all[i], all[i + 1])) ++i;
    ASSERT_EQ(out.edge_flags[runs++], flags[i]) << i;
  }
  ASSERT_EQ(out.n_points, runs == 3 && same(out.points[2], out.points[0]) ? 2 : runs);
}

// Every type, unknown ones too, with every array length to 70 and some longer, on points of which
// many recur, in every vector form: points, polygons and rectangles of points give the same bits on
// every road and with every compiler, and no array operation touches a byte beyond its count.
TEST(Mapping, GivesTheSameBitsThroughEveryOperation) {
  support::for_each_form([](const char* form) {
    support::FnvDigest digest;
    for (int seed = 0; seed < 6 * 154 && !HasFailure(); ++seed) {
      SCOPED_TRACE(testing::Message() << form << ", seed " << seed);
      support::Random random(seed);
      Mtx2D m = random.matrix(seed % 6 - 1);
      int n = seed / 6 % 72 - 1, count;
      if (seed >= 6 * 72) n = seed < 6 * 144 ? n % 7 : n + 125;
      const auto choice = random.hard_points(2 + random.below(n < 7 ? 3 : 70));
      GuardedArray<real_pt_t> in(std::max(n, 0)), reals(in.size()), real_path(in.size());
      GuardedArray<int_pt_t> ints(in.size()), fixed(in.size()), path(in.size()), line(in.size());
      GuardedArray<short_pt_t> shorts(in.size());
      GuardedArray<int> flags(in.size()), real_flags(in.size()), int_flags(in.size());
      for (int i = 0; i < n; ++i) in[i] = choice[random.below(choice.size())], flags[i] = i % 4;
      m.RealXfmPts(n, in.data(), reals.data()), m.XfmPts(n, in.data(), ints.data());
      m.XfmFPts(n, in.data(), fixed.data()), m.XfmSPts(n, in.data(), shorts.data());
      drw_pset_t source{n, in.data(), flags.data()}, set{-7, real_path.data(), real_flags.data()};
      drw_dpset_t int_set{-7, path.data(), int_flags.data()};
      m.RealXfmPolyPtSet(&source, &set), expect_cleaned(reals, set, flags.data());
      m.XfmPolySetPts(&source, &int_set), expect_cleaned(ints, int_set, flags.data());
      m.XfmPolyPts(n, &count, in.data(), line.data());
      ASSERT_EQ(count, int_set.n_points);
      ASSERT_EQ(std::memcmp(line.data(), path.data(), in.size() * sizeof(int_pt_t)), 0);
      for (int i = 0; i < n; ++i) {
        real_pt_t real, by_value, by_flat_name, widened;
        int_pt_t rounded;
        m.RealXfmPt(&in[i], &real), m.XfmPt(&in[i], &rounded), m.InvXfmPt(&ints[i], &widened);
        m.XfmPt(in[i].x, in[i].y, &by_value.x, &by_value.y);
        til_xfm_pnt(in[i].x, in[i].y, &by_flat_name.x, &by_flat_name.y, &m);
        for (const auto& p : {real, by_value, by_flat_name}) ASSERT_EQ(bits(p), bits(reals[i]));
        const auto [x, y] = rounded;
        ASSERT_EQ(bits(ints[i]), bits(rounded));
        ASSERT_EQ(bits(fixed[i]), bits(int_pt_t{int(x * 8u), int(y * 8u)}));
        ASSERT_EQ(bits(shorts[i]), bits(short_pt_t{short(x), short(y)}));
        digest.add(real), digest.add(rounded), digest.add(widened);
        if (i < 3) continue;
        int_rect_t corners = {{ints[i], ints[i - 1], ints[i - 2], ints[i - 3]}}, int_box;
        real_rect_t rect = {{in[i], in[i - 1], in[i - 2], in[i - 3]}}, box, flat_box, wide;
        m.XfmRect(&rect, &box), XfmRect(&rect, &flat_box, &m), m.XfmRect(&rect, &int_box);
        m.XfmRect(&corners, &wide), m.XfmRect(&rect, &rect);
        ASSERT_EQ(bits(box.corners[1]), bits(real_pt_t{box.corners[0].x, box.corners[2].y}));
        ASSERT_EQ(bits(box.corners[3]), bits(real_pt_t{box.corners[2].x, box.corners[0].y}));
        for (int k = 0; k < 4; ++k) {
          ASSERT_EQ(bits(rect.corners[k]), bits(box.corners[k]));
          ASSERT_EQ(bits(flat_box.corners[k]), bits(box.corners[k]));
          digest.add(box.corners[k]), digest.add(int_box.corners[k]), digest.add(wide.corners[k]);
        }
      }
    }
    EXPECT_EQ(digest.value(), 6602342848631366692u) << form;
  });
}

}  // namespace
