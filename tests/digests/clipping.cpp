#include "digests/group.h"

#include <cmath>
#include <span>

namespace {

struct PolygonSet {
  std::vector<real_pt_t> points;
  std::vector<int> flags;

  void add(real_pt_t p, int flag) {
    points.push_back(p);
    flags.push_back(flag);
  }
  drw_pset_t record() { return {static_cast<int>(points.size()), points.data(), flags.data()}; }
};

/// Takes what is appended behind three vertices, and whether anything was written behind the room
/// that the header asks for: `a_vertex` times as many as there are vertices and 4 a polygon.
void take_clipped(Digest& digest, decltype(ClipPolygonSet)* clip, int a_vertex, PolygonSet in,
                  real_rect_t rect) {
  constexpr int kept = 3, guard = 9;
  int room = kept;
  for (const int flag : in.flags) room += a_vertex + (flag > 1 ? 4 : 0);
  const real_pt_t untouched = {77, 77};
  PolygonSet out = {std::vector(room + guard, untouched), std::vector(room + guard, 77)};
  drw_pset_t source = in.record(), target = out.record();
  target.n_points = kept;
  clip(&source, &target, &rect);
  for (int i = room; i < room + guard; ++i) digest(out.points[i], out.flags[i]);
  digest(std::span(out.points.data(), target.n_points),
         std::span(out.flags.data(), target.n_points));
}

/// Up to `most` vertices: on small whole numbers, with vertices on the sides and corners of the
/// rectangle all the time, in general position, close to the tolerances, with huge, tiny and not
/// even numbers, and on walks that stay to one side for a while. Some outlines cross a side so
/// often that the crossings are sorted, many of them at the same place.
std::pair<PolygonSet, real_rect_t> set_on_rectangle(Random& random, int most) {
  constexpr double e = 1.1920928955078125e-07, tiny = 0x1p-126;
  constexpr int exponents[] = {-1060, -537, -64, -63, -25, -24, -23, -22, 300, 511, 1020};
  const int kind = random.below(8), step = kind == 7;
  const double scale = kind == 4 ? std::ldexp(1, exponents[random.below(11)]) : 1;
  const double flat = kind == 5 ? std::nextafter(tiny, tiny * random.below(3)) : 1;
  const auto place = [&](int range, int from) {
    const double whole = random.below(range) + from;
    if (kind == 1) return random.between(from, from + range);
    if (kind == 2 && random.below(9) == 0) return random.hard_double();
    if (kind == 3) return whole + (random.below(5) - 2) * e / 2;
    return whole == 0 && random.below(2) == 0 ? -0.0 : whole * scale;
  };
  PolygonSet set;
  const int n = 1 + random.below(most);
  for (int i = 0; i < n; ++i) {
    const int closing = random.below(n / 2 + 2) == 0 ? 2 : 0;
    real_pt_t p = {place(6, -1), place(6, -1) * flat};
    if (i > 0 && (step != 0 || random.below(8) == 0)) {  // a step or none from the last one
      const auto [x, y] = set.points.back();
      p = {x + random.below(2 * step + 1) - step, y + random.below(2 * step + 1) - step};
    }
    set.add(p, random.below(2) + closing);
  }
  // Upright or leaning, in either sense; now and then it is flat or a point.
  const double x = place(2, 0), y = place(2, 0), w = place(9, -4), h = place(9, -4);
  const double leans = random.below(2), lean = leans * place(5, -2), rise = leans * place(5, -2);
  return {set, {{{x, y}, {x + lean, y + h}, {x + lean + w, y + h + rise}, {x + w, y + rise}}}};
}

const Group sets("geometry.clip_sets", [](Digest& digest) {
  Random random(1);
  for (int i = 0; i < 100'000; ++i) {
    const auto [in, rect] = set_on_rectangle(random, i % 4096 == 0 ? 4000 : i % 64 == 0 ? 200 : 12);
    take_clipped(digest, ClipPolygonSet, 5, in, rect);
  }
});

/// Rings that cross themselves and hold others, on a grid or anywhere, about views that are upright
/// or turned. Every fifth set has values of all kinds and places next to the corners of the view.
std::pair<PolygonSet, real_rect_t> set_in_view(Random& random, int number) {
  const bool is_on_grid = number % 3 == 0, is_turned = number % 4 > 1, is_hard = number % 5 == 0;
  const double w = 1 + random.below(9);
  const double h = 1 + (is_on_grid ? random.below(8) : random.between(0, 8));
  const double c = is_turned ? random.between(-1, 1) : 1, s = std::sqrt(1 - c * c);
  real_rect_t view;
  for (int i = 0; i < 4; ++i) {
    const double u = i % 3 == 0 ? w : -w, v = (i < 2) == (number % 7 < 3) ? h : -h;
    view.corners[i] = {u * c - v * s, u * s + v * c};
  }
  PolygonSet set;
  for (int rings = 1 + random.below(3); rings > 0; --rings) {
    const double size = random.below(3) == 0 ? 3 : 12;
    for (int n = random.below(random.below(4) == 0 ? 70 : 9); n >= 0; --n) {
      real_pt_t p = {random.between(-size, size), random.between(-size, size)};
      const int corner = is_hard ? random.below(8) : 8;  // or just beside it
      if (corner < 4) p = view.corners[corner];
      for (double* v : {&p.x, &p.y}) {
        if (is_on_grid) *v = std::round(*v);
        if (corner < 4) *v = std::nextafter(*v, random.between(-9, 9));
        if (is_hard && random.below(5) == 0) *v = random.hard_double();
      }
      set.add(p, random.below(2) + (n == 0 ? 2 : 0));
    }
  }
  return {set, view};
}

// Also at the ends of the doubles.
const Group views("geometry.clip_views", [](Digest& digest) {
  const int scales[] = {0, 0, 1019, -480, -990, -1055};
  for (int seed = 1; seed <= 8000; ++seed) {
    Random random(seed);
    auto [in, view] = set_in_view(random, seed);
    const int scale = scales[seed % 5 == 0 ? random.below(2) * 5 : random.below(5)];
    for (real_pt_t& p : in.points) p = {std::ldexp(p.x, scale), std::ldexp(p.y, scale)};
    for (real_pt_t& p : view.corners) p = {std::ldexp(p.x, scale), std::ldexp(p.y, scale)};
    take_clipped(digest, ClipPolygonSetToView, 4, in, view);
  }
});

// Every ring of up to five vertices by its lowest one, begun at each in turn. The grid has places
// beyond, on and inside the sides of the views, one of which narrows to a point on it; others are
// flat, cross over, have a corner that points inwards or aren't finite.
const Group grids("geometry.clip_grids", [](Digest& digest) {
  const real_rect_t views[] = {{{{1, 0.5}, {2.5, 0.5}, {2.5, 2}, {1, 2}}},
                               {{{1, 0}, {0, 1}, {2, 3}, {3, 2}}},
                               {{{0, 3}, {1, 2}, {2, 2}, {3, 3}}},
                               {{{1, 1}, {1, 1}, {2, 2}, {2, 2}}},
                               {{{0, 0}, {2, 2}, {2, 0}, {0, 2}}},
                               {{{0, 0}, {0, NAN}, {2, 2}, {2, 0}}},
                               {{{0, 0}, {0, 2}, {2, INFINITY}, {2, INFINITY}}},
                               {{{1, 1}, {1, 2}, {2, 2}, {2, 1}}},
                               {{{1, 1}, {0, 3}, {0, 0}, {3, 0}}},
                               {{{0, 0}, {3, 0}, {1, 1}, {0, 3}}},
                               {{{3, 0}, {0, 0}, {0, 3}, {1, 1}}}};
  int polygons = 0;
  for (int n = 2; n <= 5; ++n) {
    for (int code = 0; code < 1 << 4 * n; ++code) {
      const auto place = [&](int i) { return code >> 4 * (i % n) & 15; };
      bool is_lowest = true;
      for (int i = 1; i < n; ++i) is_lowest = is_lowest && place(0) <= place(i);
      if (!is_lowest) continue;
      PolygonSet in;
      for (int i = 0; i < n; ++i) {
        const int at = place(polygons + i), visible = polygons * 40503LL >> i & 1;
        in.add({1.0 * (at % 4), 1.0 * (at / 4)}, visible + (i + 1 == n ? 2 : 0));
      }
      take_clipped(digest, ClipPolygonSetToView, 4, in, views[polygons % 3]);
      if (++polygons % 4 != 0) continue;
      take_clipped(digest, ClipPolygonSet, 5, in, views[polygons / 4 % 11]);
      in.flags.back() -= polygons % 3;  // not closed
      take_clipped(digest, ClipPolygonSetToView, 4, in, views[polygons / 4 % 11]);
    }
  }
});

}  // namespace
