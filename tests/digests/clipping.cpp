#include <zelvan/geometry/clip_polygon_set.h>
#include <zelvan/geometry/clip_polygon_set_to_view.h>

#include "digests/group.h"
#include "geometry/polygon_sets.h"

#include <span>

namespace {

using support::Random;

/// Takes what is appended behind three vertices, and whether anything was written behind the room
/// that the header asks for: `a_vertex` times as many as there are vertices and 4 a polygon.
void take_clipped(Digest& digest, decltype(ClipPolygonSet)* clip, int a_vertex, PolygonSet in,
                  real_rect_t rect) {
  constexpr int kept = 3, guard = 9, untouched = 77;
  int room = kept;
  for (const int flag : in.flags) room += a_vertex + (flag > 1 ? 4 : 0);
  std::vector<real_pt_t> points(room + guard, {untouched, untouched});
  std::vector<int> flags(room + guard, untouched);
  drw_pset_t source = in.record(), target = {kept, points.data(), flags.data()};
  clip(&source, &target, &rect);
  digest(std::span(points.data(), target.n_points), std::span(flags.data(), target.n_points));
  for (int i = room; i < room + guard; ++i) digest(points[i], flags[i]);
}

const Group sets("geometry.clip_sets", [](Digest& digest) {
  Random random(1);
  for (int i = 0; i < 100'000; ++i) {
    const auto [in, rect] = set_on_rectangle(random, i % 4096 == 0 ? 4000 : i % 64 == 0 ? 200 : 12);
    take_clipped(digest, ClipPolygonSet, 5, in, rect);
  }
});

// At the ends of the doubles, too.
const Group views("geometry.clip_views", [](Digest& digest) {
  const int scales[] = {0, 0, 1019, -480, -990, -1055};
  for (int seed = 1; seed <= 8000; ++seed) {
    Random random(seed);
    auto [in, view] = set_in_view(random, seed);
    const int scale = scales[seed % 5 == 0 ? seed % 2 * 5 : random.below(5)];
    for (real_pt_t& p : in.points) p = {std::ldexp(p.x, scale), std::ldexp(p.y, scale)};
    for (real_pt_t& p : view.corners) p = {std::ldexp(p.x, scale), std::ldexp(p.y, scale)};
    take_clipped(digest, ClipPolygonSetToView, 4, in, view);
  }
});

// Small polygons on a grid with places beyond, on and inside the sides of the view, or of one that
// is turned or narrows to a point on it; now and then it is flat, crosses over or isn't finite.
const Group grids("geometry.clip_grids", [](Digest& digest) {
  const real_rect_t views[] = {{{{1, 0.5}, {2.5, 0.5}, {2.5, 2}, {1, 2}}},
                               {{{1, 0}, {0, 1}, {2, 3}, {3, 2}}},
                               {{{0, 3}, {1, 2}, {2, 2}, {3, 3}}},
                               {{{1, 1}, {1, 1}, {2, 2}, {2, 2}}},
                               {{{0, 0}, {2, 2}, {2, 0}, {0, 2}}},
                               {{{0, 0}, {0, NAN}, {2, 2}, {2, 0}}},
                               {{{0, 0}, {0, 2}, {2, INFINITY}, {2, INFINITY}}},
                               {{{1, 1}, {1, 2}, {2, 2}, {2, 1}}}};
  Random random(2);
  for (int i = 0; i < 150'000; ++i) {
    PolygonSet in;
    for (int n = 2 + random.below(5); n > 0; --n) {
      const double x = random.below(4), y = random.below(4);
      in.add({x, y}, random.below(2) + (n == 1 || random.below(9) == 0 ? 2 : 0));
    }
    in.flags.back() %= i % 32 == 0 ? 2 : 4;  // behind the last closing flag
    take_clipped(digest, ClipPolygonSetToView, 4, in, views[i % 16 < 8 ? i % 8 : i % 3]);
    if (i % 4 == 0) take_clipped(digest, ClipPolygonSet, 5, in, views[i / 4 % 8]);
  }
});

}  // namespace
