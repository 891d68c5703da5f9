#include "digests/group.h"
#include "support/polygon_set.h"

#include <climits>
#include <span>

namespace {

/// Returns a number of the given kind: 0: one of a few small ones, so that ends coincide and
/// directions are equal; 1: a plain one; 2: a hard one.
double number(Random& random, int kind) {
  static constexpr double whole[] = {-2.0, -1.0, -0.0, 0.0, 1.0, 2.0, -1e-17, 0.5};
  if (kind == 0) return whole[random.below(8)];
  return kind == 1 ? random.between(-9, 9) : random.hard_double();
}

real_pt_t point(Random& random, int kind) { return {number(random, kind), number(random, kind)}; }

const Group arcs("geometry.arcs", [](Log& log) {
  Random random(2);
  for (int i = 0; i < 15'000; ++i) {
    real_pt_t p = point(random, i % 3);
    real_pt_t center = point(random, i % 3);
    real_pt_t ends[] = {point(random, i % 3), point(random, i % 3)};
    const double radius = 0.1 * (i % 9 - 4);  // 0, or not exact as a `float`
    const auto clockwise = static_cast<short>(random.below(2));
    log("utl_point_circarc", inputs(p, center, radius, ends, clockwise),
        utl_point_circarc(&p, &center, radius, &ends[0], &ends[1], clockwise));
    real_pt_t max, min;
    utl_maxmin_arc(&center, radius, &ends[0], &ends[1], clockwise, &max, &min);
    log("utl_maxmin_arc", inputs(center, radius, ends, clockwise), max, min);
  }
});

const Group turns("geometry.turns", [](Log& log) {
  Random random(4);
  for (int i = 0; i < 15'000; ++i) {
    real_pt_t center = point(random, i % 3);
    const real_pt_t p = point(random, i % 3);
    const real_pt_t q = point(random, i % 3);
    const double angle = number(random, i % 3);
    real_pt_t turned = p;
    utl_rotate_point(&center, &turned, q.x, q.y);
    log("utl_rotate_point", inputs(center, p, q), turned);
    log("utl_angle2d", inputs(p, q), utl_angle2d(p.x, p.y, q.x, q.y));
    double box[8] = {p.x, p.y, q.x, q.y, 1.0, p.y, q.x, 0.5};
    utl_maxmin_rotrect(&center, box, angle);
    log("utl_maxmin_rotrect", inputs(center, p, q, angle), box);
    const int degrees = i < 1500 ? i - 750 : INT_MAX - i;
    double sine, cosine;
    drw_get_trig(degrees, &sine, &cosine);
    log("drw_get_trig", inputs(degrees), sine, cosine);
  }
});

/// Returns a coefficient of the given kind: a small whole number, a plain one, a hard one, or one
/// of 0, 1 and values near the tolerance of conics.
double coefficient(Random& random, int kind) {
  static const double close[] = {0.0, 1.0, 1e-05, -1e-05, std::nextafter(1e-05, 1.0), 4e-05};
  if (kind == 0) return random.below(5) - 2.0;
  return kind == 3 ? close[random.below(6)] : number(random, kind);
}

/// Returns a conic; all types occur, and the start of the arc is often on the curve.
utl_conic_t some_conic(Random& random, int i) {
  const auto v = [&] { return coefficient(random, i % 4); };
  const auto clockwise = static_cast<short>(random.below(2));
  utl_conic_t conic = {v(), v(), v(), v(), v(), v(), {v(), v()}, {v(), v()}, clockwise};
  auto& [a, b, c, d, e, f, start, end, sense] = conic;
  if (i % 3 == 0) b = 0.0;
  if (i % 5 == 0) c = a;
  if (i % 7 == 0) b = 2.0 * a;
  if (i % 11 == 0) c = b * b / (4.0 * a);
  if (i % 2 == 1) f = -(a * start.x + b * start.y + d) * start.x - (c * start.y + e) * start.y;
  return conic;
}

const Group conics("geometry.conics", [](Log& log) {
  Random random(1);
  for (int i = 0; i < 10'000; ++i) {
    utl_conic_t conic = some_conic(random, i);
    log("utl_conic_type", inputs(conic), utl_conic_type(&conic));
    const double part = random.unit();
    real_pt_t at;
    utl_ellipse_t ellipse;
    utl_standard_ellipse(&conic, &ellipse);
    log("utl_standard_ellipse", inputs(conic), ellipse);
    utl_ellipse_point(&ellipse, part * ellipse.sweep, &at);
    log("utl_ellipse_point", inputs(ellipse, part), at);
    utl_hyperbola_t hyperbola;
    utl_standard_hyperbola(&conic, &hyperbola);
    log("utl_standard_hyperbola", inputs(conic), hyperbola);
    utl_hyperbola_point(&hyperbola, part * (hyperbola.end - hyperbola.start), &at);
    log("utl_hyperbola_point", inputs(hyperbola, part), at);
    utl_parabola_t parabola;
    utl_standard_parabola(&conic, &parabola);
    log("utl_standard_parabola", inputs(conic), parabola);
    utl_parabola_point(&parabola, part * (parabola.end - parabola.start), &at);
    log("utl_parabola_point", inputs(parabola, part), at);
    real_pt_t max, min;
    utl_maxmin_conic(&conic, &max, &min);
    log("utl_maxmin_conic", inputs(conic), max, min);
    at = {random.between(-3.0, 3.0), part};
    log("utl_point_conarc", inputs(at, conic), utl_point_conarc(&at, &conic));
  }
});

using PolygonSet = support::SetArrays<real_pt_t>;

/// Returns a set of up to `most` vertices, in one or more polygons. `place` returns a coordinate.
template <class Place>
PolygonSet some_set(Random& random, int most, Place place) {
  PolygonSet set(0);
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

// Rings that cross themselves and each other, on a grid or anywhere, in upright and turned views;
// also with coordinates near the limits of a double.
const Group clip_to_view("geometry.clip_polygon_set_to_view", [](Log& log) {
  constexpr int exponents[] = {0, 0, 1019, -480, -990, -1055};
  Random random(2);
  for (int i = 0; i < 12'000; ++i) {
    const double scale = std::ldexp(1.0, exponents[random.below(6)]);
    const double w = (1 + random.below(9)) * scale;
    const double h = (1 + random.below(9)) * scale;
    const double cosine = i % 4 > 1 ? random.between(-1.0, 1.0) : 1.0;
    const double sine = std::sqrt(1.0 - cosine * cosine);
    const real_pt_t p = {w * cosine - h * sine, w * sine + h * cosine};
    const real_pt_t q = {-w * cosine - h * sine, h * cosine - w * sine};
    real_rect_t view = {{p, q, {-p.x, -p.y}, {-q.x, -q.y}}};
    const double size = random.below(3) == 0 ? 3.0 : 12.0;
    PolygonSet set = some_set(random, i % 5 == 0 ? 70 : 12, [&] {
      const double anywhere = random.between(-size, size);
      return (i % 3 == 0 ? std::round(anywhere) : anywhere) * scale;
    });
    PolygonSet out(9 * set.points.size());  // more than the room that the header requires
    drw_pset_t source = {static_cast<int>(set.points.size()), set.points.data(), set.flags.data()};
    drw_pset_t target = {0, out.points.data(), out.flags.data()};
    ClipPolygonSetToView(&source, &target, &view);
    log("ClipPolygonSetToView", inputs(set.points, set.flags, view.corners),
        std::span(out.points.data(), target.n_points),
        std::span(out.flags.data(), target.n_points));
  }
});

}  // namespace
