#include <zelvan/geometry/clip_polygon_set.h>

#include "support/refusing_heap.h"

#include <vector>

#include <gtest/gtest.h>

// A comb whose teeth cross the top of the rectangle, then a triangle inside, with each heap request
// refused in turn: the comb gives nothing or, where only a sort's buffer was refused, all; the
// triangle always comes out. A small comb needs no heap, and a large one asks it rarely.
TEST(ClipPolygonSet, GivesUpOnePolygonWhenTheHeapRefuses) {
  for (const int teeth : {6, 1000}) {
    std::vector<real_pt_t> points;
    for (int i = 0; i < teeth; ++i) {
      const double x = 10.0 * i / teeth, width = 3.0 / teeth;
      points.insert(points.end(), {{x, 5}, {x, 15}, {x + width, 15}, {x + width, 5}});
    }
    points.insert(points.end(), {{9, 1}, {1, 1}, {2, 2}, {3, 2}, {3, 3}});
    std::vector<int> flags(points.size(), 1), out_flags(5 * points.size());
    flags[flags.size() - 4] = flags.back() = 3;
    std::vector<real_pt_t> out(out_flags.size());
    drw_pset_t source = {static_cast<int>(points.size()), points.data(), flags.data()}, target;
    real_rect_t rect = {{{0, 0}, {0, 10}, {10, 10}, {10, 0}}};
    const auto clip = [&] {
      target = {0, out.data(), out_flags.data()};
      ClipPolygonSet(&source, &target, &rect);
    };
    clip();
    const int all = target.n_points;
    int given_up = 0;
    const int refusals = support::refuse_each_request(clip, [&](bool refused) {
      EXPECT_TRUE(target.n_points == all || (refused && target.n_points == 3));
      given_up += target.n_points == 3;
      EXPECT_EQ(out[target.n_points - 3].x, 2.0) << "the triangle inside";
    });
    EXPECT_TRUE(all > 3 * teeth && (teeth == 6 ? refusals == 0 : given_up >= 3 && refusals <= 12))
        << refusals;
  }
}
