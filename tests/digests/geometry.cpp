#include "digests/group.h"

#include <climits>
#include <cmath>

namespace {

/// By kind: small whole numbers with both zeros and a hair beside them, so that ends coincide and
/// directions are equal; plain numbers; hard ones; and the tolerances of conics, one step beyond,
/// and coefficients that lead there.
double number(Random& random, int kind) {
  static const double at = 1e-05, over = std::nextafter(at, 1), far = 4 * at;
  static const double whole[] = {-2, -1, -0.0, 0, 1, 2, -1e-17, 0.5};
  static const double close[] = {0, 1, 4, 0.25, at, -at, over, -over, far, std::nextafter(far, 1)};
  if (kind == 0) return whole[random.below(8)];
  if (kind == 3) return close[random.below(10)];
  return kind == 1 ? random.between(-9, 9) : random.hard_double();
}

// What is measured from points. Now and then a segment is level or upright. A tenth as `float` is
// none as `double`.
const Group measures("geometry.measures", [](Digest& digest) {
  Random random(1);
  for (int i = 0; i < 60'000; ++i) {
    const auto clockwise = static_cast<short>(random.below(3) - 1);
    real_pt_t p[5], max, min;
    double c[9], sine, cosine;
    for (real_pt_t& q : p) q = {number(random, i % 4), number(random, i % 4)};
    for (double& v : c) v = number(random, i % 4);
    if (i % 5 == 0) p[2].y = p[1].y;
    if (i % 7 == 0) p[2].x = p[1].x;
    digest(utl_point_point(&p[0], &p[1]), utl_point_line(&p[0], &p[1], &p[2]),
           utl_point_box(&p[0], p + 1), utl_point_circle(&p[0], &p[1], c[0]),
           utl_point_circarc(&p[0], &p[1], c[0], &p[2], &p[3], clockwise),
           utl_angle2d(p[0].x, p[0].y, p[1].x, p[1].y), utl_evaluate_cubic(c, c[4]),
           utl_inches_to_units(c[0], i % 14 - 1), utl_units_to_inches(c[1], i % 15 - 2));
    utl_maxmin_arc(&p[0], 0.1 * (i % 9 - 4), &p[1], &p[2], clockwise, &max, &min);
    digest(max, min);
    utl_maxmin_circle(&p[0], c[0], &max, &min);
    digest(max, min);
    utl_maxmin_cubic(c, &max, &min);
    digest(max, min);
    utl_rotate_point(&p[0], &p[1], c[0], c[1]);
    utl_maxmin_rotrect(&p[0], c, c[8]);
    drw_get_trig(i < 1500 ? i - 750 : i % 2 == 0 ? INT_MIN + i : INT_MAX - i, &sine, &cosine);
    digest(p[1], c, sine, cosine);
  }
});

/// Takes what there is of a conic: its type, its three standard forms, points on them, distances
/// and extents.
void take(Digest& digest, Random& random, utl_conic_t conic) {
  utl_ellipse_t e;
  utl_hyperbola_t h;
  utl_parabola_t p;
  real_pt_t at[3], max, min;
  utl_standard_ellipse(&conic, &e);
  utl_standard_hyperbola(&conic, &h);
  utl_standard_parabola(&conic, &p);
  digest(utl_conic_type(&conic), e.sin_rot, e.cos_rot, e.off_x, e.off_y, e.start, e.sweep, e.axis_x,
         e.axis_y, h.sin_rot, h.cos_rot, h.cen_x, h.cen_y, h.start, h.end, h.sq_x, h.sq_y, h.branch,
         h.y_branches, p.sin_rot, p.cos_rot, p.vtx_x, p.vtx_y, p.start, p.end, p.k, p.y_of_x);
  const double part = random.unit();
  utl_ellipse_point(&e, part * e.sweep, &at[0]);
  utl_hyperbola_point(&h, part * (h.end - h.start), &at[1]);
  utl_parabola_point(&p, part * (p.end - p.start), &at[2]);
  real_pt_t from = {at[0].x + part, at[0].y - 1};
  utl_maxmin_conic(&conic, &max, &min);
  digest(at, max, min, utl_point_conarc(&at[1], &conic), utl_point_conarc(&from, &conic));
}

// Of any coefficients, which lead to every type now and then, and through the first end; arcs of
// the unit circle of the least sweep that isn't taken for the whole, and of whole numbers of
// sampling steps; and arcs from north to west of an ellipse that is flat, or not, by the last digit
// of its thinner axis.
const Group conics("geometry.conics", [](Digest& digest) {
  Random random(4);
  for (int i = 0; i < 12'000; ++i) {
    const auto v = [&] { return number(random, i % 4); };
    const auto clockwise = static_cast<short>(random.below(3) - 1);
    utl_conic_t conic = {v(), v(), v(), v(), v(), v(), {v(), v()}, {v(), v()}, clockwise};
    auto& [a, b, c, d, e, f, start, end, sense] = conic;
    if (i % 3 == 0) b = 0;
    if (i % 5 == 0) c = a;
    if (i % 7 == 0) b = 2 * a;
    if (i % 11 == 0) c = b * b / (4 * a);
    if (i % 2 == 1) f = -(a * start.x + b * start.y + d) * start.x - (c * start.y + e) * start.y;
    take(digest, random, conic);

    const double from = random.between(-3, 3), steps = random.below(72);
    const double sweep = steps < 3 ? 0.0001 : 0.087 * steps;
    utl_ellipse_t unit = {0, 1, 0, 0, from, sweep, 1, 1};
    conic = {1, 0, 1, 0, 0, -1, {}, {}, clockwise};
    utl_ellipse_point(&unit, 0, clockwise != 0 ? &end : &start);
    utl_ellipse_point(&unit, sweep, clockwise != 0 ? &start : &end);
    take(digest, random, conic);

    const double thin = 1e4 + (i % 20 - 10) * 0x1p-39;
    const bool is_upright = i % 3 == 0;
    take(digest, random,
         {is_upright ? thin : 1, 0, is_upright ? 1 : thin, 0, 0, -1.0 * i, {0, 1}, {-1, 0}, 0});
  }
});

}  // namespace
