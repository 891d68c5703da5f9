#include "digests/group.h"

#include <cmath>
#include <span>

namespace {

struct PolygonSet {
  std::vector<real_pt_t> points;
  std::vector<int> flags;
};

void log_clipped(Log& log, const char* operation, decltype(ClipPolygonSet)* clip, PolygonSet set,
                 real_rect_t rect) {
  const std::size_t room = 9 * set.points.size();  // what both headers ask for, and more
  PolygonSet out = {std::vector<real_pt_t>(room), std::vector<int>(room)};
  const int n = static_cast<int>(set.points.size());
  drw_pset_t source = {n, set.points.data(), set.flags.data()};
  drw_pset_t target = {0, out.points.data(), out.flags.data()};
  clip(&source, &target, &rect);
  log(operation, inputs(set.points, set.flags, rect), std::span(out.points.data(), target.n_points),
      std::span(out.flags.data(), target.n_points));
}

/// Up to `most` vertices in one or more polygons. `place` returns a coordinate.
template <class Place>
PolygonSet some_set(Random& random, int most, Place place) {
  PolygonSet set;
  const int n = 1 + random.below(most);
  for (int i = 0; i < n; ++i) {
    const bool is_closing = i + 1 == n || random.below(n / 2 + 2) == 0;
    const bool repeats = i > 0 && random.below(8) == 0;
    const real_pt_t p = {place(), place()};
    set.points.push_back(repeats ? set.points.back() : p);
    set.flags.push_back(random.below(2) + (is_closing ? 2 : 0));
  }
  return set;
}

/// Whole numbers, on which vertices meet the sides and corners of the rectangle all the time, at
/// any scale; or those close to the tolerance, or numbers in between.
double place(Random& random, int kind, double scale, int range, int from) {
  constexpr double tolerance = 1.1920928955078125e-07;
  const double whole = random.below(range) + from;
  if (kind == 0) return whole + random.unit();
  if (kind == 1) return whole + (random.below(5) - 2) * tolerance / 2;
  return whole == 0.0 && random.below(2) == 0 ? -0.0 : whole * scale;
}

// The rectangle leans half of the time; now and then it is flat or a point.
const Group clip_polygon_set("geometry.clip_polygon_set", [](Log& log) {
  constexpr int exponents[] = {0, 0, 0, -1060, -537, -23, 511, 1020};
  Random random(1);
  for (int i = 0; i < 30'000; ++i) {
    const double scale = std::ldexp(1.0, exponents[random.below(8)]);
    const auto at = [&](int range, int from) { return place(random, i % 4, scale, range, from); };
    const double x = at(2, 0);
    const double y = at(2, 0);
    const double w = at(9, -4);
    const double h = at(9, -4);
    const double lean = i % 8 < 4 ? at(5, -2) : 0.0;
    const real_rect_t rect = {
        {{x, y}, {x + lean, y + h}, {x + lean + w, y + h + lean}, {x + w, y}}};
    const int most = i % 4001 == 0 ? 4000 : i % 64 == 0 ? 200 : 12;
    const PolygonSet set = some_set(random, most, [&] { return at(6, -1); });
    log_clipped(log, "ClipPolygonSet", ClipPolygonSet, set, rect);
  }
});

// Rings that cross themselves and each other, on a grid or anywhere, with views that are upright or
// turned; also close to the ends of the doubles.
const Group clip_to_view("geometry.clip_polygon_set_to_view", [](Log& log) {
  constexpr int exponents[] = {0, 0, 1019, -480, -990, -1055};
  Random random(2);
  for (int i = 0; i < 12'000; ++i) {
    const double scale = std::ldexp(1.0, exponents[random.below(6)]);
    const double w = 1 + random.below(9);
    const double h = 1 + random.below(9);
    const double cosine = i % 4 > 1 ? random.between(-1.0, 1.0) : 1.0;
    const double sine = std::sqrt(1.0 - cosine * cosine);
    const real_pt_t right = {w * cosine * scale, w * sine * scale};
    const real_pt_t up = {-h * sine * scale, h * cosine * scale};
    const real_rect_t view = {{{right.x + up.x, right.y + up.y},
                               {up.x - right.x, up.y - right.y},
                               {-right.x - up.x, -right.y - up.y},
                               {right.x - up.x, right.y - up.y}}};
    const double size = random.below(3) == 0 ? 3.0 : 12.0;
    const PolygonSet set = some_set(random, random.below(4) == 0 ? 70 : 12, [&] {
      const double anywhere = random.between(-size, size);
      return (i % 3 == 0 ? std::round(anywhere) : anywhere) * scale;
    });
    log_clipped(log, "ClipPolygonSetToView", ClipPolygonSetToView, set, view);
  }
});

}  // namespace
