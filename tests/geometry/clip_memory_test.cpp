#include <zelvan/geometry/clip_polygon_set.h>
#include <zelvan/geometry/detail/clip_ring.h>

#include "support/random.h"
#include "support/refusing_heap.h"

#include <limits>
#include <vector>

#include <gtest/gtest.h>

namespace {

// A comb whose teeth cross the top of the rectangle 2 * teeth times, then a triangle inside.
struct CombAndTriangle {
  std::vector<real_pt_t> points;
  std::vector<int> flags;

  explicit CombAndTriangle(int teeth) {
    for (int i = 0; i < teeth; ++i) {
      const double x = 10.0 * i / teeth;
      points.insert(points.end(), {{x, 5}, {x, 15}, {x + 3.0 / teeth, 15}, {x + 3.0 / teeth, 5}});
    }
    points.insert(points.end(), {{9, 1}, {1, 1}, {2, 2}, {3, 2}, {3, 3}});
    flags.assign(points.size(), 1);
    flags[flags.size() - 4] = flags.back() = 3;
  }
};

int clip(CombAndTriangle& in, std::vector<real_pt_t>* points, std::vector<int>* flags) {
  real_rect_t rect = {{{0, 0}, {0, 10}, {10, 10}, {10, 0}}};
  drw_pset_t source = {static_cast<int>(in.points.size()), in.points.data(), in.flags.data()};
  drw_pset_t target = {0, points->data(), flags->data()};
  ClipPolygonSet(&source, &target, &rect);
  return target.n_points;
}

// The heap refused at every request in turn: the polygon in hand gives nothing or, where only
// a sort's buffer was refused, all; the next one always comes out.
TEST(ClipPolygonSet, GivesUpOnePolygonWhenTheHeapRefuses) {
  CombAndTriangle in(1000);
  std::vector<real_pt_t> points(5 * in.points.size());
  std::vector<int> flags(points.size());
  const int all = clip(in, &points, &flags);
  EXPECT_GT(all, 4000);
  int got = 0, given_up = 0;
  const int refusals =
      support::refuse_each_request([&] { got = clip(in, &points, &flags); },
                                   [&](bool refused) {
                                     EXPECT_TRUE(got == all || (refused && got == 3)) << got;
                                     given_up += got == 3;
                                     EXPECT_EQ(points[got - 3].x, 2.0) << "the triangle inside";
                                   });
  EXPECT_GE(given_up, 3);
  EXPECT_LE(refusals, 12) << "the heap is to be asked rarely";
}

TEST(ClipPolygonSet, NeedsNoHeapForSmallPolygons) {
  CombAndTriangle in(6);
  std::vector<real_pt_t> points(5 * in.points.size());
  std::vector<int> flags(points.size());
  EXPECT_EQ(support::refuse_each_request([&] { clip(in, &points, &flags); }, [](bool) {}), 0);
}

// The sorted form gives the order of inserting one by one: ties keep the order in which they
// were found, and a NaN goes where the comparisons send it.
TEST(ClipInsertHits, GivesTheOrderOfInsertingOneByOne) {
  for (unsigned seed = 1; seed <= 300; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    support::Random random(seed);
    for (int n = 0; n <= 70; ++n) {
      std::vector<double> params;
      for (int i = 0; i < n; ++i) {
        params.push_back(random.below(n) / 100.0);
        if (seed % 10 == 0 && random.below(30) == 0) {
          params.back() = std::numeric_limits<double>::quiet_NaN();
        }
      }
      std::vector<zelvan::ClipHit> one_by_one(n), at_once(n);
      zelvan::ClipVertex judge{}, edge{};
      zelvan::ClipFoundHits found;
      zelvan::ClipArena arena;
      for (int i = 0; i < n; ++i) {
        one_by_one[i].param = at_once[i].param = params[i];
        ClipInsertHit(&judge, &one_by_one[i]);
        found.add(&at_once[i]);
      }
      ASSERT_TRUE(ClipInsertHits(&edge, found, &arena));
      const zelvan::ClipHit* a = judge.hits;
      const zelvan::ClipHit* b = edge.hits;
      for (; a != nullptr && b != nullptr; a = a->next, b = b->next) {
        ASSERT_EQ(a - one_by_one.data(), b - at_once.data()) << n;
      }
      ASSERT_EQ(a == nullptr, b == nullptr) << n;
    }
  }
}

}  // namespace
