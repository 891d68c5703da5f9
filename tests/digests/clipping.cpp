#include <zelvan/geometry/clip_polygon_set.h>
#include <zelvan/geometry/clip_polygon_set_to_view.h>

#include "digests/group.h"
#include "digests/heap.h"
#include "support/random.h"

#include <algorithm>
#include <cmath>

namespace {

using support::Random;

struct PolygonSet {
  std::vector<real_pt_t> points;
  std::vector<int> flags;

  void add(real_pt_t p, int flag) {
    points.push_back(p);
    flags.push_back(flag);
  }
  drw_pset_t record() { return {static_cast<int>(points.size()), points.data(), flags.data()}; }
};

using Clip = void (*)(drw_pset_t* source, drw_pset_t* target, real_rect_t* rect);

/// Takes what is appended behind three vertices, and whether anything was written behind the room
/// that the header asks for: `a_vertex` times as many as there are vertices and 4 a polygon.
void take_clipped(Digest& digest, Clip clip, PolygonSet in, real_rect_t rect, int a_vertex) {
  constexpr int kept = 3, guard = 9, untouched = 77;
  long room = kept;
  for (const int flag : in.flags) room += a_vertex + (flag > 1 ? 4 : 0);
  const auto size = static_cast<std::size_t>(room) + guard;
  std::vector<real_pt_t> points(size, {untouched, untouched});
  std::vector<int> flags(size, untouched);
  drw_pset_t source = in.record(), target = {kept, points.data(), flags.data()};
  clip(&source, &target, &rect);
  digest(target.n_points);
  for (int i = 0; i < target.n_points; ++i) digest(points[i], flags[i]);
  digest(std::count(flags.end() - guard, flags.end(), untouched),
         std::count_if(points.end() - guard, points.end(),
                       [](real_pt_t p) { return p.x == untouched && p.y == untouched; }));
}

// On small whole numbers, with vertices on the sides and corners of the rectangle all the time, in
// general position, close to the tolerances, with huge, tiny and not even numbers, and on walks
// that stay to one side for a while. Some outlines cross a side so often that the crossings are
// sorted, many of them at the same place.
const Group sets("geometry.clip_sets", [](Digest& digest) {
  constexpr double e = 1.1920928955078125e-07, tiny = 0x1p-126;
  constexpr int exponents[] = {-1060, -537, -64, -63, -25, -24, -23, -22, 300, 511, 1020};
  Random random(1);
  for (int set = 0; set < 100'000; ++set) {
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
    const int n = set % 4096 == 0 ? 4000 : set % 64 == 0 ? 200 : 1 + random.below(12);
    PolygonSet in;
    for (int i = 0; i < n; ++i) {
      const int closing = random.below(n / 2 + 2) == 0 ? 2 : 0;
      real_pt_t p = {place(6, -1), place(6, -1) * flat};
      if (i > 0 && (step != 0 || random.below(8) == 0)) {  // a step or none from the last one
        p = {in.points.back().x + random.below(2 * step + 1) - step,
             in.points.back().y + random.below(2 * step + 1) - step};
      }
      in.add(p, random.below(2) + closing);
    }
    // Upright or leaning, in either sense; now and then it is flat or a point.
    const double x = place(2, 0), y = place(2, 0), w = place(9, -4), h = place(9, -4);
    const double leans = random.below(2), lean = leans * place(5, -2), rise = leans * place(5, -2);
    const real_rect_t rect = {
        {{x, y}, {x + lean, y + h}, {x + lean + w, y + h + rise}, {x + w, y + rise}}};
    take_clipped(digest, ClipPolygonSet, in, rect, 5);
  }
});

// Rings that cross themselves and hold others, on a grid or anywhere, at the ends of the doubles
// too, with values of all kinds and places next to the corners of views that are upright or turned.
const Group views("geometry.clip_views", [](Digest& digest) {
  for (unsigned seed = 1; seed <= 8000; ++seed) {
    Random random(seed);
    const bool is_on_grid = seed % 3 == 0, is_turned = seed % 4 > 1, is_hard = seed % 5 == 0;
    const double w = 1 + random.below(9),
                 h = 1 + (is_on_grid ? random.below(8) : random.between(0, 8));
    const double c = is_turned ? random.between(-1, 1) : 1, s = std::sqrt(1 - c * c);
    const int scales[] = {0, 0, 1019, -480, -990},
              scale = is_hard ? -1055 * random.below(2) : scales[random.below(5)];
    const auto scaled = [&](double x, double y) -> real_pt_t {
      return {std::ldexp(x, scale), std::ldexp(y, scale)};
    };
    real_pt_t corners[4];
    for (unsigned i = 0; i < 4; ++i) {
      const double u = i % 3 == 0 ? w : -w, v = (i < 2) == (seed % 7 < 3) ? h : -h;
      corners[i] = {u * c - v * s, u * s + v * c};
    }
    PolygonSet in;
    for (int rings = 1 + random.below(3); rings > 0; --rings) {
      const double size = random.below(3) == 0 ? 3 : 12;
      for (int n = random.below(random.below(4) == 0 ? 70 : 9); n >= 0; --n) {
        real_pt_t p = {random.between(-size, size), random.between(-size, size)};
        const int corner = is_hard ? random.below(8) : 8;  // or just beside it
        if (corner < 4) p = corners[corner];
        for (double* v : {&p.x, &p.y}) {
          if (is_on_grid) *v = std::round(*v);
          if (corner < 4) *v = std::nextafter(*v, random.between(-9, 9));
          if (is_hard && random.below(5) == 0) *v = random.hard_double();
        }
        in.add(scaled(p.x, p.y), random.below(2) + (n == 0 ? 2 : 0));
      }
    }
    real_rect_t view;
    for (int i = 0; i < 4; ++i) view.corners[i] = scaled(corners[i].x, corners[i].y);
    take_clipped(digest, ClipPolygonSetToView, in, view, 4);
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
    take_clipped(digest, ClipPolygonSetToView, in, views[i % 16 < 8 ? i % 8 : i % 3], 4);
    if (i % 4 == 0) take_clipped(digest, ClipPolygonSet, in, views[i / 4 % 8], 5);
  }
});

// Combs whose teeth cross the top of a rectangle: one that needs no block of the heap, and pairs
// that share what was had for the first.
const Group refusals("geometry.clip_refusals", [](Digest& digest) {
  for (const int teeth : {6, 1000, 3000}) {
    PolygonSet in;
    for (int i = 0; i < 8 * teeth; ++i) {
      const bool is_last = i + 1 == 4 * teeth || i + 1 == 8 * teeth;
      in.add({i % (4 * teeth) / 2 * 0.5, i % 4 % 3 == 0 ? 5.0 : 15.0}, is_last ? 3 : 1);
    }
    std::vector<real_pt_t> points(in.points.size() * 6);
    std::vector<int> flags(points.size());
    real_rect_t rect = {{{-1, 0}, {-1, 10}, {4.0 * teeth, 10}, {4.0 * teeth, 0}}};
    drw_pset_t source = in.record();
    const long blocks = heap::blocks;
    heap::refuse_each([&] {
      drw_pset_t target = {0, points.data(), flags.data()};
      ClipPolygonSet(&source, &target, &rect);
      digest(target.n_points, heap::blocks - blocks);
    });
  }
});

}  // namespace
